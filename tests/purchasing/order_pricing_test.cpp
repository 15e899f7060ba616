#include "purchasing/order_plant.h"
#include "purchasing/order_pricing.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

const FormulaTable formulas{
    {u""_s, u""_s, u"pcs"_s, u"㎡"_s, u"長*寬*單價*數量/10000"_s, u"1"_s, u"紙板"_s},
    {u"CM"_s, u"cm"_s, u"pcs"_s, u"㎡"_s, u"長*寬*單價*數量/5000"_s, u"2"_s, u"紙板"_s},
    {u""_s, u""_s, u"pcs"_s, u"kg"_s, u"長 * 寬 * 基重 * 單價 * 數量 / 10000000"_s, u"3"_s, u"紙板"_s},
    {u""_s, u""_s, u"pcs"_s, u"令"_s, u"單價*數量/(長-寬)"_s, u"4"_s, u"紙板"_s},
    {u""_s, u""_s, u"pcs"_s, u"桶"_s, u"長^2"_s, u"5"_s, u"紙板"_s},
    {u""_s, u""_s, u"kg"_s, u"㎡"_s, u"數量"_s, u"6"_s, u"紙板"_s}};

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
    // Size, quantity, price, its unit, item, stock unit, family; amount and the text of the formula.
    const auto cases =
        casesOf<9>({u"120*90|100|3.25|㎡|K200|pcs|紙板|351|計價公式: 120*90*3.25*100/10000",
                    u"120 CM*90cm|100|3.25|㎡|K200|pcs|紙板|702|計價公式: 120*90*3.25*100/5000",
                    u"120*90CM|100|3.25|㎡|K200|pcs|紙板|325|無計價公式以單價*數量計算 100*3.25",
                    u"|||㎡|K200|pcs|紙板|0|無計價公式以單價*數量計算 0*0",
                    u"120*90|100|3| KG |K200|pcs|紙板|64.8|計價公式: 120*90*200*3*100/10000000",
                    u"120*90|100|3|kg|白卡|pcs|紙板|0|計價公式: 120*90*0*3*100/10000000",
                    u"120*90|100|3|kg|2牛30|pcs|紙板|74.52|計價公式: 120*90*230*3*100/10000000",
                    u"120*90|10|3|桶|K200|pcs|紙板|30|無計價公式以單價*數量計算 10*3",
                    u"120*90|10|3|㎡|K200|張|紙板|30|無計價公式以單價*數量計算 10*3",
                    u"120*90|10|3|㎡|K200| Kg |紙板|10|計價公式: 10",
                    u"120*90|10|3|㎡|K200|pcs|物料|30|無計價公式以單價*數量計算 10*3",
                    u"1*1|-1|100.5|㎡|K200|pcs|紙板|-0.01|計價公式: 1*1*100.5*-1/10000",
                    u"0.123456*1|1|1000000|㎡|K200|pcs|紙板|12.35|計價公式: 0.12346*1*1000000*1/10000",
                    u"50*1|1|1|㎡|K200|pcs|紙板|0.01|計價公式: 50*1*1*1/10000",
                    u"|1|1.005|㎡|K200|pcs|紙板|1.01|無計價公式以單價*數量計算 1*1.005",
                    u"|-1|1.005|㎡|K200|pcs|紙板|-1.01|無計價公式以單價*數量計算 -1*1.005",
                    u"|3|0.335|㎡|K200|pcs|紙板|1.01|無計價公式以單價*數量計算 3*0.335"});
    CEval evaluator;
    for (const auto& [size, quantity, price, unit, name, stockUnit, category, amount, text] : cases) {
        OrderLine line = sized(size, quantity, price, unit, name);
        recalculateLine(line, {formulas, evaluator, category, stockUnit, true});
        EXPECT_EQ(QStringList({line.小計, line.原小計, line.計價公式, line.小紙數, line.規格}),
                  QStringList({amount, amount, text, numberText(2 * val(quantity)), size}));
    }
}

TEST(OrderPricing, WithoutTheRightTheHiddenPriceCounts) {
    OrderLine line = sized(u""_s, u"4"_s, u"2.5"_s, u"pcs"_s);
    line.單價 = MaskedMoney;
    CEval evaluator;
    recalculateLine(line, {formulas, evaluator, u"紙板"_s, u"pcs"_s, false});
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
    EXPECT_THROW(recalculateLine(line, {formulas, evaluator, u"紙板"_s, u"pcs"_s, true}), FormulaError);
    EXPECT_EQ(QStringList({line.小計, line.原小計, line.小紙數, line.計價公式}),
              QStringList({u"77"_s, u"77"_s, u"5"_s, u"計價公式: 2*4/(90-90)"_s}));
}

TEST(OrderPricing, TheTotalAddsRoundedAmounts) {
    const auto total = [](const QStringList& amounts) {
        OrderLines lines;
        for (const QString& amount : amounts)
            lines.emplace_back().小計 = amount;
        return numberText(orderTotal(lines, true));
    };
    for (const auto& [amounts, sum] : casesOf<2>({u"|0", u"0.1 0.2|0.3", u"1,234 x -1 |0", u"1.005 2|3.01"}))
        EXPECT_EQ(total(amounts.split(u' ')), sum) << amounts;
    EXPECT_EQ(total(QStringList(1000, u"0.01"_s)), u"10"_s);
}

