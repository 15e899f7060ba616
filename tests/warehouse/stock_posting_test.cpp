#include "warehouse/month_guard.h"
#include "warehouse/receipt_plant.h"
#include "warehouse/stock_posting.h"

namespace liaowu {
namespace {

using namespace Qt::StringLiterals;

struct Master {
    const char16_t *table, *key;
};
Master masterOf(const QString& category) {
    if (category == u"紙板") return {u"浪紙資料", u"浪紙代號"};
    if (category == u"物料") return {u"物料資料", u"物料代號"};
    if (category == u"紙品") return {u"紙品資料", u"紙品代號"};
    return {u"凸版主料資料", u"主料代號"};
}

TEST(StockPosting, MovesWhatEachKindOfDocumentMoves) {
    struct Case {
        QString category, order, item, number, kind;
        QString stock;     ///< 庫存 and 異動日期 after posting
        QString afterUndo; ///< the same after the reversal
        QString orderLine;
    };
    const QString receipt = u"2501150001"_s, bought = u"采購入庫"_s;
    const std::vector<Case> cases{
        {u"紙板"_s, u"P2"_s, u"KMK"_s, receipt, bought, u"12|20250115"_s, u"0|20250115"_s, u"3|7|N"_s},
        {u"物料"_s, u"P1"_s, u"IN1"_s, receipt, bought, u"5|20250115"_s, u"0|20250115"_s, u"3|7|N"_s},
        {u"紙品"_s, u"P3"_s, u"W1"_s, receipt, bought, u"5|"_s, u"5|"_s, u"3|7|N"_s},
        {u"凸版"_s, u"P4"_s, u"PL1"_s, receipt, bought, u"6|"_s, u"6|"_s, u"3|7|N"_s},
        {u"紙板"_s, u"P2"_s, u"KMK"_s, u"250115T0001"_s, u"退貨"_s, u"0|"_s, u"0|"_s, u"3|7|N"_s},
        // Sent back on the receipt screen: the goods left the stock.
        {u"紙板"_s, u"P2"_s, u"KMK"_s, receipt, u"退貨"_s, u"12|20250115"_s, u"0|20250115"_s, u"3|7|N"_s}};
    for (const Case& row : cases) {
        ReceiptPlant plant;
        const Master master = masterOf(row.category);
        const StockDocument document = stockDocumentOf(row.number, row.kind);
        const ReceiptLine line = ReceiptPlant::line(row.order, u"1"_s, row.item, u"3"_s, u"2"_s, u"12"_s);
        Connection connection(plant.pool, plant.target);
        postReceiptItem(connection, document, row.category, u"20250115"_s, line);
        postOrderLine(connection, line, 1);
        const std::string name = (row.category + row.number + row.kind).toStdString();
        EXPECT_EQ(plant.stock(master.table, master.key, row.item), row.stock) << name;
        EXPECT_EQ(plant.orderLine(row.order, 1), row.orderLine) << name;
        reverseReceiptItem(connection, document, row.category, line);
        reverseOrderLine(connection, line);
        EXPECT_EQ(plant.stock(master.table, master.key, row.item), row.afterUndo) << name;
        EXPECT_EQ(plant.orderLine(row.order, 1), u"0|10|N"_s) << name;
    }
}

TEST(StockPosting, IssuesTakeFromBoardAndMaterialsOnly) {
    ReceiptPlant plant;
    plant.run({u"update 浪紙資料 set 庫存='8'", u"update 物料資料 set 庫存='8'"});
    Connection connection(plant.pool, plant.target);
    for (const auto& [category, item, after] :
         {std::tuple(u"紙板"_s, u"KMK"_s, u"3|20250116"_s), std::tuple(u"物料"_s, u"IN1"_s, u"3|20250116"_s),
          std::tuple(u"紙品"_s, u"W1"_s, u"5|"_s)}) {
        const Master master = masterOf(category);
        const QString before = plant.stock(master.table, master.key, item).section(u'|', 0, 0);
        postIssueItem(connection, category, u"20250116"_s, {item, 5});
        EXPECT_EQ(plant.stock(master.table, master.key, item), after);
        reverseIssueItem(connection, category, {item, 5});
        EXPECT_EQ(plant.stock(master.table, master.key, item).section(u'|', 0, 0), before);
    }
}

TEST(StockPosting, OrderLinesCloseAndOpenWithTheQuantity) {
    ReceiptPlant plant;
    Connection connection(plant.pool, plant.target);
    const auto post = [&](const QString& quantity) {
        postOrderLine(connection, ReceiptPlant::line(u"P1"_s, u"1"_s, u"IN1"_s, quantity), 4);
    };
    post(u"9.9"_s);
    EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"9.9|0.1|N"_s);
    // 0.1 in binary must not leave a rest behind.
    post(u"0.1"_s);
    EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"10|0|Y"_s);
    EXPECT_EQ(refusalOf([&] { post(u"0.0001"_s); }), u"提示/第4筆輸入的入庫數已大於採購數量,請重新輸入!"_s);
    EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"10|0|Y"_s);
    post(u"-4"_s);
    EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"6|4|N"_s);
    const auto undo = [&](const QString& quantity) {
        reverseOrderLine(connection, ReceiptPlant::line(u"P1"_s, u"1"_s, u"IN1"_s, quantity));
    };
    undo(u"-4"_s);
    EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"10|0|Y"_s) << "all is here again";
    undo(u"7"_s);
    EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"3|7|N"_s);
    // Nobody opens a line closed by hand with nothing.
    plant.run({u"update 採購明細資料 set 送清='Y' where 採購單號='P1' and 序=1"});
    post(u"0"_s);
    undo(u"0"_s);
    EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"3|7|Y"_s);
    undo(u"3"_s);
    EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"0|10|N"_s) << "nothing has come";
}

