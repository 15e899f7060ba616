#pragma once
#include <QByteArray>

namespace liaowu::dialect {

/// Whether the engine's parser, whose stack has a fixed size, can take in a native statement.
bool fitsParserStack(const QByteArray& native);

} // namespace liaowu::dialect
