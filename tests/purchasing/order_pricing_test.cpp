#include "purchasing/order_plant.h"
#include "purchasing/order_pricing.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

const FormulaTable& formulas() {
    static const FormulaTable table{
        {u""_s, u""_s, u"pcs"_s, u"㎡"_s, u"長*寬*單價*數量/10000"_s, u"1"_s, u"紙板"_s},
        {u"CM"_s, u"cm"_s, u"pcs"_s, u"㎡"_s, u"長*寬*單價*數量/5000"_s, u"2"_s, u"紙板"_s},
        {u""_s, u""_s, u"pcs"_s, u"kg"_s, u"長 * 寬 * 基重 * 單價 * 數量 / 10000000"_s, u"3"_s, u"紙板"_s},
        {u""_s, u""_s, u"pcs"_s, u"令"_s, u"單價*數量/(長-寬)"_s, u"4"_s, u"紙板"_s},
        {u""_s, u""_s, u"pcs"_s, u"桶"_s, u"長^2"_s, u"5"_s, u"紙板"_s},
        {u""_s, u""_s, u"kg"_s, u"㎡"_s, u"數量"_s, u"6"_s, u"紙板"_s}};
    return table;
}

OrderLine sized(const QString& size, const QString& quantity, const QString& price, const QString& unit,
                const QString& name = u"K200"_s) {
    OrderLine line;
    line.原料名稱 = name;
    line.規格 = size;
    line.數量 = quantity;
    line.單價 = line.原單價 = price;
    line.單位 = unit;
    line.寬剖 = u"2"_s;
    return line;
}

} // namespace

TEST(OrderPricing, ALineIsPricedByTheFormulaOfItsUnits) {
    struct Case {
        OrderLine line;
        QString amount, text;
        QString stockUnit = QStringLiteral("pcs"), category = QStringLiteral("紙板");
    };
    const QString none = u"無計價公式以單價*數量計算 "_s;
    const QString by = u"計價公式: "_s;
    const Case cases[] = {
        {sized(u"120*90"_s, u"100"_s, u"3.25"_s, u"㎡"_s), u"351"_s, by + u"120*90*3.25*100/10000"_s},
        {sized(u"120 CM*90cm"_s, u"100"_s, u"3.25"_s, u"㎡"_s), u"702"_s, by + u"120*90*3.25*100/5000"_s},
        {sized(u"120*90CM"_s, u"100"_s, u"3.25"_s, u"㎡"_s), u"325"_s, none + u"100*3.25"_s},
        {sized(u"寬31長*9"_s, u"10"_s, u"2"_s, u"㎡"_s), u"20"_s, none + u"10*2"_s},
        {sized(u"120x90*5"_s, u"1"_s, u"1"_s, u"㎡"_s), u"1"_s, none + u"1*1"_s},
        {sized(u"120"_s, u"4"_s, u"2.5"_s, u"㎡"_s), u"10"_s, none + u"4*2.5"_s},
        {sized(u""_s, u""_s, u""_s, u"㎡"_s), u"0"_s, none + u"0*0"_s},
        {sized(u"120*90"_s, u"100"_s, u"3"_s, u" KG "_s), u"64.8"_s, by + u"120*90*200*3*100/10000000"_s},
        {sized(u"120*90"_s, u"100"_s, u"3"_s, u"kg"_s, u"白卡"_s), u"0"_s, by + u"120*90*0*3*100/10000000"_s},
        {sized(u"120*90"_s, u"100"_s, u"3"_s, u"kg"_s, u"2牛30"_s), u"74.52"_s,
         by + u"120*90*230*3*100/10000000"_s},
        {sized(u"120*90"_s, u"10"_s, u"3"_s, u"桶"_s), u"30"_s, none + u"10*3"_s},
        {sized(u"120*90"_s, u"10"_s, u"3"_s, u"㎡"_s), u"30"_s, none + u"10*3"_s, u"張"_s},
        {sized(u"120*90"_s, u"10"_s, u"3"_s, u"㎡"_s), u"10"_s, by + u"10"_s, u" Kg "_s},
        {sized(u"120*90"_s, u"10"_s, u"3"_s, u"㎡"_s), u"30"_s, none + u"10*3"_s, u"pcs"_s, u"物料"_s},
        {sized(u"1*1"_s, u"-1"_s, u"100.5"_s, u"㎡"_s), u"-0.01"_s, by + u"1*1*100.5*-1/10000"_s},
        {sized(u"0.123456*1"_s, u"1"_s, u"1000000"_s, u"㎡"_s), u"12.35"_s,
         by + u"0.12346*1*1000000*1/10000"_s},
        {sized(u"50*1"_s, u"1"_s, u"1"_s, u"㎡"_s), u"0.01"_s, by + u"50*1*1*1/10000"_s},
        {sized(u""_s, u"1"_s, u"1.005"_s, u"㎡"_s), u"1.01"_s, none + u"1*1.005"_s},
        {sized(u""_s, u"-1"_s, u"1.005"_s, u"㎡"_s), u"-1.01"_s, none + u"-1*1.005"_s},
        {sized(u""_s, u"3"_s, u"0.335"_s, u"㎡"_s), u"1.01"_s, none + u"3*0.335"_s}};
    CEval evaluator;
    for (const Case& c : cases) {
        OrderLine line = c.line;
        recalculateLine(line, {formulas(), evaluator, c.category, c.stockUnit, true});
        const std::string what = (c.line.規格 + u' ' + c.line.數量 + u' ' + c.line.單位).toStdString();
        EXPECT_EQ(line.小計, c.amount) << what;
        EXPECT_EQ(line.原小計, c.amount) << what;
        EXPECT_EQ(line.計價公式, c.text) << what;
        EXPECT_EQ(line.小紙數, numberText(2 * val(c.line.數量))) << what;
        EXPECT_EQ(line.規格, c.line.規格) << "the size stays as typed";
    }
}