TEST(OrderPricing, SheetsComeFromTheFirstNumbers) {
    // Size and cut; how many sheets, and whether the cut told.
    const auto cases =
        casesOf<4>({u"120*90|40*30|3|yes", u"120*90|41*30|2|yes", u"30*20|40*30|1|yes", u"120*90||120|no",
                    u"120*90|0.5|120|yes", u"120*90|*40|120|no", u"寬120|40|1|yes", u"||1|no",
                    u"99.9*1|33.3*1|3|yes", u"120.5.5*1|2|60|yes", u"120CM|40CM|3|yes", u"120|0|120|no"});
    for (const auto& [size, cut, sheets, sure] : cases) {
        OrderLine line = sized(size, u"10"_s, u"1"_s, u"pcs"_s);
        line.剖切尺寸 = cut;
        line.小計 = u"77"_s;
        EXPECT_EQ(updateSheetCount(line), sure == u"yes") << size << " / " << cut;
        EXPECT_EQ(line.寬剖, sheets) << size << " / " << cut;
        EXPECT_EQ(line.小紙數, numberText(10 * val(sheets)));
        EXPECT_EQ(line.小計, u"77"_s) << "sheets do not change the amount";
    }
}

TEST(OrderPricing, AnEditedQuantityMayCloseOrOpenAReceivedLine) {
    // Quantity, received, open and 送清 before; open and 送清 afterwards.
    const auto cases =
        casesOf<5>({u"10|4|8|N|6 N", u"4|4|8|N|0 Y", u"3|4|8|N|-1 Y", u"5|4|0|Y|1 N", u"5|4|-1|Y|1 N",
                    u"0|0|8|N|0 N", u"9|4|6|Y|5 Y", u"2|4|-1|N|-2 N", u"5||||5 ", u"0.3|0.1|1|N|0.2 N"});
    for (const auto& [quantity, received, openBefore, mark, after] : cases) {
        OrderLine line;
        line.數量 = quantity;
        line.已入庫數 = received;
        line.未交數 = openBefore;
        line.送清 = mark;
        updateOpenQuantity(line);
        EXPECT_EQ(line.未交數 + u' ' + line.送清, after) << quantity << " of " << received;
    }
}

TEST(OrderPricing, AnItemIsFoundOnlyWhenItIsTheOnlyOne) {
    OrderPlant plant;
    plant.run(
        {u"insert into 物料資料 (物料代號,物料名稱) values "
         u"('X1','同名'),('X2','同名'),('Y1','M1'),('A''1','撇')",
         u"insert into 紙品資料 (紙品代號,紙品名稱,規格,單重,單位) values ('S1','白板','1*1','2.5','kg')"});
    Connection connection(plant.pool, plant.target);
    const auto cases = casesOf<3>({u"物料|M2|M2", u"物料|m2 |M2", u"物料|膠水|M2", u"物料|同名|", u"物料|M1|",
                                   u"物料||", u"物料|M%|", u"物料|A'1|A'1", u"紙板|K200|", u"紙板|B2|B2",
                                   u"凸版|P1|P1", u"紙品|S1|S1", u"鐵板|B1|", u"物料|B1|"});
    for (const auto& [family, wanted, found] : cases) {
        const auto item = findItem(connection, family, wanted);
        EXPECT_EQ(item ? item->code : QString(), found) << family << ' ' << wanted;
    }
    EXPECT_EQ(findItem(connection, u"紙品"_s, u"S1"_s)->單重, u"2.5"_s);
    const auto ink = findItem(connection, u"物料"_s, u"M2"_s);
    EXPECT_EQ(QStringList({ink->code, ink->name, ink->規格, ink->庫存, ink->進料單位, ink->進價, ink->幣別,
                           ink->單重, ink->安全庫存, ink->單位})
                  .join(u'|'),
              u"M2|膠水|袋|0|桶|4|美金|0||kg"_s);
}

TEST(OrderPricing, APriceComesFromTheVendorsHistoryElseFromTheMaster) {
    OrderPlant plant;
    plant.run({u"insert into 歷史單價記錄 (類別,貨品代號,添加日期,單價,幣別,廠商代號) values "
               u"('物料','M1','20240101','8','台幣','V1'),('物料','M1','20240601','9','美金','V1'),"
               u"('物料','M1','20241201','1','台幣','V2'),('物料','M2','20240101','0','台幣','V1'),"
               u"('物料','MX','20240101','3','台幣','V1')"});
    Connection connection(plant.pool, plant.target);
    const PriceFound master{4, u"美金"_s};
    // Vendor, item and date; the price in the base currency, a dollar being 30 of it and 31 from the new year on.
    const auto cases =
        casesOf<4>({u"V1|M1|20250201|279", u"V1|M1|20250101|270", u"V2|M1|20250201|1", u"V1|M2|20250201|124",
                    u"V3|M1|20250201|124", u"V1|M%|20250201|124", u"V_|MX|20250201|124", u"|M1|20230101|4"});
    for (const auto& [vendor, code, date, price] : cases)
        EXPECT_EQ(priceOfNewLine(connection, vendor, code, master, u"台幣"_s, date), price.toDouble())
            << vendor << ' ' << code << ' ' << date;
    EXPECT_EQ(priceOfNewLine(connection, u"V1"_s, u"沒有"_s, {}, u"美金"_s, u"20250201"_s), 0);
}
