#include "dbtool/demo_plant.h"
#include "data/number_text.h"
#include <QHash>
#include <cmath>

namespace liaowu::demo {

using namespace Qt::StringLiterals;

QString familyWord(Family family) {
    switch (family) {
    case Family::Board:
        return u"紙板"_s;
    case Family::Material:
        return u"物料"_s;
    case Family::Paper:
        return u"紙品"_s;
    case Family::Plate:
        return u"凸版"_s;
    }
    return {};
}

QString date8(const QDate& date) {
    return date.toString(u"yyyyMMdd"_s);
}

QString padded(int number, int width) {
    return u"%1"_s.arg(number, width, 10, QChar(u'0'));
}

QString materialLetter(const Vendor& vendor, QChar letter) {
    if (vendor.family != Family::Board) return {};
    // Every vendor has letters of its own; the last digit of its code tells them apart.
    static const QHash<QChar, QString> words{{u'K', u"牛"_s}, {u'A', u"甲"_s}, {u'B', u"乙"_s},
                                             {u'C', u"丙"_s}, {u'M', u"瓦"_s}, {u'T', u"再"_s},
                                             {u'W', u"白"_s}};
    const QString word = words.value(letter);
    return word.isEmpty() ? word : word + vendor.code.right(1);
}

QString vendorMaterial(const Plant& plant, const QString& code, int vendor) {
    QString result;
    for (const QChar letter : code)
        result += materialLetter(plant.vendor(vendor), letter);
    return result.isEmpty() ? code : result;
}

namespace {

double rounded(double value) {
    return std::round(value * 100) / 100;
}

struct Pricing {
    QString formula; ///< empty for none
    double divisor = 1;
    bool size = false, weight = false;
};

/// The formulas here are rows of 採購計價公式; what they compute is known, so no evaluator is needed.
Pricing pricingOf(const Item& item) {
    if (item.family == Family::Board && item.buyUnit == u"㎡")
        return {u"長*寬*單價*數量/10000"_s, 10000, true, false};
    if (item.family == Family::Board && item.buyUnit == u"kg")
        return {u"長*寬*基重*單價*數量/10000000"_s, 10000000, true, true};
    if (item.family == Family::Paper && item.buyUnit == u"令")
        return {u"長*寬*基重*單價*數量/2000000"_s, 2000000, true, true};
    if (item.family == Family::Paper) return {u"單價*數量"_s};
    return {};
}

} // namespace

LineAmount amountOf(const Item& item, double quantity, double price) {
    const Pricing pricing = pricingOf(item);
    if (pricing.formula.isEmpty())
        return {rounded(quantity * price),
                u"無計價公式以單價*數量計算 "_s + numberText(quantity) + u'*' + numberText(price)};
    const double size = pricing.size ? item.first * item.second : 1;
    const double weight = pricing.weight ? item.weight : 1;
    QString text = pricing.formula;
    text.replace(u"長"_s, numberText(item.first)).replace(u"寬"_s, numberText(item.second));
    text.replace(u"數量"_s, numberText(quantity)).replace(u"基重"_s, numberText(item.weight));
    text.replace(u"單價"_s, numberText(price));
    return {rounded(size * weight * price * quantity / pricing.divisor), u"計價公式: "_s + text};
}

} // namespace liaowu::demo
