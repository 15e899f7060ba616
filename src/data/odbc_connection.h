#pragma once
#include "data/database_error.h"
#include "data/physical_connection.h"
#include <QElapsedTimer>
#include <QHash>
#include <QSqlDatabase>

class QSqlError;
class QSqlQuery;
class QSqlRecord;

namespace liaowu {

/// A server behind Qt's ODBC driver. Statements go out as they are, forward-only: a scrollable query opens a server
/// cursor, which refuses everything but a select.
class OdbcConnection final : public PhysicalConnection {
public:
    OdbcConnection(const ConnectionTarget& target, ConnectionPool::Private& owner);
    ~OdbcConnection() override;

private:
    void doBegin() override;
    void doCommit() override;
    void doRollback() override;
    qint64 doExecute(const QString& statement) override;
    ShapePointer doRead(const QString& statement, RowBlock& rows) override;
    ShapePointer doDescribe(const QString& statement) override;
    void doInsert(const QString& table, const ColumnValues& values) override;
    qint64 doUpdate(const QString& table, const ColumnValues& changes, const ColumnValues& keys,
                    const ColumnValues& old) override;
    bool alive() override;

    void run(QSqlQuery& query, const QString& statement);
    void checkTransaction() const;
    /// Throws what the driver reported, and remembers what it means for this connection.
    [[noreturn]] void fail(const QSqlError& error);
    const QStringList& primaryKey(const QString& table);

    QSqlDatabase database;
    QHash<QString, QStringList> primaryKeys;
    QElapsedTimer idle;
    bool cancelled = false; ///< the server has dropped the transaction
};

/// Number and text of a driver's error: number of its first diagnostic, except for what has a number of ours.
DatabaseError odbcError(const QSqlError& error);

} // namespace liaowu
