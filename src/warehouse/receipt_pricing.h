#pragma once
#include "formula/evaluator.h"
#include "formula/formula_definitions.h"
#include "warehouse/receipt_lines.h"

namespace liaowu {

/// What the recalculation of a line needs besides the line.
struct ReceiptPricing {
    const FormulaTable& formulas; ///< by 序
    CEval& evaluator;
    QString category;
    QString stockUnit;                  ///< 單位 of the item master
    const std::vector<double>& weights; ///< the vendor's 浪紙度數, ascending
    bool canSeePrice = false;
};

/// Works out amount and formula text of a line. Materials cost price × quantity, all else goes by the formula that its units
/// choose, or by quantity × price without one; the amount is rounded to 2 decimals. A formula that cannot be evaluated throws
/// `FormulaError` and leaves the amount.
void recalculateLine(ReceiptLine& line, const ReceiptPricing& context);

/// 小紙數 from 走紙才 and 數量.
void updateStockQuantity(ReceiptLine& line);
/// The same for a line that came in or whose 數量 changed; a 走紙才 of 0 becomes 1.
void settleStockQuantity(ReceiptLine& line);

/// The basis weight as the vendor makes it: the first of `weights` that is not below, or itself.
double vendorWeight(double weight, const std::vector<double>& weights);

/// Sum of the line amounts, in the document's currency.
double receiptTotal(const ReceiptLines& lines, bool canSeePrice);

/// Puts a price where the user's right lets it be seen; the hidden column always has it.
void putPrice(ReceiptLine& line, const QString& price, bool canSeePrice);

} // namespace liaowu
