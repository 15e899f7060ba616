#pragma once
#include "data/schema/schema.h"
#include "data/test_database.h"

namespace liaowu {

/// A database with all tables of the plant and no row. Its clock stands still.
class PlantDatabase : public TestDatabase {
public:
    PlantDatabase() {
        pool.setClock(QDateTime(QDate(2025, 1, 15), QTime(8, 30)));
        createSchema(pool, target);
    }

    /// Rows as texts joined by "|".
    QStringList rows(QStringView statement) { return rowsOf(statement.toString()); }
    QStringList rowsOf(const QString& statement) {
        Connection connection(pool, target);
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
};

} // namespace liaowu
