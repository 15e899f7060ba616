// A disk that fills up, or stops taking writes, in the midst of a save: the user is told what it is, nothing of the document
// stays, and the same save goes through once there is room.
#include "purchasing/order_plant.h"
#include "warehouse/receipt_plant.h"
#include <cerrno>
#include <cstring>
#include <functional>
#include <unistd.h>

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

/// The engine's writes to files go through here for as long as this lives; from the n-th on they fail.
class FailingDisk {
public:
    explicit FailingDisk(int error) : code(error) {
        current = this;
        // Which of them the engine uses was decided when it was built.
        set("write", reinterpret_cast<sqlite3_syscall_ptr>(&writeTo));
        set("pwrite", reinterpret_cast<sqlite3_syscall_ptr>(&writeAt));
        set("pwrite64", reinterpret_cast<sqlite3_syscall_ptr>(&writeAt));
    }
    ~FailingDisk() {
        for (const char* name : {"write", "pwrite", "pwrite64"})
            set(name, nullptr);
    }
    FailingDisk(const FailingDisk&) = delete;
    FailingDisk& operator=(const FailingDisk&) = delete;

    /// The n-th write from now fails and all behind it; 0 lets all pass.
    void failFrom(int write) {
        first = write;
        writes = 0;
    }
    bool struck() const { return first > 0 && writes >= first; }

private:
    static void set(const char* name, sqlite3_syscall_ptr call) {
        sqlite3_vfs* vfs = sqlite3_vfs_find(nullptr);
        vfs->xSetSystemCall(vfs, name, call);
    }
    bool fails() {
        ++writes;
        if (!struck()) return false;
        errno = code;
        return true;
    }
    static ssize_t writeTo(int file, const void* bytes, size_t count) {
        return current->fails() ? -1 : ::write(file, bytes, count);
    }
    static ssize_t writeAt(int file, const void* bytes, size_t count, off_t at) {
        return current->fails() ? -1 : ::pwrite(file, bytes, count, at);
    }

    // The engine calls plain functions.
    static inline FailingDisk* current = nullptr;
    int code, first = 0, writes = 0;
};

/// An order and a receipt, each new and changed.
class StorageTest : public ReceiptPlant, public testing::Test {
protected:
    using Save = std::function<void()>;
    struct Document {
        const char* name;
        Save save;     ///< may be tried until it goes through
        QString lines; ///< where those stored of it are
        int before, after;
    };

    StorageTest() {
        session.userName = u"t"_s;
        for (int i = 0; i < LineCount; ++i) {
            receiptLines.push_back(line(u"P1"_s, u"1"_s, u"IN1"_s, u"0.01"_s));
            receiptLines.back().原料名稱 = receiptLines.back().備註 = QString(30, u'墨');
        }
        order = newOrder(u"2501150001"_s);
        OrderSave standing = newOrder(u"2501150002"_s);
        saveOrder(session, standing);
        ReceiptSave stored = newReceipt(u"物料"_s, {line(u"P1"_s, u"2"_s, u"IN1"_s, u"3"_s)});
        stored.header.入庫單號 = u"2501150002"_s;
        changedReceipt = saved(stored);
        receipt = newReceipt(u"物料"_s, receiptLines);
        changedOrder = standing;
        changedOrder.isNew = false;
        changedOrder.overwrite = true;
        changedOrder.lastDocumentNumber = standing.header.採購單號;
        changedOrder.loaded = standing.lines;
        changedOrder.lines.insert(changedOrder.lines.end(), order.lines.begin(), order.lines.end());
        changedReceipt.lines = receiptLines;
    }

    static OrderSave newOrder(const QString& number) {
        OrderSave save = OrderPlant::newOrder(number, {});
        save.mayApprove = true;
        for (int i = 0; i < LineCount; ++i) {
            save.lines.push_back(OrderPlant::line(u"IN%1"_s.arg(1 + i % 2), i + 1, 3));
            save.lines.back().原料名稱 = save.lines.back().備註 = QString(30, u'墨');
        }
        return save;
    }

    std::vector<Document> documents() {
        const QString ofOrder = u"採購明細資料 where 採購單號='%1'"_s,
                      ofReceipt = u"原料入庫明細 where 入庫單號='%1'"_s;
        return {{"a new order", [this] { saveOrder(session, order); }, ofOrder.arg(order.header.採購單號), 0,
                 LineCount},
                {"a changed order", [this] { saveOrder(session, changedOrder); },
                 ofOrder.arg(changedOrder.header.採購單號), LineCount, 2 * LineCount},
                {"a new receipt", [this] { saveReceipt(session, receipt); },
                 ofReceipt.arg(receipt.header.入庫單號), 0, LineCount},
                {"a changed receipt", [this] { saveReceipt(session, changedReceipt); },
                 ofReceipt.arg(changedReceipt.header.入庫單號), 1, LineCount}};
    }

