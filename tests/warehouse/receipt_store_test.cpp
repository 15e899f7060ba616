#include "common/document_numbers.h"
#include "common/document_stamp.h"
#include "warehouse/receipt_plant.h"

namespace liaowu {
namespace {

using namespace Qt::StringLiterals;

using Plant = ReceiptPlant;

TEST(ReceiptStore, ReadsBackWhatItWrote) {
    Plant plant;
    ReceiptSave save =
        plant.newReceipt(u"紙板"_s, {Plant::line(u"P2"_s, u"1"_s, u" KMK "_s, u"3.50"_s, u""_s, u"12"_s)});
    save.header.合計 = u"7.00"_s;
    save.header.備註 = u"'備註'"_s;
    save.lines[0].報關單號 = u"C-1"_s;
    saveReceipt(plant.session, save);
    EXPECT_EQ(
        plant.rows(u"select 製單人, 製單時間, 修改人, 審核, 審核人, 審核日期, 合計, 備註 from 原料入庫資料"),
        QStringList(u"倉管|2025-01-15 08:30:00||N|||7|'備註'"_s));
    const ReceiptSave stored = plant.again();
    ReceiptLine expected = save.lines[0];
    expected.原料代號 = u"KMK"_s;
    expected.數量 = u"3.5"_s;
    expected.備品 = u"0"_s;
    EXPECT_EQ(textsOf(ReceiptLineColumns, stored.lines.at(0)), textsOf(ReceiptLineColumns, expected));
}

TEST(ReceiptStore, EditsNetOut) {
    struct Case {
        QString name, first, second; ///< quantities of the two lines; an empty one takes the line out
        QString stock, line1, line2;
    };
    const std::vector<Case> cases{{u"unchanged"_s, u"10"_s, u"5"_s, u"16"_s, u"10|0|Y"_s, u"5|15|N"_s},
                                  {u"down"_s, u"6"_s, u"5"_s, u"12"_s, u"6|4|N"_s, u"5|15|N"_s},
                                  {u"up"_s, u"10"_s, u"20"_s, u"31"_s, u"10|0|Y"_s, u"20|0|Y"_s},
                                  {u"a line out"_s, {}, u"5"_s, u"5"_s, u"0|10|N"_s, u"5|15|N"_s},
                                  {u"all out"_s, {}, {}, u"0"_s, u"0|10|N"_s, u"0|20|N"_s}};
    for (const Case& row : cases) {
        Plant plant;
        ReceiptSave save =
            plant.newReceipt(u"物料"_s, {Plant::line(u"P1"_s, u"1"_s, u"IN1"_s, u"10"_s, u"1"_s),
                                         Plant::line(u"P1"_s, u"2"_s, u"IN1"_s, u"5"_s)});
        saveReceipt(plant.session, save);
        EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"10|0|Y"_s);
        save = plant.again();
        save.lines[0].數量 = row.first;
        save.lines[1].數量 = row.second;
        std::erase_if(save.lines, [](const ReceiptLine& line) { return line.數量.isEmpty(); });
        saveReceipt(plant.session, save);
        const std::string name = row.name.toStdString();
        EXPECT_EQ(plant.stock(u"物料資料", u"物料代號", u"IN1"_s).section(u'|', 0, 0), row.stock) << name;
        EXPECT_EQ(plant.orderLine(u"P1"_s, 1), row.line1) << name;
        EXPECT_EQ(plant.orderLine(u"P1"_s, 2), row.line2) << name;
        EXPECT_EQ(plant.faults(), QStringList()) << name;
    }
}

TEST(ReceiptStore, TooMuchIsRefusedAsAWhole) {
    struct Case {
        QString name;
        ReceiptLines lines;
        int row;
    };
    const std::vector<Case> cases{
        {u"the second line"_s,
         {Plant::line(u"P1"_s, u"1"_s, u"IN1"_s, u"10"_s), Plant::line(u"P1"_s, u"2"_s, u"IN1"_s, u"20.5"_s)},
         2},
        {u"two rows of one order line"_s,
         {Plant::line(u"P1"_s, u"1"_s, u"IN1"_s, u"6"_s), Plant::line({}, {}, u"IN2"_s, u"1"_s),
          Plant::line(u"P1"_s, u"1"_s, u"IN1"_s, u"5"_s)},
         3}};
    for (const Case& row : cases) {
        Plant plant;
        const QString before = plant.everything();
        ReceiptSave save = plant.newReceipt(u"物料"_s, row.lines);
        EXPECT_EQ(refusalOf([&] { saveReceipt(plant.session, save); }),
                  u"提示/第%1筆輸入的入庫數已大於採購數量,請重新輸入!"_s.arg(row.row));
        EXPECT_EQ(plant.everything(), before) << row.name.toStdString();
    }
    Plant plant;
    ReceiptSave save = plant.newReceipt(u"物料"_s, {Plant::line(u"P1"_s, u"1"_s, u"IN1"_s, u"10"_s)});
    saveReceipt(plant.session, save);
    plant.run({u"update 採購明細資料 set 數量='8' where 採購單號='P1' and 序=1"});
    save = plant.again();
    EXPECT_NE(refusalOf([&] { saveReceipt(plant.session, save); }), QString()) << "ordered less since";
}

TEST(ReceiptStore, ApprovingKeepsALineClosedByHand) {
    Plant plant;
    plant.run({u"insert into 進料檢驗資料 values ('Q1', 'N', 'N')"});
    ReceiptSave save = plant.newReceipt(u"物料"_s, {Plant::line(u"P1"_s, u"1"_s, u"IN1"_s, u"4"_s)});
    save.header.檢驗單號 = u"Q1"_s;
    saveReceipt(plant.session, save);
    plant.run({u"update 採購明細資料 set 送清='Y' where 採購單號='P1' and 序=1"});
    const QString stock = plant.stock(u"物料資料", u"物料代號", u"IN1"_s);
    for (const auto& [mark, confirmed] : {std::pair(u"Y"_s, u"Y"_s), std::pair(u"N"_s, u"N"_s)}) {
        save = plant.again();
        save.header.審核 = mark;
        save.header.審核人 = u"主管"_s;
        save.header.審核日期 = u"20250230"_s;
        save.mayApprove = true;
        saveReceipt(plant.session, save);
        EXPECT_EQ(plant.rows(u"select 審核, 審核人, 審核日期, 修改人 from 原料入庫資料"),
                  QStringList(mark == u"Y" ? u"Y|主管|20250115|倉管"_s : u"N|||倉管"_s));
        EXPECT_EQ(plant.value(u"select 入庫確認 from 進料檢驗資料"), confirmed);
        EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"4|6|Y"_s);
        EXPECT_EQ(plant.stock(u"物料資料", u"物料代號", u"IN1"_s), stock);
    }
    // One more piece is something else.
    save = plant.again();
    save.lines[0].數量 = u"5"_s;
    saveReceipt(plant.session, save);
    EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"5|5|N"_s);
}

