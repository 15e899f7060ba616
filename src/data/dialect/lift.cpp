#include "data/dialect/chars.h"
#include "data/dialect/dialect.h"
#include "data/dialect/refuse.h"
#include <charconv>
#include <cstring>

namespace liaowu::dialect {

namespace {

constexpr quint64 word(const char* text) {
    quint64 key = 0;
    for (; *text; ++text)
        key = key << 8 | static_cast<unsigned char>(*text);
    return key;
}

/// What is known at one depth of parentheses. Without initializers: most depths are never reached.
struct Level {
    bool selectList; ///< between select and from
    bool having;
    bool positions; ///< after order by or group by
    bool typeLength;
    bool convert;
    int commas;
};

constexpr int maxDepth = 64;

class Lifter {
public:
    Lifter(QStringView from, bool groupedStatement)
        : begin(from.utf16()), at(begin), end(begin + from.size()), grouped(groupedStatement) {
        // A one-digit number grows by a character, and something stands between any two numbers.
        result.shape = QString(from.size() + from.size() / 2 + 2, Qt::Uninitialized);
        out = outBegin = reinterpret_cast<char16_t*>(result.shape.data());
        result.literals.reserve(4);
        levels[0] = {};
    }

    /// False when the statement turned out to be grouped and must be lifted as such.
    bool run();
    Lifted take() {
        copyUpTo(end);
        result.shape.truncate(out - outBegin);
        return std::move(result);
    }

private:
    const char16_t* begin;
    const char16_t* at;
    const char16_t* end;
    const char16_t* copied = begin; ///< what lies before is in the shape
    char16_t* outBegin = nullptr;
    char16_t* out = nullptr;
    bool grouped;
    bool schema = false; ///< a create, alter or drop: nothing is lifted
    bool firstWord = true;
    bool valueNext = true; ///< a literal here is a value, not an alias
    bool afterLike = false;
    bool afterTop = false;
    bool afterEscape = false;
    bool afterType = false;
    bool afterConvert = false;
    bool sawGroup = false;
    std::array<Level, maxDepth> levels;
    int depth = 0;
    Lifted result;

