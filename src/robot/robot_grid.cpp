#include "robot/robot_grid.h"
#include "frame/browse_grid.h"
#include "frame/line_grid.h"
#include "robot/robot_input.h"
#include <QApplication>
#include <QClipboard>
#include <QJSEngine>
#include <QTest>

namespace liaowu::robot {

using namespace Qt::StringLiterals;

GridHandle::GridHandle(QJSEngine& on, QTableView* shown) : engine(on), view(shown) {}

void GridHandle::attempt(const std::function<void()>& action) {
    try {
        action();
        settle();
    } catch (const std::exception& error) {
        engine.throwError(QString::fromUtf8(error.what()));
    }
}

int GridHandle::lineCount() const {
    if (auto* lines = qobject_cast<LineGrid*>(view.data())) return lines->lineCount();
    if (auto* browse = qobject_cast<BrowseGrid*>(view.data())) return browse->lineCount();
    return view ? view->model()->rowCount() : 0;
}

QStringList GridHandle::titles() const {
    if (auto* lines = qobject_cast<LineGrid*>(view.data())) return lines->titles();
    QStringList names;
    QHash<QString, int> seen;
    for (int c = 0; view && c < view->model()->columnCount(); ++c) {
        const QString title = view->model()->headerData(c, Qt::Horizontal, Qt::DisplayRole).toString();
        const int n = ++seen[title];
        names << (n > 1 ? u"%1#%2"_s.arg(title).arg(n) : title);
    }
    return names;
}

int GridHandle::column(const QString& title) {
    if (!view) {
        engine.throwError(u"the grid is gone"_s);
        return -1;
    }
    int at = static_cast<int>(titles().indexOf(title));
    if (at < 0)
        if (auto* lines = qobject_cast<LineGrid*>(view.data())) {
            try {
                at = lines->column(title);
            } catch (const std::exception&) {
            }
        }
    if (at < 0) engine.throwError(u"no column %1 in %2"_s.arg(title, view->objectName()));
    return at;
}

QModelIndex GridHandle::reachable(int row, const QString& title) {
    const int at = column(title);
    if (at < 0) return {};
    if (view->isColumnHidden(at)) {
        engine.throwError(u"column %1 is hidden"_s.arg(title));
        return {};
    }
    if (row < 1 || row > view->model()->rowCount()) {
        engine.throwError(u"no row %1"_s.arg(row));
        return {};
    }
    return view->model()->index(row - 1, at);
}

QString GridHandle::cell(int row, const QString& title) {
    const int at = column(title);
    if (at < 0) return {};
    if (row < 1 || row > view->model()->rowCount()) {
        engine.throwError(u"no row %1"_s.arg(row));
        return {};
    }
    return view->model()->index(row - 1, at).data(Qt::DisplayRole).toString();
}

bool GridHandle::visible(const QString& title) {
    const int at = column(title);
    return at >= 0 && !view->isColumnHidden(at);
}

void GridHandle::clickCell(const QModelIndex& cell, Qt::KeyboardModifiers modifiers) {
    activate(view);
    if (auto* lines = qobject_cast<LineGrid*>(view.data())) lines->hideList();
    view->scrollTo(cell);
    settle();
    QTest::mouseClick(view->viewport(), Qt::LeftButton, modifiers, view->visualRect(cell).center());
    settle();
}

void GridHandle::enter(int row, const QString& title) {
    const QModelIndex cell = reachable(row, title);
    if (cell.isValid()) attempt([&] { clickCell(cell, Qt::NoModifier); });
}

void GridHandle::type(int row, const QString& title, const QString& text) {
    const QModelIndex cell = reachable(row, title);
    if (!cell.isValid()) return;
    attempt([&] {
        clickCell(cell, Qt::NoModifier);
        typeText(view, text);
        pressKey(view, u"Enter"_s);
    });
}

void GridHandle::key(int row, const QString& title, const QString& key) {
    const QModelIndex cell = reachable(row, title);
    if (!cell.isValid()) return;
    attempt([&] {
        clickCell(cell, Qt::NoModifier);
        pressKey(view, key);
    });
}

void GridHandle::doubleClick(int row, const QString& title) {
    const QModelIndex cell = reachable(row, title);
    if (!cell.isValid()) return;
    attempt([&] {
        clickCell(cell, Qt::NoModifier);
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, view->visualRect(cell).center());
    });
}

