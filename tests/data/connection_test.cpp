#include "data/connection.h"
#include "data/embedded_connection.h"
#include "data/test_database.h"
#include <QElapsedTimer>
#include <QFileInfo>
#include <unistd.h>

namespace liaowu {
namespace {

using namespace Qt::StringLiterals;

class ConnectionTest : public testing::Test {
protected:
    ConnectionTest() {
        database.run(
            {u"create table [採購資料] ([採購單號] nvarchar(20) not null, [備註] nvarchar(50) default '', "
             u"primary key ([採購單號]))"});
    }

    static qint64 add(Connection& connection, const QString& number) {
        return connection.Execute(sql(u"insert into [採購資料] ([採購單號]) values ('{}')", number));
    }

    QString count() { return database.value(u"select count(*) from [採購資料]"); }

    TestDatabase database;
};

/// Root may write everywhere, so it steps down for as long as this lives.
class CommonUser {
public:
    CommonUser() {
        if (user == 0 && seteuid(65534) != 0) throw std::runtime_error("cannot step down");
    }
    ~CommonUser() {
        if (user == 0 && seteuid(user) != 0) std::abort();
    }
    CommonUser(const CommonUser&) = delete;
    CommonUser& operator=(const CommonUser&) = delete;

private:
    uid_t user = geteuid();
};

QString pragma(Connection& connection, const char* statement) {
    sqlite3* handle = static_cast<EmbeddedConnection&>(connection.physical()).handle();
    sqlite3_stmt* prepared = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(handle, statement, -1, &prepared, nullptr), SQLITE_OK)
        << sqlite3_errmsg(handle);
    EXPECT_EQ(sqlite3_step(prepared), SQLITE_ROW);
    const QString value = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(prepared, 0)));
    sqlite3_finalize(prepared);
    return value;
}

// A crash of the machine must not take a saved document with it, and no second writer must fail at once.
TEST_F(ConnectionTest, EveryPhysicalConnectionHasItsSettings) {
    Connection first(database.pool, database.target), second(database.pool, database.target);
    ASSERT_NE(&first.physical(), &second.physical());
    for (Connection* connection : {&first, &second}) {
        EXPECT_EQ(pragma(*connection, "PRAGMA synchronous"), u"2");
        EXPECT_EQ(pragma(*connection, "PRAGMA journal_mode"), u"wal");
        EXPECT_EQ(pragma(*connection, "PRAGMA busy_timeout"), u"5000");
        EXPECT_EQ(pragma(*connection, "PRAGMA foreign_keys"), u"0");
        // The key's collation is the server's, which only a connection that knows it can compare by.
        EXPECT_EQ(pragma(*connection, "SELECT count(*) FROM 採購資料 WHERE 採購單號 = 'x'"), u"0");
    }
    EXPECT_EQ(add(first, u"a1"_s), 1);
    EXPECT_EQ(database.value(u"select count(*) from [採購資料] where [採購單號]='A1  '"), u"1");
}

TEST_F(ConnectionTest, ExecuteCountsTheRowsItTouched) {
    Connection connection(database.pool, database.target);
    for (const QString& number : {u"1"_s, u"2"_s, u"3"_s})
        EXPECT_EQ(add(connection, number), 1);
    EXPECT_EQ(connection.Execute(sql(u"update [採購資料] set [備註]='x' where [採購單號]>'1'")), 2);
    EXPECT_EQ(connection.Execute(sql(u"update [採購資料] set [備註]='x' where [採購單號]='9'")), 0);
    EXPECT_EQ(connection.Execute(sql(u"delete from [採購資料]")), 3);
}

TEST_F(ConnectionTest, ABatchRunsItsStatementsInOrder) {
    Connection connection(database.pool, database.target);
    EXPECT_EQ(
        connection.Execute(sql(u"insert into [採購資料] ([採購單號],[備註]) values ('{}','{}'); "
                               u"insert into [採購資料] ([採購單號]) select [採購單號]+'{}' from [採購資料]",
                               u"x", u"note", u"y")),
        2);
    const Recordset rows =
        select(connection,
               sql(u"delete from [採購資料] where [採購單號]='{}'; select [採購單號] from [採購資料]", u"x"));
    ASSERT_EQ(rows.RecordCount(), 1);
    EXPECT_EQ(rows.text(u"採購單號"), u"xy");
}

