#pragma once
#include "data/sql_text.h"

namespace liaowu {

/// A person of 業務資料 by exact code or name: 業務員代號, 業務員名稱.
SqlText personStatement(const QString& codeOrName);

} // namespace liaowu
