#include "data/dialect/parser.h"
#include "data/dialect/refuse.h"

namespace liaowu::dialect {

namespace {
constexpr int maxNesting = 60;
}

Parser::Nested::Nested(Parser& in) : parser(in) {
    if (++parser.depth > maxNesting) {
        --parser.depth;
        refuse(parser.peek().offset, u"The statement is nested too deeply."_s);
    }
}

bool Parser::isWord(QStringView word, size_t ahead) const {
    return peek(ahead).kind == Token::Kind::Word && sameName(peek(ahead).text, word);
}

bool Parser::isSymbol(QStringView symbol, size_t ahead) const {
    return peek(ahead).kind == Token::Kind::Symbol && peek(ahead).text == symbol;
}

bool Parser::takeWord(QStringView word) {
    if (!isWord(word)) return false;
    next();
    return true;
}

bool Parser::takeSymbol(QStringView symbol) {
    if (!isSymbol(symbol)) return false;
    next();
    return true;
}

void Parser::expectWord(QStringView word) {
    if (!takeWord(word)) unexpected();
}

void Parser::expectSymbol(QStringView symbol) {
    if (!takeSymbol(symbol)) unexpected();
}

void Parser::unexpected() const {
    const Token& token = peek();
    // At the end the server names the last thing that it read.
    if (token.kind == Token::Kind::End) {
        const QString last = tokens.size() > 1 ? tokens[tokens.size() - 2].text : QString();
        refuse(token.offset, u"Incorrect syntax near '%1'."_s.arg(last));
    }
    const QString near = token.kind == Token::Kind::Parameter ? u"a literal"_s : u"'%1'"_s.arg(token.text);
    refuse(token.offset, u"Incorrect syntax near %1."_s.arg(near));
}

void Parser::notCovered(const QString& what) const {
    refuse(peek().offset, u"%1 is not covered by the embedded engine."_s.arg(what));
}

bool Parser::isName(size_t ahead) const {
    const Token& token = peek(ahead);
    return token.kind == Token::Kind::Name || (token.kind == Token::Kind::Word && !isReserved(token.text));
}

QString Parser::name() {
    if (!isName()) unexpected();
    const QString text = next().text;
    if (text.startsWith(u'@')) notCovered(u"The variable "_s + text);
    return text;
}

QString Parser::objectName() {
    QString last = name();
    for (int parts = 1; takeSymbol(u"."); ++parts) {
        if (parts == 4) unexpected();
        if (isSymbol(u".")) continue;
        last = name();
    }
    return last;
}

TypeName Parser::typeName(int defaultLength) {
    TypeName type;
    const Token& token = peek();
    type.name = name();
    const std::optional<ValueType> known = typeByName(type.name);
    if (!known) refuse(token.offset, u"The type %1 is not covered by the embedded engine."_s.arg(type.name));
    type.type = *known;
    if (type.type == ValueType::Text && !type.name.endsWith(u"text"_s, Qt::CaseInsensitive))
        type.length = defaultLength;
    if (takeSymbol(u"(")) {
        if (takeWord(u"max")) {
            type.length.reset();
        } else if (peek().kind == Token::Kind::Integer && type.type != ValueType::Integer &&
                   type.type != ValueType::DateTime) {
            const qint64 length = peek().text.toLongLong();
            if (length < 1 || length > 8000) unexpected();
            next();
            if (type.type == ValueType::Text) type.length = static_cast<int>(length);
        } else {
            unexpected();
        }
        expectSymbol(u")");
    }
    return type;
}

std::vector<Statement> Parser::parse() {
    std::vector<Statement> statements;
    while (takeSymbol(u";")) {
    }
    while (peek().kind != Token::Kind::End) {
        operations = 0;
        statements.push_back(statement());
        while (takeSymbol(u";")) {
        }
    }
    if (statements.empty()) refuse(0, u"The statement is empty."_s);
    return statements;
}

Statement Parser::statement() {
    if (isWord(u"select") || isSymbol(u"(")) {
        Statement result = start(Statement::Kind::Select);
        result.select = select();
        return result;
    }
    if (isWord(u"insert")) return insertStatement();
    if (isWord(u"update")) return updateStatement();
    if (isWord(u"delete")) return deleteStatement();
    if (isWord(u"create")) return createStatement();
    if (isWord(u"alter")) return alterStatement();
    if (isWord(u"drop")) return dropStatement();
    if (peek().kind == Token::Kind::Word && isReserved(peek().text)) notCovered(peek().text.toUpper());
    unexpected();
}

Statement Parser::start(Statement::Kind kind) {
    Statement result;
    result.kind = kind;
    result.offset = peek().offset;
    return result;
}

void Parser::objectInto(Statement& statement) {
    statement.nameOffset = peek().offset;
    statement.name = objectName();
}

Statement Parser::insertStatement() {
    Statement result = start(Statement::Kind::Insert);
    next();
    takeWord(u"into");
    objectInto(result);
    if (isSymbol(u"(") && !isWord(u"select", 1)) columnList(result, false);
    if (takeWord(u"values")) {
        do {
            expectSymbol(u"(");
            std::vector<ExprPtr> row;
            operations = 0;
            do {
                if (isWord(u"default")) notCovered(u"DEFAULT as a value"_s);
                row.push_back(expression());
            } while (takeSymbol(u","));
            expectSymbol(u")");
            result.rows.push_back(std::move(row));
        } while (takeSymbol(u","));
    } else if (isWord(u"select") || isSymbol(u"(")) {
        result.select = select();
    } else {
        unexpected();
    }
    return result;
}

Statement Parser::updateStatement() {
    Statement result = start(Statement::Kind::Update);
    next();
    if (isWord(u"top")) notCovered(u"UPDATE TOP"_s);
    objectInto(result);
    expectWord(u"set");
    do {
        ExprPtr target = column();
        expectSymbol(u"=");
        result.assignments.emplace_back(std::move(target), sum());
    } while (takeSymbol(u","));
    if (isWord(u"from")) notCovered(u"UPDATE ... FROM"_s);
    if (takeWord(u"where")) result.where = expression();
    return result;
}

Statement Parser::deleteStatement() {
    Statement result = start(Statement::Kind::Delete);
    next();
    if (isWord(u"top")) notCovered(u"DELETE TOP"_s);
    takeWord(u"from");
    objectInto(result);
    if (isWord(u"from")) notCovered(u"DELETE ... FROM ... FROM"_s);
    if (takeWord(u"where")) result.where = expression();
    return result;
}

} // namespace liaowu::dialect
