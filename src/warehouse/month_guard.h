#pragma once
#include "common/session.h"

namespace liaowu {

class Connection;

/// Whether the warehouse is closed for the month of `date` (YYYYMMDD): a stock count stands in it or in a later month. Reads
/// 盤點資料_物料 or 盤點資料_浪紙; any other family is told as "無效的參數" and counts as open. Throws `DatabaseError`.
bool isMonthClosed(Session& session, Connection& connection, const QString& date, const QString& category);
/// The same on a fresh connection.
bool isMonthClosed(Session& session, const QString& date, const QString& category);

} // namespace liaowu
