#pragma once
#include "data/connection_pool.h"
#include "data/connection_string.h"
#include "data/recordset.h"
#include "data/schema/schema.h"
#include <QTemporaryDir>

namespace liaowu::test {

/// A database of the plant in a folder that goes away with it.
class ScratchPlant {
public:
    enum Content { Nothing, Schema };
    explicit ScratchPlant(Content content = Schema) {
        if (content == Schema) createSchema(pool, target());
    }
    QString file() const { return folder.filePath(QStringLiteral("plant.db")); }
    QString target() const { return connectionStringFor(file()); }

    void run(const QStringList& statements) {
        Connection connection(pool, target());
        for (const QString& statement : statements) connection.Execute(readyMadeSql(statement));
    }
    /// Rows as texts joined by "|".
    QStringList rows(const QString& statement) {
        Connection connection(pool, target());
        const Recordset found = select(connection, readyMadeSql(statement));
        QStringList result;
        for (int row = 0; row < found.RecordCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < found.columnCount(); ++column)
                cells << (found.isNullAt(row, column) ? QStringLiteral("null") : found.textAt(row, column));
            result << cells.join(u'|');
        }
        return result;
    }
    /// Error number of a statement, 0 when it succeeds.
    int errorOf(const QString& statement) {
        try {
            run({statement});
            return 0;
        } catch (const DatabaseError& error) {
            return error.nativeError;
        }
    }

    ConnectionPool pool;

private:
    QTemporaryDir folder;
};

} // namespace liaowu::test
