#include "warehouse/check_plant.h"
#include "data/number_text.h"
#include "data/recordset.h"
#include <QHash>
#include <QSet>
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
    while (text.endsWith(u' ')) text.chop(1);
    return text.toCaseFolded();
}

QString joined(std::initializer_list<QString> parts) {
    QString key;
    for (const QString& part : parts) key += (key.isEmpty() ? QString() : QString(u'\x1f')) + folded(part);
    return key;
}

/// Sums of many decimals drift in their last bits.
bool same(double left, double right) {
    return std::abs(left - right) <= 1e-6 * std::max({1.0, std::abs(left), std::abs(right)});
}

bool hasTable(Connection& connection, const QString& table) {
    try {
        select(connection, sql(u"select top 1 * from [{}]", table));
        return true;
    } catch (const DatabaseError& error) {
        if (error.nativeError == DatabaseError::InvalidObject) return false;
        throw;
    }
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
    QHash<QString, double> receivedOfOrderLine, orderedOfRequisitionLine, receivedOfBin;
    std::vector<StockMove> moves;
    /// By document and line: what bins are reckoned by.
    struct IssuedLine {
        QString family, item;
        double quantity = 0;
    };
    QHash<QString, IssuedLine> issued;

    Recordset read(QStringView statement) { return select(connection, sql(statement)); }

    void differ(const QString& table, const QString& key, const QString& column, const QString& stored, const QString& expected) {
        result.differences.push_back({table, key, column, stored, expected});
    }
    void compare(const QString& table, const QString& key, const QString& column, const QString& stored, double expected) {
        if (!same(val(stored), expected)) differ(table, key, column, stored, numberText(expected));
    }

    static bool movesStock(const QString& family) { return family == u"紙板" || family == u"物料"; }

    void readReceipts() {
        const Recordset rows = read(
            u"select 原料入庫資料.入庫單號, 原料入庫資料.類別, 原料入庫資料.入庫日期, 原料入庫資料.單別, 原料入庫資料.倉別, "
            u"原料入庫明細.原料代號, 原料入庫明細.數量, 原料入庫明細.備品, 原料入庫明細.入庫數量, 原料入庫明細.採購單號, "
            u"原料入庫明細.採購序 from 原料入庫資料 inner join 原料入庫明細 on 原料入庫資料.入庫單號 = 原料入庫明細.入庫單號");
        result.receiptLines = rows.RecordCount();
        for (int row = 0; row < rows.RecordCount(); ++row) {
            const auto text = [&](int column) { return rows.textAt(row, column); };
            const double quantity = val(text(6));
            if (const QString order = text(9), line = text(10); !order.isEmpty() && !line.isEmpty())
                receivedOfOrderLine[joined({order, numberText(val(line))})] += quantity;
            const QString number = text(0), family = folded(text(1)), bin = text(4), item = text(5);
            if (!movesStock(family) || (text(3).contains(u'退') && number.contains(u'T', Qt::CaseInsensitive))) continue;
            const double pieces = family == u"紙板" ? val(text(8)) : quantity + val(text(7));
            moves.push_back({family, folded(item), text(2).left(6), pieces});
            if (!bin.trimmed().isEmpty()) receivedOfBin[joined({family, item, bin, number})] += pieces;
        }
    }

    void readIssues() {
        QSet<QString> deducted;
        if (knowsDeductions) {
            const Recordset known = read(u"select 領料單號, 序 from 料務_扣庫存");
            for (int row = 0; row < known.RecordCount(); ++row)
                deducted.insert(joined({known.textAt(row, 0), known.textAt(row, 1)}));
        }
        const Recordset rows = read(
            u"select 原料領料資料.領料單號, 原料領料明細.序, 原料領料資料.類別, 原料領料資料.領料日期, 原料領料資料.審單, "
            u"原料領料明細.原料代號, 原料領料明細.實領數 from 原料領料資料 inner join 原料領料明細 "
            u"on 原料領料資料.領料單號 = 原料領料明細.領料單號");
        result.issueLines = rows.RecordCount();
        for (int row = 0; row < rows.RecordCount(); ++row) {
            const auto text = [&](int column) { return rows.textAt(row, column); };
            const QString key = joined({text(0), text(1)});
            const QString family = folded(text(2));
            issued[key] = {family, text(5), val(text(6))};
            const bool counts = !knowsDeductions || deducted.remove(key) || folded(text(4)) == u"y";
            if (movesStock(family) && counts) moves.push_back({family, folded(text(5)), text(3).left(6), -val(text(6))});
        }
        for (const QString& key : deducted)
            differ(u"料務_扣庫存"_s, QString(key).replace(u'\x1f', u'/'), {}, {}, u"沒有這筆領料明細"_s);
    }

    void checkOrderLines() {
        const QString table = u"採購明細資料"_s;
        const Recordset rows = read(u"select 採購單號, 序, 請購單號, 原料代號, 數量, 已入庫數, 未交數, 送清 from 採購明細資料");
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

    void checkStock(const QString& family, const QString& table, const QString& key, const QString& closings) {
        struct Balance {
            QString month;
            double stock = 0;
        };
        QHash<QString, Balance> balances;
        const Recordset closed = select(connection, sql(u"select 代號, 結轉月份, 結存 from [{}]", closings));
        for (int row = 0; row < closed.RecordCount(); ++row) {
            Balance& balance = balances[folded(closed.textAt(row, 0))];
            if (closed.textAt(row, 1) >= balance.month) balance = {closed.textAt(row, 1), val(closed.textAt(row, 2))};
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
        const QString movesTable = u"料務_板位異動"_s, table = u"原料板位明細"_s;
        QHash<QString, double> takenOfBin, takenOfLine;
        const Recordset takes = read(u"select 領料單號, 序, 入庫單號, 儲位, 數量 from 料務_板位異動");
        for (int row = 0; row < takes.RecordCount(); ++row) {
            const auto text = [&](int column) { return takes.textAt(row, column); };
            const QString line = joined({text(0), text(1)});
            const auto from = issued.constFind(line);
            if (from == issued.cend()) {
                differ(movesTable, text(0) + u'/' + text(1), {}, {}, u"沒有這筆領料明細"_s);
                continue;
            }
            takenOfLine[line] += val(text(4));
            takenOfBin[joined({from->family, from->item, text(3), text(2)})] += val(text(4));
        }
        for (auto line = takenOfLine.cbegin(); line != takenOfLine.cend(); ++line)
            if (const double quantity = issued[line.key()].quantity; line.value() > quantity && !same(line.value(), quantity))
                differ(movesTable, QString(line.key()).replace(u'\x1f', u'/'), u"數量"_s, numberText(line.value()),
                       u"至多 "_s + numberText(quantity));

        const Recordset rows = read(u"select 類別, 原料代號, 儲位, 入庫單號, 入庫數, 領料數 from 原料板位明細");
        result.binRows = rows.RecordCount();
        for (int row = 0; row < rows.RecordCount(); ++row) {
            const auto text = [&](int column) { return rows.textAt(row, column); };
            const QString key = joined({text(0), text(1), text(2), text(3)});
            const QString name = QStringList{text(0), text(1), text(2), text(3)}.join(u'/');
            const auto received = receivedOfBin.constFind(key);
            if (received == receivedOfBin.cend()) {
                // Paper and plates post nothing here: their rows are another module's.
                if (movesStock(folded(text(0)))) differ(table, name, {}, {}, u"沒有對應的入庫明細"_s);
                continue;
            }
            const double taken = takenOfBin.value(key);
            compare(table, name, u"入庫數"_s, text(4), *received - taken);
            compare(table, name, u"領料數"_s, text(5), taken);
            receivedOfBin.erase(received);
        }
        for (auto missing = receivedOfBin.cbegin(); missing != receivedOfBin.cend(); ++missing) {
            const double left = missing.value() - takenOfBin.value(missing.key());
            // A row that is used up may have been cleaned away.
            if (left > 0 && !same(left, 0))
                differ(table, QString(missing.key()).replace(u'\x1f', u'/'), u"入庫數"_s, u"(無此筆)"_s, numberText(left));
        }
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
                select(connection, sql(u"select distinct [{}].[{}] from [{}] left join [{}] on [{}].[{}] = [{}].[{}] "
                                       u"where [{}].[{}] is null",
                                       pair.lines, pair.key, pair.lines, pair.document, pair.document, pair.key, pair.lines,
                                       pair.key, pair.document, pair.key));
            for (int row = 0; row < rows.RecordCount(); ++row)
                differ(QString::fromUtf16(pair.lines), rows.textAt(row, 0), {}, {}, u"明細沒有單據表頭"_s);
        }
    }
};

} // namespace

PlantCheck checkPlant(Connection& connection) { return Check(connection).run(); }

} // namespace liaowu
