#include "data/dialect/emit.h"
#include "data/dialect/refuse.h"
#include <algorithm>

namespace liaowu::dialect {

Sql Emitter::chain(Expr& expr, const char* word, int rank) {
    std::vector<QByteArray> parts;
    for (const ExprPtr& item : expr.items)
        parts.push_back(operand(condition(*item), rank + 1));
    // The engine builds a chain as deep as it is long, and its depth is bounded: long ones become a balanced tree.
    while (parts.size() > 200) {
        std::vector<QByteArray> grouped;
        for (size_t i = 0; i < parts.size(); i += 50) {
            QByteArray group = parts[i];
            for (size_t k = i + 1; k < std::min(i + 50, parts.size()); ++k)
                group += word + parts[k];
            grouped.push_back('(' + group + ')');
        }
        parts = std::move(grouped);
    }
    QByteArray text = parts[0];
    for (size_t i = 1; i < parts.size(); ++i)
        text += word + parts[i];
    return {text, ValueType::Boolean, rank};
}

Sql Emitter::compare(Expr& left, Expr& right, const QString& op) {
    const Sql leftSql = value(left);
    return comparison(left, leftSql, right, value(right), op);
}

Sql Emitter::comparison(const Expr& left, Sql leftSql, const Expr& right, Sql rightSql, const QString& op) {
    const ValueType type = std::max(leftSql.type, rightSql.type);
    const auto isNumber = [](ValueType t) {
        return t == ValueType::Integer || t == ValueType::Numeric || t == ValueType::Float;
    };
    // Numbers of any type compare as they are.
    if (!isNumber(leftSql.type) || !isNumber(rightSql.type)) {
        leftSql = convertedTo(left, leftSql, type);
        rightSql = convertedTo(right, rightSql, type);
    }
    const int rank = op == u"=" || op == u"<>" ? RankEqual : RankLess;
    return {operand(collated(leftSql), RankSum) + ' ' + op.toLatin1() + ' ' + operand(rightSql, RankSum),
            ValueType::Boolean, rank};
}

Sql Emitter::like(Expr& expr) {
    Expr& subject = *expr.items[0];
    Expr& pattern = *expr.items[1];
    const Sql text = valueAs(subject, ValueType::Text);
    const Sql against = valueAs(pattern, ValueType::Text);
    QByteArray call = "ts_like(" + against.text + ", " + text.text;
    if (expr.items.size() > 2) call += ", " + value(*expr.items[2]).text;
    call += ')';
    const bool ranged = subject.kind == Expr::Kind::Column && pattern.kind == Expr::Kind::Parameter &&
                        pattern.likePrefix && expr.items.size() == 2 && !expr.negated;
    if (!ranged)
        return {expr.negated ? "NOT " + call : call, ValueType::Boolean, expr.negated ? RankNot : RankAtom};
    // The range lets the engine use an index.
    const QByteArray subjectText = operand(collated(text), RankSum);
    return {subjectText + " >= " + parameter(pattern.literal, Parameter::Use::LikeLower) + " AND " +
                subjectText + " < " + parameter(pattern.literal, Parameter::Use::LikeUpper) + " AND " + call,
            ValueType::Boolean, RankAnd};
}

Sql Emitter::between(Expr& expr) {
    Expr& subject = *expr.items[0];
    Expr& low = *expr.items[1];
    Expr& high = *expr.items[2];
    const Sql text = value(subject);
    const Sql lowSql = value(low);
    const Sql highSql = value(high);
    const bool texts =
        text.type == ValueType::Text && lowSql.type <= ValueType::Text && highSql.type <= ValueType::Text;
    if (texts) {
        return {operand(collated(text), RankSum) + (expr.negated ? " NOT BETWEEN " : " BETWEEN ") +
                    operand(lowSql, RankSum) + " AND " + operand(highSql, RankSum),
                ValueType::Boolean, RankEqual};
    }
    const Sql above = comparison(subject, text, low, lowSql, u">="_s);
    const Sql below = comparison(subject, text, high, highSql, u"<="_s);
    const Sql both{above.text + " AND " + below.text, ValueType::Boolean, RankAnd};
    if (!expr.negated) return both;
    return {"NOT (" + both.text + ')', ValueType::Boolean, RankNot};
}

Sql Emitter::in(Expr& expr) {
    std::vector<Sql> values;
    ValueType type = ValueType::Null;
    for (const ExprPtr& item : expr.items) {
        values.push_back(value(*item));
        type = std::max(type, values.back().type);
    }
    for (size_t i = 0; i < values.size(); ++i)
        values[i] = convertedTo(*expr.items[i], values[i], type);
    QByteArray text = operand(collated(values[0]), RankSum) + (expr.negated ? " NOT IN (" : " IN (");
    for (size_t i = 1; i < values.size(); ++i)
        text += (i > 1 ? ", " : "") + values[i].text;
    return {text + ')', ValueType::Boolean, RankEqual};
}

Sql Emitter::inSelect(Expr& expr) {
    const Sql subject = value(*expr.items[0]);
    Prepared inner = subquery(*expr.select);
    if (inner.columns.size() != 1)
        serverError(116, u"Only one expression can be specified in the select list when the subquery is not "
                         "introduced with EXISTS."_s);
    const ValueType type = std::max(subject.type, inner.columns[0].type);
    return {operand(collated(convertedTo(*expr.items[0], subject, type)), RankSum) +
                (expr.negated ? " NOT IN (" : " IN (") + finish(inner, {{type}, false, false}) + ')',
            ValueType::Boolean, RankEqual};
}

} // namespace liaowu::dialect
