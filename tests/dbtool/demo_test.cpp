#include "data/schema/plant_database.h"
#include "dbtool/demo.h"
#include "dbtool/demo_plant.h"
#include "dbtool/demo_users.h"
#include "warehouse/check_plant.h"
#include <QCryptographicHash>

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

/// A demo plant of a twentieth of the usual size.
class DemoDatabase : public PlantDatabase {
public:
    DemoDatabase() { summary = createDemo(pool, target, 0.05); }
    int count(QStringView rows) { return rowsOf(u"select count(*) from %1"_s.arg(rows)).value(0).toInt(); }
    DemoSummary summary;
};

/// One for all that only look.
class Demo : public testing::Test {
protected:
    static void SetUpTestSuite() { shared = std::make_unique<DemoDatabase>(); }
    static void TearDownTestSuite() { shared.reset(); }

    static inline std::unique_ptr<DemoDatabase> shared;
    DemoDatabase& plant = *shared;
};

/// Hash over all rows of all tables, whatever order the engine keeps them in.
QByteArray contentOf(PlantDatabase& plant) {
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QString& table :
         OtherUser(plant.file).run("select name from sqlite_master where type = 'table' order by name")) {
        QStringList rows = plant.rowsOf(u"select * from ["_s + table + u']');
        rows.sort();
        hash.addData((table + u'\n' + rows.join(u'\n')).toUtf8());
    }
    return hash.result();
}

} // namespace

TEST_F(Demo, IsTheSameInEveryRun) {
    DemoDatabase second;
    EXPECT_EQ(contentOf(plant), contentOf(second));
}

TEST_F(Demo, AgreesWithItsDocuments) {
    Connection connection(plant.pool, plant.target);
    const PlantCheck result = checkPlant(connection);
    for (const Difference& difference : result.differences)
        ADD_FAILURE() << difference.text();
    EXPECT_GT(result.orderLines, 100);
    EXPECT_GT(result.binRows, 10);
    EXPECT_EQ(plant.summary.orders, 100);
}

// The view over the documents must tell the same story as the stock figures.
TEST_F(Demo, MovementsSinceTheClosingMakeUpTheStock) {
    for (const auto& [table, key, closing] : {std::tuple(u"浪紙資料"_s, u"浪紙代號"_s, u"盤點結轉_浪紙"_s),
                                              std::tuple(u"物料資料"_s, u"物料代號"_s, u"盤點結轉_物料"_s)}) {
        const QStringList strays = plant.rowsOf(
            u"select [%1].[%2], 庫存, 結存, 數量和 from [%1] inner join [%3] on [%3].代號 = [%1].[%2] and "
            u"結轉月份 = '202411' "
            u"left join (select 代號, sum(cast(數量 as float)) as 數量和 from 原料異動明細 where "
            u"left(異動日期,6) > '202411' "
            u"group by 代號) as 異動 on 異動.代號 = [%1].[%2] "
            u"where abs(cast(庫存 as float) - cast(結存 as float) - isnull(數量和, 0)) > 0.001"_s.arg(
                table, key, closing));
        EXPECT_TRUE(strays.isEmpty()) << strays.join(u'\n');
    }
}

