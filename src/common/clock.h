#pragma once
#include "common/session.h"

namespace liaowu {

class Connection;

/// The server's clock ("SELECT dbo.DT(9) AS 時間") as text. Modes: 0 "YYYY/MM/DD hh:mm", 1 "YYYY/MM/DD", 2 "YYYYMMDD",
/// 3 "YYMMDD", 4 "YYMM", 5 "hh:mm", 6 "YYYY-MM-DD hh:mm", any other the raw value. Throws `DatabaseError`.
QString serverTime(Connection& connection, int mode);

/// The same on a fresh connection; a failure is shown with its title and gives an empty text.
QString serverTime(Session& session, int mode);
QString today8(Session& session);
/// The server's date minus 30 days, YYYYMMDD.
QString thirtyDaysAgo(Session& session);
/// The dates that a search starts with: the first day of the month in which the date 30 days ago lies, and today. Empty
/// texts, after the message, when the server's clock could not be read.
std::pair<QString, QString> sinceLastMonth(Session& session);
/// The server's date minus 30 × `months` days, YYYYMMDD.
QString monthsAgo(Session& session, int months);
/// Today minus `days` by the server's clock, YYYYMMDD.
QString daysAgo(Session& session, int days);

/// The client's clock plus `n` units, YYYYMMDD: unit 1 months, anything else days.
QString localDaysAgo(Session& session, int unit, int n);
/// The last day of the client's current month.
QString currentMonthEnd(Session& session);

} // namespace liaowu
