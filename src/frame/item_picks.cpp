#include "frame/item_picks.h"
#include "common/rights.h"
#include "common/session.h"

namespace liaowu {

using namespace Qt::StringLiterals;

const ItemFamily& pickFamily(const Session& session) {
    const ItemFamily* family = itemFamily(session.formulaMode);
    return family ? *family : *itemFamily(u"紙板"_s);
}

PickSpec documentPick(const QString& name, const QString& title, PickStatements statements) {
    PickSpec spec{name, title, u"取得輔助資料錯誤"_s};
    spec.statements = std::move(statements);
    spec.moneyColumns = {u"進價"_s, u"單價"_s, u"小計"_s, u"幣別"_s};
    return spec;
}

SqlText itemCodeAndName(const ItemFamily& family) {
    if (family.word == u"紙板")
        return sql(u"select 浪紙資料.浪紙代號 as 紙板代號, 浪紙資料.浪紙名稱 as 紙板名稱, ");
    return sql(u"select [{}].[{}], [{}].[{}], ", family.table, family.code, family.table, family.name);
}

SqlText itemCondition(const ItemFamily& family, const QString& filter) {
    return sql(u" from  [{}] where [{}].[{}] like '%{}%' or [{}].[{}] like '%{}%' or [{}].規格 like '%{}%' ",
               family.table, family.table, family.code, filter, family.table, family.name, filter,
               family.table, filter);
}

namespace {

std::vector<SqlText> itemStatements(const Session& session, const PickInput& input) {
    const ItemFamily& family = pickFamily(session);
    const QString& t = family.table;
    SqlText statement =
        itemCodeAndName(family) +
        sql(u"[{}].規格, rtrim([{}].庫存) as 庫存, [{}].單位, [{}].單價, [{}].幣別", t, t, t, t, t);
    if (family.word == u"紙品") statement += sql(u",紙品資料.卷筒紙");
    return {statement + itemCondition(family, input.filter) + sql(u"order by [{}].[{}]", t, family.name)};
}

SqlText orderLineCondition(const Session& session, const PickInput& input) {
    return sql(u" Where (採購資料.採購單號 Like '{}%' or  採購明細資料.原料代號 Like '{}%' or  "
               u"採購明細資料.原料名稱 Like '{}%') and "
               u"採購資料.審單= 'Y' And 採購資料.類別 = '{}' ",
               input.filter, input.filter, input.filter, session.formulaMode) +
           readyMadeSql(scopeOn(session, u"採購資料"_s));
}

std::vector<SqlText> openOrderLineStatements(const Session& session, const PickInput& input) {
    const ItemFamily& family = pickFamily(session);
    const QString& t = family.table;
    const bool board = family.word == u"紙板";
    const QString received = board ? u"檢驗合格數"_s : u"數量"_s;
    SqlText statement = sql(
        u"select 採購資料.採購單號, 採購明細資料.原料代號, 採購明細資料.原料名稱,       採購明細資料.規格 , "
        u"cast(採購明細資料.數量 as "
        u"float)-cast(coalesce(採購明細資料.已入庫數,'') as float) as 未收數, "
        u"採購明細資料.單位,採購明細資料.單價, 採購明細資料.小計, case when "
        u"(採購明細資料.單位=[{}].單位) then cast(採購明細資料.[{}] as "
        u"float)-cast(coalesce(採購明細資料.已入庫數,'') as float) else '' end "
        u"AS 入庫數, [{}].單位, 採購資料.幣別, "
        u"採購明細資料.請購單號,採購資料.廠商代號,採購資料.廠商簡稱,採購明細資料.檢驗單號,採購明細資料.序,"
        u"採購明細資料.剖切尺寸,採購明細資料.寬剖 from (採購資料 INNER JOIN 採購明細資料 ON "
        u"採購資料.採購單號 = 採購明細資料.採購單號) ",
        t, received, t);
    statement += board ? sql(u"left JOIN [{}] ON 採購明細資料.原料代號 = [{}].[{}]", t, t, family.code)
                       : sql(u"inner JOIN [{}] ON 採購明細資料.原料代號 = [{}].[{}]", t, t, family.code);
    statement += orderLineCondition(session, input);
    statement +=
        board ? sql(u"and 採購資料.廠商代號 = '{}' ", session.pickVendor)
              : sql(u"and (採購資料.廠商代號 = '{}' or 採購資料.廠商代號 = '' or 採購資料.廠商代號 is null) ",
                    session.pickVendor);
    statement += sql(u"and 送清<> 'Y'  ");
    if (!input.checked)
        statement += sql(
            u"And cast(採購明細資料.數量 as float)-cast(coalesce(採購明細資料.已入庫數,'') as float)<>0 ");
    return {statement + sql(u"Order By 採購資料.採購單號")};
}

std::vector<SqlText> receivedOrderLineStatements(const Session& session, const PickInput& input) {
    const ItemFamily& family = pickFamily(session);
    const QString& t = family.table;
    return {sql(u"select 採購資料.採購單號, 採購明細資料.原料代號, 採購明細資料.廠商名稱 as 廠商品名,       "
                u"採購明細資料.規格 , "
                u"cast(採購明細資料.已入庫數 as float) as 已入庫數, 採購明細資料.單位,採購明細資料.單價, "
                u"採購明細資料.小計, case when "
                u"(採購明細資料.單位=[{}].單位) then cast(採購明細資料.已入庫數 as float) else '' end AS "
                u"入庫數, [{}].單位, 採購資料.幣別, "
                u"採購明細資料.請購單號,採購資料.廠商代號,採購資料.廠商簡稱,採購明細資料.檢驗單號,"
                u"採購明細資料.序,採購明細資料.剖切尺寸,採購明細資料.寬剖 "
                u"from (採購資料 INNER JOIN 採購明細資料 ON 採購資料.採購單號 = 採購明細資料.採購單號) left "
                u"JOIN [{}] ON 採購明細資料.原料代號 = "
                u"[{}].[{}]",
                t, t, t, t, family.code) +
            orderLineCondition(session, input) +
            sql(u"and 採購資料.廠商代號 = '{}' and cast(採購明細資料.已入庫數 as float)>0  and "
                u"採購資料.採購日期 between '{}' and '{}' Order By "
                u"採購資料.採購單號",
                session.pickVendor, input.from, input.to)};
}

} // namespace

PickSpec itemPick() {
    PickSpec spec = documentPick(u"frm原料輔助視窗"_s, u"原料輔助視窗"_s, itemStatements);
    spec.filterEachKey = true;
    return spec;
}

PickSpec openOrderLinePick() {
    PickSpec spec = documentPick(u"frm採購輔助視窗"_s, u"採購輔助視窗"_s, openOrderLineStatements);
    spec.checkBox = u"顯示全部"_s;
    return spec;
}

PickSpec receivedOrderLinePick(const QString& from, const QString& to) {
    PickSpec spec =
        documentPick(u"frm採購輔助視窗_退貨"_s, u"採購輔助視窗_退貨"_s, receivedOrderLineStatements);
    spec.dateLabels = {u"起始日期:"_s, u"結束日期:"_s};
    spec.from = from;
    spec.to = to;
    return spec;
}

} // namespace liaowu
