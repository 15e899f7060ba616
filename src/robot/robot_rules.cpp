#include "common/currency.h"
#include "common/phrases.h"
#include "common/text_values.h"
#include "data/connection.h"
#include "formula/calculator.h"
#include "formula/evaluator.h"
#include "robot/robot_stage.h"
#include "warehouse/month_guard.h"
#include <QHash>

namespace liaowu::robot {

using namespace Qt::StringLiterals;

namespace {

struct Arguments {
    QJSValue list;
    QString text(uint i) const { return list.property(i).toString(); }
    double number(uint i) const { return list.property(i).toNumber(); }
    int whole(uint i) const { return list.property(i).toInt(); }
};

QJSValue parts(QJSEngine& engine, const std::vector<QString>& texts) {
    return engine.toScriptValue(QStringList(texts.begin(), texts.end()));
}

using Rule = std::function<QJSValue(QJSEngine&, Session&, const Arguments&)>;

const QHash<QString, Rule>& rules() {
    static const QHash<QString, Rule> table{
        {u"val"_s, [](auto&, auto&, auto& a) { return QJSValue(val(a.text(0))); }},
        {u"format"_s, [](auto&, auto&, auto& a) { return QJSValue(format(a.number(0), a.text(1))); }},
        {u"numberText"_s, [](auto&, auto&, auto& a) { return QJSValue(numberText(a.number(0))); }},
        {u"formatAmount"_s, [](auto&, auto&, auto& a) { return QJSValue(formatAmount(a.text(0))); }},
        {u"truncateBytes"_s,
         [](auto&, auto&, auto& a) { return QJSValue(truncateBytes(a.text(0), a.whole(1))); }},
        {u"validDate8"_s, [](auto&, auto&, auto& a) { return QJSValue(validDate8(a.text(0))); }},
        {u"firstOfNextMonth"_s, [](auto&, auto&, auto& a) { return QJSValue(firstOfNextMonth(a.text(0))); }},
        {u"lastDayOfMonth"_s, [](auto&, auto&, auto& a) { return QJSValue(lastDayOfMonth(a.text(0))); }},
        {u"splitNumbers2"_s, [](auto& e, auto&, auto& a) { return parts(e, splitNumbers(a.text(0), 2)); }},
        {u"splitNumbers3"_s, [](auto& e, auto&, auto& a) { return parts(e, splitNumbers(a.text(0), 3)); }},
        {u"nextCode"_s, [](auto&, auto&, auto& a) { return QJSValue(nextCode(a.text(0))); }},
        {u"filterKey"_s, [](auto&, auto&, auto& a) { return QJSValue(filterKey(a.whole(0), a.whole(1))); }},
        {u"evaluate"_s, [](auto&, auto&, auto& a) { return QJSValue(CEval().Evaluate(a.text(0))); }},
        {u"vxCalc"_s,
         [](auto&, auto&, auto& a) {
             const auto value = vxCalc(a.text(0));
             return value ? QJSValue(*value) : QJSValue(QJSValue::NullValue);
         }},
        {u"convertCurrency"_s,
         [](auto&, auto& s, auto& a) {
             Connection connection(s.pool, s.connectionString);
             return QJSValue(convertCurrency(connection, a.text(0), a.number(1), a.text(2)));
         }},
        {u"convertCurrencyAt"_s,
         [](auto&, auto& s, auto& a) {
             Connection connection(s.pool, s.connectionString);
             return QJSValue(convertCurrencyAt(connection, a.text(0), a.number(1), a.text(2), a.text(3)));
         }},
        {u"materialSizes"_s,
         [](auto&, auto& s, auto& a) {
             Connection connection(s.pool, s.connectionString);
             return QJSValue(materialSizes(connection, a.text(0), a.text(1)));
         }},
        {u"isMonthClosed"_s,
         [](auto&, auto& s, auto& a) { return QJSValue(isMonthClosed(s, a.text(0), a.text(1))); }},
    };
    return table;
}

} // namespace

QJSValue callRule(QJSEngine& engine, Session& session, const QString& name, const QJSValue& arguments) {
    const auto found = rules().constFind(name);
    if (found == rules().constEnd()) {
        engine.throwError(u"no rule %1"_s.arg(name));
        return {};
    }
    try {
        return (*found)(engine, session, Arguments{arguments});
    } catch (const FormulaError& error) {
        engine.throwError(error.description);
    } catch (const DatabaseError& error) {
        engine.throwError(error.text);
    }
    return {};
}

} // namespace liaowu::robot
