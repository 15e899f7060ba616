#pragma once
#include "data/database_error.h"

struct sqlite3;

namespace liaowu {

/// Turns a failure of the embedded engine into number and text: duplicates, conversions and unknown names get the
/// server's numbers, the rest our own. `code` is the extended result code, `message` the engine's English text.
DatabaseError engineError(int code, const QString& message);

/// The last failure of `database`.
DatabaseError engineError(sqlite3* database);

} // namespace liaowu
