#include "data/dialect/group_check.h"
#include "data/dialect/lexer.h"
#include "data/dialect/refuse.h"
#include <algorithm>

namespace liaowu::dialect {

namespace {

bool belongsTo(const Source* source, const Scope& scope) {
    return std::any_of(scope.sources.begin(), scope.sources.end(),
                       [&](const auto& own) { return own.get() == source; });
}

template <typename Visit>
void visitSelect(const Select& select, const Visit& visit);

/// Visits the expressions directly below one, those of subqueries included.
template <typename Visit>
void visitBelow(const Expr& expr, const Visit& visit) {
    for (const ExprPtr& item : expr.items)
        visit(*item);
    if (expr.base) visit(*expr.base);
    if (expr.select) visitSelect(*expr.select, visit);
}

template <typename Visit>
void visitFrom(const TableRef& ref, const Visit& visit) {
    if (ref.left) visitFrom(*ref.left, visit);
    if (ref.right) visitFrom(*ref.right, visit);
    if (ref.on) visit(*ref.on);
    if (ref.derived) visitSelect(*ref.derived, visit);
}

template <typename Visit>
void visitSelect(const Select& select, const Visit& visit) {
    for (const SelectArm& arm : select.arms) {
        if (arm.nested) visitSelect(*arm.nested, visit);
        for (const SelectItem& item : arm.items) {
            if (item.value) visit(*item.value);
        }
        for (const auto& ref : arm.from)
            visitFrom(*ref, visit);
        if (arm.where) visit(*arm.where);
        for (const ExprPtr& group : arm.groupBy)
            visit(*group);
        if (arm.having) visit(*arm.having);
    }
    for (const OrderItem& item : select.orderBy)
        visit(*item.value);
}

} // namespace

bool sameExpression(const Expr& left, const Expr& right) {
    if (left.kind != right.kind || left.items.size() != right.items.size() || left.negated != right.negated ||
        left.distinct != right.distinct || left.style != right.style || !left.base != !right.base ||
        left.select || right.select)
        return false;
    if (left.kind == Expr::Kind::Column && left.source)
        return left.source == right.source && left.column == right.column;
    if (left.kind == Expr::Kind::Parameter) return left.literal == right.literal;
    if (left.kind == Expr::Kind::TextLiteral && left.name != right.name) return false;
    if (!sameName(left.name, right.name) || !sameName(left.qualifier, right.qualifier)) return false;
    if (left.type.type != right.type.type || left.type.length != right.type.length) return false;
    if (left.base && !sameExpression(*left.base, *right.base)) return false;
    for (size_t i = 0; i < left.items.size(); ++i) {
        if (!sameExpression(*left.items[i], *right.items[i])) return false;
    }
    return true;
}

bool readsColumnOf(const Expr& expr, const Scope& scope) {
    if (expr.kind == Expr::Kind::Column) return belongsTo(expr.source, scope);
    bool found = false;
    visitBelow(expr, [&](const Expr& below) { found = found || readsColumnOf(below, scope); });
    return found;
}

void checkGrouped(const Expr& expr, const SelectArm& arm, const Scope& scope, const QString& where) {
    if (expr.kind == Expr::Kind::Aggregate) return;
    for (const ExprPtr& group : arm.groupBy) {
        if (sameExpression(*group, expr)) return;
    }
    if (expr.kind == Expr::Kind::Column && belongsTo(expr.source, scope)) {
        const QString column =
            expr.source->name + u'.' + expr.source->columns[static_cast<size_t>(expr.column)].name;
        serverError(8120,
                    u"Column '%1' is invalid in the %2 because it is not contained in either an aggregate "
                    "function or the GROUP BY clause."_s.arg(column, where));
    }
    visitBelow(expr, [&](const Expr& below) { checkGrouped(below, arm, scope, where); });
}

void checkGrouped(const SelectArm& arm, const Scope& scope) {
    for (const SelectItem& item : arm.items) {
        if (!item.value) refuse(item.offset, u"A star in a grouped select is not covered."_s);
        checkGrouped(*item.value, arm, scope, u"select list"_s);
    }
    if (arm.having) checkGrouped(*arm.having, arm, scope, u"HAVING clause"_s);
}

} // namespace liaowu::dialect
