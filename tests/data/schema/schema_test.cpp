#include "data/schema/integrity.h"
#include "data/schema/plant_database.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

/// What a database is made of, as the engine tells it: tables with columns, types, defaults and keys, views, indexes.
QStringList shapeOf(const QString& file) {
    OtherUser raw(file);
    return raw.run("select m.name, c.name, c.type, c.\"notnull\", c.dflt_value, c.pk from sqlite_master m "
                   "join pragma_table_info(m.name) c where m.type = 'table' order by m.name, c.cid") +
           raw.run("select m.tbl_name, m.name, c.name from sqlite_master m join pragma_index_info(m.name) c "
                   "where m.type = 'index' order by m.tbl_name, m.name, c.seqno") +
           raw.run("select name from sqlite_master where type = 'view' order by name");
}

int countOf(const QStringList& shape, QStringView part) {
    return static_cast<int>(
        std::count_if(shape.begin(), shape.end(), [&](const QString& line) { return line.contains(part); }));
}

class SchemaTables : public PlantDatabase, public testing::Test {};
using SchemaViews = SchemaTables;

} // namespace

TEST(Schema, IsCreatedOnceAndNeverAltered) {
    PlantDatabase plant;
    const QStringList shape = shapeOf(plant.file);
    EXPECT_GT(countOf(shape, u"採購明細資料|"), 30);
    plant.run({u"insert into 片語資料 (類別, 代號, 內容) values ('AB-單位', '001', 'pcs')"});
    createSchema(plant.pool, plant.target);
    EXPECT_EQ(shapeOf(plant.file), shape);
    EXPECT_EQ(plant.value(u"select 內容 from 片語資料"), u"pcs");
    EXPECT_EQ(plant.value(u"select count(*) from 料務_版本"), u"1");
    EXPECT_EQ(engineFaults(plant.target), QStringList());
}

// A database of the suite has tables of its own making; what it lacks is added, what it has is left as it is.
TEST(Schema, AddsToADatabaseOfTheSuiteWithoutTouchingIt) {
    TestDatabase suite;
    suite.run({u"create table [客戶資料] ([客戶代號] nvarchar(8) not null primary key, [客戶簡稱] "
               u"nvarchar(20), [電話] nvarchar(20))",
               u"insert into 客戶資料 values ('C1', '甲', '02')"});
    createSchema(suite.pool, suite.target);
    EXPECT_EQ(suite.value(u"select 電話 from 客戶資料"), u"02");
    EXPECT_EQ(suite.value(u"select count(*) from 採購資料"), u"0");
    EXPECT_EQ(countOf(shapeOf(suite.file), u"客戶資料|"), 4); // three columns and the key's index
}

TEST(Schema, BulkFillingLeavesTheIndexesForLater) {
    TestDatabase plant;
    createSchema(plant.pool, plant.target, SchemaParts::WithoutIndexes);
    EXPECT_EQ(countOf(shapeOf(plant.file), u"|IX_"), 0);
    createSchema(plant.pool, plant.target);
    PlantDatabase whole;
    EXPECT_EQ(shapeOf(plant.file), shapeOf(whole.file));
}

TEST(Schema, AFailureOnTheWayLeavesNoTable) {
    TestDatabase whole;
    whole.pool.failAt(0);
    createSchema(whole.pool, whole.target);
    const int calls = whole.pool.callCount();
    ASSERT_GT(calls, 100);
    for (const int call : {1, 2, 3, calls / 2, calls - 1, calls}) {
        TestDatabase plant;
        plant.pool.failAt(call);
        EXPECT_TRUE(fails([&] { createSchema(plant.pool, plant.target); }, DatabaseError::Injected)) << call;
        plant.pool.failAt(0);
        EXPECT_EQ(shapeOf(plant.file), QStringList()) << call;
        createSchema(plant.pool, plant.target);
        EXPECT_EQ(plant.value(u"select count(*) from 料務_版本"), u"1");
    }
}

