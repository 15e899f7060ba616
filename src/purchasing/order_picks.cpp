#include "purchasing/order_picks.h"
#include "common/items.h"
#include "common/phrases.h"
#include "common/session.h"
#include "common/text_values.h"
#include "data/recordset.h"
#include "frame/item_picks.h"
#include "purchasing/order_pricing.h"

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

std::vector<SqlText> requisitionLineStatements(const Session& session, const PickInput& input) {
    const bool materials = session.formulaMode == u"物料";
    const ItemFamily& family = pickFamily(session);
    const QString& t = family.table;
    SqlText statement =
        sql(u"select 原料申購資料.申購單號 ,原料申購明細.原料代號,原料申購明細.原料名稱, "
            u"原料申購明細.規格,cast(原料申購明細.數量 as "
            u"float)-cast(原料申購明細.已采購數 as float) as 未采購數, "
            u"[{}].庫存,[{}].進價,[{}].幣別,原料申購明細.單位, "
            u"原料申購明細.印件編號,原料申購明細.需求日期,原料申購明細.備注,原料申購資料.類別,",
            t, t, t);
    if (materials) {
        statement += sql(u"物料資料.廠商代號,物料資料.進料單位,物料資料.類別,'' ");
    } else if (family.word == u"紙板") {
        statement += sql(u"浪紙資料.廠牌,浪紙資料.進料單位,'' as 類別,原料申購明細.楞別 ");
    } else {
        statement += sql(u"'' as 廠牌,[{}].進料單位,'' as 類別,原料申購明細.楞別 ", t);
    }
    statement += sql(u"from  原料申購資料 left join 原料申購明細 on "
                     u"原料申購明細.申購單號=原料申購資料.申購單號 left join [{}] on [{}].[{}] = "
                     u"原料申購明細.原料代號 where (原料申購明細.申購單號 like '{}%' or  "
                     u"原料申購明細.原料代號 like '%{}%') and  "
                     u"原料申購資料.類別='{}' and  cast(原料申購明細.數量 as "
                     u"float)-cast(原料申購明細.已采購數 as float) <> 0 ",
                     t, t, family.code, input.filter, input.filter, family.word);
    if (materials)
        statement += sql(
            u"and ( 物料資料.廠商代號 like '{}' or (len(物料資料.廠商代號)=0 or 物料資料.廠商代號 is null)) ",
            session.pickVendor);
    statement += sql(u"and 原料申購資料.審單 = 'Y' ");
    if (input.sort == 0) return {statement + sql(u"order by 原料申購資料.申購單號 ")};
    return {statement + sql(u"order by [{}].[{}], [{}].規格", t, family.name, t)};
}

std::vector<SqlText> workOrderStatements(const Session&, const PickInput& input) {
    SqlText creases;
    for (const auto& column :
         {u"寬壓線0"_s, u"寬壓線1"_s, u"寬壓線2"_s, u"寬壓線3"_s, u"寬壓線4"_s, u"寬壓線5"_s})
        creases +=
            sql(u"case when 紙箱生產資料.[{}]<>'' then 紙箱生產資料.[{}]+'*' else '' end + ", column, column);
    creases += sql(u"coalesce(紙箱生產資料.寬壓線6,'') as 壓線尺寸,");
    const SqlText statement =
        sql(u"select 紙箱生產資料.工單單號,紙箱生產資料.工單日期, "
            u"紙箱生產資料.客戶單號,紙箱生產資料.客戶代號,客戶資料.客戶簡稱 as 客戶,        "
            u"紙箱生產資料.紙箱代號,紙箱生產資料.客戶料號 as 料號,紙箱生產資料.紙質名稱 as "
            u"材質,紙箱生產資料.備料尺寸寬 as 備料寬,"
            u"紙箱生產資料.備料尺寸長 as 備料長,       "
            u"紙箱生產資料.楞別,紙箱生產資料.備紙數,紙箱生產資料.平版剖切寬 as 切寬,"
            u"紙箱生產資料.平版剖切長 as 切長, ") +
        creases +
        sql(u"紙箱生產資料.壓線種類,紙箱生產資料.採購備注,紙箱生產資料.紙質代號,紙箱生產資料.寬剖 as 走紙才 "
            u"from  紙箱生產資料 inner join 客戶資料 on "
            u"紙箱生產資料.客戶代號=客戶資料.客戶代號 where (紙箱生產資料.工單單號 like '%{}%' or "
            u"紙箱生產資料.客戶料號 like '%{}%' or "
            u"紙箱生產資料.紙箱代號 like '%{}%' or 紙箱生產資料.客戶單號 like '%{}%' or "
            u"紙箱生產資料.客戶代號 like '%{}%' or 客戶資料.客戶簡稱 "
            u"like '%{}%') and (紙箱生產資料.完工<>'Y' or 紙箱生產資料.完工 is null ) and "
            u"紙箱生產資料.工單單號 not in (select "
            u"採購明細資料.印件編號 from 採購明細資料  where  紙箱生產資料.工單單號 = "
            u"採購明細資料.印件編號) ",
            input.filter, input.filter, input.filter, input.filter, input.filter, input.filter);
    switch (input.sort) {
    case 1:
        return {statement + sql(u"order by 紙箱生產資料.紙質名稱 ")};
    case 2:
        return {statement + sql(u"order by 紙箱生產資料.交貨日期 ")};
    case 3:
        return {statement + sql(u"order by 紙箱生產資料.客戶代號 ")};
    default:
        return {statement + sql(u"order by 紙箱生產資料.工單單號 ")};
    }
}

