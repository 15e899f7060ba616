#pragma once
#include <QByteArrayView>
#include <QStringView>

namespace liaowu::dialect {

/// What a character counts as in comparisons: letters of either case, of full and normal width, and both kana are
/// alike. Order: blank, signs, digits, letters, then all else by code point (so Latin stands before Han).
char32_t weight(char32_t character);

/// Reads one character of UTF-8 and moves behind it; a broken byte counts as itself.
char32_t nextCharacter(const char*& at, const char* end);

int compareUtf8(QByteArrayView left, QByteArrayView right);

} // namespace liaowu::dialect
