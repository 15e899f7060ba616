#include "warehouse/receipt_queries.h"
#include "common/clock.h"
#include "common/items.h"
#include "common/rights.h"
#include "common/text_values.h"
#include "data/recordset.h"
#include "warehouse/receipt_pricing.h"
#include "warehouse/receipt_rules.h"

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

/// A receipt has no salesperson of its own: its vendor has.
SqlText vendorScope(const Session& session) {
    if (session.salesScope.trimmed().isEmpty()) return {};
    return sql(u"and 原料入庫資料.廠商代號 in (select 廠商資料.廠商代號 from 廠商資料 where 1=1 ") +
           readyMadeSql(scopeOn(session, u"廠商資料"_s)) + sql(u") ");
}

SqlText vendorCondition(const QString& vendor, bool board) {
    if (board) return sql(u"And 採購資料.廠商代號 = '{}' ", vendor);
    return sql(u"And ( 採購資料.廠商代號 = '{}' or (len(採購資料.廠商代號)=0 or 採購資料.廠商代號 is null)) ",
               vendor);
}

} // namespace

SqlText receiptBrowseStatement(const Session& session) {
    return sql(u"select 入庫單號 from [原料入庫資料] where 類別 = '{}' and 單別 not like '%退%' ",
               session.category) +
           vendorScope(session) + sql(u"order by 製單時間,入庫日期,入庫單號");
}

std::optional<QString> findSentBack(const Session& session, Connection& connection, const QString& number) {
    const Recordset row = select(
        connection, sql(u"select 入庫單號 from [原料入庫資料] where 類別 = '{}' and 入庫單號 = '{}' and "
                        u"單別 like '%退%' and 入庫單號 not like '%T%' ",
                        session.category, number) +
                        vendorScope(session));
    return row.RecordCount() > 0 ? std::optional(row.text(0).trimmed()) : std::nullopt;
}

std::optional<ReceiptItem> findReceiptItem(Connection& connection, const QString& category,
                                           const QString& codeOrName) {
    const ItemFamily* family = itemFamily(category);
    if (!family || codeOrName.trimmed().isEmpty()) return std::nullopt;
    const QString& t = family->table;
    const Recordset rows =
        select(connection, sql(u"select [{}].[{}], [{}].[{}], [{}].規格, [{}].庫存, [{}].單位 from  [{}] "
                               u"where [{}].[{}] = '{}' or [{}].[{}] "
                               u"= '{}' order by [{}].[{}]",
                               t, family->code, t, family->name, t, t, t, t, t, family->code, codeOrName, t,
                               family->name, codeOrName, t, family->name));
    const auto text = [&](int row, int column) { return rows.textAt(row, column).trimmed(); };
    int found = rows.RecordCount() == 1 ? 0 : -1;
    for (int row = 0; row < rows.RecordCount() && found < 0; ++row)
        if (text(row, 0).compare(codeOrName.trimmed(), Qt::CaseInsensitive) == 0) found = row;
    if (found < 0) return std::nullopt;
    return ReceiptItem{text(found, 0), text(found, 1), text(found, 2), text(found, 3), text(found, 4)};
}

std::vector<double> vendorWeights(Connection& connection, const QString& vendor) {
    std::vector<double> weights;
    if (vendor.trimmed().isEmpty()) return weights;
    Recordset rows = select(
        connection, sql(u"select * from 廠商浪紙度數明細 where 廠商代號 ='{}' order by 浪紙度數 ", vendor));
    for (; !rows.EOF_(); rows.MoveNext())
        weights.push_back(val(rows.text(u"浪紙度數")));
    return weights;
}

