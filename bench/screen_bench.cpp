// The client as a person feels it: start, keystroke, moving through the grid, memory.
//   screen_bench SMALL.db LARGE.db [start|order|search|fill]     (demo plants of scale 1 and 50)
// Start counts from exec to the paint of a key sent to the first field; its limit is the same widgets over an
// empty database.
#include "app/dispatch.h"
#include "app/launch_string.h"
#include "client_bench.h"
#include "data/connection_string.h"
#include "data/schema/schema.h"
#include "frame/base_screen.h"
#include "frame/line_grid.h"
#include "frame/style_view.h"
#include <QApplication>
#include <QLineEdit>
#include <QProcess>
#include <QTest>
#include <chrono>
#include <cstdio>

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

qint64 nowMicroseconds() {
    using namespace std::chrono;
    return duration_cast<std::chrono::microseconds>(system_clock::now().time_since_epoch()).count();
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

void startFigures(const QString& smallPlant, const QString& largePlant) {
    const double empty = startOf(u"empty"_s, {});
    QTemporaryDir folder;
    const QString bare = folder.filePath(u"bare.db"_s);
    {
        ConnectionPool pool;
        createSchema(pool, connectionStringFor(bare));
    }
    const double widgets = startOf(u"widgets"_s, bare);
    const double small = startOf(u"client"_s, smallPlant);
    const double large = startOf(u"client"_s, largePlant);
    std::printf("%-56s %10.1f ms\n", "start: an empty window", empty);
    std::printf("%-56s %10.1f ms\n", "start: the same widgets, nothing to read", widgets);
    std::printf("%-56s %10.1f ms %8.2f x the widgets\n", "start: order screen, scale 1", small,
                small / widgets);
    std::printf("%-56s %10.1f ms %8.2f x scale 1\n", "start: order screen, scale 50", large, large / small);
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
    const QStringList parts{u"start"_s, u"order"_s, u"search"_s, u"fill"_s};
    const bool one = arguments.size() == 4 && parts.contains(arguments[3]);
    if (arguments.size() != 3 && !one) {
        std::fputs("usage: screen_bench SMALL.db LARGE.db [start|order|search|fill]\n", stderr);
        return 2;
    }
    if (!one) {
        // Each in a process of its own, so that memory and caches are its own.
        for (const QString& part : parts) {
            QProcess child;
            child.setProcessChannelMode(QProcess::ForwardedChannels);
            child.start(QCoreApplication::applicationFilePath(), arguments.mid(1) + QStringList(part));
            child.waitForFinished(-1);
            if (child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0) return 1;
        }
        return 0;
    }
    applyLook(application);
    if (arguments[3] == u"start") startFigures(arguments[1], arguments[2]);
    if (arguments[3] == u"order") orderFigures(arguments[2]);
    if (arguments[3] == u"search") searchFigures(arguments[2]);
    if (arguments[3] == u"fill") fillFigures(arguments[2]);
    return 0;
}
