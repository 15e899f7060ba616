#include "data/physical_connection.h"
#include "data/database_error.h"
#include "data/embedded_connection.h"
#include "data/odbc_connection.h"

namespace liaowu {

void PhysicalConnection::begin() {
    if (transaction) throw DatabaseError(DatabaseError::Usage, QStringLiteral("此連線已有進行中的交易!"));
    pool.countCall();
    doBegin();
    transaction = true;
}

void PhysicalConnection::commit() {
    if (!transaction) throw DatabaseError(DatabaseError::Usage, QStringLiteral("此連線沒有進行中的交易!"));
    try {
        pool.countCall();
        doCommit();
        transaction = false;
    } catch (...) {
        rollback();
        throw;
    }
}

void PhysicalConnection::rollback() noexcept {
    if (!transaction) return;
    transaction = false;
    try {
        doRollback();
    } catch (...) {
        broken = true;
    }
}

qint64 PhysicalConnection::execute(const QString& statement) {
    pool.countCall();
    return doExecute(statement);
}

ShapePointer PhysicalConnection::read(const QString& statement, RowBlock& rows) {
    pool.countCall();
    return doRead(statement, rows);
}

ShapePointer PhysicalConnection::describe(const QString& statement) {
    pool.countCall();
    return doDescribe(statement);
}

void PhysicalConnection::insert(const QString& table, const ColumnValues& values) {
    pool.countCall();
    doInsert(table, values);
}

qint64 PhysicalConnection::update(const QString& table, const ColumnValues& changes, const ColumnValues& keys,
                                  const ColumnValues& old) {
    pool.countCall();
    return doUpdate(table, changes, keys, old);
}

std::unique_ptr<PhysicalConnection> openPhysical(const ConnectionTarget& target,
                                                 ConnectionPool::Private& pool) {
    if (target.engine == ConnectionTarget::Engine::Embedded)
        return std::make_unique<EmbeddedConnection>(target, pool);
    return std::make_unique<OdbcConnection>(target, pool);
}

} // namespace liaowu
