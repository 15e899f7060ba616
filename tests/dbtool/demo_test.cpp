#include "data/schema/plant_database.h"
#include "dbtool/demo.h"
#include "dbtool/demo_plant.h"
#include "dbtool/demo_users.h"
#include "warehouse/check_plant.h"
#include <QCryptographicHash>

namespace liaowu {
namespace {

using namespace Qt::StringLiterals;

/// A demo plant of a twentieth of the usual size.
class DemoDatabase : public PlantDatabase {
public:
    DemoDatabase() { summary = createDemo(pool, target, 0.05); }
    int count(QStringView statement) { return rows(statement).value(0).toInt(); }
    DemoSummary summary;
};

/// Hash over all rows of all tables, whatever order the engine keeps them in.
QByteArray contentOf(PlantDatabase& plant) {
    OtherUser raw(plant.file);
    QStringList tables;
    sqlite3_exec(
        raw.handle, "select name from sqlite_master where type = 'table' order by name",
        [](void* list, int, char** values, char**) {
            static_cast<QStringList*>(list)->append(QString::fromUtf8(values[0]));
            return 0;
        },
        &tables, nullptr);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QString& table : tables) {
        QStringList rows = plant.rowsOf(u"select * from ["_s + table + u']');
        rows.sort();
        hash.addData((table + u'\n' + rows.join(u'\n')).toUtf8());
    }
    return hash.result();
}

TEST(Demo, IsTheSameInEveryRun) {
    DemoDatabase first, second;
    EXPECT_EQ(contentOf(first), contentOf(second));
}

TEST(Demo, AgreesWithItsDocuments) {
    DemoDatabase plant;
    Connection connection(plant.pool, plant.target);
    const PlantCheck result = checkPlant(connection);
    for (const Difference& difference : result.differences)
        ADD_FAILURE() << difference.text().toStdString();
    EXPECT_GT(result.orderLines, 100);
    EXPECT_GT(result.binRows, 10);
    EXPECT_EQ(plant.summary.orders, 100);
}

// The view over the documents must tell the same story as the stock figures.
TEST(Demo, MovementsSinceTheClosingMakeUpTheStock) {
    DemoDatabase plant;
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
        EXPECT_TRUE(strays.isEmpty()) << strays.join(u'\n').toStdString();
    }
}

// What screens and tests count on finding.
TEST(Demo, HoldsEveryKindOfDocument) {
    struct Case {
        const char16_t *name, *statement;
    };
    constexpr Case cases[] = {
        {u"orders of board", u"select count(*) from 採購資料 where 類別 = '紙板'"},
        {u"orders of materials", u"select count(*) from 採購資料 where 類別 = '物料'"},
        {u"orders of paper or plates", u"select count(*) from 採購資料 where 類別 in ('紙品', '凸版')"},
        {u"unapproved orders", u"select count(*) from 採購資料 where 審單 = 'N'"},
        {u"partly received lines", u"select count(*) from 採購明細資料 where cast(已入庫數 as float) > 0 and "
                                   u"cast(未交數 as float) > 0"},
        {u"lines closed by hand",
         u"select count(*) from 採購明細資料 where 送清 = 'Y' and cast(未交數 as float) > 0"},
        {u"lines from requisitions", u"select count(*) from 採購明細資料 where 請購單號 <> ''"},
        {u"lines for work orders", u"select count(*) from 採購明細資料 where 印件編號 <> ''"},
        {u"open work orders", u"select count(*) from 紙箱生產資料 where 完工 <> 'Y' and 工單單號 not in "
                              u"(select 印件編號 from 採購明細資料)"},
        {u"unapproved requisitions", u"select count(*) from 原料申購資料 where 審單 = 'N'"},
        {u"requisition lines still to order",
         u"select count(*) from 原料申購明細 where cast(數量 as float) > cast(已采購數 as float)"},
        {u"approved receipts", u"select count(*) from 原料入庫資料 where 審核 = 'Y'"},
        {u"issues from bins", u"select count(*) from 料務_板位異動"},
        {u"foreign currency", u"select count(*) from 採購資料 where 幣別 <> '台幣'"},
        {u"notes on vendors", u"select count(*) from 廠商資料 where 經驗傳承 <> ''"},
        {u"outstanding lines", u"select count(*) from 採購未到料查詢"},
        {u"tracking documents", u"select count(*) from 採購未到料明細"},
        {u"closed months", u"select count(*) from 盤點資料_浪紙 where left(盤點日期,7) >= '2024-11'"},
        {u"sizes of letters for vendors",
         u"select count(*) from 片語資料 where 類別 = 'EN-材質編碼' and 尺寸大小 <> '' and 難度比 <> ''"},
        {u"open outsourcing", u"select count(*) from 半成品委外明細"}};
    DemoDatabase plant;
    for (const Case& row : cases)
        EXPECT_GT(plant.count(QStringView(row.statement)), 0) << QString::fromUtf16(row.name).toStdString();
    EXPECT_EQ(plant.count(u"select count(*) from 採購資料 where 採購日期 >= '20250115'"),
              0); // today's numbers are free
    EXPECT_EQ(plant.count(u"select count(*) from 採購資料 where 審單 = 'N' and 採購單號 in (select 採購單號 "
                          u"from 原料入庫明細)"),
              0);
}

