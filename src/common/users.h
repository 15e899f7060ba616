#pragma once
#include "common/session.h"

namespace liaowu {

class Connection;

/// A user of the database, as the launchpad lists them.
struct UserRow {
    QString userName;     ///< 使用者
    QString salesmanName; ///< 業務員名稱
    QString role;         ///< what the user may do, in words
};

/// All users of 使用者資料 with their roles, by name. Throws `DatabaseError`.
std::vector<UserRow> usersOf(Connection& connection);

} // namespace liaowu
