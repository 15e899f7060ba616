// The data layer against the engine's own interface: every limit replays the native statements and values that the
// layer sent, prepared once, on a connection with the same settings. How to read it: README.md beside this file.
#include "data/connection_pool.h"
#include "data/connection_string.h"
#include "data/dialect/dialect.h"
#include "data/recordset.h"
#include "ratio_reporter.h"
#include <QFile>
#include <QTemporaryDir>
#include <iostream>
#include <malloc.h>
#include <sqlite3.h>

namespace liaowu {
namespace {

using namespace Qt::StringLiterals;

constexpr int orders = 100'000;
constexpr int lineColumns = 33;

void check(bool good, sqlite3* database) {
    if (good) return;
    std::cerr << sqlite3_errmsg(database) << '\n';
    std::exit(1);
}

/// The engine without us, set up as the layer sets it up.
class RawDatabase {
public:
    explicit RawDatabase(const QString& file) {
        check(sqlite3_open_v2(file.toUtf8().constData(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX,
                              nullptr) == SQLITE_OK,
              handle);
        dialect::installFunctions(handle, [] { return QDateTime::currentDateTime(); });
        run("PRAGMA journal_mode=WAL");
        run("PRAGMA synchronous=FULL");
    }
    ~RawDatabase() { sqlite3_close(handle); }
    RawDatabase(const RawDatabase&) = delete;
    RawDatabase& operator=(const RawDatabase&) = delete;

    void run(const char* statement) {
        check(sqlite3_exec(handle, statement, nullptr, nullptr, nullptr) == SQLITE_OK, handle);
    }

    sqlite3_stmt* prepare(const QString& native) {
        sqlite3_stmt* statement = nullptr;
        check(sqlite3_prepare_v2(handle, native.toUtf8().constData(), -1, &statement, nullptr) == SQLITE_OK,
              handle);
        return statement;
    }

    sqlite3* handle = nullptr;
};

/// One recorded statement with its values in the engine's encoding.
struct Replay {
    QString native;
    std::vector<QByteArray> values;

    void bind(sqlite3_stmt* statement) const {
        for (std::size_t i = 0; i < values.size(); ++i)
            sqlite3_bind_text(statement, static_cast<int>(i) + 1, values[i].constData(),
                              static_cast<int>(values[i].size()), SQLITE_STATIC);
    }
};

/// A plant with a hundred thousand orders, and what the layer sends to it.
class Plant {
public:
    Plant() {
        QFile created(file);
        if (!created.open(QIODevice::WriteOnly)) std::exit(1);
        created.close();
        makeTables();
    }

    /// What `deed` sends.
    template <typename Deed>
    std::vector<Replay> record(Deed deed) {
        std::vector<Replay> result;
        pool.setTrace([&](const StatementTrace& trace) {
            Replay& replay = result.emplace_back();
            replay.native = trace.native;
            for (const QString& value : trace.values)
                replay.values.push_back(value.toUtf8());
        });
        deed();
        pool.setTrace({});
        return result;
    }

    /// Rows of made-up texts.
    static void fill(Connection& connection, const SqlText& statement, int rows);

    static QString orderNumber(int i) { return QString::number(240101000 + i); }

