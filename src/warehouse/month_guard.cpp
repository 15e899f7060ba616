#include "warehouse/month_guard.h"
#include "common/messages.h"
#include "data/recordset.h"

namespace liaowu {

using namespace Qt::StringLiterals;

bool isMonthClosed(Session& session, Connection& connection, const QString& date, const QString& category) {
    const QString month = date.left(4) + u'-' + date.mid(4, 2);
    QString counts;
    if (category == u"物料") counts = u"盤點資料_物料"_s;
    if (category == u"紙板") counts = u"盤點資料_浪紙"_s;
    if (counts.isEmpty()) {
        session.messages.stop(u"錯誤"_s, u"無效的參數"_s);
        return false;
    }
    return select(connection, sql(u"select top 1 * from [{}] where left(盤點日期,7)>='{}' ", counts, month))
               .RecordCount() > 0;
}

bool isMonthClosed(Session& session, const QString& date, const QString& category) {
    Connection connection(session.pool, session.connectionString);
    return isMonthClosed(session, connection, date, category);
}

} // namespace liaowu
