#include "data/test_database.h"
#include <QCoreApplication>
#include <QProcess>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlIndex>
#include <QSqlRecord>
#include <QSqlResult>

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

/// What a driver was given, and what it is to answer.
struct DriverRecord {
    QString opened;
    QStringList statements;
    QStringList transactions;
    QStringList keys;         ///< primary key of every table
    QStringList columns;      ///< of every select
    QList<QVariantList> rows; ///< of every select that is no probe
    QString failure;          ///< native codes with which the next statement fails
    int touched = 1;
};

class RecordingResult : public QSqlResult {
public:
    RecordingResult(const QSqlDriver* driver, std::shared_ptr<DriverRecord> into)
        : QSqlResult(driver), log(std::move(into)) {}

    bool reset(const QString& statement) override {
        log->statements += statement;
        if (!log->failure.isEmpty()) {
            setLastError(QSqlError({}, u"[FreeTDS][SQL Server]refused"_s, QSqlError::StatementError,
                                   std::exchange(log->failure, {})));
            return false;
        }
        const bool isSelect = statement.startsWith(u"select", Qt::CaseInsensitive);
        current.clear();
        if (isSelect && !statement.endsWith(u"1=0")) current = log->rows;
        setSelect(isSelect);
        setActive(true);
        setAt(QSql::BeforeFirstRow);
        return true;
    }
    bool fetch(int row) override {
        if (row < 0 || row >= size()) return false;
        setAt(row);
        return true;
    }
    bool fetchFirst() override { return fetch(0); }
    bool fetchLast() override { return fetch(size() - 1); }
    int size() override { return static_cast<int>(current.size()); }
    int numRowsAffected() override { return log->touched; }
    QVariant data(int column) override { return current.at(at()).at(column); }
    bool isNull(int column) override { return data(column).isNull(); }
    QSqlRecord record() const override {
        QSqlRecord columns;
        for (const QString& name : log->columns)
            columns.append(QSqlField(name, QMetaType(QMetaType::QString)));
        return columns;
    }

private:
    std::shared_ptr<DriverRecord> log;
    QList<QVariantList> current;
};

/// Stands where the ODBC driver stands: what arrives here is what a server would get.
class RecordingDriver : public QSqlDriver {
public:
    explicit RecordingDriver(std::shared_ptr<DriverRecord> into) : record(std::move(into)) {}

    bool hasFeature(DriverFeature feature) const override { return feature == Transactions; }
    bool open(const QString& name, const QString&, const QString&, const QString&, int,
              const QString&) override {
        record->opened = name;
        setOpen(true);
        return true;
    }
    void close() override { setOpen(false); }
    QSqlResult* createResult() const override { return new RecordingResult(this, record); }
    bool beginTransaction() override { return note(u"begin"); }
    bool commitTransaction() override { return note(u"commit"); }
    bool rollbackTransaction() override { return note(u"rollback"); }
    QSqlIndex primaryIndex(const QString& table) const override {
        QSqlIndex index(table);
        for (const QString& key : record->keys)
            index.append(QSqlField(key));
        return index;
    }

private:
    bool note(QStringView step) {
        record->transactions += step.toString();
        return true;
    }

    std::shared_ptr<DriverRecord> record;
};

} // namespace

/// What a SQL Server would get, seen at the driver's door.
class ServerTextTest : public testing::Test {
protected:
    ServerTextTest() {
        pool.setOdbcDriver([this] { return new RecordingDriver(record); });
        pool.setTrace([this](const StatementTrace& trace) { traced += trace.native; });
        connection.Open(target);
    }

    QString target = u"Provider=SQLOLEDB;Data Source=SRV,1444;Initial Catalog=料務;User ID=sa;Password=pw"_s;
    std::shared_ptr<DriverRecord> record = std::make_shared<DriverRecord>();
    QStringList traced;
    ConnectionPool pool;
    Connection connection{pool};
};

