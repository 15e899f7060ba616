#pragma once
#include "data/database_error.h"
#include <QString>

namespace liaowu::dialect {

using namespace Qt::StringLiterals;

/// Throws what the subset does not cover: the sentence and where, counted from 1.
[[noreturn]] inline void refuse(qsizetype offset, const QString& sentence) {
    throw DatabaseError(DatabaseError::NotCovered, sentence + u" (position %1)"_s.arg(offset + 1));
}

} // namespace liaowu::dialect
