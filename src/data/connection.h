#pragma once
#include "data/database_error.h"
#include "data/sql_text.h"
#include <memory>

namespace liaowu {

class ConnectionPool;
class PhysicalConnection;

/// A logical connection. Every routine opens its own and lets it go out of scope; the pool behind it keeps the
/// physical ones. Every operation throws `DatabaseError` on failure.
class Connection {
public:
    explicit Connection(ConnectionPool& pool);
    /// Opens at once.
    Connection(ConnectionPool& pool, const QString& connectionString);
    /// Rolls back what was not committed, and closes.
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// `connectionString` as the launch gave it: "Provider=SQLite;Data Source=...", an OLE DB provider of the server,
    /// or a raw ODBC string. A missing file of the embedded engine is an error; nothing is created here.
    void Open(const QString& connectionString);
    void Close();
    /// Open or not.
    bool State() const;

    void BeginTrans();
    /// A commit that fails has rolled back.
    void CommitTrans();
    /// Does nothing without a transaction.
    void RollbackTrans();
    bool inTransaction() const;

    /// Runs a statement that returns no rows; gives the number of rows it touched.
    qint64 Execute(const SqlText& statement);

    ConnectionPool& pool() { return *owner; }
    PhysicalConnection& physical();
    /// Ends when the connection is closed, even if the physical one lives on in the pool.
    std::weak_ptr<PhysicalConnection> lease();

private:
    ConnectionPool* owner;
    std::shared_ptr<PhysicalConnection> link;
};

/// Rolls back at the end of its scope unless `commit()` was reached.
class Transaction {
public:
    explicit Transaction(Connection& on) : connection(on) { connection.BeginTrans(); }
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void commit();

private:
    Connection& connection;
    bool done = false;
};

} // namespace liaowu
