#include "purchasing/requisition_queries.h"
#include "common/clock.h"
#include "common/items.h"
#include "common/text_values.h"
#include "data/recordset.h"

namespace liaowu {

using namespace Qt::StringLiterals;

SqlText requisitionBrowseStatement() {
    return sql(u"select 申購單號 from [原料申購資料]where 1=1 order by 申購日期,申購單號");
}

std::optional<RequisitionItem> findRequisitionItem(Connection& connection, const QString& word,
                                                   const QString& codeOrName) {
    const ItemFamily* family = itemFamily(word);
    if (!family || codeOrName.isEmpty()) return std::nullopt;
    const QString& t = family->table;
    const Recordset row = select(
        connection, sql(u"select [{}].[{}], [{}].[{}], [{}].規格, [{}].庫存, [{}].單位, [{}].單價, "
                        u"[{}].幣別, [{}].安全庫存, ",
                        t, family->code, t, family->name, t, t, t, t, t, t) +
                        (family->word == u"紙板" ? sql(u"[{}].楞別", t) : sql(u"'' as 楞別")) +
                        sql(u"  from  [{}] where [{}].[{}] = '{}' or [{}].[{}] = '{}' order by [{}].[{}]", t,
                            t, family->code, codeOrName, t, family->name, codeOrName, t, family->name));
    if (row.RecordCount() != 1) return std::nullopt;
    const auto text = [&](int column) { return row.text(column).trimmed(); };
    return RequisitionItem{text(0), text(1), text(2), text(3), text(4), text(5), text(6), text(7), text(8)};
}

RequisitionLine lineOfItemPick(const QStringList& row, const QString& family) {
    const auto text = [&](int element, int limit) {
        return truncateBytes(row.value(element).trimmed(), limit);
    };
    RequisitionLine line;
    line.原料代號 = text(0, 20);
    line.原料名稱 = text(1, 40);
    line.規格 = text(2, 50);
    line.單位 = family == u"紙板" ? u"PC"_s : text(4, 4);
    line.楞別 = text(8, 4);
    return line;
}

// ---- search ----

namespace {

struct ConditionRow {
    const char16_t *caption, *clause;
};
constexpr ConditionRow conditions[] = {
    {u"申購單號", u"And 原料申購資料.申購單號 like '%{}%' "},
    {u"經辦人", u"And (原料申購資料.經辦代號 like '%{}%' Or 原料申購資料.經辦名稱 like '%{}%') "},
    {u"原料名稱", u"And 原料申購明細.原料名稱 like '%{}%' "},
    {u"申購單位", u"And 原料申購資料.申購單位 like '%{}%' "},
    {u"工單單號", u"And 原料申購資料.工單單號 like '%{}%' "},
    {u"客戶料號", u"And 原料申購明細.印件編號 like '%{}%' "},
};

} // namespace

SqlText requisitionSearchStatement(const SearchInput& input) {
    SqlText statement = sql(u"select 原料申購資料.申購單號 , 原料申購資料.申購日期 , 原料申購明細.原料代號, "
                            u"原料申購明細.原料名稱, 原料申購明細.規格, 原料申購明細.數量, "
                            u"原料申購明細.單位,原料申購明細.印件編號 as 客戶料號, 原料申購資料.審單 as 審, "
                            u"原料申購資料.請購原因, 原料申購資料.庫別, 原料申購資料.申購單號 as "
                            u"H申購單號 from [原料申購資料] inner join [原料申購明細] on "
                            u"原料申購資料.申購單號 = 原料申購明細.申購單號 where 1=1 ");
    const QStringView clause(conditions[static_cast<size_t>(input.option)].clause);
    statement += clause.count(u"{}") == 2 ? sql(clause, input.text, input.text) : sql(clause, input.text);
    statement += sql(u"And (原料申購資料.申購日期 Between '{}' And '{}') ", input.from, input.to);
    if (input.checks.value(u"chk查詢未審單"_s))
        statement += sql(u"And (原料申購資料.審單<>'Y' or 原料申購資料.審單 is null) ");
    if (input.checks.value(u"chk查詢審單"_s)) statement += sql(u"And 原料申購資料.審單 = 'Y' ");
    return statement + sql(u" ORDER BY 申購日期 desc,原料申購資料.申購單號 desc");
}

SearchSpec requisitionSearch(Session& session) {
    SearchSpec spec;
    for (const ConditionRow& row : conditions) {
        const QString caption = QString::fromUtf16(row.caption);
        spec.conditions.push_back({caption, caption + u':'});
    }
    spec.checks = {{u"chk查詢未審單"_s, u"未審單"_s}, {u"chk查詢審單"_s, u"審單"_s}};
    spec.defaultDates = [&session] { return sinceLastMonth(session); };
    spec.statement = requisitionSearchStatement;
    spec.widths = {{u"H申購單號"_s, 0}};
    return spec;
}

// ---- batch approval ----

BatchSpec requisitionBatch(Session& session, const QString& lastNumber) {
    BatchSpec spec;
    spec.page = u"pic批審"_s;
    spec.dateBoxes = {u"txt日期1"_s, u"txt日期2"_s};
    spec.numberBoxes = {u"txt單號1"_s, u"txt單號2"_s};
    spec.defaults = {daysAgo(session, 7), today8(session), {}, lastNumber};
    spec.columns = {{u"請購單號"_s, 1500},   {u"請購日期"_s, 1300}, {u"請購單位"_s, 1600},
                    {u"業務員代號"_s, 1400}, {u"業務員"_s, 1400},   {u"需求日期"_s, 1300},
                    {u"審單"_s, 700},        {u"備注"_s, 3600}};
    spec.list = [](const BatchInput& input) {
        return sql(
            u"select 申購單號,申購日期,申購單位,經辦代號,經辦名稱,需求日期,審單,備註 from 原料申購資料 where "
            u"申購日期 between '{}' and '{}' "
            u"and  申購單號 between '{}' and '{}' and (審單 is null or 審單<>'Y' )  order by 申購單號 ",
            input.fromDate, input.toDate, input.fromNumber, input.toNumber);
    };
    spec.detail = [](const QString& number) {
        return sql(
            u"select 原料代號,原料名稱,規格,數量,單位 from 原料申購明細 where 申購單號='{}' order by 序 ",
            number);
    };
    spec.approve = [&session](const QString& number) {
        Connection connection(session.pool, session.connectionString);
        connection.Execute(
            sql(u" update 原料申購資料 set 審單='Y' ,審單日期='{}',審單人='{}'  where 申購單號='{}'",
                serverTime(connection, 2), session.salesmanName, number));
    };
    return spec;
}

} // namespace liaowu
