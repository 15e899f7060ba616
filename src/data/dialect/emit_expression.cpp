#include "data/dialect/emit.h"
#include "data/dialect/lexer.h"
#include "data/dialect/refuse.h"
#include <algorithm>

namespace liaowu::dialect {

QByteArray quotedName(const QString& name) {
    QString doubled = name;
    return u'"' + doubled.replace(u'"', u"\"\""_s).toUtf8() + '"';
}

QByteArray quotedText(const QString& text) {
    QString doubled = text;
    return '\'' + doubled.replace(u'\'', u"''"_s).toUtf8() + '\'';
}

QByteArray operand(const Sql& sql, int rank) {
    return sql.rank < rank ? '(' + sql.text + ')' : sql.text;
}

Sql collated(const Sql& sql) {
    if (sql.type != ValueType::Text) return sql;
    return {operand(sql, RankCollate) + " COLLATE " + collationName, sql.type, RankCollate};
}

void serverError(int number, const QString& text) {
    throw DatabaseError(number, text);
}

Sql Emitter::value(Expr& expr) {
    Sql sql = emit(expr);
    if (sql.type == ValueType::Boolean)
        refuse(expr.offset, u"A condition stands where a value is expected."_s);
    return sql;
}

Sql Emitter::condition(Expr& expr) {
    Sql sql = emit(expr);
    if (sql.type != ValueType::Boolean)
        serverError(
            4145, u"An expression of non-boolean type specified in a context where a condition is expected. "
                  "(position %1)"_s.arg(expr.offset + 1));
    return sql;
}

Sql Emitter::emit(Expr& expr) {
    switch (expr.kind) {
    case Expr::Kind::Column:
        return column(expr);
    case Expr::Kind::Parameter:
    case Expr::Kind::TextLiteral:
    case Expr::Kind::IntegerLiteral:
    case Expr::Kind::FloatLiteral:
    case Expr::Kind::Null:
        return literal(expr);
    case Expr::Kind::Minus:
        return minus(expr);
    case Expr::Kind::Arithmetic:
        return arithmetic(expr);
    case Expr::Kind::Compare:
        return compare(*expr.items[0], *expr.items[1], expr.name);
    case Expr::Kind::And:
        return chain(expr, " AND ", RankAnd);
    case Expr::Kind::Or:
        return chain(expr, " OR ", RankOr);
    case Expr::Kind::Not:
        return {"NOT " + operand(condition(*expr.items[0]), RankNot), ValueType::Boolean, RankNot};
    case Expr::Kind::Like:
        return like(expr);
    case Expr::Kind::Between:
        return between(expr);
    case Expr::Kind::In:
        return in(expr);
    case Expr::Kind::InSelect:
        return inSelect(expr);
    case Expr::Kind::Exists: {
        Prepared inner = subquery(*expr.select);
        return {"EXISTS(" + finish(inner, {}) + ")", ValueType::Boolean, RankAtom};
    }
    case Expr::Kind::IsNull:
        return {operand(value(*expr.items[0]), RankSum) + (expr.negated ? " IS NOT NULL" : " IS NULL"),
                ValueType::Boolean, RankEqual};
    case Expr::Kind::Case:
        return caseOf(expr);
    case Expr::Kind::Call:
        return call(expr);
    case Expr::Kind::Aggregate:
        return aggregate(expr);
    case Expr::Kind::Convert:
        return conversion(expr);
    case Expr::Kind::Subquery:
        return scalar(expr);
    }
    Q_UNREACHABLE();
}

QByteArray Emitter::parameter(int literal, Parameter::Use use) {
    int& number = numbers[{literal, static_cast<int>(use)}];
    if (number == 0) {
        translation.parameters.push_back({literal, use});
        number = static_cast<int>(translation.parameters.size());
    }
    return '?' + QByteArray::number(number);
}

Sql Emitter::literal(const Expr& expr) {
    switch (expr.kind) {
    case Expr::Kind::Parameter:
        return {parameter(expr.literal, Parameter::Use::AsIs), expr.literalType, RankAtom};
    case Expr::Kind::TextLiteral:
        return {quotedText(expr.name), ValueType::Text, RankAtom};
    case Expr::Kind::IntegerLiteral:
        return {expr.name.toLatin1(), ValueType::Integer, RankAtom};
    case Expr::Kind::FloatLiteral: {
        const QByteArray digits = expr.name.toLatin1();
        // Without point or exponent (too many digits for an integer) the engine would still read a float.
        return {digits, expr.literalType, RankAtom};
    }
    default:
        return {"NULL", ValueType::Null, RankAtom};
    }
}

Sql Emitter::convertedTo(const Expr& expr, const Sql& sql, ValueType to) {
    if (to == ValueType::Text && sql.type == ValueType::Numeric) {
        // A decimal keeps the digits with which it was written.
        if (expr.kind == Expr::Kind::Parameter)
            return {parameter(expr.literal, Parameter::Use::Spelling), ValueType::Text, RankAtom};
        if (expr.kind == Expr::Kind::FloatLiteral) return {quotedText(expr.name), ValueType::Text, RankAtom};
    }
    if (sql.type == ValueType::Null) return {sql.text, to, sql.rank};
    if (sql.type == to || to == ValueType::Null) return sql;
    const QByteArray text = converted(sql.text, sql.type, to);
    return {text, to, text == sql.text ? sql.rank : static_cast<int>(RankAtom)};
}

bool Emitter::resolve(Expr& expr, Scope& in) {
    bool qualifierKnown = false;
    for (size_t i = in.firstVisible; i < in.sources.size(); ++i) {
        const Source& source = *in.sources[i];
        if (!expr.qualifier.isEmpty()) {
            if (!sameName(source.name, expr.qualifier)) continue;
            qualifierKnown = true;
        }
        for (size_t c = 0; c < source.columns.size(); ++c) {
            if (!sameName(source.columns[c].name, expr.name)) continue;
            if (expr.source) serverError(209, u"Ambiguous column name '%1'."_s.arg(expr.name));
            expr.source = &source;
            expr.column = static_cast<int>(c);
        }
    }
    if (!expr.source && qualifierKnown)
        serverError(DatabaseError::InvalidColumn, u"Invalid column name '%1'."_s.arg(expr.name));
    return expr.source != nullptr;
}

Sql Emitter::column(Expr& expr) {
    expr.source = nullptr;
    for (Scope* in = scope; in; in = in->parent) {
        if (!resolve(expr, *in)) continue;
        if (in != scope) {
            for (Scope* between = scope; between != in; between = between->parent)
                between->outerInAggregate = between->outerInAggregate || between->inAggregate;
        }
        const Source::Column& found = expr.source->columns[static_cast<size_t>(expr.column)];
        return {expr.source->alias + '.' + quotedName(found.name), found.type, RankAtom};
    }
    if (expr.qualifier.isEmpty())
        serverError(DatabaseError::InvalidColumn, u"Invalid column name '%1'."_s.arg(expr.name));
    serverError(4104,
                u"The multi-part identifier \"%1.%2\" could not be bound."_s.arg(expr.qualifier, expr.name));
}

Sql Emitter::minus(Expr& expr) {
    const Sql inner = value(*expr.items[0]);
    if (inner.type == ValueType::Text || inner.type == ValueType::DateTime)
        serverError(8117,
                    u"Operand data type %1 is invalid for minus operator."_s.arg(serverName(inner.type)));
    return {'-' + operand(inner, RankAtom), inner.type == ValueType::Null ? ValueType::Integer : inner.type,
            RankUnary};
}

Sql Emitter::arithmetic(Expr& expr) {
    const Sql left = value(*expr.items[0]);
    const Sql right = value(*expr.items[1]);
    const char op = expr.name[0].toLatin1();
    ValueType type = std::max(left.type, right.type);
    const auto invalid = [](ValueType operandType, const QString& name) {
        serverError(8117,
                    u"Operand data type %1 is invalid for %2 operator."_s.arg(serverName(operandType), name));
    };
    if (type == ValueType::Text) {
        if (op == '+')
            return {operand(left, RankConcat) + " || " + operand(right, RankConcat), type, RankConcat};
        invalid(type, op == '-'   ? u"subtract"_s
                      : op == '*' ? u"multiply"_s
                      : op == '/' ? u"divide"_s
                                  : u"modulo"_s);
    }
    if (type == ValueType::DateTime) {
        const ValueType other = std::min(left.type, right.type);
        const bool dayCount =
            other == ValueType::Integer || other == ValueType::Float || other == ValueType::Numeric;
        if (!dayCount || (op == '-' && left.type != ValueType::DateTime) || (op != '+' && op != '-'))
            refuse(expr.offset, u"This arithmetic with dates is not covered by the embedded engine."_s);
        const Sql& date = left.type == type ? left : right;
        const Sql& days = left.type == type ? right : left;
        const QByteArray count = op == '-' ? "-(" + days.text + ")" : days.text;
        return {"ts_dateplus(" + date.text + ", " + count + ")", type, RankAtom};
    }
    if (type == ValueType::Null) type = ValueType::Integer;
    const Sql a = convertedTo(*expr.items[0], left, type);
    const Sql b = convertedTo(*expr.items[1], right, type);
    if (op == '/')
        return {(type == ValueType::Integer ? "ts_idiv(" : "ts_fdiv(") + a.text + ", " + b.text + ")", type,
                RankAtom};
    if (op == '%') {
        if (type == ValueType::Float) invalid(type, u"modulo"_s);
        return {(type == ValueType::Integer ? "ts_imod(" : "ts_fmod(") + a.text + ", " + b.text + ")", type,
                RankAtom};
    }
    const int rank = op == '*' ? RankProduct : RankSum;
    return {operand(a, rank) + ' ' + op + ' ' + operand(b, rank + 1), type, rank};
}

Sql Emitter::conversion(Expr& expr) {
    Expr& inner = *expr.items[0];
    const Sql from = value(inner);
    const TypeName& to = expr.type;
    if (to.type != ValueType::Text) {
        if (to.type == ValueType::DateTime && from.type == ValueType::Text && expr.style)
            return {"ts_datetime(" + from.text + ", " + QByteArray::number(*expr.style) + ")", to.type,
                    RankAtom};
        return convertedTo(inner, from, to.type);
    }
    const QByteArray limit = to.length ? ", " + QByteArray::number(*to.length) : QByteArray();
    if (from.type == ValueType::Null) return {from.text, ValueType::Text, from.rank};
    if (from.type == ValueType::DateTime) {
        const QByteArray style = ", " + QByteArray::number(expr.style.value_or(0));
        const QByteArray text = "ts_datetext(" + from.text + style + ")";
        return {to.length ? "ts_cut(" + text + limit + ")" : text, ValueType::Text, RankAtom};
    }
    if (from.type == ValueType::Text)
        return to.length ? Sql{"ts_cut(" + from.text + limit + ")", ValueType::Text, RankAtom} : from;
    if (expr.style.value_or(0) != 0)
        refuse(expr.offset, u"This style of a number is not covered by the embedded engine."_s);
    const Sql text = convertedTo(inner, from, ValueType::Text);
    if (!to.length) return text;
    const bool spelled = !text.text.startsWith("ts_text(");
    return {spelled ? "ts_text(" + text.text + limit + ")" : "ts_text(" + from.text + limit + ")",
            ValueType::Text, RankAtom};
}

Sql Emitter::caseOf(Expr& expr) {
    const size_t pairs = expr.items.size() / 2;
    const bool hasElse = expr.items.size() % 2 == 1;
    QByteArray text = "CASE";
    std::vector<Sql> whens;
    if (expr.base) {
        Sql base = value(*expr.base);
        ValueType type = base.type;
        for (size_t i = 0; i < pairs; ++i) {
            whens.push_back(value(*expr.items[2 * i]));
            type = std::max(type, whens.back().type);
        }
        for (size_t i = 0; i < pairs; ++i)
            whens[i] = convertedTo(*expr.items[2 * i], whens[i], type);
        base = collated(convertedTo(*expr.base, base, type));
        text += ' ' + operand(base, RankCollate);
    } else {
        for (size_t i = 0; i < pairs; ++i)
            whens.push_back(condition(*expr.items[2 * i]));
    }
    std::vector<Sql> results;
    ValueType type = ValueType::Null;
    for (size_t i = 0; i < expr.items.size(); ++i) {
        if (i < 2 * pairs && i % 2 == 0) continue;
        results.push_back(value(*expr.items[i]));
        type = std::max(type, results.back().type);
    }
    for (size_t i = 0; i < pairs; ++i)
        text +=
            " WHEN " + whens[i].text + " THEN " + convertedTo(*expr.items[2 * i + 1], results[i], type).text;
    if (hasElse) text += " ELSE " + convertedTo(*expr.items.back(), results.back(), type).text;
    return {text + " END", type, RankAtom};
}

Sql Emitter::aggregate(Expr& expr) {
    if (scope == nullptr || scope->clause == Clause::Where)
        serverError(
            147, u"An aggregate may not appear in the WHERE clause unless it is in a subquery contained in a "
                 "HAVING clause or a select list, and the column being aggregated is an outer reference."_s);
    if (scope->clause == Clause::GroupBy)
        serverError(144,
                    u"Cannot use an aggregate or a subquery in an expression used for the group by list of a "
                    "GROUP BY clause."_s);
    if (scope->clause == Clause::On) refuse(expr.offset, u"An aggregate stands where none is allowed."_s);
    if (scope->inAggregate)
        serverError(130,
                    u"Cannot perform an aggregate function on an expression containing an aggregate or a "
                    "subquery."_s);
    scope->aggregated = true;
    if (expr.items.empty() && expr.name == u"count" && !expr.distinct)
        return {"count(*)", ValueType::Integer, RankAtom};
    if (expr.items.size() != 1) serverError(174, u"The %1 function requires 1 argument(s)."_s.arg(expr.name));
    scope->inAggregate = true;
    scope->outerInAggregate = false;
    const Sql inner = value(*expr.items[0]);
    scope->inAggregate = false;
    if (scope->outerInAggregate)
        refuse(expr.offset,
               u"An aggregate over a column of an outer select is not covered by the embedded engine."_s);
    const QByteArray opening = expr.name.toLatin1() + (expr.distinct ? "(DISTINCT " : "(");
    const QByteArray call = opening + collated(inner).text + ')';
    if (expr.name == u"count") return {call, ValueType::Integer, RankAtom};
    if (expr.name == u"min" || expr.name == u"max") return {call, inner.type, RankAtom};
    if (inner.type == ValueType::Text || inner.type == ValueType::DateTime || inner.type == ValueType::Null)
        serverError(8117, u"Operand data type %1 is invalid for %2 operator."_s.arg(serverName(inner.type),
                                                                                    expr.name));
    if (expr.name == u"avg" && inner.type == ValueType::Integer)
        return {"CAST(" + call + " AS INTEGER)", inner.type, RankAtom};
    return {call, inner.type, RankAtom};
}

Prepared Emitter::subquery(Select& select) {
    if (scope && scope->inAggregate)
        serverError(130,
                    u"Cannot perform an aggregate function on an expression containing an aggregate or a "
                    "subquery."_s);
    if (scope && scope->clause == Clause::GroupBy)
        serverError(144,
                    u"Cannot use an aggregate or a subquery in an expression used for the group by list of a "
                    "GROUP BY clause."_s);
    return prepare(select, scope, true);
}

Sql Emitter::scalar(Expr& expr) {
    SelectArm& first = expr.select->arms.front();
    // One row for sure: nothing to watch over.
    const bool single = expr.select->arms.size() == 1 && !first.nested && first.top && *first.top <= 1;
    Prepared inner = subquery(*expr.select);
    if (inner.columns.size() != 1)
        serverError(116, u"Only one expression can be specified in the select list when the subquery is not "
                         "introduced with EXISTS."_s);
    const ValueType type = inner.columns[0].type;
    const bool one =
        single || (inner.cores.size() == 1 && inner.cores[0].aggregated && !inner.cores[0].grouped);
    if (one) return {'(' + finish(inner, {}) + ')', type, RankAtom};
    return {"(SELECT ts_single(\"1\") FROM (" + finish(inner, {{}, false, true}) + "))", type, RankAtom};
}

} // namespace liaowu::dialect
