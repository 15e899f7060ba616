#include "data/connection_pool.h"
#include "data/database_error.h"
#include "data/physical_connection.h"
#include "data/pool_state.h"
#include <algorithm>

namespace liaowu {

using namespace Qt::StringLiterals;

ConnectionPool::Private::~Private() = default;

ConnectionPool::Private::Shelf& ConnectionPool::Private::shelfOf(const QString& connectionString) {
    std::shared_ptr<Shelf>& shelf = shelves[connectionString];
    if (!shelf) {
        try {
            shelf = std::make_shared<Shelf>();
            shelf->target = parseConnectionString(connectionString);
        } catch (...) {
            shelves.remove(connectionString);
            throw;
        }
    }
    return *shelf;
}

std::unique_ptr<PhysicalConnection> ConnectionPool::Private::takeIdle(Shelf& shelf) {
    while (!shelf.idle.empty()) {
        std::unique_ptr<PhysicalConnection> connection = std::move(shelf.idle.back());
        shelf.idle.pop_back();
        if (connection->usable()) return connection;
    }
    return nullptr;
}

std::shared_ptr<PhysicalConnection> ConnectionPool::Private::lend(const QString& connectionString) {
    Shelf& shelf = shelfOf(connectionString);
    const auto busy = [](const PhysicalConnection* connection) { return connection->inTransaction(); };
    if (secondForbidden && std::any_of(shelf.lent.begin(), shelf.lent.end(), busy))
        throw DatabaseError(DatabaseError::Usage, u"交易進行中不可另開連線!"_s);
    countCall();
    std::unique_ptr<PhysicalConnection> connection = takeIdle(shelf);
    if (!connection) connection = openPhysical(shelf.target, *this);
    shelf.lent.push_back(connection.get());
    return {connection.release(), [pool = weak_from_this(), connectionString](PhysicalConnection* raw) {
                std::unique_ptr<PhysicalConnection> returned(raw);
                if (const auto alive = pool.lock()) alive->giveBack(connectionString, std::move(returned));
            }};
}

void ConnectionPool::Private::giveBack(const QString& connectionString,
                                       std::unique_ptr<PhysicalConnection> connection) {
    static constexpr std::size_t keptIdle = 4;
    connection->rollback();
    const auto found = shelves.constFind(connectionString);
    if (found == shelves.constEnd()) return;
    Shelf& shelf = **found;
    std::erase(shelf.lent, connection.get());
    if (shelf.idle.size() < keptIdle) shelf.idle.push_back(std::move(connection));
}

void ConnectionPool::Private::clear() {
    for (const std::shared_ptr<Shelf>& shelf : std::as_const(shelves))
        shelf->idle.clear();
}

void ConnectionPool::Private::countCall() {
    if (++calls == failingCall) throw DatabaseError(DatabaseError::Injected, u"資料庫呼叫失敗(測試)!"_s);
}

QDateTime ConnectionPool::Private::now() const {
    return frozen.isValid() ? frozen : QDateTime::currentDateTime();
}

ConnectionPool::ConnectionPool() : d(std::make_shared<Private>()) {}
ConnectionPool::~ConnectionPool() {
    d->clear();
}

void ConnectionPool::setClock(const QDateTime& frozen) {
    d->frozen = frozen;
}
QDateTime ConnectionPool::clock() const {
    return d->now();
}

void ConnectionPool::failAt(int call) {
    d->failingCall = call;
    d->calls = 0;
}

int ConnectionPool::callCount() const {
    return d->calls;
}
void ConnectionPool::forbidSecondConnection(bool on) {
    d->secondForbidden = on;
}
void ConnectionPool::setTrace(std::function<void(const StatementTrace&)> trace) {
    d->trace = std::move(trace);
}

void ConnectionPool::setBusyTimeout(int milliseconds) {
    d->busyTimeout = milliseconds;
    clear();
}

void ConnectionPool::setOdbcDriver(std::function<QSqlDriver*()> make) {
    d->makeDriver = std::move(make);
    clear();
}

void ConnectionPool::clear() {
    d->clear();
}

} // namespace liaowu
