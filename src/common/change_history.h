#pragma once
#include "data/sql_text.h"

namespace liaowu {

/// The four audit values of a record as rows 項目, 項目值: who made it, when, who changed it last, when. `style` 0 reads
/// 建檔人 and 建檔時間, 1 製單人 and 製單時間.
SqlText changeHistoryStatement(const QString& table, const QString& keyName, const QString& keyValue,
                               int style);

} // namespace liaowu
