#include "data/dialect/parser.h"
#include "data/dialect/refuse.h"

namespace liaowu::dialect {

Statement Parser::createStatement() {
    if (isWord(u"table", 1)) return createTable();
    if (isWord(u"view", 1)) return createView();
    next();
    const bool unique = takeWord(u"unique");
    if (takeWord(u"nonclustered") || takeWord(u"clustered")) {
    }
    if (isWord(u"index")) return createIndex(unique);
    if (peek().kind == Token::Kind::Word) notCovered(u"CREATE "_s + peek().text.toUpper());
    unexpected();
}

Statement Parser::createTable() {
    Statement result = start(Statement::Kind::CreateTable);
    next();
    next();
    objectInto(result);
    expectSymbol(u"(");
    do {
        if (isSymbol(u")")) break; // a comma before the end is allowed
        if (!keyConstraint(result.keys)) result.columns.push_back(columnDefinition(result.keys));
    } while (takeSymbol(u","));
    expectSymbol(u")");
    if (result.columns.empty()) unexpected();
    return result;
}

bool Parser::keyConstraint(std::vector<KeyDefinition>& keys) {
    KeyDefinition key;
    if (takeWord(u"constraint")) key.name = name();
    if (!isWord(u"primary") && !isWord(u"unique")) {
        if (!key.name.isEmpty() || isWord(u"check") || isWord(u"foreign")) notCovered(u"This constraint"_s);
        return false;
    }
    key.primary = isWord(u"primary");
    next();
    if (key.primary) expectWord(u"key");
    if (!takeWord(u"clustered")) takeWord(u"nonclustered");
    expectSymbol(u"(");
    do {
        key.columns.push_back(name());
        if (!takeWord(u"asc")) takeWord(u"desc");
    } while (takeSymbol(u","));
    expectSymbol(u")");
    keys.push_back(std::move(key));
    return true;
}

ColumnDefinition Parser::columnDefinition(std::vector<KeyDefinition>& keys) {
    ColumnDefinition result;
    result.offset = peek().offset;
    result.name = name();
    result.type = typeName(1);
    for (;;) {
        QString constraint;
        if (takeWord(u"constraint")) constraint = name();
        if (takeWord(u"default")) {
            const bool closed = takeSymbol(u"(");
            const bool minus = takeSymbol(u"-");
            ExprPtr value = isWord(u"null") ? primary() : literal();
            if (minus) {
                ExprPtr negative = make(Expr::Kind::Minus);
                negative->items.push_back(std::move(value));
                value = std::move(negative);
            }
            result.defaultValue = std::move(value);
            if (closed) expectSymbol(u")");
        } else if (takeWord(u"not")) {
            expectWord(u"null");
            result.notNull = true;
        } else if (takeWord(u"null")) {
            continue;
        } else if (isWord(u"primary") || isWord(u"unique")) {
            KeyDefinition key;
            key.name = constraint;
            key.primary = isWord(u"primary");
            next();
            if (key.primary) expectWord(u"key");
            if (!takeWord(u"clustered")) takeWord(u"nonclustered");
            key.columns.push_back(result.name);
            keys.push_back(std::move(key));
        } else if (isSymbol(u",") || isSymbol(u")") || isSymbol(u";") || peek().kind == Token::Kind::End) {
            return result;
        } else if (peek().kind == Token::Kind::Word) {
            notCovered(peek().text.toUpper() + u" in a column"_s);
        } else {
            unexpected();
        }
    }
}

void Parser::columnList(Statement& statement, bool withOrder) {
    expectSymbol(u"(");
    do {
        const qsizetype offset = peek().offset;
        // An insert may name its table before the column.
        ExprPtr named = column();
        statement.columnNames.emplace_back(named->name, offset);
        if (!withOrder) continue;
        const bool descending = takeWord(u"desc");
        if (!descending) takeWord(u"asc");
        statement.descending.push_back(descending);
    } while (takeSymbol(u","));
    expectSymbol(u")");
}

Statement Parser::createIndex(bool unique) {
    Statement result = start(Statement::Kind::CreateIndex);
    next();
    result.unique = unique;
    result.name = name();
    expectWord(u"on");
    result.nameOffset = peek().offset;
    result.table = objectName();
    columnList(result, true);
    if (isWord(u"where") || isWord(u"include") || isWord(u"with"))
        notCovered(peek().text.toUpper() + u" of an index"_s);
    return result;
}

Statement Parser::createView() {
    Statement result = start(Statement::Kind::CreateView);
    next();
    next();
    objectInto(result);
    if (isSymbol(u"(")) columnList(result, false);
    expectWord(u"as");
    result.select = select();
    return result;
}

Statement Parser::alterStatement() {
    Statement result = start(Statement::Kind::AddColumns);
    next();
    if (!isWord(u"table")) notCovered(u"This ALTER"_s);
    next();
    objectInto(result);
    if (!isWord(u"add")) notCovered(u"This ALTER TABLE"_s);
    next();
    do {
        if (keyConstraint(result.keys)) break;
        result.columns.push_back(columnDefinition(result.keys));
    } while (takeSymbol(u","));
    if (!result.keys.empty()) notCovered(u"Adding a key to a table"_s);
    return result;
}

Statement Parser::dropStatement() {
    Statement result = start(Statement::Kind::DropTable);
    next();
    if (isWord(u"view")) {
        result.kind = Statement::Kind::DropView;
    } else if (isWord(u"index")) {
        result.kind = Statement::Kind::DropIndex;
    } else if (!isWord(u"table")) {
        notCovered(u"This DROP"_s);
    }
    next();
    if (takeWord(u"if")) {
        expectWord(u"exists");
        result.ifExists = true;
    }
    objectInto(result);
    if (result.kind == Statement::Kind::DropIndex && takeWord(u"on")) objectName();
    return result;
}

} // namespace liaowu::dialect
