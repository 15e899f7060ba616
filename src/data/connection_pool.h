#pragma once
#include <QDateTime>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

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

    /// While on, opening a second connection during a transaction throws: it would see old data and freeze.
    void forbidSecondConnection(bool on);

    /// Receives every statement that reaches an engine.
    void setTrace(std::function<void(const StatementTrace&)> trace);

    /// Drops the idle physical connections.
    void clear();

    class Private;
    Private& inner() { return *d; }

private:
    std::unique_ptr<Private> d;
};

} // namespace liaowu