TEST_F(ConnectionTest, RollsBackWhatWasNotCommitted) {
    {
        Connection connection(database.pool, database.target);
        connection.BeginTrans();
        add(connection, u"close"_s);
        connection.Close();
        EXPECT_FALSE(connection.State());
        connection.Open(database.target);
        EXPECT_FALSE(connection.inTransaction());
        connection.BeginTrans();
        add(connection, u"destructor"_s);
    }
    {
        Connection connection(database.pool, database.target);
        try {
            Transaction transaction(connection);
            add(connection, u"exception"_s);
            throw std::runtime_error("left");
        } catch (const std::runtime_error&) {
        }
        EXPECT_FALSE(connection.inTransaction());
        connection.BeginTrans();
        add(connection, u"rollback"_s);
        connection.RollbackTrans();
        EXPECT_EQ(count(), u"0");
        Transaction transaction(connection);
        add(connection, u"committed"_s);
        EXPECT_EQ(count(), u"0") << "others do not see it yet";
        transaction.commit();
        EXPECT_EQ(count(), u"1");
    }
}

TEST_F(ConnectionTest, RefusesMisuse) {
    Connection connection(database.pool);
    EXPECT_EQ(errorOf([&] { connection.BeginTrans(); }), DatabaseError::Usage);
    EXPECT_EQ(errorOf([&] { connection.Execute(sql(u"delete from [採購資料]")); }), DatabaseError::Usage);
    connection.RollbackTrans();
    connection.Open(database.target);
    EXPECT_EQ(errorOf([&] { connection.Open(database.target); }), DatabaseError::Usage);
    EXPECT_EQ(errorOf([&] { connection.CommitTrans(); }), DatabaseError::Usage);
    connection.BeginTrans();
    EXPECT_EQ(errorOf([&] { connection.BeginTrans(); }), DatabaseError::Usage);
    EXPECT_TRUE(connection.inTransaction());
}

TEST_F(ConnectionTest, DuplicatesSurfaceWithTheServersNumber) {
    Connection connection(database.pool, database.target);
    add(connection, u"a1"_s);
    for (const QString& number : {u"a1"_s, u"A1"_s, u"a1 "_s}) {
        QString text;
        EXPECT_EQ(errorOf([&] { add(connection, number); }, &text), DatabaseError::DuplicateKey);
        EXPECT_TRUE(text.contains(u"「採購資料」")) << text.toStdString();
    }
    EXPECT_EQ(count(), u"1");
}

TEST_F(ConnectionTest, SecondConnectionDuringATransactionIsForbiddenOnDemand) {
    database.pool.forbidSecondConnection(true);
    Connection first(database.pool, database.target);
    { Connection harmless(database.pool, database.target); }
    first.BeginTrans();
    EXPECT_EQ(errorOf([&] { Connection second(database.pool, database.target); }), DatabaseError::Usage);
    TestDatabase copy;
    { Connection other(database.pool, copy.target); } // another database sees no old data of this one
    first.CommitTrans();
    { Connection afterwards(database.pool, database.target); }
    first.BeginTrans();
    database.pool.forbidSecondConnection(false);
    { Connection allowed(database.pool, database.target); }
}

TEST_F(ConnectionTest, AnotherWriterIsWaitedForAndThenNamed) {
    database.pool.setBusyTimeout(150);
    OtherUser other(database.file);
    other.run("BEGIN IMMEDIATE");
    Connection connection(database.pool, database.target);
    QString text;
    QElapsedTimer waited;
    waited.start();
    EXPECT_EQ(errorOf([&] { connection.BeginTrans(); }, &text), DatabaseError::Locked);
    EXPECT_GE(waited.elapsed(), 100);
    EXPECT_TRUE(text.contains(u"其他使用者")) << text.toStdString();
    EXPECT_FALSE(connection.inTransaction());
    EXPECT_EQ(errorOf([&] { add(connection, u"1"_s); }), DatabaseError::Locked);
    EXPECT_EQ(count(), u"0") << "reading goes on";
    other.run("COMMIT");
    Transaction transaction(connection);
    add(connection, u"1"_s);
    transaction.commit();
    EXPECT_EQ(count(), u"1");
}

TEST_F(ConnectionTest, UnusableFilesHaveAText) {
    const QString garbage = database.folder.filePath(u"garbage.db"_s);
    QFile file(garbage);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray("this is a letter and no database ").repeated(200));
    file.close();
    struct Case {
        QString file;
        const char16_t* says;
    };
    for (const Case& c : {Case{garbage, u"不是資料庫"}, Case{database.folder.filePath(u"無.db"_s), u"無.db"},
                          Case{database.folder.path(), u"不是檔案"}}) {
        QString text;
        EXPECT_EQ(errorOf([&] { Connection connection(database.pool, connectionStringFor(c.file)); }, &text),
                  DatabaseError::ConnectionFailed);
        EXPECT_TRUE(text.contains(QString::fromUtf16(c.says))) << text.toStdString();
    }
    EXPECT_FALSE(QFile::exists(database.folder.filePath(u"無.db"_s))) << "nothing is created here";
}

