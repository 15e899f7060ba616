#include "warehouse/month_guard.h"
#include "warehouse/receipt_plant.h"
#include "warehouse/stock_posting.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

TEST(StockPosting, MovesWhatEachKindOfDocumentMoves) {
    // Family, order, item, document; 庫存 and 異動日期 after posting and after the reversal.
    const auto cases = casesOf<7>(
        {u"紙板|P2|KMK|2501150001|采購入庫|12/20250115|0/20250115",
         u"物料|P1|IN1|2501150001|采購入庫|5/20250115|0/20250115", u"紙品|P3|W1|2501150001|采購入庫|5/|5/",
         u"凸版|P4|PL1|2501150001|采購入庫|6/|6/", u"紙板|P2|KMK|250115T0001|退貨|0/|0/",
         // Sent back on the receipt screen: the goods left the stock.
         u"紙板|P2|KMK|2501150001|退貨|12/20250115|0/20250115"});
    for (const auto& [category, order, item, number, kind, after, afterUndo] : cases) {
        ReceiptPlant plant;
        const StockDocument document = stockDocumentOf(number, kind);
        const ReceiptLine line = ReceiptPlant::line(order, u"1"_s, item, u"3"_s, u"2"_s, u"12"_s);
        Connection connection(plant.pool, plant.target);
        postReceiptItem(connection, document, category, u"20250115"_s, line);
        postOrderLine(connection, line, 1);
        EXPECT_EQ(plant.stock(category, item).replace(u'|', u'/'), after) << category << number << kind;
        EXPECT_EQ(plant.orderLine(order, 1), u"3|7|N"_s) << category << number << kind;
        reverseReceiptItem(connection, document, category, line);
        reverseOrderLine(connection, line);
        EXPECT_EQ(plant.stock(category, item).replace(u'|', u'/'), afterUndo) << category << number << kind;
        EXPECT_EQ(plant.orderLine(order, 1), u"0|10|N"_s) << category << number << kind;
    }
}

TEST(StockPosting, IssuesTakeFromBoardAndMaterialsOnly) {
    ReceiptPlant plant;
    plant.run({u"update 浪紙資料 set 庫存='8'", u"update 物料資料 set 庫存='8'"});
    Connection connection(plant.pool, plant.target);
    for (const auto& [category, item, before, after] :
         casesOf<4>({u"紙板|KMK|8|3|20250116", u"物料|IN1|8|3|20250116", u"紙品|W1|5|5|"})) {
        postIssueItem(connection, category, u"20250116"_s, {item, 5});
        EXPECT_EQ(plant.stock(category, item), after);
        reverseIssueItem(connection, category, {item, 5});
        EXPECT_EQ(plant.stock(category, item).section(u'|', 0, 0), before);
    }
}

TEST(StockPosting, OrderLinesCloseAndOpenWithTheQuantity) {
    ReceiptPlant plant;
    Connection connection(plant.pool, plant.target);
    const auto cases =
        casesOf<4>({u"post|9.9||9.9|0.1|N", u"post|0.1|0.1 in binary leaves no rest|10|0|Y",
                    u"too much|0.0001||10|0|Y", u"post|-4||6|4|N", u"undo|-4|all is here again|10|0|Y",
                    u"undo|7||3|7|N", u"close|||3|7|Y", u"post|0|nothing opens no line closed by hand|3|7|Y",
                    u"undo|0|nothing opens no line closed by hand|3|7|Y", u"undo|3|nothing has come|0|10|N"});
    for (const auto& [deed, quantity, what, stored] : cases) {
        const ReceiptLine line = ReceiptPlant::line(u"P1"_s, u"1"_s, u"IN1"_s, quantity);
        const auto post = [&] { postOrderLine(connection, line, 4); };
        if (deed == u"post") post();
        if (deed == u"too much") {
            EXPECT_EQ(refusalOf(post), u"提示: 第4筆輸入的入庫數已大於採購數量,請重新輸入!"_s);
        }
        if (deed == u"undo") reverseOrderLine(connection, line);
        if (deed == u"close") plant.run({u"update 採購明細資料 set 送清='Y' where 採購單號='P1' and 序=1"});
        EXPECT_EQ(plant.orderLine(u"P1"_s, 1), stored) << deed << ' ' << quantity << ' ' << what;
    }
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
        const char* name;
        std::vector<IssuedItem> lines, stored;
        QString rows;
        bool belowSafety = false;
    };
    const Case cases[] = {{"enough", {{u"IN1"_s, 4}}, {}, {}},
                          {"too much", {{u"IN2"_s, 1}, {u"IN1"_s, 5}}, {}, u" [2] "_s},
                          {"given back first", {{u"IN1"_s, 5}}, {{u"in1"_s, 2}}, {}},
                          {"rows of one item", {{u"IN1"_s, 3}, {u"in1 "_s, 2}}, {}, u" [1]  [2] "_s},
                          {"below the safety level", {{u"IN2"_s, 6}}, {}, u" [1] "_s, true},
                          {"both", {{u"IN1"_s, 9}, {u"IN2"_s, 6}}, {}, u" [1]  [2] "_s, true},
                          {"short, not merely unsafe", {{u"IN2"_s, 11}}, {}, u" [1] "_s},
                          {"blank and unknown rows", {{{}, 99}, {u"無此料"_s, 99}}, {}, {}}};
    ReceiptPlant plant;
    plant.run({u"update 物料資料 set 庫存='4' where 物料代號='IN1'",
               u"update 物料資料 set 庫存='10', 安全庫存='5' where 物料代號='IN2'"});
    Connection connection(plant.pool, plant.target);
    for (const Case& row : cases) {
        const IssueCheck check = checkIssueStock(connection, u"物料"_s, row.lines, row.stored);
        EXPECT_EQ(check.rows, row.rows) << row.name;
        EXPECT_EQ(check.belowSafety, row.belowSafety) << row.name;
    }
}

TEST(MonthGuard, ACountClosesItsMonthAndAllBefore) {
    ReceiptPlant plant;
    plant.run({u"insert into 盤點資料_物料 values ('IN1', '2024-03-31', '0')"});
    for (const auto& [date, category, closed] :
         casesOf<3>({u"20240101|物料|yes", u"20240331|物料|yes", u"20240401|物料|no", u"20240101|紙板|no"}))
        EXPECT_EQ(isMonthClosed(plant.session, date, category), closed == u"yes") << date << category;
    EXPECT_TRUE(plant.messages.told.isEmpty());
    for (const auto& category : {u"紙品"_s, u"凸版"_s})
        EXPECT_FALSE(isMonthClosed(plant.session, u"20240101"_s, category));
    EXPECT_EQ(plant.messages.told, QStringList({u"錯誤: 無效的參數"_s, u"錯誤: 無效的參數"_s}));
}
