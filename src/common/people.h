#pragma once
#include "data/sql_text.h"
#include <optional>
#include <utility>

namespace liaowu {

class Connection;

/// A person of 業務資料 by exact code or name: 業務員代號, 業務員名稱.
SqlText personStatement(const QString& codeOrName);
/// A person by exact code or name: code and name.
std::optional<std::pair<QString, QString>> findPerson(Connection& connection, const QString& codeOrName);

} // namespace liaowu
