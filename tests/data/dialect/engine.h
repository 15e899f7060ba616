#pragma once
#include "data/database_error.h"
#include "data/dialect/dialect.h"
#include <QVariant>
#include <sqlite3.h>

namespace liaowu::dialect {

using namespace Qt::StringLiterals;

/// An embedded database in memory that takes T-SQL: the shortest way from a statement to its rows.
class Engine {
public:
    Engine();
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    struct Result {
        QStringList names;
        QList<QVariantList> rows; ///< qlonglong, double, QString or an invalid value for null
    };
    /// Throws `DatabaseError` as a connection would.
    Result run(const QString& statement);
    /// What the engine says it will do, one line a step.
    QString plan(const QString& statement);
    /// What the engine says against the native text; empty when it takes it.
    QString faultOf(const Translation& translation);
    /// Takes a text of any kind: it must translate to something that the engine takes, or be refused as a
    /// `DatabaseError` with number and sentence. Gives what went wrong; empty when nothing did.
    QString surprise(const QString& text, bool* translated = nullptr);

    sqlite3* database = nullptr;
    std::unique_ptr<Catalog> catalog;
    QDateTime now = QDateTime(QDate(2024, 3, 5), QTime(13, 4, 5));

private:
    [[noreturn]] void fail();
    Result native(const QByteArray& text, const Lifted& lifted, const Translation& translation);
};

namespace engine_detail {

class Prepared {
public:
    Prepared(sqlite3* database, const char*& text, const char* end) {
        code = sqlite3_prepare_v2(database, text, static_cast<int>(end - text), &statement, &text);
    }
    ~Prepared() { sqlite3_finalize(statement); }
    Prepared(const Prepared&) = delete;
    Prepared& operator=(const Prepared&) = delete;

    sqlite3_stmt* statement = nullptr;
    int code = SQLITE_OK;
};

inline void bind(sqlite3_stmt* statement, int at, const Literal& value) {
    switch (value.kind) {
    case Literal::Kind::Null:
        sqlite3_bind_null(statement, at);
        break;
    case Literal::Kind::Text: {
        const QByteArray text = value.text.toUtf8();
        sqlite3_bind_text(statement, at, text.constData(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
        break;
    }
    case Literal::Kind::Float:
        sqlite3_bind_double(statement, at, value.number);
        break;
    case Literal::Kind::Integer:
        sqlite3_bind_int64(statement, at, value.integer);
        break;
    }
}

inline QVariant valueAt(sqlite3_stmt* statement, int column) {
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
        return qlonglong(sqlite3_column_int64(statement, column));
    case SQLITE_FLOAT:
        return sqlite3_column_double(statement, column);
    case SQLITE_TEXT:
        return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)));
    default:
        return {};
    }
}

} // namespace engine_detail

inline Engine::Engine() {
    sqlite3_open(":memory:", &database);
    installFunctions(database, [this] { return now; });
    catalog = catalogOf(database);
}

inline Engine::~Engine() {
    sqlite3_close(database);
}

inline void Engine::fail() {
    const QString text = QString::fromUtf8(sqlite3_errmsg(database));
    const auto [number, message] = functionError(text);
    if (number != 0) throw DatabaseError(number, message);
    switch (sqlite3_extended_errcode(database)) {
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_ROWID:
        throw DatabaseError(DatabaseError::DuplicateKey, text);
    case SQLITE_CONSTRAINT_NOTNULL:
        throw DatabaseError(515, text);
    default:
        throw DatabaseError(-1, text);
    }
}

inline Engine::Result Engine::native(const QByteArray& text, const Lifted& lifted,
                                     const Translation& translation) {
    Result result;
    const char* at = text.constBegin();
    while (at != text.constEnd()) {
        const engine_detail::Prepared prepared(database, at, text.constEnd());
        if (prepared.code != SQLITE_OK) fail();
        if (!prepared.statement) break;
        const int count = sqlite3_bind_parameter_count(prepared.statement);
        for (int i = 0; i < count; ++i)
            engine_detail::bind(prepared.statement, i + 1,
                                valueOf(translation.parameters.at(static_cast<size_t>(i)), lifted));
        result = Result();
        for (const ResultColumn& column : translation.columns)
            result.names.append(column.name);
        int code = SQLITE_ROW;
        while ((code = sqlite3_step(prepared.statement)) == SQLITE_ROW) {
            QVariantList row;
            for (int i = 0; i < sqlite3_column_count(prepared.statement); ++i)
                row.append(engine_detail::valueAt(prepared.statement, i));
            result.rows.append(row);
        }
        if (code != SQLITE_DONE) fail();
    }
    return result;
}

inline Engine::Result Engine::run(const QString& statement) {
    const Lifted lifted = lift(statement);
    const Translation translation = translate(lifted, *catalog);
    return native(translation.native, lifted, translation);
}

inline QString Engine::plan(const QString& statement) {
    const Lifted lifted = lift(statement);
    const Translation translation = translate(lifted, *catalog);
    QString lines;
    for (const QVariantList& row :
         native("EXPLAIN QUERY PLAN " + translation.native, lifted, translation).rows)
        lines += row.at(3).toString() + u'\n';
    return lines;
}

inline QString Engine::faultOf(const Translation& translation) {
    const char* at = translation.native.constBegin();
    const char* const end = translation.native.constEnd();
    while (at != end) {
        const engine_detail::Prepared prepared(database, at, end);
        if (prepared.code != SQLITE_OK) return QString::fromUtf8(sqlite3_errmsg(database));
        if (sqlite3_bind_parameter_count(prepared.statement) >
            static_cast<int>(translation.parameters.size()))
            return u"more parameters than told"_s;
    }
    return {};
}

inline QString Engine::surprise(const QString& text, bool* translated) {
    try {
        const Lifted lifted = lift(text);
        const Translation translation = translate(lifted, *catalog);
        if (translated) *translated = true;
        for (const Parameter& parameter : translation.parameters)
            valueOf(parameter, lifted);
        const QString fault = faultOf(translation);
        // Names of indexes are no concern of the catalog.
        const bool indexName = translation.kind == Translation::Kind::Schema && fault.contains(u"index"_s);
        return fault.isEmpty() || indexName ? QString()
                                            : fault + u": "_s + QString::fromUtf8(translation.native);
    } catch (const DatabaseError& error) {
        return error.nativeError > 0 && !error.text.isEmpty() ? QString()
                                                              : u"an error without number or text"_s;
    }
}

} // namespace liaowu::dialect
