#include "frame/style_view.h"
#include <QApplication>
#include <QFile>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QStyleFactory>
#include <QTranslator>

namespace liaowu {

using namespace Qt::StringLiterals;

void applyLook(QApplication& application) {
    application.setStyle(QStyleFactory::create(u"Fusion"_s));
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0xf3, 0xf5, 0xf8));
    palette.setColor(QPalette::WindowText, QColor(0x1f, 0x2d, 0x3d));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, QColor(0x1f, 0x2d, 0x3d));
    palette.setColor(QPalette::Highlight, QColor(0x3e, 0x8b, 0xff));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    application.setPalette(palette);

    const QStringList installed = QFontDatabase::families();
    for (const QString& family : {u"Microsoft JhengHei UI"_s, u"Noto Sans CJK TC"_s, u"Noto Sans TC"_s,
                                  u"PingFang TC"_s, u"WenQuanYi Micro Hei"_s}) {
        if (!installed.contains(family)) continue;
        QFont font(family);
        font.setPixelSize(13);
        application.setFont(font);
        break;
    }
    auto* translator = new QTranslator(&application);
    if (translator->load(u"qtbase_zh_TW"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        application.installTranslator(translator);
    QFile sheet(u":/frame/liaowu.qss"_s);
    if (sheet.open(QIODevice::ReadOnly)) application.setStyleSheet(QString::fromUtf8(sheet.readAll()));
}

} // namespace liaowu
