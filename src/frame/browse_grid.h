#pragma once
#include "data/recordset.h"
#include <QAbstractTableModel>
#include <QHash>
#include <QTableView>
#include <memory>

namespace liaowu {

struct Session;

/// The rows of a recordset, read where they lie. An empty recordset shows one empty row.
class RecordsetModel : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;
    void show(Recordset rows);
    const Recordset& rows() const { return set; }
    bool isEmpty() const { return !set.isOpen() || set.RecordCount() == 0; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    Recordset set;
    QStringList titles;
};

/// A list grid: shows a recordset, one selected row, the seven colours of the session.
class BrowseGrid : public QTableView {
    Q_OBJECT
public:
    BrowseGrid(const QString& name, const Session& session, QWidget* parent = nullptr);

    /// Takes the rows; columns are wide by `widths` (pixels by title, 0 hides), else by title and content category. A
    /// title that starts with H hides its column.
    void show(Recordset rows, const QHash<QString, int>& widths);
    /// Rows on show; 0 on an empty list.
    int lineCount() const { return model_.isEmpty() ? 0 : model_.rows().RecordCount(); }
    /// From 1; 0 when nothing is selected or the list is empty.
    int currentRow() const;
    void selectRow1(int row);
    void allowSeveral(bool several);
    /// Selected rows, from 1, ascending.
    std::vector<int> selectedRows() const;
    /// Columns of a row (from 1), hidden ones included.
    QStringList rowTexts(int row) const;
    const Recordset& rows() const { return model_.rows(); }

Q_SIGNALS:
    /// Enter or a double click on a row.
    void accepted(int row);
    void rightClicked(int row);
    /// A letter was typed: filters above take it.
    void letterTyped(const QString& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    RecordsetModel model_;
};

} // namespace liaowu