std::vector<SqlText> orderItemStatements(const Session& session, const PickInput& input) {
    const ItemFamily& family = pickFamily(session);
    const QString& t = family.table;
    SqlText statement = itemCodeAndName(family) +
                        sql(u"[{}].規格, [{}].庫存, [{}].進料單位, [{}].進價, [{}].幣別,", t, t, t, t, t);
    if (family.word == u"物料") {
        statement += sql(u"物料資料.類別,'' as 楞別");
    } else if (family.word == u"紙品") {
        statement += sql(u"紙品資料.卷筒紙,'' as 楞別");
    } else if (family.word == u"紙板") {
        statement += sql(u"'' as 類別,浪紙資料.楞別");
    } else {
        statement += sql(u"'' as 類別,'' as 楞別");
    }
    statement += itemCondition(family, input.filter);
    if (input.sort == 0) return {statement + sql(u"order by [{}].[{}]", t, family.code)};
    return {statement + sql(u"order by [{}].[{}], [{}].規格", t, family.name, t)};
}

std::vector<SqlText> requisitionItemStatements(const Session& session, const PickInput& input) {
    const ItemFamily& family = pickFamily(session);
    const QString& t = family.table;
    SqlText statement =
        itemCodeAndName(family) +
        sql(u"[{}].規格, rtrim([{}].庫存) as 庫存, [{}].單位, [{}].單價, [{}].幣別", t, t, t, t, t);
    if (family.word == u"物料") statement += sql(u",物料資料.品檢,''");
    if (family.word == u"紙板") statement += sql(u",'',浪紙資料.楞別");
    return {statement + itemCondition(family, input.filter) + sql(u"order by [{}].[{}]", t, family.name)};
}

std::vector<SqlText> requisitionStatements(const Session& session, const PickInput& input) {
    const ItemFamily& family = pickFamily(session);
    SqlText statement =
        sql(u"select 原料申購明細.申購單號 ,原料申購明細.原料代號,原料申購明細.原料名稱, 原料申購明細.規格,"
            u"cast(原料申購明細.數量 as float)-cast(原料申購明細.已采購數 as float) as 未採購數, "
            u"原料申購明細.單位,原料申購明細.需求日期,原料申購資料.類別");
    const bool byVendor = family.word == u"物料" || family.word == u"凸版";
    if (byVendor) statement += sql(u",[{}].廠商代號,[{}].廠商簡稱", family.table, family.table);
    statement +=
        sql(u" from 原料申購明細 left join 原料申購資料 on 原料申購資料.申購單號 = 原料申購明細.申購單號 ");
    if (byVendor)
        statement += sql(u"left join [{}] on [{}].[{}] = 原料申購明細.原料代號 ", family.table, family.table,
                         family.code);
    statement += sql(u"  where 原料申購資料.類別 = '{}' and 原料申購明細.申購單號 like '{}%' and "
                     u"cast(原料申購明細.數量 as "
                     u"float)-cast(原料申購明細.已采購數 as float) >0 ",
                     family.word, input.filter);
    if (byVendor)
        statement +=
            sql(u"and ( [{}].廠商代號 like '{}' or (len([{}].廠商代號)=0 or [{}].廠商代號 is null)) ",
                family.table, session.pickVendor, family.table, family.table);
    // Only an approved need may be bought, in every family.
    return {statement + sql(u"and 原料申購資料.審單 = 'Y' order by 原料申購明細.申購單號 ")};
}

} // namespace

PickSpec requisitionLinePick(const QString&) {
    PickSpec spec =
        documentPick(u"frm原料輔助視窗_請購"_s, u"原料輔助視窗(採購)"_s, requisitionLineStatements);
    spec.several = true;
    spec.sortOptions = {u"代 號"_s, u"名稱規格"_s};
    return spec;
}

