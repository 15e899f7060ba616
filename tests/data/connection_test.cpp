#include "plant_session.h"
#include <QElapsedTimer>
#include <QScopeGuard>
#include <unistd.h>

using namespace liaowu;
using namespace Qt::StringLiterals;

class ConnectionTest : public TestDatabase, public testing::Test {
public:
    ConnectionTest() {
        run({u"create table [採購資料] ([採購單號] nvarchar(20) not null, [備註] nvarchar(50) default '', "
             u"primary key ([採購單號]))"});
    }

    static qint64 add(Connection& connection, const QString& number) {
        return connection.Execute(sql(u"insert into [採購資料] ([採購單號]) values ('{}')", number));
    }

    QString count() { return value(u"select count(*) from [採購資料]"); }
    QString everything() { return count(); }
};

// A crash of the machine must not take a saved document with it, and no second writer must fail at once.
TEST_F(ConnectionTest, EveryPhysicalConnectionHasItsSettings) {
    Connection first(pool, target), second(pool, target);
    ASSERT_NE(&first.physical(), &second.physical());
    for (Connection* connection : {&first, &second}) {
        const QByteArray settings =
            "SELECT * FROM pragma_synchronous, pragma_journal_mode, pragma_busy_timeout, "
            "pragma_foreign_keys";
        EXPECT_EQ(engineRows(handleOf(*connection), settings), QStringList{u"2|wal|5000|0"_s});
        // The key's collation is the server's, which only a connection that knows it can compare by.
        engineRows(handleOf(*connection), "SELECT 1 FROM 採購資料 WHERE 採購單號 = 'x'");
    }
    EXPECT_EQ(add(first, u"a1"_s), 1);
    EXPECT_EQ(value(u"select count(*) from [採購資料] where [採購單號]='A1  '"), u"1");
}

TEST_F(ConnectionTest, ExecuteCountsTheRowsItTouched) {
    Connection connection(pool, target);
    const auto execute = [&](QStringView statement) { return connection.Execute(sql(statement)); };
    EXPECT_EQ(execute(u"insert into [採購資料] ([採購單號]) values ('x'); "
                      "insert into [採購資料] ([採購單號]) select [採購單號]+'y' from [採購資料]"),
              2)
        << "a batch runs in order";
    EXPECT_EQ(execute(u"update [採購資料] set [備註]='x' where [採購單號]>'1'"), 2);
    EXPECT_EQ(execute(u"update [採購資料] set [備註]='x' where [採購單號]='9'"), 0);
    const Recordset rows = select(connection, sql(u"delete from [採購資料] where [採購單號]='{}'; "
                                                  "select [採購單號] from [採購資料]",
                                                  u"x"));
    ASSERT_EQ(rows.RecordCount(), 1);
    EXPECT_EQ(rows.text(u"採購單號"), u"xy");
    EXPECT_EQ(execute(u"delete from [採購資料]"), 1);
}

