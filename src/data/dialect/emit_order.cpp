#include "data/dialect/emit.h"
#include "data/dialect/group_check.h"
#include "data/dialect/lexer.h"
#include "data/dialect/refuse.h"

namespace liaowu::dialect {

/// The column of the select that an order by names: by position or by name.
std::optional<size_t> Emitter::orderedItem(const Expr& expr, const Prepared& prepared) const {
    if (expr.kind == Expr::Kind::IntegerLiteral) {
        const qint64 position = expr.name.toLongLong();
        if (position < 1 || position > static_cast<qint64>(prepared.columns.size()))
            serverError(
                108, u"The ORDER BY position number %1 is out of range of the number of items in the select "
                     "list."_s.arg(position));
        return static_cast<size_t>(position - 1);
    }
    if (expr.kind != Expr::Kind::Column || !expr.qualifier.isEmpty()) return std::nullopt;
    for (size_t i = 0; i < prepared.columns.size(); ++i) {
        if (sameName(prepared.columns[i].name, expr.name)) return i;
    }
    return std::nullopt;
}

Sql Emitter::orderTerm(const OrderItem& item, Prepared& prepared) {
    const bool compound = prepared.cores.size() > 1;
    Core& core = prepared.cores.front();
    Expr& expr = *item.value;
    std::optional<size_t> found = orderedItem(expr, prepared);
    Sql sql;
    if (!found) {
        if (compound || prepared.select->arms.front().nested)
            serverError(104,
                        u"ORDER BY items must appear in the select list if the statement contains a UNION, "
                        "INTERSECT or EXCEPT operator."_s);
        const Restored<Scope*> inside(scope, core.scope);
        scope->clause = Clause::OrderBy;
        const bool aggregatedBefore = core.aggregated;
        sql = value(expr);
        if (scope->aggregated && !aggregatedBefore)
            refuse(expr.offset, u"An aggregate that only orders is not covered."_s);
        if (core.aggregated) checkGrouped(expr, prepared.select->arms.front(), *scope, u"ORDER BY clause"_s);
        if (!readsColumnOf(expr, *scope) && !scope->aggregated)
            serverError(408, u"A constant expression was encountered in the ORDER BY list."_s);
        for (size_t i = 0; i < core.values.size() && core.distinct && !found; ++i) {
            const QByteArray& itemText = core.items[i].text;
            if (itemText == sql.text || (core.values[i] && sameExpression(*core.values[i], expr))) found = i;
        }
        if (core.distinct && !found)
            serverError(145,
                        u"ORDER BY items must appear in the select list if SELECT DISTINCT is specified."_s);
    }
    if (found) sql = {QByteArray::number(*found + 1), prepared.columns[*found].type, RankAtom};
    return collated(sql);
}

QByteArray Emitter::orderBy(Prepared& prepared) {
    QByteArray text;
    for (const OrderItem& item : prepared.select->orderBy)
        text += (text.isEmpty() ? " ORDER BY " : ", ") + orderTerm(item, prepared).text +
                (item.descending ? " DESC" : "");
    return text;
}

} // namespace liaowu::dialect