    QTemporaryDir folder;
    QString file = folder.filePath(u"plant.db"_s);
    QString target = connectionStringFor(file);
    ConnectionPool pool;

private:
    void makeTables();
};

SqlText createTable(const QString& name, int columns, const SqlText& key) {
    SqlText text = sql(u"create table [{}] (", name);
    for (int i = 0; i < columns; ++i)
        text += sql(u"[欄位{}] nvarchar(50) default '',", i + 1);
    return text + sql(u"primary key (") + key + sql(u"))");
}

QString cell(int row, int column) {
    static const QStringList words{u"紙板B浪"_s, u"240115"_s, u"1250.5"_s, u"永豐紙業股份"_s,
                                   u"Y"_s,       u""_s,       u"KG"_s};
    return column % 3 == 0 ? QString::number(row * 7 + column) : words[(row + column) % words.size()];
}

void Plant::makeTables() {
    Connection connection(pool, target);
    connection.Execute(createTable(u"採購資料"_s, 26, sql(u"[欄位1]")));
    connection.Execute(createTable(u"採購明細資料"_s, lineColumns, sql(u"[欄位1],[欄位2]")));
    connection.Execute(createTable(u"異動明細"_s, 14, sql(u"[欄位1]")));
    fill(connection, sql(u"select * from [採購資料]"), orders);
}

void Plant::fill(Connection& connection, const SqlText& statement, int rows) {
    Recordset table;
    table.Open(statement, connection, Cursor::Batch);
    for (int row = 0; row < rows; ++row) {
        table.AddNew();
        table.set(0, orderNumber(row));
        for (int column = 1; column < table.columnCount(); ++column)
            table.set(column, cell(row, column));
    }
    table.UpdateBatch();
}

/// Made at the first use and kept for the run.
Plant& plant() {
    static Plant made;
    return made;
}

int nextOrder(int& state) {
    return state = (state * 7919 + 12345) % orders;
}

// One row of 26 columns by its key.

SqlText orderStatement(int order) {
    return sql(u"select * from [採購資料] where [欄位1]='{}'", Plant::orderNumber(order));
}

void readAll(const Recordset& rows) {
    for (int column = 0; column < rows.columnCount(); ++column)
        benchmark::DoNotOptimize(rows.text(column));
}

void selectLayer(benchmark::State& state) {
    Connection connection(plant().pool, plant().target);
    int order = 1;
    for (auto _ : state)
        readAll(select(connection, orderStatement(nextOrder(order))));
}

void selectOwnConnection(benchmark::State& state) {
    int order = 1;
    for (auto _ : state) {
        Connection connection(plant().pool, plant().target);
        readAll(select(connection, orderStatement(nextOrder(order))));
    }
}

void selectRaw(benchmark::State& state) {
    const auto recorded = plant().record([] {
        Connection connection(plant().pool, plant().target);
        select(connection, orderStatement(1));
    });
    RawDatabase raw(plant().file);
    sqlite3_stmt* const statement = raw.prepare(recorded.front().native);
    int order = 1;
    for (auto _ : state) {
        const QByteArray key = Plant::orderNumber(nextOrder(order)).toUtf8();
        sqlite3_bind_text(statement, 1, key.constData(), static_cast<int>(key.size()), SQLITE_STATIC);
        check(sqlite3_step(statement) == SQLITE_ROW, raw.handle);
        for (int column = 0; column < 26; ++column)
            benchmark::DoNotOptimize(
                QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)),
                                  sqlite3_column_bytes(statement, column)));
        sqlite3_reset(statement);
    }
    sqlite3_finalize(statement);
}

// The keys of all orders, as a screen's browse set reads them.

const QStringView keySet = u"select [欄位1] from [採購資料] order by [欄位3],[欄位1]";

void keysLayer(benchmark::State& state) {
    Connection connection(plant().pool, plant().target);
    for (auto _ : state)
        benchmark::DoNotOptimize(select(connection, sql(keySet)).RecordCount());
}

void keysRaw(benchmark::State& state) {
    const auto recorded = plant().record([] {
        Connection connection(plant().pool, plant().target);
        select(connection, sql(keySet));
    });
    RawDatabase raw(plant().file);
    sqlite3_stmt* const statement = raw.prepare(recorded.front().native);
    for (auto _ : state) {
        std::vector<std::string> keys;
        while (sqlite3_step(statement) == SQLITE_ROW)
            keys.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
        sqlite3_reset(statement);
        benchmark::DoNotOptimize(keys.data());
    }
    sqlite3_finalize(statement);
}

// The lines of a document: a batch of rows of 33 columns.

using Lines = std::vector<QStringList>;

Lines makeLines(int count) {
    Lines lines;
    for (int row = 0; row < count; ++row) {
        QStringList& line = lines.emplace_back(QStringList{u"P1"_s, QString::number(row)});
        while (line.size() < lineColumns)
            line += cell(row, static_cast<int>(line.size()));
    }
    return lines;
}

void addLines(Connection& connection, const Lines& typed) {
    Recordset lines;
    lines.Open(sql(u"select * from [採購明細資料] where 1<>1"), connection, Cursor::Batch);
    const QStringList names = lines.columnNames();
    for (const QStringList& line : typed) {
        lines.AddNew();
        for (qsizetype column = 0; column < line.size(); ++column)
            lines.set(names[column], line[column]);
    }
    lines.UpdateBatch();
}

