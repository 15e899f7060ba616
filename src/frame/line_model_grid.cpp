#include "frame/line_grid.h"

namespace liaowu {

namespace {
/// Rows of an empty grid.
constexpr size_t FreshRows = 350;
} // namespace

QStringList LineModel::blankRow() const {
    return QStringList(static_cast<qsizetype>(declared.size()));
}

void LineModel::reset(std::vector<LineColumn> columns) {
    beginResetModel();
    declared = std::move(columns);
    cells.assign(FreshRows, blankRow());
    marks.clear();
    endResetModel();
}

void LineModel::reserveRows(int wanted) {
    if (wanted <= rows() || rows() == MaxRows) return;
    const int grown = std::min(MaxRows, wanted + wanted / 2);
    beginInsertRows({}, rows(), grown - 1);
    cells.resize(static_cast<size_t>(grown), blankRow());
    endInsertRows();
}

void LineModel::setText(int row, int column, const QString& text) {
    QString& cell = cells[static_cast<size_t>(row)][column];
    if (cell == text) return;
    cell = text;
    const QModelIndex changed = index(row, column);
    Q_EMIT dataChanged(changed, changed, {Qt::DisplayRole});
}

void LineModel::clearRows() {
    if (cells.size() > FreshRows) {
        beginRemoveRows({}, FreshRows, rows() - 1);
        cells.resize(FreshRows);
        endRemoveRows();
    }
    std::fill(cells.begin(), cells.end(), blankRow());
    marks.clear();
    if (!cells.empty() && !declared.empty())
        Q_EMIT dataChanged(index(0, 0), index(rows() - 1, columnCount() - 1), {});
}

void LineModel::removeRow1(int row) {
    cells.erase(cells.begin() + row);
    cells.push_back(blankRow());
    marks.clear();
    Q_EMIT dataChanged(index(row, 0), index(rows() - 1, columnCount() - 1), {});
}

void LineModel::setTitle(int column, const QString& title) {
    declared[static_cast<size_t>(column)].shown = title;
    Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
}

void LineModel::mark(int row, int column, const QColor& colour, const QString& why) {
    marks.insert(qint64(row) << 16 | column, {colour, why});
    Q_EMIT dataChanged(index(row, column), index(row, column), {});
}

void LineModel::clearMarks(int row, int column) {
    if (marks.remove(qint64(row) << 16 | column))
        Q_EMIT dataChanged(index(row, column), index(row, column), {});
}

int LineModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows();
}
int LineModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(declared.size());
}

QVariant LineModel::data(const QModelIndex& at, int role) const {
    const LineColumn& column = declared[static_cast<size_t>(at.column())];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return text(at.row(), at.column());
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignVCenter | (column.right ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::BackgroundRole: {
        if (const auto found = marks.constFind(qint64(at.row()) << 16 | at.column());
            found != marks.constEnd())
            return found->colour;
        if (at.row() == currentRow) return QColor(0xe8, 0xf1, 0xfc);
        return {};
    }
    case Qt::ToolTipRole: {
        const auto found = marks.constFind(qint64(at.row()) << 16 | at.column());
        if (found != marks.constEnd()) return found->why;
        return column.money || text(at.row(), at.column()).isEmpty() ? QVariant()
                                                                     : text(at.row(), at.column());
    }
    default:
        return {};
    }
}

QVariant LineModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role == Qt::TextAlignmentRole) return int(Qt::AlignCenter);
    if (role != Qt::DisplayRole) return {};
    if (orientation == Qt::Vertical) return section + 1;
    const LineColumn& column = declared[static_cast<size_t>(section)];
    return column.shown.isEmpty() ? column.title.section(u'#', 0, 0) : column.shown;
}

Qt::ItemFlags LineModel::flags(const QModelIndex& at) const {
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (at.isValid() && declared[static_cast<size_t>(at.column())].typable) flags |= Qt::ItemIsEditable;
    return flags;
}

} // namespace liaowu
