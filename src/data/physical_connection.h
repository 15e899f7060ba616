#pragma once
#include "data/connection_string.h"
#include "data/dialect/dialect.h"
#include "data/pool_state.h"
#include "data/row_block.h"
#include <memory>
#include <vector>

namespace liaowu {

struct ResultField {
    QString name;
    dialect::Type type = dialect::Type::Unknown;
    QString baseColumn; ///< empty: cannot be written
};

/// What is known of a result without reading its rows.
struct ResultShape {
    std::vector<ResultField> fields;
    QString table;         ///< where rows can be written; empty when nowhere
    std::vector<int> keys; ///< fields that hold the primary key; empty unless the whole key was selected
};
using ShapePointer = std::shared_ptr<const ResultShape>;

/// A column and what is written to it or must stand in it. Both live with the caller: a save writes thousands.
struct ColumnValue {
    const QString* column;
    const dialect::Literal* value;
};
using ColumnValues = std::vector<ColumnValue>;

/// One open connection of an engine. The public functions count calls and keep the transaction's state; the engines
/// fill in the private ones. All throw `DatabaseError`.
class PhysicalConnection {
public:
    explicit PhysicalConnection(ConnectionPool::Private& owner) : pool(owner) {}
    virtual ~PhysicalConnection() = default;
    PhysicalConnection(const PhysicalConnection&) = delete;
    PhysicalConnection& operator=(const PhysicalConnection&) = delete;

    void begin();
    /// A commit that fails rolls back.
    void commit();
    /// Does nothing without a transaction. Never throws: what cannot be rolled back is not used again.
    void rollback() noexcept;
    bool inTransaction() const { return transaction; }

    qint64 execute(const QString& statement);
    /// Reads all rows of a select.
    ShapePointer read(const QString& statement, RowBlock& rows);
    /// What `read` would give, without its rows.
    ShapePointer describe(const QString& statement);
    void insert(const QString& table, const ColumnValues& values);
    /// Changes the row of these keys if `old` still stands in it; gives the number of rows, 0 or 1.
    qint64 update(const QString& table, const ColumnValues& changes, const ColumnValues& keys,
                  const ColumnValues& old);

    /// Whether it can serve again after it was given back.
    bool usable() { return !broken && alive(); }

protected:
    void traced(const QString& native, QStringList values = {}) const {
        if (pool.trace) pool.trace({native, std::move(values)});
    }
    bool tracing() const { return static_cast<bool>(pool.trace); }

    ConnectionPool::Private& pool;
    bool broken = false;

private:
    virtual void doBegin() = 0;
    virtual void doCommit() = 0;
    virtual void doRollback() = 0;
    virtual qint64 doExecute(const QString& statement) = 0;
    virtual ShapePointer doRead(const QString& statement, RowBlock& rows) = 0;
    virtual ShapePointer doDescribe(const QString& statement) = 0;
    virtual void doInsert(const QString& table, const ColumnValues& values) = 0;
    virtual qint64 doUpdate(const QString& table, const ColumnValues& changes, const ColumnValues& keys,
                            const ColumnValues& old) = 0;
    virtual bool alive() = 0;

    bool transaction = false;
};

/// Opens `target` with the engine that it names.
std::unique_ptr<PhysicalConnection> openPhysical(const ConnectionTarget& target,
                                                 ConnectionPool::Private& pool);

} // namespace liaowu
