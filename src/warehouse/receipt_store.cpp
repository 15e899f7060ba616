#include "warehouse/receipt_store.h"
#include "common/clock.h"
#include "common/document_stamp.h"
#include "common/text_values.h"
#include "data/recordset.h"
#include "warehouse/bins.h"
#include "warehouse/receipt_rules.h"
#include "warehouse/stock_posting.h"

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

/// The header's columns in the order in which a save writes them; the approval columns follow by their own rule.
constexpr std::array<FieldOf<ReceiptHeader>, 16> headerColumns{{
    {u"入庫單號", &ReceiptHeader::入庫單號},
    {u"類別", &ReceiptHeader::類別},
    {u"入庫日期", &ReceiptHeader::入庫日期},
    {u"經辦代號", &ReceiptHeader::經辦代號},
    {u"經辦名稱", &ReceiptHeader::經辦名稱},
    {u"廠商代號", &ReceiptHeader::廠商代號},
    {u"採購單號", &ReceiptHeader::採購單號},
    {u"備註", &ReceiptHeader::備註},
    {u"單別", &ReceiptHeader::單別},
    {u"幣別", &ReceiptHeader::幣別},
    {u"廠商單號", &ReceiptHeader::廠商單號},
    {u"付款年月", &ReceiptHeader::付款年月},
    {u"倉別", &ReceiptHeader::倉別},
    {u"對帳日期", &ReceiptHeader::對帳日期},
    {u"檢驗單號", &ReceiptHeader::檢驗單號},
    {u"合計", &ReceiptHeader::合計},
}};
constexpr std::array<FieldOf<ReceiptHeader>, 3> readColumns{{
    {u"審核", &ReceiptHeader::審核},
    {u"審核人", &ReceiptHeader::審核人},
    {u"審核日期", &ReceiptHeader::審核日期},
}};
/// The line's columns in the order of the table.
constexpr std::array<FieldOf<ReceiptLine>, 21> lineColumns{{
    {u"採購單號", &ReceiptLine::採購單號}, {u"原料代號", &ReceiptLine::原料代號},
    {u"原料名稱", &ReceiptLine::原料名稱}, {u"規格", &ReceiptLine::規格},
    {u"數量", &ReceiptLine::數量},         {u"備品", &ReceiptLine::備品},
    {u"單價", &ReceiptLine::單價},         {u"單位", &ReceiptLine::單位},
    {u"小計", &ReceiptLine::小計},         {u"走紙才", &ReceiptLine::走紙才},
    {u"入庫單位", &ReceiptLine::入庫單位}, {u"入庫數量", &ReceiptLine::入庫數量},
    {u"剖切尺寸", &ReceiptLine::剖切尺寸}, {u"備註", &ReceiptLine::備註},
    {u"檢驗單號", &ReceiptLine::檢驗單號}, {u"檢驗員", &ReceiptLine::檢驗員},
    {u"檢驗", &ReceiptLine::檢驗},         {u"報關單號", &ReceiptLine::報關單號},
    {u"備案單號", &ReceiptLine::備案單號}, {u"計價公式", &ReceiptLine::計價公式},
    {u"採購序", &ReceiptLine::採購序},
}};

ReceiptHeader headerOf(const Recordset& row) {
    ReceiptHeader header;
    readFields(row, headerColumns, header);
    readFields(row, readColumns, header);
    return header;
}

ReceiptLines readLines(Connection& connection, const QString& number, bool canSeePrice) {
    const SqlText money =
        canSeePrice ? sql(u"單價,單位,小計") : sql(u"'******' as 單價,單位,'******' as 小計");
    Recordset rows =
        select(connection, sql(u"Select 採購單號,原料代號,原料名稱,規格,數量,備品,") + money +
                               sql(u", 走紙才,入庫單位,入庫數量,剖切尺寸,單價,小計,備註,檢驗單號,檢驗員, "
                                   u"檢驗,報關單號,備案單號,計價公式,採購序 From [原料入庫明細] Where "
                                   u"入庫單號 = '{}' Order By [序]",
                                   number));
    ReceiptLines lines;
    for (; !rows.EOF_(); rows.MoveNext()) {
        ReceiptLine line;
        for (size_t i = 0; i < ReceiptLineColumns.size(); ++i)
            line.*ReceiptLineColumns[i].member = rows.text(static_cast<int>(i)).trimmed();
        lines.push_back(std::move(line));
    }
    return lines;
}

void confirmInspection(Connection& connection, const QString& inspection, const QString& mark) {
    if (!inspection.trimmed().isEmpty())
        connection.Execute(
            sql(u"update 進料檢驗資料 set 入庫確認='{}' where 檢驗單號 = '{}'", mark, inspection));
}

