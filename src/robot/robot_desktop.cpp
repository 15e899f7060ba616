#include "robot/robot_desktop.h"
#include "robot/robot_input.h"
#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTimer>

namespace liaowu::robot {

using namespace Qt::StringLiterals;

void RobotDesktop::expectMessage(const QString& title, const QString& text, const QString& answer) {
    expected.push_back({title, text, answer});
}

void RobotDesktop::expectWindow(const QString& name, QJSValue run) {
    windows.push_back({name, std::move(run)});
}

bool RobotDesktop::takeExpected(const QString& title, const QString& text, QString& answer) {
    for (auto it = expected.begin(); it != expected.end(); ++it) {
        if ((it->title != u"*" && it->title != title) || (it->text != u"*" && it->text != text)) continue;
        answer = it->answer;
        expected.erase(it);
        return true;
    }
    return false;
}

void RobotDesktop::record(const QString& icon, const QString& title, const QString& text,
                          const QString& answer) {
    told.push_back({icon, title, text, answer});
    all.push_back(told.back());
}

void RobotDesktop::show(Icon icon, const QString& title, const QString& text) {
    static const QHash<Icon, QString> names{{Icon::Information, u"information"_s},
                                            {Icon::Warning, u"warning"_s},
                                            {Icon::Critical, u"critical"_s}};
    QString answer = u"ok"_s;
    const bool known = takeExpected(title, text, answer);
    record(names.value(icon), title, text, u"ok"_s);
    if (!known && !tolerant) fail(u"unexpected message: [%1] %2"_s.arg(title, text));
}

bool RobotDesktop::ask(const QString& title, const QString& text, bool) {
    QString answer = u"no"_s;
    const bool known = takeExpected(title, text, answer);
    record(u"question"_s, title, text, answer);
    if (!known && !tolerant) fail(u"unexpected question: [%1] %2"_s.arg(title, text));
    return answer == u"yes";
}

int RobotDesktop::runModal(QDialog& window) {
    const QString name = window.objectName();
    QJSValue run;
    for (auto it = windows.begin(); it != windows.end(); ++it) {
        if (it->name != name && it->name != u"*") continue;
        run = it->run;
        windows.erase(it);
        break;
    }
    if (run.isUndefined() && !tolerant) fail(u"unexpected window: %1"_s.arg(name));
    QPointer<QDialog> open(&window);
    QPointer<QWidget> owner(QApplication::activeWindow());
    QPointer<QWidget> focus(QApplication::focusWidget());
    QTimer::singleShot(0, &window, [this, open, run] {
        settle();
        if (open && run.isCallable()) play(run, open);
        settle();
        if (open && open->isVisible()) pressKey(open, u"Esc"_s);
        if (open && open->isVisible()) open->reject();
    });
    const int result = window.exec();
    // Without a window manager nobody gives the owner its keys back.
    if (owner) activate(owner);
    if (focus) focus->setFocus(Qt::ActiveWindowFocusReason);
    return result;
}

void RobotDesktop::present(QWidget& screen) {
    screen.resize(1366, 740);
    screen.move(0, 0);
    screen.show();
    activate(&screen);
}

QString RobotDesktop::saveFileName(QWidget*, const QString& title, const QString&, const QString&) {
    if (files.empty()) {
        if (!tolerant) fail(u"unexpected file dialog: %1"_s.arg(title));
        return {};
    }
    const QString path = files.front();
    files.pop_front();
    return path;
}

std::vector<Told> RobotDesktop::takeMessages() {
    return std::exchange(told, {});
}

QStringList RobotDesktop::unmet() const {
    QStringList texts;
    for (const Expected& message : expected)
        texts << u"message never shown: [%1] %2"_s.arg(message.title, message.text);
    for (const ExpectedWindow& window : windows)
        texts << u"window never opened: %1"_s.arg(window.name);
    return texts;
}

void RobotDesktop::reset() {
    expected.clear();
    windows.clear();
    files.clear();
    told.clear();
    tolerant = false;
}

} // namespace liaowu::robot