TEST_F(ServerTextTest, TextGoesOutUntouched) {
    EXPECT_EQ(record->opened, parseConnectionString(target).odbcString);
    const QString update = u"UPDATE 原料申購資料 SET 製單人='{}',製單時間=dbo.DT(9) WHERE 申購單號 = '{}' "_s;
    const QString search =
        u"select top 1 len([a ? b]), {fn now()} from t where DATEDIFF(dd, CAST(建檔日期 AS DATETIME)"
        u",'20240101') =0 and c like '%?%' -- \r\n"_s;
    connection.Execute(sql(update, u"王'五", u"2501150001"));
    record->columns = {u"a"_s};
    select(connection, readyMadeSql(search));
    const QStringList expected{
        u"UPDATE 原料申購資料 SET 製單人=N'王''五',製單時間=dbo.DT(9) WHERE 申購單號 = '2501150001' "_s,
        search};
    EXPECT_EQ(record->statements, expected);
    EXPECT_EQ(traced, expected);
}

TEST_F(ServerTextTest, TransactionsAreTheDrivers) {
    connection.BeginTrans();
    connection.CommitTrans();
    connection.BeginTrans();
    connection.Close();
    EXPECT_EQ(record->transactions, (QStringList{u"begin"_s, u"commit"_s, u"begin"_s, u"rollback"_s}));
}

TEST_F(ServerTextTest, WritesByKeyAndOldValues) {
    record->columns = {u"採購單號"_s, u"序"_s, u"數量"_s};
    record->keys = {u"採購單號"_s, u"序"_s};
    record->rows = {{u"P1"_s, u"1"_s, QVariant(QMetaType(QMetaType::QString))}, {u"P1"_s, u"2"_s, 0.1}};
    Recordset rows;
    rows.Open(sql(u"select * from [採購明細資料] where 採購單號='P1'"), connection, Cursor::Optimistic);
    rows.AddNew();
    rows.set(u"採購單號", u"料1"_s);
    rows.Update();
    rows.MoveFirst();
    rows.set(u"數量", 5.0);
    rows.Update();
    rows.MoveNext();
    EXPECT_EQ(rows.text(u"數量"), u"0.1");
    rows.set(u"數量", u"7"_s);
    record->touched = 0;
    EXPECT_TRUE(fails([&] { rows.Update(); }, DatabaseError::Conflict));
    EXPECT_EQ(
        record->statements,
        (QStringList{
            u"select * from [採購明細資料] WHERE 1=0"_s,
            u"INSERT INTO [採購明細資料] ([採購單號]) VALUES (N'料1')"_s,
            u"select * from [採購明細資料] where 採購單號='P1'"_s,
            u"UPDATE [採購明細資料] SET [數量]='5' WHERE [採購單號]='P1' AND [序]='1' AND [數量] IS NULL"_s,
            u"UPDATE [採購明細資料] SET [數量]='7' WHERE [採購單號]='P1' AND [序]='2' AND "
            u"[數量]=1.0000000000000001e-01"_s}));
}

TEST_F(ServerTextTest, ErrorsKeepTheServersNumber) {
    struct Case {
        QString natives;
        int number;
        const char16_t* says;
    };
    const std::vector<Case> cases{{u"2627;3621"_s, 2627, u"refused"},
                                  {u"8114"_s, 8114, u"refused"},
                                  {u"1205;3621"_s, DatabaseError::Locked, u"其他使用者"},
                                  {u"1222"_s, DatabaseError::Locked, u"其他使用者"},
                                  {u"9002"_s, DatabaseError::DiskFull, u"磁碟已滿"},
                                  {u"3906"_s, DatabaseError::ReadOnly, u"唯讀"}};
    for (const Case& c : cases) {
        record->failure = c.natives;
        QString text;
        EXPECT_EQ(errorOf([&] { connection.Execute(sql(u"delete from t")); }, &text), c.number);
        EXPECT_TRUE(text.contains(c.says) && !text.contains(u"[FreeTDS]")) << text;
    }
}