TEST(Schema, ADatabaseOfVersionOneBecomesTodays) {
    TestDatabase old;
    QFile dump(QStringLiteral(LIAOWU_SOURCE_DIR "/tests/data/schema/versions/version1.sql"));
    ASSERT_TRUE(dump.open(QIODevice::ReadOnly));
    {
        OtherUser raw(old.file);
        sqlite3_create_collation(raw.handle, "LIAOWU", SQLITE_UTF8, nullptr,
                                 [](void*, int, const void*, int, const void*) { return 0; });
        raw.run(dump.readAll());
    }
    upgradeSchema(old.pool, old.target);
    Connection connection(old.pool, old.target);
    EXPECT_EQ(storedVersion(connection), schemaVersion());
    PlantDatabase fresh;
    EXPECT_EQ(shapeOf(old.file), shapeOf(fresh.file));
}

TEST(Schema, UpgradeGivesAPlainDatabaseOnlyOurOwnTables) {
    TestDatabase suite;
    suite.run({u"create table [匯率檔] ([幣別] nvarchar(20) not null primary key, [匯率] nvarchar(20), "
               u"[默認幣別] nvarchar(10))"});
    Connection connection(suite.pool, suite.target);
    EXPECT_EQ(storedVersion(connection), 0);
    upgradeSchema(suite.pool, suite.target);
    EXPECT_EQ(storedVersion(connection), schemaVersion());
    EXPECT_EQ(suite.value(u"select count(*) from 料務_扣庫存"), u"0");
    EXPECT_EQ(countOf(shapeOf(suite.file), u"採購資料|"), 0);
    upgradeSchema(suite.pool, suite.target); // nothing left to do
    EXPECT_EQ(suite.value(u"select count(*) from 料務_版本"), u"1");
}

TEST_F(SchemaTables, NewerThanTheProgramAreRefused) {
    run({u"insert into 料務_版本 (版本) values (999)"});
    EXPECT_TRUE(fails([&] { upgradeSchema(pool, target); }, DatabaseError::Usage, u"999"));
}

TEST_F(SchemaTables, KeysRefuseASecondRow) {
    // Each is taken once.
    for (const char16_t* statement :
         {u"insert into 採購資料 (採購單號) values ('250115001')",
          u"insert into 原料申購資料 (申購單號) values ('A1 ')",
          u"insert into 採購明細資料 (採購單號, 序) values ('250115001', 1)",
          u"insert into 原料申購明細 (申購單號, 原料代號) values ('A1', 'k01')",
          u"insert into 紙品資料 (紙品代號, 紙品名稱, 規格) values ('P' + cast((select count(*) from "
          u"紙品資料) as nvarchar(9)), '250G', '787*1092')",
          u"insert into 採購計價公式 (類別, 單位1, 單位2, 基本單位, 計價單位) values ('紙板', '', '', "
          u"'pcs', '㎡')",
          u"insert into 原料板位明細 (類別, 原料代號, 儲位, 入庫單號) values ('紙板', 'K', 'A', '1')",
          u"insert into 料務_扣庫存 (領料單號, 序) values ('1', 1)"}) {
        const auto insert = [&] { run({statement}); };
        EXPECT_EQ(errorOf(insert), 0) << QString::fromUtf16(statement);
        EXPECT_TRUE(fails(insert, DatabaseError::DuplicateKey)) << QString::fromUtf16(statement);
    }
}

// History tables and work tables take what comes: the rows of an item or a print are replaced as a whole.
TEST_F(SchemaTables, TablesWithoutKeyTakeEqualRows) {
    for (const char16_t* table :
         {u"歷史單價記錄", u"詢價單價記錄", u"採購資料報表2", u"匯率修改記錄", u"半成品物料明細"}) {
        Connection connection(pool, target);
        Recordset rows;
        rows.Open(sql(u"select * from [{}]", table), connection, Cursor::Batch);
        rows.AddNew();
        rows.AddNew();
        rows.UpdateBatch();
        EXPECT_EQ(select(connection, sql(u"select * from [{}]", table)).RecordCount(), 2);
    }
}

