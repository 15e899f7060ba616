#include "frame/line_grid.h"
#include "common/messages.h"
#include "common/text_values.h"
#include <QApplication>
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTimer>
#include <stdexcept>

namespace liaowu {

using namespace Qt::StringLiterals;

std::vector<LineColumn> lineColumns(std::span<const LineColumnRow> rows, bool withBoard) {
    using namespace column_flags;
    std::vector<LineColumn> columns;
    for (const LineColumnRow& row : rows) {
        const auto is = [&](unsigned flag) { return (row.flags & flag) != 0; };
        columns.push_back({.title = QString::fromUtf16(row.title),
                           .width = is(BoardOnly) && !withBoard ? 0 : row.width,
                           .limit = row.limit,
                           .filter = row.filter,
                           .typable = is(Typed),
                           .entry = is(Entry),
                           .pick = is(Pick),
                           .upper = is(Upper),
                           .right = is(Right),
                           .money = is(Money)});
    }
    return columns;
}

/// Opens an `EntryField` with the column's filter and hands its text to the grid's one path.
class LineDelegate : public QStyledItemDelegate {
public:
    explicit LineDelegate(LineGrid* owner) : QStyledItemDelegate(owner), grid(owner) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex& index) const override {
        const LineColumn& column = grid->model_.columns()[static_cast<size_t>(index.column())];
        auto* field = new EntryField(u"cell"_s, parent);
        field->setProperty("cellEditor", true);
        field->setProperty("ownsEscape", true);
        field->setProperty("ownsEnter", true);
        field->setFrame(false);
        field->filterMode = column.filter;
        field->upperCase = column.upper;
        grid->editor = field;
        return field;
    }
    void setEditorData(QWidget* widget, const QModelIndex& index) const override {
        static_cast<EntryField*>(widget)->setText(index.data(Qt::EditRole).toString());
    }
    void setModelData(QWidget* widget, QAbstractItemModel*, const QModelIndex& index) const override {
        grid->commit(index.row() + 1, index.column(), static_cast<EntryField*>(widget)->text(), false);
    }
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        // The cell that keys would reach, or reached last: only the first looks like a focus.
        if (grid->isAncestorOf(QApplication::focusWidget()) || grid->hasFocus()) return;
        option->palette.setColor(QPalette::Highlight, QColor(0xd5, 0xdd, 0xe6));
        option->palette.setColor(QPalette::HighlightedText, QColor(0x1f, 0x2d, 0x3d));
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* field = qobject_cast<EntryField*>(watched);
        if (!field || event->type() != QEvent::KeyPress)
            return QStyledItemDelegate::eventFilter(watched, event);
        const int key = static_cast<QKeyEvent*>(event)->key();
        switch (key) {
        case Qt::Key_Escape:
            Q_EMIT closeEditor(field, RevertModelCache);
            grid->setFocus();
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_F6:
        case Qt::Key_F7:
        case Qt::Key_F9: {
            Q_EMIT commitData(field);
            Q_EMIT closeEditor(field, NoHint);
            grid->setFocus();
            QKeyEvent again(QEvent::KeyPress, key, static_cast<QKeyEvent*>(event)->modifiers());
            QApplication::sendEvent(grid, &again);
            return true;
        }
        default:
            return false;
        }
    }

private:
    LineGrid* grid;
};

LineGrid::LineGrid(const QString& name, Messages& channel, QWidget* parent)
    : QTableView(parent), messages(channel) {
    setObjectName(name);
    list = new QListWidget(this);
    setModel(&model_);
    setItemDelegate(new LineDelegate(this));
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::ContiguousSelection);
    setSelectionBehavior(QAbstractItemView::SelectItems);
    setWordWrap(false);
    setAttribute(Qt::WA_InputMethodEnabled);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->setDefaultSectionSize(22);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumWidth(34);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
    // On whichever way an editor closes, it is no longer open.
    connect(itemDelegate(), &QAbstractItemDelegate::closeEditor, this, [this] { editor = nullptr; });
    list->setObjectName(name + u"清單"_s);
    list->setProperty("ownsEscape", true);
    list->hide();
    list->installEventFilter(this);
    connect(list, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { pickFromList(item->text()); });
    connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        if (events.doubleClicked) events.doubleClicked(index.row() + 1, currentTitle());
    });
}

