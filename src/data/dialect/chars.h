#pragma once
#include <QtGlobal>

namespace liaowu::dialect {

/// Classes of characters in a statement, shared by lifting and parsing, which must cut it alike.
constexpr bool isBlank(char16_t c) {
    return c == u' ' || (c >= u'\t' && c <= u'\r') || c == u'\u3000' || c == u'\u00A0' || c == u'\uFEFF';
}

constexpr bool isDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

constexpr bool isNamePart(char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || isDigit(c) || c == u'_' || c == u'@' ||
           c == u'#' || c == u'$' || (c > 127 && !isBlank(c));
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