// The server has rolled back already: what followed would be saved without what went before.
TEST_F(ServerTextTest, ATransactionThatTheServerDroppedIsNotContinued) {
    for (const QString& natives : {u"1205"_s, u"20006"_s}) {
        connection.Close();
        connection.Open(u"DSN=plant"_s);
        record->statements.clear();
        record->transactions.clear();
        connection.BeginTrans();
        record->failure = natives;
        const auto insert = [&] { connection.Execute(sql(u"insert into a values ('1')")); };
        EXPECT_NE(errorOf(insert), 0);
        EXPECT_TRUE(fails(insert, DatabaseError::Locked));
        EXPECT_TRUE(fails([&] { connection.CommitTrans(); }, DatabaseError::Locked));
        EXPECT_EQ(record->statements.size(), 1);
        EXPECT_EQ(record->transactions, (QStringList{u"begin"_s, u"rollback"_s}));
    }
}

TEST_F(ServerTextTest, ALostConnectionIsNotUsedAgain) {
    const PhysicalConnection* lost = &connection.physical();
    record->failure = u"20006"_s;
    EXPECT_TRUE(fails([&] { connection.Execute(sql(u"delete from t")); }, DatabaseError::ConnectionFailed,
                      u"無法連線"));
    // Opened before the old one is gone, so that the address cannot repeat.
    Connection other(pool, target);
    const PhysicalConnection* good = &other.physical();
    EXPECT_NE(good, lost);
    connection.Close();
    other.Close();
    connection.Open(target);
    EXPECT_EQ(&connection.physical(), good);
}

/// Drivers behind the real driver manager. Their plugins are found only with an application.
class OdbcTest : public testing::Test {
protected:
    static bool isInstalled(const QString& driver) {
        QProcess list;
        list.start(u"odbcinst"_s, {u"-q"_s, u"-d"_s, u"-n"_s, driver});
        return list.waitForFinished() && list.exitCode() == 0;
    }

    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    QTemporaryDir folder;
    ConnectionPool pool;
    Connection connection{pool};
};

/// A real driver over a file.
class OdbcDriverTest : public OdbcTest {
protected:
    void SetUp() override {
        if (!isInstalled(u"SQLite3"_s))
            GTEST_SKIP() << "no ODBC driver named SQLite3 (package libsqliteodbc)";
        connection.Open(u"Driver=SQLite3;Database="_s + folder.filePath(u"x.db"_s));
    }
};

TEST_F(OdbcDriverTest, ReadsTypesAndTexts) {
    connection.Execute(
        readyMadeSql(u"create table 料 (甲 varchar(20) primary key, 乙 double, 丙 integer)"_s));
    const SqlText insert = readyMadeSql(u"insert into 料 values ('紙''板', 0.1, 7), ('b', null, null)"_s);
    EXPECT_EQ(connection.Execute(insert), 2);
    const Recordset rows = select(connection, readyMadeSql(u"select * from 料 order by 丙 desc"_s));
    ASSERT_EQ(rows.RecordCount(), 2);
    EXPECT_EQ(rows.columnNames(), (QStringList{u"甲"_s, u"乙"_s, u"丙"_s}));
    EXPECT_EQ(rows.text(u"甲"), u"紙'板");
    EXPECT_EQ(rows.text(u"乙"), u"0.1");
    EXPECT_EQ(rows.number(u"丙"), 7);
    EXPECT_TRUE(rows.isNumeric(1) && !rows.isNumeric(0));
    EXPECT_TRUE(rows.isNullAt(1, 1) && !rows.isNullAt(1, 0));
}

