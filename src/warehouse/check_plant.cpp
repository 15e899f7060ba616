#include "warehouse/check_plant.h"
#include "common/own_tables.h"
#include "data/number_text.h"
#include "data/recordset.h"
#include <QHash>
#include <QMap>
#include <cmath>

namespace liaowu {

using namespace Qt::StringLiterals;

QString Difference::text() const {
    if (column.isEmpty()) return u"%1 %2:%3"_s.arg(table, key, expected);
    return u"%1 %2 %3:資料庫為 %4,依單據應為 %5"_s.arg(table, key, column, stored, expected);
}

namespace {

/// Texts that the server takes for equal have one key.
QString folded(QString text) {
    while (text.endsWith(u' '))
        text.chop(1);
    return text.toCaseFolded();
}

/// Key of a row whose key has several parts.
QString joined(const QStringList& parts) {
    QStringList keys;
    for (const QString& part : parts)
        keys << folded(part);
    return keys.join(u'\x1f');
}

/// Sums of many decimals drift in their last bits.
bool same(double left, double right) {
    return std::abs(left - right) <= 1e-6 * std::max({1.0, std::abs(left), std::abs(right)});
}

/// A sum under a folded key, with the key as people wrote it.
struct Named {
    QString name;
    double sum = 0;
};
/// Sorted, so that differences come in the same order every time.
using NamedSums = QMap<QString, Named>;

void addTo(NamedSums& sums, const QStringList& key, double amount) {
    Named& entry = sums[joined(key)];
    if (entry.name.isEmpty()) entry.name = key.join(u'/');
    entry.sum += amount;
}

struct StockMove {
    QString family, item, month;
    double quantity = 0;
};

class Check {
public:
    explicit Check(Connection& on) : connection(on), knowsDeductions(hasTable(on, u"料務_扣庫存"_s)) {}

    PlantCheck run() {
        readReceipts();
        readIssues();
        checkOrderLines();
        checkRequisitionLines();
        checkStock(u"紙板"_s, u"浪紙資料"_s, u"浪紙代號"_s, u"盤點結轉_浪紙"_s);
        checkStock(u"物料"_s, u"物料資料"_s, u"物料代號"_s, u"盤點結轉_物料"_s);
        if (knowsDeductions) {
            checkBins();
        } else {
            result.notes << u"資料庫沒有料務_扣庫存及料務_板位異動,未檢查板位"_s;
        }
        checkOrphans();
        return std::move(result);
    }

private:
    Connection& connection;
    const bool knowsDeductions;
    PlantCheck result;
    QHash<QString, double> receivedOfOrderLine, orderedOfRequisitionLine;
    NamedSums receivedOfBin;
    std::vector<StockMove> moves;
    /// By document and line: what bins are reckoned by.
    struct IssuedLine {
        QString family, item;
        double quantity = 0;
    };
    QHash<QString, IssuedLine> issued;

    Recordset read(QStringView statement) { return select(connection, sql(statement)); }

    void differ(const QString& table, const QString& key, const QString& column, const QString& stored,
                const QString& expected) {
        result.differences.push_back({table, key, column, stored, expected});
    }
    void compare(const QString& table, const QString& key, const QString& column, const QString& stored,
                 double expected) {
        if (!same(val(stored), expected)) differ(table, key, column, stored, numberText(expected));
    }

    static bool movesStock(const QString& family) { return family == u"紙板" || family == u"物料"; }

    void readReceipts() {
        const Recordset rows = read(u"select 原料入庫資料.入庫單號, 原料入庫資料.類別, "
                                    u"原料入庫資料.入庫日期, 原料入庫資料.單別, 原料入庫資料.倉別, "
                                    u"原料入庫明細.原料代號, 原料入庫明細.數量, 原料入庫明細.備品, "
                                    u"原料入庫明細.入庫數量, 原料入庫明細.採購單號, "
                                    u"原料入庫明細.採購序 from 原料入庫資料 inner join 原料入庫明細 on "
                                    u"原料入庫資料.入庫單號 = 原料入庫明細.入庫單號");
        result.receiptLines = rows.RecordCount();
        for (int row = 0; row < rows.RecordCount(); ++row) {
            const auto text = [&](int column) { return rows.textAt(row, column); };
            const double quantity = val(text(6));
            if (const QString order = text(9), line = text(10); !order.isEmpty() && !line.isEmpty())
                receivedOfOrderLine[joined({order, numberText(val(line))})] += quantity;
            const QString number = text(0), family = folded(text(1)), bin = text(4), item = text(5);
            if (!movesStock(family) ||
                (text(3).contains(u'退') && number.contains(u'T', Qt::CaseInsensitive)))
                continue;
            const double pieces = family == u"紙板" ? val(text(8)) : quantity + val(text(7));
            moves.push_back({family, folded(item), text(2).left(6), pieces});
            if (!bin.trimmed().isEmpty()) addTo(receivedOfBin, {family, item, bin, number}, pieces);
        }
    }

