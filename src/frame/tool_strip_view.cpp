#include "frame/tool_strip_view.h"
#include <QFrame>
#include <QHBoxLayout>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QStyle>
#include <QToolButton>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

/// Icons as polylines on a grid of 24: points "x,y", strokes separated by "|".
struct IconRow {
    const char16_t* name;
    const char* strokes;
};
constexpr IconRow icons[] = {
    {u"add", "6,3 14,3 18,7 18,21 6,21 6,3|14,3 14,7 18,7|12,11 12,17|9,14 15,14"},
    {u"edit", "4,20 8,19 19,8 16,5 5,16 4,20|14,7 17,10"},
    {u"delete", "5,6 19,6|9,6 9,4 15,4 15,6|7,6 8,20 16,20 17,6|10,10 10,16|14,10 14,16"},
    {u"search", "15,15 20,20|10,4 6,6 4,10 6,14 10,16 14,14 16,10 14,6 10,4"},
    {u"save", "4,4 17,4 20,7 20,20 4,20 4,4|8,4 8,9 15,9 15,4|7,20 7,14 17,14 17,20"},
    {u"first", "5,5 5,19|12,5 7,12 12,19|19,5 14,12 19,19"},
    {u"previous", "15,5 9,12 15,19"},
    {u"next", "9,5 15,12 9,19"},
    {u"last", "5,5 10,12 5,19|12,5 17,12 12,19|19,5 19,19"},
    {u"approve", "4,13 9,18 20,6"},
    {u"batch",
     "4,4 10,4 10,10 4,10 4,4|13,5 20,5|13,9 20,9|4,14 10,14 10,20 4,20 4,14|13,15 20,15|13,19 20,19"},
    {u"reload", "18,8 14,4 8,5 5,9 5,15 9,19 15,19 19,15|19,4 18,8 14,8"},
    {u"history", "12,4 6,6 4,12 6,18 12,20 18,18 20,12 18,6 12,4|12,8 12,12 15,14"},
    {u"print", "7,9 7,4 17,4 17,9|4,9 20,9 20,17 17,17|7,17 4,17 4,9|7,14 17,14 17,20 7,20 7,14"},
    {u"exit", "10,4 5,4 5,20 10,20|9,12 20,12|16,8 20,12 16,16"},
};

} // namespace

QIcon toolIcon(const QString& name) {
    QIcon icon;
    for (const IconRow& row : icons) {
        if (name != row.name) continue;
        for (const auto& [mode, colour] :
             {std::pair(QIcon::Normal,
                        name == u"delete" ? QColor(0xc0, 0x39, 0x2b) : QColor(0x2b, 0x3a, 0x4a)),
              std::pair(QIcon::Disabled, QColor(0xb4, 0xbd, 0xc6))}) {
            QPixmap picture(48, 48);
            picture.fill(Qt::transparent);
            QPainter painter(&picture);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.scale(2, 2);
            painter.setPen(QPen(colour, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            for (const QByteArray& stroke : QByteArray(row.strokes).split('|')) {
                QPolygonF line;
                for (const QByteArray& point : stroke.split(' ')) {
                    const QList<QByteArray> xy = point.split(',');
                    line << QPointF(xy[0].toInt(), xy[1].toInt());
                }
                painter.drawPolyline(line);
            }
            icon.addPixmap(picture, mode);
        }
    }
    return icon;
}

ToolStrip::ToolStrip(const std::vector<Tool>& tools, QWidget* parent) : QWidget(parent) {
    setObjectName(u"Toolbar1"_s);
    setAttribute(Qt::WA_StyledBackground);
    line = new QHBoxLayout(this);
    line->setContentsMargins(6, 2, 10, 2);
    line->setSpacing(1);
    for (const Tool& tool : tools) {
        if (tool.key == u"|") {
            auto* gap = new QFrame(this);
            gap->setFrameShape(QFrame::VLine);
            gap->setProperty("gap", true);
            line->addWidget(gap);
            continue;
        }
        auto* button = new QToolButton(this);
        button->setObjectName(u"tool_"_s + tool.key);
        const QString caption = tool.shortcut.isEmpty() ? tool.caption : tool.caption + u' ' + tool.shortcut;
        button->setText(caption);
        button->setIcon(toolIcon(tool.icon));
        button->setIconSize(QSize(22, 22));
        button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::NoFocus);
        connect(button, &QToolButton::clicked, this, [this, key = tool.key] { Q_EMIT clicked(key); });
        line->addWidget(button);
        buttons.insert(tool.key, button);
        captions.insert(tool.key, caption);
    }
    line->addStretch(1);
}

bool ToolStrip::isOn(const QString& key) const {
    const QToolButton* button = buttons.value(key);
    return button && button->isEnabledTo(button->parentWidget());
}

void ToolStrip::setOn(const QString& key, bool on) {
    if (QToolButton* button = buttons.value(key)) button->setEnabled(on);
}

bool ToolStrip::isShown(const QString& key) const {
    const QToolButton* button = buttons.value(key);
    return button && !button->isHidden();
}

void ToolStrip::setShown(const QString& key, bool shown) {
    if (QToolButton* button = buttons.value(key)) button->setVisible(shown);
}

void ToolStrip::press(const QString& pressed) {
    for (auto it = buttons.begin(); it != buttons.end(); ++it) {
        const bool down = it.key() == pressed;
        if (it.value()->property("pressed").toBool() == down) continue;
        it.value()->setProperty("pressed", down);
        it.value()->style()->unpolish(it.value());
        it.value()->style()->polish(it.value());
    }
}

void ToolStrip::markUnsaved(bool unsaved) {
    if (QToolButton* save = buttons.value(u"save"_s))
        save->setText(unsaved ? captions.value(u"save"_s) + u" •"_s : captions.value(u"save"_s));
}

void ToolStrip::addAtEnd(QWidget* widget) {
    line->addWidget(widget);
}

} // namespace liaowu
