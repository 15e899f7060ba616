#include "data/dialect/collation.h"
#include "data/dialect/function_support.h"
#include <array>

namespace liaowu::dialect {

namespace {

void invalidLength(Call& call) {
    call.fail(537, u"Invalid length parameter passed to the LEFT or SUBSTRING function."_s);
}

void left(Call& call) {
    if (call.integer(1) < 0) return invalidLength(call);
    call.give(call.text(0).left(call.integer(1)));
}

void right(Call& call) {
    if (call.integer(1) < 0)
        return call.fail(536, u"Invalid length parameter passed to the RIGHT function."_s);
    call.give(call.text(0).right(call.integer(1)));
}

void substring(Call& call) {
    if (call.integer(2) < 0) return invalidLength(call);
    const QString text = call.text(0);
    // Positions before the first character use up length.
    constexpr qint64 bound = 1'000'000'000;
    const qint64 start = std::clamp(call.integer(1), -bound, bound) - 1;
    const qint64 end = std::min<qint64>(start + std::min(call.integer(2), bound), text.size());
    const qint64 first = std::max<qint64>(start, 0);
    call.give(end > first ? text.mid(first, end - first) : QString());
}

void cut(Call& call) {
    // Texts of plain ASCII, the usual case, are cut without being converted.
    const QByteArrayView bytes = call.bytes(0);
    if (bytes.size() <= call.integer(1)) return call.giveArgument(0);
    call.give(call.text(0).left(call.integer(1)));
}

QByteArrayView withoutTrailingBlanks(QByteArrayView text) {
    while (!text.isEmpty() && text.back() == ' ')
        text.chop(1);
    return text;
}

QByteArrayView withoutLeadingBlanks(QByteArrayView text) {
    while (!text.isEmpty() && text.front() == ' ')
        text = text.sliced(1);
    return text;
}

void length(Call& call) {
    qint64 units = 0;
    // UTF-16 units: one for each character, two for those written in four bytes.
    for (const char c : withoutTrailingBlanks(call.bytes(0))) {
        const auto byte = static_cast<unsigned char>(c);
        units += byte >= 0xF0 ? 2 : (byte & 0xC0) == 0x80 ? 0 : 1;
    }
    call.give(units);
}

void ltrim(Call& call) {
    call.give(withoutLeadingBlanks(call.bytes(0)));
}
void rtrim(Call& call) {
    call.give(withoutTrailingBlanks(call.bytes(0)));
}
void trim(Call& call) {
    call.give(withoutLeadingBlanks(withoutTrailingBlanks(call.bytes(0))));
}

template <char32_t (*Map)(char32_t)>
void mapped(Call& call) {
    QString text;
    for (const char32_t c : call.text(0).toUcs4())
        text += QStringView(QChar::fromUcs4(Map(c)));
    call.give(text);
}

char32_t upperOf(char32_t c) {
    return QChar::toUpper(c);
}
char32_t lowerOf(char32_t c) {
    return QChar::toLower(c);
}

/// Finds `needle` from `from` on by the server's comparison; -1 when it is not there.
qsizetype find(QStringView text, QStringView needle, qsizetype from) {
    for (qsizetype at = from; at + needle.size() <= text.size(); ++at) {
        qsizetype i = 0;
        while (i < needle.size() && weight(text[at + i].unicode()) == weight(needle[i].unicode()))
            ++i;
        if (i == needle.size()) return at;
    }
    return -1;
}

void replace(Call& call) {
    const QString text = call.text(0);
    const QString needle = call.text(1);
    const QString substitute = call.text(2);
    if (needle.isEmpty()) return call.giveArgument(0);
    QString result;
    qsizetype done = 0;
    for (qsizetype at = find(text, needle, 0); at >= 0; at = find(text, needle, done)) {
        result += QStringView(text).mid(done, at - done);
        result += substitute;
        done = at + needle.size();
    }
    result += QStringView(text).mid(done);
    call.give(result);
}

void charIndex(Call& call) {
    const QString needle = call.text(0);
    const qint64 from = call.size() > 2 ? std::max<qint64>(call.integer(2), 1) - 1 : 0;
    const QString text = call.text(1);
    call.give(needle.isEmpty() || from > text.size() ? qint64(0) : find(text, needle, from) + 1);
}

/// Texts that functions make stay below what the server's do.
constexpr qint64 longestText = 8000;

void replicate(Call& call) {
    const qint64 count = call.integer(1);
    if (count < 0) return;
    const QString text = call.text(0);
    call.give(text.isEmpty() ? text : text.repeated(std::min(count, longestText)).left(longestText));
}

void space(Call& call) {
    if (call.integer(0) >= 0) call.give(QString(std::min(call.integer(0), longestText), u' '));
}

} // namespace

void installTextFunctions(sqlite3* database) {
    static constexpr std::array entries = {
        FunctionEntry{"ts_left", 2, boundStrict<left>},
        FunctionEntry{"ts_right", 2, boundStrict<right>},
        FunctionEntry{"ts_substring", 3, boundStrict<substring>},
        FunctionEntry{"ts_cut", 2, boundStrict<cut>},
        FunctionEntry{"ts_len", 1, boundStrict<length>},
        FunctionEntry{"ts_ltrim", 1, boundStrict<ltrim>},
        FunctionEntry{"ts_rtrim", 1, boundStrict<rtrim>},
        FunctionEntry{"ts_trim", 1, boundStrict<trim>},
        FunctionEntry{"ts_upper", 1, boundStrict<mapped<upperOf>>},
        FunctionEntry{"ts_lower", 1, boundStrict<mapped<lowerOf>>},
        FunctionEntry{"ts_replace", 3, boundStrict<replace>},
        FunctionEntry{"ts_charindex", 2, boundStrict<charIndex>},
        FunctionEntry{"ts_charindex", 3, boundStrict<charIndex>},
        FunctionEntry{"ts_replicate", 2, boundStrict<replicate>},
        FunctionEntry{"ts_space", 1, boundStrict<space>},
    };
    registerFunctions(database, entries.data(), entries.size());
}

} // namespace liaowu::dialect
