#pragma once
#include <QString>

namespace liaowu {

class Connection;

/// Whether the database has this table. Those of our own (料務_...) may be missing; what they serve is then off. Other
/// failures throw `DatabaseError`.
bool hasTable(Connection& connection, const QString& table);

} // namespace liaowu