TEST_F(ConnectionTest, RollsBackWhatWasNotCommitted) {
    {
        Connection connection(pool, target);
        connection.BeginTrans();
        add(connection, u"close"_s);
        connection.Close();
        EXPECT_FALSE(connection.State());
        connection.Open(target);
        EXPECT_FALSE(connection.inTransaction());
        connection.BeginTrans();
        add(connection, u"destructor"_s);
    }
    Connection connection(pool, target);
    {
        Transaction transaction(connection);
        add(connection, u"left"_s);
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

TEST_F(ConnectionTest, RefusesMisuse) {
    Connection connection(pool);
    EXPECT_TRUE(fails([&] { connection.BeginTrans(); }, DatabaseError::Usage));
    EXPECT_TRUE(fails([&] { connection.Execute(sql(u"delete from [採購資料]")); }, DatabaseError::Usage));
    connection.RollbackTrans();
    connection.Open(target);
    EXPECT_TRUE(fails([&] { connection.Open(target); }, DatabaseError::Usage));
    EXPECT_TRUE(fails([&] { connection.CommitTrans(); }, DatabaseError::Usage));
    EXPECT_TRUE(fails([&] { select(connection, sql(u"delete from [採購資料]")); }, DatabaseError::Usage));
    connection.BeginTrans();
    EXPECT_TRUE(fails([&] { connection.BeginTrans(); }, DatabaseError::Usage));
    EXPECT_TRUE(connection.inTransaction());
}

TEST_F(ConnectionTest, SecondConnectionDuringATransactionIsForbiddenOnDemand) {
    pool.forbidSecondConnection(true);
    Connection first(pool, target);
    { Connection harmless(pool, target); }
    first.BeginTrans();
    EXPECT_TRUE(fails([&] { Connection second(pool, target); }, DatabaseError::Usage));
    TestDatabase copy;
    { Connection other(pool, copy.target); } // another database sees no old data of this one
    first.CommitTrans();
    { Connection afterwards(pool, target); }
    first.BeginTrans();
    pool.forbidSecondConnection(false);
    { Connection allowed(pool, target); }
}

TEST_F(ConnectionTest, AnotherWriterIsWaitedForAndThenNamed) {
    pool.setBusyTimeout(150);
    OtherUser other(file);
    other.run("BEGIN IMMEDIATE");
    Connection connection(pool, target);
    QElapsedTimer waited;
    waited.start();
    EXPECT_TRUE(fails([&] { connection.BeginTrans(); }, DatabaseError::Locked, u"其他使用者"));
    EXPECT_GE(waited.elapsed(), 100);
    EXPECT_FALSE(connection.inTransaction());
    EXPECT_TRUE(fails([&] { add(connection, u"1"_s); }, DatabaseError::Locked));
    EXPECT_EQ(count(), u"0") << "reading goes on";
    other.run("COMMIT");
    Transaction transaction(connection);
    add(connection, u"1"_s);
    transaction.commit();
    EXPECT_EQ(count(), u"1");
}

TEST_F(ConnectionTest, UnusableFilesHaveAText) {
    const QString garbage = folder.filePath(u"garbage.db"_s);
    QFile letter(garbage);
    ASSERT_TRUE(letter.open(QIODevice::WriteOnly));
    letter.write(QByteArray("this is a letter and no database ").repeated(200));
    letter.close();
    for (const auto& [path, says] :
         {std::pair(garbage, u"不是資料庫"_s), std::pair(folder.filePath(u"無.db"_s), u"無.db"_s),
          std::pair(folder.path(), u"不是檔案"_s)}) {
        const QString unusable = connectionStringFor(path);
        EXPECT_TRUE(
            fails([&] { Connection connection(pool, unusable); }, DatabaseError::ConnectionFailed, says));
    }
    EXPECT_FALSE(QFile::exists(folder.filePath(u"無.db"_s))) << "nothing is created here";
}

TEST_F(ConnectionTest, ReadOnlyDatabasesAreReadAndNotWritten) {
    run({u"insert into [採購資料] ([採購單號]) values ('1')"});
    const auto check = [&](const QString& readOnly) {
        Connection connection(pool, readOnly);
        EXPECT_EQ(select(connection, sql(u"select [採購單號] from [採購資料]")).text(0), u"1");
        EXPECT_TRUE(fails([&] { add(connection, u"2"_s); }, DatabaseError::ReadOnly, u"唯讀"));
    };
    check(target + u";Mode=Read"_s);

    pool.clear();
    ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::Permissions::fromInt(0x7777)));
    ASSERT_TRUE(QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    // Root may write everywhere, so it steps down for as long as this takes.
    const uid_t user = geteuid();
    ASSERT_TRUE(user != 0 || seteuid(65534) == 0);
    const auto stepUp = qScopeGuard([&] { EXPECT_EQ(seteuid(user), 0); });
    check(target);
}

TEST_F(ConnectionTest, AReplacedFileIsOpenedAnew) {
    run({u"insert into [採購資料] ([採購單號]) values ('old')"});
    TestDatabase other;
    other.run({u"create table [採購資料] ([採購單號] nvarchar(20) primary key)"});
    other.pool.clear();
    ASSERT_TRUE(QFile::remove(file));
    for (const char* rest : {"-wal", "-shm"})
        QFile::remove(file + QLatin1String(rest));
    ASSERT_TRUE(QFile::copy(other.file, file));
    EXPECT_EQ(count(), u"0");
}

TEST_F(ConnectionTest, AChangedSchemaIsNoticed) {
    EXPECT_EQ(value(u"select * from [採購資料]"), u"(none)");
    run({u"insert into [採購資料] ([採購單號]) values ('1')"});
    {
        ConnectionPool another;
        Connection connection(another, target);
        connection.Execute(sql(u"alter table [採購資料] add [數量] float default 7"));
    }
    Connection connection(pool, target);
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

TEST_F(ConnectionTest, TraceShowsWhatTheEngineGot) {
    std::vector<StatementTrace> seen;
    pool.setTrace([&](const StatementTrace& trace) { seen.push_back(trace); });
    Connection connection(pool, target);
    Transaction transaction(connection);
    for (const QString& number : {u"O'N"_s, u"2"_s})
        connection.Execute(
            sql(u"insert into [採購資料] ([採購單號],[備註]) values ('{}','{}')", number, u"紙\n板"));
    transaction.commit();
    ASSERT_EQ(seen.size(), 4U);
    EXPECT_EQ(seen[0].native, u"BEGIN IMMEDIATE");
    EXPECT_EQ(seen[1].values, (QStringList{u"O'N"_s, u"紙\n板"_s}));
    EXPECT_FALSE(seen[1].native.contains(u"紙")) << "values are bound, not written";
    EXPECT_EQ(seen[2].native, seen[1].native);
    EXPECT_EQ(seen[3].native, u"COMMIT");
}

// What an engine in need does by itself: the rest of the save must not go in without its beginning.
TEST_F(ConnectionTest, ATransactionThatTheEngineDroppedIsNotContinued) {
    Connection connection(pool, target);
    connection.BeginTrans();
    add(connection, u"1"_s);
    engineRows(handleOf(connection), "ROLLBACK");
    EXPECT_TRUE(fails([&] { add(connection, u"2"_s); }, DatabaseError::EngineFailed));
    EXPECT_NE(errorOf([&] { connection.CommitTrans(); }), 0);
    EXPECT_EQ(count(), u"0");
    EXPECT_EQ(add(connection, u"3"_s), 1) << "and the connection is good again";
}

TEST_F(ConnectionTest, ACommitThatFailsHasRolledBack) {
    Connection connection(pool, target);
    connection.BeginTrans();
    add(connection, u"1"_s);
    pool.failAt(1);
    EXPECT_TRUE(fails([&] { connection.CommitTrans(); }, DatabaseError::Injected));
    EXPECT_FALSE(connection.inTransaction());
    EXPECT_EQ(count(), u"0");
    connection.BeginTrans();
    connection.CommitTrans();
}

static void saveDocument(ConnectionPool& pool, const QString& target) {
    Connection connection(pool, target);
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
    pool.forbidSecondConnection(true);
    const int struck = failEveryCall("save", *this, [this] { saveDocument(pool, target); });
    EXPECT_EQ(count(), u"4");
    EXPECT_GE(struck, 10);
    std::cout << "[ struck   ] " << struck << " calls of a save\n";
}