TEST(OrderPricing, WithoutTheRightTheHiddenPriceCounts) {
    OrderLine line = sized(u""_s, u"4"_s, u"2.5"_s, u"pcs"_s);
    line.單價 = MaskedMoney;
    CEval evaluator;
    recalculateLine(line, {formulas(), evaluator, u"紙板"_s, u"pcs"_s, false});
    EXPECT_EQ(line.原小計, u"10"_s);
    EXPECT_EQ(line.小計, MaskedMoney);
    EXPECT_EQ(line.單價, MaskedMoney);
    putPrice(line, 7.25, false);
    EXPECT_EQ(line.單價 + line.原單價, u"******7.25"_s);
    EXPECT_EQ(priceOf(line, false), 7.25);
    EXPECT_EQ(orderTotal({line, line}, false), 20);
}

TEST(OrderPricing, AFormulaThatFailsChangesNothingButItsText) {
    OrderLine line = sized(u"90*90"_s, u"4"_s, u"2"_s, u"令"_s);
    line.小計 = line.原小計 = u"77"_s;
    line.小紙數 = u"5"_s;
    CEval evaluator;
    EXPECT_THROW(recalculateLine(line, {formulas(), evaluator, u"紙板"_s, u"pcs"_s, true}), FormulaError);
    EXPECT_EQ(QStringList({line.小計, line.原小計, line.小紙數, line.計價公式}),
              QStringList({u"77"_s, u"77"_s, u"5"_s, u"計價公式: 2*4/(90-90)"_s}));
}

TEST(OrderPricing, TheTotalAddsRoundedAmounts) {
    const auto total = [](const QStringList& amounts) {
        OrderLines lines;
        for (const QString& amount : amounts) {
            OrderLine line;
            line.小計 = amount;
            lines.push_back(line);
        }
        return numberText(orderTotal(lines, true));
    };
    EXPECT_EQ(total({}), u"0"_s);
    EXPECT_EQ(total({u"0.1"_s, u"0.2"_s}), u"0.3"_s);
    EXPECT_EQ(total({u"1,234"_s, u"x"_s, u"-1"_s, u""_s}), u"0"_s);
    EXPECT_EQ(total({u"1.005"_s, u"2"_s}), u"3.01"_s);
    EXPECT_EQ(total(QStringList(1000, u"0.01"_s)), u"10"_s);
}

