#pragma once
#include "formula/evaluator.h"
#include "formula/formula_definitions.h"
#include "purchasing/order_lines.h"

namespace liaowu {

class Connection;

/// The one row that an item look-up gives: 進價 in 幣別.
struct ItemRow {
    QString code, name, 規格, 庫存, 進料單位, 進價, 幣別, 單重, 安全庫存, 單位;
};

/// Looks an item of a family up by exact code or name. Nothing unless exactly one row matches.
std::optional<ItemRow> findItem(Connection& connection, const QString& family, const QString& codeOrName);

/// What a line recalculation needs besides the line.
struct PricingContext {
    const FormulaTable& formulas;
    CEval& evaluator;
    QString category;  ///< 類別 of the document
    QString stockUnit; ///< 單位 of the item master
    bool canSeePrice = false;
};

/// Works out amount, formula text and sheet count of a line. Without a formula the amount is quantity × price; either is
/// rounded to 2 decimals, half away from zero. Throws `FormulaError` when the formula cannot be evaluated; its text
/// then stands in 計價公式 and nothing else has changed.
void recalculateLine(OrderLine& line, const PricingContext& context);

/// Sum of the line amounts, rounded to 2 decimals, in the document's currency.
double orderTotal(const OrderLines& lines, bool canSeePrice);

/// 走紙才 from the first number of 規格 and of 剖切尺寸 (below 1 counts as 1), never below 1; 小紙數 = 走紙才 × 大紙數. Gives false
/// when 剖切尺寸 has no number, so that the result stands on the large size alone.
bool updateSheetCount(OrderLine& line);

/// Quantity ordered less quantity received.
double openQuantity(const OrderLine& line);

/// The quantity was edited: 未交數 follows, and 送清 when the edit crosses zero on a received line.
void updateOpenQuantity(OrderLine& line);

/// A price and the currency it is in.
struct PriceFound {
    double price = 0;
    QString currency;
};
/// The latest price of this vendor for this item in 歷史單價記錄; price 0 without one.
PriceFound latestHistoryPrice(Connection& connection, const QString& vendor, const QString& code);

/// Price of a line that an item comes into: the vendor's latest, else the master's, converted to the document's currency at
/// its date.
double priceOfNewLine(Connection& connection, const QString& vendor, const QString& code,
                      const PriceFound& master, const QString& currency, const QString& date8);

/// Puts a price where the user's right lets it be seen; the hidden column always has it.
void putPrice(OrderLine& line, double price, bool canSeePrice);
/// The real price of a line, whatever is visible.
double priceOf(const OrderLine& line, bool canSeePrice);

} // namespace liaowu