void LineGrid::prepareGrid(std::vector<LineColumn> columns) {
    QHash<QString, int> seen;
    for (LineColumn& column : columns)
        if (const int n = ++seen[column.title]; n > 1) column.title += u"#%1"_s.arg(n);
    model_.reset(std::move(columns));
    for (int c = 0; c < model_.columnCount(); ++c) {
        const int twips = model_.columns()[static_cast<size_t>(c)].width;
        setColumnHidden(c, twips == 0);
        if (twips > 0) setColumnWidth(c, pixelsOfTwips(twips));
    }
    used = 0;
}

// ---- rows and cells ----

int LineGrid::column(const QString& title) const {
    const auto& columns = model_.columns();
    for (size_t i = 0; i < columns.size(); ++i)
        if (columns[i].title == title || columns[i].shown == title) return static_cast<int>(i);
    throw std::logic_error("no column " + title.toStdString());
}

QStringList LineGrid::titles() const {
    QStringList result;
    for (const LineColumn& column : model_.columns())
        result << (column.shown.isEmpty() ? column.title : column.shown);
    return result;
}

void LineGrid::setText(int row, const QString& title, const QString& text) {
    model_.setText(row - 1, column(title), text);
}

QStringList LineGrid::rowTexts(int row) const {
    QStringList texts;
    for (int c = 0; c < model_.columnCount(); ++c)
        texts << model_.text(row - 1, c);
    return texts;
}

void LineGrid::setRowTexts(int row, const QStringList& texts) {
    if (row > LineModel::MaxRows) return;
    model_.reserveRows(row);
    for (int c = 0; c < model_.columnCount() && c < texts.size(); ++c)
        model_.setText(row - 1, c, texts[c]);
}

void LineGrid::setColumnTitle(const QString& title, const QString& shown) {
    model_.setTitle(column(title), shown);
}

void LineGrid::setColumnTwips(const QString& title, int twips) {
    setColumnHidden(column(title), twips == 0);
    if (twips > 0) setColumnWidth(column(title), pixelsOfTwips(twips));
}

void LineGrid::markCell(int row, const QString& title, const QColor& colour, const QString& why) {
    model_.mark(row - 1, column(title), colour, why);
}
void LineGrid::unmarkCell(int row, const QString& title) {
    model_.clearMarks(row - 1, column(title));
}

void LineGrid::setLineCount(int count) {
    used = std::clamp(count, 0, LineModel::MaxRows);
    // A row to go on with stays free.
    model_.reserveRows(used + 1);
    Q_EMIT lineCountChanged();
}

void LineGrid::countRow(int row) {
    if (row > used) setLineCount(used + 1);
}

bool LineGrid::rowFilled(int row) const {
    for (int c = 0; c < model_.columnCount(); ++c)
        if (!model_.text(row - 1, c).trimmed().isEmpty()) return true;
    return false;
}

bool LineGrid::previousRowFilled(int row) const {
    return row <= 1 || rowFilled(row - 1);
}

void LineGrid::clearGrid() {
    if (EntryField* field = editor) {
        editor = nullptr;
        closeEditor(field, QAbstractItemDelegate::RevertModelCache);
    }
    speeches.clear();
    hideList();
    model_.clearRows();
    setLineCount(0);
    for (int c = 0; c < model_.columnCount(); ++c) {
        if (isColumnHidden(c)) continue;
        setCurrentIndex(model_.index(0, c));
        break;
    }
    scrollToTop();
    horizontalScrollBar()->setValue(0);
}

void LineGrid::deleteGridRow(int row) {
    const int removed = row < 1 ? currentRow() : row;
    endEdit();
    model_.removeRow1(removed - 1);
}

QString LineGrid::currentTitle() const {
    return currentIndex().isValid() ? model_.columns()[static_cast<size_t>(currentIndex().column())].title
                                    : QString();
}

void LineGrid::select(int row, const QString& title) {
    const int wanted = column(title);
    if (isColumnHidden(wanted)) {
        // A hidden column cannot be stood on: the row is what matters.
        for (int c = 0; c < model_.columnCount(); ++c)
            if (!isColumnHidden(c)) {
                setCurrentIndex(model_.index(row - 1, c));
                return;
            }
    }
    setCurrentIndex(model_.index(row - 1, wanted));
}

