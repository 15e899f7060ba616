#pragma once
#include "frame/tools.h"
#include <QHash>
#include <QIcon>
#include <QWidget>

class QHBoxLayout;
class QToolButton;

namespace liaowu {

/// Line drawing of this name in the toolbar's manner.
QIcon toolIcon(const QString& name);

/// The toolbar: icon, word and key of each command.
class ToolStrip : public QWidget {
    Q_OBJECT
public:
    explicit ToolStrip(const std::vector<Tool>& tools, QWidget* parent = nullptr);

    bool has(const QString& key) const { return buttons.contains(key); }
    bool isOn(const QString& key) const;
    void setOn(const QString& key, bool on);
    bool isShown(const QString& key) const;
    void setShown(const QString& key, bool shown);
    /// Shows one key as pressed; an unknown one shows none.
    void press(const QString& key);
    /// The mark of unsaved typing on 儲存.
    void markUnsaved(bool unsaved);
    /// Puts a widget at the right end.
    void addAtEnd(QWidget* widget);
    QToolButton* button(const QString& key) const { return buttons.value(key); }

Q_SIGNALS:
    void clicked(const QString& key);

private:
    QHash<QString, QToolButton*> buttons;
    QHash<QString, QString> captions;
    QHBoxLayout* line;
};

} // namespace liaowu
