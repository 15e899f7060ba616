#pragma once
#include <QStringList>

namespace liaowu {

/// What the embedded engine's own check of a file finds: pages, indexes, constraints. Empty when all is well. A server
/// is checked by its administrator: nothing is looked at there. Throws `DatabaseError` when the file cannot be read.
QStringList engineFaults(const QString& connectionString);

} // namespace liaowu
