#pragma once
#include <QString>

namespace liaowu {

/// The shortest decimal text of `value` with up to 15 significant digits: no thousands separators, no exponent,
/// no trailing zeros, a leading zero kept ("0.5"), no point when the value is whole. Infinity and not-a-number
/// give "0": no document may hold them.
QString numberText(double value);

/// Reads a stored or typed number: skips blanks, takes an optional sign and digits with at most one point, stops
/// at the first other character. Nothing readable gives 0, so "" is 0, "12abc" is 12 and "1,234" is 1.
double val(QStringView text);

} // namespace liaowu
