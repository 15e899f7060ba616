#pragma once
#include "common/session.h"

namespace liaowu {

class Connection;

/// The currencies of 匯率檔 by name, an empty one first. A failure is shown under "取得幣別資料錯誤".
QStringList currencies(Session& session);

/// Amount in `from` as an amount in `to` at today's rates of 匯率檔: amount × source rate ÷ target rate, to 6 decimals. Equal
/// currencies return the amount itself; an empty `to` is the default currency; unknown ones and a rate of 0 count as 1.
double convertCurrency(Connection& connection, const QString& from, double amount, const QString& to);
/// The same with the source's rate as it stood before `date` (YYYYMMDD) in 匯率修改記錄; without one it is 1.
double convertCurrencyAt(Connection& connection, const QString& from, double amount, const QString& to,
                         const QString& date);

/// On a fresh connection; a failure is shown under "取得幣別資料錯誤" and gives 0.
double convertCurrency(Session& session, const QString& from, double amount, const QString& to);
double convertCurrencyAt(Session& session, const QString& from, double amount, const QString& to,
                         const QString& date);

} // namespace liaowu
