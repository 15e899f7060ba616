#include "frame/lookups.h"
#include "common/rights.h"
#include "data/recordset.h"

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

std::vector<SqlText> phraseStatements(const Session& session, const PickInput&) {
    const QString& category = session.pickParam;
    SqlText statement;
    if (session.pickCategory == u"BD-印刷內容") {
        statement = sql(u"SELECT 片語資料.內容, 片語資料.備註,片語資料.代號 From 片語資料 Where "
                        u"(片語資料.類別 like '{}%' or       "
                        u"片語資料.類別 like '{}%') ",
                        category, session.pickCategory);
    } else if (session.pickCategory == u"AZ-海關編號") {
        statement = sql(u"SELECT 片語資料.內容,片語資料.合同品名,片語資料.代號 From 片語資料 Where "
                        u"片語資料.類別 like '{}%' ",
                        category);
    } else {
        statement = sql(u"SELECT 片語資料.內容, 片語資料.備註,片語資料.代號 From 片語資料 Where "
                        u"片語資料.類別 like '{}%' ",
                        category);
    }
    if (session.pickMode == u"印刷") statement += sql(u" and 工序='印刷'");
    return {statement + sql(u"Order By 片語資料.代號")};
}

/// People of the group's departments, as a condition; empty when the group has none.
SqlText departmentFilter(const Session& session) {
    if (session.formulaMode.isEmpty()) return {};
    Connection connection(session.pool, session.connectionString);
    Recordset rows =
        select(connection, sql(u"select 部門 from 部門資料 where 組名='{}'", session.formulaMode));
    if (rows.RecordCount() == 0) return {};
    SqlText filter = sql(u" and (");
    for (bool first = true; !rows.EOF_(); rows.MoveNext(), first = false) {
        if (!first) filter += sql(u" or ");
        filter += sql(u"業務資料.部門='{}'", rows.text(u"部門").trimmed());
    }
    return filter + sql(u" ) ");
}

std::vector<SqlText> personStatements(const Session& session, const PickInput& input) {
    const SqlText head =
        sql(u"SELECT 業務資料.業務員代號 AS 人員代號, 業務資料.業務員名稱 AS 人員名稱 From 業務資料 ");
    const SqlText matching = sql(u"Where (業務資料.業務員代號 Like '{}%' OR 業務資料.業務員名稱 Like '{}%' ) "
                                 u"And (業務資料.離職日期 = '' or "
                                 u"業務資料.離職日期 is null ) ",
                                 input.filter, input.filter);
    const SqlText order = sql(u"Order By 業務資料.業務員代號");
    const SqlText filter = departmentFilter(session);
    std::vector<SqlText> statements;
    if (!filter.isEmpty()) statements.push_back(head + matching + filter + order);
    statements.push_back(head + matching + order);
    statements.push_back(head + sql(u"where (業務資料.離職日期 = '' or 離職日期 is null) ") + order);
    return statements;
}

std::vector<SqlText> vendorStatements(const Session& session, const PickInput& input) {
    const SqlText head =
        sql(u"SELECT 廠商代號, 廠商簡稱, 發票稅率, 電話1 as 聯絡電話, 聯絡人, 傳真號碼, 幣別, "
            u"付款天數,經驗傳承,分數,業務員代號,業務員名稱,發票稅率 From [廠商資料] Where ");
    const SqlText category =
        sql(u"(廠商類別 Like '%{}%' or 廠商類別 = '' or 廠商類別 is null) ", session.formulaMode) +
        sql(u"and (報廢與否 <> 'Y' or 報廢與否 is null) ") + readyMadeSql(session.salesScope);
    const SqlText order = sql(u"Order By 廠商代號 ");
    return {head + sql(u"(廠商代號 Like '{}%' or 廠商簡稱 Like '{}%') and ", input.filter, input.filter) +
                category + order,
            head + category + order};
}

std::vector<SqlText> receivingVendorStatements(const Session& session, const PickInput& input) {
    const SqlText head = sql(
        u"SELECT distinct 廠商資料.廠商代號, 廠商資料.廠商簡稱, 廠商資料.發票稅率, 廠商資料.電話1 as "
        u"聯絡電話, 廠商資料.聯絡人, "
        u"廠商資料.傳真號碼, 廠商資料.幣別, 廠商資料.付款天數,付款方式,結帳日 From (採購資料 INNER JOIN "
        u"採購明細資料 ON 採購資料.採購單號 = "
        u"採購明細資料.採購單號) INNER JOIN 廠商資料     ON 廠商資料.廠商代號 = 採購資料.廠商代號 Where ");
    const SqlText text = sql(u"(廠商資料.廠商代號 Like '{}%' or 廠商資料.廠商簡稱 Like '{}%') and ",
                             input.filter, input.filter);
    SqlText rest = sql(u"採購資料.審單= 'Y' And 採購資料.類別= '{}' And ", session.formulaMode);
    if (session.pickMode.contains(u"退")) {
        rest += sql(u"cast(coalesce(採購明細資料.已入庫數,'') as float)>0 ");
    } else {
        rest += sql(u"cast(採購明細資料.數量 as float)-cast(coalesce(採購明細資料.已入庫數,'') as float)>0 "
                    u"and 送清<>'Y' ");
    }
    rest += readyMadeSql(scopeOn(session, u"廠商資料"_s)) + sql(u"Order By 廠商資料.廠商代號");
    return {head + text + rest, head + rest};
}

QHash<QString, int> onlyThese(const QStringList& hidden, QHash<QString, int> widths) {
    for (const QString& title : hidden)
        widths.insert(title, 0);
    return widths;
}

} // namespace

PickSpec phrasePick() {
    PickSpec spec{u"frm片語輔助視窗"_s, u"片語輔助視窗"_s, u"取得所有片語資料錯誤"_s};
    spec.withFilter = false;
    spec.statements = phraseStatements;
    return spec;
}

PickSpec personPick() {
    PickSpec spec{u"frm業務輔助視窗"_s, u"業務輔助視窗"_s, u"取得所有業務資料錯誤"_s};
    spec.statements = personStatements;
    spec.widths = {{u"人員代號"_s, 1600}, {u"人員名稱"_s, 2400}};
    return spec;
}

PickSpec vendorPick() {
    PickSpec spec{u"frm廠商輔助畫面"_s, u"廠商輔助視窗"_s, u"取得所有廠商資料錯誤"_s};
    spec.statements = vendorStatements;
    spec.widths = onlyThese({u"發票稅率"_s, u"聯絡電話"_s, u"聯絡人"_s, u"傳真號碼"_s, u"幣別"_s,
                             u"付款天數"_s, u"經驗傳承"_s, u"業務員代號"_s, u"業務員名稱"_s},
                            {{u"廠商代號"_s, 1400}, {u"廠商簡稱"_s, 2100}, {u"分數"_s, 1000}});
    return spec;
}

PickSpec receivingVendorPick() {
    PickSpec spec{u"frm廠商輔助視窗_驗收"_s, u"廠商輔助視窗"_s, u"取得所有廠商資料錯誤"_s};
    spec.statements = receivingVendorStatements;
    spec.widths = onlyThese({u"發票稅率"_s, u"聯絡電話"_s, u"聯絡人"_s, u"傳真號碼"_s, u"幣別"_s,
                             u"付款天數"_s, u"付款方式"_s, u"結帳日"_s},
                            {{u"廠商代號"_s, 1400}, {u"廠商簡稱"_s, 2100}});
    return spec;
}

} // namespace liaowu
