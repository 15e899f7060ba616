#include "purchasing/requisition_store.h"
#include "common/clock.h"
#include "common/document_stamp.h"
#include "common/text_values.h"
#include "data/recordset.h"
#include <QHash>
#include <QSet>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

/// The header's columns in the order in which a save writes them; the approval columns follow by their own rule.
constexpr std::array<FieldOf<RequisitionHeader>, 11> headerColumns{{
    {u"申購單號", &RequisitionHeader::申購單號},
    {u"類別", &RequisitionHeader::類別},
    {u"申購日期", &RequisitionHeader::申購日期},
    {u"經辦代號", &RequisitionHeader::經辦代號},
    {u"經辦名稱", &RequisitionHeader::經辦名稱},
    {u"工單單號", &RequisitionHeader::工單單號},
    {u"申購單位", &RequisitionHeader::申購單位},
    {u"需求日期", &RequisitionHeader::需求日期},
    {u"請購原因", &RequisitionHeader::請購原因},
    {u"庫別", &RequisitionHeader::庫別},
    {u"備註", &RequisitionHeader::備註},
}};
constexpr std::array<FieldOf<RequisitionHeader>, 5> readColumns{{
    {u"審單", &RequisitionHeader::審單},
    {u"審單人", &RequisitionHeader::審單人},
    {u"審單日期", &RequisitionHeader::審單日期},
    {u"修改人", &RequisitionHeader::修改人},
    {u"修改時間", &RequisitionHeader::修改時間},
}};
/// The line's columns in the order of a save; the number of the document comes last.
constexpr std::array<FieldOf<RequisitionLine>, 12> lineColumns{{
    {u"原料代號", &RequisitionLine::原料代號},
    {u"原料名稱", &RequisitionLine::原料名稱},
    {u"規格", &RequisitionLine::規格},
    {u"數量", &RequisitionLine::數量},
    {u"單位", &RequisitionLine::單位},
    {u"需求日期", &RequisitionLine::需求日期},
    {u"序", &RequisitionLine::序},
    {u"印件編號", &RequisitionLine::印件編號},
    {u"備注", &RequisitionLine::備注},
    {u"工單單號", &RequisitionLine::工單單號},
    {u"已采購數", &RequisitionLine::已采購數},
    {u"楞別", &RequisitionLine::楞別},
}};

RequisitionHeader headerOf(const Recordset& row) {
    RequisitionHeader header;
    readFields(row, headerColumns, header);
    readFields(row, readColumns, header);
    return header;
}

DocumentStamp versionOf(const RequisitionHeader& header) {
    return {header.修改人, header.修改時間, header.審單, header.審單人, header.審單日期};
}

bool isApprovedInStore(Connection& connection, const QString& number) {
    return select(connection,
                  sql(u"select 申購單號 from [原料申購資料] where 申購單號 = '{}' And 審單 = 'Y'", number))
               .RecordCount() > 0;
}

void writeHeader(Recordset& row, const RequisitionHeader& header) {
    for (const auto& column : headerColumns)
        row.set(column.name, header.*column.member);
    const bool approved = header.審單 == u"Y";
    row.set(u"審單", approved ? u"Y"_s : u"N"_s);
    row.set(u"審單人", approved ? header.審單人 : QString());
    row.set(u"審單日期", approved ? header.審單日期 : QString());
}

/// Dates, numbers and ordered quantities as they are written.
void settleLines(RequisitionSave& save, const QHash<QString, QString>& ordered) {
    double high = 0;
    for (const RequisitionLine& line : save.lines)
        high = std::max(high, val(line.序));
    for (RequisitionLine& line : save.lines) {
        if (line.需求日期.isEmpty() || validDate8(line.需求日期) != 0) line.需求日期 = save.header.需求日期;
        if (val(line.序) <= 0) line.序 = numberText(++high);
        line.數量 = numberText(val(line.數量));
        line.已采購數 = numberText(val(ordered.value(line.原料代號.trimmed().toUpper(), line.已采購數)));
    }
}

QHash<QString, QString> orderedByItem(Connection& connection, const QString& number) {
    QHash<QString, QString> ordered;
    Recordset rows =
        select(connection, sql(u"select 原料代號,已采購數 from 原料申購明細 where 申購單號 = '{}'", number));
    for (; !rows.EOF_(); rows.MoveNext())
        ordered.insert(rows.text(u"原料代號").trimmed().toUpper(), rows.text(u"已采購數"));
    return ordered;
}

