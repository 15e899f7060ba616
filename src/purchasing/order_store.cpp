#include "purchasing/order_store.h"
#include "common/clock.h"
#include "common/document_stamp.h"
#include "common/text_values.h"
#include "data/recordset.h"
#include "purchasing/order_price_feedback.h"
#include "purchasing/order_rules.h"

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

struct HeaderColumn {
    const char16_t* column;
    QString OrderHeader::*member;
};
/// The header's columns in the order in which a save writes them; the approval columns follow by their own rule.
constexpr HeaderColumn headerColumns[] = {
    {u"採購單號", &OrderHeader::採購單號},
    {u"類別", &OrderHeader::類別},
    {u"採購日期", &OrderHeader::採購日期},
    {u"廠商代號", &OrderHeader::廠商代號},
    {u"廠商簡稱", &OrderHeader::廠商簡稱},
    {u"業務員代號", &OrderHeader::業務員代號},
    {u"業務員名稱", &OrderHeader::業務員名稱},
    {u"幣別", &OrderHeader::幣別},
    {u"採購類別", &OrderHeader::採購類別},
    {u"工單單號", &OrderHeader::工單單號},
    {u"合計", &OrderHeader::合計},
    {u"申購單位", &OrderHeader::申購單位},
};
constexpr HeaderColumn readOnlyColumns[] = {
    {u"審單", &OrderHeader::審單},         {u"審單人", &OrderHeader::審單人},
    {u"審單日期", &OrderHeader::審單日期}, {u"品質要求", &OrderHeader::品質要求},
    {u"修改人", &OrderHeader::修改人},     {u"修改時間", &OrderHeader::修改時間}};

/// The line's columns in the order of the table; 序 comes first and 採購單號 last.
struct LineColumnOfTable {
    const char16_t* column;
    QString OrderLine::*member;
};
constexpr LineColumnOfTable lineColumns[] = {
    {u"序", &OrderLine::序},
    {u"請購單號", &OrderLine::請購單號},
    {u"印件編號", &OrderLine::印件編號},
    {u"客戶代號", &OrderLine::客戶代號},
    {u"客戶簡稱", &OrderLine::客戶簡稱},
    {u"紙箱代號", &OrderLine::紙箱代號},
    {u"料號", &OrderLine::料號},
    {u"原料代號", &OrderLine::原料代號},
    {u"廠商名稱", &OrderLine::廠商名稱},
    {u"原料名稱", &OrderLine::原料名稱},
    {u"規格", &OrderLine::規格},
    {u"數量", &OrderLine::數量},
    {u"單價", &OrderLine::單價},
    {u"單位", &OrderLine::單位},
    {u"小計", &OrderLine::小計},
    {u"交貨日期", &OrderLine::交貨日期},
    {u"楞別", &OrderLine::楞別},
    {u"剖切尺寸", &OrderLine::剖切尺寸},
    {u"壓線種類", &OrderLine::壓線種類},
    {u"壓線尺寸", &OrderLine::壓線尺寸},
    {u"寬剖", &OrderLine::寬剖},
    {u"小紙數", &OrderLine::小紙數},
    {u"已入庫數", &OrderLine::已入庫數},
    {u"未交數", &OrderLine::未交數},
    {u"送清", &OrderLine::送清},
    {u"計價公式", &OrderLine::計價公式},
    {u"備註", &OrderLine::備註},
    {u"已檢驗數", &OrderLine::已檢驗數},
    {u"檢驗合格數", &OrderLine::檢驗合格數},
    {u"採購單號", &OrderLine::採購單號},
};

OrderHeader headerOf(const Recordset& row) {
    OrderHeader header;
    for (const HeaderColumn& column : headerColumns)
        header.*column.member = row.text(column.column).trimmed();
    for (const HeaderColumn& column : readOnlyColumns)
        header.*column.member = row.text(column.column).trimmed();
    header.品質要求 = row.text(u"品質要求");
    return header;
}

OrderLines readLines(Connection& connection, const QString& number, bool canSeePrice) {
    const SqlText money =
        canSeePrice ? sql(u"單價,單位,小計") : sql(u"'******' as 單價,單位,'******' as 小計");
    Recordset rows = select(
        connection,
        sql(u"Select "
            u"請購單號,印件編號,客戶代號,客戶簡稱,紙箱代號,料號,原料代號,廠商名稱,原料名稱,規格,數量,") +
            money +
            sql(u",交貨日期,        "
                u"楞別,剖切尺寸,壓線種類,壓線尺寸,寬剖,小紙數,單價,小計,已入庫數,未交數,送清,計價公式,備註,"
                u"序,"
                u"已檢驗數,檢驗合格數,採購單號 From  採購明細資料 Where 採購單號 = '{}' Order By [序] ",
                number));
    OrderLines lines;
    for (; !rows.EOF_(); rows.MoveNext()) {
        OrderLine line;
        for (size_t i = 0; i < OrderLineColumns.size(); ++i)
            line.*OrderLineColumns[i].member = rows.text(static_cast<int>(i)).trimmed();
        lines.push_back(std::move(line));
    }
    return lines;
}

