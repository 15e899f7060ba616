#pragma once
#include "data/sql_text.h"

namespace liaowu {

/// Prices really ordered of an item, the latest first, from 歷史單價記錄; prices in the currency of each row.
SqlText priceHistoryStatement(const QString& category, const QString& code);

} // namespace liaowu
