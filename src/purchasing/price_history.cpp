#include "purchasing/price_history.h"

namespace liaowu {

SqlText priceHistoryStatement(const QString& category, const QString& code) {
    return sql(u"select 添加日期 as 交易日期, 數量 as 採購數,        單價, 幣別, 廠商簡稱 as 廠商 from "
               u"[歷史單價記錄]   where 貨品代號 = '{}'   "
               u"And 類別='{}'  Order by 添加日期 DESC ",
               code, category);
}

} // namespace liaowu
