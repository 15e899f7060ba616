#pragma once
#include "common/session.h"
#include <optional>

namespace liaowu {

class Connection;

/// A row of 採購計價公式: a formula, and the units that choose it.
struct PricingFormula {
    QString 單位1;    ///< unit word of the size's first number
    QString 單位2;    ///< unit word of the second
    QString 基本單位; ///< the item's stock unit
    QString 計價單位; ///< unit in which the line is priced, or into which is converted
    QString 公式;
    QString 序;
    QString 類別; ///< item family word, or "單位換算"
};
using FormulaTable = std::vector<PricingFormula>;

/// The order in which a screen reads the table decides which of two matching rows counts.
enum class FormulaOrder { ByCategory, ByPosition };
/// All formulas. Throws `DatabaseError`.
FormulaTable loadFormulas(Connection& connection, FormulaOrder order);

/// The formulas that a screen prices by. Without them a line would cost quantity × price, so that a reading that failed is
/// tried again as long as it takes.
class FormulaBook {
public:
    explicit FormulaBook(FormulaOrder readIn) : order(readIn) {}
    /// Reads them at the first call that succeeds. Throws `DatabaseError`.
    const FormulaTable& table(Connection& connection);

private:
    FormulaOrder order;
    std::optional<FormulaTable> known;
};

/// The formulas of one 類別 by 序.
FormulaTable loadFormulasOf(Connection& connection, const QString& category);

/// Replaces all formulas of one 類別 by these, 序 from 1, in one transaction. Throws `DatabaseError`.
void saveFormulas(Session& session, const QString& category, const FormulaTable& rows);

/// What a formula is chosen by.
struct FormulaKey {
    QString unit1, unit2, baseUnit, pricingUnit; ///< compared trimmed and without case
    QString category;                            ///< compared exactly
};

/// The first formula of the table that matches, upper-cased; nothing when none matches, or when the one that matches
/// holds anything but the words 寬 長 數量 單價 基重, the signs + - * / ( ), blanks and plain numbers.
std::optional<QString> selectFormula(const FormulaTable& table, const FormulaKey& key);

/// Whether a formula holds nothing but what `selectFormula` allows.
bool isPlainFormula(const QString& formula);

/// Puts values in the place of the words and removes the blanks. A value is first rounded by its mask, then written as its
/// shortest text.
struct FormulaValues {
    double 長 = 0, 寬 = 0, 數量 = 0, 基重 = 0, 單價 = 0;
};
struct FormulaMasks {
    const char16_t* sizes = u"0.00000";
    const char16_t* figures = u"0.00000";
};
QString substituteFormula(const QString& formula, const FormulaValues& values,
                          const FormulaMasks& masks = {});

/// A text cut into the number that its digits and points spell, wherever they stand, and the rest without blanks: K200
/// gives 200 and "K".
struct NumberAndUnit {
    double number = 0;
    QString unit;
};
NumberAndUnit splitNumberAndUnit(const QString& text);

/// A size "width*length" with its units. The signs ﹡, x and Ｘ also separate; without any the sizes are 0 and the units are
/// such that no formula matches.
struct SizeText {
    QString text; ///< with "*" as separator
    NumberAndUnit first, second;
};
SizeText splitSize(const QString& text);

} // namespace liaowu
