// A client that dies in the midst of a save or a delete leaves the document wholly there or wholly not.
#include "common/document_numbers.h"
#include "common/messages.h"
#include "common/text_values.h"
#include "data/connection_pool.h"
#include "data/connection_string.h"
#include "data/recordset.h"
#include "data/schema/schema.h"
#include "purchasing/order_store.h"
#include "warehouse/check_plant.h"
#include "warehouse/receipt_store.h"
#include <QTemporaryDir>
#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <random>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

constexpr int Items = 5;

class Quiet : public Messages {
public:
    bool ask(const QString&, const QString&, bool) override { return false; }
    void notice(const QString&) override {}

protected:
    void show(Icon, const QString& title, const QString& text) override {
        std::fprintf(stderr, "[%s] %s\n", qPrintable(title), qPrintable(text));
    }
};

/// A client without a screen that keeps saving and deleting orders and receipts.
class Client {
public:
    Client(const QString& connection, unsigned seed) : random(seed) {
        session.connectionString = connection;
        session.userName = u"t"_s;
        session.salesmanName = u"測試"_s;
    }

    void work() {
        switch (random() % 6) {
        case 0:
        case 1:
            newOrder();
            break;
        case 2:
            changeOrder();
            break;
        case 3:
            newReceipt();
            break;
        case 4:
            changeReceipt();
            break;
        default:
            random() % 2 ? removeReceipt() : removeOrder();
        }
    }

private:
    int below(int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); }

    QString any(const SqlText& statement) {
        Connection connection(session.pool, session.connectionString);
        Recordset rows = select(connection, statement);
        return rows.RecordCount() == 0 ? QString() : rows.textAt(below(rows.RecordCount()), 0);
    }
    QString anyOrder() { return any(sql(u"select 採購單號 from 採購資料")); }
    QString anyReceipt() { return any(sql(u"select 入庫單號 from 原料入庫資料")); }

    OrderLine orderLine() {
        OrderLine line;
        line.原料代號 = u"M%1"_s.arg(1 + below(Items));
        line.原料名稱 = line.原料代號;
        line.單位 = u"pcs"_s;
        line.數量 = line.未交數 = QString::number(10 + below(90));
        line.單價 = line.原單價 = QString::number(1 + below(9));
        line.寬剖 = u"1"_s;
        line.送清 = u"N"_s;
        return line;
    }

    void newOrder() {
        OrderSave save;
        save.isNew = save.canSeePrice = true;
        save.header.採購單號 = nextDocumentNumber(session, orderNumbers());
        save.header.類別 = u"物料"_s;
        save.header.採購日期 = u"20250303"_s;
        save.header.廠商代號 = u"V1"_s;
        save.header.審單 = u"Y"_s;
        for (int n = 1 + below(12); n > 0; --n)
            save.lines.push_back(orderLine());
        save.header.品質要求 = QString::number(save.lines.size());
        saveOrder(session, save);
    }

    void changeOrder() {
        const QString number = anyOrder();
        std::optional<OrderDocument> order;
        {
            Connection connection(session.pool, session.connectionString);
            order = loadOrder(connection, number, true);
        }
        if (!order) return;
        OrderSave save;
        save.canSeePrice = save.mayApprove = save.overwrite = true;
        save.header = order->header;
        save.lines = save.loaded = order->lines;
        save.lastDocumentNumber = number;
        save.lines.push_back(orderLine());
        save.header.品質要求 = QString::number(save.lines.size());
        saveOrder(session, save);
    }

    void removeOrder() {
        session.approvalParam = u"N"_s;
        deleteOrder(session, anyOrder());
    }

    ReceiptLines openLines(const QString& order) {
        Connection connection(session.pool, session.connectionString);
        Recordset rows = select(connection, sql(u"select 原料代號,序,未交數 from 採購明細資料 where "
                                                u"採購單號='{}' and cast(未交數 as float)>0",
                                                order));
        ReceiptLines lines;
        for (; !rows.EOF_(); rows.MoveNext()) {
            ReceiptLine line;
            line.採購單號 = order;
            line.原料代號 = rows.text(u"原料代號");
            line.採購序 = rows.text(u"序");
            line.數量 = line.入庫數量 = numberText(1 + below(static_cast<int>(val(rows.text(u"未交數")))));
            line.備品 = QString::number(below(3));
            line.單價 = line.原單價 = u"1"_s;
            line.走紙才 = u"1"_s;
            lines.push_back(line);
        }
        return lines;
    }

    void newReceipt() {
        const QString order = anyOrder();
        if (order.isEmpty()) return;
        ReceiptSave save;
        save.isNew = save.canSeePrice = true;
        save.lines = openLines(order);
        if (save.lines.empty()) return;
        save.header.入庫單號 = nextDocumentNumber(session, receiptNumbers());
        save.header.類別 = u"物料"_s;
        save.header.入庫日期 = u"20250303"_s;
        save.header.廠商代號 = u"V1"_s;
        save.header.單別 = u"采購入庫"_s;
        save.header.倉別 = u"A區"_s;
        save.header.審核 = u"N"_s;
        save.header.備註 = QString::number(save.lines.size());
        saveReceipt(session, save);
    }

    void changeReceipt() {
        const auto receipt = loaded(anyReceipt());
        if (!receipt) return;
        ReceiptSave save;
        save.canSeePrice = save.mayApprove = save.overwrite = true;
        save.header = receipt->header;
        save.lines = save.saved = receipt->lines;
        save.savedNumber = receipt->header.入庫單號;
        if (save.lines.size() > 1) save.lines.pop_back();
        for (ReceiptLine& line : save.lines)
            line.數量 = line.入庫數量 = numberText(std::max(1.0, val(line.數量) - 1));
        save.header.備註 = QString::number(save.lines.size());
        saveReceipt(session, save);
    }

    void removeReceipt() {
        if (const auto receipt = loaded(anyReceipt()))
            deleteReceipt(session, receipt->header.入庫單號, receipt->lines, receipt->stamp);
    }

    std::optional<ReceiptDocument> loaded(const QString& number) {
        Connection connection(session.pool, session.connectionString);
        return loadReceipt(connection, number, true);
    }

    ConnectionPool pool;
    Quiet quiet;
    Session session{pool, quiet};
    std::mt19937 random;
};

