#pragma once
#include <QtGlobal>
#include <array>

namespace liaowu::dialect {

/// Classes of characters in a statement, shared by lifting and parsing, which must cut it alike.
constexpr bool isBlank(char16_t c) {
    return c == u' ' || (c >= u'\t' && c <= u'\r') || c == u'\u3000' || c == u'\u00A0' || c == u'\uFEFF';
}

constexpr bool isDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

inline constexpr std::array<bool, 128> asciiNameParts = [] {
    std::array<bool, 128> part{};
    for (char16_t letter = u'a'; letter <= u'z'; ++letter)
        part[letter] = part[letter - 32u] = true;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        part[digit] = true;
    for (const char16_t sign : {u'_', u'@', u'#', u'$'})
        part[sign] = true;
    return part;
}();

constexpr bool isNamePart(char16_t c) {
    return c < 128 ? asciiNameParts[c] : !isBlank(c);
}

constexpr bool isSymbol(char16_t c) {
    switch (c) {
    case u'(':
    case u')':
    case u',':
    case u'.':
    case u';':
    case u'=':
    case u'<':
    case u'>':
    case u'!':
    case u'+':
    case u'-':
    case u'*':
    case u'/':
    case u'%':
    case u'&':
    case u'|':
    case u'^':
    case u'~':
    case u':':
        return true;
    default:
        return false;
    }
}

constexpr bool isLikeWildcard(char16_t c) {
    return c == u'%' || c == u'_' || c == u'[';
}

} // namespace liaowu::dialect
