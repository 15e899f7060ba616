#include "data/dialect/lexer.h"
#include "data/dialect/chars.h"
#include "data/dialect/refuse.h"
#include <QSet>

namespace liaowu::dialect {

namespace {

class Lexer {
public:
    explicit Lexer(const Lifted& from) : lifted(from), shape(from.shape) {}
    std::vector<Token> run();

private:
    const Lifted& lifted;
    QStringView shape;
    qsizetype at = 0;
    qsizetype shift = 0; ///< what lifting took out before `at`
    int literals = 0;
    std::vector<Token> tokens;

    char16_t peek(qsizetype ahead = 0) const {
        return at + ahead < shape.size() ? shape[at + ahead].unicode() : u'\0';
    }
    void skipBlanks();
    void add(Token::Kind kind, const QString& text, qsizetype length) {
        Token token;
        token.kind = kind;
        token.text = text;
        token.offset = at + shift;
        token.end = token.offset + length;
        tokens.push_back(std::move(token));
        at += length;
    }
    /// Behind a name a point leads to its next part, elsewhere to decimals.
    bool afterName() const {
        if (tokens.empty()) return false;
        const Token& last = tokens.back();
        return last.kind == Token::Kind::Name || (last.kind == Token::Kind::Word && !isReserved(last.text));
    }
    void parameter();
    void quoted(Token::Kind kind, char16_t close, qsizetype opening);
    void number();
    void wordOrText();
    void symbol();
};

void Lexer::skipBlanks() {
    for (;;) {
        if (at < shape.size() && isBlank(peek())) {
            ++at;
        } else if (peek() == u'-' && peek(1) == u'-') {
            while (at < shape.size() && peek() != u'\n')
                ++at;
        } else if (peek() == u'/' && peek(1) == u'*') {
            int open = 1;
            at += 2;
            while (open > 0 && at < shape.size()) {
                const bool closes = peek() == u'*' && peek(1) == u'/';
                const bool opens = peek() == u'/' && peek(1) == u'*';
                open += opens ? 1 : closes ? -1 : 0;
                at += opens || closes ? 2 : 1;
            }
        } else {
            return;
        }
    }
}

void Lexer::parameter() {
    const char16_t kind = peek(1);
    if (literals >= static_cast<int>(lifted.literals.size()))
        refuse(at + shift, u"Incorrect syntax near '?'."_s);
    add(Token::Kind::Parameter, QString(QChar(kind)), 2);
    Token& token = tokens.back();
    token.literal = literals;
    token.likePrefix = kind == u'p';
    token.exponent = kind == u'e';
    const int length = lifted.literals[static_cast<size_t>(literals)].length;
    token.end = token.offset + length;
    shift += length - 2;
    ++literals;
}

void Lexer::quoted(Token::Kind kind, char16_t close, qsizetype opening) {
    QString text;
    qsizetype to = at + opening;
    for (; to < shape.size(); ++to) {
        if (shape[to] == close) {
            if (to + 1 == shape.size() || shape[to + 1] != close) break;
            ++to;
        }
        text += shape[to];
    }
    if (to >= shape.size()) refuse(at + shift, u"A quotation mark is not closed."_s);
    if (text.contains(QChar(u'\0'))) refuse(at + shift, u"A name or literal holds a null character."_s);
    if (kind == Token::Kind::Name && text.isEmpty()) refuse(at + shift, u"A name is empty."_s);
    add(kind, text, to + 1 - at);
}

void Lexer::number() {
    qsizetype to = at;
    bool floating = false;
    bool exponent = false;
    const auto digits = [&] {
        while (to < shape.size() && isDigit(shape[to].unicode()))
            ++to;
    };
    digits();
    if (to < shape.size() && shape[to] == u'.') {
        floating = true;
        ++to;
        digits();
    }
    if (to + 1 < shape.size() && (shape[to] == u'e' || shape[to] == u'E')) {
        const bool sign = shape[to + 1] == u'+' || shape[to + 1] == u'-';
        const qsizetype first = to + (sign ? 2 : 1);
        if (first < shape.size() && isDigit(shape[first].unicode())) {
            floating = exponent = true;
            to = first;
            digits();
        }
    }
    const QString text = shape.mid(at, to - at).toString();
    bool fits = true;
    if (!floating) text.toLongLong(&fits);
    if (text.size() > 300) refuse(at + shift, u"The number is too long."_s);
    add(floating || !fits ? Token::Kind::Float : Token::Kind::Integer, text, to - at);
    tokens.back().exponent = exponent;
}

void Lexer::wordOrText() {
    if ((peek() == u'n' || peek() == u'N') && peek(1) == u'\'') {
        quoted(Token::Kind::Text, u'\'', 2);
        return;
    }
    qsizetype to = at;
    while (to < shape.size() && isNamePart(shape[to].unicode()))
        ++to;
    add(Token::Kind::Word, shape.mid(at, to - at).toString(), to - at);
}

void Lexer::symbol() {
    static constexpr std::array<std::u16string_view, 6> pairs = {u"<>", u"<=", u">=", u"!=", u"!<", u"!>"};
    for (const std::u16string_view pair : pairs) {
        if (peek() == pair[0] && peek(1) == pair[1]) {
            add(Token::Kind::Symbol, shape.mid(at, 2).toString(), 2);
            return;
        }
    }
    if (!isSymbol(peek())) refuse(at + shift, u"Incorrect syntax near '%1'."_s.arg(shape[at]));
    add(Token::Kind::Symbol, QString(shape[at]), 1);
}

std::vector<Token> Lexer::run() {
    for (skipBlanks(); at < shape.size(); skipBlanks()) {
        const char16_t c = peek();
        if (c == u'?') {
            parameter();
        } else if (isDigit(c) || (c == u'.' && isDigit(peek(1)) && !afterName())) {
            number();
        } else if (isNamePart(c)) {
            wordOrText();
        } else if (c == u'[' || c == u'"') {
            quoted(Token::Kind::Name, c == u'[' ? u']' : u'"', 1);
        } else if (c == u'\'') {
            quoted(Token::Kind::Text, u'\'', 1);
        } else {
            symbol();
        }
    }
    add(Token::Kind::End, QString(), 0);
    return std::move(tokens);
}

} // namespace

std::vector<Token> tokenize(const Lifted& statement) {
    return Lexer(statement).run();
}

bool isReserved(QStringView word) {
    static const QSet<QString> reserved = [] {
        const QString words =
            u"add all alter and any as asc begin between break by case check close clustered coalesce "
            u"collate column "
            "commit constraint continue convert create cross current cursor database declare default delete "
            "deny desc "
            "distinct drop else end escape except exec execute exists exit fetch for foreign from full "
            "function goto "
            "grant group having holdlock identity if in index inner insert intersect into is join key kill "
            "left like "
            "merge national nonclustered not null nullif of off offsets on open option or order outer over "
            "percent "
            "pivot plan primary print proc procedure public raiserror read references restore return revert "
            "revoke "
            "right rollback rowcount rule save schema select set some table then to top tran transaction "
            "trigger "
            "truncate union unique unpivot update use user values view waitfor when where while with"_s;
        const QStringList list = words.split(u' ');
        return QSet<QString>(list.begin(), list.end());
    }();
    return reserved.contains(word.toString().toLower());
}

} // namespace liaowu::dialect
