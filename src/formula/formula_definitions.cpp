#include "formula/formula_definitions.h"
#include "common/text_values.h"
#include "data/recordset.h"
#include <algorithm>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

FormulaTable read(Recordset rows) {
    FormulaTable table;
    for (; !rows.EOF_(); rows.MoveNext())
        table.push_back({rows.text(u"單位1"), rows.text(u"單位2"), rows.text(u"基本單位"),
                         rows.text(u"計價單位"), rows.text(u"公式"), rows.text(u"序"), rows.text(u"類別")});
    return table;
}

bool sameUnit(const QString& stored, const QString& wanted) {
    return stored.trimmed().compare(wanted.trimmed(), Qt::CaseInsensitive) == 0;
}

} // namespace

FormulaTable loadFormulas(Connection& connection, FormulaOrder order) {
    return read(select(
        connection,
        order == FormulaOrder::ByCategory
            ? sql(u"select 單位1,單位2,計價單位,公式,序,類別,基本單位 from [採購計價公式] order by 類別 ")
            : sql(u"select 單位1,單位2,計價單位,公式,序,類別,基本單位 from [採購計價公式] order by 序")));
}

const FormulaTable& FormulaBook::table(Connection& connection) {
    if (!known) known = loadFormulas(connection, order);
    return *known;
}

FormulaTable loadFormulasOf(Connection& connection, const QString& category) {
    return read(select(connection, sql(u"Select * From 採購計價公式 where 類別='{}'Order By 序", category)));
}

void saveFormulas(Session& session, const QString& category, const FormulaTable& rows) {
    Connection connection(session.pool, session.connectionString);
    Transaction transaction(connection);
    connection.Execute(sql(u"delete from 採購計價公式 where 類別='{}'", category.trimmed()));
    Recordset table;
    table.Open(sql(u"select * from 採購計價公式"), connection, Cursor::Batch);
    int position = 0;
    for (const PricingFormula& row : rows) {
        table.AddNew();
        table.set(u"單位1", row.單位1.trimmed());
        table.set(u"單位2", row.單位2.trimmed());
        table.set(u"基本單位", row.基本單位.trimmed());
        table.set(u"計價單位", row.計價單位.trimmed());
        table.set(u"公式", row.公式.trimmed());
        table.set(u"序", double(++position));
        table.set(u"類別", category);
    }
    if (!rows.empty()) table.UpdateBatch();
    transaction.commit();
}

bool isPlainFormula(const QString& formula) {
    QString rest = formula;
    for (const auto& word : {u"寬"_s, u"長"_s, u"數量"_s, u"單價"_s, u"基重"_s, u"+"_s, u"-"_s, u"*"_s,
                             u"/"_s, u"("_s, u")"_s, u" "_s})
        rest.remove(word);
    rest = rest.trimmed();
    if (rest.isEmpty()) return true;
    const bool numeric =
        std::all_of(rest.begin(), rest.end(), [](QChar c) { return (c >= u'0' && c <= u'9') || c == u'.'; });
    return numeric && !rest.startsWith(u'.') && !rest.contains(u"..");
}

std::optional<QString> selectFormula(const FormulaTable& table, const FormulaKey& key) {
    const auto match = std::find_if(table.begin(), table.end(), [&](const PricingFormula& row) {
        return sameUnit(row.單位1, key.unit1) && sameUnit(row.單位2, key.unit2) &&
               sameUnit(row.計價單位, key.pricingUnit) && sameUnit(row.基本單位, key.baseUnit) &&
               row.類別.trimmed() == key.category;
    });
    if (match == table.end()) return std::nullopt;
    const QString formula = match->公式.toUpper();
    return isPlainFormula(formula) ? std::optional(formula) : std::nullopt;
}

QString substituteFormula(const QString& formula, const FormulaValues& values, const FormulaMasks& masks) {
    const auto text = [](double value, const char16_t* mask) { return numberText(val(format(value, mask))); };
    QString result = formula;
    result.replace(u"長"_s, text(values.長, masks.sizes));
    result.replace(u"寬"_s, text(values.寬, masks.sizes));
    result.replace(u"數量"_s, text(values.數量, masks.figures));
    result.replace(u"基重"_s, text(values.基重, masks.figures));
    result.replace(u"單價"_s, text(values.單價, masks.figures));
    return result.remove(u' ');
}

NumberAndUnit splitNumberAndUnit(const QString& text) {
    QString number;
    QString rest;
    for (const QChar c : text)
        ((c >= u'0' && c <= u'9') || c == u'.' ? number : rest) += c;
    return {val(number), rest.remove(u' ')};
}

SizeText splitSize(const QString& text) {
    SizeText size;
    size.text = text.trimmed().replace(u'﹡', u'*').replace(u'x', u'*').replace(u'Ｘ', u'*');
    const qsizetype star = size.text.indexOf(u'*');
    if (star < 0) {
        // "0" is no unit word of any formula.
        size.first.unit = size.second.unit = u"0"_s;
        return size;
    }
    size.first = splitNumberAndUnit(size.text.left(star));
    size.second = splitNumberAndUnit(size.text.mid(star + 1));
    return size;
}

} // namespace liaowu
