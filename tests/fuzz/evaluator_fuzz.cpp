// libFuzzer target: any formula gives a finite value or an error of the engine.
#include "formula/evaluator.h"
#include "formula/formula_definitions.h"
#include <cmath>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    try {
        if (!std::isfinite(liaowu::CEval().Evaluate(text))) std::abort();
    } catch (const liaowu::FormulaError&) {
    }
    liaowu::isPlainFormula(text);
    liaowu::substituteFormula(text, {1, 2, 3, 4, 5});
    return 0;
}
