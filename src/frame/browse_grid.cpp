#include "frame/browse_grid.h"
#include "common/session.h"
#include "common/text_values.h"
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>

namespace liaowu {

using namespace Qt::StringLiterals;

void RecordsetModel::show(Recordset rows) {
    beginResetModel();
    set = std::move(rows);
    titles = set.isOpen() ? set.columnNames() : QStringList();
    endResetModel();
}

int RecordsetModel::rowCount(const QModelIndex& parent) const {
    if (parent.isValid() || !set.isOpen()) return 0;
    return std::max(1, set.RecordCount());
}

int RecordsetModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(titles.size());
}

namespace {

bool looksNumeric(const QString& title) {
    static const QStringList words{u"數量"_s, u"單價"_s, u"小計"_s, u"進價"_s, u"庫存"_s, u"分數"_s, u"數"_s};
    return std::any_of(words.begin(), words.end(), [&](const QString& word) { return title.endsWith(word); });
}

} // namespace

QVariant RecordsetModel::data(const QModelIndex& index, int role) const {
    if (isEmpty()) return {};
    if (role == Qt::DisplayRole) return set.textAt(index.row(), index.column());
    if (role == Qt::TextAlignmentRole &&
        (set.isNumeric(index.column()) || looksNumeric(titles[index.column()])))
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

QVariant RecordsetModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return QAbstractTableModel::headerData(section, orientation, role);
    return orientation == Qt::Horizontal ? QVariant(titles.value(section)) : QVariant(section + 1);
}

BrowseGrid::BrowseGrid(const QString& name, const Session& session, QWidget* parent) : QTableView(parent) {
    setObjectName(name);
    setModel(&model_);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setAttribute(Qt::WA_InputMethodEnabled);
    setCornerButtonEnabled(false);
    verticalHeader()->setVisible(false);
    verticalHeader()->setDefaultSectionSize(22);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        if (!model_.isEmpty()) Q_EMIT accepted(index.row() + 1);
    });
    const auto colour = [&](size_t i) {
        const int bgr = static_cast<int>(val(session.gridColours[i]));
        return QColor(bgr & 0xff, (bgr >> 8) & 0xff, (bgr >> 16) & 0xff).name();
    };
    if (session.gridColours[0].isEmpty()) return;
    setStyleSheet(
        u"QTableView { background: %1; gridline-color: %7; selection-background-color: %5; selection-color: "
        u"%6; }"
        "QTableView::item { background: %2; } QTableView::item:selected { background: %5; color: %6; }"
        "QHeaderView::section { background: %3; color: %4; }"_s.arg(
            colour(0), colour(1), colour(2), colour(3), colour(4), colour(5), colour(6)));
}

void BrowseGrid::show(Recordset rows, const QHash<QString, int>& widths) {
    model_.show(std::move(rows));
    const QStringList titles = model_.rows().isOpen() ? model_.rows().columnNames() : QStringList();
    const int samples = std::min(lineCount(), 30);
    // Each change of a width would order a second painting of all rows for later.
    QSignalBlocker quiet(horizontalHeader());
    for (int c = 0; c < titles.size(); ++c) {
        int width = widths.value(titles[c], -1);
        if (width < 0) {
            if (titles[c].startsWith(u'H') || titles[c].isEmpty()) {
                width = 0;
            } else {
                int wanted = fontMetrics().horizontalAdvance(titles[c]) + 18;
                for (int r = 0; r < samples; ++r)
                    wanted =
                        std::max(wanted, fontMetrics().horizontalAdvance(model_.rows().textAt(r, c)) + 14);
                width = std::clamp(wanted, 48, 260);
            }
        }
        setColumnHidden(c, width == 0);
        if (width > 0) setColumnWidth(c, width);
    }
    quiet.unblock();
    updateGeometries();
    if (lineCount() > 0) selectRow1(1);
}

int BrowseGrid::currentRow() const {
    return model_.isEmpty() || !currentIndex().isValid() ? 0 : currentIndex().row() + 1;
}

void BrowseGrid::selectRow1(int row) {
    for (int c = 0; c < model_.columnCount(); ++c) {
        if (isColumnHidden(c)) continue;
        setCurrentIndex(model_.index(row - 1, c));
        return;
    }
}

void BrowseGrid::allowSeveral(bool several) {
    setSelectionMode(several ? QAbstractItemView::ContiguousSelection : QAbstractItemView::SingleSelection);
}

std::vector<int> BrowseGrid::selectedRows() const {
    std::vector<int> rows;
    if (model_.isEmpty()) return rows;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        rows.push_back(index.row() + 1);
    std::sort(rows.begin(), rows.end());
    if (rows.empty() && currentRow() > 0) rows.push_back(currentRow());
    return rows;
}

QStringList BrowseGrid::rowTexts(int row) const {
    QStringList texts;
    for (int c = 0; c < model_.columnCount(); ++c)
        texts << model_.rows().textAt(row - 1, c);
    return texts;
}

void BrowseGrid::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (currentRow() > 0) Q_EMIT accepted(currentRow());
        return;
    }
    // Rows are what is chosen here, so that the ends are those of the list.
    const bool first = event->key() == Qt::Key_Home, last = event->key() == Qt::Key_End;
    if ((first || last) && event->modifiers() == Qt::NoModifier) {
        if (lineCount() > 0) selectRow1(first ? 1 : lineCount());
        return;
    }
    const QString text = event->text();
    if (!text.isEmpty() && text[0].isPrint() &&
        !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
        Q_EMIT letterTyped(text);
        return;
    }
    QTableView::keyPressEvent(event);
}

void BrowseGrid::inputMethodEvent(QInputMethodEvent* event) {
    if (!event->commitString().isEmpty()) Q_EMIT letterTyped(event->commitString());
    event->accept();
}

void BrowseGrid::mousePressEvent(QMouseEvent* event) {
    QTableView::mousePressEvent(event);
    const QModelIndex index = indexAt(event->pos());
    if (event->button() == Qt::RightButton && index.isValid() && !model_.isEmpty())
        Q_EMIT rightClicked(index.row() + 1);
}

void BrowseGrid::wheelEvent(QWheelEvent* event) {
    // One row a notch.
    const int notches = event->angleDelta().y() / 120;
    if (notches == 0) return;
    verticalScrollBar()->setValue(verticalScrollBar()->value() - notches);
    event->accept();
}

} // namespace liaowu