TEST_F(OdbcDriverTest, TransactionsAndErrors) {
    const auto insert = [this](QStringView value) {
        connection.Execute(sql(u"insert into t values ('{}')", value));
    };
    connection.Execute(readyMadeSql(u"create table t (a varchar(20) primary key)"_s));
    {
        Transaction transaction(connection);
        insert(u"gone");
    }
    {
        Transaction transaction(connection);
        insert(u"kept");
        EXPECT_NE(errorOf([&] { insert(u"kept"); }), 0);
        transaction.commit();
    }
    const Recordset rows = select(connection, sql(u"select a from t"));
    EXPECT_EQ(rows.RecordCount(), 1);
    EXPECT_EQ(rows.text(0), u"kept");
    QString text;
    EXPECT_NE(errorOf([&] { select(connection, sql(u"select * from missing")); }, &text), 0);
    EXPECT_TRUE(text.contains(u"no such table")) << text;
}

TEST_F(OdbcDriverTest, RecordsetsWrite) {
    connection.Execute(
        readyMadeSql(u"create table t (a varchar(20) primary key, b varchar(20), n double)"_s));
    Recordset rows;
    rows.Open(sql(u"select * from [t] order by a"), connection, Cursor::Batch);
    for (int i = 0; i < 3; ++i) {
        rows.AddNew();
        rows.set(u"a", QString::number(i));
        rows.set(u"n", i / 10.0);
    }
    rows.UpdateBatch();
    rows.Close();
    rows.Open(sql(u"select * from [t] order by a"), connection, Cursor::Optimistic);
    ASSERT_EQ(rows.RecordCount(), 3);
    rows.MoveLast();
    rows.set(u"b", u"O'N"_s);
    rows.set(u"n", 0.3);
    rows.Update();
    EXPECT_EQ(select(connection, sql(u"select b from t where a='2' and n=0.3")).text(0), u"O'N");
    connection.Execute(sql(u"update t set n=99 where a='2'"));
    rows.set(u"n", 1.0);
    EXPECT_TRUE(fails([&] { rows.Update(); }, DatabaseError::Conflict));
}

TEST_F(OdbcTest, AnUnreachableServerHasAText) {
    if (!isInstalled(u"FreeTDS"_s)) GTEST_SKIP() << "no ODBC driver named FreeTDS (package tdsodbc)";
    const QString unreachable = u"Provider=SQLOLEDB;Data Source=127.0.0.1,1;User ID=sa;Password=geheim"_s;
    QString text;
    EXPECT_EQ(errorOf([&] { connection.Open(unreachable); }, &text), DatabaseError::ConnectionFailed);
    EXPECT_TRUE(text.contains(u"無法連線") && !text.contains(u"geheim")) << text;
}

/// A server of one's own, named by its connection string; the tables go with the session.
TEST_F(OdbcTest, PostgresCarriesTextsNumbersAndTransactions) {
    const QString target = qEnvironmentVariable("LIAOWU_TEST_POSTGRES");
    if (target.isEmpty())
        GTEST_SKIP() << "LIAOWU_TEST_POSTGRES names no server, such as Driver=PostgreSQL Unicode;...";
    connection.Open(target);
    const QString code = u"紙'板\U00020000"_s;
    connection.Execute(
        readyMadeSql(u"create temporary table 料 (甲 varchar(20) primary key, 乙 float, 丙 timestamp)"_s));
    connection.Execute(sql(u"insert into 料 values ('{}', 0.1, '2025-01-15 08:30:00')", code));
    {
        Transaction transaction(connection);
        connection.Execute(sql(u"insert into 料 values ('b', null, null)"));
    }
    const Recordset rows = select(connection, sql(u"select * from 料 where 甲='{}'", code));
    ASSERT_EQ(rows.RecordCount(), 1);
    EXPECT_EQ((QStringList{rows.text(0), rows.text(1), rows.text(2)}),
              (QStringList{code, u"0.1"_s, u"2025-01-15 08:30:00"_s}));
    EXPECT_EQ(select(connection, sql(u"select * from 料")).RecordCount(), 1) << "the second was rolled back";
    EXPECT_NE(errorOf([&] { connection.Execute(sql(u"insert into 料 values ('{}', 1, null)", code)); }), 0);
}
