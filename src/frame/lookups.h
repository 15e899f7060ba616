#pragma once
#include "frame/pick_spec.h"

namespace liaowu {

/// Lookup windows on the shared tables. Each reads `Session::pickParam` as its search text.

/// `frm片語輔助視窗`: phrases of the category in `pickParam`; `pickCategory` is a second category, `pickMode` "印刷" narrows
/// to that process.
PickSpec phrasePick();
/// `frm業務輔助視窗`: people who have not left, of the departments of the group in `formulaMode` when it has any.
PickSpec personPick();
/// `frm廠商輔助畫面`: vendors of the class in `formulaMode`, within the user's salesperson scope.
PickSpec vendorPick();
/// `frm廠商輔助視窗_驗收`: vendors with something to receive, or to return when the 單別 in `pickMode` says so.
PickSpec receivingVendorPick();

} // namespace liaowu
