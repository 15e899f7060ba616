#pragma once
#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <functional>
#include <memory>
#include <variant>
#include <vector>

struct sqlite3;

namespace liaowu::dialect {

/// The types that our statements know: everything stored is TEXT, REAL or INTEGER in the embedded engine.
enum class Type { Unknown, Text, Float, Integer, DateTime };

/// A literal taken out of a statement: what is bound in its place.
struct Literal {
    enum class Kind { Null, Text, Float, Integer } kind = Kind::Null;
    QString text; ///< of a Float: its digits as written
    double number = 0;
    qint64 integer = 0;
    int length = 0; ///< characters that the literal took in its statement
};

/// A statement with its literals lifted, so that all statements of one shape share one translation. Positions in
/// order by and group by, top n, convert styles, type lengths, and the fixed-prefix property of like patterns stay
/// in the shape.
struct Lifted {
    QString shape;
    std::vector<Literal> literals;
};

/// Cuts the literals out. Throws `DatabaseError` (NotCovered) with position and sentence on text that is no
/// statement.
Lifted lift(QStringView statement);

/// How a parameter of the native statement is made from the lifted literals.
struct Parameter {
    enum class Use {
        AsIs,
        LikeLower, ///< the fixed prefix of a like pattern
        LikeUpper, ///< a text above every text with that prefix
        Spelling   ///< the digits of a Float as written, a Text
    };
    int literal = 0;
    Use use = Use::AsIs;
};

struct ResultColumn {
    QString name;
    Type type = Type::Unknown;
    QString baseColumn; ///< column of `Translation::baseTable` when it can be written, else empty
};

struct Translation {
    enum class Kind { Select, Insert, Update, Delete, Schema, Batch };
    Kind kind = Kind::Select;
    QByteArray native; ///< UTF-8; several statements of a Batch are separated by ";\n" and number their
        ///< parameters through: bind to each the first `sqlite3_bind_parameter_count` of `parameters`
    std::vector<Parameter> parameters;
    std::vector<ResultColumn> columns; ///< of a select, or of the select that ends a Batch
    QString baseTable;                 ///< of a select over one table: where its rows can be written
};

/// What the translator must know of the tables: asked by name, without case; `sqlite3*` answers through
/// `catalogOf`.
struct TableColumn {
    QString name;
    Type type = Type::Text;
    bool primaryKey = false;
};
struct TableInfo {
    QString name;
    std::vector<TableColumn> columns;
    bool view = false;
};
class Catalog {
public:
    virtual ~Catalog() = default;
    /// Null when there is no such table or view.
    virtual const TableInfo* table(QStringView name) const = 0;
    /// Value type of a table's column is by its declared type; of a view by its select.
};

/// Reads the tables of an open database on demand and keeps them until `PRAGMA schema_version` changes.
std::unique_ptr<Catalog> catalogOf(sqlite3* database);

/// Writes a lifted statement anew for the embedded engine. Throws `DatabaseError` with position and sentence for
/// what the subset does not cover, number 208 for an unknown table, 207 for an unknown column.
Translation translate(const Lifted& statement, const Catalog& catalog);

/// Value to bind for a parameter.
Literal valueOf(const Parameter& parameter, const Lifted& statement);

/// Registers the collation, the functions and the overrides that translated statements lean on. `now` gives the
/// server's clock.
void installFunctions(sqlite3* database, std::function<QDateTime()> now);

/// Compares as the server does: case and trailing blanks do not count.
int compareTexts(QStringView left, QStringView right);

/// Turns an error text of the embedded engine that one of our functions raised ("8114|Error converting ...") into
/// number and text; number 0 when it is not ours.
std::pair<int, QString> functionError(const QString& engineText);

} // namespace liaowu::dialect