// ---- the one path of a change ----

bool LineGrid::commit(int row, int column, const QString& text, bool batch) {
    const LineColumn& declared = model_.columns()[static_cast<size_t>(column)];
    const QString before = model_.text(row - 1, column);
    QString value = text;
    if (declared.limit > 0) {
        value = truncateBytes(value, declared.limit);
        if (value != text && !batch)
            speakLater([this, limit = declared.limit] {
                messages.warn(u"訊息"_s, u"最多只可輸入%1個字!"_s.arg(limit));
            });
    }
    if (value == before) return value == text;
    model_.setText(row - 1, column, value);
    if (events.edited && !events.edited(row, declared.title, before, batch)) {
        model_.setText(row - 1, column, before);
        return false;
    }
    model_.clearMarks(row - 1, column);
    countRow(row);
    if (events.modified) events.modified();
    if (declared.pick && !batch && events.pick && !value.trimmed().isEmpty()) {
        const QString title = declared.title;
        speakLater([this, row, title] {
            ++picksRun;
            if (events.pick(row, title)) moveToNextEntry();
        });
    }
    return value == text;
}

void LineGrid::speakLater(std::function<void()> speech) {
    speeches.push_back(std::move(speech));
    if (speeches.size() == 1) QTimer::singleShot(0, this, &LineGrid::flushSpeech);
}

void LineGrid::flushSpeech() {
    if (speeches.empty() || speaking) return;
    speaking = true;
    const QModelIndex cell = currentIndex();
    while (!speeches.empty()) {
        const auto next = std::move(speeches.front());
        speeches.erase(speeches.begin());
        next();
    }
    speaking = false;
    if (!currentIndex().isValid()) setCurrentIndex(cell);
    setFocus();
}

void LineGrid::endEdit() {
    if (editor) {
        EntryField* field = editor;
        editor = nullptr;
        commitData(field);
        closeEditor(field, QAbstractItemDelegate::NoHint);
    }
    hideList();
    flushSpeech();
}

bool LineGrid::mayType(const QModelIndex& index) const {
    if (!index.isValid() || !model_.columns()[static_cast<size_t>(index.column())].typable) return false;
    return !events.mayType ||
           events.mayType(index.row() + 1, model_.columns()[static_cast<size_t>(index.column())].title);
}

bool LineGrid::startEdit(const QString& initial, bool replace) {
    const QModelIndex cell = currentIndex();
    if (!mayType(cell)) return false;
    const LineColumn& declared = model_.columns()[static_cast<size_t>(cell.column())];
    const QString text = acceptedText(initial, declared.filter, declared.upper);
    if (replace && text.isEmpty()) return false;
    if (!previousRowFilled(cell.row() + 1)) {
        speakLater([this] { messages.warn(u"警告"_s, u"前一列資料尚未輸入!"_s); });
        return false;
    }
    hideList();
    setFocus();
    if (!edit(cell, QAbstractItemView::AllEditTriggers, nullptr) || !editor) return false;
    if (replace) {
        editor->setText(text);
    } else {
        editor->selectAll();
    }
    return true;
}

// ---- keys ----

void LineGrid::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // What an edit still has to say comes first, then the cell moves on.
        if (!speeches.empty()) {
            const bool pickWaits = model_.columns()[static_cast<size_t>(currentIndex().column())].pick;
            flushSpeech();
            if (pickWaits) return;
        }
        moveToNextEntry();
        return;
    case Qt::Key_Delete:
        if (event->modifiers() == Qt::ControlModifier) Q_EMIT deleteAsked();
        return;
    case Qt::Key_F2:
        return;
    case Qt::Key_F7:
        copyFromAbove();
        return;
    case Qt::Key_F9:
        runPick();
        return;
    case Qt::Key_Escape:
    case Qt::Key_F6:
        event->ignore();
        return;
    default:
        break;
    }
    if (event->matches(QKeySequence::Copy)) {
        copySelection();
        return;
    }
    if (event->matches(QKeySequence::Paste)) {
        pasteBlock(QApplication::clipboard()->text());
        return;
    }
    const QString text = event->text();
    const bool plain = !text.isEmpty() && text[0].isPrint() &&
                       !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (plain) {
        startEdit(text);
        return;
    }
    if (event->key() == Qt::Key_Backspace) {
        startEdit(QString(), false);
        return;
    }
    QTableView::keyPressEvent(event);
}

