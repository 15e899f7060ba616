#include "warehouse/bins.h"
#include "common/own_tables.h"
#include "common/text_values.h"
#include "data/recordset.h"
#include <QMap>
#include <utility>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

/// Key of a row of 原料板位明細.
struct BinKey {
    QString category, item, bin, receipt;
};

/// Codes that the server takes for equal are one item.
QString folded(const QString& code) {
    return code.trimmed().toCaseFolded();
}

struct ItemAmount {
    QString item;
    double amount = 0;
    bool operator==(const ItemAmount&) const = default;
};
using Amounts = QMap<QString, ItemAmount>;

Amounts amountsOf(const BinReceipt& receipt) {
    Amounts amounts;
    if (receipt.bin.trimmed().isEmpty() || !receipt.lines || !keepsStock(receipt.category) ||
        receipt.document != StockDocument::Receipt)
        return amounts;
    for (const ReceiptLine& line : *receipt.lines) {
        if (line.原料代號.trimmed().isEmpty()) continue;
        ItemAmount& entry = amounts[folded(line.原料代號)];
        if (entry.item.isEmpty()) entry.item = line.原料代號.trimmed();
        entry.amount += receiptEffect(receipt.document, receipt.category, line);
    }
    return amounts;
}

/// What issues have taken of a receipt's item out of a bin.
double takenFrom(Connection& connection, const BinKey& key) {
    const Recordset row =
        select(connection, sql(u"select sum(料務_板位異動.數量) as 數量 from 料務_板位異動 inner join "
                               u"原料領料明細 on 料務_板位異動.領料單號 = "
                               u"原料領料明細.領料單號 and 料務_板位異動.序 = 原料領料明細.序 where "
                               u"料務_板位異動.入庫單號 = '{}' and "
                               u"料務_板位異動.儲位 = '{}' and 原料領料明細.原料代號 = '{}'",
                               key.receipt, key.bin, key.item));
    return val(row.text(0));
}

/// What the stored receipt brought into its bin, and when it came. Read at the first question, once for all its items: a
/// receipt of n items would else read n times n lines.
class StoredReceipt {
public:
    StoredReceipt(Connection& on, const QString& receipt) : connection(on), number(receipt) {}

    double received(const BinKey& key) {
        read();
        if (bin != folded(key.bin) || category != folded(key.category)) return 0;
        return amounts.value(folded(key.item)).amount;
    }
    QString arrived() {
        read();
        return came;
    }

private:
    void read() {
        if (std::exchange(known, true)) return;
        const Recordset header = select(
            connection,
            sql(u"select 類別,單別,倉別,入庫日期,製單時間 from 原料入庫資料 where 入庫單號 = '{}'", number));
        if (header.RecordCount() == 0) return;
        came = header.text(u"製單時間").trimmed();
        if (came.isEmpty()) came = header.text(u"入庫日期").trimmed();
        bin = folded(header.text(u"倉別"));
        category = folded(header.text(u"類別"));
        const ReceiptLines lines = readLines();
        amounts = amountsOf({stockDocumentOf(number, header.text(u"單別")), number,
                             header.text(u"類別").trimmed(), header.text(u"倉別"), &lines});
    }
    ReceiptLines readLines() {
        ReceiptLines lines;
        Recordset rows =
            select(connection,
                   sql(u"select 採購單號,原料代號,數量,備品,入庫數量 from 原料入庫明細 where 入庫單號 = '{}'",
                       number));
        for (; !rows.EOF_(); rows.MoveNext()) {
            ReceiptLine line;
            line.原料代號 = rows.text(u"原料代號").trimmed();
            line.數量 = rows.text(u"數量");
            line.備品 = rows.text(u"備品");
            line.入庫數量 = rows.text(u"入庫數量");
            lines.push_back(line);
        }
        return lines;
    }

    Connection& connection;
    QString number;
    bool known = false;
    Amounts amounts;
    QString category, bin, came;
};

void openRow(Recordset& row, Connection& connection, const BinKey& key) {
    row.Open(
        sql(u"select * from 原料板位明細 where 類別='{}' and 原料代號='{}' and 儲位='{}' and 入庫單號='{}'",
            key.category, key.item, key.bin, key.receipt),
        connection, Cursor::Optimistic);
}

