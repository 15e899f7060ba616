#include "warehouse/receipt_pricing.h"
#include "common/rights.h"
#include "common/text_values.h"
#include <algorithm>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

/// The formula of a line with its values in place; nothing when quantity × price is all there is.
std::optional<QString> substitutedFormula(const ReceiptLine& line, double quantity, double price,
                                          const ReceiptPricing& context) {
    FormulaValues values{0, 0, quantity, 0, price};
    if (context.category == u"物料") return substituteFormula(u"單價*數量"_s, values);
    const SizeText size = splitSize(line.規格);
    const auto formula =
        selectFormula(context.formulas, {size.first.unit, size.second.unit, context.stockUnit.trimmed(),
                                         line.單位.trimmed(), context.category});
    if (!formula) return std::nullopt;
    values.長 = size.first.number;
    values.寬 = std::max(1.0, size.second.number);
    values.基重 = splitNumberAndUnit(line.原料名稱).number;
    if (context.category == u"紙板") values.基重 = vendorWeight(values.基重, context.weights);
    return substituteFormula(*formula, values, {u"0.00000", u"0.0000"});
}

} // namespace

double vendorWeight(double weight, const std::vector<double>& weights) {
    const auto found =
        std::find_if(weights.begin(), weights.end(), [&](double made) { return made >= weight; });
    return found == weights.end() ? weight : *found;
}

void updateStockQuantity(ReceiptLine& line) {
    line.入庫數量 = numberText(settled(val(line.走紙才) * val(line.數量)));
}

void settleStockQuantity(ReceiptLine& line) {
    if (val(line.走紙才) == 0) line.走紙才 = u"1"_s;
    updateStockQuantity(line);
}

void recalculateLine(ReceiptLine& line, const ReceiptPricing& context) {
    const double quantity = val(line.數量);
    const double price = val(context.canSeePrice ? line.單價 : line.原單價);
    double amount = quantity * price;
    if (const auto formula = substitutedFormula(line, quantity, price, context)) {
        line.計價公式 = u"計價公式: "_s + *formula;
        amount = context.evaluator.Evaluate(*formula);
    } else {
        line.計價公式 = u"無計價公式以單價*數量計算 "_s + numberText(quantity) + u'*' + numberText(price);
    }
    line.原小計 = format(amount, u"0.00");
    line.小計 = context.canSeePrice ? line.原小計 : MaskedMoney;
}

double receiptTotal(const ReceiptLines& lines, bool canSeePrice) {
    double sum = 0;
    for (const ReceiptLine& line : lines)
        sum += val(canSeePrice ? line.小計 : line.原小計);
    return val(format(sum, u"0.00"));
}

void putPrice(ReceiptLine& line, const QString& price, bool canSeePrice) {
    line.原單價 = price;
    line.單價 = canSeePrice ? price : MaskedMoney;
}

} // namespace liaowu