TEST(OrderPricing, SheetsComeFromTheFirstNumbers) {
    struct Case {
        QString size, cut, sheets;
        bool sure;
    };
    const Case cases[] = {{u"120*90"_s, u"40*30"_s, u"3"_s, true},  {u"120*90"_s, u"41*30"_s, u"2"_s, true},
                          {u"30*20"_s, u"40*30"_s, u"1"_s, true},   {u"120*90"_s, u""_s, u"120"_s, false},
                          {u"120*90"_s, u"0.5"_s, u"120"_s, true},  {u"120*90"_s, u"*40"_s, u"120"_s, false},
                          {u"寬120"_s, u"40"_s, u"1"_s, true},      {u""_s, u""_s, u"1"_s, false},
                          {u"99.9*1"_s, u"33.3*1"_s, u"3"_s, true}, {u"120.5.5*1"_s, u"2"_s, u"60"_s, true},
                          {u"120CM"_s, u"40CM"_s, u"3"_s, true},    {u"120"_s, u"0"_s, u"120"_s, false}};
    for (const Case& c : cases) {
        OrderLine line = sized(c.size, u"10"_s, u"1"_s, u"pcs"_s);
        line.剖切尺寸 = c.cut;
        line.小計 = u"77"_s;
        EXPECT_EQ(updateSheetCount(line), c.sure) << c.size.toStdString() << " / " << c.cut.toStdString();
        EXPECT_EQ(line.寬剖, c.sheets) << c.size.toStdString() << " / " << c.cut.toStdString();
        EXPECT_EQ(line.小紙數, numberText(10 * val(c.sheets)));
        EXPECT_EQ(line.小計, u"77"_s) << "sheets do not change the amount";
    }
}

TEST(OrderPricing, AnEditedQuantityMayCloseOrOpenAReceivedLine) {
    struct Case {
        QString quantity, received, openBefore, mark, open, markAfter;
    };
    const Case cases[] = {{u"10"_s, u"4"_s, u"8"_s, u"N"_s, u"6"_s, u"N"_s},
                          {u"4"_s, u"4"_s, u"8"_s, u"N"_s, u"0"_s, u"Y"_s},
                          {u"3"_s, u"4"_s, u"8"_s, u"N"_s, u"-1"_s, u"Y"_s},
                          {u"5"_s, u"4"_s, u"0"_s, u"Y"_s, u"1"_s, u"N"_s},
                          {u"5"_s, u"4"_s, u"-1"_s, u"Y"_s, u"1"_s, u"N"_s},
                          {u"0"_s, u"0"_s, u"8"_s, u"N"_s, u"0"_s, u"N"_s},
                          {u"9"_s, u"4"_s, u"6"_s, u"Y"_s, u"5"_s, u"Y"_s},
                          {u"2"_s, u"4"_s, u"-1"_s, u"N"_s, u"-2"_s, u"N"_s},
                          {u"5"_s, u""_s, u""_s, u""_s, u"5"_s, u""_s},
                          {u"0.3"_s, u"0.1"_s, u"1"_s, u"N"_s, u"0.2"_s, u"N"_s}};
    for (const Case& c : cases) {
        OrderLine line;
        line.數量 = c.quantity;
        line.已入庫數 = c.received;
        line.未交數 = c.openBefore;
        line.送清 = c.mark;
        updateOpenQuantity(line);
        EXPECT_EQ(line.未交數 + u' ' + line.送清, c.open + u' ' + c.markAfter)
            << c.quantity.toStdString() << " of " << c.received.toStdString();
    }
}

