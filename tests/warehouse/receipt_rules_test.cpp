#include "warehouse/receipt_plant.h"
#include "warehouse/receipt_pricing.h"
#include "warehouse/receipt_queries.h"
#include "warehouse/receipt_rules.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

TEST(ReceiptRules, ChecksTheHeaderInItsOrder) {
    // 入庫日期, 入庫單號, 付款年月 and 對帳日期; what is said, and where the focus goes.
    const auto cases = casesOf<5>(
        {u"||||「入庫日期」欄位不允許空白!txt入庫日期", u"20250230||||「入庫日期」日期輸入錯誤!txt入庫日期",
         u"20250228||||「入庫單號」欄位不可為空白!txt入庫單號",
         u"20250228|1|||「付款日期」日期輸入錯誤!txt付款年月",
         u"20250228|1|202513||「付款日期」日期輸入錯誤!txt付款年月",
         u"20250228|1|202512||「對帳月份」日期輸入錯誤!txt對帳日期", u"20250228|1|202512|202501|"});
    for (const auto& [date, number, paid, reconciled, said] : cases) {
        ReceiptHeader header;
        header.入庫日期 = date;
        header.入庫單號 = number;
        header.付款年月 = paid;
        header.對帳日期 = reconciled;
        auto finding = checkReceiptDate(header);
        if (!finding) finding = checkReceiptHeader(header);
        EXPECT_EQ(finding ? finding->text + finding->control : QString(), said);
    }
}

TEST(ReceiptRules, PaymentMonthsFollowTheVendorsTerms) {
    // Payment, closing and days of the vendor, date of the receipt; months of reconciling and paying.
    const auto cases = casesOf<6>(
        {u"現金|25日結帳|60|20250126|202501|202501", u"月結|25日結帳|60|20250125|202501|202503",
         u"月結|25日結帳|30|20250126|202502|202503", u"月結|25日結帳|0|20241231|202501|202501",
         u"月結|月底結帳|30|20250131|202501|202501", u"|||20250131|202501|202501", u"月結||31|壞|壞|202503"});
    for (const auto& [payment, closing, days, date, reconciled, paid] : cases) {
        const PaymentMonths months = paymentMonths({payment, closing, days}, date, u"20250210"_s);
        EXPECT_EQ(months.reconciled + u' ' + months.paid, reconciled + u' ' + paid)
            << payment << closing << days << date;
    }
}

TEST(ReceiptRules, AReturnTakesOneSign) {
    for (const auto& [typed, kind, expected] :
         casesOf<3>({u"5|退貨|-5", u"-5|退貨|-5", u"5|采購入庫|5", u"-5|采購入庫|-5", u"|退貨|"}))
        EXPECT_EQ(signedQuantity(typed, kind), expected);
}

TEST(ReceiptPricing, PricesALineByFamilyUnitsAndVendor) {
    const FormulaTable formulas{
        {u""_s, u""_s, u"PCS"_s, u"㎡"_s, u"長*寬*數量*單價/10000"_s, u"1"_s, u"紙板"_s},
        {u""_s, u""_s, u"PCS"_s, u"KG"_s, u"長*寬*基重/10000000*數量*單價"_s, u"2"_s, u"紙板"_s},
        {u""_s, u""_s, u"PCS"_s, u"壞"_s, u"數量/(1-1)"_s, u"3"_s, u"紙板"_s}};
    const auto cases = casesOf<8>(
        {u"materials|物料|墨|100*50|㎡|3|7.50|計價公式: 2.5*3",
         u"board by area|紙板|K200|120*90|㎡|10|27.00|計價公式: 120*90*10*2.5/10000",
         u"a length alone is one wide|紙板|K200|120*0|㎡|100|3.00|計價公式: 120*1*100*2.5/10000",
         u"the vendor's next weight|紙板|K190|100*100|KG|10|5.25|計價公式: 100*100*210/10000000*10*2.5",
         u"no heavier weight|紙板|K400|100*100|KG|10|10.00|計價公式: 100*100*400/10000000*10*2.5",
         u"no formula|紙板|K200|120*90|張|3|7.50|無計價公式以單價*數量計算 3*2.5",
         u"no size|紙板|K200|1200X800|㎡|3|7.50|無計價公式以單價*數量計算 3*2.5",
         u"sent back|紙板|K200|120*90|㎡|-10|-27.00|計價公式: 120*90*-10*2.5/10000"});
    CEval evaluator;
    const std::vector<double> weights{150, 180, 210, 300};
    for (const auto& [name, category, item, size, unit, quantity, amount, formula] : cases)
        for (const bool canSeePrice : {true, false}) {
            ReceiptLine line;
            line.原料名稱 = item;
            line.規格 = size;
            line.單位 = unit;
            line.數量 = quantity;
            putPrice(line, u"2.5"_s, canSeePrice);
            settleStockQuantity(line);
            recalculateLine(line, {formulas, evaluator, category, u"PCS"_s, weights, canSeePrice});
            EXPECT_EQ(QStringList({line.原小計, line.小計, line.計價公式, line.走紙才, line.入庫數量}),
                      QStringList({amount, canSeePrice ? amount : u"******"_s, formula, u"1"_s, quantity}))
                << name;
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
               u"insert into 採購資料 (採購單號, 類別, 審單, 廠商代號) values "
               u"('P5', '物料', 'N', 'V1'), ('P6', '物料', 'Y', null)",
               u"insert into 採購明細資料 (採購單號, 序, 原料代號, 數量) values "
               u"('P5', 1, 'IN1', '5'), ('P6', 1, 'IN1', '5')"});
    // Order, vendor, family and kind of the receipt; 採購序, 數量, 走紙才 and 入庫單位 of each line that comes.
    const auto cases =
        casesOf<5>({u"P1|V1|物料|采購入庫|1/6/4/KG 2/20/0/KG", u"P2|V1|紙板|采購入庫|1/6/4/PCS 2/20/4/PCS",
                    u"P3|V1|紙品|采購入庫|1/6/4/張", u"P4|V1|凸版|采購入庫|1/6/4/塊 2/20/4/塊",
                    u"P2|V1|紙板|退貨|1/-4/4/PCS", u"P2|V2|紙板|采購入庫|", u"P5|V1|物料|采購入庫|",
                    u"P6|V2|物料|采購入庫|1/5/0/KG"});
    Connection connection(plant.pool, plant.target);
    for (const auto& [order, vendor, category, kind, expected] : cases) {
        QStringList lines;
        for (const ReceiptLine& line : linesOfOrder(connection, order, vendor, category, kind, true))
            lines << QStringList{line.採購序, line.數量, line.走紙才, line.入庫單位}.join(u'/');
        EXPECT_EQ(lines.join(u' '), expected) << order << vendor << kind;
    }
    const ReceiptLines masked = linesOfOrder(connection, u"P1"_s, u"V1"_s, u"物料"_s, u"采購入庫"_s, false);
    EXPECT_EQ(masked.at(0).單價 + masked.at(0).原單價, u"******2"_s);
}

