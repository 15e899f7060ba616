#include "warehouse/receipt_plant.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

/// One requisition line ordered, received with spares into a bin, partly issued and partly sent back.
class WorkingPlant : public PlantDatabase {
public:
    WorkingPlant() {
        run({u"insert into 浪紙資料 (浪紙代號, 庫存) values ('KMK', '130')",
             u"insert into 物料資料 (物料代號, 庫存) values ('IN1', '56')",
             u"insert into 盤點結轉_浪紙 (代號, 結轉月份, 結存) values ('KMK', '202310', '999'), ('KMK', "
             u"'202412', '100')",
             u"insert into 原料申購資料 (申購單號, 類別) values ('R1', '物料')",
             u"insert into 原料申購明細 (申購單號, 原料代號, 數量, 已采購數) values ('R1', 'IN1', '60', "
             u"'60')",
             u"insert into 採購資料 (採購單號, 類別) values ('P1', '物料'), ('P2', '紙板')",
             uR"(insert into 採購明細資料 (採購單號, 序, 請購單號, 原料代號, 數量, 已入庫數, 未交數, 送清) values
                 ('P1', 1, 'R1', 'in1', '60', '60', '0', 'Y'), ('P2', 1, '', 'KMK', '20', '10', '10', 'Y'),
                 ('P2', 3, '', 'KMK', '5', '0', '5', 'N'))",
             // Board in pieces; its first document lies in the closed month.
             uR"(insert into 原料入庫資料 (入庫單號, 類別, 入庫日期, 單別, 倉別) values
                 ('2501100001', '物料', '20250110', '采購入庫', 'A區'),
                 ('2412100001', '紙板', '20241210', '采購入庫', ''), ('2501110001', '紙板', '20250111', '采購入庫', ''),
                 ('250112T0001', '紙板', '20250112', '退貨', ''))",
             uR"(insert into 原料入庫明細 (入庫單號, 序, 採購單號, 採購序, 原料代號, 數量, 備品, 入庫數量) values
                 ('2501100001', 1, 'P1', '1', 'IN1', '60', '1', ''),
                 ('2412100001', 1, '', '', 'KMK', '5', '', '15'), ('2501110001', 1, 'P2', '1', 'KMK', '12', '', '36'),
                 ('250112T0001', 1, 'P2', '1', 'KMK', '-2', '', '-6'))",
             // The third waits for the batch approval: nothing deducted yet.
             u"insert into 原料領料資料 (領料單號, 類別, 領料日期, 審單) values ('I1', '物料', '20250112', "
             u"'N'), "
             u"('I2', '紙板', '20250112', 'Y'), ('I3', '紙板', '20250113', 'N')",
             u"insert into 原料領料明細 (領料單號, 序, 原料代號, 實領數, 儲位) values "
             u"('I1', 1, 'IN1', '5', 'A區'), ('I2', 1, 'KMK', '6', ''), ('I3', 1, 'KMK', '50', '')",
             u"insert into 料務_扣庫存 values ('I1', 1)",
             u"insert into 料務_板位異動 values ('I1', 1, '2501100001', 'A區', 4)",
             u"insert into 原料板位明細 values ('物料', 'IN1', 'A區', '2501100001', '57', '4', '')"});
    }
    /// What the check finds after these deeds, which are undone again.
    QStringList differencesAfter(const std::vector<const char16_t*>& deeds) {
        Connection connection(pool, target);
        const Transaction undone(connection);
        for (const char16_t* deed : deeds)
            connection.Execute(readyMadeSql(QString::fromUtf16(deed)));
        return faultsOf(connection);
    }
};

} // namespace

