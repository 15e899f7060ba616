#include "warehouse/stock_posting.h"
#include "common/items.h"
#include "common/refusal.h"
#include "common/text_values.h"
#include "data/recordset.h"

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

/// What of a receipt line counts for 庫存, by family.
struct Effect {
    const char16_t* family;
    double (*amount)(const ReceiptLine& line);
};
constexpr Effect effects[] = {
    {u"紙板", [](const ReceiptLine& line) { return val(line.入庫數量); }},
    {u"物料", [](const ReceiptLine& line) { return val(line.數量) + val(line.備品); }},
};

const Effect* effectOf(const QString& category) {
    for (const Effect& effect : effects)
        if (category == QString::fromUtf16(effect.family)) return &effect;
    return nullptr;
}

/// Adds to 庫存 of an item; `date` empty leaves 異動日期 alone.
void moveStock(Connection& connection, const QString& category, const QString& code, double amount,
               const QString& date) {
    const ItemFamily* family = itemFamily(category);
    if (!family || !keepsStock(category) || code.trimmed().isEmpty()) return;
    Recordset item;
    item.Open(sql(u"select * from [{}] where [{}] = '{}'", family->table, family->code, code), connection,
              Cursor::Optimistic);
    if (item.RecordCount() == 0) return;
    item.set(u"庫存", numberText(settled(val(item.text(u"庫存")) + amount)));
    if (!date.isEmpty()) item.set(u"異動日期", date);
    item.Update();
}

bool openOrderLine(Recordset& row, Connection& connection, const ReceiptLine& line) {
    // A line typed by hand has no order line.
    if (line.採購單號.trimmed().isEmpty() || line.採購序.trimmed().isEmpty()) return false;
    row.Open(sql(u"select * from [採購明細資料] where 採購單號 = '{}' and 序 = '{}'  ", line.採購單號,
                 line.採購序),
             connection, Cursor::Optimistic);
    return row.RecordCount() > 0;
}

/// Writes 已入庫數 of an order line and what follows from it. A line that has received nothing is open whatever was ordered.
void setReceived(Recordset& order, double received) {
    const double open = settled(val(order.text(u"數量")) - received);
    order.set(u"已入庫數", numberText(received));
    order.set(u"未交數", numberText(open));
    order.set(u"送清", received > 0 && open <= 0 ? u"Y"_s : u"N"_s);
    order.Update();
}

} // namespace

StockDocument stockDocumentOf(const QString& number, const QString& kind) {
    const bool sentBack = isReturnKind(kind) && number.contains(u'T', Qt::CaseInsensitive);
    return sentBack ? StockDocument::Return : StockDocument::Receipt;
}

bool keepsStock(const QString& category) {
    return effectOf(category) != nullptr;
}

double receiptEffect(StockDocument document, const QString& category, const ReceiptLine& line) {
    const Effect* effect = effectOf(category);
    return effect && document == StockDocument::Receipt ? effect->amount(line) : 0;
}

void postReceiptItem(Connection& connection, StockDocument document, const QString& category,
                     const QString& date, const ReceiptLine& line) {
    if (document != StockDocument::Receipt) return;
    moveStock(connection, category, line.原料代號, receiptEffect(document, category, line), date);
}

void reverseReceiptItem(Connection& connection, StockDocument document, const QString& category,
                        const ReceiptLine& line) {
    if (document != StockDocument::Receipt) return;
    moveStock(connection, category, line.原料代號, -receiptEffect(document, category, line), {});
}

void postOrderLine(Connection& connection, const ReceiptLine& line, int row) {
    Recordset order;
    if (!openOrderLine(order, connection, line)) return;
    const double received = settled(val(order.text(u"已入庫數")) + val(line.數量));
    if (val(order.text(u"數量")) < received)
        throw Refusal(u"提示"_s, u"第%1筆輸入的入庫數已大於採購數量,請重新輸入!"_s.arg(row));
    if (val(line.數量) != 0) setReceived(order, received);
}

void reverseOrderLine(Connection& connection, const ReceiptLine& line) {
    Recordset order;
    if (val(line.數量) == 0 || !openOrderLine(order, connection, line)) return;
    setReceived(order, settled(val(order.text(u"已入庫數")) - val(line.數量)));
}

void postIssueItem(Connection& connection, const QString& category, const QString& date,
                   const IssuedItem& line) {
    moveStock(connection, category, line.原料代號, -line.實領數, date);
}

void reverseIssueItem(Connection& connection, const QString& category, const IssuedItem& line) {
    moveStock(connection, category, line.原料代號, line.實領數, {});
}

IssueCheck checkIssueStock(Connection& connection, const QString& category,
                           const std::vector<IssuedItem>& lines, const std::vector<IssuedItem>& stored) {
    IssueCheck check;
    const ItemFamily* family = itemFamily(category);
    if (!family) return check;
    const auto sum = [](const std::vector<IssuedItem>& rows, const QString& code) {
        double total = 0;
        for (const IssuedItem& row : rows)
            if (row.原料代號.trimmed().compare(code, Qt::CaseInsensitive) == 0) total += row.實領數;
        return total;
    };
    for (size_t i = 0; i < lines.size(); ++i) {
        const QString code = lines[i].原料代號.trimmed();
        if (code.isEmpty()) continue;
        const Recordset item = select(connection, sql(u"select 庫存,安全庫存 from [{}] where [{}] = '{}'",
                                                      family->table, family->code, code));
        if (item.RecordCount() == 0) continue;
        const double projected = settled(val(item.text(u"庫存")) + sum(stored, code) - sum(lines, code));
        const bool unsafe = projected >= 0 && val(item.text(u"安全庫存")) > projected;
        if (projected >= 0 && !unsafe) continue;
        check.belowSafety = check.belowSafety || unsafe;
        check.rows += u" [%1] "_s.arg(i + 1);
    }
    return check;
}

} // namespace liaowu
