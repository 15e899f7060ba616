#include "purchasing/order_pricing.h"
#include "common/currency.h"
#include "common/items.h"
#include "common/text_values.h"
#include "data/recordset.h"
#include <cmath>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

/// Digits and points from the start of the text; 0 when there is none.
double leadingNumber(const QString& text) {
    qsizetype end = 0;
    while (end < text.size() && ((text[end] >= u'0' && text[end] <= u'9') || text[end] == u'.'))
        ++end;
    return val(text.left(end));
}

double money(double value) {
    return val(format(value, u"0.00"));
}

} // namespace

std::optional<ItemRow> findItem(Connection& connection, const QString& word, const QString& codeOrName) {
    const ItemFamily* family = itemFamily(word);
    if (!family || codeOrName.isEmpty()) return std::nullopt;
    const QString t = family->table;
    const SqlText weight = word == u"紙品" ? sql(u"[{}].單重", t) : sql(u"'0' AS 單重");
    const Recordset row = select(
        connection,
        sql(u"select [{}].[{}], [{}].[{}], [{}].規格, [{}].庫存, [{}].進料單位, [{}].進價, [{}].幣別,", t,
            family->code, t, family->name, t, t, t, t, t) +
            weight +
            sql(u",安全庫存,單位  from  [{}] where [{}].[{}] = '{}' or [{}].[{}] = '{}' order by [{}].[{}]",
                t, t, family->code, codeOrName, t, family->name, codeOrName, t, family->name));
    if (row.RecordCount() != 1) return std::nullopt;
    return ItemRow{row.text(0), row.text(1), row.text(2), row.text(3), row.text(4),
                   row.text(5), row.text(6), row.text(7), row.text(8), row.text(9)};
}

double priceOf(const OrderLine& line, bool canSeePrice) {
    return val(canSeePrice ? line.單價 : line.原單價);
}

void putPrice(OrderLine& line, double price, bool canSeePrice) {
    line.原單價 = numberText(price);
    line.單價 = canSeePrice ? line.原單價 : MaskedMoney;
}

void recalculateLine(OrderLine& line, const PricingContext& context) {
    const double quantity = val(line.數量);
    const double price = priceOf(line, context.canSeePrice);
    const SizeText size = splitSize(line.規格);
    const auto formula =
        selectFormula(context.formulas, {size.first.unit, size.second.unit, context.stockUnit.trimmed(),
                                         line.單位.trimmed(), context.category});
    double amount = 0;
    if (!formula) {
        line.計價公式 = u"無計價公式以單價*數量計算 "_s + numberText(quantity) + u'*' + numberText(price);
        amount = money(quantity * price);
    } else {
        const FormulaValues values{size.first.number, size.second.number, quantity,
                                   splitNumberAndUnit(line.原料名稱).number, price};
        const QString substituted = substituteFormula(*formula, values);
        line.計價公式 = u"計價公式: "_s + substituted;
        amount = money(context.evaluator.Evaluate(substituted));
    }
    line.原小計 = numberText(amount);
    line.小計 = context.canSeePrice ? line.原小計 : MaskedMoney;
    line.小紙數 = numberText(val(line.寬剖) * quantity);
}

double orderTotal(const OrderLines& lines, bool canSeePrice) {
    double sum = 0;
    for (const OrderLine& line : lines)
        sum += val(canSeePrice ? line.小計 : line.原小計);
    return money(sum);
}

bool updateSheetCount(OrderLine& line) {
    const double large = leadingNumber(line.規格);
    const double cut = leadingNumber(line.剖切尺寸);
    const double count = std::max(1.0, std::floor(large / std::max(1.0, cut)));
    line.寬剖 = numberText(count);
    line.小紙數 = numberText(count * val(line.數量));
    return cut > 0;
}

double openQuantity(const OrderLine& line) {
    return settled(val(line.數量) - val(line.已入庫數));
}

void updateOpenQuantity(OrderLine& line) {
    const double received = val(line.已入庫數);
    const double before = val(line.未交數);
    const double open = openQuantity(line);
    line.未交數 = numberText(open);
    if (received > 0 && (before > 0) != (open > 0)) line.送清 = open > 0 ? u"N"_s : u"Y"_s;
}

PriceFound latestHistoryPrice(Connection& connection, const QString& vendor, const QString& code) {
    const Recordset row =
        select(connection, sql(u"select top 1 類別,貨品代號,添加日期,單價,幣別,廠商代號,廠商簡稱 from "
                               u"歷史單價記錄 where 廠商代號 = '{}'and "
                               u"貨品代號 = '{}' order by 添加日期  desc ",
                               vendor, code));
    if (row.RecordCount() == 0) return {};
    return {val(row.text(u"單價")), row.text(u"幣別").trimmed()};
}

double priceOfNewLine(Connection& connection, const QString& vendor, const QString& code,
                      const PriceFound& master, const QString& currency, const QString& date) {
    PriceFound found = latestHistoryPrice(connection, vendor, code);
    if (found.price <= 0) found = master;
    return convertCurrencyAt(connection, found.currency, found.price, currency, date);
}

} // namespace liaowu