PickSpec workOrderPick() {
    PickSpec spec = documentPick(u"frm工單輔助視窗_採購"_s, u"工單輔助視窗(採購)"_s, workOrderStatements);
    spec.sortOptions = {u"單號"_s, u"材質"_s, u"交貨日期"_s, u"客戶"_s};
    return spec;
}

PickSpec orderItemPick() {
    PickSpec spec = documentPick(u"frm原料輔助視窗_採購"_s, u"原料輔助視窗(採購)"_s, orderItemStatements);
    spec.sortOptions = {u"代 號"_s, u"名稱規格"_s};
    return spec;
}

PickSpec requisitionPick() {
    return documentPick(u"frm採購輔助視窗_請購單"_s, u"採購輔助視窗"_s, requisitionStatements);
}

PickSpec requisitionItemPick() {
    PickSpec spec = documentPick(u"frm原料輔助視窗_申購"_s, u"原料輔助視窗"_s, requisitionItemStatements);
    spec.several = true;
    return spec;
}

// ---- what a picked row becomes ----

OrderLine lineOfRequisitionPick(const QStringList& row, const QString& category) {
    const auto text = [&](int element) { return row.value(element).trimmed(); };
    OrderLine line;
    line.請購單號 = text(0);
    line.原料代號 = text(1);
    line.廠商名稱 = line.原料名稱 = text(2);
    line.規格 = text(3);
    line.數量 = line.未交數 = numberText(settled(val(text(4))));
    line.單位 = text(14);
    line.送清 = u"N"_s;
    line.交貨日期 = text(10);
    line.印件編號 = text(9);
    if (category != u"物料") line.楞別 = text(16);
    line.寬剖 = u"1"_s;
    return line;
}

OrderLine lineOfWorkOrderPick(const QStringList& row, const OrderLine& before) {
    const auto text = [&](int element) { return row.value(element).trimmed(); };
    OrderLine line;
    for (const auto kept : {&OrderLine::請購單號, &OrderLine::序, &OrderLine::已入庫數, &OrderLine::已檢驗數,
                            &OrderLine::檢驗合格數})
        line.*kept = before.*kept;
    line.印件編號 = text(0);
    line.客戶代號 = text(3);
    line.客戶簡稱 = text(4);
    line.紙箱代號 = text(5);
    line.料號 = text(6);
    line.原料代號 = text(17);
    line.廠商名稱 = line.原料名稱 = text(7);
    line.規格 = text(8) + u'*' + text(9);
    line.數量 = numberText(val(text(11)));
    line.未交數 = numberText(openQuantity(line));
    line.單位 = u"PCS"_s;
    line.楞別 = text(10);
    line.剖切尺寸 = text(12) + u'*' + text(13);
    line.壓線種類 = text(15);
    line.壓線尺寸 = text(14);
    // Each crease but the seventh brings the sign behind it.
    if (line.壓線尺寸.endsWith(u'*')) line.壓線尺寸.chop(1);
    line.送清 = u"N"_s;
    line.備註 = truncateBytes(text(16), 50);
    line.寬剖 = numberText(val(text(18)));
    return line;
}

void putItemPick(OrderLine& line, const QStringList& row, const QString& category) {
    const auto text = [&](int element, int limit) {
        return truncateBytes(row.value(element).trimmed(), limit);
    };
    line.原料代號 = text(0, 20);
    line.廠商名稱 = line.原料名稱 = text(1, 40);
    if (category == u"物料") line.規格 = text(2, 40);
    if (category == u"紙板") line.楞別 = text(8, 10);
    line.單位 = text(4, 10);
    line.寬剖 = u"1"_s;
    if (line.送清.isEmpty()) line.送清 = u"N"_s;
}

std::optional<QStringList> exactPick(const Session& session, Connection& connection, const PickSpec& spec,
                                     const QString& code) {
    for (const SqlText& statement : spec.statements(session, {code.trimmed()})) {
        const Recordset rows = select(connection, statement);
        for (int row = 0; row < rows.RecordCount(); ++row) {
            if (rows.textAt(row, 0).trimmed().compare(code.trimmed(), Qt::CaseInsensitive) != 0) continue;
            QStringList texts;
            for (int column = 0; column < rows.columnCount(); ++column)
                texts << rows.textAt(row, column);
            return texts;
        }
    }
    return std::nullopt;
}

QString vendorItemName(Connection& connection, const QString& code, const QString& vendor) {
    return truncateBytes(materialSizes(connection, code, vendor), 40);
}

} // namespace liaowu
