#include "data/dialect/parser.h"
#include "data/dialect/refuse.h"

namespace liaowu::dialect {

std::unique_ptr<Select> Parser::select() {
    const Nested nested(*this);
    auto result = std::make_unique<Select>();
    bool unionAll = false;
    for (;;) {
        if (result->arms.size() == 400) notCovered(u"A union of so many selects"_s);
        SelectArm next = arm();
        next.unionAll = unionAll;
        result->arms.push_back(std::move(next));
        if (isWord(u"except") || isWord(u"intersect")) notCovered(peek().text.toUpper());
        if (!takeWord(u"union")) break;
        unionAll = takeWord(u"all");
    }
    orderBy(*result);
    return result;
}

SelectArm Parser::arm() {
    SelectArm result;
    result.offset = peek().offset;
    if (takeSymbol(u"(")) {
        result.nested = select();
        expectSymbol(u")");
        return result;
    }
    expectWord(u"select");
    result.distinct = takeWord(u"distinct");
    if (!result.distinct) takeWord(u"all");
    if (takeWord(u"top")) {
        const bool closed = takeSymbol(u"(");
        if (peek().kind != Token::Kind::Integer) unexpected();
        result.top = next().text.toLongLong();
        if (closed) expectSymbol(u")");
        if (isWord(u"percent")) notCovered(u"TOP ... PERCENT"_s);
        if (isWord(u"with")) notCovered(u"TOP ... WITH TIES"_s);
    }
    do
        result.items.push_back(selectItem());
    while (takeSymbol(u","));
    if (isWord(u"into")) notCovered(u"SELECT INTO"_s);
    if (takeWord(u"from")) {
        do
            result.from.push_back(joined());
        while (takeSymbol(u","));
    }
    if (takeWord(u"where")) result.where = expression();
    if (takeWord(u"group")) {
        expectWord(u"by");
        do
            result.groupBy.push_back(sum());
        while (takeSymbol(u","));
    }
    if (takeWord(u"having")) result.having = expression();
    return result;
}

void Parser::orderBy(Select& into) {
    if (!takeWord(u"order")) return;
    expectWord(u"by");
    do {
        OrderItem item;
        item.value = sum();
        if (takeWord(u"desc")) {
            item.descending = true;
        } else {
            takeWord(u"asc");
        }
        into.orderBy.push_back(std::move(item));
    } while (takeSymbol(u","));
    if (isWord(u"offset")) notCovered(u"OFFSET"_s);
}

SelectItem Parser::selectItem() {
    SelectItem item;
    item.offset = peek().offset;
    if (takeSymbol(u"*")) return item;
    // A star behind a table: find it before the name is taken for a column.
    size_t ahead = 0;
    while (isName(ahead) && isSymbol(u".", ahead + 1)) {
        if (isSymbol(u"*", ahead + 2)) {
            item.starQualifier = peek(ahead).text;
            for (size_t i = 0; i < ahead + 3; ++i)
                next();
            return item;
        }
        ahead += isSymbol(u".", ahead + 2) ? 3 : 2;
    }
    if (isName() && isSymbol(u"=", 1)) {
        item.alias = name();
        next();
        item.value = sum();
        return item;
    }
    item.value = sum();
    item.alias = itemAlias().value_or(QString());
    return item;
}

std::optional<QString> Parser::itemAlias() {
    const bool as = takeWord(u"as");
    if (peek().kind == Token::Kind::Text) return next().text;
    if (as || isName()) return name();
    return std::nullopt;
}

std::optional<TableRef::Join> Parser::joinWord() {
    using Join = TableRef::Join;
    const auto outer = [this](Join join) {
        next();
        takeWord(u"outer");
        expectWord(u"join");
        return join;
    };
    if (isWord(u"left")) return outer(Join::Left);
    if (isWord(u"right")) return outer(Join::Right);
    if (isWord(u"full")) return outer(Join::Full);
    if (takeWord(u"join")) return Join::Inner;
    if (takeWord(u"inner")) {
        expectWord(u"join");
        return Join::Inner;
    }
    if (takeWord(u"cross")) {
        if (!isWord(u"join")) notCovered(u"CROSS APPLY"_s);
        next();
        return Join::Cross;
    }
    return std::nullopt;
}

std::unique_ptr<TableRef> Parser::joined() {
    return joinedFrom(tablePrimary());
}

std::unique_ptr<TableRef> Parser::joinedFrom(std::unique_ptr<TableRef> left) {
    const Nested nested(*this);
    for (int length = 0;; ++length) {
        const qsizetype offset = peek().offset;
        const std::optional<TableRef::Join> join = joinWord();
        if (!join) return left;
        if (length == 60) notCovered(u"A join of so many tables"_s);
        auto result = std::make_unique<TableRef>();
        result->kind = TableRef::Kind::Join;
        result->join = *join;
        result->offset = offset;
        result->left = std::move(left);
        result->right = tablePrimary();
        if (*join != TableRef::Join::Cross) {
            // "a join b join c on .. on ..": joins that come before the condition belong to the right side.
            if (!isWord(u"on")) result->right = joinedFrom(std::move(result->right));
            expectWord(u"on");
            result->on = expression();
        }
        left = std::move(result);
    }
}

std::unique_ptr<TableRef> Parser::tablePrimary() {
    const Nested nested(*this);
    auto result = std::make_unique<TableRef>();
    result->offset = peek().offset;
    if (isSymbol(u"(") && !isWord(u"select", 1)) {
        next();
        result = joined();
        expectSymbol(u")");
        return result;
    }
    if (takeSymbol(u"(")) {
        result->kind = TableRef::Kind::Derived;
        result->derived = select();
        expectSymbol(u")");
    } else {
        result->name = objectName();
        if (isSymbol(u"(")) notCovered(u"A function or hint in FROM"_s);
    }
    if (takeWord(u"as") || isName()) {
        result->alias = name();
    } else if (result->kind == TableRef::Kind::Derived) {
        unexpected();
    }
    if (isWord(u"with") || isSymbol(u"(")) notCovered(u"A table hint"_s);
    return result;
}

} // namespace liaowu::dialect
