#pragma once
#include <QDateTime>
#include <QString>
#include <optional>

namespace liaowu::dialect {

enum class DateFault { None, Unreadable, OutOfRange };

/// Reads a date the way the server casts text: yyyymmdd, yymmdd, yyyy-mm-dd, yyyy/mm/dd, yyyy.mm.dd, mm/dd/yyyy (style
/// 103: dd/mm/yyyy), each with an optional time, or a time alone. Empty text is 1900-01-01.
std::optional<QDateTime> readDate(QStringView text, int style, DateFault& fault);

/// The stored form: yyyy-mm-dd hh:mi:ss, and milliseconds where there are any, in the server's steps of 3, 3 and 4.
QString dateText(const QDateTime& moment);

/// Text of a date in one of the server's styles; nothing when the style is not covered.
std::optional<QString> styledDate(const QDateTime& moment, int style);

/// Boundaries of `part` (yy qq mm dy dd ww dw hh mi ss ms) crossed on the way.
qint64 dateDifference(QStringView part, const QDateTime& from, const QDateTime& to);
QDateTime dateSum(QStringView part, qint64 number, const QDateTime& moment);
int datePartOf(QStringView part, const QDateTime& moment);

} // namespace liaowu::dialect