void GridHandle::rightClick(int row, const QString& title) {
    const QModelIndex cell = reachable(row, title);
    if (!cell.isValid()) return;
    attempt([&] {
        activate(view);
        view->scrollTo(cell);
        settle();
        QTest::mouseClick(view->viewport(), Qt::RightButton, Qt::NoModifier, view->visualRect(cell).center());
    });
}

void GridHandle::select(int fromRow, int toRow) {
    QStringList shown;
    for (const QString& title : titles())
        if (visible(title)) shown << title;
    if (shown.isEmpty()) return;
    const QModelIndex first = reachable(fromRow, shown.first());
    const QModelIndex last = reachable(toRow, shown.first());
    if (!first.isValid() || !last.isValid()) return;
    attempt([&] {
        clickCell(first, Qt::NoModifier);
        if (toRow != fromRow) clickCell(last, Qt::ShiftModifier);
    });
}

QStringList GridHandle::list() {
    QStringList texts;
    auto* lines = qobject_cast<LineGrid*>(view.data());
    if (!lines || !lines->cellList()->isVisible()) return texts;
    for (int i = 0; i < lines->cellList()->count(); ++i)
        texts << lines->cellList()->item(i)->text();
    return texts;
}

void GridHandle::pick(const QString& text) {
    auto* lines = qobject_cast<LineGrid*>(view.data());
    if (!lines || !lines->cellList()->isVisible()) {
        engine.throwError(u"no list is open"_s);
        return;
    }
    const int at = static_cast<int>(list().lastIndexOf(text));
    if (at < 0) {
        engine.throwError(u"no item %1 in the list"_s.arg(text));
        return;
    }
    attempt([&] {
        for (int i = 0; i < lines->cellList()->count() && lines->cellList()->currentRow() != at; ++i)
            pressKey(view, lines->cellList()->currentRow() < at ? u"Down"_s : u"Up"_s);
        pressKey(view, u"Enter"_s);
    });
}

QJSValue GridHandle::row(int row) {
    QJSValue object = engine.newObject();
    for (const QString& title : titles())
        object.setProperty(title, cell(row, title));
    return object;
}

void GridHandle::paste(int row, const QString& title, const QString& text) {
    const QModelIndex cell = reachable(row, title);
    if (!cell.isValid()) return;
    attempt([&] {
        QApplication::clipboard()->setText(text);
        clickCell(cell, Qt::NoModifier);
        pressKey(view, u"Ctrl+V"_s);
    });
}

QString GridHandle::copy(int fromRow, const QString& fromTitle, int toRow, const QString& toTitle) {
    const QModelIndex first = reachable(fromRow, fromTitle);
    const QModelIndex last = reachable(toRow, toTitle);
    if (!first.isValid() || !last.isValid()) return {};
    attempt([&] {
        clickCell(first, Qt::NoModifier);
        if (first != last) clickCell(last, Qt::ShiftModifier);
        pressKey(view, u"Ctrl+C"_s);
    });
    return QApplication::clipboard()->text();
}

int GridHandle::currentRow() {
    return view && view->currentIndex().isValid() ? view->currentIndex().row() + 1 : 0;
}

QString GridHandle::currentTitle() {
    return view && view->currentIndex().isValid() ? titles().value(view->currentIndex().column()) : QString();
}

QString GridHandle::colour(int row, const QString& title) {
    const int at = column(title);
    if (at < 0) return {};
    const QVariant colour = view->model()->index(row - 1, at).data(Qt::BackgroundRole);
    return colour.isValid() ? colour.value<QColor>().name() : QString();
}

} // namespace liaowu::robot
