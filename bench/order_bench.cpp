// The purchase order against the engine alone: saves, key set, number, stock figures, formulas. Takes a demo plant:
//   order_bench PLANT.db [ROUNDS]
// The limit of each row replays the native statements and values that the program sent in the same run.
#include "common/document_numbers.h"
#include "common/messages.h"
#include "common/text_values.h"
#include "data/connection_string.h"
#include "data/recordset.h"
#include "formula/evaluator.h"
#include "purchasing/order_pricing.h"
#include "purchasing/order_queries.h"
#include "purchasing/order_store.h"
#include "raw_replay.h"
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <muParser.h>

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

class Silent : public Messages {
public:
    bool ask(const QString&, const QString&, bool) override { return false; }
    void notice(const QString&) override {}

protected:
    void show(Icon, const QString& title, const QString& text) override {
        std::fprintf(stderr, "[%s] %s\n", qPrintable(title), qPrintable(text));
        std::exit(1);
    }
};

template <typename Work>
double microseconds(Work work) {
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / 1000;
}

void row(const char* name, double ours, double limit) {
    std::printf("%-44s %12.1f us %12.1f us %8.2f x\n", name, ours, limit, limit > 0 ? ours / limit : 0);
}

struct Bench {
    QTemporaryDir folder;
    QString file = folder.filePath(u"plant.db"_s);
    ConnectionPool pool;
    Silent silent;
    Session session{pool, silent};
    int rounds = 15;

    OrderSave orderOf(int lines) {
        Connection connection(pool, session.connectionString);
        Recordset items = select(
            connection,
            sql(u"select top {} 物料代號,物料名稱,規格,進料單位,進價,幣別 from 物料資料 where 幣別='台幣' "
                u"order by 物料代號",
                lines));
        OrderSave save;
        save.header.類別 = u"物料"_s;
        save.header.採購日期 = u"20250303"_s;
        save.header.廠商代號 = u"V001"_s;
        save.header.廠商簡稱 = u"廠商"_s;
        save.header.幣別 = u"台幣"_s;
        save.header.採購類別 = u"庫存"_s;
        save.header.審單 = u"N"_s;
        save.canSeePrice = save.mayApprove = true;
        for (int i = 0; i < lines; ++i) {
            OrderLine line;
            line.原料代號 = items.text(0);
            line.廠商名稱 = line.原料名稱 = items.text(1);
            line.規格 = items.text(2);
            line.單位 = items.text(3);
            line.單價 = line.原單價 = items.text(4);
            line.數量 = line.未交數 = QString::number(10 + i);
            line.小計 = line.原小計 = numberText(val(line.單價) * val(line.數量));
            line.交貨日期 = u"20250320"_s;
            line.寬剖 = u"1"_s;
            line.送清 = u"N"_s;
            save.lines.push_back(line);
            items.MoveNext();
            if (items.EOF_()) items.MoveFirst();
        }
        return save;
    }

    void remove(RawEngine& raw, const QString& number) {
        raw.run(u"delete from 採購資料 where 採購單號='%1'"_s.arg(number));
        raw.run(u"delete from 採購明細資料 where 採購單號='%1'"_s.arg(number));
        raw.run(u"delete from 歷史單價記錄 where 添加日期='20250303'"_s);
    }

    void saveNew(int lines) {
        std::vector<double> ours, limit;
        RawEngine raw(file);
        for (int i = 0; i < rounds + 2; ++i) {
            OrderSave save = orderOf(lines);
            save.isNew = true;
            save.header.採購單號 = u"250303001"_s;
            const Recording recorded = record(pool, [&] {
                OrderSave copy = save;
                saveOrder(session, copy);
            });
            remove(raw, save.header.採購單號);
            raw.prepare(recorded);
            const double layer = microseconds([&] { saveOrder(session, save); });
            remove(raw, save.header.採購單號);
            const double engine = microseconds([&] { raw.play(recorded); });
            remove(raw, save.header.採購單號);
            if (i < 2) continue;
            ours.push_back(layer);
            limit.push_back(engine);
        }
        row(qPrintable(u"save new, %1 lines"_s.arg(lines)), median(ours), median(limit));
    }

    void saveEdit(int lines) {
        std::vector<double> ours, limit;
        RawEngine raw(file);
        OrderSave first = orderOf(lines);
        first.isNew = true;
        first.header.採購單號 = u"250303002"_s;
        saveOrder(session, first);
        for (int i = 0; i < rounds + 2; ++i) {
            const auto once = [&] {
                OrderSave save = first;
                save.isNew = false;
                save.lastDocumentNumber = save.header.採購單號;
                save.loaded = save.lines;
                save.overwrite = true;
                saveOrder(session, save);
            };
            const Recording recorded = record(pool, once);
            raw.prepare(recorded);
            const double layer = microseconds(once);
            const double engine = microseconds([&] { raw.play(recorded); });
            if (i < 2) continue;
            ours.push_back(layer);
            limit.push_back(engine);
        }
        remove(raw, first.header.採購單號);
        row(qPrintable(u"save edit, %1 lines"_s.arg(lines)), median(ours), median(limit));
    }

    template <typename Deed>
    void against(const char* name, Deed deed) {
        std::vector<double> ours, limit;
        RawEngine raw(file);
        for (int i = 0; i < rounds + 2; ++i) {
            const Recording recorded = record(pool, deed);
            raw.prepare(recorded);
            const double layer = microseconds(deed);
            const double engine = microseconds([&] { raw.play(recorded); });
            if (i < 2) continue;
            ours.push_back(layer);
            limit.push_back(engine);
        }
        row(name, median(ours), median(limit));
    }

    void reads() {
        session.category = u"物料"_s;
        against("key set of all orders of 物料", [&] {
            Connection connection(pool, session.connectionString);
            Recordset keys = select(connection, orderBrowseStatement(session));
            keys.MoveLast();
        });
        against("drawing a number", [&] { nextDocumentNumber(session, orderNumbers()); });
        QString busiest;
        {
            Connection connection(pool, session.connectionString);
            busiest = select(connection, sql(u"select top 1 原料代號,count(*) as n from 採購明細資料 group "
                                             u"by 原料代號 order by n desc"))
                          .text(0);
        }
        against("stock figures of the busiest item", [&] {
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
        row("parse and evaluate (beside muParser)", median(ours), median(limit));

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
        row("350 lines recalculated, item look-ups included", median(times), 0);
    }
};

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("usage: order_bench PLANT.db [ROUNDS]\n", stderr);
        return 2;
    }
    Bench bench;
    if (argc > 2) bench.rounds = std::max(3, std::atoi(argv[2]));
    if (!QFile::copy(QString::fromLocal8Bit(argv[1]), bench.file)) {
        std::fputs("the plant cannot be copied\n", stderr);
        return 1;
    }
    QFile::setPermissions(bench.file, QFile::ReadOwner | QFile::WriteOwner);
    bench.session.connectionString = connectionStringFor(bench.file);
    bench.session.userName = u"admin"_s;
    bench.session.salesmanName = u"甲"_s;
    bench.pool.setClock(QDateTime(QDate(2025, 3, 3), QTime(8, 30)));
    std::printf("%-44s %15s %15s\n", "median of rounds", "ours", "limit");
    for (const int lines : {5, 50, 350})
        bench.saveNew(lines);
    for (const int lines : {5, 50, 350})
        bench.saveEdit(lines);
    bench.reads();
    bench.formulas();
    return 0;
}
