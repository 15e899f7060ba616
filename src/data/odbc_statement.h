#pragma once
#include "data/physical_connection.h"
#include "data/sql_text.h"

namespace liaowu {

/// What a select over one table says about writing: where its rows go, and a statement that gives its columns and no
/// rows. `table` is empty for anything else (joins, groups, unions).
struct WritableSelect {
    QString table; ///< as the statement wrote it, brackets and owner included
    QString probe;
};
WritableSelect writableSelect(const QString& statement);

/// "[dbo].[採購資料]" as the name that catalogs know: 採購資料.
QString plainTableName(const QString& table);

/// The statements that a recordset writes on a server. `table` as in `WritableSelect`.
SqlText insertStatement(const QString& table, const ColumnValues& values);
SqlText updateStatement(const QString& table, const ColumnValues& changes, const ColumnValues& keys,
                        const ColumnValues& old);

} // namespace liaowu