TEST(StockPosting, PassesOverWhatIsNotThere) {
    ReceiptPlant plant;
    const QString before = plant.everything();
    Connection connection(plant.pool, plant.target);
    for (const ReceiptLine& line :
         {ReceiptPlant::line(u"P1"_s, u"9"_s, u"無此料"_s, u"3"_s), ReceiptPlant::line({}, {}, {}, u"3"_s),
          ReceiptPlant::line(u"P1"_s, {}, u"無此料"_s, u"3"_s),
          ReceiptPlant::line(u"P9"_s, u"1"_s, u"無此料"_s, u"3"_s)}) {
        postReceiptItem(connection, StockDocument::Receipt, u"物料"_s, u"20250115"_s, line);
        postOrderLine(connection, line, 1);
        reverseOrderLine(connection, line);
    }
    EXPECT_EQ(plant.everything(), before);
}

TEST(StockPosting, AnIssueNeedsItsStock) {
    struct Case {
        QString name;
        std::vector<IssuedItem> lines, stored;
        QString rows;
        bool belowSafety;
    };
    const std::vector<Case> cases{
        {u"enough"_s, {{u"IN1"_s, 4}}, {}, {}, false},
        {u"too much"_s, {{u"IN2"_s, 1}, {u"IN1"_s, 5}}, {}, u" [2] "_s, false},
        {u"given back first"_s, {{u"IN1"_s, 5}}, {{u"in1"_s, 2}}, {}, false},
        {u"rows of one item"_s, {{u"IN1"_s, 3}, {u"in1 "_s, 2}}, {}, u" [1]  [2] "_s, false},
        {u"below the safety level"_s, {{u"IN2"_s, 6}}, {}, u" [1] "_s, true},
        {u"both"_s, {{u"IN1"_s, 9}, {u"IN2"_s, 6}}, {}, u" [1]  [2] "_s, true},
        {u"short, not merely unsafe"_s, {{u"IN2"_s, 11}}, {}, u" [1] "_s, false},
        {u"blank and unknown rows"_s, {{{}, 99}, {u"無此料"_s, 99}}, {}, {}, false}};
    ReceiptPlant plant;
    plant.run({u"update 物料資料 set 庫存='4' where 物料代號='IN1'",
               u"update 物料資料 set 庫存='10', 安全庫存='5' where 物料代號='IN2'"});
    Connection connection(plant.pool, plant.target);
    for (const Case& row : cases) {
        const IssueCheck check = checkIssueStock(connection, u"物料"_s, row.lines, row.stored);
        EXPECT_EQ(check.rows, row.rows) << row.name.toStdString();
        EXPECT_EQ(check.belowSafety, row.belowSafety) << row.name.toStdString();
    }
}

TEST(MonthGuard, ACountClosesItsMonthAndAllBefore) {
    ReceiptPlant plant;
    plant.run({u"insert into 盤點資料_物料 values ('IN1', '2024-03-31', '0')"});
    const auto closed = [&](const char16_t* date, const char16_t* category) {
        return isMonthClosed(plant.session, QString::fromUtf16(date), QString::fromUtf16(category));
    };
    EXPECT_TRUE(closed(u"20240101", u"物料"));
    EXPECT_TRUE(closed(u"20240331", u"物料"));
    EXPECT_FALSE(closed(u"20240401", u"物料"));
    EXPECT_FALSE(closed(u"20240101", u"紙板"));
    EXPECT_TRUE(plant.messages.said.isEmpty());
    EXPECT_FALSE(closed(u"20240101", u"紙品"));
    EXPECT_FALSE(closed(u"20240101", u"凸版"));
    EXPECT_EQ(plant.messages.said, QStringList({u"錯誤/無效的參數"_s, u"錯誤/無效的參數"_s}));
}

} // namespace
} // namespace liaowu
