// The purchase order against the engine alone: saves, key set, number, stock figures, formulas. Takes a demo plant:
//   order_bench PLANT.db [ROUNDS]
// The limit of each row replays the native statements and values that the program sent in the same run.
#include "common/document_numbers.h"
#include "common/text_values.h"
#include "data/recordset.h"
#include "formula/evaluator.h"
#include "plant_bench.h"
#include "purchasing/order_pricing.h"
#include "purchasing/order_queries.h"
#include <muParser.h>

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

struct OrderBench : PlantBench {
    void remove(RawEngine& raw, const QString& number) {
        raw.run(u"delete from 採購資料 where 採購單號='%1'"_s.arg(number));
        raw.run(u"delete from 採購明細資料 where 採購單號='%1'"_s.arg(number));
        raw.run(u"delete from 歷史單價記錄 where 添加日期='20250303'"_s);
    }

    void saveNew(int lines) {
        RawEngine raw(file);
        OrderSave save = orderOf(lines);
        save.isNew = true;
        save.header.採購單號 = u"250303001"_s;
        against(
            u"save new, %1 lines"_s.arg(lines),
            [&] {
                OrderSave copy = save;
                saveOrder(session, copy);
            },
            [&] { remove(raw, save.header.採購單號); });
    }

    void saveEdit(int lines) {
        OrderSave first = orderOf(lines);
        first.isNew = true;
        first.header.採購單號 = u"250303002"_s;
        saveOrder(session, first);
        against(u"save edit, %1 lines"_s.arg(lines), [&] {
            OrderSave save = first;
            save.isNew = false;
            save.lastDocumentNumber = save.header.採購單號;
            save.loaded = save.lines;
            save.overwrite = true;
            saveOrder(session, save);
        });
        RawEngine raw(file);
        remove(raw, first.header.採購單號);
    }

    void reads() {
        session.category = u"物料"_s;
        against(u"key set of all orders of 物料"_s, [&] {
            Connection connection(pool, session.connectionString);
            Recordset keys = select(connection, orderBrowseStatement(session));
            keys.MoveLast();
        });
        against(u"drawing a number"_s, [&] { nextDocumentNumber(session, orderNumbers()); });
        QString busiest;
        {
            Connection connection(pool, session.connectionString);
            busiest = select(connection, sql(u"select top 1 原料代號,count(*) as n from 採購明細資料 group "
                                             u"by 原料代號 order by n desc"))
                          .text(0);
        }
        against(u"stock figures of the busiest item"_s, [&] {
            Connection connection(pool, session.connectionString);
            stockFigures(session, connection, u"物料"_s, busiest);
        });
    }

    void formulas() {
        CEval evaluator;
        const QString text = u"120*90*100*3.25/10000+(450-20)*2"_s;
        mu::Parser parser;
        std::vector<double> ours, limit;
        for (int i = 0; i < rounds; ++i) {
            ours.push_back(microseconds([&] {
                               for (int n = 0; n < 1000; ++n)
                                   evaluator.Evaluate(text);
                           }) /
                           1000);
            limit.push_back(microseconds([&] {
                                for (int n = 0; n < 1000; ++n) {
                                    parser.SetExpr(text.toStdString());
                                    parser.Eval();
                                }
                            }) /
                            1000);
        }
        row(u"parse and evaluate (beside muParser)"_s, median(ours), median(limit));

        Connection connection(pool, session.connectionString);
        const FormulaTable table = loadFormulas(connection, FormulaOrder::ByCategory);
        OrderLines lines = orderOf(350).lines;
        for (OrderLine& line : lines) {
            line.規格 = u"120*90"_s;
            line.單位 = u"㎡"_s;
        }
        std::vector<double> times;
        for (int i = 0; i < rounds; ++i)
            times.push_back(microseconds([&] {
                for (OrderLine& line : lines) {
                    findItem(connection, u"物料"_s, line.原料代號);
                    recalculateLine(line, {table, evaluator, u"紙板"_s, u"pcs"_s, true});
                }
                orderTotal(lines, true);
            }));
        row(u"350 lines recalculated, item look-ups included"_s, median(times), 0);
    }
};

} // namespace

int main(int argc, char** argv) {
    OrderBench bench;
    if (const int failed = bench.open(argc, argv)) return failed;
    for (const int lines : {5, 50, 350})
        bench.saveNew(lines);
    for (const int lines : {5, 50, 350})
        bench.saveEdit(lines);
    bench.reads();
    bench.formulas();
    return 0;
}