TEST(OrderPricing, AnItemIsFoundOnlyWhenItIsTheOnlyOne) {
    OrderPlant plant;
    plant.run(
        {u"insert into 物料資料 (物料代號,物料名稱) values "
         u"('X1','同名'),('X2','同名'),('Y1','M1'),('A''1','撇')",
         u"insert into 紙品資料 (紙品代號,紙品名稱,規格,單重,單位) values ('S1','白板','1*1','2.5','kg')"});
    Connection connection(plant.pool, plant.target);
    struct Case {
        QString family, wanted, found;
    };
    const Case cases[] = {
        {u"物料"_s, u"M2"_s, u"M2"_s}, {u"物料"_s, u"m2 "_s, u"M2"_s},  {u"物料"_s, u"膠水"_s, u"M2"_s},
        {u"物料"_s, u"同名"_s, u""_s}, {u"物料"_s, u"M1"_s, u""_s},     {u"物料"_s, u""_s, u""_s},
        {u"物料"_s, u"M%"_s, u""_s},   {u"物料"_s, u"A'1"_s, u"A'1"_s}, {u"紙板"_s, u"K200"_s, u""_s},
        {u"紙板"_s, u"B2"_s, u"B2"_s}, {u"凸版"_s, u"P1"_s, u"P1"_s},   {u"紙品"_s, u"S1"_s, u"S1"_s},
        {u"鐵板"_s, u"B1"_s, u""_s},   {u"物料"_s, u"B1"_s, u""_s}};
    for (const Case& c : cases) {
        const auto item = findItem(connection, c.family, c.wanted);
        EXPECT_EQ(item ? item->code : QString(), c.found)
            << c.family.toStdString() << ' ' << c.wanted.toStdString();
    }
    const auto paper = findItem(connection, u"紙品"_s, u"S1"_s);
    EXPECT_EQ(paper->單重, u"2.5"_s);
    const auto ink = findItem(connection, u"物料"_s, u"M2"_s);
    EXPECT_EQ(QStringList({ink->code, ink->name, ink->規格, ink->庫存, ink->進料單位, ink->進價, ink->幣別,
                           ink->單重, ink->安全庫存, ink->單位}),
              QStringList(
                  {u"M2"_s, u"膠水"_s, u"袋"_s, u"0"_s, u"桶"_s, u"4"_s, u"美金"_s, u"0"_s, u""_s, u"kg"_s}));
}

TEST(OrderPricing, APriceComesFromTheVendorsHistoryElseFromTheMaster) {
    OrderPlant plant;
    plant.run({u"insert into 歷史單價記錄 (類別,貨品代號,添加日期,單價,幣別,廠商代號) values "
               u"('物料','M1','20240101','8','台幣','V1'),"
               u"('物料','M1','20240601','9','美金','V1'),('物料','M1','20241201','1','台幣','V2'),('物料','"
               u"M2','20240101','0','台幣','V1'),"
               u"('物料','MX','20240101','3','台幣','V1')"});
    Connection connection(plant.pool, plant.target);
    struct Case {
        QString vendor, code, date;
        double price;
    };
    const PriceFound master{4, u"美金"_s};
    const Case cases[] = {
        {u"V1"_s, u"M1"_s, u"20250201"_s, 9 * 31}, {u"V1"_s, u"M1"_s, u"20250101"_s, 9 * 30},
        {u"V2"_s, u"M1"_s, u"20250201"_s, 1},      {u"V1"_s, u"M2"_s, u"20250201"_s, 4 * 31},
        {u"V3"_s, u"M1"_s, u"20250201"_s, 4 * 31}, {u"V1"_s, u"M%"_s, u"20250201"_s, 4 * 31},
        {u"V_"_s, u"MX"_s, u"20250201"_s, 4 * 31}, {u""_s, u"M1"_s, u"20230101"_s, 4}};
    for (const Case& c : cases)
        EXPECT_EQ(priceOfNewLine(connection, c.vendor, c.code, master, u"台幣"_s, c.date), c.price)
            << c.vendor.toStdString() << ' ' << c.code.toStdString() << ' ' << c.date.toStdString();
    EXPECT_EQ(priceOfNewLine(connection, u"V1"_s, u"沒有"_s, {}, u"美金"_s, u"20250201"_s), 0);
}
