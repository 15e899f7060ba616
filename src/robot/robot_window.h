#pragma once
#include <QJSValue>
#include <QObject>
#include <QPointer>
#include <QWidget>

class QJSEngine;

namespace liaowu::robot {

/// A screen or window as a script holds it.
class WindowHandle : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString name READ name)
    Q_PROPERTY(QString title READ title)
    Q_PROPERTY(QString mode READ mode)
    Q_PROPERTY(bool open READ open)
    Q_PROPERTY(bool modified READ modified)
public:
    WindowHandle(QJSEngine& engine, QWidget* window);

    QString name() const { return knownName; }
    QString title() const;
    QString mode() const;
    bool open() const;
    bool modified() const;

    Q_INVOKABLE QString status(int panel);
    Q_INVOKABLE QString notice();
    Q_INVOKABLE void set(const QString& control, const QString& text);
    Q_INVOKABLE QString get(const QString& control);
    Q_INVOKABLE QStringList items(const QString& control);
    Q_INVOKABLE void key(const QString& control, const QString& key);
    Q_INVOKABLE void press(const QString& key);
    Q_INVOKABLE void type(const QString& text);
    Q_INVOKABLE void commit(const QString& text);
    Q_INVOKABLE void click(const QString& control);
    Q_INVOKABLE void choose(const QString& control, const QJSValue& item = QJSValue());
    Q_INVOKABLE void toolbar(const QString& key);
    Q_INVOKABLE void panel(int number);
    Q_INVOKABLE bool enabled(const QString& control);
    Q_INVOKABLE bool visible(const QString& control);
    Q_INVOKABLE bool locked(const QString& control);
    Q_INVOKABLE QString focused();
    /// Colour of a control's text, as #rrggbb.
    Q_INVOKABLE QString colour(const QString& control);
    Q_INVOKABLE QJSValue grid(const QString& name);
    Q_INVOKABLE void close();
    /// Texts of everything that can be seen in the window: labels, fields, cells, tips, status.
    Q_INVOKABLE QStringList visibleTexts();
    Q_INVOKABLE void resize(int width, int height);

    QWidget* widget() const { return window; }

private:
    /// The control of this name; a JavaScript error, and null, when there is none.
    QWidget* control(const QString& name);
    bool alive();
    bool attempt(const std::function<void()>& action);

    QJSEngine& engine;
    QPointer<QWidget> window;
    QString knownName;
};

} // namespace liaowu::robot
