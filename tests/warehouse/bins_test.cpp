#include "warehouse/bins.h"
#include "warehouse/receipt_plant.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

/// An issue whose line is stored and posted, bins included.
void issue(ReceiptPlant& plant, const QString& number, const QString& bin, double quantity) {
    Connection connection(plant.pool, plant.target);
    connection.Execute(sql(
        u"insert into 原料領料資料 (領料單號, 類別, 領料日期, 審單) values ('{}', '物料', '20250116', 'N')",
        number));
    connection.Execute(sql(u"insert into 原料領料明細 (領料單號, 序, 原料代號, 實領數, 儲位) values ('{}', "
                           u"1, 'IN1', '{}', '{}')",
                           number, quantity, bin));
    connection.Execute(sql(u"insert into 料務_扣庫存 values ('{}', 1)", number));
    postIssueItem(connection, u"物料"_s, u"20250116"_s, {u"IN1"_s, quantity});
    takeFromBins(connection, {number, 1, u"物料"_s, u"IN1"_s, bin, quantity});
}

void undoIssue(ReceiptPlant& plant, const QString& number, const QString& bin, double quantity) {
    Connection connection(plant.pool, plant.target);
    giveBackToBins(connection, {number, 1, u"物料"_s, u"IN1"_s, bin, quantity});
    reverseIssueItem(connection, u"物料"_s, {u"IN1"_s, quantity});
    for (const auto& table : {u"原料領料資料"_s, u"原料領料明細"_s, u"料務_扣庫存"_s})
        connection.Execute(sql(u"delete from [{}] where 領料單號 = '{}'", table, number));
}

void receive(ReceiptPlant& plant, const QString& number, const QString& quantity, const QString& spare,
             const QString& bin = u"A區"_s) {
    ReceiptSave save =
        plant.newReceipt(u"物料"_s, {ReceiptPlant::line({}, {}, u"IN1"_s, quantity, spare)}, bin);
    save.header.入庫單號 = number;
    saveReceipt(plant.session, save);
}

} // namespace

TEST(Bins, AReceiptFillsItsBinSparesIncluded) {
    ReceiptPlant plant;
    receive(plant, u"R1"_s, u"8"_s, u"2"_s);
    receive(plant, u"R2"_s, u"5"_s, {}, {});
    EXPECT_EQ(plant.bins(), QStringList(u"IN1|A區|R1|10|0"_s));
    EXPECT_EQ(plant.value(u"select 入庫時間 from 原料板位明細"), u"2025-01-15 08:30:00"_s);
    EXPECT_EQ(plant.faults(), QStringList());
}

TEST(Bins, AnIssueTakesTheOldestAndGivesBack) {
    ReceiptPlant plant;
    receive(plant, u"R2"_s, u"10"_s, {});
    plant.pool.setClock(QDateTime(QDate(2025, 1, 15), QTime(9, 0)));
    receive(plant, u"R1"_s, u"10"_s, {});
    issue(plant, u"I1"_s, u"A區"_s, 13);
    EXPECT_EQ(plant.bins(), QStringList({u"IN1|A區|R1|7|3"_s, u"IN1|A區|R2|0|10"_s}));
    EXPECT_EQ(plant.faults(), QStringList());
    // What the stock window cleans away comes back when the issue is undone.
    plant.run({u"delete from 原料板位明細 where cast(入庫數 as float)<=0"});
    EXPECT_EQ(plant.faults(), QStringList());
    undoIssue(plant, u"I1"_s, u"A區"_s, 13);
    EXPECT_EQ(plant.bins(), QStringList({u"IN1|A區|R1|10|0"_s, u"IN1|A區|R2|10|0"_s}));
    EXPECT_EQ(plant.rows(u"select * from 料務_板位異動"), QStringList());
    EXPECT_EQ(plant.faults(), QStringList());
    EXPECT_EQ(plant.value(u"select 入庫時間 from 原料板位明細 where 入庫單號='R2'"),
              u"2025-01-15 08:30:00"_s);
}

TEST(Bins, AnIssueBeyondItsBinRecordsWhatThereWas) {
    ReceiptPlant plant;
    receive(plant, u"R1"_s, u"4"_s, {});
    issue(plant, u"I1"_s, u"A區"_s, 6);
    EXPECT_EQ(plant.bins(), QStringList(u"IN1|A區|R1|0|4"_s));
    EXPECT_EQ(plant.faults(), QStringList());
}

TEST(Bins, ASavedReceiptChangesItsRowByTheDifference) {
    const auto cases =
        casesOf<3>({u"10|A區|IN1|A區|2501150001|6|4", u"12|A區|IN1|A區|2501150001|8|4",
                    u"4|A區|IN1|A區|2501150001|0|4", u"10|B區|IN1|B區|2501150001|6|4", u"10||"});
    for (const bool cleaned : {false, true})
        for (const auto& [quantity, bin, left] : cases) {
            ReceiptPlant plant;
            receive(plant, u"2501150001"_s, u"10"_s, {});
            issue(plant, u"I1"_s, u"A區"_s, 4);
            // A row that somebody removed is made anew from the documents.
            if (cleaned) plant.run({u"delete from 原料板位明細"});
            ReceiptSave save = plant.again();
            save.lines[0].數量 = quantity;
            save.header.倉別 = bin;
            saveReceipt(plant.session, save);
            const bool gone = left.isEmpty() || (cleaned && left.contains(u"|0|"));
            EXPECT_EQ(plant.bins().join(u' '), gone ? QString() : left) << quantity << bin;
            EXPECT_EQ(plant.faults(), QStringList()) << quantity << bin;
        }
}

TEST(Bins, AnItemLeavingTheReceiptLeavesTheBin) {
    ReceiptPlant plant;
    ReceiptSave save =
        plant.saved(plant.newReceipt(u"物料"_s, {ReceiptPlant::line({}, {}, u"IN1"_s, u"3"_s),
                                                 ReceiptPlant::line({}, {}, u"IN2"_s, u"4"_s),
                                                 ReceiptPlant::line({}, {}, u"in1"_s, u"2"_s)}));
    EXPECT_EQ(plant.bins(), QStringList({u"IN1|A區|2501150001|5|0"_s, u"IN2|A區|2501150001|4|0"_s}));
    save.lines.erase(save.lines.begin() + 1);
    saveReceipt(plant.session, save);
    EXPECT_EQ(plant.bins(), QStringList(u"IN1|A區|2501150001|5|0"_s));
    EXPECT_EQ(plant.faults(), QStringList());
}

TEST(Bins, APlainDatabaseOfTheSuiteKeepsItsOwn) {
    ReceiptPlant plant;
    plant.run({u"drop view 原料異動明細", u"drop table 料務_板位異動"});
    receive(plant, u"R1"_s, u"8"_s, {});
    EXPECT_EQ(plant.bins(), QStringList());
    EXPECT_EQ(plant.stock(u"物料"_s, u"IN1"_s), u"8|20250115"_s);
}
