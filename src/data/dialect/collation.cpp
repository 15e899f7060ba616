#include "data/dialect/collation.h"
#include "data/dialect/dialect.h"
#include <algorithm>

namespace liaowu::dialect {

namespace {

constexpr std::array<unsigned char, 128> asciiWeights = [] {
    constexpr std::string_view order =
        " _-,;:!?.'\"()[]{}@*/\\&#%`^+<=>|~$0123456789abcdefghijklmnopqrstuvwxyz";
    std::array<unsigned char, 128> weights{};
    unsigned char next = 1;
    for (size_t c = 1; c < 128; ++c) {
        if (c < ' ' || c == 127) weights[c] = next++;
    }
    for (const char c : order)
        weights[static_cast<size_t>(c)] = next++;
    for (size_t c = 'A'; c <= 'Z'; ++c)
        weights[c] = weights[c + 32];
    return weights;
}();

template <typename Text>
Text withoutTrailingBlanks(Text text) {
    qsizetype size = text.size();
    while (size > 0 && text[size - 1] == ' ')
        --size;
    return text.first(size);
}

} // namespace

char32_t weight(char32_t c) {
    if (c < 128) return asciiWeights[c];
    if (c >= 0xFF01 && c <= 0xFF5E) return asciiWeights[c - 0xFEE0];
    if (c >= 0x3041 && c <= 0x3096) return c + 0x60;
    if (c >= 0x2E80 && c < 0xFF00) return c;
    return QChar::toCaseFolded(c);
}

char32_t nextCharacter(const char*& at, const char* end) {
    const auto byte = [&](qsizetype i) { return static_cast<unsigned char>(at[i]); };
    const unsigned char first = byte(0);
    const int length = first < 0xC0 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    char32_t character = length == 1 ? first : first & (0x7F >> length);
    if (end - at < length) {
        ++at;
        return first;
    }
    for (int i = 1; i < length; ++i)
        character = character << 6 | (byte(i) & 0x3F);
    at += length;
    return character;
}

int compareUtf8(QByteArrayView left, QByteArrayView right) {
    left = withoutTrailingBlanks(left);
    right = withoutTrailingBlanks(right);
    const char* a = left.data();
    const char* b = right.data();
    const char* const aEnd = a + left.size();
    const char* const bEnd = b + right.size();
    for (;;) {
        const char* const aStart = a;
        while (a < aEnd && b < bEnd && *a == *b) {
            ++a;
            ++b;
        }
        if (a == aEnd || b == bEnd) return a == aEnd ? (b == bEnd ? 0 : -1) : 1;
        // The bytes may differ in the middle of a character.
        while (a > aStart && (static_cast<unsigned char>(*a) & 0xC0) == 0x80) {
            --a;
            --b;
        }
        const char32_t x = weight(nextCharacter(a, aEnd));
        const char32_t y = weight(nextCharacter(b, bEnd));
        if (x != y) return x < y ? -1 : 1;
    }
}

int compareTexts(QStringView left, QStringView right) {
    left = withoutTrailingBlanks(left);
    right = withoutTrailingBlanks(right);
    qsizetype i = 0;
    qsizetype k = 0;
    const auto next = [](QStringView text, qsizetype& at) {
        const QChar c = text[at++];
        if (c.isHighSurrogate() && at < text.size() && text[at].isLowSurrogate())
            return QChar::surrogateToUcs4(c, text[at++]);
        return static_cast<char32_t>(c.unicode());
    };
    while (i < left.size() && k < right.size()) {
        const char32_t x = weight(next(left, i));
        const char32_t y = weight(next(right, k));
        if (x != y) return x < y ? -1 : 1;
    }
    return i < left.size() ? 1 : k < right.size() ? -1 : 0;
}

} // namespace liaowu::dialect
