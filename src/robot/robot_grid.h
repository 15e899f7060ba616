#pragma once
#include <QJSValue>
#include <QObject>
#include <QPointer>
#include <QTableView>

class QJSEngine;

namespace liaowu::robot {

/// A grid as a script holds it: line, browse and side grids alike. Rows count from 1 below the titles.
class GridHandle : public QObject {
    Q_OBJECT
    Q_PROPERTY(int lineCount READ lineCount)
    Q_PROPERTY(QStringList titles READ titles)
public:
    GridHandle(QJSEngine& engine, QTableView* view);

    int lineCount() const;
    QStringList titles() const;

    Q_INVOKABLE QString cell(int row, const QString& title);
    Q_INVOKABLE bool visible(const QString& title);
    Q_INVOKABLE void enter(int row, const QString& title);
    Q_INVOKABLE void type(int row, const QString& title, const QString& text);
    Q_INVOKABLE void key(int row, const QString& title, const QString& key);
    Q_INVOKABLE void doubleClick(int row, const QString& title);
    Q_INVOKABLE void rightClick(int row, const QString& title);
    Q_INVOKABLE void select(int fromRow, int toRow);
    Q_INVOKABLE QStringList list();
    Q_INVOKABLE void pick(const QString& text);
    Q_INVOKABLE QJSValue row(int row);
    Q_INVOKABLE void paste(int row, const QString& title, const QString& text);
    Q_INVOKABLE QString copy(int fromRow, const QString& fromTitle, int toRow, const QString& toTitle);
    Q_INVOKABLE int currentRow();
    Q_INVOKABLE QString currentTitle();
    Q_INVOKABLE QString colour(int row, const QString& title);

private:
    int column(const QString& title);
    /// Position of a cell that can be reached; a JavaScript error, and an invalid index, otherwise.
    QModelIndex reachable(int row, const QString& title);
    void clickCell(const QModelIndex& cell, Qt::KeyboardModifiers modifiers);
    void attempt(const std::function<void()>& action);

    QJSEngine& engine;
    QPointer<QTableView> view;
};

} // namespace liaowu::robot
