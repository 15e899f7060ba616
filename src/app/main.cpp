#include "app/dispatch.h"
#include "frame/message_box_view.h"
#include "frame/process.h"
#include "frame/style_view.h"
#include <QApplication>
#include <cstdio>

int main(int argc, char** argv) {
    using namespace liaowu;
    QApplication application(argc, argv);
    application.setApplicationName(QStringLiteral("liaowu"));
    applyLook(application);
    RealDesktop desktop;
    int result = 0;
    {
        Process process(desktop);
        registerEverything(process);
        // A shell that split the string at its blanks is forgiven.
        if (launch(process, application.arguments().mid(1).join(u' '))) result = application.exec();
    }
    // Who started the program, as the launchpad does, shows the user how the screen ended.
    if (!desktop.lastNotice().isEmpty()) std::printf("%s\n", desktop.lastNotice().toUtf8().constData());
    return result;
}