TEST(CheckPlant, FindsEachKindOfDrift) {
    // A drift, and parts of the lines that tell it, in their order.
    const std::pair<const char16_t*, const char16_t*> cases[] = {
        {u"update 採購明細資料 set 已入庫數 = '9', 未交數 = '10' where 採購單號 = 'P2' and 序 = 1",
         u"採購明細資料 P2/1 已入庫數:資料庫為 9,依單據應為 10"},
        {u"update 採購明細資料 set 已入庫數 = '5' where 採購單號 = 'P2' and 序 = 3", u"P2/3 已入庫數"},
        {u"update 採購明細資料 set 未交數 = '7' where 採購單號 = 'P2' and 序 = 1", u"P2/1 未交數:資料庫為 7"},
        {u"update 採購明細資料 set 送清 = 'N' where 採購單號 = 'P1'", u"P1/1 送清:資料庫為 N"},
        {u"update 原料申購明細 set 已采購數 = '0'", u"原料申購明細 R1/IN1 已采購數"},
        {u"update 物料資料 set 庫存 = '55'", u"物料資料 IN1 庫存:資料庫為 55,依單據應為 56"},
        {u"update 浪紙資料 set 庫存 = '124'", u"浪紙資料 KMK 庫存:資料庫為 124,依單據應為 130"},
        // A return that moved stock.
        {u"update 原料入庫資料 set 入庫單號 = '2501129001' where 入庫單號 = '250112T0001'",
         u"採購明細資料 P2/1 已入庫數;採購明細資料 P2/1 未交數;原料入庫明細 250112T0001:明細沒有單據表頭"},
        // A batch approval without its deduction.
        {u"update 原料領料資料 set 審單 = 'Y' where 領料單號 = 'I3'", u"KMK 庫存:資料庫為 130,依單據應為 80"},
        {u"update 原料板位明細 set 入庫數 = '61'",
         u"原料板位明細 物料/IN1/A區/2501100001 入庫數:資料庫為 61,依單據應為 57"},
        {u"update 原料板位明細 set 領料數 = '0'", u"領料數:資料庫為 0,依單據應為 4"},
        {u"delete from 原料板位明細", u"入庫數:資料庫為 (無此筆),依單據應為 57"},
        {u"insert into 原料板位明細 values ('物料', 'IN1', 'B區', '2501100001', '5', '0', '')",
         u"物料/IN1/B區/2501100001:沒有對應的入庫明細"},
        {u"update 料務_板位異動 set 數量 = 6",
         u"料務_板位異動 I1/1 數量:資料庫為 6,依單據應為 至多 5;入庫數:資料庫為 57,依單據應為 "
         u"55;領料數:資料庫為 4,依單據應為 6"},
        {u"insert into 料務_板位異動 values ('I9', 1, '2501100001', 'A區', 1)",
         u"料務_板位異動 I9/1:沒有這筆領料明細"},
        {u"insert into 料務_扣庫存 values ('I9', 1)", u"料務_扣庫存 I9/1:沒有這筆領料明細"},
        {u"delete from 採購資料 where 採購單號 = 'P2'", u"採購明細資料 P2:明細沒有單據表頭"},
        {u"delete from 原料申購資料", u"原料申購明細 R1:明細沒有單據表頭"}};
    WorkingPlant plant;
    for (const auto& [drift, told] : cases) {
        SCOPED_TRACE(QString::fromUtf16(drift).toStdString());
        const QStringList found = plant.differencesAfter({drift});
        const QStringList expected = QString::fromUtf16(told).split(u';');
        ASSERT_EQ(found.size(), expected.size()) << found.join(u'\n');
        for (qsizetype i = 0; i < found.size(); ++i)
            EXPECT_TRUE(found[i].contains(expected[i])) << found[i];
    }
}

TEST(CheckPlant, ToleratesWhatUsersMayDo) {
    struct Case {
        const char* name;
        std::vector<const char16_t*> deeds;
    };
    const std::vector<Case> cases{
        {"nothing", {}},
        {"a line closed by hand", {u"update 採購明細資料 set 送清 = 'Y' where 採購單號 = 'P2' and 序 = 3"}},
        {"figures written another way",
         {u"update 採購明細資料 set 已入庫數 = '10.0000', 未交數 = ' 10 ' where 序 = 1 and 採購單號 = 'P2'"}},
        {"a used up bin row that was cleaned away",
         {u"update 原料領料明細 set 實領數 = '61' where 領料單號 = 'I1'",
          u"update 料務_板位異動 set 數量 = 61", u"update 物料資料 set 庫存 = '0'",
          u"delete from 原料板位明細"}},
        {"a requisition that is gone", {u"delete from 原料申購資料", u"delete from 原料申購明細"}},
        {"bins of another module's papers",
         {u"insert into 原料板位明細 values ('紙品', 'W250', 'C區', '9', '5', '0', '')"}}};
    WorkingPlant plant;
    for (const Case& row : cases)
        EXPECT_EQ(plant.differencesAfter(row.deeds), QStringList()) << row.name;
}

// Without our tables nothing tells which issues were deducted: all were, as the suite's client does it.
TEST(CheckPlant, APlainDatabaseOfTheSuiteCountsEveryIssue) {
    WorkingPlant plant;
    plant.run({u"drop view 原料異動明細", u"drop table 料務_扣庫存", u"drop table 料務_板位異動",
               u"update 浪紙資料 set 庫存 = '80'", u"update 原料板位明細 set 入庫數 = '1'"});
    Connection connection(plant.pool, plant.target);
    const PlantCheck result = checkPlant(connection);
    EXPECT_EQ(result.differences.size(), 0u);
    EXPECT_EQ(result.notes.size(), 1);
}