TEST_F(SchemaTables, ColumnsThatAreLeftOutAreEmptyNotNull) {
    run({u"insert into 浪紙資料 (浪紙代號) values ('K')",
         u"insert into 採購明細資料 (採購單號, 序) values ('1', 1)",
         u"insert into 盤點結轉_浪紙 (代號) values ('K')"});
    EXPECT_EQ(rows(u"select 庫存, 進價, 盤點日期 from 浪紙資料"), QStringList{u"||null"_s});
    EXPECT_EQ(rows(u"select 數量, 送清, 驗收數 from 採購明細資料"), QStringList{u"||0"_s});
    EXPECT_EQ(value(u"select 結轉月份 from 盤點結轉_浪紙"), u"190006");
}

TEST_F(SchemaTables, LinesSortByNumberNotByText) {
    run({u"insert into 採購明細資料 (採購單號, 序) values ('1', 10), ('1', 9)",
         u"insert into 採購未到料明細 (單號, 序, 天數) values ('1', 1, 12), ('1', 2, -3), ('1', 3, -10)"});
    EXPECT_EQ(rows(u"select 序 from 採購明細資料 order by [序]"), (QStringList{u"9"_s, u"10"_s}));
    EXPECT_EQ(rows(u"select 天數 from 採購未到料明細 order by 採購未到料明細.天數 ASC ,[序]"),
              (QStringList{u"-10"_s, u"-3"_s, u"12"_s}));
}

TEST_F(SchemaViews, OutstandingLinesAreApprovedOpenAndNotClosedByHand) {
    run({u"insert into 採購資料 (採購單號, 類別, 業務員代號, 審單) values ('Y', '紙板', 'S01', 'Y'), "
         u"('N', '紙板', '', 'N')",
         u"insert into 採購明細資料 (採購單號, 序, 原料代號, 數量, 已入庫數, 送清) values "
         u"('Y', 1, 'partly', '10', '4', 'N'), "
         u"('Y', 2, 'nothing yet', '10', null, null), "
         u"('Y', 3, 'received', '10', '10', 'N'), "
         u"('Y', 4, 'closed', '10', '4', 'Y'), "
         u"('N', 1, 'unapproved', '10', '0', 'N')"});
    EXPECT_EQ(rows(u"select 原料代號, 未進數, 採購 from 採購未到料查詢 order by 原料代號"),
              (QStringList{u"nothing yet|10|S01"_s, u"partly|6|S01"_s}));
}

TEST_F(SchemaViews, EveryItemCodeHasOneRow) {
    run({u"insert into 浪紙資料 (浪紙代號, 單位) values ('X1', 'pcs')",
         u"insert into 物料資料 (物料代號, 單位) values ('x1', 'kg')",
         u"insert into 紙品資料 (紙品代號, 單位) values ('P1', '令')",
         u"insert into 凸版主料資料 (主料代號, 單位) values ('L1', '片')"});
    EXPECT_EQ(value(u"select count(*) from 原料資料"), u"3");
    EXPECT_EQ(value(u"select 庫存單位 from 原料資料 where 原料代號 = 'P1'"), u"令");
}

TEST_F(SchemaViews, OrderFormKeepsPaddingRowsAndOrdersWithoutVendor) {
    run({u"insert into 採購資料 (採購單號, 廠商代號) values ('1', 'V9')",
         u"insert into 公司基本資料 (公司名稱, 公司地址) values ('甲', '桃園')",
         u"insert into 採購資料報表2 (採購單號, 序, 原料代號) values ('1', 1, 'K'), ('1', 2, '')"});
    EXPECT_EQ(rows(u"select 序, 原料代號, 指送地點 from [進貨單] where 採購單號 = '1' order by 採購單號, 序"),
              (QStringList{u"1|K|桃園"_s, u"2||桃園"_s}));
}