TEST(ReceiptQueries, AnItemIsFoundByItsCodeOrItsOwnName) {
    ReceiptPlant plant;
    plant.run(
        {u"insert into 浪紙資料 (浪紙代號, 浪紙名稱) values ('KMK-2', 'K200'), ('A', 'KMK'), ('B', 'B180')"});
    Connection connection(plant.pool, plant.target);
    for (const auto& [typed, code] :
         casesOf<2>({u"kmk|KMK", u"KMK-2|KMK-2", u"B180|B", u"K200|", u"K2|", u"|"})) {
        const auto item = findReceiptItem(connection, u"紙板"_s, typed);
        EXPECT_EQ(item ? item->code : QString(), code) << typed;
    }
}

TEST(ReceiptQueries, ListsHoldWhatIsAskedFor) {
    ReceiptPlant plant;
    plant.session.category = u"物料"_s;
    plant.session.salesScope = u" And (業務員代號='S1' ) "_s;
    plant.run({u"insert into 廠商資料 (廠商代號, 業務員代號) values ('V1', 'S1'), ('V2', 'S2')"});
    Connection connection(plant.pool, plant.target);
    plant.run(
        {uR"(insert into 原料入庫資料 (入庫單號, 單別, 廠商代號, 審核) values ('1', '采購入庫', 'V1', 'N'),
                   ('2', '采購入庫', 'V2', 'N'), ('3', '退貨', 'V1', 'N'), ('4', '退貨', 'V2', 'N'),
                   ('T5', '退貨', 'V1', 'N'), ('6', '采購入庫', 'V1', 'Y'))",
         u"update 原料入庫資料 set 類別='物料', 入庫日期='20250101', 經辦代號='S07', 經辦名稱='鄭文龍', "
         u"廠商單號='DN77'",
         u"insert into 原料入庫明細 (入庫單號, 序, 採購單號, 原料代號, 原料名稱, 數量, 單價) "
         u"select 入庫單號, 1, '250101', 'IN1', '油墨', '5', '77' from 原料入庫資料"});
    EXPECT_EQ(plant.rowsOf(receiptBrowseStatement(plant.session).text()), QStringList({u"1"_s, u"6"_s}));
    EXPECT_TRUE(findSentBack(plant.session, connection, u"3"_s));
    for (const auto& hidden : {u"1"_s, u"4"_s, u"T5"_s})
        EXPECT_FALSE(findSentBack(plant.session, connection, hidden));
    // Search option and text, whether only unapproved ones; numbers, the latest first.
    const auto cases =
        casesOf<4>({u"0||all|6,1", u"0||open|1", u"0|6|all|6", u"1|01|open|1", u"1|02|open|", u"2|N1|open|1",
                    u"2|墨|open|1", u"3|V|open|1", u"3|1|open|", u"4|07|open|1", u"4|文|open|1",
                    u"5|DN|open|1", u"5|N7|open|", u"6|7|all|1", u"6|14|all|"});
    for (const auto& [option, text, which, found] : cases) {
        // The last one does not look at the dates.
        const QString from = option == u"6" ? u"20250201"_s : u"20250101"_s;
        const SearchInput input{
            option.toInt(), text, from, u"20250131"_s, {{u"chk查詢審單"_s, which == u"open"}}};
        for (const bool canSeePrice : {true, false}) {
            QStringList numbers;
            for (const QString& line : plant.rowsOf(
                     receiptSearchStatement(plant.session, input, canSeePrice, u"20250115"_s).text())) {
                numbers << line.section(u'|', 0, 0);
                EXPECT_EQ(line.contains(u"|77|"), canSeePrice);
            }
            EXPECT_EQ(numbers.join(u','), found) << option << text;
        }
    }
}
