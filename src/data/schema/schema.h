#pragma once
#include "data/connection.h"
#include <QStringList>

namespace liaowu {

/// Version that this program writes and expects in the table 料務_版本.
int schemaVersion();

/// The schema's statements in order, in T-SQL: tables, keys, indexes, views.
QStringList schemaStatements();

enum class SchemaParts {
    All,
    WithoutIndexes ///< for filling a new database in bulk; a later call for all parts adds the indexes
};

/// Creates the file of the embedded engine if it is missing (`connectionString` names it) and makes every table,
/// view and index that is not there yet. Never alters what is there.
void createSchema(ConnectionPool& pool, const QString& connectionString,
                  SchemaParts parts = SchemaParts::All);

/// Version stored in a database; 0 when it has no version table (a plain database of the suite).
int storedVersion(Connection& connection);

/// Moves an older database to this version step by step, in one transaction. Throws `DatabaseError` when the database
/// is newer than the program.
void upgradeSchema(ConnectionPool& pool, const QString& connectionString);

} // namespace liaowu