void writeHeader(Recordset& row, const OrderHeader& header) {
    for (const HeaderColumn& column : headerColumns)
        row.set(column.column, header.*column.member);
    row.set(u"合計", val(header.合計));
    const bool approved = header.審單 == u"Y";
    row.set(u"審單", approved ? u"Y"_s : u"N"_s);
    row.set(u"審單人", approved ? header.審單人 : QString());
    row.set(u"審單日期", approved ? header.審單日期 : QString());
    row.set(u"品質要求", header.品質要求);
}

void writeLines(Connection& connection, const OrderSave& save) {
    Recordset table;
    table.Open(sql(u"select * from [採購明細資料] where 1<>1"), connection, Cursor::Batch);
    const bool board = save.header.類別 != u"物料";
    for (const OrderLine& line : save.lines) {
        OrderLine stored = normalizedForStore(line, save.canSeePrice);
        if (board && stored.交貨日期.trimmed().isEmpty()) stored.交貨日期 = save.lines.front().交貨日期;
        stored.採購單號 = save.header.採購單號;
        table.AddNew();
        for (const LineColumnOfTable& column : lineColumns)
            table.set(column.column, stored.*column.member);
    }
    if (!save.lines.empty()) table.UpdateBatch();
}

void applyRequisitionChanges(Connection& connection, const std::vector<RequisitionChange>& changes) {
    for (const RequisitionChange& change : changes) {
        Recordset row;
        row.Open(sql(u"select * from [原料申購明細] where 申購單號 = '{}' and 原料代號 = '{}'",
                     change.申購單號, change.原料代號),
                 connection, Cursor::Optimistic);
        if (row.RecordCount() == 0) continue;
        row.set(u"已采購數", settled(val(row.text(u"已采購數")) + change.quantity));
        row.Update();
    }
}

double highestReceived(Connection& connection, const QString& number) {
    const Recordset row = select(
        connection,
        sql(u"select max(cast(採購序 as float)) as 序 from [原料入庫明細] where 採購單號 = '{}' ", number));
    return row.RecordCount() > 0 ? val(row.text(u"序")) : 0;
}

DocumentStamp versionOf(const OrderHeader& header) {
    return {header.修改人, header.修改時間, header.審單, header.審單人, header.審單日期};
}

/// Reads what is stored of a document that is about to be written again, and checks that it may be.
std::optional<SaveConflict> checkStored(Session& session, Connection& connection, const OrderSave& save,
                                        std::optional<OrderDocument>& stored) {
    const QString& number = save.lastDocumentNumber;
    if (!save.mayApprove && session.approvalParam != u"N" &&
        select(connection,
               sql(u"select 採購單號 from [採購資料] where 採購單號 = '{}' And 審單 = 'Y'", number))
                .RecordCount() > 0)
        throw Refusal(u"提示"_s, u"該採購單已審單﹐不能再進行修改!"_s);
    const Recordset row = select(connection, sql(u"select * from [採購資料] where 採購單號 = '{}'", number));
    if (row.RecordCount() == 0) throw Refusal(u"更新錯誤"_s, u"採購單 %1 已由其他使用者刪除!"_s.arg(number));
    stored = OrderDocument{headerOf(row), readLines(connection, number, true), {}};
    return save.overwrite ? std::nullopt : versionOf(stored->header).since(save.loadedStamp);
}

} // namespace

QString stampOf(const OrderHeader& header) {
    return versionOf(header).text();
}

std::optional<OrderDocument> loadOrder(Connection& connection, const QString& number, bool canSeePrice) {
    const Recordset row = select(connection, sql(u"select * from [採購資料] where 採購單號 = '{}' ", number));
    if (row.RecordCount() == 0) return std::nullopt;
    OrderDocument order{headerOf(row), readLines(connection, number, canSeePrice), {}};
    const Recordset vendor =
        select(connection, sql(u"select 廠商資料.經驗傳承, 廠商資料.廠商簡稱, 廠商資料.付款天數,分數 from "
                               u"[廠商資料] Where 廠商資料.廠商代號 = '{}' ",
                               order.header.廠商代號));
    if (vendor.RecordCount() > 0)
        order.vendor = VendorFacts{vendor.text(u"經驗傳承"), vendor.text(u"廠商簡稱").trimmed(),
                                   vendor.text(u"付款天數").trimmed(), vendor.text(u"分數").trimmed()};
    return order;
}

