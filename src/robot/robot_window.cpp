#include "robot/robot_window.h"
#include "frame/base_screen.h"
#include "frame/form_view.h"
#include "robot/robot_grid.h"
#include "robot/robot_input.h"
#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QJSEngine>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTableView>
#include <QTest>
#include <QToolButton>
#include <QToolTip>

namespace liaowu::robot {

using namespace Qt::StringLiterals;

namespace {

ScreenFrame* screenOf(const QPointer<QWidget>& window) {
    return qobject_cast<ScreenFrame*>(window.data());
}

bool isLocked(QWidget* control) {
    if (auto* field = qobject_cast<EntryField*>(control)) return field->isLocked();
    if (auto* list = qobject_cast<EntryCombo*>(control)) return list->isLocked();
    if (auto* memo = qobject_cast<QPlainTextEdit*>(control)) return memo->isReadOnly();
    return qobject_cast<QLabel*>(control) != nullptr;
}

} // namespace

WindowHandle::WindowHandle(QJSEngine& on, QWidget* shown)
    : engine(on), window(shown), knownName(shown->objectName()) {}

bool WindowHandle::alive() {
    if (window) return true;
    engine.throwError(u"%1 is closed"_s.arg(knownName));
    return false;
}

bool WindowHandle::attempt(const std::function<void()>& action) {
    if (!alive()) return false;
    try {
        action();
        settle();
        return true;
    } catch (const std::exception& error) {
        engine.throwError(QString::fromUtf8(error.what()));
        return false;
    }
}

QWidget* WindowHandle::control(const QString& name) {
    if (!alive()) return nullptr;
    QWidget* hidden = nullptr;
    for (QWidget* found : window->findChildren<QWidget*>(name)) {
        if (found->isVisible()) return found;
        if (!hidden) hidden = found;
    }
    if (!hidden) engine.throwError(u"no control %1 in %2"_s.arg(name, knownName));
    return hidden;
}

QString WindowHandle::title() const {
    return window ? window->windowTitle().remove(u"[*]"_s) : QString();
}
QString WindowHandle::mode() const {
    return screenOf(window) ? screenOf(window)->mode() : QString();
}
bool WindowHandle::open() const {
    return window && window->isVisible();
}
bool WindowHandle::modified() const {
    return window && window->isWindowModified();
}

QString WindowHandle::status(int panel) {
    if (!alive() || !screenOf(window)) return {};
    if (panel < 1 || panel > 8) {
        engine.throwError(u"no status panel %1"_s.arg(panel));
        return {};
    }
    return screenOf(window)->statusText(panel);
}

QString WindowHandle::notice() {
    return alive() && screenOf(window) ? screenOf(window)->notice() : QString();
}

void WindowHandle::set(const QString& name, const QString& text) {
    QWidget* target = control(name);
    if (!target) return;
    if (!target->isEnabled() || isLocked(target)) {
        engine.throwError(u"%1 is disabled or locked"_s.arg(name));
        return;
    }
    attempt([&] {
        activate(window);
        target->setFocus(Qt::OtherFocusReason);
        settle();
        if (auto* list = qobject_cast<QComboBox*>(target)) {
            const int at = list->findText(text);
            if (at < 0 && !list->isEditable()) throw std::runtime_error("no item " + text.toStdString());
            if (at >= 0) {
                list->setCurrentIndex(at);
                Q_EMIT list->activated(at);
                return;
            }
        }
        pressKey(window, u"Ctrl+A"_s);
        pressKey(window, u"Del"_s);
        typeText(window, text);
    });
}

QString WindowHandle::get(const QString& name) {
    QWidget* target = control(name);
    return target ? controlText(target) : QString();
}

QStringList WindowHandle::items(const QString& name) {
    QStringList texts;
    if (auto* list = qobject_cast<QComboBox*>(control(name)))
        for (int i = 0; i < list->count(); ++i)
            texts << list->itemText(i);
    return texts;
}

void WindowHandle::key(const QString& name, const QString& key) {
    QWidget* target = control(name);
    if (!target) return;
    attempt([&] {
        activate(window);
        target->setFocus(Qt::OtherFocusReason);
        settle();
        pressKey(window, key);
    });
}

void WindowHandle::press(const QString& key) {
    attempt([&] { pressKey(window, key); });
}

void WindowHandle::type(const QString& text) {
    attempt([&] { typeText(window, text); });
}

void WindowHandle::commit(const QString& text) {
    attempt([&] { commitText(window, text); });
}

void WindowHandle::click(const QString& name) {
    QWidget* target = control(name);
    if (target) attempt([&] { clickWidget(target); });
}

void WindowHandle::choose(const QString& name, const QJSValue& item) {
    QWidget* target = control(name);
    if (!target) return;
    attempt([&] {
        if (auto* list = qobject_cast<QComboBox*>(target)) {
            const int at = item.isNumber() ? item.toInt() : list->findText(item.toString());
            if (at < 0 || at >= list->count())
                throw std::runtime_error("no item " + item.toString().toStdString());
            if (!list->isEnabled() || isLocked(list)) throw std::runtime_error("the list is locked");
            list->setCurrentIndex(at);
            Q_EMIT list->activated(at);
            return;
        }
        clickWidget(target);
    });
}

void WindowHandle::toolbar(const QString& key) {
    if (!alive()) return;
    QWidget* button = window->findChild<QToolButton*>(u"tool_"_s + key);
    if (!button) {
        engine.throwError(u"no toolbar key %1"_s.arg(key));
        return;
    }
    attempt([&] { clickWidget(button); });
}

void WindowHandle::panel(int number) {
    if (!alive() || !screenOf(window)) return;
    if (QWidget* target = control(u"panel%1"_s.arg(number))) attempt([&] { clickWidget(target); });
}

bool WindowHandle::enabled(const QString& name) {
    if (name.startsWith(u"toolbar:"))
        return alive() && screenOf(window) && screenOf(window)->isToolOn(name.mid(8));
    QWidget* target = control(name);
    return target && target->isEnabled();
}

bool WindowHandle::visible(const QString& name) {
    if (name.startsWith(u"toolbar:"))
        return alive() && screenOf(window) && screenOf(window)->isToolShown(name.mid(8));
    QWidget* target = control(name);
    return target && target->isVisible();
}

bool WindowHandle::locked(const QString& name) {
    QWidget* target = control(name);
    return target && isLocked(target);
}

QString WindowHandle::focused() {
    QWidget* focus = window ? window->focusWidget() : nullptr;
    return focus ? focus->objectName() : QString();
}

QString WindowHandle::colour(const QString& name) {
    QWidget* target = control(name);
    if (!target) return {};
    target->ensurePolished();
    return target->palette().color(target->foregroundRole()).name();
}

QJSValue WindowHandle::grid(const QString& name) {
    auto* view = qobject_cast<QTableView*>(control(name));
    if (!view) {
        engine.throwError(u"no grid %1 in %2"_s.arg(name, knownName));
        return {};
    }
    return engine.newQObject(new GridHandle(engine, view));
}

void WindowHandle::close() {
    attempt([&] { window->close(); });
}

void WindowHandle::resize(int width, int height) {
    attempt([&] { window->resize(width, height); });
}

namespace {

/// What a list or table lets the eye reach by scrolling: titles, cells and their tips, hidden columns left out.
void addTexts(const QAbstractItemView* view, QStringList& texts) {
    const QAbstractItemModel* model = view->model();
    if (!model || qobject_cast<const QHeaderView*>(view)) return;
    const auto* table = qobject_cast<const QTableView*>(view);
    for (int c = 0; c < model->columnCount(); ++c) {
        if (table && table->isColumnHidden(c)) continue;
        texts << model->headerData(c, Qt::Horizontal).toString()
              << model->headerData(c, Qt::Horizontal, Qt::ToolTipRole).toString();
        for (int r = 0; r < model->rowCount(); ++r)
            for (const int role : {Qt::DisplayRole, Qt::ToolTipRole})
                texts << model->index(r, c).data(role).toString();
    }
}

} // namespace

QStringList WindowHandle::visibleTexts() {
    QStringList texts;
    if (!alive()) return texts;
    texts << window->windowTitle() << QToolTip::text();
    for (QWidget* child : window->findChildren<QWidget*>()) {
        if (!child->isVisible()) continue;
        texts << controlText(child) << child->toolTip() << child->statusTip();
        if (auto* field = qobject_cast<QLineEdit*>(child)) texts << field->placeholderText();
        if (auto* choices = qobject_cast<QComboBox*>(child))
            for (int i = 0; i < choices->count(); ++i)
                texts << choices->itemText(i);
        if (auto* view = qobject_cast<QAbstractItemView*>(child)) addTexts(view, texts);
    }
    texts.removeAll(QString());
    return texts;
}

} // namespace liaowu::robot
