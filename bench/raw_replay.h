#pragma once
#include "data/connection_pool.h"
#include <QByteArray>
#include <QHash>
#include <QString>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace liaowu {

/// What the program sent to the engine, kept to be sent again without the program.
struct RecordedStatement {
    QString native;
    std::vector<QByteArray> values;
};
using Recording = std::vector<RecordedStatement>;

/// Records everything that `deed` sends through the pool.
template <typename Deed>
Recording record(ConnectionPool& pool, Deed deed) {
    Recording result;
    pool.setTrace([&](const StatementTrace& trace) {
        RecordedStatement& statement = result.emplace_back();
        statement.native = trace.native;
        for (const QString& value : trace.values)
            statement.values.push_back(value.toUtf8());
    });
    deed();
    pool.setTrace({});
    return result;
}

/// The engine without us, with the settings that the layer gives it: the limit of what a save can reach.
class RawEngine {
public:
    explicit RawEngine(const QString& file);
    ~RawEngine();
    RawEngine(const RawEngine&) = delete;
    RawEngine& operator=(const RawEngine&) = delete;

    /// Prepares what is not prepared yet; not part of the limit.
    void prepare(const Recording& recording);
    /// Sends all of it, reading every row to its end.
    void play(const Recording& recording);
    /// Gives the number of rows changed.
    qint64 run(const QString& statement);

private:
    sqlite3_stmt* statementOf(const QString& native);
    sqlite3* handle = nullptr;
    QHash<QString, sqlite3_stmt*> prepared;
};

} // namespace liaowu