TEST_F(ConnectionTest, ReadOnlyDatabasesAreReadAndNotWritten) {
    database.run({u"insert into [採購資料] ([採購單號]) values ('1')"});
    const auto check = [&](const QString& target) {
        Connection connection(database.pool, target);
        EXPECT_EQ(select(connection, sql(u"select [採購單號] from [採購資料]")).text(0), u"1");
        QString text;
        EXPECT_EQ(errorOf([&] { add(connection, u"2"_s); }, &text), DatabaseError::ReadOnly);
        EXPECT_TRUE(text.contains(u"唯讀")) << text.toStdString();
    };
    check(database.target + u";Mode=Read"_s);

    database.pool.clear();
    ASSERT_TRUE(QFile::setPermissions(database.folder.path(), QFile::Permissions::fromInt(0x7777)));
    ASSERT_TRUE(QFile::setPermissions(database.file, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    const CommonUser notRoot;
    check(database.target);
}

TEST_F(ConnectionTest, UnknownNamesHaveTheServersNumbers) {
    Connection connection(database.pool, database.target);
    EXPECT_EQ(errorOf([&] { select(connection, sql(u"select * from [不存在]")); }),
              DatabaseError::InvalidObject);
    EXPECT_EQ(errorOf([&] { select(connection, sql(u"select [不存在] from [採購資料]")); }),
              DatabaseError::InvalidColumn);
    EXPECT_EQ(errorOf([&] { connection.Execute(sql(u"delete from [不存在]")); }),
              DatabaseError::InvalidObject);
    EXPECT_EQ(errorOf([&] { select(connection, sql(u"delete from [採購資料]")); }), DatabaseError::Usage);
}

TEST_F(ConnectionTest, AReplacedFileIsOpenedAnew) {
    database.run({u"insert into [採購資料] ([採購單號]) values ('old')"});
    TestDatabase other;
    other.run({u"create table [採購資料] ([採購單號] nvarchar(20) primary key)"});
    other.pool.clear();
    ASSERT_TRUE(QFile::remove(database.file));
    for (const char* rest : {"-wal", "-shm"})
        QFile::remove(database.file + QLatin1String(rest));
    ASSERT_TRUE(QFile::copy(other.file, database.file));
    EXPECT_EQ(count(), u"0");
}

TEST_F(ConnectionTest, AChangedSchemaIsNoticed) {
    EXPECT_EQ(database.value(u"select * from [採購資料]"), u"(none)");
    database.run({u"insert into [採購資料] ([採購單號]) values ('1')"});
    {
        ConnectionPool another;
        Connection connection(another, database.target);
        connection.Execute(sql(u"alter table [採購資料] add [數量] float default 7"));
    }
    Connection connection(database.pool, database.target);
    const Recordset rows = select(connection, sql(u"select * from [採購資料]"));
    ASSERT_EQ(rows.columnCount(), 3);
    EXPECT_EQ(rows.text(u"數量"), u"7");
    connection.BeginTrans();
    connection.Execute(sql(u"drop table [採購資料]"));
    connection.Execute(sql(u"create table [採購資料] ([甲] float)"));
    EXPECT_EQ(select(connection, sql(u"select * from [採購資料]")).columnNames(), QStringList{u"甲"_s});
    connection.RollbackTrans();
    EXPECT_EQ(select(connection, sql(u"select * from [採購資料]")).columnCount(), 3);
}

TEST_F(ConnectionTest, TheClockCanBeFrozen) {
    const QDateTime frozen(QDate(2025, 1, 15), QTime(8, 30));
    database.pool.setClock(frozen);
    EXPECT_EQ(database.value(u"SELECT dbo.DT(9) AS 時間"), u"2025-01-15 08:30:00");
    database.pool.setClock({});
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    const QDateTime now =
        QDateTime::fromString(database.value(u"SELECT dbo.DT(9) AS 時間"), u"yyyy-MM-dd HH:mm:ss");
    EXPECT_TRUE(now >= before && now <= before.addSecs(60)) << now.toString().toStdString();
}

TEST_F(ConnectionTest, TraceShowsWhatTheEngineGot) {
    std::vector<StatementTrace> seen;
    database.pool.setTrace([&](const StatementTrace& trace) { seen.push_back(trace); });
    {
        Connection connection(database.pool, database.target);
        Transaction transaction(connection);
        connection.Execute(
            sql(u"insert into [採購資料] ([採購單號],[備註]) values ('{}','{}')", u"O'N", u"紙\n板"));
        transaction.commit();
    }
    ASSERT_EQ(seen.size(), 3U);
    EXPECT_EQ(seen[0].native, u"BEGIN IMMEDIATE");
    EXPECT_EQ(seen[1].values, (QStringList{u"O'N"_s, u"紙\n板"_s}));
    EXPECT_FALSE(seen[1].native.contains(u"紙")) << "values are bound, not written";
    EXPECT_EQ(seen[2].native, u"COMMIT");
}

TEST_F(ConnectionTest, SameShapesAreTranslatedOnce) {
    std::vector<QString> natives;
    database.pool.setTrace([&](const StatementTrace& trace) { natives.push_back(trace.native); });
    Connection connection(database.pool, database.target);
    for (int i = 0; i < 3; ++i)
        add(connection, QString::number(i));
    EXPECT_EQ(natives, std::vector<QString>(3, natives.front()));
}

// What an engine in need does by itself: the rest of the save must not go in without its beginning.
TEST_F(ConnectionTest, ATransactionThatTheEngineDroppedIsNotContinued) {
    Connection connection(database.pool, database.target);
    connection.BeginTrans();
    add(connection, u"1"_s);
    sqlite3* handle = static_cast<EmbeddedConnection&>(connection.physical()).handle();
    ASSERT_EQ(sqlite3_exec(handle, "ROLLBACK", nullptr, nullptr, nullptr), SQLITE_OK);
    EXPECT_EQ(errorOf([&] { add(connection, u"2"_s); }), DatabaseError::EngineFailed);
    EXPECT_NE(errorOf([&] { connection.CommitTrans(); }), 0);
    EXPECT_EQ(count(), u"0");
    EXPECT_EQ(add(connection, u"3"_s), 1) << "and the connection is good again";
}

TEST_F(ConnectionTest, ACommitThatFailsHasRolledBack) {
    Connection connection(database.pool, database.target);
    connection.BeginTrans();
    add(connection, u"1"_s);
    database.pool.failAt(1);
    EXPECT_EQ(errorOf([&] { connection.CommitTrans(); }), DatabaseError::Injected);
    EXPECT_FALSE(connection.inTransaction());
    EXPECT_EQ(count(), u"0");
    connection.BeginTrans();
    add(connection, u"1"_s);
    connection.CommitTrans();
    EXPECT_EQ(count(), u"1");
}

TEST_F(ConnectionTest, AFullDiskHasATextAndSavesNothing) {
    Connection connection(database.pool, database.target);
    const auto allow = [&](const char* pages) { return pragma(connection, pages).toInt(); };
    const int used = allow("PRAGMA page_count");
    allow(("PRAGMA max_page_count=" + std::to_string(used + 3)).c_str());
    connection.BeginTrans();
    QString text;
    int number = 0;
    for (int i = 0; number == 0 && i < 1000; ++i)
        number = errorOf([&] { add(connection, QString(200, u'x') + QString::number(i)); }, &text);
    EXPECT_EQ(number, DatabaseError::DiskFull);
    EXPECT_TRUE(text.contains(u"磁碟已滿")) << text.toStdString();
    connection.RollbackTrans();
    EXPECT_EQ(count(), u"0");
    allow("PRAGMA max_page_count=1000000");
    EXPECT_EQ(add(connection, u"1"_s), 1);
}

void saveDocument(ConnectionPool& pool, const QString& target) {
    Connection connection(pool, target);
    Recordset existing =
        select(connection, sql(u"select [採購單號] from [採購資料] where [採購單號]='head'"));
    Transaction transaction(connection);
    connection.Execute(sql(u"delete from [採購資料] where [備註]='line'"));
    Recordset header;
    header.Open(sql(u"select * from [採購資料]"), connection, Cursor::Optimistic);
    header.AddNew();
    header.set(u"採購單號", u"head"_s);
    header.Update();
    Recordset lines;
    lines.Open(sql(u"select * from [採購資料] where 1<>1"), connection, Cursor::Batch);
    for (const QString& number : {u"a"_s, u"b"_s, u"c"_s}) {
        lines.AddNew();
        lines.set(u"採購單號", number);
        lines.set(u"備註", u"line"_s);
    }
    lines.UpdateBatch();
    transaction.commit();
}

TEST_F(ConnectionTest, AFailureAtAnyCallLeavesNothingHalfWritten) {
    database.pool.forbidSecondConnection(true);
    int struck = 0;
    for (int call = 1;; ++call) {
        database.pool.failAt(call);
        const int number = errorOf([&] { saveDocument(database.pool, database.target); });
        const int calls = database.pool.callCount();
        database.pool.failAt(0);
        if (number == 0) {
            EXPECT_EQ(calls, call - 1);
            break;
        }
        ASSERT_EQ(number, DatabaseError::Injected) << "call " << call;
        EXPECT_EQ(calls, call) << "the failure ended the save";
        EXPECT_EQ(count(), u"0") << "call " << call;
        ++struck;
    }
    EXPECT_EQ(count(), u"4");
    EXPECT_GE(struck, 10);
    std::cout << "[ struck   ] " << struck << " calls of a save\n";
}

} // namespace
} // namespace liaowu
