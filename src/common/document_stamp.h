#pragma once
#include "common/refusal.h"
#include "data/recordset.h"
#include <optional>

namespace liaowu {

/// What tells that a stored header is the one that was loaded: time of the last change, and the approval mark.
QString documentStamp(const QString& changedAt, const QString& mark);

/// What happened to a stored header (the current row) since its stamp was `loadedStamp`: nothing, or who changed it and
/// when. Reads 修改人, 修改時間 and the approval columns, which begin with `markColumn` (審單 or 審核).
std::optional<SaveConflict> changedSince(const Recordset& header, const QString& markColumn,
                                         const QString& loadedStamp);

} // namespace liaowu
