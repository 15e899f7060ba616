#include "raw_replay.h"
#include "data/dialect/dialect.h"
#include <cstdio>
#include <cstdlib>
#include <sqlite3.h>

namespace liaowu {

namespace {

void check(bool good, sqlite3* database, const QString& statement) {
    if (good) return;
    std::fprintf(stderr, "%s\n%s\n", sqlite3_errmsg(database), qPrintable(statement));
    std::exit(1);
}

} // namespace

RawEngine::RawEngine(const QString& file) {
    check(sqlite3_open_v2(file.toUtf8().constData(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX,
                          nullptr) == SQLITE_OK,
          handle, file);
    dialect::installFunctions(handle, [] { return QDateTime::currentDateTime(); });
    run(QStringLiteral("PRAGMA journal_mode=WAL"));
    run(QStringLiteral("PRAGMA synchronous=FULL"));
}

RawEngine::~RawEngine() {
    for (sqlite3_stmt* statement : std::as_const(prepared))
        sqlite3_finalize(statement);
    sqlite3_close(handle);
}

qint64 RawEngine::run(const QString& statement) {
    check(sqlite3_exec(handle, statement.toUtf8().constData(), nullptr, nullptr, nullptr) == SQLITE_OK,
          handle, statement);
    return sqlite3_changes64(handle);
}

sqlite3_stmt* RawEngine::statementOf(const QString& native) {
    sqlite3_stmt*& statement = prepared[native];
    if (!statement)
        check(sqlite3_prepare_v2(handle, native.toUtf8().constData(), -1, &statement, nullptr) == SQLITE_OK,
              handle, native);
    return statement;
}

void RawEngine::prepare(const Recording& recording) {
    for (const RecordedStatement& recorded : recording)
        statementOf(recorded.native);
}

void RawEngine::play(const Recording& recording) {
    for (const RecordedStatement& recorded : recording) {
        sqlite3_stmt* statement = statementOf(recorded.native);
        for (size_t i = 0; i < recorded.values.size(); ++i)
            sqlite3_bind_text(statement, static_cast<int>(i) + 1, recorded.values[i].constData(),
                              static_cast<int>(recorded.values[i].size()), SQLITE_STATIC);
        int code = sqlite3_step(statement);
        for (; code == SQLITE_ROW; code = sqlite3_step(statement))
            for (int c = 0; c < sqlite3_column_count(statement); ++c)
                sqlite3_column_text(statement, c);
        check(code == SQLITE_DONE, handle, recorded.native);
        sqlite3_reset(statement);
    }
}

} // namespace liaowu
