#include "formula/calculator.h"
#include "formula/evaluator.h"

namespace liaowu {

std::optional<double> vxCalc(const QString& text) {
    // An empty text is nothing to compute, and a power is not among the calculator's operators.
    if (text.trimmed().isEmpty() || text.contains(u'^')) return std::nullopt;
    try {
        return CEval().Evaluate(text);
    } catch (const FormulaError&) {
        return std::nullopt;
    }
}

} // namespace liaowu