TEST(ReceiptStore, AnApprovedReceiptIsGuardedInTheStore) {
    Plant plant;
    ReceiptSave save = plant.newReceipt(u"物料"_s, {Plant::line(u"P1"_s, u"1"_s, u"IN1"_s, u"4"_s)});
    saveReceipt(plant.session, save);
    const ReceiptSave loaded = plant.again();
    plant.run({u"update 原料入庫資料 set 審核='Y', 審核人='主管', 審核日期='20250115'"});
    save = loaded;
    EXPECT_EQ(refusalOf([&] { saveReceipt(plant.session, save); }),
              u"提示/該入庫單已審核﹐不能再進行修改!"_s);
    EXPECT_EQ(
        refusalOf([&] { deleteReceipt(plant.session, u"2501150001"_s, loaded.lines, loaded.loadedStamp); }),
        u"提示/該單已審核﹐不允許刪除!"_s);
    save.mayApprove = true;
    const auto conflict = saveReceipt(plant.session, save);
    ASSERT_TRUE(conflict.has_value());
    EXPECT_EQ(conflict->person, u"主管"_s);
}

TEST(ReceiptStore, TwoUsersNeverLoseAPiece) {
    Plant plant;
    ReceiptSave save = plant.newReceipt(u"物料"_s, {Plant::line(u"P1"_s, u"1"_s, u"IN1"_s, u"4"_s)});
    saveReceipt(plant.session, save);
    const ReceiptSave mine = plant.again();
    plant.pool.setClock(QDateTime(QDate(2025, 1, 15), QTime(9, 0)));
    ReceiptSave other = plant.again();
    other.lines[0].數量 = u"7"_s;
    saveReceipt(plant.session, other);
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
    deleteReceipt(plant.session, u"2501150001"_s, mine.lines, mine.loadedStamp);
    EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"0|10|N"_s);
    EXPECT_EQ(plant.faults(), QStringList());
    EXPECT_EQ(refusalOf([&] { deleteReceipt(plant.session, u"2501150001"_s, mine.lines, mine.loadedStamp); }),
              u"刪除錯誤/入庫單 2501150001 已由其他使用者刪除!"_s);
    EXPECT_EQ(refusalOf([&] { saveReceipt(plant.session, save); }),
              u"更新錯誤/入庫單 2501150001 已由其他使用者刪除!"_s);
}

