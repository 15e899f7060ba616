#include "common/document_stamp.h"
#include "warehouse/receipt_plant.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

using Plant = ReceiptPlant;

TEST(ReceiptStore, ReadsBackWhatItWrote) {
    Plant plant;
    ReceiptSave save =
        plant.newReceipt(u"紙板"_s, {Plant::line(u"P2"_s, u"1"_s, u" KMK "_s, u"3.50"_s, u""_s, u"12"_s)});
    save.header.合計 = u"7.00"_s;
    save.header.備註 = u"'備註'"_s;
    save.lines[0].報關單號 = u"C-1"_s;
    const ReceiptSave stored = plant.saved(save);
    EXPECT_EQ(
        plant.rows(u"select 製單人, 製單時間, 修改人, 審核, 審核人, 審核日期, 合計, 備註 from 原料入庫資料"),
        QStringList(u"測試員|2025-01-15 08:30:00||N|||7|'備註'"_s));
    ReceiptLine expected = save.lines[0];
    expected.原料代號 = u"KMK"_s;
    expected.數量 = u"3.5"_s;
    expected.備品 = u"0"_s;
    EXPECT_EQ(textsOf(ReceiptLineColumns, stored.lines.at(0)), textsOf(ReceiptLineColumns, expected));
}

TEST(ReceiptStore, EditsNetOut) {
    // Quantities of the two lines, an empty one takes the line out; stock and order lines afterwards.
    const auto cases =
        casesOf<4>({u"10|5|16|10 0 Y, 5 15 N", u"6|5|12|6 4 N, 5 15 N", u"10|20|31|10 0 Y, 20 0 Y",
                    u"|5|5|0 10 N, 5 15 N", u"||0|0 10 N, 0 20 N"});
    for (const auto& [first, second, stock, orderLines] : cases) {
        Plant plant;
        ReceiptSave save =
            plant.saved(plant.newReceipt(u"物料"_s, {Plant::line(u"P1"_s, u"1"_s, u"IN1"_s, u"10"_s, u"1"_s),
                                                     Plant::line(u"P1"_s, u"2"_s, u"IN1"_s, u"5"_s)}));
        EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"10|0|Y"_s);
        save.lines[0].數量 = first;
        save.lines[1].數量 = second;
        std::erase_if(save.lines, [](const ReceiptLine& line) { return line.數量.isEmpty(); });
        saveReceipt(plant.session, save);
        EXPECT_EQ(plant.stock(u"物料"_s, u"IN1"_s), stock + u"|20250115"_s) << first << ", " << second;
        const QString now = plant.orderLine(u"P1"_s, 1) + u", "_s + plant.orderLine(u"P1"_s, 2);
        EXPECT_EQ(QString(now).replace(u'|', u' '), orderLines) << first << ", " << second;
        EXPECT_EQ(plant.faults(), QStringList()) << first << ", " << second;
    }
}

TEST(ReceiptStore, TooMuchIsRefusedAsAWhole) {
    Plant plant;
    const QString before = plant.everything();
    ReceiptSave save = plant.newReceipt(u"物料"_s, {Plant::line(u"P1"_s, u"1"_s, u"IN1"_s, u"6"_s),
                                                    Plant::line({}, {}, u"IN2"_s, u"1"_s),
                                                    Plant::line(u"P1"_s, u"1"_s, u"IN1"_s, u"5"_s)});
    EXPECT_EQ(refusalOf([&] { saveReceipt(plant.session, save); }),
              u"提示: 第3筆輸入的入庫數已大於採購數量,請重新輸入!"_s)
        << "two rows of one order line";
    EXPECT_EQ(plant.everything(), before);
    save = plant.saved(u"10"_s);
    plant.run({u"update 採購明細資料 set 數量='8' where 採購單號='P1' and 序=1"});
    EXPECT_NE(refusalOf([&] { saveReceipt(plant.session, save); }), QString()) << "ordered less since";
}

TEST(ReceiptStore, ApprovingKeepsALineClosedByHand) {
    Plant plant;
    plant.run({u"insert into 進料檢驗資料 values ('Q1', 'N', 'N')"});
    ReceiptSave save = plant.newReceipt(u"物料"_s, {Plant::line(u"P1"_s, u"1"_s, u"IN1"_s, u"4"_s)});
    save.header.檢驗單號 = u"Q1"_s;
    saveReceipt(plant.session, save);
    plant.run({u"update 採購明細資料 set 送清='Y' where 採購單號='P1' and 序=1"});
    const QString stock = plant.stock(u"物料"_s, u"IN1"_s);
    for (const auto& [mark, written] : casesOf<2>({u"Y|Y|主管|20250115|測試員", u"N|N|||測試員"})) {
        save = plant.again();
        save.header.審核 = mark;
        save.header.審核人 = u"主管"_s;
        save.header.審核日期 = u"20250230"_s;
        save.mayApprove = true;
        saveReceipt(plant.session, save);
        EXPECT_EQ(plant.rows(u"select 審核, 審核人, 審核日期, 修改人 from 原料入庫資料"),
                  QStringList(written));
        EXPECT_EQ(plant.value(u"select 入庫確認 from 進料檢驗資料"), mark);
        EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"4|6|Y"_s);
        EXPECT_EQ(plant.stock(u"物料"_s, u"IN1"_s), stock);
    }
    // One more piece is something else.
    save = plant.again();
    save.lines[0].數量 = u"5"_s;
    saveReceipt(plant.session, save);
    EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"5|5|N"_s);
}

