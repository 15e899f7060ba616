#pragma once
#include "data/physical_connection.h"
#include <QCache>

struct sqlite3;
struct sqlite3_stmt;

namespace liaowu {

/// The embedded engine. Statements in T-SQL are translated and prepared once for each shape.
class EmbeddedConnection final : public PhysicalConnection {
public:
    EmbeddedConnection(const ConnectionTarget& target, ConnectionPool::Private& owner);
    ~EmbeddedConnection() override;

    sqlite3* handle() const { return database.get(); }

private:
    struct CloseDatabase {
        void operator()(sqlite3* handle) const;
    };
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;
    class Bindings;

    struct CachedShape {
        dialect::Translation translation;
        Statement statement;
        ShapePointer result;
    };

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

    void open(const QString& file, bool readOnly);
    void configure();
    /// Runs a statement of our own that gives no rows.
    void run(const char* statement);
    Statement prepare(const char* native, int size, const char** tail = nullptr);
    /// The translated and prepared statement of this shape; null for what is not kept: batches and schema changes.
    CachedShape& shapeOf(const dialect::Lifted& lifted, std::unique_ptr<CachedShape>& unkept);
    ShapePointer resultOf(const dialect::Translation& translation) const;
    /// Binds the lifted values, and traces. What it gives must outlive the run.
    Bindings bind(sqlite3_stmt* statement, const dialect::Translation& translation,
                  const dialect::Lifted& lifted) const;
    /// Gives the rows touched; `rows` get those of the select that ends the batch.
    qint64 runBatch(const dialect::Translation& translation, const dialect::Lifted& lifted, RowBlock& rows);
    /// Null when the schema changed since the translation was made.
    ShapePointer readOnce(const dialect::Lifted& lifted, RowBlock& rows);
    sqlite3_stmt* writer(const QByteArray& native);
    /// Binds the lists one behind the other and runs; gives the rows touched.
    qint64 runWriter(sqlite3_stmt* statement, std::initializer_list<const ColumnValues*> values) const;
    void composeInsert(const QString& table, const ColumnValues& values);
    qint64 schemaNow();
    /// Forgets translations when the schema has changed since they were made.
    void forgetOldSchema();
    /// An engine in need (disk full) drops a transaction by itself; going on would write half a document.
    void checkTransaction() const;

    std::unique_ptr<sqlite3, CloseDatabase> database;
    std::unique_ptr<dialect::Catalog> catalog;
    Statement schemaVersion;
    qint64 knownSchema = -1;
    QCache<QString, CachedShape> shapes;
    QCache<QByteArray, Statement> writers;

    struct {
        QString table;
        std::vector<QString> columns;
        QByteArray native;
    } lastInsert;
};

} // namespace liaowu
