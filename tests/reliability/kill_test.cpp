// A client that dies in the midst of a save or a delete leaves the document wholly there or wholly not.
#include "common/document_numbers.h"
#include "purchasing/order_plant.h"
#include "warehouse/receipt_plant.h"
#include <QFileInfo>
#include <chrono>
#include <csignal>
#include <random>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

/// A client without a screen that keeps saving and deleting orders and receipts.
class Client {
public:
    Client(const QString& connection, unsigned seed) : random(seed) {
        session.connectionString = connection;
        session.userName = u"t"_s;
        session.salesmanName = u"測試"_s;
    }

    void work() {
        static constexpr void (Client::*deeds[])() = {
            &Client::newOrder,      &Client::newOrder,      &Client::newOrder,      &Client::newOrder,
            &Client::changeOrder,   &Client::changeOrder,   &Client::newReceipt,    &Client::newReceipt,
            &Client::changeReceipt, &Client::changeReceipt, &Client::removeReceipt, &Client::removeOrder};
        (this->*deeds[below(std::size(deeds))])();
    }

private:
    int below(std::size_t n) { return static_cast<int>(random() % n); }

    QString any(const SqlText& statement) {
        Connection connection(session.pool, session.connectionString);
        Recordset rows = select(connection, statement);
        const int count = rows.RecordCount();
        return count == 0 ? QString() : rows.textAt(below(count), 0);
    }
    QString anyOrder() { return any(sql(u"select 採購單號 from 採購資料")); }
    QString anyReceipt() { return any(sql(u"select 入庫單號 from 原料入庫資料")); }

    OrderLine orderLine() {
        return OrderPlant::line(u"M%1"_s.arg(1 + below(5)), 10 + below(90), 1 + below(9));
    }
    /// Each document notes how many lines it has.
    void save(OrderSave order) {
        order.header.品質要求 = QString::number(order.lines.size());
        saveOrder(session, order);
    }
    void save(ReceiptSave receipt) {
        receipt.header.備註 = QString::number(receipt.lines.size());
        saveReceipt(session, receipt);
    }

    void newOrder() {
        OrderSave order = OrderPlant::newOrder(nextDocumentNumber(session, orderNumbers()), {});
        order.header.審單 = u"Y"_s;
        for (int n = 1 + below(12); n > 0; --n)
            order.lines.push_back(orderLine());
        save(order);
    }

    void changeOrder() {
        const QString number = anyOrder();
        const auto order = [&] {
            Connection connection(session.pool, session.connectionString);
            return loadOrder(connection, number, true);
        }();
        if (!order) return;
        OrderSave changed;
        changed.canSeePrice = changed.mayApprove = changed.overwrite = true;
        changed.header = order->header;
        changed.lines = changed.loaded = order->lines;
        changed.lastDocumentNumber = number;
        changed.lines.push_back(orderLine());
        save(changed);
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
            const int quantity = 1 + below(static_cast<int>(val(rows.text(u"未交數"))));
            lines.push_back(ReceiptPlant::line(order, rows.text(u"序"), rows.text(u"原料代號"),
                                               numberText(quantity), QString::number(below(3)),
                                               numberText(quantity)));
        }
        return lines;
    }

    void newReceipt() {
        const QString order = anyOrder();
        ReceiptSave receipt = ReceiptPlant::newReceipt(u"物料"_s, openLines(order));
        if (receipt.lines.empty()) return;
        receipt.header.入庫單號 = nextDocumentNumber(session, receiptNumbers());
        save(receipt);
    }

    void changeReceipt() {
        const auto receipt = loaded(anyReceipt());
        if (!receipt) return;
        ReceiptSave changed;
        changed.canSeePrice = changed.mayApprove = changed.overwrite = true;
        changed.header = receipt->header;
        changed.lines = changed.saved = receipt->lines;
        changed.savedNumber = receipt->header.入庫單號;
        if (changed.lines.size() > 1) changed.lines.pop_back();
        for (ReceiptLine& line : changed.lines)
            line.數量 = line.入庫數量 = numberText(std::max(1.0, val(line.數量) - 1));
        save(changed);
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
    ToldMessages messages;
    Session session{pool, messages};
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
                u"l.採購單號=h.採購單號 group by h.採購單號,h.品質要求"));
    compare(sql(u"select h.入庫單號,h.備註,count(l.序) as n from 原料入庫資料 h left join 原料入庫明細 l on "
                u"l.入庫單號=h.入庫單號 group by h.入庫單號,h.備註"));
    return faults + faultsOf(connection);
}

} // namespace

TEST(Reliability, KilledAtAnyMomentLeavesNothingHalfWritten) {
    const int kills =
        qEnvironmentVariableIsSet("LIAOWU_KILLS") ? qEnvironmentVariableIntValue("LIAOWU_KILLS") : 200;
    PlantDatabase plant;
    plant.run(
        {u"insert into 物料資料 (物料代號,物料名稱,庫存,單位,進價,幣別) values ('M1','M1','0','pcs','1',''),"
         u"('M2','M2','0','pcs','1',''),('M3','M3','0','pcs','1',''),('M4','M4','0','pcs','1',''),"
         u"('M5','M5','0','pcs','1','')"});
    std::mt19937 random(4711);
    int struckInTransaction = 0;
    for (int i = 0; i < kills; ++i) {
        // Nothing of the engine may be open across a fork.
        plant.pool.clear();
        int ready[2];
        ASSERT_EQ(pipe(ready), 0);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) workForever(plant.target, static_cast<unsigned>(i) * 7919u, ready[1]);
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
        struckInTransaction += QFileInfo(plant.file + u"-wal"_s).size() > 0;
        Connection link(plant.pool, plant.target);
        ASSERT_EQ(halfWritten(link), QStringList()) << "after kill " << i;
    }
    const int orders = plant.value(u"select count(*) from 採購資料").toInt();
    const int receipts = plant.value(u"select count(*) from 原料入庫資料").toInt();
    std::printf("[ killed   ] %d times, journal in use %d times; %d orders and %d receipts stand\n", kills,
                struckInTransaction, orders, receipts);
    // So few kills may all have struck early.
    if (kills < 100) return;
    EXPECT_GT(orders, kills / 20);
    EXPECT_GT(receipts, kills / 40);
}
