#pragma once
#include "frame/entry_view.h"
#include <QAbstractTableModel>
#include <QColor>
#include <QHash>
#include <QListWidget>
#include <QPointer>
#include <QTableView>
#include <functional>
#include <span>

namespace liaowu {

class Messages;

/// A column of a line grid, declared. Columns are addressed by title; a repeated title is "title#2" from its second
/// place on.
struct LineColumn {
    QString title;
    int width = 1000;     ///< in twips; 0 hides
    int limit = 0;        ///< Big5 bytes
    int filter = 0;       ///< mode of `filterKey`
    bool typable = false; ///< takes typing at all
    bool entry = false;   ///< Enter stops here
    bool pick = false;    ///< what is typed opens the pick of this column
    bool upper = false;
    bool right = false; ///< numbers
    bool money = false;
    QString shown = {}; ///< title as the user reads it, where it differs
};

/// Ground of a cell that holds a fault.
inline const QColor FaultColour(0xff, 0xd6, 0xd6);

/// What a column of a document's lines is, as a table declares it.
namespace column_flags {
enum : unsigned { Typed = 1, Entry = 2, Pick = 4, Upper = 8, Right = 16, Money = 32, BoardOnly = 64 };
}
/// A row of such a table: width in twips, limit in Big5 bytes, mode of `filterKey`.
struct LineColumnRow {
    const char16_t* title;
    int width, limit, filter;
    unsigned flags;
};
/// The columns that the rows declare; those of board alone are hidden without `withBoard`.
std::vector<LineColumn> lineColumns(std::span<const LineColumnRow> rows, bool withBoard = true);

/// The cells of a line grid: texts, with colours for what must be seen.
class LineModel : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;
    /// More rows than these a document does not have.
    static constexpr int MaxRows = 16350;
    void reset(std::vector<LineColumn> columns);
    /// Sees that there are rows up to this one, and some to go on.
    void reserveRows(int rows);
    const std::vector<LineColumn>& columns() const { return declared; }
    const QString& text(int row, int column) const { return cells[static_cast<size_t>(row)][column]; }
    void setText(int row, int column, const QString& text);
    void clearRows();
    void removeRow1(int row);
    void setTitle(int column, const QString& title);
    void mark(int row, int column, const QColor& colour, const QString& why);
    void clearMarks(int row, int column);
    int currentRow = 0;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    struct Mark {
        QColor colour;
        QString why;
    };
    QStringList blankRow() const;
    int rows() const { return static_cast<int>(cells.size()); }

    std::vector<LineColumn> declared;
    std::vector<QStringList> cells;
    QHash<qint64, Mark> marks;
};

/// What a screen adds to a line grid. Rows count from 1, columns go by title.
struct LineGridEvents {
    /// Whether typing may start in this cell now.
    std::function<bool(int row, const QString& title)> mayType;
    /// A cell was changed, on whatever way; false takes the change back. In a batch (a pasted block) no window and no
    /// message may open.
    std::function<bool(int row, const QString& title, const QString& before, bool batch)> edited;
    /// The pick of a column, for F9 and for typing in a pick column; gives whether something was picked.
    std::function<bool(int row, const QString& title)> pick;
    /// Resolves a pasted code by exact match into the row; false when there is none.
    std::function<bool(int row, const QString& title, const QString& code)> resolve;
    std::function<void(int row, const QString& title)> entered;
    std::function<void(int row, const QString& title)> doubleClicked;
    /// Items of the in-cell list of this cell; empty for none.
    std::function<QStringList(int row, const QString& title)> list;
    std::function<void()> modified;
    std::function<void(const QString& text)> notice;
};

/// The spreadsheet-like grid of document lines. Every change of a cell, typed, picked or pasted, takes one path.
class LineGrid : public QTableView {
    Q_OBJECT
public:
    LineGrid(const QString& name, Messages& messages, QWidget* parent = nullptr);

    /// Declares the columns and empties the grid, which grows with the rows put into it.
    void prepareGrid(std::vector<LineColumn> columns);
    LineGridEvents events;

    int lineCount() const { return used; }
    void setLineCount(int count);
    /// Raises the count when `row` lies beyond it.
    void countRow(int row);
    bool previousRowFilled(int row) const;
    bool rowFilled(int row) const;

    /// Position of a column from its title; throws std::logic_error when there is none.
    int column(const QString& title) const;
    QStringList titles() const;
    QString text(int row, const QString& title) const { return model_.text(row - 1, column(title)); }
    /// Sets a cell as a rule does: no event, no count.
    void setText(int row, const QString& title, const QString& text);
    QStringList rowTexts(int row) const;
    /// Rows beyond `LineModel::MaxRows` are left out.
    void setRowTexts(int row, const QStringList& texts);
    void setColumnTitle(const QString& title, const QString& shown);
    void setColumnTwips(const QString& title, int twips);
    void markCell(int row, const QString& title, const QColor& colour, const QString& why);
    void unmarkCell(int row, const QString& title);

    void clearGrid();
    void deleteGridRow(int row);
    /// From 1.
    int currentRow() const { return currentIndex().isValid() ? currentIndex().row() + 1 : 1; }
    QString currentTitle() const;
    void select(int row, const QString& title);

    /// Ends an open cell edit and all that it still has to say, so that a command sees the final state.
    void endEdit();
    bool isEditing() const { return !editor.isNull(); }
    /// Opens the editor on the current cell with this text.
    bool startEdit(const QString& initial, bool replace = true);
    /// Speaks after the editor has closed, then gives cell and focus back.
    void speakLater(std::function<void()> speech);
    /// F9, and the button that stands for it.
    void runPick();
    void copyFromAbove();
    void copySelection() const;
    void pasteBlock(const QString& text);

    QListWidget* cellList() const { return list; }
    void pickFromList(const QString& text);
    void hideList();
    /// Takes a text into a cell on the one path; gives false when it was refused.
    bool commit(int row, int column, const QString& text, bool batch);

    void setFrozenTitle(const QString& title);

Q_SIGNALS:
    void selectionMoved();
    /// Ctrl+Delete on a row that is not being typed in.
    void deleteAsked();
    void lineCountChanged();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void scrollContentsBy(int dx, int dy) override;
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    friend class LineDelegate;
    void moveToNextEntry();
    void enterCell();
    void placeList(const QStringList& items);
    void flushSpeech();
    bool mayType(const QModelIndex& index) const;
    void paintFrozen();
    bool listKey(QKeyEvent* key);

    LineModel model_;
    Messages& messages;
    QListWidget* list;
    QPointer<EntryField> editor;
    std::vector<std::function<void()>> speeches;
    int used = 0;
    int frozen = -1;
    bool speaking = false;
    int picksRun = 0; ///< picks that typing has opened
};

} // namespace liaowu