TEST(Demo, MastersAreOfTheStatedSize) {
    DemoDatabase plant;
    EXPECT_EQ(plant.count(u"select count(*) from 廠商資料"), 40);
    EXPECT_EQ(plant.count(u"select count(*) from 浪紙資料"), 300);
    EXPECT_EQ(plant.count(u"select count(*) from 物料資料"), 600);
    EXPECT_EQ(plant.count(u"select count(*) from 紙品資料"), 200);
    EXPECT_EQ(plant.count(u"select count(*) from 凸版主料資料"), 40);
    EXPECT_EQ(plant.count(u"select count(distinct 廠商簡稱) from 廠商資料"), 40);
}

// Every price of an order went into the history on its day, unless the master had it already.
TEST(Demo, MasterPricesAreTheLatestOfTheHistory) {
    DemoDatabase plant;
    for (const auto& [table, key] :
         {std::pair(u"物料資料"_s, u"物料代號"_s), std::pair(u"浪紙資料"_s, u"浪紙代號"_s)}) {
        const QStringList strays =
            plant.rowsOf(u"select [%1].[%2] from [%1] where not exists (select 1 from 歷史單價記錄 where "
                         u"貨品代號 = [%1].[%2] and "
                         u"歷史單價記錄.單價 = [%1].進價 and 歷史單價記錄.幣別 = [%1].幣別 and 添加日期 = "
                         u"(select max(添加日期) from 歷史單價記錄 "
                         u"as 最近 where 最近.貨品代號 = [%1].[%2]))"_s.arg(table, key));
        EXPECT_TRUE(strays.isEmpty()) << table.toStdString() << ": " << strays.join(u' ').toStdString();
    }
}

TEST(Demo, UsersHaveTheRightsTheyAreNamedFor) {
    struct Case {
        QString login;
        int modules, amount, approve, scope;
    };
    const std::vector<Case> cases{{u"採購甲"_s, 19, 19, 0, 0}, {u"採購乙"_s, 19, 0, 0, 0},
                                  {u"採購丙"_s, 19, 19, 0, 2}, {u"主管甲"_s, 19, 19, 19, 0},
                                  {u"倉管甲"_s, 19, 0, 0, 0},  {u"訪客"_s, 0, 0, 0, 0}};
    DemoDatabase plant;
    for (const Case& row : cases) {
        const auto granted = [&](const QString& right) {
            return plant
                .rowsOf(u"select count(*) from 使用者明細 where 使用者 = '%1' and %2 = '√'"_s.arg(row.login,
                                                                                                  right))
                .first()
                .toInt();
        };
        EXPECT_EQ(granted(u"查看"_s), row.modules) << row.login.toStdString();
        EXPECT_EQ(granted(u"金額"_s), row.amount) << row.login.toStdString();
        EXPECT_EQ(granted(u"審單"_s), row.approve) << row.login.toStdString();
        EXPECT_EQ(plant.rowsOf(u"select count(*) from 使用者業務明細 where 使用者 = '%1'"_s.arg(row.login))
                      .first()
                      .toInt(),
                  row.scope);
    }
    EXPECT_EQ(plant.count(u"select count(*) from 使用者明細"), static_cast<int>(demo::users().size()) * 19);
}

TEST(Demo, LinesArePricedByTheFormulaOfTheirUnits) {
    demo::Item board;
    board.family = demo::Family::Board;
    board.first = 120;
    board.second = 90;
    board.weight = 350;
    board.buyUnit = u"㎡"_s;
    EXPECT_EQ(demo::amountOf(board, 500, 12.5).amount, 6750);
    EXPECT_EQ(demo::amountOf(board, 500, 12.5).formula, u"計價公式: 120*90*12.5*500/10000");
    board.buyUnit = u"kg"_s;
    EXPECT_EQ(demo::amountOf(board, 500, 20).amount, 3780); // 1.08 m2 of 350 g
    board.family = demo::Family::Paper;
    board.first = 787;
    board.second = 1092;
    board.weight = 250;
    board.buyUnit = u"令"_s;
    EXPECT_EQ(demo::amountOf(board, 2, 30).amount, 6445.53); // 107.4255 kg a ream
    board.family = demo::Family::Plate;
    EXPECT_EQ(demo::amountOf(board, 3, 12.345).formula, u"無計價公式以單價*數量計算 3*12.345");
}

} // namespace
} // namespace liaowu
