#pragma once
#include "frame/pick_spec.h"
#include "purchasing/order_lines.h"
#include <optional>

namespace liaowu {

class Connection;

/// The pick windows of requisitions and orders and of their neighbours. Each reads `Session::pickParam` as its filter,
/// `formulaMode` as the item family and `pickVendor` as the document's vendor.
PickSpec
requisitionLinePick(const QString& category); ///< frm原料輔助視窗_請購: several open requisition lines
PickSpec workOrderPick();                     ///< frm工單輔助視窗_採購
PickSpec orderItemPick();       ///< frm原料輔助視窗_採購: items with 進料單位 and 進價
PickSpec requisitionPick();     ///< frm採購輔助視窗_請購單
PickSpec requisitionItemPick(); ///< frm原料輔助視窗_申購: several items with 單位 and 單價

/// The order line that a row of `requisitionLinePick` gives; the price is still to come.
OrderLine lineOfRequisitionPick(const QStringList& row, const QString& category);
/// The order line that a row of `workOrderPick` makes of the line it was picked into: that one's requisition, number and
/// received quantities stay. No price.
OrderLine lineOfWorkOrderPick(const QStringList& row, const OrderLine& before);
/// Puts a row of `orderItemPick` into a line; each text is cut to the limit of its column.
void putItemPick(OrderLine& line, const QStringList& row, const QString& category);

/// The row that a window offers under exactly this code, blanks and case aside; nothing when it offers none.
std::optional<QStringList> exactPick(const Session& session, Connection& connection, const PickSpec& spec,
                                     const QString& code);

/// A board's name as the vendor knows it, cut to its column.
QString vendorItemName(Connection& connection, const QString& code, const QString& vendor);

} // namespace liaowu
