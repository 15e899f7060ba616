#include "data/dialect/parser.h"
#include "data/dialect/refuse.h"
#include <algorithm>

namespace liaowu::dialect {

namespace {

/// The engine bounds the depth of a tree, and a chain is as deep as it is long.
constexpr int maxOperations = 600;

bool isAggregateName(QStringView name) {
    static constexpr std::array<QStringView, 5> names = {u"count", u"sum", u"avg", u"min", u"max"};
    return std::any_of(names.begin(), names.end(), [&](QStringView known) { return sameName(known, name); });
}

} // namespace

ExprPtr Parser::make(Expr::Kind kind) const {
    auto result = std::make_unique<Expr>();
    result->kind = kind;
    result->offset = peek().offset;
    return result;
}

ExprPtr Parser::expression() {
    const Nested nested(*this);
    ExprPtr first = conjunction();
    if (!isWord(u"or")) return first;
    ExprPtr result = make(Expr::Kind::Or);
    result->items.push_back(std::move(first));
    while (takeWord(u"or"))
        result->items.push_back(conjunction());
    return result;
}

ExprPtr Parser::conjunction() {
    ExprPtr first = negation();
    if (!isWord(u"and")) return first;
    ExprPtr result = make(Expr::Kind::And);
    result->items.push_back(std::move(first));
    while (takeWord(u"and"))
        result->items.push_back(negation());
    return result;
}

ExprPtr Parser::negation() {
    if (!isWord(u"not")) return predicate();
    const Nested nested(*this);
    ExprPtr result = make(Expr::Kind::Not);
    next();
    result->items.push_back(negation());
    return result;
}

ExprPtr Parser::predicate() {
    ExprPtr left = sum();
    static constexpr std::array<std::pair<QStringView, QStringView>, 9> comparisons = {{{u"=", u"="},
                                                                                        {u"<>", u"<>"},
                                                                                        {u"!=", u"<>"},
                                                                                        {u"<", u"<"},
                                                                                        {u"<=", u"<="},
                                                                                        {u">", u">"},
                                                                                        {u">=", u">="},
                                                                                        {u"!<", u">="},
                                                                                        {u"!>", u"<="}}};
    for (const auto& [written, meant] : comparisons) {
        if (!isSymbol(written)) continue;
        ExprPtr result = make(Expr::Kind::Compare);
        result->name = meant.toString();
        next();
        if (isWord(u"all") || isWord(u"any") || isWord(u"some")) notCovered(peek().text.toUpper());
        result->items.push_back(std::move(left));
        result->items.push_back(sum());
        return result;
    }
    if (isWord(u"is")) {
        ExprPtr result = make(Expr::Kind::IsNull);
        next();
        result->negated = takeWord(u"not");
        expectWord(u"null");
        result->items.push_back(std::move(left));
        return result;
    }
    const bool negated = isWord(u"not") && (isWord(u"like", 1) || isWord(u"between", 1) || isWord(u"in", 1));
    if (negated) next();
    ExprPtr result;
    if (isWord(u"like")) {
        result = make(Expr::Kind::Like);
        next();
        result->items.push_back(std::move(left));
        result->items.push_back(sum());
        if (takeWord(u"escape")) {
            if (peek().kind != Token::Kind::Text || peek().text.size() != 1) unexpected();
            result->items.push_back(literal());
        }
    } else if (isWord(u"between")) {
        result = make(Expr::Kind::Between);
        next();
        result->items.push_back(std::move(left));
        result->items.push_back(sum());
        expectWord(u"and");
        result->items.push_back(sum());
    } else if (isWord(u"in")) {
        result = inPredicate(std::move(left));
    } else {
        return left;
    }
    result->negated = negated;
    return result;
}

ExprPtr Parser::inPredicate(ExprPtr value) {
    const Nested nested(*this);
    ExprPtr result = make(Expr::Kind::In);
    next();
    expectSymbol(u"(");
    result->items.push_back(std::move(value));
    if (isWord(u"select")) {
        result->kind = Expr::Kind::InSelect;
        result->select = select();
    } else {
        do
            result->items.push_back(sum());
        while (takeSymbol(u","));
    }
    expectSymbol(u")");
    return result;
}

/// The operator at hand between `left` and what follows.
ExprPtr Parser::operation(ExprPtr left) {
    if (++operations > maxOperations) notCovered(u"A statement of so many operations"_s);
    ExprPtr result = make(Expr::Kind::Arithmetic);
    result->name = next().text;
    const bool isSum = result->name == u"+" || result->name == u"-";
    result->items.push_back(std::move(left));
    result->items.push_back(isSum ? product() : unary());
    return result;
}

ExprPtr Parser::sum() {
    ExprPtr left = product();
    while (isSymbol(u"+") || isSymbol(u"-"))
        left = operation(std::move(left));
    if (isSymbol(u"&") || isSymbol(u"|") || isSymbol(u"^")) notCovered(u"The operator "_s + peek().text);
    return left;
}

ExprPtr Parser::product() {
    ExprPtr left = unary();
    while (isSymbol(u"*") || isSymbol(u"/") || isSymbol(u"%"))
        left = operation(std::move(left));
    if (isWord(u"collate")) notCovered(u"COLLATE"_s);
    return left;
}

ExprPtr Parser::unary() {
    if (isSymbol(u"~")) notCovered(u"The operator ~"_s);
    if (!isSymbol(u"-") && !isSymbol(u"+")) return primary();
    const Nested nested(*this);
    const bool minus = isSymbol(u"-");
    ExprPtr result = make(Expr::Kind::Minus);
    next();
    ExprPtr operand = unary();
    if (!minus) return operand;
    result->items.push_back(std::move(operand));
    return result;
}

ExprPtr Parser::literal() {
    const Token& token = peek();
    ExprPtr result = make(Expr::Kind::Parameter);
    switch (token.kind) {
    case Token::Kind::Parameter:
        result->literal = token.literal;
        result->likePrefix = token.likePrefix;
        result->literalType = token.text == u"i"   ? ValueType::Integer
                              : token.text == u"e" ? ValueType::Float
                              : token.text == u"f" ? ValueType::Numeric
                                                   : ValueType::Text;
        break;
    case Token::Kind::Text:
        result->kind = Expr::Kind::TextLiteral;
        break;
    case Token::Kind::Integer:
        result->kind = Expr::Kind::IntegerLiteral;
        break;
    case Token::Kind::Float:
        result->kind = Expr::Kind::FloatLiteral;
        result->literalType = token.exponent ? ValueType::Float : ValueType::Numeric;
        break;
    default:
        unexpected();
    }
    result->name = token.text;
    next();
    return result;
}

ExprPtr Parser::primary() {
    switch (peek().kind) {
    case Token::Kind::Parameter:
    case Token::Kind::Text:
    case Token::Kind::Integer:
    case Token::Kind::Float:
        return literal();
    case Token::Kind::Name:
        return isSymbol(u".", 1) || isSymbol(u"(", 1) ? call() : column();
    case Token::Kind::Symbol:
        if (isSymbol(u"(")) return parenthesized();
        unexpected();
    case Token::Kind::End:
        unexpected();
    case Token::Kind::Word:
        break;
    }
    if (isWord(u"null")) {
        ExprPtr result = make(Expr::Kind::Null);
        next();
        return result;
    }
    if (isWord(u"case")) return caseExpression();
    if (isWord(u"exists")) {
        const Nested nested(*this);
        ExprPtr result = make(Expr::Kind::Exists);
        next();
        expectSymbol(u"(");
        result->select = select();
        expectSymbol(u")");
        return result;
    }
    if (isWord(u"cast") && isSymbol(u"(", 1)) return castExpression();
    if (isWord(u"convert")) return convertExpression();
    return call();
}

ExprPtr Parser::parenthesized() {
    const Nested nested(*this);
    ExprPtr result;
    if (isWord(u"select", 1)) {
        result = make(Expr::Kind::Subquery);
        next();
        result->select = select();
    } else {
        next();
        result = expression();
    }
    expectSymbol(u")");
    return result;
}

ExprPtr Parser::caseExpression() {
    const Nested nested(*this);
    ExprPtr result = make(Expr::Kind::Case);
    next();
    if (!isWord(u"when")) result->base = sum();
    do {
        expectWord(u"when");
        result->items.push_back(result->base ? sum() : expression());
        expectWord(u"then");
        result->items.push_back(sum());
    } while (isWord(u"when"));
    if (takeWord(u"else")) result->items.push_back(sum());
    expectWord(u"end");
    return result;
}

ExprPtr Parser::castExpression() {
    const Nested nested(*this);
    ExprPtr result = make(Expr::Kind::Convert);
    next();
    expectSymbol(u"(");
    result->items.push_back(sum());
    expectWord(u"as");
    result->type = typeName(30);
    expectSymbol(u")");
    return result;
}

ExprPtr Parser::convertExpression() {
    const Nested nested(*this);
    ExprPtr result = make(Expr::Kind::Convert);
    next();
    expectSymbol(u"(");
    result->type = typeName(30);
    expectSymbol(u",");
    result->items.push_back(sum());
    if (takeSymbol(u",")) {
        if (peek().kind != Token::Kind::Integer) unexpected();
        result->style = next().text.left(9).toInt();
    }
    expectSymbol(u")");
    return result;
}

ExprPtr Parser::call() {
    const Nested nested(*this);
    // left and right are keywords that are functions here.
    const bool sided = (isWord(u"left") || isWord(u"right") || isWord(u"coalesce") || isWord(u"nullif")) &&
                       isSymbol(u"(", 1);
    size_t last = 0;
    while (isSymbol(u".", last + 1) && isName(last + 2))
        last += 2;
    if (!isSymbol(u"(", last + 1)) return column();
    ExprPtr result = make(Expr::Kind::Call);
    if (sided) {
        result->written = next().text;
    } else {
        while (last > 0) {
            result->qualifier = name();
            next();
            last -= 2;
        }
        result->written = name();
    }
    result->name = result->written.toLower();
    next();
    if (result->qualifier.isEmpty() && isAggregateName(result->name)) {
        result->kind = Expr::Kind::Aggregate;
        result->distinct = takeWord(u"distinct");
        if (!result->distinct) takeWord(u"all");
        if (result->name == u"count" && !result->distinct && takeSymbol(u"*")) {
            expectSymbol(u")");
            return result;
        }
    }
    if (!isSymbol(u")")) {
        do {
            if (result->items.size() >= 100) notCovered(u"A call with so many arguments"_s);
            result->items.push_back(sum());
        } while (takeSymbol(u","));
    }
    expectSymbol(u")");
    if (isWord(u"over")) notCovered(u"OVER"_s);
    return result;
}

ExprPtr Parser::column() {
    ExprPtr result = make(Expr::Kind::Column);
    result->name = name();
    for (int parts = 1; takeSymbol(u"."); ++parts) {
        if (parts == 4) unexpected();
        if (isSymbol(u".")) continue;
        result->qualifier = result->name;
        result->name = name();
    }
    return result;
}

} // namespace liaowu::dialect
