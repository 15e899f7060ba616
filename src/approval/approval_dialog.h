#pragma once

namespace liaowu {

class Process;

/// Registers `frm單據審核`: asks who approves and whether to approve or take back. Talks through `Session`
/// (scratchText, approveAllowed, reverseAllowed, scratchA in; scratchA, scratchB, approvalDone out) and changes no table.
void registerApproval(Process& process);

} // namespace liaowu
