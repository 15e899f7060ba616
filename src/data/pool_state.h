#pragma once
#include "data/connection_pool.h"
#include "data/connection_string.h"
#include <QHash>
#include <vector>

namespace liaowu {

/// The inside of the pool: what is idle, what is lent, and the switches that every physical connection looks at.
class ConnectionPool::Private : public std::enable_shared_from_this<ConnectionPool::Private> {
public:
    ~Private();

    /// Lends a physical connection, idle or new. It comes back when the last pointer to it goes; an open transaction
    /// is then rolled back.
    std::shared_ptr<PhysicalConnection> lend(const QString& connectionString);
    void clear();

    /// Counts one call and throws `DatabaseError::Injected` where `failAt` says so.
    void countCall();
    QDateTime now() const;

    QDateTime frozen;
    int failingCall = 0;
    int calls = 0;
    int busyTimeout = 5000;
    bool secondForbidden = false;
    std::function<void(const StatementTrace&)> trace;
    std::function<QSqlDriver*()> makeDriver;

private:
    struct Shelf {
        ConnectionTarget target;
        std::vector<std::unique_ptr<PhysicalConnection>> idle;
        std::vector<PhysicalConnection*> lent;
    };

    Shelf& shelfOf(const QString& connectionString);
    std::unique_ptr<PhysicalConnection> takeIdle(Shelf& shelf);
    void giveBack(const QString& connectionString, std::unique_ptr<PhysicalConnection> connection);

    QHash<QString, std::shared_ptr<Shelf>> shelves;
};

} // namespace liaowu
