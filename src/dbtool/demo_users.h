#pragma once
#include <QString>
#include <vector>

namespace liaowu::demo {

/// The people who may start the client on the demo plant.
struct User {
    QString login;
    int person;         ///< index of the staff member, -1 for none
    bool administrator; ///< may do everything
    QString rights;     ///< names of the rights, separated by blanks
    QString scope; ///< salespersons whose vendors and orders are seen, separated by blanks; empty for all
    QString about;
};
const std::vector<User>& users();

} // namespace liaowu::demo
