#pragma once
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

class QSqlDriver;

namespace liaowu {

class PhysicalConnection;

/// What went to an engine, for recordings and benchmarks.
struct StatementTrace {
    QString native;     ///< the text as the engine got it
    QStringList values; ///< bound values as text, null as "\0"
};

/// Keeps physical connections by connection string, and the switches that tests turn. One per `Process`.
class ConnectionPool {
public:
    ConnectionPool();
    ~ConnectionPool();
    ConnectionPool(const ConnectionPool&) = delete;
    ConnectionPool& operator=(const ConnectionPool&) = delete;

    /// Freezes `dbo.DT` and `getdate()` of the embedded engine; an invalid time lets them run again.
    void setClock(const QDateTime& frozen);
    QDateTime clock() const;

    /// Makes the n-th database call from now (1-based; open, execute, read, begin, commit each count) throw
    /// `DatabaseError::Injected`; 0 switches off.
    void failAt(int call);
    /// Calls since the last `failAt`.
    int callCount() const;

    /// While on, opening a second connection to a database during a transaction on it throws: it would see old data
    /// and freeze.
    void forbidSecondConnection(bool on);

    /// Receives every statement that reaches an engine, begin and commit included, just before it runs. The settings
    /// that a new physical connection makes are not among them.
    void setTrace(std::function<void(const StatementTrace&)> trace);

    /// How long the embedded engine waits for another writer; 5000 unless set. Drops the idle connections.
    void setBusyTimeout(int milliseconds);

    /// Servers are reached through drivers made here in place of the installed ODBC driver, which is how a test sees
    /// what the driver is given. The connection takes the driver over.
    void setOdbcDriver(std::function<QSqlDriver*()> make);

    /// Drops the idle physical connections.
    void clear();

    class Private;
    Private& inner() { return *d; }

private:
    std::shared_ptr<Private> d;
};

} // namespace liaowu
