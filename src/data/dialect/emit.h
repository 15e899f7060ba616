#pragma once
#include "data/dialect/ast.h"
#include "data/dialect/dialect.h"
#include <QHash>

namespace liaowu::dialect {

/// How tightly the engine binds an expression's outermost operator.
enum Rank {
    RankOr = 10,
    RankAnd = 20,
    RankNot = 30,
    RankEqual = 40,
    RankLess = 50,
    RankSum = 60,
    RankProduct = 70,
    RankConcat = 80,
    RankCollate = 85,
    RankUnary = 90,
    RankAtom = 100
};

/// An expression written for the engine.
struct Sql {
    QByteArray text;
    ValueType type = ValueType::Null;
    int rank = RankAtom;
};

/// A table, view or derived table in scope.
struct Source {
    struct Column {
        QString name;
        ValueType type = ValueType::Null;
    };
    QString name;     ///< by which the statement calls it
    QByteArray alias; ///< by which the engine does, quoted
    std::vector<Column> columns;
    const TableInfo* table = nullptr;
};

enum class Clause { Select, Where, On, GroupBy, Having, OrderBy };

/// The names that a select sees.
struct Scope {
    Scope* parent = nullptr;
    std::vector<std::unique_ptr<Source>> sources;
    size_t firstVisible = 0; ///< an on clause sees only the tables of its join
    Clause clause = Clause::Select;
    bool aggregated = false;
    bool inAggregate = false;
    bool outerInAggregate = false;
};

struct OutputColumn {
    QString name;
    ValueType type = ValueType::Null;
    QString baseColumn;
};

/// A select of a union with its parts kept apart until the types of all of them are known.
struct Core {
    bool distinct = false;
    bool aggregated = false;
    bool grouped = false;
    std::optional<qint64> top;
    std::vector<Sql> items;
    std::vector<const Expr*> values; ///< of the items; null for columns of a star
    std::vector<OutputColumn> columns;
    QByteArray tail; ///< from ... having
    Scope* scope = nullptr;
    const TableInfo* baseTable = nullptr;
};

/// A whole select, named and typed but not yet written.
struct Prepared {
    Select* select = nullptr;
    std::vector<Core> cores;
    std::vector<OutputColumn> columns; ///< names are those of the first core, types what all cores agree on
    const TableInfo* baseTable = nullptr;
};

/// What a select is written for.
struct SelectWish {
    std::vector<ValueType> types; ///< that its columns are converted to; empty: as they are
    bool named = false;           ///< every column gets its name: a derived table or view
    bool numbered = false;        ///< the columns are named "1", "2" and so on
};

/// Runs a piece of work with another scope or clause and puts the old one back, also when it throws.
template <typename T>
class Restored {
public:
    Restored(T& of, T value) : place(of), before(of) { place = value; }
    ~Restored() { place = before; }
    Restored(const Restored&) = delete;
    Restored& operator=(const Restored&) = delete;

private:
    T& place;
    T before;
};

/// Quotes a name for the engine.
QByteArray quotedName(const QString& name);
/// Writes a text as a literal of the engine.
QByteArray quotedText(const QString& text);
/// `sql` in parentheses where it binds less tightly than `rank`.
QByteArray operand(const Sql& sql, int rank);
/// A text under the server's collation; other values stay as they are.
Sql collated(const Sql& sql);
[[noreturn]] void serverError(int number, const QString& text);

class Emitter {
public:
    Emitter(const Catalog& tables, Translation& into) : catalog(tables), translation(into) {}
    void run(std::vector<Statement>& statements);

private:
    const Catalog& catalog;
    Translation& translation;
    Scope* scope = nullptr;
    std::vector<std::unique_ptr<Scope>> scopes; ///< all of the statement: columns point to their sources
    QHash<QString, int> aliases;
    QHash<std::pair<int, int>, int> numbers;

    // expressions
    Sql emit(Expr& expr);
    Sql value(Expr& expr);
    Sql condition(Expr& expr);
    /// An expression converted as when it meets another type.
    Sql convertedTo(const Expr& expr, const Sql& sql, ValueType to);
    Sql valueAs(Expr& expr, ValueType to) { return convertedTo(expr, value(expr), to); }
    QByteArray parameter(int literal, Parameter::Use use);
    Sql column(Expr& expr);
    bool resolve(Expr& expr, Scope& in);
    Sql arithmetic(Expr& expr);
    Sql minus(Expr& expr);
    Sql conversion(Expr& expr);
    Sql caseOf(Expr& expr);
    Sql aggregate(Expr& expr);
    Sql scalar(Expr& expr);
    Sql literal(const Expr& expr);

    // predicates
    Sql chain(Expr& expr, const char* word, int rank);
    Sql compare(Expr& left, Expr& right, const QString& op);
    Sql comparison(const Expr& left, Sql leftSql, const Expr& right, Sql rightSql, const QString& op);
    Sql like(Expr& expr);
    Sql between(Expr& expr);
    Sql in(Expr& expr);
    Sql inSelect(Expr& expr);

    // functions
    Sql call(Expr& expr);
    Sql isNullCall(Expr& expr);
    Sql coalesceCall(Expr& expr);
    Sql nullIfCall(Expr& expr);
    Sql dateCall(Expr& expr);
    QByteArray dateArgument(Expr& expr);

    // selects
    Prepared prepare(Select& select, Scope* parent, bool nested);
    QByteArray finish(Prepared& prepared, const SelectWish& wish);
    /// A select inside an expression.
    Prepared subquery(Select& select);
    Core core(SelectArm& arm, Scope* parent);
    Core nestedCore(SelectArm& arm, Scope* parent);
    void items(SelectArm& arm, Core& into);
    void star(const SelectItem& item, Core& into);
    QByteArray from(TableRef& ref);
    QByteArray tableSource(TableRef& ref);
    void addSource(std::unique_ptr<Source> source, qsizetype offset);
    QByteArray arm(const Core& core, const Prepared& prepared, const SelectWish& wish, bool first);
    QByteArray orderBy(Prepared& prepared);
    Sql orderTerm(const OrderItem& item, Prepared& prepared);
    std::optional<size_t> orderedItem(const Expr& expr, const Prepared& prepared) const;
    Scope* newScope(Scope* parent);

    // statements
    QByteArray statement(Statement& statement, bool last, bool only);
    const TableInfo& knownTable(const QString& name) const;
    QByteArray insert(Statement& statement);
    QByteArray update(Statement& statement);
    QByteArray deletion(Statement& statement);
    QByteArray createTable(const Statement& statement);
    QByteArray columnDefinition(const ColumnDefinition& column, bool soleKey, bool key);
    QByteArray createIndex(const Statement& statement) const;
    QByteArray createView(Statement& statement);
    QByteArray addColumns(const Statement& statement);
    QByteArray drop(const Statement& statement) const;
};

/// Name of the collation in the engine.
inline constexpr const char* collationName = "LIAOWU";

} // namespace liaowu::dialect
