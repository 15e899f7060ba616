#include "common/document_numbers.h"
#include "common/clock.h"
#include "common/guard.h"
#include "common/text_values.h"
#include "data/recordset.h"

namespace liaowu {

using namespace Qt::StringLiterals;

NumberSeries orderNumbers() {
    return {u"採購資料"_s, u"採購單號"_s, u"001"_s, {}, {}, {}, u"取得採購單號流水號錯誤"_s};
}
NumberSeries requisitionNumbers() {
    return {u"原料申購資料"_s, u"申購單號"_s, u"0001"_s, {}, {}, {}, u"取得申購單號流水號錯誤"_s};
}
NumberSeries issueNumbers() {
    return {u"原料領料資料"_s, u"領料單號"_s, u"0001"_s, {}, {}, {}, u"取得領料單號流水號錯誤"_s};
}
NumberSeries receiptNumbers() {
    // A return that was made on the receipt screen bears a number of this series.
    return {u"原料入庫資料"_s,
            u"入庫單號"_s,
            u"0001"_s,
            {},
            u"%"_s,
            u" and (單別 not like'%退%' or 入庫單號 not like '%T%')"_s,
            u"取得入庫單號流水號錯誤"_s};
}
NumberSeries returnNumbers() {
    return {u"原料入庫資料"_s,          u"入庫單號"_s, u"0001"_s, u"T"_s, u"%"_s, u" and 單別 like'%退%'"_s,
            u"取得退貨單號流水號錯誤"_s};
}

QString nextDocumentNumber(Connection& connection, const NumberSeries& series) {
    const QString prefix = serverTime(connection, 3) + series.infix;
    const Recordset last =
        select(connection, sql(u"select top 1 [{}] from [{}] where [{}] like '{}{}%'", series.key,
                               series.table, series.key, series.patternHead, prefix) +
                               readyMadeSql(series.condition) + sql(u" order by [{}] desc", series.key));
    return last.RecordCount() > 0 ? nextCode(last.text(series.key).trimmed()) : prefix + series.firstRunning;
}

QString nextDocumentNumber(Session& session, const NumberSeries& series) {
    QString number;
    guarded(session, series.errorTitle, [&] {
        Connection connection(session.pool, session.connectionString);
        number = nextDocumentNumber(connection, series);
    });
    return number;
}

} // namespace liaowu
