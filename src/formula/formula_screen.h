#pragma once

namespace liaowu {

class Process;

/// Registers `frm原料計價公式`, which keeps the pricing and the conversion formulas.
void registerFormulaScreen(Process& process);

} // namespace liaowu