/// Changes what is left by `left` and what was taken by `taken`. A missing row is made from the documents, as long as
/// anything is left.
void changeRow(Connection& connection, StoredReceipt& receipt, const BinKey& key, double left, double taken) {
    Recordset row;
    openRow(row, connection, key);
    if (row.RecordCount() > 0) {
        row.set(u"入庫數", numberText(settled(val(row.text(u"入庫數")) + left)));
        row.set(u"領料數", numberText(settled(val(row.text(u"領料數")) + taken)));
        row.Update();
        return;
    }
    const double received = receipt.received(key);
    const double gone = takenFrom(connection, key);
    if (settled(received - gone) <= 0) return;
    row.AddNew();
    row.set(u"類別", key.category);
    row.set(u"原料代號", key.item);
    row.set(u"儲位", key.bin);
    row.set(u"入庫單號", key.receipt);
    row.set(u"入庫數", numberText(settled(received - gone)));
    row.set(u"領料數", numberText(settled(gone)));
    row.set(u"入庫時間", receipt.arrived());
    row.Update();
}

} // namespace

bool keepsBins(Connection& connection) {
    return hasTable(connection, u"料務_板位異動"_s);
}

void postReceiptBins(Connection& connection, const BinReceipt& before, const BinReceipt& after) {
    Amounts old = amountsOf(before);
    const Amounts now = amountsOf(after);
    const QString from = before.bin.trimmed(), to = after.bin.trimmed();
    const auto drop = [&](const QString& item) {
        connection.Execute(
            sql(u"delete from 原料板位明細 where 類別='{}' and 原料代號='{}' and 儲位='{}' and 入庫單號='{}'",
                before.category, item, from, before.number));
    };
    if (folded(from) != folded(to)) {
        // The goods lie elsewhere now: rows are made anew there, and what was taken was taken from there.
        for (const ItemAmount& entry : old)
            drop(entry.item);
        if (!from.isEmpty() && !to.isEmpty())
            connection.Execute(sql(u"update 料務_板位異動 set 儲位='{}' where 入庫單號='{}' and 儲位='{}'",
                                   to, before.number, from));
        old.clear();
    }
    StoredReceipt stored(connection, after.number);
    for (auto entry = now.cbegin(); entry != now.cend(); ++entry) {
        const double difference = entry->amount - old.value(entry.key()).amount;
        changeRow(connection, stored, {after.category, entry->item, to, after.number}, difference, 0);
    }
    for (auto entry = old.cbegin(); entry != old.cend(); ++entry)
        if (!now.contains(entry.key())) drop(entry->item);
}

void takeFromBins(Connection& connection, const BinIssue& line) {
    if (line.儲位.trimmed().isEmpty() || !keepsStock(line.類別)) return;
    double wanted = line.數量;
    const Recordset rows = select(connection, sql(u"select 儲位,入庫數,入庫單號 from 原料板位明細 where "
                                                  u"類別='{}' and 原料代號='{}' and 儲位='{}' and "
                                                  u"cast(入庫數 as float)>0 order by 入庫時間 asc,入庫單號",
                                                  line.類別, line.原料代號, line.儲位));
    for (int i = 0; i < rows.RecordCount() && wanted > 0; ++i) {
        const double taken = std::min(wanted, val(rows.textAt(i, 1)));
        const QString receipt = rows.textAt(i, 2).trimmed();
        StoredReceipt stored(connection, receipt);
        changeRow(connection, stored, {line.類別, line.原料代號, rows.textAt(i, 0), receipt}, -taken, taken);
        Recordset moves;
        moves.Open(sql(u"select * from 料務_板位異動 where 1<>1"), connection, Cursor::Optimistic);
        moves.AddNew();
        moves.set(u"領料單號", line.領料單號);
        moves.set(u"序", double(line.序));
        moves.set(u"入庫單號", receipt);
        moves.set(u"儲位", rows.textAt(i, 0));
        moves.set(u"數量", taken);
        moves.Update();
        wanted = settled(wanted - taken);
    }
}

void giveBackToBins(Connection& connection, const BinIssue& line) {
    const Recordset moves =
        select(connection, sql(u"select 入庫單號,儲位,數量 from 料務_板位異動 where 領料單號='{}' and 序={}",
                               line.領料單號, line.序));
    connection.Execute(
        sql(u"delete from 料務_板位異動 where 領料單號='{}' and 序={}", line.領料單號, line.序));
    for (int i = 0; i < moves.RecordCount(); ++i) {
        const double taken = val(moves.textAt(i, 2));
        StoredReceipt stored(connection, moves.textAt(i, 0));
        changeRow(connection, stored, {line.類別, line.原料代號, moves.textAt(i, 1), moves.textAt(i, 0)},
                  taken, -taken);
    }
}

} // namespace liaowu