ReceiptLines linesOfOrder(Connection& connection, const QString& order, const QString& vendor,
                          const QString& category, const QString& kind, bool canSeePrice) {
    const ItemFamily* family = itemFamily(category);
    if (!family) return {};
    const QString& t = family->table;
    const bool sentBack = isReturnKind(kind);
    const SqlText quantity =
        sentBack ? sql(u"-cast(coalesce(採購明細資料.已入庫數,'') as float)")
                 : sql(u"cast(採購明細資料.數量 as float)-cast(coalesce(採購明細資料.已入庫數,'') as float)");
    const SqlText condition = sentBack ? sql(u"And cast(coalesce(採購明細資料.已入庫數,'') as float)>0 ")
                                       : sql(u"And ") + quantity + sql(u">0 ");
    Recordset rows = select(
        connection,
        sql(u"select 採購資料.採購單號, 採購明細資料.原料代號, ") +
            (sentBack ? sql(u"採購明細資料.廠商名稱 as 廠商品名") : sql(u"採購明細資料.原料名稱")) +
            sql(u", 採購明細資料.規格,") + quantity +
            sql(u" as 未收數,'' as 備品, 採購明細資料.單價, "
                u"採購明細資料.單位,採購明細資料.小計,採購明細資料.寬剖, [{}].單位,(",
                t) +
            sql(u"(") + quantity +
            sql(u")*cast(coalesce(寬剖,'') as float)) as 小紙數, "
                u"採購明細資料.剖切尺寸,'','','','','','','','','',採購明細資料.序 from "
                u"(採購資料 INNER JOIN 採購明細資料 ON 採購資料.採購單號 = 採購明細資料.採購單號) INNER JOIN "
                u"[{}] ON 採購明細資料.原料代號 = [{}].[{}] "
                u"Where 採購資料.採購單號 = '{}' and 採購資料.審單= 'Y' ",
                t, t, family->code, order) +
            vendorCondition(vendor, category == u"紙板") + condition + sql(u"order by 採購明細資料.序"));
    ReceiptLines lines;
    for (; !rows.EOF_(); rows.MoveNext()) {
        ReceiptLine line;
        for (size_t i = 0; i < ReceiptLineColumns.size(); ++i)
            line.*ReceiptLineColumns[i].member = rows.text(static_cast<int>(i)).trimmed();
        putPrice(line, line.單價, canSeePrice);
        line.走紙才 = numberText(val(line.走紙才));
        if (!canSeePrice) {
            line.原小計 = line.小計;
            line.小計 = MaskedMoney;
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

QString currencyOfOrder(Connection& connection, const QString& order) {
    const Recordset row = select(connection, sql(u"select 幣別 from 採購資料 where 採購單號 = '{}'", order));
    return row.RecordCount() > 0 ? row.text(0).trimmed() : QString();
}

void putOrderPick(ReceiptLine& line, const QStringList& row, const QString& kind, bool canSeePrice) {
    const auto text = [&](int element, int limit) { return row.value(element).trimmed().left(limit); };
    line.採購單號 = text(0, 15);
    line.原料代號 = text(1, 20);
    line.原料名稱 = text(2, 40);
    line.規格 = text(3, 50);
    line.數量 = signedQuantity(numberText(val(row.value(4))), kind).left(20);
    line.單位 = text(5, 4);
    line.備品.clear();
    putPrice(line, text(6, 20), canSeePrice);
    line.採購序 = text(15, 10);
    line.檢驗單號 = text(14, 30);
    line.走紙才 = text(17, 30);
    line.入庫單位 = text(9, 30);
    line.剖切尺寸 = text(16, 30);
    line.檢驗 = u"N"_s;
}

void putItem(ReceiptLine& line, const ReceiptItem& item) {
    line.原料代號 = item.code.left(20);
    line.原料名稱 = item.name.left(40);
    line.規格 = item.規格.left(50);
    line.單位 = line.入庫單位 = item.stockUnit.left(4);
}

std::optional<OrderedQuantity> orderedQuantity(Connection& connection, const ReceiptLine& line) {
    if (line.採購單號.isEmpty() || line.採購序.isEmpty()) return std::nullopt;
    const Recordset row =
        select(connection, sql(u"select 數量,已入庫數 from 採購明細資料 Where 採購單號 = '{}' and 序 = '{}'",
                               line.採購單號, line.採購序));
    if (row.RecordCount() == 0) return std::nullopt;
    const double ordered = val(row.text(0));
    return OrderedQuantity{ordered, ordered - val(row.text(1))};
}

// ---- search ----

namespace {

struct ConditionRow {
    const char16_t *caption, *label, *clause;
};
/// By index of the option; the last one takes a number of days.
constexpr ConditionRow conditions[] = {
    {u"入庫單號", u"入庫單號:", u"And 原料入庫資料.入庫單號 like '%{}%' "},
    {u"採購單號", u"採購單號:", u"And 原料入庫明細.採購單號 like '%{}%' "},
    {u"原料名稱", u"原料名稱:",
     u"And (原料入庫明細.原料代號 like '%{}%' or 原料入庫明細.原料名稱 like '%{}%') "},
    {u"廠商", u"廠商代號:", u"And 原料入庫資料.廠商代號 like '{}%' "},
    {u"驗收人員", u"驗收人員:",
     u"And (原料入庫資料.經辦代號 like '%{}%' or 原料入庫資料.經辦名稱 like '%{}%') "},
    {u"廠商單號", u"廠商單號:", u"And 原料入庫資料.廠商單號 like '{}%' "},
    {u"審核異常", u"天    數:", u"And 原料入庫資料.入庫日期 < '{}' "},
};
constexpr int OverdueOption = 6;

SqlText filled(const char16_t* clause, const QString& value) {
    const QStringView text(clause);
    return text.count(u"{}") == 2 ? sql(text, value, value) : sql(text, value);
}

} // namespace

SqlText receiptSearchStatement(const Session& session, const SearchInput& input, bool canSeePrice,
                               const QString& today) {
    const SqlText price = canSeePrice ? sql(u"原料入庫明細.單價") : sql(u"'******' as 單價");
    const SqlText amount = canSeePrice ? sql(u"原料入庫明細.小計") : sql(u"'******' as 小計");
    SqlText statement = sql(u"select 原料入庫資料.入庫單號, 原料入庫資料.入庫日期, 原料入庫明細.採購單號, "
                            u"原料入庫明細.原料代號, 原料入庫明細.原料名稱, "
                            u"原料入庫明細.規格, rtrim(原料入庫明細.數量) as 入庫數,  ") +
                        price + sql(u",原料入庫明細.入庫單位 as 單位, ") + amount +
                        sql(u", 原料入庫資料.經辦名稱 AS 驗收人, 原料入庫資料.審核 as 復核, "
                            u"原料入庫資料.入庫單號 as H入庫單號 from [原料入庫資料] inner join "
                            u"[原料入庫明細] on 原料入庫資料.入庫單號 = 原料入庫明細.入庫單號 where "
                            u"原料入庫資料.類別 = '{}' and 單別 not like '%退%' ",
                            session.category) +
                        vendorScope(session);
    const char16_t* clause = conditions[static_cast<size_t>(input.option)].clause;
    const bool overdue = input.option == OverdueOption;
    if (overdue) {
        const int days = static_cast<int>(std::min(val(input.text), 36500.0));
        statement += filled(clause, date8(dateOf8(today).addDays(-days)));
    } else {
        statement += filled(clause, input.text) +
                     sql(u"And (原料入庫資料.入庫日期 Between '{}' And '{}') ", input.from, input.to);
    }
    if (overdue || input.checks.value(u"chk查詢審單"_s))
        statement += sql(u"And (原料入庫資料.審核<>'Y' or 原料入庫資料.審核 is null) ");
    return statement + sql(u" ORDER BY 原料入庫資料.入庫日期 desc,原料入庫資料.入庫單號 desc");
}

SearchSpec receiptSearch(Session& session, bool canSeePrice) {
    SearchSpec spec;
    for (const ConditionRow& row : conditions)
        spec.conditions.push_back({QString::fromUtf16(row.caption), QString::fromUtf16(row.label)});
    SearchCondition& overdue = spec.conditions[OverdueOption];
    overdue.filter = 1;
    overdue.defaultText = u"7"_s;
    overdue.withDates = false;
    spec.checks = {{u"chk查詢審單"_s, u"未審核"_s}};
    spec.defaultDates = [&session]() -> std::pair<QString, QString> {
        const QString today = today8(session);
        if (today.isEmpty()) return {};
        return {today.left(6) + u"01"_s, lastDayOfMonth(today)};
    };
    spec.statement = [&session, canSeePrice](const SearchInput& input) {
        return receiptSearchStatement(session, input, canSeePrice, today8(session));
    };
    spec.widths = {{u"H入庫單號"_s, 0}};
    return spec;
}

} // namespace liaowu