void writeLines(Connection& connection, const RequisitionSave& save) {
    const QString& number = save.header.申購單號;
    connection.Execute(sql(u"delete from 原料申購明細 where 申購單號 = '{}' ", number));
    Recordset table;
    table.Open(sql(u"select * from [原料申購明細] where 申購單號 = '{}' ", number), connection,
               Cursor::Batch);
    for (const RequisitionLine& line : save.lines) {
        table.AddNew();
        for (const auto& column : lineColumns)
            table.set(column.name, line.*column.member);
        table.set(u"申購單號", number);
    }
    if (!save.lines.empty()) table.UpdateBatch();
}

} // namespace

std::optional<Finding> checkRequisitionLines(const RequisitionLines& lines) {
    QSet<QString> seen;
    int row = 0;
    for (const RequisitionLine& line : lines) {
        ++row;
        const QString code = line.原料代號.trimmed().toUpper();
        if (seen.contains(code))
            return Finding{u"錯誤"_s, u"原料代號重復,請重新輸入"_s, {}, row, u"原料代號"_s};
        seen.insert(code);
    }
    return std::nullopt;
}

std::optional<RequisitionDocument> loadRequisition(Connection& connection, const QString& number) {
    const Recordset row =
        select(connection, sql(u"select * from [原料申購資料] where 申購單號 = '{}' ", number));
    if (row.RecordCount() == 0) return std::nullopt;
    RequisitionDocument document{headerOf(row), {}, {}};
    document.stamp = versionOf(document.header).text();
    Recordset rows = select(
        connection,
        sql(u"Select 原料代號,原料名稱,規格,數量,單位,印件編號,需求日期,備注,'' as 序,工單單號,已采購數,楞別 "
            u"From [原料申購明細] Where 申購單號 = '{}' Order By 原料申購明細.序 ",
            number));
    for (; !rows.EOF_(); rows.MoveNext()) {
        RequisitionLine line;
        readFields(rows, lineColumns, line);
        document.lines.push_back(std::move(line));
    }
    return document;
}

std::optional<SaveConflict> saveRequisition(Session& session, RequisitionSave& save) {
    Connection connection(session.pool, session.connectionString);
    const QString now = serverTime(connection, -1);
    const QString today = serverTime(connection, 2);
    Transaction transaction(connection);
    Recordset row;
    QHash<QString, QString> ordered;
    if (save.isNew) {
        row.Open(sql(u"Select * From [原料申購資料]"), connection, Cursor::Optimistic);
        row.AddNew();
    } else {
        const QString& number = save.lastDocumentNumber;
        if (!save.mayApprove && session.approvalParam != u"N" && isApprovedInStore(connection, number))
            throw Refusal(u"提示"_s, u"該單已審單,不允許修改"_s);
        row.Open(sql(u"select * from [原料申購資料] where 申購單號 = '{}'", number), connection,
                 Cursor::Optimistic);
        if (row.RecordCount() == 0)
            throw Refusal(u"更新錯誤"_s, u"申購單 %1 已由其他使用者刪除!"_s.arg(number));
        if (!save.overwrite)
            if (const auto conflict = versionOf(headerOf(row)).since(save.loadedStamp)) return conflict;
        ordered = orderedByItem(connection, number);
        connection.Execute(sql(u"delete from [原料申購明細] Where 申購單號='{}'", number));
        row.set(u"修改人", session.salesmanName);
        row.set(u"修改時間", now);
    }
    if (save.header.審單日期.isEmpty() || validDate8(save.header.審單日期) != 0) save.header.審單日期 = today;
    writeHeader(row, save.header);
    row.Update();
    if (save.isNew)
        connection.Execute(
            sql(u"UPDATE 原料申購資料 SET 製單人='{}',製單時間=dbo.DT(9) WHERE 申購單號 = '{}'",
                session.salesmanName, save.header.申購單號));
    settleLines(save, ordered);
    writeLines(connection, save);
    transaction.commit();
    return std::nullopt;
}

void deleteRequisition(Session& session, const QString& number) {
    Connection connection(session.pool, session.connectionString);
    Transaction transaction(connection);
    if (session.approvalParam != u"N" && isApprovedInStore(connection, number))
        throw Refusal(u"提示"_s, u"該單已審單﹐不允許刪除!"_s);
    connection.Execute(sql(u"delete from [原料申購資料] where 申購單號 = '{}' ", number));
    connection.Execute(sql(u"delete from [原料申購明細] where 申購單號 = '{}' ", number));
    connection.Execute(sql(u"delete from [原料申購明細報表] where 申購單號 = '{}' ", number));
    transaction.commit();
}

} // namespace liaowu
