#include "robot/robot_input.h"
#include <QApplication>
#include <QCheckBox>
#include <QInputMethodEvent>
#include <QKeySequence>
#include <QPointer>
#include <QRadioButton>
#include <QTest>
#include <QWidget>
#include <stdexcept>

namespace liaowu::robot {

using namespace Qt::StringLiterals;

void settle() {
    for (int i = 0; i < 4; ++i) {
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        QCoreApplication::sendPostedEvents();
    }
}

void activate(QWidget* window) {
    window = window->window();
    if (QApplication::activeWindow() == window) return;
    window->activateWindow();
    QApplication::setActiveWindow(window);
    settle();
}

namespace {

/// Where keys go: the focus of the window, and the window itself when nothing has it.
QWidget* keyTarget(QWidget* window) {
    window = window->window();
    if (QWidget* modal = QApplication::activeModalWidget()) window = modal->window();
    activate(window);
    if (QWidget* popup = QApplication::activePopupWidget()) return popup;
    QWidget* focus = QApplication::focusWidget();
    if (!focus || focus->window() != window) focus = window->focusWidget();
    return focus ? focus : window;
}

struct KeyName {
    const char16_t* name;
    Qt::Key key;
};
constexpr KeyName special[] = {
    {u"Enter", Qt::Key_Return},      {u"Esc", Qt::Key_Escape},      {u"PageUp", Qt::Key_PageUp},
    {u"PageDown", Qt::Key_PageDown}, {u"PgUp", Qt::Key_PageUp},     {u"PgDn", Qt::Key_PageDown},
    {u"Tab", Qt::Key_Tab},           {u"Backtab", Qt::Key_Backtab}, {u"Space", Qt::Key_Space}};

} // namespace

void typeText(QWidget* window, const QString& text) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        QWidget* target = keyTarget(window);
        const QChar c = text[i];
        if (c.unicode() >= 0x20 && c.unicode() < 0x7f) {
            QTest::keyClick(target, static_cast<char>(c.unicode()),
                            c.isUpper() ? Qt::ShiftModifier : Qt::NoModifier);
        } else {
            const QString piece = c.isHighSurrogate() && i + 1 < text.size() ? text.mid(i++, 2) : QString(c);
            QInputMethodEvent commit;
            commit.setCommitString(piece);
            QApplication::sendEvent(target, &commit);
        }
        settle();
    }
}

void commitText(QWidget* window, const QString& text) {
    const QInputMethodEvent::Attribute underlined(QInputMethodEvent::Cursor, 1, 1);
    QInputMethodEvent composing(QStringLiteral("ㄅ"), {underlined});
    QApplication::sendEvent(keyTarget(window), &composing);
    settle();
    QInputMethodEvent commit;
    commit.setCommitString(text);
    QApplication::sendEvent(keyTarget(window), &commit);
    settle();
}

void pressKey(QWidget* window, const QString& name) {
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    QString rest = name;
    for (const auto& [word, modifier] :
         {std::pair(u"Ctrl+"_s, Qt::ControlModifier), std::pair(u"Shift+"_s, Qt::ShiftModifier),
          std::pair(u"Alt+"_s, Qt::AltModifier)})
        if (rest.startsWith(word)) {
            modifiers |= modifier;
            rest.remove(0, word.size());
        }
    Qt::Key key = Qt::Key_unknown;
    for (const KeyName& row : special)
        if (rest == row.name) key = row.key;
    if (key == Qt::Key_unknown) {
        const QKeySequence sequence(rest);
        if (sequence.count() == 1) key = sequence[0].key();
    }
    if (key == Qt::Key_unknown) throw std::runtime_error("no such key: " + name.toStdString());
    QTest::keyClick(keyTarget(window), key, modifiers);
    settle();
}

void clickWidget(QWidget* widget) {
    activate(widget);
    // Options and check boxes react where they are drawn, not in the whole room that they have.
    const bool small = qobject_cast<QRadioButton*>(widget) || qobject_cast<QCheckBox*>(widget);
    const QPoint centre = widget->rect().center();
    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier,
                      small ? QPoint(std::min(10, centre.x()), centre.y()) : centre);
    settle();
}

} // namespace liaowu::robot