/// 送清 of the order lines that a document stands on, as they are before it is undone.
class ClosedLines {
public:
    ClosedLines(Connection& on, const ReceiptLines& saved) : connection(on) {
        for (const ReceiptLine& line : saved)
            if (const auto state = read(line)) before.push_back({line, *state});
    }
    /// Gives a line that received what it had received before its mark back: nobody opens a line closed by hand that way.
    void restore() {
        for (const auto& [line, state] : before) {
            const auto now = read(line);
            if (!now || val(now->received) != val(state.received) || now->mark == state.mark) continue;
            connection.Execute(sql(u"update 採購明細資料 set 送清='{}' where 採購單號 = '{}' and 序 = '{}'",
                                   state.mark, line.採購單號, line.採購序));
        }
    }

private:
    struct State {
        QString received, mark;
    };
    std::optional<State> read(const ReceiptLine& line) const {
        if (line.採購單號.isEmpty() || line.採購序.isEmpty()) return std::nullopt;
        const Recordset row = select(
            connection, sql(u"select 已入庫數,送清 from 採購明細資料 where 採購單號 = '{}' and 序 = '{}'",
                            line.採購單號, line.採購序));
        if (row.RecordCount() == 0) return std::nullopt;
        return State{row.text(0), row.text(1)};
    }
    Connection& connection;
    std::vector<std::pair<ReceiptLine, State>> before;
};

/// Undoes lines, in their order: the item, the inspection, the order line.
void reverseLines(Connection& connection, const ReceiptHeader& header, const ReceiptLines& lines) {
    const StockDocument document = stockDocumentOf(header.入庫單號, header.單別);
    for (const ReceiptLine& line : lines) {
        reverseReceiptItem(connection, document, header.類別, line);
        if (document == StockDocument::Receipt) confirmInspection(connection, header.檢驗單號, u"N"_s);
        reverseOrderLine(connection, line);
    }
}

void writeHeader(Recordset& row, const ReceiptHeader& header) {
    for (const auto& column : headerColumns)
        row.set(column.name, (header.*column.member).trimmed());
    row.set(u"合計", numberText(val(header.合計)));
    const bool approved = header.審核 == u"Y";
    row.set(u"審核", approved ? u"Y"_s : u"N"_s);
    row.set(u"審核人", approved ? header.審核人 : QString());
    row.set(u"審核日期", approved ? header.審核日期 : QString());
}

void writeLines(Connection& connection, const QString& number, const ReceiptLines& lines) {
    Recordset table;
    table.Open(sql(u"select * from [原料入庫明細]"), connection, Cursor::Batch);
    int position = 0;
    for (const ReceiptLine& line : lines) {
        table.AddNew();
        for (const auto& column : lineColumns)
            table.set(column.name, line.*column.member);
        table.set(u"入庫單號", number);
        table.set(u"序", double(++position));
    }
    if (!lines.empty()) table.UpdateBatch();
}

void postLines(Connection& connection, const ReceiptHeader& header, const ReceiptLines& lines) {
    const StockDocument document = stockDocumentOf(header.入庫單號, header.單別);
    int row = 0;
    for (const ReceiptLine& line : lines) {
        postReceiptItem(connection, document, header.類別, header.入庫日期, line);
        postOrderLine(connection, line, ++row);
    }
}

BinReceipt binsOf(const ReceiptHeader& header, const ReceiptLines& lines) {
    return {stockDocumentOf(header.入庫單號, header.單別), header.入庫單號, header.類別, header.倉別, &lines};
}

/// Checks that a stored document may be written again, and by which lines it is undone.
std::optional<SaveConflict> checkStored(Connection& connection, ReceiptSave& save, ReceiptHeader& stored) {
    const QString& number = save.savedNumber;
    if (!save.mayApprove && isReceiptApproved(connection, number))
        throw Refusal(u"提示"_s, u"該入庫單已審核﹐不能再進行修改!"_s);
    const Recordset row =
        select(connection, sql(u"select * from [原料入庫資料] where 入庫單號 = '{}'", number));
    if (row.RecordCount() == 0) throw Refusal(u"更新錯誤"_s, u"入庫單 %1 已由其他使用者刪除!"_s.arg(number));
    stored = headerOf(row);
    const auto conflict = storedStamp(row, u"審核"_s).since(save.loadedStamp);
    if (!conflict) return std::nullopt;
    if (!save.overwrite) return conflict;
    save.saved = readLines(connection, number, true);
    return std::nullopt;
}

} // namespace

bool isReceiptApproved(Connection& connection, const QString& number) {
    return select(connection,
                  sql(u"select 入庫單號 from [原料入庫資料] where  入庫單號 = '{}' And 審核 = 'Y'", number))
               .RecordCount() > 0;
}

