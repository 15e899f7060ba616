#include "purchasing/order_queries.h"
#include "common/clock.h"
#include "common/items.h"
#include "common/rights.h"
#include "common/text_values.h"
#include "data/recordset.h"
#include "formula/calculator.h"

namespace liaowu {

using namespace Qt::StringLiterals;

SqlText orderBrowseStatement(const Session& session) {
    return sql(u"select 採購單號 from 採購資料 Where 1=1 and 類別='{}' ", session.category) +
           readyMadeSql(scopeOn(session, u"採購資料"_s)) + sql(u" order by 製單時間,採購日期,採購單號");
}

std::optional<VendorRow> findVendor(Session& session, Connection& connection, const QString& codeOrName) {
    const Recordset row = select(
        connection, sql(u"SELECT 廠商代號, 廠商簡稱, 發票稅率, 電話1 as 聯絡電話, 聯絡人, 傳真號碼, 幣別, "
                        u"付款天數,經驗傳承,分數,業務員代號,業務員名稱,發票稅率 From [廠商資料] Where "
                        u"(廠商代號 = '{}' or 廠商簡稱 = '{}') and "
                        u"(報廢與否 <> 'Y' or 報廢與否 is null) ",
                        codeOrName, codeOrName) +
                        readyMadeSql(session.salesScope) + sql(u"Order By 廠商代號 "));
    if (codeOrName.isEmpty() || row.RecordCount() == 0) return std::nullopt;
    const auto text = [&](int column) { return row.text(column).trimmed(); };
    return VendorRow{text(0), text(1), text(2),     text(3), text(4),  text(5),
                     text(6), text(7), row.text(8), text(9), text(10), text(11)};
}

OrderLines requisitionLines(Connection& connection, const QString& number, const QString& category,
                            bool canSeePrice) {
    const ItemFamily* family = itemFamily(category);
    if (!family) return {};
    Recordset rows = select(
        connection, sql(u"Select "
                        u"原料申購明細.申購單號,原料申購明細.印件編號,原料申購明細.原料代號,原料申購明細."
                        u"原料名稱,原料申購明細.規格,原料申購明細.數量,"
                        u"[{}].進價 as 單價,原料申購明細.單位,原料申購明細.需求日期 From [原料申購明細] left "
                        u"join [{}] on [{}].[{}] = 原料申購明細.原料代號 "
                        u"left join [原料申購資料] on 原料申購資料.申購單號 = 原料申購明細.申購單號 Where "
                        u"原料申購明細.申購單號 = '{}' and "
                        u"原料申購資料.類別 = '{}' and 原料申購資料.審單 = 'Y' order by 原料申購明細.序",
                        family->table, family->table, family->table, family->code, number, category));
    OrderLines lines;
    for (; !rows.EOF_(); rows.MoveNext()) {
        OrderLine line;
        line.請購單號 = rows.text(u"申購單號").trimmed();
        line.印件編號 = rows.text(u"印件編號").trimmed();
        line.原料代號 = rows.text(u"原料代號").trimmed();
        line.廠商名稱 = line.原料名稱 = rows.text(u"原料名稱").trimmed();
        line.規格 = rows.text(u"規格").trimmed();
        line.數量 = line.未交數 = numberText(val(rows.text(u"數量")));
        line.原單價 = rows.text(u"單價").trimmed();
        line.單價 = canSeePrice ? line.原單價 : MaskedMoney;
        line.小計 = canSeePrice ? QString() : MaskedMoney;
        line.單位 = rows.text(u"單位").trimmed();
        line.交貨日期 = rows.text(u"需求日期").trimmed();
        line.寬剖 = u"1"_s;
        line.送清 = u"N"_s;
        lines.push_back(std::move(line));
    }
    return lines;
}

// ---- stock panel ----

std::optional<double> availableStock(const QString& formula, const StockFigures& figures) {
    if (formula.trimmed().isEmpty()) return 0;
    QString text = formula;
    const std::pair<QString, double> words[] = {{u"實際庫存"_s, figures.actual},
                                                {u"安全庫存"_s, val(figures.safety)},
                                                {u"在領量"_s, figures.issuing},
                                                {u"在單量"_s, figures.ordered},
                                                {u"申購量"_s, figures.requested}};
    for (const auto& [word, value] : words)
        text.replace(word, format(value, u"0"));
    const auto result = vxCalc(text.remove(u' '));
    return result ? std::optional(val(format(*result, u"0"))) : std::nullopt;
}

StockFigures stockFigures(Session& session, Connection& connection, const QString& category,
                          const QString& code) {
    StockFigures figures;
    const ItemFamily* family = itemFamily(category);
    if (!family || code.trimmed().isEmpty()) return figures;
    const Recordset item = select(connection, sql(u"select 庫存,安全庫存,單位 from [{}] where [{}] = '{}'",
                                                  family->table, family->code, code));
    if (item.RecordCount() > 0) {
        figures.known = true;
        figures.actual = val(item.text(u"庫存"));
        figures.safety = item.text(u"安全庫存").trimmed();
        figures.unit = item.text(u"單位").trimmed();
    }
    const auto sum = [&](const SqlText& statement) { return val(select(connection, statement).text(0)); };
    figures.requested = sum(sql(
        u"select sum(cast(原料申購明細.數量 as float)-cast(原料申購明細.已采購數 as float)) as 申購量  from "
        u"原料申購資料 INNER JOIN 原料申購明細 ON 原料申購資料.申購單號=原料申購明細.申購單號  WHERE "
        u"原料申購資料.類別='{}' AND 原料申購明細.原料代號='{}'",
        category, code));
    figures.issuing = sum(sql(u"select sum(cast(原料領料明細.實領數 as float)) as 在領量 from 原料領料資料 "
                              u"inner join 原料領料明細 on "
                              u"原料領料資料.領料單號=原料領料明細.領料單號  where 原料領料資料.類別='{}' "
                              u"and (原料領料資料.審單 is null or "
                              u"原料領料資料.審單<>'Y') and 原料領料明細.原料代號='{}' ",
                              category, code));
    figures.ordered = sum(
        sql(u"select sum(cast(採購明細資料.數量 as float)-cast(採購明細資料.已入庫數 as float)) as 在單量 "
            u"from 採購明細資料 "
            u"inner join 採購資料 on 採購資料.採購單號=採購明細資料.採購單號  where 採購資料.類別='{}' and "
            u"採購明細資料.原料代號='{}' ",
            category, code));
    const auto available = availableStock(session.formula1, figures);
    figures.available = available.value_or(0);
    figures.formulaFailed = !available;
    return figures;
}

// ---- search ----

namespace {

struct ConditionRow {
    const char16_t *caption, *label;
    int limit, filter;
    const char16_t* clause;
};
/// By index of the option. Options 3 and 6 have clauses of their own; 4 reads another column for board.
constexpr ConditionRow conditions[] = {
    {u"採購單號", u"採購單號:", 0, 0, u"And 採購資料.採購單號 like '%{}%' "},
    {u"廠商名稱", u"廠商名稱:", 0, 0, u"And 採購資料.廠商簡稱 like '%{}%' "},
    {u"原料名稱", u"原料名稱:", 0, 0,
     u"And (採購明細資料.原料代號 like '%{}%' Or 採購明細資料.原料名稱 like '%{}%') "},
    {u"單價異常", u"", 0, 0, u"And cast(採購明細資料.單價 as float) <= 0 "},
    {u"採購人員", u"採購人員:", 20, 0,
     u"And (採購資料.業務員代號 like '%{}%' Or 採購資料.業務員名稱 like '%{}%') "},
    {u"交貨日期", u"交貨日期:", 8, 1, u"And 採購明細資料.交貨日期 like '%{}%' "},
    {u"審單異常", u"天    數:", 0, 1, u"And 採購資料.採購日期 < '{}' "},
    {u"原料規格", u"原料規格:", 0, 0, u"And 採購明細資料.規格 like '%{}%' "},
    {u"工單單號", u"工單單號:", 0, 0, u"and 採購明細資料.印件編號 like '{}%'"},
};
constexpr int BuyerOption = 4;
constexpr int OverdueOption = 6;
constexpr char16_t BoardBuyerClause[] = u"And (採購明細資料.料號 like '%{}%') ";

SqlText filled(const char16_t* clause, const QString& value) {
    const QStringView text(clause);
    return text.count(u"{}") == 2 ? sql(text, value, value)
           : text.contains(u"{}") ? sql(text, value)
                                  : sql(text);
}

} // namespace

SqlText orderSearchStatement(const Session& session, const SearchInput& input, bool canSeePrice,
                             const QString& today) {
    SqlText statement =
        sql(u"select 採購資料.採購單號, 採購資料.採購日期, 採購資料.廠商簡稱 as 供應商, "
            u"採購明細資料.原料代號, 採購明細資料.原料名稱, "
            u"採購明細資料.規格, 採購明細資料.數量, 採購明細資料.單位, ") +
        (canSeePrice ? sql(u"採購明細資料.單價, 採購明細資料.小計, ")
                     : sql(u"'******' as 單價, '******' as 小計, ")) +
        sql(u"採購明細資料.印件編號 as 客戶料號,採購資料.審單,採購明細資料.送清, 採購資料.採購單號 as "
            u"H採購單號 from [採購資料] inner join "
            u"[採購明細資料] on 採購資料.採購單號 = 採購明細資料.採購單號 where 1=1 and 採購資料.類別='{}' ",
            session.category) +
        readyMadeSql(scopeOn(session, u"採購資料"_s));
    const bool board = session.category != u"物料";
    const auto option = static_cast<size_t>(input.option);
    if (input.option == OverdueOption) {
        const QDate start = dateOf8(today).addDays(-static_cast<int>(std::min(val(input.text), 36500.0)));
        statement += filled(conditions[option].clause, date8(start));
    } else {
        statement += filled(
            board && input.option == BuyerOption ? BoardBuyerClause : conditions[option].clause, input.text);
    }
    const SqlText unapproved = sql(u"And (採購資料.審單<>'Y' or 採購資料.審單 is null) ");
    if (input.checks.value(u"Chk查詢廠商"_s)) {
        statement +=
            sql(u"And (len(採購資料.廠商代號)=0 or 採購資料.廠商代號='' or 採購資料.廠商代號 is null) ");
        if (input.option == OverdueOption) statement += unapproved;
    } else if (input.option == OverdueOption) {
        statement += unapproved;
    } else {
        statement += sql(u"And (採購資料.採購日期 Between '{}' And '{}') ", input.from, input.to);
        if (input.checks.value(u"chk查詢審單"_s)) statement += unapproved;
    }
    return statement + sql(u" ORDER BY 採購日期 desc,採購資料.採購單號 desc");
}

SearchSpec orderSearch(Session& session, bool canSeePrice) {
    SearchSpec spec;
    const bool board = session.category != u"物料";
    for (int i = 0; const ConditionRow& row : conditions) {
        SearchCondition condition{QString::fromUtf16(row.caption), QString::fromUtf16(row.label), row.limit,
                                  row.filter};
        if (board && i == BuyerOption) {
            condition.caption = u"料號"_s;
            condition.label = u"料號:"_s;
        }
        if (i == OverdueOption) {
            condition.defaultText = u"7"_s;
            condition.withDates = false;
        }
        spec.conditions.push_back(condition);
        ++i;
    }
    spec.checks = {{u"Chk查詢廠商"_s, u"未選廠商"_s}, {u"chk查詢審單"_s, u"未審單"_s}};
    spec.defaultDates = [&session] { return sinceLastMonth(session); };
    spec.statement = [&session, canSeePrice](const SearchInput& input) {
        return orderSearchStatement(session, input, canSeePrice, today8(session));
    };
    spec.widths = {{u"採購單號"_s, 90},  {u"供應商"_s, 130}, {u"原料代號"_s, 100}, {u"原料名稱"_s, 210},
                   {u"規格"_s, 140},     {u"數量"_s, 90},    {u"單價"_s, 90},      {u"小計"_s, 110},
                   {u"客戶料號"_s, 130}, {u"H採購單號"_s, 0}};
    return spec;
}

} // namespace liaowu