std::optional<SaveConflict> saveOrder(Session& session, OrderSave& save) {
    Connection connection(session.pool, session.connectionString);
    const QString today = serverTime(connection, 2);
    const QString now = serverTime(connection, -1);
    Transaction transaction(connection);
    std::optional<OrderDocument> stored;
    Recordset row;
    if (save.isNew) {
        row.Open(sql(u"Select * From [採購資料]"), connection, Cursor::Optimistic);
        row.AddNew();
    } else {
        if (const auto conflict = checkStored(session, connection, save, stored)) return conflict;
        const QString& number = save.lastDocumentNumber;
        connection.Execute(sql(u"delete from [採購明細資料] where 採購單號 = '{}' ", number));
        connection.Execute(sql(u"delete from [詢價明細資料] where 詢價單號 = '{}' ", number));
        connection.Execute(sql(u"delete from [詢價單價記錄] where 詢價單號='{}'", number));
        row.Open(sql(u"select * from [採購資料] where 採購單號 = '{}'", number), connection,
                 Cursor::Optimistic);
        row.set(u"修改人", session.salesmanName);
        row.set(u"修改時間", now);
        mergeWarehouseColumns(save.lines, save.loaded, stored->lines);
    }
    if (validDate8(save.header.審單日期) != 0 || save.header.審單日期.isEmpty()) save.header.審單日期 = today;
    writeHeader(row, save.header);
    row.Update();
    row.Close();
    if (save.isNew)
        connection.Execute(sql(u"UPDATE 採購資料 SET 製單人='{}',製單時間=dbo.DT(9) WHERE 採購單號 = '{}'",
                               session.salesmanName, save.header.採購單號));
    numberOrderLines(save.lines, save.isNew ? 0 : highestReceived(connection, save.lastDocumentNumber));
    writeLines(connection, save);
    applyRequisitionChanges(connection,
                            requisitionChanges(save.lines, stored ? stored->lines : OrderLines()));
    if (save.canSeePrice) feedPricesBack(session, connection, save.header, save.lines, stored, today);
    transaction.commit();
    if (!save.isNew) {
        save.header.修改人 = session.salesmanName;
        save.header.修改時間 = now;
    }
    return std::nullopt;
}

bool orderHasReceipts(Connection& connection, const QString& number) {
    return select(connection, sql(u"select 採購單號 from [原料入庫明細] where 採購單號 = '{}' ", number))
               .RecordCount() > 0;
}

void deleteOrder(Session& session, const QString& number) {
    Connection connection(session.pool, session.connectionString);
    Transaction transaction(connection);
    if (session.approvalParam != u"N" &&
        select(connection,
               sql(u"select 採購單號 from [採購資料] where 採購單號 = '{}' And 審單 ='Y'", number))
                .RecordCount() > 0)
        throw Refusal(u"提示"_s, u"該單已審單﹐不允許刪除!"_s);
    if (select(connection,
               sql(u"select 採購單號 from [採購明細資料] where 採購單號 = '{}' And cast(已入庫數 as float)>0",
                   number))
            .RecordCount() > 0)
        throw Refusal(u"刪除警告"_s, u"本單據有相關入庫資料﹐不能刪除!"_s);
    const OrderLines stored = readLines(connection, number, true);
    connection.Execute(sql(u"delete from [採購資料] where 採購單號 = '{}' ", number));
    connection.Execute(sql(u"delete from [採購明細資料] where 採購單號 = '{}' ", number));
    connection.Execute(sql(u"delete from [採購資料報表2] where 採購單號 = '{}' ", number));
    for (const OrderLine& line : stored) {
        Recordset row;
        row.Open(sql(u"select * from [原料申購明細] where 申購單號 = '{}' and 原料代號 = '{}'", line.請購單號,
                     line.原料代號),
                 connection, Cursor::Optimistic);
        if (row.RecordCount() == 0 || val(row.text(u"已采購數")) <= 0) continue;
        row.set(u"已采購數", settled(val(row.text(u"已采購數")) - val(line.數量)));
        row.Update();
    }
    transaction.commit();
}

} // namespace liaowu
