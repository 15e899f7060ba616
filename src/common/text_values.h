#pragma once
#include "data/number_text.h"
#include <QDate>
#include <QString>
#include <utility>
#include <vector>

namespace liaowu {

/// The code of an operation that failed.
inline constexpr int Failed = 9;

/// Writes a number by a mask. "0.000" rounds half away from zero at its last decimal, on the decimal text of the value,
/// so 1.005 by "0.00" is "1.01"; zeros before the point are a minimum width; a comma in the mask groups thousands;
/// "####/##/##" shows an eight-digit date with slashes.
QString format(double value, QStringView mask);

/// A sum of decimals without the drift of its last bits, so that nothing is left where all was taken away.
double settled(double sum);

/// For paper: thousands separators, decimals by the value's own text (none to four, 2 for five and more).
QString formatAmount(const QString& text);

/// Bytes of the text in the Big5 code page: 1 for ASCII, 2 for any other character.
int byteLength(QStringView text);

/// As many whole characters from the left as fit into `maxBytes` Big5 bytes.
QString truncateBytes(const QString& text, int maxBytes);

/// Runs of digits and points in a size text such as "31.5*43": the first `parts` of them, each as text; a part that is
/// not there stays empty.
std::vector<QString> splitNumbers(QStringView text, int parts);

/// 0 for an empty text and for eight digits that form a real date, else 9.
int validDate8(QStringView text);
QString firstOfNextMonth(const QString& date8);
/// The last day of the month of `date8`; empty when it is no date.
QString lastDayOfMonth(const QString& date8);
QString date8(const QDate& date);
QDate dateOf8(const QString& date8);

/// The document counter: increments from the right as an odometer with digits and letters that do not mix and that passes
/// over hyphens. "0009" gives "0010", "A9" "B0", "AZ" "BA", "9999" "Z0000", "" "Z".
QString nextCode(const QString& text);

/// The next item code after `last`: prefix before the first digit, then the number part plus 1 at its own width at
/// least. A text without digits comes back unchanged.
QString nextItemCodeAfter(const QString& last);

/// A keystroke as a field of a filter mode takes it: the key itself, another one, or 0 (dropped).
///   1 digits; 2 letters, upper-cased; 3 digits . - =; 4 digits blank : -; 5 digits . +; 6 Y N . *; 7 V . *;
///   8 Y N H C . *; 9 digits . - +. Backspace and Enter always pass, other modes pass all.
int filterKey(int key, int mode);
int upperKey(int key);
/// A whole text through `filterKey`, full-width forms of ASCII turned into ASCII first when the mode filters.
QString filterText(const QString& text, int mode);
/// What a field of one line takes of a text, on whatever way it comes in: line ends as blanks, upper case where the field
/// wants it, then the filter, so that a small "y" is a "Y" before the filter sees it.
QString acceptedText(const QString& text, int mode, bool upper);

} // namespace liaowu