TEST(ReceiptStore, HiddenPricesAreWhatIsSaved) {
    Plant plant;
    ReceiptSave save = plant.newReceipt(u"物料"_s, {Plant::line(u"P1"_s, u"1"_s, u"IN1"_s, u"4"_s)});
    save.canSeePrice = false;
    save.lines[0].單價 = save.lines[0].小計 = u"******"_s;
    saveReceipt(plant.session, save);
    EXPECT_EQ(plant.rows(u"select 單價, 小計 from 原料入庫明細"), QStringList(u"2|8"_s));
    Connection connection(plant.pool, plant.target);
    const auto masked = loadReceipt(connection, u"2501150001"_s, false);
    EXPECT_EQ(masked->lines[0].單價, u"******"_s);
    EXPECT_EQ(masked->lines[0].小計, u"******"_s);
    EXPECT_EQ(masked->lines[0].原單價, u"2"_s);
}

TEST(ReceiptStore, AReturnThatIsDeletedClosesItsLineAgain) {
    Plant plant;
    ReceiptSave save = plant.newReceipt(u"物料"_s, {Plant::line(u"P1"_s, u"1"_s, u"IN1"_s, u"10"_s)});
    saveReceipt(plant.session, save);
    save = plant.newReceipt(u"物料"_s, {Plant::line(u"P1"_s, u"1"_s, u"IN1"_s, u"-4"_s)});
    save.header.入庫單號 = u"2501150002"_s;
    save.header.單別 = u"退貨"_s;
    saveReceipt(plant.session, save);
    EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"6|4|N"_s);
    deleteReceipt(plant.session, save.header.入庫單號, save.lines, save.loadedStamp);
    EXPECT_EQ(plant.orderLine(u"P1"_s, 1), u"10|0|Y"_s);
    EXPECT_EQ(plant.faults(), QStringList());
}

TEST(ReceiptStore, AReturnMadeHereNeverBlocksTheNextNumber) {
    Plant plant;
    const auto next = [&] {
        Connection connection(plant.pool, plant.target);
        return nextDocumentNumber(connection, receiptNumbers());
    };
    EXPECT_EQ(next(), u"2501150001"_s);
    plant.run({u"insert into 原料入庫資料 (入庫單號, 單別) values ('2501150001', '退貨')",
               u"insert into 原料入庫資料 (入庫單號, 單別) values ('250115T0009', '退貨')"});
    EXPECT_EQ(next(), u"2501150002"_s);
}

/// Runs a deed with the n-th database call failing, for every n: each failure leaves every table as it was.
int strikeEveryCall(Plant& plant, const std::function<void(Plant&)>& deed, const char* name) {
    const QString before = plant.everything();
    for (int call = 1;; ++call) {
        plant.pool.failAt(call);
        const int error = errorOf([&] { deed(plant); });
        plant.pool.failAt(0);
        if (error == 0) {
            EXPECT_NE(plant.everything(), before) << name;
            EXPECT_EQ(plant.faults(), QStringList()) << name;
            return call - 1;
        }
        EXPECT_EQ(error, DatabaseError::Injected) << name << " call " << call;
        EXPECT_TRUE(plant.everything() == before) << name << " call " << call;
    }
}

TEST(ReceiptStore, AFailureAtAnyCallLeavesNothingHalfWritten) {
    Plant plant;
    plant.run({u"insert into 進料檢驗資料 values ('Q1', 'N', 'N')"});
    const auto enter = [](Plant& on) {
        ReceiptSave save = on.newReceipt(u"物料"_s, {Plant::line(u"P1"_s, u"1"_s, u"IN1"_s, u"10"_s, u"1"_s),
                                                     Plant::line(u"P1"_s, u"2"_s, u"IN2"_s, u"5"_s)});
        save.header.檢驗單號 = u"Q1"_s;
        saveReceipt(on.session, save);
    };
    const auto edit = [](Plant& on) {
        ReceiptSave save = on.again();
        save.lines[0].數量 = u"6"_s;
        save.header.倉別 = u"B區"_s;
        saveReceipt(on.session, save);
    };
    const auto mark = [](const QString& answer) {
        return [answer](Plant& on) {
            ReceiptSave save = on.again();
            save.header.審核 = answer;
            save.mayApprove = true;
            saveReceipt(on.session, save);
        };
    };
    const auto remove = [](Plant& on) {
        const ReceiptSave save = on.again();
        deleteReceipt(on.session, save.savedNumber, save.saved, save.loadedStamp);
    };
    int struck = strikeEveryCall(plant, enter, "new");
    struck += strikeEveryCall(plant, edit, "edit");
    struck += strikeEveryCall(plant, mark(u"Y"_s), "approve");
    struck += strikeEveryCall(plant, mark(u"N"_s), "take back");
    struck += strikeEveryCall(plant, remove, "delete");
    std::printf("receipts: %d calls struck\n", struck);
    EXPECT_GT(struck, 100);
}

} // namespace
} // namespace liaowu
