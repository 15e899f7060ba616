#pragma once
#include "common/session.h"
#include "frame/batch_spec.h"
#include "frame/search_spec.h"
#include "purchasing/requisition_lines.h"
#include <optional>

namespace liaowu {

class Connection;

/// All requisitions by date and number: the last is the latest.
SqlText requisitionBrowseStatement();

/// An item as requisitions need it: 單位 and 單價 of the stock, not of the purchase.
struct RequisitionItem {
    QString code, name, 規格, 庫存, 單位, 單價, 幣別, 安全庫存, 楞別;
};
/// An item of a family by exact code or name; nothing unless exactly one row matches.
std::optional<RequisitionItem> findRequisitionItem(Connection& connection, const QString& family,
                                                   const QString& codeOrName);

/// The line that a row of the item pick `frm原料輔助視窗_申購` gives; texts are cut to their limits, board counts in "PC".
RequisitionLine lineOfItemPick(const QStringList& row, const QString& family);

/// The search page of requisitions.
SearchSpec requisitionSearch(Session& session);
SqlText requisitionSearchStatement(const SearchInput& input);

/// The batch approval page of requisitions; `lastNumber` is the highest in browse order.
BatchSpec requisitionBatch(Session& session, const QString& lastNumber);

} // namespace liaowu