// What screens and tests count on finding.
TEST_F(Demo, HoldsEveryKindOfDocument) {
    for (const QStringView rows :
         {u"採購資料 where 類別 = '紙板'",
          u"採購資料 where 類別 = '物料'",
          u"採購資料 where 類別 in ('紙品', '凸版')",
          u"採購資料 where 審單 = 'N'",
          u"採購明細資料 where cast(已入庫數 as float) > 0 and cast(未交數 as float) > 0",
          u"採購明細資料 where 送清 = 'Y' and cast(未交數 as float) > 0",
          u"採購明細資料 where 請購單號 <> ''",
          u"採購明細資料 where 印件編號 <> ''",
          u"紙箱生產資料 where 完工 <> 'Y' and 工單單號 not in (select 印件編號 from 採購明細資料)",
          u"原料申購資料 where 審單 = 'N'",
          u"原料申購明細 where cast(數量 as float) > cast(已采購數 as float)",
          u"原料入庫資料 where 審核 = 'Y'",
          u"料務_板位異動",
          u"採購資料 where 幣別 <> '台幣'",
          u"廠商資料 where 經驗傳承 <> ''",
          u"採購未到料查詢",
          u"採購未到料明細",
          u"盤點資料_浪紙 where left(盤點日期,7) >= '2024-11'",
          u"片語資料 where 類別 = 'EN-材質編碼' and 尺寸大小 <> '' and 難度比 <> ''",
          u"半成品委外明細"})
        EXPECT_GT(plant.count(rows), 0) << rows.toString();
    // Today's numbers are free, and what waits for approval has not arrived.
    EXPECT_EQ(plant.count(u"採購資料 where 採購日期 >= '20250115'"), 0);
    EXPECT_EQ(plant.count(u"採購資料 where 審單 = 'N' and 採購單號 in (select 採購單號 from 原料入庫明細)"),
              0);
    const std::pair<QStringView, int> sizes[] = {
        {u"廠商資料", 40},  {u"(select distinct 廠商簡稱 from 廠商資料) as d", 40},
        {u"浪紙資料", 300}, {u"物料資料", 600},
        {u"紙品資料", 200}, {u"凸版主料資料", 40}};
    for (const auto& [rows, size] : sizes)
        EXPECT_EQ(plant.count(rows), size);
}

// Every price of an order went into the history on its day, unless the master had it already.
TEST_F(Demo, MasterPricesAreTheLatestOfTheHistory) {
    for (const auto& [table, key] :
         {std::pair(u"物料資料"_s, u"物料代號"_s), std::pair(u"浪紙資料"_s, u"浪紙代號"_s)}) {
        const QStringList strays =
            plant.rowsOf(u"select [%1].[%2] from [%1] where not exists (select 1 from 歷史單價記錄 where "
                         u"貨品代號 = [%1].[%2] and "
                         u"歷史單價記錄.單價 = [%1].進價 and 歷史單價記錄.幣別 = [%1].幣別 and 添加日期 = "
                         u"(select max(添加日期) from 歷史單價記錄 "
                         u"as 最近 where 最近.貨品代號 = [%1].[%2]))"_s.arg(table, key));
        EXPECT_TRUE(strays.isEmpty()) << table << ": " << strays.join(u' ');
    }
}

TEST_F(Demo, UsersHaveTheRightsTheyAreNamedFor) {
    // Modules seen, with amounts, with approval; scopes.
    EXPECT_EQ(plant.rows(u"select 使用者, sum(case when 查看 = '√' then 1 else 0 end), "
                         u"sum(case when 金額 = '√' then 1 else 0 end), "
                         u"sum(case when 審單 = '√' then 1 else 0 end), "
                         u"(select count(*) from 使用者業務明細 as b where b.使用者 = a.使用者) "
                         u"from 使用者明細 as a where 使用者 <> 'admin' group by 使用者 order by 使用者"),
              (QStringList{u"主管甲|19|19|19|0"_s, u"倉管甲|19|0|0|0"_s, u"採購丙|19|19|0|2"_s,
                           u"採購乙|19|0|0|0"_s, u"採購甲|19|19|0|0"_s, u"訪客|0|0|0|0"_s}));
    EXPECT_EQ(plant.count(u"使用者明細"), static_cast<int>(demo::users().size()) * 19);
}

TEST_F(Demo, LinesArePricedByTheFormulaOfTheirUnits) {
    demo::Item board{
        .family = demo::Family::Board, .buyUnit = u"㎡"_s, .first = 120, .second = 90, .weight = 350};
    EXPECT_EQ(demo::amountOf(board, 500, 12.5).amount, 6750);
    EXPECT_EQ(demo::amountOf(board, 500, 12.5).formula, u"計價公式: 120*90*12.5*500/10000");
    board.buyUnit = u"kg"_s;
    EXPECT_EQ(demo::amountOf(board, 500, 20).amount, 3780); // 1.08 m2 of 350 g
    const demo::Item paper{
        .family = demo::Family::Paper, .buyUnit = u"令"_s, .first = 787, .second = 1092, .weight = 250};
    EXPECT_EQ(demo::amountOf(paper, 2, 30).amount, 6445.53); // 107.4255 kg a ream
    EXPECT_EQ(demo::amountOf({.family = demo::Family::Plate}, 3, 12.345).formula,
              u"無計價公式以單價*數量計算 3*12.345");
}
