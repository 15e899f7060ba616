// The client as a person feels it: start, keystroke, moving through the grid, memory.
//   screen_bench SMALL.db LARGE.db     (demo plants of scale 1 and 50)
// Start counts from exec to the paint of a key sent to the first field; its limit is the same widgets over an
// empty database.
#include "app/dispatch.h"
#include "app/launch_string.h"
#include "data/connection_string.h"
#include "data/recordset.h"
#include "data/schema/schema.h"
#include "frame/base_screen.h"
#include "frame/entry_view.h"
#include "frame/line_grid.h"
#include "frame/process.h"
#include "frame/style_view.h"
#include "raw_replay.h"
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QFile>
#include <QPointer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <chrono>
#include <cstdio>

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

/// Answers nothing and shows nothing: what is measured is the program.
class BenchDesktop : public Desktop {
public:
    bool ask(const QString&, const QString&, bool) override { return true; }
    int runModal(QDialog&) override { return 0; }
    bool progress(const QString&, int, int) override { return true; }
    void present(QWidget& screen) override {
        screen.resize(1366, 740);
        screen.show();
        QApplication::setActiveWindow(&screen);
    }
    QString openFileName(QWidget*, const QString&, const QString&, const QString&) override { return {}; }
    QString saveFileName(QWidget*, const QString&, const QString&, const QString&) override { return {}; }
    void endProcess() override {}

protected:
    void show(Icon, const QString&, const QString&) override {}
};

qint64 nowMicroseconds() {
    using namespace std::chrono;
    return duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
}

void settle() {
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
    }
}

/// Child: opens the window of this kind, sends a key, and prints when it was painted, since `started`.
int startChild(QApplication& application, const QString& kind, const QString& database, qint64 started) {
    BenchDesktop desktop;
    Process process(desktop);
    QWidget* window = nullptr;
    QLineEdit plain;
    if (kind == u"empty") {
        plain.show();
        QApplication::setActiveWindow(&plain);
        plain.setFocus();
        window = &plain;
    } else {
        applyLook(application);
        registerEverything(process);
        if (kind == u"widgets") {
            // An administrator needs no rights from the database, and there is nothing in it to read.
            process.session.isAdministrator = true;
            process.session.connectionString = connectionStringFor(database);
            process.session.category = u"物料"_s;
            window = process.openScreen(u"frm採購作業系統"_s);
        } else {
            window = launch(
                process,
                composeLaunch({connectionStringFor(database), u"物料採購作業"_s, u"採購甲"_s, u"Y"_s, {}}));
        }
    }
    for (int i = 0;
         i < 200 && kind != u"empty" && window && !static_cast<ScreenFrame*>(window)->isActivated(); ++i)
        settle();
    settle();
    QWidget* focus = window ? window->focusWidget() : nullptr;
    if (!focus) return 1;
    QTest::keyClick(focus, 'V');
    settle();
    focus->window()->repaint();
    std::printf("%lld\n", static_cast<long long>(nowMicroseconds() - started));
    return 0;
}

double startOf(const QString& kind, const QString& database) {
    std::vector<double> times;
    for (int i = 0; i < 9; ++i) {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(),
                    {u"--start"_s, kind, database, QString::number(nowMicroseconds())});
        child.waitForFinished();
        const double time = child.readAllStandardOutput().trimmed().toDouble();
        if (i > 0 && time > 0) times.push_back(time);
    }
    return median(times) / 1000;
}

double worst(const std::vector<double>& times) {
    return times.empty() ? 0 : *std::max_element(times.begin(), times.end());
}

double residentMegabytes() {
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ').first().toDouble() / 1024;
    return 0;
}

/// Makes an order of 350 lines out of the busiest items, and gives its number.
QString largeOrder(ConnectionPool& pool, const QString& target) {
    Connection connection(pool, target);
    const QString number = u"250301001"_s;
    connection.Execute(sql(
        u"insert into 採購資料 (採購單號,類別,採購日期,廠商代號,廠商簡稱,幣別,採購類別,審單,製單時間) values "
        u"('{}','物料','20250301','V001','甲','台幣','庫存','N','2025-03-01 08:00:00')",
        number));
    Recordset items = select(
        connection,
        sql(u"select top 350 原料代號,max(原料名稱) as 名稱,count(*) as n from 採購明細資料 inner join "
            u"採購資料 on 採購資料.採購單號=採購明細資料.採購單號 where 類別='物料' group by 原料代號 order "
            u"by n desc"));
    Transaction transaction(connection);
    Recordset lines;
    lines.Open(sql(u"select * from 採購明細資料 where 1<>1"), connection, Cursor::Batch);
    for (int i = 1; i <= 350; ++i) {
        lines.AddNew();
        lines.set(u"採購單號", number);
        lines.set(u"序", double(i));
        lines.set(u"原料代號", items.text(0));
        lines.set(u"原料名稱", items.text(1));
        lines.set(u"數量", u"10"_s);
        lines.set(u"單價", u"5"_s);
        lines.set(u"小計", u"50"_s);
        lines.set(u"單位", u"PCS"_s);
        lines.set(u"寬剖", u"1"_s);
        lines.set(u"已入庫數", u"0"_s);
        lines.set(u"未交數", u"10"_s);
        lines.set(u"送清", u"N"_s);
        items.MoveNext();
        if (items.EOF_()) items.MoveFirst();
    }
    lines.UpdateBatch();
    transaction.commit();
    return number;
}