    int linesOf(const Document& document) {
        return rowsOf(u"select count(*) from "_s + document.lines).value(0).toInt();
    }
    /// Every row that a save may touch.
    QString all() {
        return everything() + contents({u"採購資料", u"原料申購明細", u"歷史單價記錄"}).join(u'\n');
    }

    /// The engine's handle that the next connection gets, too: the pool hands out what came back last.
    sqlite3* handle() {
        Connection connection(pool, target);
        return handleOf(connection);
    }
    int setting(const QByteArray& statement) { return engineRows(handle(), statement).value(0).toInt(); }

    /// What the user learns, and that the plant is as before.
    void expectRefused(const Document& document, const Save& save, int number, const char16_t* says) {
        const QString before = all();
        EXPECT_TRUE(fails(save, number, says)) << document.name;
        EXPECT_TRUE(all() == before) << "something of " << document.name << " stayed";
    }
    void expectSavedNow(const Document& document) {
        EXPECT_EQ(linesOf(document), document.before) << document.name;
        EXPECT_EQ(errorOf(document.save), 0) << document.name;
        EXPECT_EQ(linesOf(document), document.after) << document.name;
        EXPECT_EQ(faults(), QStringList()) << document.name;
    }

    static constexpr int LineCount = 120;
    ReceiptLines receiptLines;
    OrderSave order, changedOrder;
    ReceiptSave receipt, changedReceipt;
};

} // namespace

TEST_F(StorageTest, ADatabaseThatMayNotGrowRefusesTheSaveAsAWhole) {
    for (const Document& document : documents()) {
        // Pages that were freed before would take the document in.
        setting("VACUUM");
        ASSERT_EQ(setting("PRAGMA freelist_count"), 0);
        const int used = setting("PRAGMA page_count");
        for (const int room : {0, 1, 3}) {
            SCOPED_TRACE(room);
            setting("PRAGMA max_page_count=" + QByteArray::number(used + room));
            expectRefused(document, document.save, DatabaseError::DiskFull, u"磁碟已滿");
        }
        setting("PRAGMA max_page_count=1000000");
        expectSavedNow(document);
    }
}

TEST_F(StorageTest, ADiskThatFailsAtAnyWriteRefusesTheSaveAsAWhole) {
    for (const auto& [code, number, says] :
         {std::tuple(ENOSPC, DatabaseError::DiskFull, u"磁碟已滿"),
          std::tuple(EIO, DatabaseError::ConnectionFailed, u"讀寫資料庫檔案失敗"),
          std::tuple(EROFS, DatabaseError::ConnectionFailed, u"讀寫資料庫檔案失敗")}) {
        SCOPED_TRACE(std::strerror(code));
        FailingDisk disk(code);
        for (const Document& document : documents()) {
            for (const int write : {1, 2, 3, 8, 13, 21}) {
                const auto save = [&] {
                    disk.failFrom(write);
                    document.save();
                };
                expectRefused(document, save, number, says);
                EXPECT_TRUE(disk.struck()) << document.name << " took less than " << write << " writes";
                disk.failFrom(0);
            }
        }
    }
    for (const Document& document : documents())
        expectSavedNow(document);
}

TEST_F(StorageTest, ADatabaseThatTurnsReadOnlyRefusesTheSaveAsAWhole) {
    for (const Document& document : documents()) {
        for (const int statement : {1, 2, 5, 40}) {
            sqlite3* const engine = handle();
            int written = 0;
            pool.setTrace([&](const StatementTrace& trace) {
                const QString verb = trace.native.section(u' ', 0, 0).toUpper();
                const bool writes = verb == u"INSERT" || verb == u"UPDATE" || verb == u"DELETE";
                if (writes && ++written == statement) engineRows(engine, "PRAGMA query_only=ON");
            });
            expectRefused(document, document.save, DatabaseError::ReadOnly, u"唯讀");
            EXPECT_GE(written, statement) << document.name;
            pool.setTrace({});
            engineRows(engine, "PRAGMA query_only=OFF");
        }
        expectSavedNow(document);
    }
}
