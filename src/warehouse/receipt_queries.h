#pragma once
#include "common/session.h"
#include "frame/search_spec.h"
#include "warehouse/receipt_lines.h"
#include <optional>

namespace liaowu {

class Connection;

/// Numbers of a family's receipts, by 製單時間, 入庫日期, 入庫單號, of vendors within the user's scope.
SqlText receiptBrowseStatement(const Session& session);
/// A document that the receipt screen made with a returning 單別: it is not among the receipts, but can be asked for. Gives
/// its number as stored.
std::optional<QString> findSentBack(const Session& session, Connection& connection, const QString& number);

/// An item by code or name as a line takes it; `stockUnit` is 單位 of the master.
struct ReceiptItem {
    QString code, name, 規格, 庫存, stockUnit;
};
/// The item of the family with this code, or else the one with this name; nothing when several bear it.
std::optional<ReceiptItem> findReceiptItem(Connection& connection, const QString& category,
                                           const QString& codeOrName);

/// 浪紙度數 of a vendor, ascending.
std::vector<double> vendorWeights(Connection& connection, const QString& vendor);

/// All lines of an approved order that are still open, as receipt lines with the quantity still open; for a returning 單別 the
/// lines received, with all of it negative. The vendor must be the order's, or the order has none (not for board).
ReceiptLines linesOfOrder(Connection& connection, const QString& order, const QString& vendor,
                          const QString& category, const QString& kind, bool canSeePrice);
/// 幣別 of an order.
QString currencyOfOrder(Connection& connection, const QString& order);

/// Puts a row of the order line windows into a line; each text is cut to the limit of its column.
void putOrderPick(ReceiptLine& line, const QStringList& row, const QString& kind, bool canSeePrice);
/// Puts an item into a line.
void putItem(ReceiptLine& line, const ReceiptItem& item);

/// What was ordered of an order line, and what of it is still to come, in its unit.
struct OrderedQuantity {
    double ordered = 0, open = 0;
};
std::optional<OrderedQuantity> orderedQuantity(Connection& connection, const ReceiptLine& line);

/// The search page of receipts.
SearchSpec receiptSearch(Session& session, bool canSeePrice);
/// The statement of a search; `today` is YYYYMMDD.
SqlText receiptSearchStatement(const Session& session, const SearchInput& input, bool canSeePrice,
                               const QString& today);

} // namespace liaowu