// Movements: what posts, in stock units, valued at the rate before the document's date.
TEST_F(SchemaViews, MovementsTellQuantityAndBaseAmount) {
    run({u"insert into 匯率檔 values ('台幣', '1', 'Y'), ('美金', '33', 'N')",
         u"insert into 匯率修改記錄 (幣別, 匯率, 修改日期) values ('美金', '30', '20240101'), "
         u"('美金', '32', '20240301')"});
    Connection connection(pool, target);
    // Number, family, kind, date, currency; quantity, spares, pieces, amount.
    for (const auto& [name, header, line, expected] :
         casesOf<4>({u"board counts pieces|'1', '紙板', '采購入庫', '20240201', '台幣'|"
                     u"'3', '1', '12', '100'|12|12|100",
                     u"materials count spares|'1', '物料', '采購入庫', '20240201', '台幣'|"
                     u"'3', '1', '0', '100'|4|4|100",
                     u"rate of the date before|'1', '物料', '采購入庫', '20240301', '美金'|"
                     u"'3', '', '', '100'|3|3|3000",
                     u"rate after its date|'1', '物料', '采購入庫', '20240302', '美金'|"
                     u"'3', '', '', '100'|3|3|3200",
                     u"currency without history is 1|'1', '物料', '采購入庫', '20240301', '日圓'|"
                     u"'3', '', '', '100'|3|3|100",
                     u"return of the return screen|'240201T0001', '紙板', '退貨', '20240201', '台幣'|"
                     u"'-3', '', '-3', '-9'|",
                     u"return of the receipt screen|'2402010001', '物料', '退貨', '20240201', '台幣'|"
                     u"'-3', '', '', '-9'|-3|-3|-9",
                     u"paper posts nothing|'1', '紙品', '采購入庫', '20240201', '台幣'|"
                     u"'3', '', '3', '9'|"})) {
        connection.Execute(readyMadeSql(
            u"delete from 原料入庫資料 delete from 原料入庫明細 "
            "insert into 原料入庫資料 (入庫單號, 類別, 單別, 入庫日期, 幣別) values (%1) "
            "insert into 原料入庫明細 (入庫單號, 序, 數量, 備品, 入庫數量, 小計) values (%2, 1, %3)"_s.arg(
                header, header.section(u',', 0, 0), line)));
        EXPECT_EQ(rows(u"select 數量, 算庫存單價數量, 小計 from 原料異動明細").join(u';'), expected) << name;
    }
}

TEST_F(SchemaViews, AnIssueMovesStockOnceItIsDeducted) {
    run({u"insert into 原料領料資料 (領料單號, 類別, 領料日期, 審單) values ('saved', '物料', "
         u"'20240201', 'N'), ('batch', '物料', '20240201', 'Y'), ('waiting', '物料', '20240201', 'N')",
         u"insert into 原料領料明細 (領料單號, 序, 實領數) values ('saved', 1, '5'), ('batch', 1, '7'), "
         u"('waiting', 1, '9')",
         u"insert into 料務_扣庫存 values ('saved', 1)"});
    EXPECT_EQ(rows(u"select 單號, 數量, 算庫存單價數量, 小計 from 原料異動明細 order by 單號"),
              (QStringList{u"batch|-7|0|0"_s, u"saved|-5|0|0"_s}));
}

TEST_F(SchemaTables, IntegrityFindsAnIndexThatMissesARow) {
    run({u"insert into 浪紙資料 (浪紙代號, 浪紙名稱) values ('K', 'KMK')"});
    pool.clear();
    OtherUser(file).run(
        "pragma writable_schema = on;"
        "update sqlite_master set rootpage = (select rootpage from sqlite_master where name = "
        "'IX_匯率修改記錄_幣別') where name = 'IX_浪紙資料_浪紙名稱'");
    EXPECT_FALSE(engineFaults(target).isEmpty());
}