    Level& level() { return levels[static_cast<size_t>(depth)]; }
    [[noreturn]] void refuseHere(const QString& sentence) const { refuse(at - begin, sentence); }
    void copyUpTo(const char16_t* to) {
        std::memcpy(out, copied, static_cast<size_t>(to - copied) * sizeof(char16_t));
        out += to - copied;
        copied = to;
    }
    bool lifts() const {
        const Level& here = levels[static_cast<size_t>(depth)];
        return !schema && !here.positions && !here.typeLength &&
               !(grouped && (here.selectList || here.having));
    }
    /// Puts a marker in the place of the literal that ends at `to`.
    void lifted(char16_t kind, const char16_t* to) {
        copyUpTo(at);
        *out++ = u'?';
        *out++ = kind;
        at = copied = to;
    }
    void quotedName(char16_t close);
    void textLiteral(const char16_t* opening);
    void number();
    void comment();
    void wordAt();
    void keyword(quint64 key);
    void openLevel();
    void symbol();
};

void Lifter::quotedName(char16_t close) {
    const char16_t* to = at + 1;
    for (; to < end; ++to) {
        if (*to != close) continue;
        if (to + 1 == end || to[1] != close) break;
        ++to;
    }
    if (to == end) refuseHere(u"The name is not closed."_s);
    at = to + 1;
    valueNext = false;
}

void Lifter::textLiteral(const char16_t* opening) {
    bool doubled = false;
    bool prefixed = opening + 1 < end && opening[1] != u'%' && opening[1] != u'_' && opening[1] != u'[';
    const char16_t* to = opening + 1;
    for (;; ++to) {
        if (to == end) {
            const QStringView rest(opening + 1, std::min<qsizetype>(end - opening - 1, 60));
            throw DatabaseError(105, u"Unclosed quotation mark after the character string '%1'."_s.arg(rest));
        }
        if (*to != u'\'') continue;
        if (to + 1 == end || to[1] != u'\'') break;
        doubled = true;
        ++to;
    }
    if (to == opening + 1) prefixed = false;
    if (!valueNext || afterEscape || !lifts()) {
        at = to + 1;
    } else {
        Literal literal;
        literal.kind = Literal::Kind::Text;
        literal.text = QString(reinterpret_cast<const QChar*>(opening + 1), to - opening - 1);
        if (doubled) literal.text.replace(u"''"_s, u"'"_s);
        literal.length = static_cast<int>(to + 1 - at);
        result.literals.push_back(std::move(literal));
        lifted(afterLike && prefixed ? u'p' : u't', to + 1);
    }
    valueNext = false;
    afterLike = afterEscape = false;
}

void Lifter::number() {
    const char16_t* to = at;
    bool floating = false;
    while (to < end && isDigit(*to))
        ++to;
    if (to == at + 1 && *at == u'0' && to < end && (*to | 0x20) == u'x')
        refuseHere(u"Binary literals are not covered."_s);
    if (to < end && *to == u'.') {
        floating = true;
        do
            ++to;
        while (to < end && isDigit(*to));
    }
    bool exponent = false;
    if (to < end && (*to | 0x20) == u'e') {
        const char16_t* digits = to + 1;
        if (digits < end && (*digits == u'+' || *digits == u'-')) ++digits;
        if (digits < end && isDigit(*digits)) {
            exponent = floating = true;
            for (to = digits; to < end && isDigit(*to);)
                ++to;
        }
    }
    const Level& here = level();
    if (afterTop || !lifts() || (here.convert && here.commas == 2)) {
        at = to;
    } else {
        char digits[64];
        if (to - at >= 64) refuseHere(u"The number is too long."_s);
        char* last = digits;
        for (const char16_t* c = at; c < to; ++c)
            *last++ = static_cast<char>(*c);
        Literal literal;
        literal.length = static_cast<int>(to - at);
        literal.kind = Literal::Kind::Integer;
        if (floating || std::from_chars(digits, last, literal.integer).ec != std::errc()) {
            literal.kind = Literal::Kind::Float;
            if (std::from_chars(digits, last, literal.number).ec != std::errc())
                refuseHere(u"The number is out of range."_s);
            literal.text = QString::fromLatin1(digits, last - digits);
        }
        const bool whole = literal.kind == Literal::Kind::Integer;
        result.literals.push_back(std::move(literal));
        lifted(whole ? u'i' : exponent ? u'e' : u'f', to);
    }
    valueNext = false;
    afterTop = afterLike = false;
}

void Lifter::comment() {
    const char16_t* to = at + 2;
    if (*at == u'-') {
        while (to < end && *to != u'\n')
            ++to;
    } else {
        int open = 1; // comments nest
        while (open > 0) {
            if (end - to < 2) refuseHere(u"The comment is not closed."_s);
            if (to[0] == u'*' && to[1] == u'/') {
                --open;
                to += 2;
            } else if (to[0] == u'/' && to[1] == u'*') {
                ++open;
                to += 2;
            } else {
                ++to;
            }
        }
    }
    at = to;
}

void Lifter::wordAt() {
    quint64 key = 0;
    const char16_t* to = at;
    // No keyword begins with another letter, and the names of tables and columns mostly do.
    if (*to > 127) {
        do
            ++to;
        while (to < end && isNamePart(*to));
        at = to;
        valueNext = afterLike = afterTop = afterType = afterConvert = afterEscape = firstWord = false;
        return;
    }
    for (; to < end && isNamePart(*to); ++to) {
        // Eight letters fit; longer words and other letters give a key that is no keyword's.
        key = key >> 56 || *to > 127 ? quint64(1) << 63 : key << 8 | static_cast<quint64>(*to | 0x20);
    }
    const bool national = to - at == 1 && (*at | 0x20) == u'n' && to < end && *to == u'\'';
    if (national) {
        textLiteral(to);
        return;
    }
    at = to;
    keyword(key);
    firstWord = false;
}

void Lifter::keyword(quint64 key) {
    valueNext = afterLike = afterTop = afterType = afterConvert = afterEscape = false;
    switch (key) {
    case word("create"):
    case word("alter"):
    case word("drop"):
        if (firstWord) schema = true;
        break;
    case word("select"):
        level() = {};
        level().selectList = true;
        valueNext = true;
        break;
    case word("insert"):
    case word("update"):
    case word("delete"):
    case word("union"):
        level() = {};
        break;
    case word("from"):
        level().selectList = false;
        break;
    case word("group"):
        sawGroup = true;
        break;
    case word("by"):
        level().positions = valueNext = true;
        break;
    case word("having"):
        level().positions = false;
        level().having = valueNext = true;
        break;
    case word("order"):
        level().having = false;
        break;
    case word("top"):
        afterTop = valueNext = true;
        break;
    case word("like"):
        afterLike = valueNext = true;
        break;
    case word("escape"):
        afterEscape = true;
        break;
    case word("convert"):
        afterConvert = true;
        break;
    case word("nvarchar"):
    case word("varchar"):
    case word("float"):
    case word("decimal"):
    case word("numeric"):
        afterType = true;
        break;
    case word("distinct"):
    case word("all"):
    case word("where"):
    case word("and"):
    case word("or"):
    case word("not"):
    case word("between"):
    case word("case"):
    case word("when"):
    case word("then"):
    case word("else"):
    case word("on"):
    case word("set"):
    case word("values"):
        valueNext = true;
        break;
    default:
        break;
    }
}

void Lifter::openLevel() {
    if (depth + 1 == maxDepth) refuseHere(u"The statement is nested too deeply."_s);
    Level next = level();
    next.convert = afterConvert;
    next.typeLength = next.typeLength || afterType;
    next.commas = 0;
    levels[static_cast<size_t>(++depth)] = next;
    valueNext = true;
    afterConvert = afterType = afterLike = false;
}

void Lifter::symbol() {
    const char16_t c = *at;
    ++at;
    if (c == u'(') {
        openLevel();
        return;
    }
    afterType = afterConvert = afterTop = afterLike = afterEscape = false;
    if (c == u')') {
        if (depth > 0) --depth;
        valueNext = false;
        return;
    }
    if (c == u',') ++level().commas;
    if (c == u';') {
        depth = 0;
        level() = {};
        firstWord = true;
        schema = false;
    }
    valueNext = true;
}

bool Lifter::run() {
    while (at < end) {
        const char16_t c = *at;
        const char16_t following = at + 1 < end ? at[1] : u'\0';
        if (isBlank(c)) {
            ++at;
        } else if (isDigit(c) || (c == u'.' && isDigit(following) && valueNext)) {
            number();
        } else if (isNamePart(c)) {
            wordAt();
            if (sawGroup && !grouped) return false;
        } else if (c == u'[') {
            quotedName(u']');
        } else if (c == u'"') {
            quotedName(u'"');
        } else if (c == u'\'') {
            textLiteral(at);
        } else if ((c == u'-' && following == u'-') || (c == u'/' && following == u'*')) {
            comment();
        } else if (isSymbol(c)) {
            symbol();
        } else {
            refuseHere(u"Incorrect syntax near '%1'."_s.arg(QChar(c)));
        }
    }
    return true;
}

} // namespace

Lifted lift(QStringView statement) {
    Lifter first(statement, false);
    if (first.run()) return first.take();
    // Expressions of the select list must be found equal to those of group by: their literals stay.
    Lifter second(statement, true);
    second.run();
    return second.take();
}

Literal valueOf(const Parameter& parameter, const Lifted& statement) {
    const Literal& literal = statement.literals.at(static_cast<size_t>(parameter.literal));
    if (parameter.use == Parameter::Use::AsIs) return literal;
    Literal value;
    value.kind = Literal::Kind::Text;
    if (parameter.use == Parameter::Use::Spelling) {
        value.text = literal.text;
        return value;
    }
    qsizetype length = 0;
    while (length < literal.text.size() && !isLikeWildcard(literal.text[length].unicode()))
        ++length;
    value.text = literal.text.left(length);
    // Nothing sorts above the last code point, and no text holds it.
    if (parameter.use == Parameter::Use::LikeUpper) value.text += QStringView(u"\U0010FFFF");
    return value;
}

} // namespace liaowu::dialect