void LineGrid::inputMethodEvent(QInputMethodEvent* event) {
    if (!event->commitString().isEmpty()) startEdit(event->commitString());
    event->accept();
}

void LineGrid::moveToNextEntry() {
    const QModelIndex cell = currentIndex();
    const int columns = model_.columnCount();
    for (int step = 1; step <= columns; ++step) {
        const int position = cell.column() + step;
        const int c = position % columns;
        if (!model_.columns()[static_cast<size_t>(c)].entry || isColumnHidden(c)) continue;
        const int row = cell.row() + (position >= columns ? 1 : 0);
        if (row < model_.rowCount()) setCurrentIndex(model_.index(row, c));
        return;
    }
}

void LineGrid::copyFromAbove() {
    const QModelIndex cell = currentIndex();
    if (cell.row() < 1 || !mayType(cell)) return;
    if (!previousRowFilled(cell.row() + 1)) return;
    commit(cell.row() + 1, cell.column(), model_.text(cell.row() - 1, cell.column()), false);
}

void LineGrid::runPick() {
    if (!events.pick) return;
    const int before = picksRun;
    endEdit();
    // What was being typed has opened its pick already.
    if (picksRun != before) return;
    if (!previousRowFilled(currentRow())) {
        messages.warn(u"警告"_s, u"前一列資料尚未輸入!"_s);
        return;
    }
    if (events.pick(currentRow(), currentTitle())) moveToNextEntry();
    setFocus();
}

void LineGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    hideList();
    if (current.row() != previous.row()) {
        model_.currentRow = current.row();
        viewport()->update();
    }
    Q_EMIT selectionMoved();
    enterCell();
}

void LineGrid::focusInEvent(QFocusEvent* event) {
    QTableView::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) enterCell();
}

void LineGrid::enterCell() {
    if (!currentIndex().isValid()) return;
    if (events.entered) events.entered(currentRow(), currentTitle());
    if (hasFocus() && !editor && events.list) placeList(events.list(currentRow(), currentTitle()));
}

void LineGrid::mouseReleaseEvent(QMouseEvent* event) {
    QTableView::mouseReleaseEvent(event);
    // A click on the cell one stands on offers its list again.
    const bool here = event->button() == Qt::LeftButton && indexAt(event->pos()) == currentIndex();
    if (here && !list->isVisible() && selectionModel()->selectedIndexes().size() == 1) enterCell();
}

void LineGrid::wheelEvent(QWheelEvent* event) {
    hideList();
    QTableView::wheelEvent(event);
}

// ---- the code column stays in sight ----

void LineGrid::setFrozenTitle(const QString& title) {
    frozen = column(title);
}

void LineGrid::scrollContentsBy(int dx, int dy) {
    hideList();
    QTableView::scrollContentsBy(dx, dy);
    if (frozen >= 0 && dx != 0) viewport()->update();
}

void LineGrid::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (frozen >= 0 && !isColumnHidden(frozen) && columnViewportPosition(frozen) < 0) paintFrozen();
}

void LineGrid::paintFrozen() {
    QPainter painter(viewport());
    const int width = columnWidth(frozen);
    for (int row = rowAt(0); row >= 0 && row < model_.rowCount(); ++row) {
        const int top = rowViewportPosition(row);
        if (top > viewport()->height()) break;
        const QRect cell(0, top, width, rowHeight(row) - 1);
        painter.fillRect(cell,
                         row == model_.currentRow ? QColor(0xdc, 0xe9, 0xfa) : QColor(0xf3, 0xf6, 0xf9));
        painter.drawText(cell.adjusted(3, 0, -2, 0), int(Qt::AlignVCenter | Qt::AlignLeft),
                         model_.text(row, frozen));
    }
    painter.setPen(QColor(0x9f, 0xb3, 0xc8));
    painter.drawLine(width, 0, width, viewport()->height());
}

} // namespace liaowu