TEST(ReceiptStore, AnApprovedReceiptIsGuardedInTheStore) {
    Plant plant;
    ReceiptSave save = plant.saved(u"4"_s);
    plant.run({u"update 原料入庫資料 set 審核='Y', 審核人='主管', 審核日期='20250115'"});
    EXPECT_EQ(refusalOf([&] { saveReceipt(plant.session, save); }),
              u"提示: 該入庫單已審核﹐不能再進行修改!"_s);
    EXPECT_EQ(
        refusalOf([&] { deleteReceipt(plant.session, save.savedNumber, save.saved, save.loadedStamp); }),
        u"提示: 該單已審核﹐不允許刪除!"_s);
    save.mayApprove = true;
    const auto conflict = saveReceipt(plant.session, save);
    ASSERT_TRUE(conflict.has_value());
    EXPECT_EQ(conflict->person, u"主管"_s);
}

TEST(ReceiptStore, TwoUsersNeverLoseAPiece) {
    Plant plant;
    const ReceiptSave mine = plant.saved(u"4"_s);
    plant.pool.setClock(QDateTime(QDate(2025, 1, 15), QTime(9, 0)));
    ReceiptSave save = mine;
    save.lines[0].數量 = u"7"_s;
    saveReceipt(plant.session, save);
    save = mine;
    save.lines[0].數量 = u"5"_s;
    const QString before = plant.everything();
    const auto conflict = saveReceipt(plant.session, save);
    ASSERT_TRUE(conflict.has_value());
    EXPECT_EQ(conflict->time, u"2025-01-15 09:00:00"_s);
    EXPECT_EQ(plant.everything(), before);
    save.overwrite = true;
    EXPECT_FALSE(saveReceipt(plant.session, save).has_value());
    EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"5|5|N"_s);
    EXPECT_EQ(plant.faults(), QStringList());
    // A stale screen deletes what is stored, not what it remembers.
    const auto remove = [&] { deleteReceipt(plant.session, mine.savedNumber, mine.saved, mine.loadedStamp); };
    remove();
    EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"0|10|N"_s);
    EXPECT_EQ(plant.faults(), QStringList());
    EXPECT_EQ(refusalOf(remove), u"刪除錯誤: 入庫單 2501150001 已由其他使用者刪除!"_s);
    EXPECT_EQ(refusalOf([&] { saveReceipt(plant.session, save); }),
              u"更新錯誤: 入庫單 2501150001 已由其他使用者刪除!"_s);
}

TEST(ReceiptStore, HiddenPricesAreWhatIsSaved) {
    Plant plant;
    ReceiptSave save = plant.newReceipt(u"物料"_s, {Plant::line(u"P1"_s, u"1"_s, u"IN1"_s, u"4"_s)});
    save.canSeePrice = false;
    save.lines[0].單價 = save.lines[0].小計 = u"******"_s;
    saveReceipt(plant.session, save);
    EXPECT_EQ(plant.rows(u"select 單價, 小計 from 原料入庫明細"), QStringList(u"2|8"_s));
    Connection connection(plant.pool, plant.target);
    const ReceiptLine masked = loadReceipt(connection, u"2501150001"_s, false)->lines[0];
    EXPECT_EQ(masked.單價 + masked.小計 + masked.原單價, u"************2"_s);
}

TEST(ReceiptStore, AReturnThatIsDeletedClosesItsLineAgain) {
    Plant plant;
    plant.saved(u"10"_s);
    ReceiptSave save = plant.newReceipt(u"物料"_s, {Plant::line(u"P1"_s, u"1"_s, u"IN1"_s, u"-4"_s)});
    save.header.入庫單號 = u"2501150002"_s;
    save.header.單別 = u"退貨"_s;
    saveReceipt(plant.session, save);
    EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"6|4|N"_s);
    deleteReceipt(plant.session, save.header.入庫單號, save.lines, save.loadedStamp);
    EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"10|0|Y"_s);
    EXPECT_EQ(plant.faults(), QStringList());
}

TEST(ReceiptStore, AFailureAtAnyCallLeavesNothingHalfWritten) {
    Plant plant;
    plant.run({u"insert into 進料檢驗資料 values ('Q1', 'N', 'N')"});
    const auto strike = [&](const char* name, const auto& deed) {
        const int calls = failEveryCall(name, plant, deed);
        EXPECT_EQ(plant.faults(), QStringList()) << name;
        return calls;
    };
    int struck = strike("new", [&] {
        ReceiptSave save =
            plant.newReceipt(u"物料"_s, {Plant::line(u"P1"_s, u"1"_s, u"IN1"_s, u"10"_s, u"1"_s),
                                         Plant::line(u"P1"_s, u"2"_s, u"IN2"_s, u"5"_s)});
        save.header.檢驗單號 = u"Q1"_s;
        saveReceipt(plant.session, save);
    });
    struck += strike("edit", [&] {
        ReceiptSave save = plant.again();
        save.lines[0].數量 = u"6"_s;
        save.header.倉別 = u"B區"_s;
        saveReceipt(plant.session, save);
    });
    for (const auto& mark : {u"Y"_s, u"N"_s})
        struck += strike(mark == u"Y" ? "approve" : "take back", [&] {
            ReceiptSave save = plant.again();
            save.header.審核 = mark;
            save.mayApprove = true;
            saveReceipt(plant.session, save);
        });
    struck += strike("delete", [&] {
        const ReceiptSave save = plant.again();
        deleteReceipt(plant.session, save.savedNumber, save.saved, save.loadedStamp);
    });
    std::printf("receipts: %d calls struck\n", struck);
    EXPECT_GT(struck, 100);
}
