// Receipts with their posting, batch approval and the orders' search against the engine alone. Takes a demo plant:
//   receipt_bench PLANT.db [ROUNDS]
// The limit of each row replays the native statements and values that the program sent in the same run.
#include "common/text_values.h"
#include "data/recordset.h"
#include "plant_bench.h"
#include "purchasing/order_batch.h"
#include "purchasing/order_queries.h"
#include "warehouse/receipt_queries.h"
#include "warehouse/receipt_store.h"
#include <cstdio>

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

/// Rows that a screen asks for before it paints.
constexpr int PageRows = 40;

struct ReceiptBench : PlantBench {
    int orders = 0;

    /// An approved order with nothing received.
    QString newOrder(int lines) {
        OrderSave save = orderOf(lines);
        save.isNew = true;
        save.header.採購單號 = u"250303%1"_s.arg(++orders, 3, 10, QLatin1Char('0'));
        save.header.審單 = u"Y"_s;
        save.header.審單人 = session.salesmanName;
        saveOrder(session, save);
        return save.header.採購單號;
    }

    /// A receipt of all that is open of an order.
    ReceiptSave receiptOf(const QString& order) {
        ReceiptSave save;
        save.header.入庫單號 = u"250303R01"_s;
        save.header.類別 = u"物料"_s;
        save.header.入庫日期 = u"20250303"_s;
        save.header.廠商代號 = u"V001"_s;
        save.header.單別 = u"采購入庫"_s;
        save.header.倉別 = u"A區"_s;
        save.header.幣別 = u"台幣"_s;
        save.header.審核 = u"N"_s;
        save.isNew = save.canSeePrice = save.mayApprove = true;
        Connection connection(pool, session.connectionString);
        save.lines = linesOfOrder(connection, order, u"V001"_s, u"物料"_s, save.header.單別, true);
        for (ReceiptLine& line : save.lines)
            line.原小計 = line.小計 = numberText(val(line.單價) * val(line.數量));
        return save;
    }

    ReceiptDocument stored(const QString& number) {
        Connection connection(pool, session.connectionString);
        return loadReceipt(connection, number, true).value();
    }
    void unapprove(const QString& number) {
        Connection connection(pool, session.connectionString);
        connection.Execute(
            sql(u"update 原料入庫資料 set 審核='N',審核人='',審核日期='' where 入庫單號='{}'", number));
    }
    void remove(const QString& number) {
        const ReceiptDocument document = stored(number);
        deleteReceipt(session, number, document.lines, document.stamp);
    }
    /// The stored document as a screen saves it once more.
    ReceiptSave again(const QString& number) {
        const ReceiptDocument document = stored(number);
        ReceiptSave save;
        save.header = document.header;
        save.lines = save.saved = document.lines;
        save.savedNumber = number;
        save.loadedStamp = document.stamp;
        save.canSeePrice = save.mayApprove = true;
        return save;
    }
    void mustSave(ReceiptSave save) {
        if (!saveReceipt(session, save)) return;
        std::fputs("a conflict where nobody else saves\n", stderr);
        std::exit(1);
    }

    void saves(int lines) {
        const ReceiptSave fresh = receiptOf(newOrder(lines));
        if (static_cast<int>(fresh.lines.size()) != lines) {
            std::fputs("the order is not open\n", stderr);
            std::exit(1);
        }
        const QString number = fresh.header.入庫單號;
        against(
            u"receipt new, %1 lines"_s.arg(lines), [&] { mustSave(fresh); }, [&] { remove(number); });
        mustSave(fresh);
        // From the second save on there is a person who changed it, and the stamp stays what it is.
        mustSave(again(number));
        const ReceiptSave edit = again(number);
        against(u"receipt edit, %1 lines"_s.arg(lines), [&] { mustSave(edit); });
        unapprove(number);
        ReceiptSave approve = again(number);
        approve.header.審核 = u"Y"_s;
        approve.header.審核人 = session.salesmanName;
        against(
            u"receipt approve, %1 lines"_s.arg(lines), [&] { mustSave(approve); },
            [&] { unapprove(number); });
        remove(number);
    }

    void batchApproval() {
        QStringList numbers;
        Connection connection(pool, session.connectionString);
        for (Recordset rows =
                 select(connection, sql(u"select top 500 採購單號 from 採購資料 where 類別='物料' "
                                        u"order by 採購單號 desc"));
             !rows.EOF_(); rows.MoveNext())
            numbers << rows.text(0);
        const auto unapproveAll = [&] {
            Transaction transaction(connection);
            for (const QString& number : numbers)
                connection.Execute(
                    sql(u"update 採購資料 set 審單='N',審單人='',審單日期='' where 採購單號='{}'", number));
            transaction.commit();
        };
        unapproveAll();
        const BatchSpec batch = orderBatch(session, true);
        against(
            u"batch approval of %1 orders"_s.arg(numbers.size()),
            [&] {
                for (const QString& number : numbers)
                    batch.approve(number);
            },
            unapproveAll);
    }

    /// Reads all that a period holds and takes the texts of the first page.
    Recordset search(const QString& from, const QString& to) {
        Connection connection(pool, session.connectionString);
        SearchInput input;
        input.from = from;
        input.to = to;
        Recordset rows = select(connection, orderSearchStatement(session, input, true, u"20250303"_s));
        qsizetype letters = 0;
        for (int row = 0; row < std::min(PageRows, rows.RecordCount()); ++row)
            for (int column = 0; column < rows.columnCount(); ++column)
                letters += rows.textAt(row, column).size();
        if (letters == 0) {
            std::fputs("a search that finds nothing measures nothing\n", stderr);
            std::exit(1);
        }
        return rows;
    }

    struct Period {
        QString name, from, to;
    };
    const std::vector<Period> periods{{u"month"_s, u"20241201"_s, u"20241231"_s},
                                      {u"year"_s, u"20240101"_s, u"20241231"_s},
                                      {u"all"_s, u"00000000"_s, u"99999999"_s}};

    /// Before anything else has made the process large.
    void searchMemory() {
        for (const Period& period : periods) {
            const double before = residentMebibytes();
            const Recordset rows = search(period.from, period.to);
            std::printf("search of a %s: %d rows, resident %.0f MiB, before it %.0f MiB\n",
                        qPrintable(period.name), rows.RecordCount(), residentMebibytes(), before);
        }
    }
    void searches() {
        for (const Period& period : periods)
            against(u"search of a %1, first page"_s.arg(period.name),
                    [&] { search(period.from, period.to); });
    }
};

} // namespace

int main(int argc, char** argv) {
    ReceiptBench bench;
    if (const int failed = bench.open(argc, argv)) return failed;
    bench.session.category = u"物料"_s;
    bench.searchMemory();
    for (const int lines : {5, 50, 350})
        bench.saves(lines);
    bench.batchApproval();
    bench.searches();
    return 0;
}
