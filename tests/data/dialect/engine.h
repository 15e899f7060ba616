#pragma once
#include "data/test_database.h"
#include <QVariant>

namespace liaowu::dialect {

using namespace Qt::StringLiterals;

/// The embedded engine as a connection drives it: the shortest way from a statement to its rows. All that it is given
/// goes with its one transaction.
class Engine : public TestDatabase {
public:
    Engine() {
        pool.setClock(now);
        connection.Open(target);
        connection.BeginTrans();
        handle = handleOf(connection);
        catalog = catalogOf(handle);
    }

    struct Result {
        QStringList names;
        QList<QVariantList> rows; ///< qlonglong, double, QString or an invalid value for null
    };
    /// Throws `DatabaseError`.
    Result run(const QString& statement);
    /// Takes a text of any kind: it must translate to something that the engine takes, or be refused as a
    /// `DatabaseError` with number and sentence. Gives what went wrong; empty when nothing did.
    QString surprise(const QString& text, bool* translated = nullptr);

    const QDateTime now = QDateTime(QDate(2024, 3, 5), QTime(13, 4, 5));
    sqlite3* handle = nullptr;
    std::unique_ptr<Catalog> catalog;

private:
    /// What the engine says against the native text; empty when it takes it.
    QString faultOf(const Translation& translation);

    Connection connection{pool};
};

inline QVariant valueOf(const Literal& value) {
    switch (value.kind) {
    case Literal::Kind::Integer:
        return value.integer;
    case Literal::Kind::Float:
        return value.number;
    case Literal::Kind::Text:
        return value.text;
    default:
        return {};
    }
}

inline Engine::Result Engine::run(const QString& statement) {
    Result result;
    if (translate(lift(statement), *catalog).columns.empty()) {
        connection.physical().execute(statement);
        return result;
    }
    RowBlock block;
    const ShapePointer shape = connection.physical().read(statement, block);
    for (const ResultField& field : shape->fields)
        result.names += field.name;
    for (int row = 0; row < block.rows(); ++row) {
        QVariantList& cells = result.rows.emplaceBack();
        for (int column = 0; column < block.columns(); ++column)
            cells.append(valueOf(block.cell(row, column).value()));
    }
    return result;
}

inline QString Engine::faultOf(const Translation& translation) {
    const char* at = translation.native.constBegin();
    const char* const end = translation.native.constEnd();
    while (at != end) {
        sqlite3_stmt* prepared = nullptr;
        const int code = sqlite3_prepare_v2(handle, at, static_cast<int>(end - at), &prepared, &at);
        const int marks = sqlite3_bind_parameter_count(prepared);
        sqlite3_finalize(prepared);
        if (code != SQLITE_OK) return QString::fromUtf8(sqlite3_errmsg(handle));
        if (marks > static_cast<int>(translation.parameters.size())) return u"more parameters than told"_s;
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
        if (fault.isEmpty() || indexName) return {};
        return fault + u": "_s + QString::fromUtf8(translation.native);
    } catch (const DatabaseError& error) {
        if (error.nativeError > 0 && !error.text.isEmpty()) return {};
        return u"an error without number or text"_s;
    }
}

} // namespace liaowu::dialect
