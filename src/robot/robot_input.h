#pragma once
#include <QString>

class QWidget;

namespace liaowu::robot {

/// Lets everything that is queued happen.
void settle();
/// Brings a window to the front so that it has the focus.
void activate(QWidget* window);
/// Types a text into whatever has the focus in the window: ASCII as keys, the rest as input-method commits.
void typeText(QWidget* window, const QString& text);
/// One commit of an input method, after a piece of composition.
void commitText(QWidget* window, const QString& text);
/// Sends a key by name ("F9", "PageUp", "Ctrl+Home", "Shift+Down", "Enter") to whatever has the focus in the window.
/// Throws std::runtime_error for an unknown name.
void pressKey(QWidget* window, const QString& name);
void clickWidget(QWidget* widget);

} // namespace liaowu::robot
