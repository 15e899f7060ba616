#pragma once
#include "common/refusal.h"
#include "purchasing/order_lines.h"
#include <optional>

namespace liaowu {

/// The first thing that speaks against saving these lines: an item without code and name, no unit, no sheet count, no
/// quantity; by row, in this order within a row.
std::optional<Finding> checkOrderLines(const OrderLines& lines);

/// Numbers the lines that have no 序: each takes the next above the highest in use, at hand or in `receivedHigh` (the
/// highest 採購序 that receipts of this order hold).
void numberOrderLines(OrderLines& lines, double receivedHigh);

/// What a save writes in the line columns that the warehouse owns. 已入庫數, 已檢驗數 and 檢驗合格數 come from the stored line of
/// the same 序 (unless 已入庫數 was typed here), 未交數 follows, 送清 is the stored one unless it was changed here, that is
/// unless it differs from the line as loaded.
void mergeWarehouseColumns(OrderLines& lines, const OrderLines& loaded, const OrderLines& stored);

/// Change of 已采購數 of one requisition line.
struct RequisitionChange {
    QString 申購單號, 原料代號;
    double quantity = 0;
};
/// What a save of `lines` in the place of `stored` changes in the requisition lines they came from; zero changes left out.
std::vector<RequisitionChange> requisitionChanges(const OrderLines& lines, const OrderLines& stored);

/// Texts that stand in the columns of 採購明細資料 as numbers.
OrderLine normalizedForStore(const OrderLine& line, bool canSeePrice);

} // namespace liaowu
