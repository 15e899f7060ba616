#include "frame/style_view.h"
#include "launchpad/launchpad_window.h"
#include <QApplication>
#include <cstdio>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    application.setApplicationName(QStringLiteral("liaowu-launchpad"));
    liaowu::applyLook(application);
    QString target;
    QString picture;
    const QStringList arguments = application.arguments();
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        if (arguments[i] == u"--db" && i + 1 < arguments.size()) {
            target = arguments[++i];
        } else if (arguments[i] == u"--picture" && i + 1 < arguments.size()) {
            picture = arguments[++i];
        } else {
            std::fputs("usage: liaowu-launchpad [--db TARGET] [--picture FILE]\n", stderr);
            return 2;
        }
    }
    liaowu::LaunchpadWindow window(target);
    window.show();
    if (!picture.isEmpty()) return window.grab().save(picture) ? 0 : 1;
    return application.exec();
}
