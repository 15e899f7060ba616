#include "common/change_history.h"

namespace liaowu {

using namespace Qt::StringLiterals;

SqlText changeHistoryStatement(const QString& table, const QString& keyName, const QString& keyValue,
                               int style) {
    const QString person = style == 1 ? u"製單人"_s : u"建檔人"_s;
    const QString time = style == 1 ? u"製單時間"_s : u"建檔時間"_s;
    const auto part = [&](const QString& column, bool isTime) {
        return isTime
                   ? sql(u"select '{}' as 項目,convert(nvarchar,[{}],20) as 項目值 from [{}] where [{}]='{}'",
                         column, column, table, keyName, keyValue)
                   : sql(u"select '{}' as 項目,convert(nvarchar,[{}]) as 項目值 from [{}] where [{}]='{}'",
                         column, column, table, keyName, keyValue);
    };
    const SqlText join = sql(u"\r\nunion all\r\n");
    return part(person, false) + join + part(time, true) + join + part(u"修改人"_s, false) + join +
           part(u"修改時間"_s, true);
}

} // namespace liaowu