/// Child: works until it is killed.
[[noreturn]] void workForever(const QString& connection, unsigned seed, int ready) {
    Client client(connection, seed);
    for (bool told = false;;) {
        try {
            client.work();
        } catch (const Refusal&) {
        } catch (const DatabaseError& error) {
            if (error.nativeError != DatabaseError::Locked) {
                std::fprintf(stderr, "%s\n", error.what());
                _exit(1);
            }
        }
        if (!told) told = write(ready, "x", 1) == 1;
    }
}

QStringList halfWritten(Connection& connection) {
    QStringList faults;
    const auto compare = [&](const SqlText& statement) {
        for (Recordset rows = select(connection, statement); !rows.EOF_(); rows.MoveNext())
            if (val(rows.text(1)) != val(rows.text(2))) faults << rows.text(0);
    };
    compare(sql(u"select h.採購單號,h.品質要求,count(l.序) as n from 採購資料 h left join 採購明細資料 l on "
                u"l.採購單號=h.採購單號 group by "
                u"h.採購單號,h.品質要求"));
    compare(sql(u"select h.入庫單號,h.備註,count(l.序) as n from 原料入庫資料 h left join 原料入庫明細 l on "
                u"l.入庫單號=h.入庫單號 group by "
                u"h.入庫單號,h.備註"));
    for (const Difference& difference : checkPlant(connection).differences)
        faults << difference.text();
    return faults;
}

} // namespace

TEST(Reliability, KilledAtAnyMomentLeavesNothingHalfWritten) {
    const int kills =
        qEnvironmentVariableIsSet("LIAOWU_KILLS") ? qEnvironmentVariableIntValue("LIAOWU_KILLS") : 200;
    QTemporaryDir folder;
    const QString connection = connectionStringFor(folder.filePath(u"plant.db"_s));
    ConnectionPool pool;
    createSchema(pool, connection);
    {
        Connection link(pool, connection);
        for (int i = 1; i <= Items; ++i)
            link.Execute(sql(u"insert into 物料資料 (物料代號,物料名稱,庫存,單位,進價,幣別) values "
                             u"('M{}','M{}','0','pcs','1','')",
                             i, i));
    }
    std::mt19937 random(4711);
    int struckInTransaction = 0;
    for (int i = 0; i < kills; ++i) {
        // Nothing of the engine may be open across a fork.
        pool.clear();
        int ready[2];
        ASSERT_EQ(pipe(ready), 0);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) workForever(connection, static_cast<unsigned>(i) * 7919u, ready[1]);
        close(ready[1]);
        char byte = 0;
        ASSERT_EQ(read(ready[0], &byte, 1), 1) << "the client failed by itself";
        close(ready[0]);
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 25000));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status));
        // A journal with frames behind its last commit is what a death in the midst leaves.
        struckInTransaction += QFileInfo(folder.filePath(u"plant.db-wal"_s)).size() > 0;
        Connection link(pool, connection);
        ASSERT_EQ(halfWritten(link), QStringList()) << "after kill " << i;
    }
    Connection link(pool, connection);
    const int orders =
        static_cast<int>(val(select(link, sql(u"select count(*) as n from 採購資料")).text(0)));
    const int receipts =
        static_cast<int>(val(select(link, sql(u"select count(*) as n from 原料入庫資料")).text(0)));
    std::printf("[ killed   ] %d times, journal in use %d times; %d orders and %d receipts stand\n", kills,
                struckInTransaction, orders, receipts);
    EXPECT_GT(orders, kills / 20);
    EXPECT_GT(receipts, kills / 40);
}
