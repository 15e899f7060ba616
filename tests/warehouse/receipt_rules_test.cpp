#include "frame/item_picks.h"
#include "warehouse/receipt_plant.h"
#include "warehouse/receipt_pricing.h"
#include "warehouse/receipt_queries.h"
#include "warehouse/receipt_rules.h"

namespace liaowu {
namespace {

using namespace Qt::StringLiterals;

TEST(ReceiptRules, ChecksTheHeaderInItsOrder) {
    ReceiptHeader header;
    const auto text = [](const std::optional<Finding>& finding) {
        return finding ? finding->text + finding->control : QString();
    };
    EXPECT_EQ(text(checkReceiptDate(header)), u"「入庫日期」欄位不允許空白!txt入庫日期"_s);
    header.入庫日期 = u"20250230"_s;
    EXPECT_EQ(text(checkReceiptDate(header)), u"「入庫日期」日期輸入錯誤!txt入庫日期"_s);
    header.入庫日期 = u"20250228"_s;
    EXPECT_EQ(text(checkReceiptDate(header)), QString());
    EXPECT_EQ(text(checkReceiptHeader(header)), u"「入庫單號」欄位不可為空白!txt入庫單號"_s);
    header.入庫單號 = u"1"_s;
    EXPECT_EQ(text(checkReceiptHeader(header)), u"「付款日期」日期輸入錯誤!txt付款年月"_s);
    header.付款年月 = u"202513"_s;
    EXPECT_EQ(text(checkReceiptHeader(header)), u"「付款日期」日期輸入錯誤!txt付款年月"_s);
    header.付款年月 = u"202512"_s;
    EXPECT_EQ(text(checkReceiptHeader(header)), u"「對帳月份」日期輸入錯誤!txt對帳日期"_s);
    header.對帳日期 = u"202501"_s;
    EXPECT_EQ(text(checkReceiptHeader(header)), QString());
}

TEST(ReceiptRules, PaymentMonthsFollowTheVendorsTerms) {
    struct Case {
        VendorTerms terms;
        QString date, reconciled, paid;
    };
    const std::vector<Case> cases{
        {{u"現金"_s, u"25日結帳"_s, u"60"_s}, u"20250126"_s, u"202501"_s, u"202501"_s},
        {{u"月結"_s, u"25日結帳"_s, u"60"_s}, u"20250125"_s, u"202501"_s, u"202503"_s},
        {{u"月結"_s, u"25日結帳"_s, u"30"_s}, u"20250126"_s, u"202502"_s, u"202503"_s},
        {{u"月結"_s, u"25日結帳"_s, u"0"_s}, u"20241231"_s, u"202501"_s, u"202501"_s},
        {{u"月結"_s, u"月底結帳"_s, u"30"_s}, u"20250131"_s, u"202501"_s, u"202501"_s},
        {{u""_s, u""_s, u""_s}, u"20250131"_s, u"202501"_s, u"202501"_s},
        {{u"月結"_s, u""_s, u"31"_s}, u"壞"_s, u"壞"_s, u"202503"_s}};
    for (const Case& row : cases) {
        const PaymentMonths months = paymentMonths(row.terms, row.date, u"20250210"_s);
        EXPECT_EQ(months.reconciled, row.reconciled) << row.date.toStdString();
        EXPECT_EQ(months.paid, row.paid) << row.date.toStdString();
    }
}

TEST(ReceiptRules, AReturnTakesOneSign) {
    for (const auto& [typed, kind, expected] :
         {std::tuple(u"5"_s, u"退貨"_s, u"-5"_s), std::tuple(u"-5"_s, u"退貨"_s, u"-5"_s),
          std::tuple(u"5"_s, u"采購入庫"_s, u"5"_s), std::tuple(u"-5"_s, u"采購入庫"_s, u"-5"_s),
          std::tuple(u""_s, u"退貨"_s, u""_s)})
        EXPECT_EQ(signedQuantity(typed, kind), expected);
}

TEST(ReceiptPricing, PricesALineByFamilyUnitsAndVendor) {
    struct Case {
        QString name, category, item, spec, unit, quantity;
        QString amount, formula;
    };
    const FormulaTable formulas{
        {u""_s, u""_s, u"PCS"_s, u"㎡"_s, u"長*寬*數量*單價/10000"_s, u"1"_s, u"紙板"_s},
        {u""_s, u""_s, u"PCS"_s, u"KG"_s, u"長*寬*基重/10000000*數量*單價"_s, u"2"_s, u"紙板"_s},
        {u""_s, u""_s, u"PCS"_s, u"壞"_s, u"數量/(1-1)"_s, u"3"_s, u"紙板"_s}};
    const std::vector<Case> cases{
        {u"materials"_s, u"物料"_s, u"墨"_s, u"100*50"_s, u"㎡"_s, u"3"_s, u"7.50"_s, u"計價公式: 2.5*3"_s},
        {u"board by area"_s, u"紙板"_s, u"K200"_s, u"120*90"_s, u"㎡"_s, u"10"_s, u"27.00"_s,
         u"計價公式: 120*90*10*2.5/10000"_s},
        {u"a length alone is one wide"_s, u"紙板"_s, u"K200"_s, u"120*0"_s, u"㎡"_s, u"100"_s, u"3.00"_s,
         u"計價公式: 120*1*100*2.5/10000"_s},
        {u"the vendor's next weight"_s, u"紙板"_s, u"K190"_s, u"100*100"_s, u"KG"_s, u"10"_s, u"5.25"_s,
         u"計價公式: 100*100*210/10000000*10*2.5"_s},
        {u"no heavier weight"_s, u"紙板"_s, u"K400"_s, u"100*100"_s, u"KG"_s, u"10"_s, u"10.00"_s,
         u"計價公式: 100*100*400/10000000*10*2.5"_s},
        {u"no formula"_s, u"紙板"_s, u"K200"_s, u"120*90"_s, u"張"_s, u"3"_s, u"7.50"_s,
         u"無計價公式以單價*數量計算 3*2.5"_s},
        {u"no size"_s, u"紙板"_s, u"K200"_s, u"1200X800"_s, u"㎡"_s, u"3"_s, u"7.50"_s,
         u"無計價公式以單價*數量計算 3*2.5"_s},
        {u"sent back"_s, u"紙板"_s, u"K200"_s, u"120*90"_s, u"㎡"_s, u"-10"_s, u"-27.00"_s,
         u"計價公式: 120*90*-10*2.5/10000"_s}};
    CEval evaluator;
    const std::vector<double> weights{150, 180, 210, 300};
    for (const Case& row : cases)
        for (const bool canSeePrice : {true, false}) {
            ReceiptLine line;
            line.原料名稱 = row.item;
            line.規格 = row.spec;
            line.單位 = row.unit;
            line.數量 = row.quantity;
            putPrice(line, u"2.5"_s, canSeePrice);
            settleStockQuantity(line);
            recalculateLine(line, {formulas, evaluator, row.category, u"PCS"_s, weights, canSeePrice});
            EXPECT_EQ(line.原小計, row.amount) << row.name.toStdString();
            EXPECT_EQ(line.小計, canSeePrice ? row.amount : u"******"_s) << row.name.toStdString();
            EXPECT_EQ(line.計價公式, row.formula) << row.name.toStdString();
            EXPECT_EQ(line.走紙才, u"1"_s);
            EXPECT_EQ(line.入庫數量, row.quantity);
        }
    ReceiptLine line;
    line.規格 = u"1*1"_s;
    line.單位 = u"壞"_s;
    line.數量 = u"3"_s;
    line.走紙才 = u"4"_s;
    line.入庫數量 = u"11"_s;
    line.原小計 = u"8"_s;
    EXPECT_THROW(recalculateLine(line, {formulas, evaluator, u"紙板"_s, u"PCS"_s, weights, true}),
                 FormulaError);
    EXPECT_EQ(line.原小計 + u'/' + line.入庫數量, u"8/11"_s);
    settleStockQuantity(line);
    EXPECT_EQ(line.入庫數量, u"12"_s);
}

TEST(ReceiptQueries, AnOrderBringsWhatIsOpen) {
    ReceiptPlant plant;
    plant.run({u"update 採購明細資料 set 已入庫數='4', 送清='Y' where 序=1",
               u"update 採購明細資料 set 已入庫數='20' where 採購單號='P3' and 序=2",
               u"update 採購明細資料 set 已入庫數=null, 寬剖='' where 採購單號='P1' and 序=2",
               u"insert into 採購資料 (採購單號, 類別, 審單, 廠商代號) values ('P5', '物料', 'N', 'V1')",
               u"insert into 採購明細資料 (採購單號, 序, 原料代號, 數量) values ('P5', 1, 'IN1', '5')",
               u"insert into 採購資料 (採購單號, 類別, 審單, 廠商代號) values ('P6', '物料', 'Y', null)",
               u"insert into 採購明細資料 (採購單號, 序, 原料代號, 數量) values ('P6', 1, 'IN1', '5')"});
    struct Case {
        QString order, vendor, category, kind;
        QStringList lines; ///< 採購序, 數量, 走紙才, 入庫單位
    };
    const QString bought = u"采購入庫"_s;
    const std::vector<Case> cases{{u"P1"_s, u"V1"_s, u"物料"_s, bought, {u"1|6|4|KG"_s, u"2|20|0|KG"_s}},
                                  {u"P2"_s, u"V1"_s, u"紙板"_s, bought, {u"1|6|4|PCS"_s, u"2|20|4|PCS"_s}},
                                  {u"P3"_s, u"V1"_s, u"紙品"_s, bought, {u"1|6|4|張"_s}},
                                  {u"P4"_s, u"V1"_s, u"凸版"_s, bought, {u"1|6|4|塊"_s, u"2|20|4|塊"_s}},
                                  {u"P2"_s, u"V1"_s, u"紙板"_s, u"退貨"_s, {u"1|-4|4|PCS"_s}},
                                  {u"P2"_s, u"V2"_s, u"紙板"_s, bought, {}},
                                  {u"P5"_s, u"V1"_s, u"物料"_s, bought, {}},
                                  {u"P6"_s, u"V2"_s, u"物料"_s, bought, {u"1|5|0|KG"_s}}};
    Connection connection(plant.pool, plant.target);
    for (const Case& row : cases) {
        QStringList lines;
        for (const ReceiptLine& line :
             linesOfOrder(connection, row.order, row.vendor, row.category, row.kind, true))
            lines << QStringList{line.採購序, line.數量, line.走紙才, line.入庫單位}.join(u'|');
        EXPECT_EQ(lines, row.lines) << (row.order + row.vendor + row.kind).toStdString();
    }
    const ReceiptLines masked = linesOfOrder(connection, u"P1"_s, u"V1"_s, u"物料"_s, bought, false);
    EXPECT_EQ(masked.at(0).單價 + masked.at(0).原單價, u"******2"_s);
    plant.session.formulaMode = u"物料"_s;
    plant.session.pickVendor = u"V2"_s;
    EXPECT_EQ(plant.rowsOf(openOrderLinePick().statements(plant.session, {}).at(0).text()).size(), 1)
        << "an order without a vendor is anybody's";
}

TEST(ReceiptQueries, AnItemIsFoundByItsCodeOrItsOwnName) {
    ReceiptPlant plant;
    plant.run({u"insert into 浪紙資料 (浪紙代號, 浪紙名稱) values ('KMK-2', 'K200')",
               u"insert into 浪紙資料 (浪紙代號, 浪紙名稱) values ('A', 'KMK')",
               u"insert into 浪紙資料 (浪紙代號, 浪紙名稱) values ('B', 'B180')"});
    Connection connection(plant.pool, plant.target);
    for (const auto& [typed, code] :
         {std::pair(u"kmk"_s, u"KMK"_s), std::pair(u"KMK-2"_s, u"KMK-2"_s), std::pair(u"B180"_s, u"B"_s),
          std::pair(u"K200"_s, QString()), std::pair(u"K2"_s, QString()), std::pair(QString(), QString())}) {
        const auto item = findReceiptItem(connection, u"紙板"_s, typed);
        EXPECT_EQ(item ? item->code : QString(), code) << typed.toStdString();
    }
}

TEST(ReceiptQueries, ListsHoldWhatIsAskedFor) {
    ReceiptPlant plant;
    plant.session.category = u"物料"_s;
    plant.session.salesScope = u" And (業務員代號='S1' ) "_s;
    plant.run({u"insert into 廠商資料 (廠商代號, 業務員代號) values ('V1', 'S1')",
               u"insert into 廠商資料 (廠商代號, 業務員代號) values ('V2', 'S2')"});
    Connection connection(plant.pool, plant.target);
    for (const auto& [number, kind, vendor, mark] :
         {std::tuple("1", u"采購入庫"_s, "V1", "N"), std::tuple("2", u"采購入庫"_s, "V2", "N"),
          std::tuple("3", u"退貨"_s, "V1", "N"), std::tuple("4", u"退貨"_s, "V2", "N"),
          std::tuple("T5", u"退貨"_s, "V1", "N"), std::tuple("6", u"采購入庫"_s, "V1", "Y")}) {
        connection.Execute(
            sql(u"insert into 原料入庫資料 (入庫單號, 類別, 單別, 廠商代號, 審核, 入庫日期, 經辦代號, "
                u"經辦名稱, 廠商單號) values ('{}', '物料', '{}', '{}', '{}', '20250101', 'S07', "
                u"'鄭文龍', 'DN77')",
                QString(number), kind, QString(vendor), QString(mark)));
        connection.Execute(
            sql(u"insert into 原料入庫明細 (入庫單號, 序, 採購單號, 原料代號, 原料名稱, 數量, 單價) "
                u"values ('{}', 1, '250101', 'IN1', '油墨', '5', '77')",
                QString(number)));
    }
    EXPECT_EQ(plant.rowsOf(receiptBrowseStatement(plant.session).text()), QStringList({u"1"_s, u"6"_s}));
    EXPECT_TRUE(findSentBack(plant.session, connection, u"3"_s));
    for (const auto& hidden : {u"1"_s, u"4"_s, u"T5"_s})
        EXPECT_FALSE(findSentBack(plant.session, connection, hidden));
    struct Case {
        int option;
        QString text;
        bool unapproved;
        QString found; ///< numbers, the latest first
    };
    const std::vector<Case> cases{
        {0, {}, false, u"6,1"_s},   {0, {}, true, u"1"_s},      {0, u"6"_s, false, u"6"_s},
        {1, u"01"_s, true, u"1"_s}, {1, u"02"_s, true, {}},     {2, u"N1"_s, true, u"1"_s},
        {2, u"墨"_s, true, u"1"_s}, {3, u"V"_s, true, u"1"_s},  {3, u"1"_s, true, {}},
        {4, u"07"_s, true, u"1"_s}, {4, u"文"_s, true, u"1"_s}, {5, u"DN"_s, true, u"1"_s},
        {5, u"N7"_s, true, {}},     {6, u"7"_s, false, u"1"_s}, {6, u"14"_s, false, {}}};
    for (const Case& row : cases) {
        // The last one does not look at the dates.
        const QString from = row.option == 6 ? u"20250201"_s : u"20250101"_s;
        const SearchInput input{
            row.option, row.text, from, u"20250131"_s, {{u"chk查詢審單"_s, row.unapproved}}};
        for (const bool canSeePrice : {true, false}) {
            QStringList numbers;
            for (const QString& line : plant.rowsOf(
                     receiptSearchStatement(plant.session, input, canSeePrice, u"20250115"_s).text())) {
                numbers << line.section(u'|', 0, 0);
                EXPECT_EQ(line.contains(u"|77|"), canSeePrice);
            }
            EXPECT_EQ(numbers.join(u','), row.found) << row.option << row.text.toStdString();
        }
    }
}

} // namespace
} // namespace liaowu
