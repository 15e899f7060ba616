#include "dbtool/tool.h"
#include <QCoreApplication>

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout), err(stderr);
    // The texts are Chinese whatever the terminal's locale says.
    out.setEncoding(QStringConverter::Utf8);
    err.setEncoding(QStringConverter::Utf8);
    return liaowu::runTool(QCoreApplication::arguments().mid(1), out, err);
}