    void readIssues() {
        NamedSums deducted;
        if (knowsDeductions) {
            const Recordset known = read(u"select 領料單號, 序 from 料務_扣庫存");
            for (int row = 0; row < known.RecordCount(); ++row)
                addTo(deducted, {known.textAt(row, 0), known.textAt(row, 1)}, 1);
        }
        const Recordset rows =
            read(u"select 原料領料資料.領料單號, 原料領料明細.序, 原料領料資料.類別, 原料領料資料.領料日期, "
                 u"原料領料資料.審單, "
                 u"原料領料明細.原料代號, 原料領料明細.實領數 from 原料領料資料 inner join 原料領料明細 "
                 u"on 原料領料資料.領料單號 = 原料領料明細.領料單號");
        result.issueLines = rows.RecordCount();
        for (int row = 0; row < rows.RecordCount(); ++row) {
            const auto text = [&](int column) { return rows.textAt(row, column); };
            const QString key = joined({text(0), text(1)});
            const QString family = folded(text(2));
            issued[key] = {family, text(5), val(text(6))};
            const bool counts = !knowsDeductions || deducted.remove(key) > 0 || folded(text(4)) == u"y";
            if (movesStock(family) && counts)
                moves.push_back({family, folded(text(5)), text(3).left(6), -val(text(6))});
        }
        for (const Named& row : deducted)
            differ(u"料務_扣庫存"_s, row.name, {}, {}, u"沒有這筆領料明細"_s);
    }

    void checkOrderLines() {
        const QString table = u"採購明細資料"_s;
        const Recordset rows =
            read(u"select 採購單號, 序, 請購單號, 原料代號, 數量, 已入庫數, 未交數, 送清 from 採購明細資料");
        result.orderLines = rows.RecordCount();
        for (int row = 0; row < rows.RecordCount(); ++row) {
            const auto text = [&](int column) { return rows.textAt(row, column); };
            const QString key = text(0) + u'/' + text(1);
            const double quantity = val(text(4));
            const double received = receivedOfOrderLine.value(joined({text(0), text(1)}));
            compare(table, key, u"已入庫數"_s, text(5), received);
            compare(table, key, u"未交數"_s, text(6), quantity - received);
            const bool complete = received > 0 && (quantity < received || same(quantity, received));
            // Closed by hand is anybody's right; open with nothing to come is not.
            if (complete && folded(text(7)) != u"y") differ(table, key, u"送清"_s, text(7), u"Y"_s);
            if (!text(2).isEmpty()) orderedOfRequisitionLine[joined({text(2), text(3)})] += quantity;
        }
    }

    void checkRequisitionLines() {
        const Recordset rows = read(u"select 申購單號, 原料代號, 已采購數 from 原料申購明細");
        result.requisitionLines = rows.RecordCount();
        for (int row = 0; row < rows.RecordCount(); ++row) {
            const QString number = rows.textAt(row, 0), item = rows.textAt(row, 1);
            compare(u"原料申購明細"_s, number + u'/' + item, u"已采購數"_s, rows.textAt(row, 2),
                    orderedOfRequisitionLine.value(joined({number, item})));
        }
    }

    void checkStock(const QString& family, const QString& table, const QString& key,
                    const QString& closings) {
        struct Balance {
            QString month;
            double stock = 0;
        };
        QHash<QString, Balance> balances;
        const Recordset closed = select(connection, sql(u"select 代號, 結轉月份, 結存 from [{}]", closings));
        for (int row = 0; row < closed.RecordCount(); ++row) {
            Balance& balance = balances[folded(closed.textAt(row, 0))];
            if (closed.textAt(row, 1) >= balance.month)
                balance = {closed.textAt(row, 1), val(closed.textAt(row, 2))};
        }
        for (const StockMove& move : moves) {
            if (move.family != family) continue;
            Balance& balance = balances[move.item];
            if (move.month > balance.month) balance.stock += move.quantity;
        }
        const Recordset items = select(connection, sql(u"select [{}], 庫存 from [{}]", key, table));
        result.items += items.RecordCount();
        for (int row = 0; row < items.RecordCount(); ++row)
            compare(table, items.textAt(row, 0), u"庫存"_s, items.textAt(row, 1),
                    balances.value(folded(items.textAt(row, 0))).stock);
    }

