#pragma once
#include "data/dialect/types.h"
#include <QString>
#include <memory>
#include <optional>
#include <vector>

namespace liaowu::dialect {

struct Source;
struct Select;

struct Expr {
    enum class Kind {
        Column,
        Parameter,
        TextLiteral,
        IntegerLiteral,
        FloatLiteral,
        Null,
        Minus,
        Arithmetic, ///< two items; `name` is one of + - * / %
        Compare,    ///< two items; `name` is = <> < <= > >=
        And,        ///< any number of items, as has Or
        Or,
        Not,
        Like, ///< text, pattern and perhaps escape character
        Between,
        In, ///< first item is the value
        InSelect,
        Exists,
        IsNull,
        Case, ///< `base`, when and then in pairs, the last item is else when their number is odd
        Call,
        Aggregate,
        Convert, ///< cast, and convert with its style
        Subquery
    };
    Kind kind = Kind::Null;
    qsizetype offset = 0;
    QString name;    ///< of a function in lower case
    QString written; ///< of a function as the statement has it
    QString qualifier;
    std::vector<std::unique_ptr<Expr>> items;
    std::unique_ptr<Expr> base;
    std::unique_ptr<Select> select;
    bool negated = false;
    bool distinct = false;
    int literal = -1;
    ValueType literalType = ValueType::Null;
    bool likePrefix = false;
    TypeName type;
    std::optional<int> style;

    /// Where a column was found, set when names are resolved.
    const Source* source = nullptr;
    int column = -1;
};
using ExprPtr = std::unique_ptr<Expr>;

struct SelectItem {
    ExprPtr value; ///< null for a star
    QString alias;
    QString starQualifier;
    qsizetype offset = 0;
};

struct OrderItem {
    ExprPtr value;
    bool descending = false;
};

struct TableRef {
    enum class Kind { Table, Derived, Join } kind = Kind::Table;
    enum class Join { Inner, Left, Right, Full, Cross } join = Join::Inner;
    qsizetype offset = 0;
    QString name;
    QString alias;
    std::unique_ptr<Select> derived;
    std::unique_ptr<TableRef> left;
    std::unique_ptr<TableRef> right;
    ExprPtr on;
};

/// One select of a union.
struct SelectArm {
    qsizetype offset = 0;
    bool unionAll = false;          ///< how it is joined to the arm before
    std::unique_ptr<Select> nested; ///< an arm in parentheses; the rest is empty then
    bool distinct = false;
    std::optional<qint64> top;
    std::vector<SelectItem> items;
    std::vector<std::unique_ptr<TableRef>> from;
    ExprPtr where;
    std::vector<ExprPtr> groupBy;
    ExprPtr having;
};

struct Select {
    std::vector<SelectArm> arms;
    std::vector<OrderItem> orderBy;
};

struct ColumnDefinition {
    qsizetype offset = 0;
    QString name;
    TypeName type;
    bool notNull = false;
    ExprPtr defaultValue;
};

struct KeyDefinition {
    QString name;
    bool primary = false;
    std::vector<QString> columns;
};

struct Statement {
    enum class Kind {
        Select,
        Insert,
        Update,
        Delete,
        CreateTable,
        CreateIndex,
        CreateView,
        AddColumns,
        DropTable,
        DropView,
        DropIndex
    };
    Kind kind = Kind::Select;
    qsizetype offset = 0;
    QString name;  ///< table, view or index
    QString table; ///< of an index
    qsizetype nameOffset = 0;
    bool unique = false;
    bool ifExists = false;
    std::unique_ptr<Select> select;
    std::vector<std::pair<QString, qsizetype>> columnNames; ///< of an insert, an index or a view
    std::vector<bool> descending;                           ///< of an index
    std::vector<std::vector<ExprPtr>> rows;
    std::vector<std::pair<ExprPtr, ExprPtr>> assignments;
    ExprPtr where;
    std::vector<ColumnDefinition> columns;
    std::vector<KeyDefinition> keys;
};

} // namespace liaowu::dialect
