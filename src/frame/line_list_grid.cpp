#include "common/messages.h"
#include "frame/line_grid.h"
#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>

namespace liaowu {

using namespace Qt::StringLiterals;

void LineGrid::placeList(const QStringList& items) {
    if (items.isEmpty() || currentRow() >= 16351) return;
    list->clear();
    list->addItems(items);
    const QRect cell = visualRect(currentIndex()).translated(viewport()->pos());
    const int rowHeight = std::max(20, list->sizeHintForRow(0));
    const int height = std::min(rowHeight * static_cast<int>(items.size()) + 6, 200);
    QRect place(cell.left(), cell.bottom() + 1, std::max(cell.width(), 90), height);
    if (place.bottom() > this->height()) place.moveBottom(cell.top() - 1);
    list->setGeometry(place);
    // The item equal to the cell, searched from the end: the first one is the cell's own text.
    const QString own = text(currentRow(), currentTitle()).trimmed();
    list->setCurrentRow(-1);
    if (!own.isEmpty())
        for (int i = list->count() - 1; i >= 0; --i)
            if (list->item(i)->text() == own) {
                list->setCurrentRow(i);
                break;
            }
    list->show();
    list->raise();
    list->setFocus();
}

void LineGrid::hideList() {
    if (!list->isVisible()) return;
    // A child that is hidden with the focus on it passes it on by a Tab, which would move the cell.
    if (list->hasFocus()) setFocus();
    list->hide();
}

void LineGrid::pickFromList(const QString& text) {
    const QModelIndex cell = currentIndex();
    hideList();
    setFocus();
    if (!previousRowFilled(cell.row() + 1)) {
        messages.warn(u"警告"_s, u"前一列資料尚未輸入!"_s);
        return;
    }
    commit(cell.row() + 1, cell.column(), text, false);
    moveToNextEntry();
}

bool LineGrid::listKey(QKeyEvent* key) {
    switch (key->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (list->currentItem()) {
            pickFromList(list->currentItem()->text());
        } else {
            hideList();
            moveToNextEntry();
        }
        return true;
    case Qt::Key_Escape:
        hideList();
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
        return false;
    default: {
        if (key->key() >= Qt::Key_Shift && key->key() <= Qt::Key_ScrollLock) return false;
        hideList();
        setFocus();
        QKeyEvent again(QEvent::KeyPress, key->key(), key->modifiers(), key->text());
        QApplication::sendEvent(this, &again);
        return true;
    }
    }
}

bool LineGrid::eventFilter(QObject* watched, QEvent* event) {
    if (watched == list) {
        if (event->type() == QEvent::KeyPress) return listKey(static_cast<QKeyEvent*>(event));
        if (event->type() == QEvent::InputMethod) {
            hideList();
            setFocus();
            inputMethodEvent(static_cast<QInputMethodEvent*>(event));
            return true;
        }
        if (event->type() == QEvent::FocusOut &&
            static_cast<QFocusEvent*>(event)->reason() != Qt::ActiveWindowFocusReason)
            list->hide();
        return false;
    }
    return QTableView::eventFilter(watched, event);
}

} // namespace liaowu
