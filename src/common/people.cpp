#include "common/people.h"
#include "data/recordset.h"

namespace liaowu {

SqlText personStatement(const QString& codeOrName) {
    return sql(u"select 業務員代號, 業務員名稱 from [業務資料] where 業務員代號 = '{}' or 業務員名稱 = '{}' ",
               codeOrName, codeOrName);
}

std::optional<std::pair<QString, QString>> findPerson(Connection& connection, const QString& codeOrName) {
    if (codeOrName.isEmpty()) return std::nullopt;
    const Recordset row = select(connection, personStatement(codeOrName));
    if (row.RecordCount() == 0) return std::nullopt;
    return std::pair(row.text(u"業務員代號").trimmed(), row.text(u"業務員名稱").trimmed());
}

} // namespace liaowu
