#include "common/clock.h"
#include "common/guard.h"
#include "common/text_values.h"
#include "data/connection_pool.h"
#include "data/recordset.h"

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

/// "yyyy-mm-dd hh:mi:ss" and "yyyy/mm/dd hh:mi:ss" are read by their places; anything else by the slower way.
QDateTime parsedTime(const QString& raw) {
    const QStringView text(raw);
    if (text.size() >= 19) {
        const QDate date(text.mid(0, 4).toInt(), text.mid(5, 2).toInt(), text.mid(8, 2).toInt());
        const QTime time(text.mid(11, 2).toInt(), text.mid(14, 2).toInt(), text.mid(17, 2).toInt());
        if (date.isValid() && time.isValid()) return QDateTime(date, time, Qt::UTC);
    }
    for (const auto& form : {u"yyyy-MM-dd hh:mm:ss"_s, u"yyyy/MM/dd hh:mm:ss"_s, u"yyyy-MM-dd"_s}) {
        const QDateTime time = QDateTime::fromString(raw.left(form.size()), form);
        if (time.isValid()) return time;
    }
    return QDateTime::fromString(raw, Qt::ISODate);
}

QDate serverDate(Session& session) {
    return parsedTime(serverTime(session, -1)).date();
}

} // namespace

QString serverTime(Connection& connection, int mode) {
    const QString raw = select(connection, sql(u"SELECT dbo.DT(9) AS 時間")).text(0);
    if (mode < 0 || mode > 6) return raw;
    const QDateTime time = parsedTime(raw);
    switch (mode) {
    case 0:
        return time.toString(u"yyyy/MM/dd hh:mm");
    case 1:
        return time.toString(u"yyyy/MM/dd");
    case 2:
        return date8(time.date());
    case 3:
        return date8(time.date()).mid(2);
    case 4:
        return time.toString(u"yyMM");
    case 5:
        return time.toString(u"hh:mm");
    case 6:
        return time.toString(u"yyyy-MM-dd hh:mm");
    default:
        return raw;
    }
}

QString serverTime(Session& session, int mode) {
    QString result;
    guarded(session, u"取得印表時間錯誤"_s, [&] {
        Connection connection(session.pool, session.connectionString);
        result = serverTime(connection, mode);
    });
    return result;
}

QString today8(Session& session) {
    return serverTime(session, 2);
}

QString daysAgo(Session& session, int days) {
    return date8(serverDate(session).addDays(-days));
}

QString thirtyDaysAgo(Session& session) {
    return daysAgo(session, 30);
}

std::pair<QString, QString> sinceLastMonth(Session& session) {
    const QDate today = serverDate(session);
    if (!today.isValid()) return {};
    return {date8(today.addDays(-30)).left(6) + u"01"_s, date8(today)};
}

QString monthsAgo(Session& session, int months) {
    return daysAgo(session, 30 * months);
}

QString localDaysAgo(Session& session, int unit, int n) {
    const QDate today = session.pool.clock().date();
    return date8(unit == 1 ? today.addMonths(n) : today.addDays(n));
}

QString currentMonthEnd(Session& session) {
    return lastDayOfMonth(date8(session.pool.clock().date()));
}

} // namespace liaowu
