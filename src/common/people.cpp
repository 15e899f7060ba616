#include "common/people.h"

namespace liaowu {

SqlText personStatement(const QString& codeOrName) {
    return sql(u"select 業務員代號, 業務員名稱 from [業務資料] where 業務員代號 = '{}' or 業務員名稱 = '{}' ", codeOrName,
               codeOrName);
}

} // namespace liaowu
