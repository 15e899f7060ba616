#include "data/connection_string.h"
#include "frame/style_view.h"
#include "robot/robot_stage.h"
#include <QApplication>
#include <QCursor>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>
#include <cstdio>

namespace {

constexpr char usage[] = "usage: liaowu-robot [--db TARGET] [--show] [--messages FILE] SCRIPT.js...\n"
                         "  --db TARGET      file or connection string that launches use\n"
                         "  --show           windows on the screen instead of offscreen\n"
                         "  --messages FILE  appends every message that was shown\n";

} // namespace

int main(int argc, char** argv) {
    using namespace liaowu;
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    const bool show = arguments.removeAll(QStringLiteral("--show")) > 0;
    const auto option = [&](const QString& name) {
        const qsizetype at = arguments.indexOf(name);
        if (at < 0 || at + 1 >= arguments.size()) return QString();
        const QString value = arguments[at + 1];
        arguments.remove(at, 2);
        return value;
    };
    const QString target = option(QStringLiteral("--db"));
    const QString messagesFile = option(QStringLiteral("--messages"));
    if (arguments.isEmpty()) {
        std::fputs(usage, stderr);
        return 2;
    }
    if (!show) qputenv("QT_QPA_PLATFORM", "offscreen");
    // What the offscreen platform cannot do is no news.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context, const QString& text) {
        if (text.startsWith(u"This plugin does not support")) return;
        std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
    });
    // A place of its own keeps the platform quiet where nobody is logged in.
    const QTemporaryDir runtime;
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) qputenv("XDG_RUNTIME_DIR", runtime.path().toUtf8());
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    applyLook(application);
    // Nothing is lit because the pointer happens to rest on it.
    if (!show) QCursor::setPos(-1, -1);

    robot::Stage stage(target.isEmpty() ? QString() : connectionStringFor(target));
    for (const QString& script : arguments)
        stage.play(script);

    if (!messagesFile.isEmpty()) {
        QFile file(messagesFile);
        if (file.open(QIODevice::Append | QIODevice::Text)) {
            QTextStream lines(&file);
            for (const robot::Told& told : stage.messagesShown())
                lines << told.title << '\t' << told.text << '\n';
        }
    }
    std::printf("%d passed, %d failed\n", stage.passed(), stage.failed());
    return stage.failed() > 0 ? 1 : 0;
}
