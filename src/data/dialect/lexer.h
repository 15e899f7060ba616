#pragma once
#include "data/dialect/dialect.h"

namespace liaowu::dialect {

struct Token {
    enum class Kind {
        Word, ///< plain name or keyword
        Name, ///< bracketed or quoted name
        Text, ///< a literal that was not lifted, as were the next two
        Integer,
        Float,
        Parameter, ///< a lifted literal
        Symbol,
        End
    };
    Kind kind = Kind::End;
    QString text;         ///< name without brackets, content of a literal, symbol
    qsizetype offset = 0; ///< in the statement as it was before lifting
    qsizetype end = 0;
    int literal = -1; ///< of a Parameter
    bool likePrefix = false;
    bool exponent = false; ///< a number written with one is a float, not a decimal
};

/// Cuts a shape into tokens, the last being End. Comments and blanks are dropped.
std::vector<Token> tokenize(const Lifted& statement);

/// Keywords that cannot be names unless bracketed.
bool isReserved(QStringView word);

inline bool sameName(QStringView left, QStringView right) {
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

} // namespace liaowu::dialect