std::optional<ReceiptDocument> loadReceipt(Connection& connection, const QString& number, bool canSeePrice) {
    const Recordset row = select(
        connection, sql(u"select 原料入庫資料.*,廠商資料.廠商簡稱 from [原料入庫資料] Left Join[廠商資料] On "
                        u"原料入庫資料.廠商代號=廠商資料.廠商代號 where 原料入庫資料.入庫單號 = '{}' ",
                        number));
    if (row.RecordCount() == 0) return std::nullopt;
    ReceiptDocument document{headerOf(row), readLines(connection, number, canSeePrice), {}};
    document.header.廠商簡稱 = row.text(u"廠商簡稱").trimmed();
    document.stamp = storedStamp(row, u"審核"_s).text();
    return document;
}

std::optional<SaveConflict> saveReceipt(Session& session, ReceiptSave& save) {
    Connection connection(session.pool, session.connectionString);
    const QString today = serverTime(connection, 2);
    const QString now = serverTime(connection, -1);
    const bool withBins = keepsBins(connection);
    ReceiptLines lines;
    for (const ReceiptLine& line : save.lines)
        lines.push_back(normalizedForStore(line, save.canSeePrice));
    Transaction transaction(connection);
    ReceiptHeader stored;
    if (!save.isNew)
        if (const auto conflict = checkStored(connection, save, stored)) return conflict;
    const ReceiptLines undone = save.isNew ? ReceiptLines() : save.saved;
    ClosedLines closed(connection, undone);
    Recordset row;
    if (save.isNew) {
        row.Open(sql(u"Select * From [原料入庫資料]"), connection, Cursor::Optimistic);
        row.AddNew();
    } else {
        connection.Execute(sql(u"delete from [原料入庫明細] where 入庫單號 = '{}' ", save.savedNumber));
        reverseLines(connection, stored, undone);
        row.Open(sql(u"select * from [原料入庫資料] where 入庫單號 = '{}'", save.savedNumber), connection,
                 Cursor::Optimistic);
        row.set(u"修改人", session.salesmanName);
        row.set(u"修改時間", now);
    }
    if (save.header.審核日期.isEmpty() || validDate8(save.header.審核日期) != 0) save.header.審核日期 = today;
    writeHeader(row, save.header);
    row.Update();
    row.Close();
    const QString number = save.header.入庫單號.trimmed();
    if (save.isNew)
        connection.Execute(
            sql(u"UPDATE 原料入庫資料 SET 製單人='{}',製單時間 = dbo.DT(9) WHERE 入庫單號 = '{}'",
                session.salesmanName, number));
    writeLines(connection, number, lines);
    postLines(connection, save.header, lines);
    closed.restore();
    if (withBins) postReceiptBins(connection, binsOf(stored, undone), binsOf(save.header, lines));
    if (save.header.審核 == u"Y") confirmInspection(connection, save.header.檢驗單號, u"Y"_s);
    transaction.commit();
    DocumentStamp written{{}, {}, save.header.審核};
    if (!save.isNew) {
        written.修改人 = session.salesmanName.trimmed();
        written.修改時間 = now;
    }
    save.loadedStamp = written.text();
    return std::nullopt;
}

void deleteReceipt(Session& session, const QString& number, const ReceiptLines& saved,
                   const QString& loadedStamp) {
    Connection connection(session.pool, session.connectionString);
    Transaction transaction(connection);
    if (isReceiptApproved(connection, number)) throw Refusal(u"提示"_s, u"該單已審核﹐不允許刪除!"_s);
    const Recordset row =
        select(connection, sql(u"select * from [原料入庫資料] where 入庫單號 = '{}'", number));
    if (row.RecordCount() == 0) throw Refusal(u"刪除錯誤"_s, u"入庫單 %1 已由其他使用者刪除!"_s.arg(number));
    const ReceiptHeader header = headerOf(row);
    const bool changed = storedStamp(row, u"審核"_s).since(loadedStamp).has_value();
    const ReceiptLines undone = changed ? readLines(connection, number, true) : saved;
    connection.Execute(sql(u"delete from [原料入庫資料] where 入庫單號 = '{}'", number));
    connection.Execute(sql(u"delete from [原料入庫明細] where 入庫單號 = '{}'", number));
    connection.Execute(sql(u"delete from [原料入庫明細報表] where 入庫單號 = '{}'", number));
    connection.Execute(sql(u"delete from 原料板位明細 where 入庫單號='{}' ", number));
    reverseLines(connection, header, undone);
    confirmInspection(connection, header.檢驗單號, u"N"_s);
    transaction.commit();
}

} // namespace liaowu
