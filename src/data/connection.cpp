#include "data/connection.h"
#include "data/physical_connection.h"

namespace liaowu {

Connection::Connection(ConnectionPool& pool) : owner(&pool) {}
Connection::Connection(ConnectionPool& pool, const QString& connectionString) : owner(&pool) {
    Open(connectionString);
}
Connection::~Connection() {
    Close();
}

void Connection::Open(const QString& connectionString) {
    if (link) throw DatabaseError(DatabaseError::Usage, QStringLiteral("此連線已開啟!"));
    link = owner->inner().lend(connectionString);
}

void Connection::Close() {
    link.reset();
}
bool Connection::State() const {
    return link != nullptr;
}

PhysicalConnection& Connection::physical() {
    if (!link) throw DatabaseError(DatabaseError::Usage, QStringLiteral("此連線尚未開啟!"));
    return *link;
}

std::weak_ptr<PhysicalConnection> Connection::lease() {
    physical();
    return link;
}

void Connection::BeginTrans() {
    physical().begin();
}
void Connection::CommitTrans() {
    physical().commit();
}
bool Connection::inTransaction() const {
    return link && link->inTransaction();
}

void Connection::RollbackTrans() {
    if (link) link->rollback();
}

qint64 Connection::Execute(const SqlText& statement) {
    return physical().execute(statement.text());
}

Transaction::~Transaction() {
    if (!done) connection.RollbackTrans();
}

void Transaction::commit() {
    connection.CommitTrans();
    done = true;
}

} // namespace liaowu
