#pragma once
#include <QString>
#include <optional>

namespace liaowu {

/// Decimal numbers, + - * / and parentheses with the usual precedence, as site formulas are computed. Nothing when the
/// text cannot be computed: a word left in it, unbalanced parentheses, a division by zero.
std::optional<double> vxCalc(const QString& text);

} // namespace liaowu
