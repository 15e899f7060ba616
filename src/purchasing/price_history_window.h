#pragma once

namespace liaowu {

class Process;

/// Registers `frm歷史單價明細_採購`: what an item has cost, read-only. Reads `Session::formulaMode` as the family, `filterCode` and
/// `filterName` as the item.
void registerPriceHistory(Process& process);

} // namespace liaowu