    void checkBins() {
        const QHash<QString, double> takenOfBin = checkBinMoves();
        const QString table = u"原料板位明細"_s;
        const Recordset rows =
            read(u"select 類別, 原料代號, 儲位, 入庫單號, 入庫數, 領料數 from 原料板位明細");
        result.binRows = rows.RecordCount();
        for (int row = 0; row < rows.RecordCount(); ++row) {
            const auto text = [&](int column) { return rows.textAt(row, column); };
            const QStringList parts{text(0), text(1), text(2), text(3)};
            const QString key = joined(parts), name = parts.join(u'/');
            const auto received = receivedOfBin.constFind(key);
            if (received == receivedOfBin.cend()) {
                // Paper and plates post nothing here: their rows are another module's.
                if (movesStock(folded(text(0)))) differ(table, name, {}, {}, u"沒有對應的入庫明細"_s);
                continue;
            }
            const double taken = takenOfBin.value(key);
            compare(table, name, u"入庫數"_s, text(4), received->sum - taken);
            compare(table, name, u"領料數"_s, text(5), taken);
            receivedOfBin.erase(received);
        }
        for (auto missing = receivedOfBin.cbegin(); missing != receivedOfBin.cend(); ++missing) {
            const double left = missing->sum - takenOfBin.value(missing.key());
            // A row that is used up may have been cleaned away.
            if (left > 0 && !same(left, 0))
                differ(table, missing->name, u"入庫數"_s, u"(無此筆)"_s, numberText(left));
        }
    }

    /// What issues took from each bin row, by its key. No line may have taken more than it issued.
    QHash<QString, double> checkBinMoves() {
        const QString table = u"料務_板位異動"_s;
        QHash<QString, double> takenOfBin;
        NamedSums takenOfLine;
        const Recordset rows = read(u"select 領料單號, 序, 入庫單號, 儲位, 數量 from 料務_板位異動");
        for (int row = 0; row < rows.RecordCount(); ++row) {
            const auto text = [&](int column) { return rows.textAt(row, column); };
            const QStringList line{text(0), text(1)};
            const auto from = issued.constFind(joined(line));
            if (from == issued.cend()) {
                differ(table, line.join(u'/'), {}, {}, u"沒有這筆領料明細"_s);
                continue;
            }
            addTo(takenOfLine, line, val(text(4)));
            takenOfBin[joined({from->family, from->item, text(3), text(2)})] += val(text(4));
        }
        for (auto taken = takenOfLine.cbegin(); taken != takenOfLine.cend(); ++taken)
            if (const double most = issued[taken.key()].quantity;
                taken->sum > most && !same(taken->sum, most))
                differ(table, taken->name, u"數量"_s, numberText(taken->sum), u"至多 "_s + numberText(most));
        return takenOfBin;
    }

    void checkOrphans() {
        struct Pair {
            const char16_t *lines, *document, *key;
        };
        constexpr std::array<Pair, 4> pairs{{{u"原料申購明細", u"原料申購資料", u"申購單號"},
                                             {u"採購明細資料", u"採購資料", u"採購單號"},
                                             {u"原料入庫明細", u"原料入庫資料", u"入庫單號"},
                                             {u"原料領料明細", u"原料領料資料", u"領料單號"}}};
        for (const Pair& pair : pairs) {
            const Recordset rows =
                select(connection,
                       sql(u"select distinct [{}].[{}] from [{}] left join [{}] on [{}].[{}] = [{}].[{}] "
                           u"where [{}].[{}] is null",
                           pair.lines, pair.key, pair.lines, pair.document, pair.document, pair.key,
                           pair.lines, pair.key, pair.document, pair.key));
            for (int row = 0; row < rows.RecordCount(); ++row)
                differ(QString::fromUtf16(pair.lines), rows.textAt(row, 0), {}, {}, u"明細沒有單據表頭"_s);
        }
    }
};

} // namespace

PlantCheck checkPlant(Connection& connection) {
    return Check(connection).run();
}

} // namespace liaowu