void screenFigures(const QString& large) {
    BenchDesktop desktop;
    Process process(desktop);
    registerEverything(process);
    QTemporaryDir folder;
    const QString file = folder.filePath(u"plant.db"_s);
    QFile::copy(large, file);
    QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
    const QString target = connectionStringFor(file);
    const QString number = largeOrder(process.pool, target);
    ScreenFrame* screen = launch(process, composeLaunch({target, u"物料採購作業"_s, u"admin"_s, u"Y"_s, {}}));
    for (int i = 0; i < 200 && !screen->isActivated(); ++i)
        settle();
    settle();
    auto* find = screen->findChild<QLineEdit*>(u"txt速查單號"_s);
    find->setFocus();
    QTest::keyClicks(find, number);
    QTest::keyClick(find, Qt::Key_Return);
    settle();
    auto* grid = screen->findChild<LineGrid*>(u"fml明細"_s);
    if (grid->lineCount() != 350) {
        std::fprintf(stderr, "the large order is not shown: %d lines\n", grid->lineCount());
        std::exit(1);
    }
    std::printf("%-56s %10.1f MiB\n", "resident memory, order of 350 lines open", residentMegabytes());

    const auto timed = [&](auto work) {
        QElapsedTimer timer;
        timer.start();
        work();
        settle();
        return static_cast<double>(timer.nsecsElapsed()) / 1e6;
    };
    grid->setFocus();
    grid->select(1, u"大紙數"_s);
    settle();
    std::vector<double> moves, keys, ends;
    for (int i = 0; i < 300; ++i)
        moves.push_back(timed([&] { QTest::keyClick(grid, Qt::Key_Down); }));
    for (int i = 0; i < 60; ++i) {
        grid->select(1 + i * 5, u"大紙數"_s);
        settle();
        for (const char key : {'1', '2', '5'})
            keys.push_back(timed([&] { QTest::keyClick(QApplication::focusWidget(), key); }));
        ends.push_back(timed([&] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); }));
    }
    std::printf("%-56s %10.2f ms median %8.2f ms worst\n", "moving the selection, stock panel included",
                median(moves), worst(moves));
    std::printf("%-56s %10.2f ms median %8.2f ms worst\n", "a keystroke in a cell", median(keys),
                worst(keys));
    std::printf("%-56s %10.2f ms median %8.2f ms worst\n",
                "Enter after a quantity: line and total recalculated", median(ends), worst(ends));
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    const QStringList arguments = application.arguments();
    if (arguments.size() == 5 && arguments[1] == u"--start")
        return startChild(application, arguments[2], arguments[3], arguments[4].toLongLong());
    if (arguments.size() != 3) {
        std::fputs("usage: screen_bench SMALL.db LARGE.db\n", stderr);
        return 2;
    }
    const double empty = startOf(u"empty"_s, {});
    QTemporaryDir folder;
    const QString bare = folder.filePath(u"bare.db"_s);
    {
        ConnectionPool pool;
        createSchema(pool, connectionStringFor(bare));
    }
    const double widgets = startOf(u"widgets"_s, bare);
    const double small = startOf(u"client"_s, arguments[1]);
    const double large = startOf(u"client"_s, arguments[2]);
    std::printf("%-56s %10.1f ms\n", "start: an empty window", empty);
    std::printf("%-56s %10.1f ms\n", "start: the same widgets, nothing to read", widgets);
    std::printf("%-56s %10.1f ms %8.2f x the widgets\n", "start: order screen, scale 1", small,
                small / widgets);
    std::printf("%-56s %10.1f ms %8.2f x scale 1\n", "start: order screen, scale 50", large, large / small);
    applyLook(application);
    screenFigures(arguments[2]);
    return 0;
}