enum class End { RollBack, Commit };

template <End end>
void insertLayer(benchmark::State& state) {
    const Lines lines = makeLines(static_cast<int>(state.range(0)));
    Connection connection(plant().pool, plant().target);
    for (auto _ : state) {
        connection.BeginTrans();
        connection.Execute(sql(u"delete from [採購明細資料] where [欄位1]='{}'", u"P1"));
        addLines(connection, lines);
        if (end == End::Commit)
            connection.CommitTrans();
        else
            connection.RollbackTrans();
    }
}

template <End end>
void insertRaw(benchmark::State& state) {
    const Lines lines = makeLines(static_cast<int>(state.range(0)));
    const auto recorded = plant().record([&] {
        Connection connection(plant().pool, plant().target);
        connection.BeginTrans();
        connection.Execute(sql(u"delete from [採購明細資料] where [欄位1]='{}'", u"P1"));
        addLines(connection, lines);
    });
    RawDatabase raw(plant().file);
    // begin, delete, inserts of one shape, roll back
    sqlite3_stmt* const clear = raw.prepare(recorded[1].native);
    sqlite3_stmt* const insert = raw.prepare(recorded[2].native);
    for (auto _ : state) {
        raw.run("BEGIN IMMEDIATE");
        for (std::size_t i = 1; i + 1 < recorded.size(); ++i) {
            sqlite3_stmt* const statement = i == 1 ? clear : insert;
            recorded[i].bind(statement);
            check(sqlite3_step(statement) == SQLITE_DONE, raw.handle);
            sqlite3_reset(statement);
        }
        raw.run(end == End::Commit ? "COMMIT" : "ROLLBACK");
    }
    sqlite3_finalize(clear);
    sqlite3_finalize(insert);
}

// A listing of half a million rows.

double megabytesInUse() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd) / (1 << 20);
}

void listingMemory(benchmark::State& state) {
    Connection connection(plant().pool, plant().target);
    if (select(connection, sql(u"select top 1 [欄位1] from [異動明細]")).EOF_())
        Plant::fill(connection, sql(u"select * from [異動明細]"), 500'000);
    for (auto _ : state) {
        const double before = megabytesInUse();
        const Recordset rows = select(connection, sql(u"select * from [異動明細]"));
        state.counters["rows"] = rows.RecordCount();
        state.counters["MiB"] = megabytesInUse() - before;
    }
}

BENCHMARK(selectRaw)->Name("select-by-key/raw");
BENCHMARK(selectLayer)->Name("select-by-key/layer");
BENCHMARK(selectOwnConnection)->Name("select-by-key/layer-own-connection");
BENCHMARK(keysRaw)->Name("keys-of-100000/raw")->Unit(benchmark::kMillisecond);
BENCHMARK(keysLayer)->Name("keys-of-100000/layer")->Unit(benchmark::kMillisecond);
BENCHMARK(insertRaw<End::RollBack>)
    ->Name("insert-lines/raw")
    ->Arg(5)
    ->Arg(50)
    ->Arg(350)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(insertLayer<End::RollBack>)
    ->Name("insert-lines/layer")
    ->Arg(5)
    ->Arg(50)
    ->Arg(350)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(insertRaw<End::Commit>)
    ->Name("insert-and-commit/raw")
    ->Arg(5)
    ->Arg(50)
    ->Arg(350)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(insertLayer<End::Commit>)
    ->Name("insert-and-commit/layer")
    ->Arg(5)
    ->Arg(50)
    ->Arg(350)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(listingMemory)->Name("listing-500000x14")->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
} // namespace liaowu

int main(int argc, char** argv) {
    std::vector<char*> arguments(argv, argv + argc);
    // Medians need repetitions; what the caller says wins.
    char repetitions[] = "--benchmark_repetitions=5";
    char aggregates[] = "--benchmark_report_aggregates_only=true";
    // Neighbours on the machine then strike limit and layer alike.
    char interleaving[] = "--benchmark_enable_random_interleaving=true";
    arguments.insert(arguments.begin() + 1, {repetitions, aggregates, interleaving});
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 1;
    liaowu::RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
