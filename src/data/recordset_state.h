#pragma once
#include "data/physical_connection.h"
#include "data/recordset.h"
#include <map>
#include <utility>
#include <vector>

namespace liaowu {

/// Values by column, in the order of the columns, so that rows filled in another order share one statement.
class ColumnChanges {
public:
    void put(int column, dialect::Literal value);
    const dialect::Literal* find(int column) const;
    /// Takes all of `other`, which is empty then.
    void absorb(ColumnChanges& other);
    bool empty() const { return entries.empty(); }
    void reserve(int columns) { entries.reserve(static_cast<std::size_t>(columns)); }
    auto begin() const { return entries.begin(); }
    auto end() const { return entries.end(); }

private:
    std::vector<std::pair<int, dialect::Literal>> entries;
};

/// A row that was added, or changed since it was read.
struct EditedRow {
    bool isNew = false;    ///< not yet in the table
    ColumnChanges written; ///< differs from the row as read, and stands in the table
    ColumnChanges pending;
};

/// The inside of a recordset: rows as read, what was changed over them, and rows added behind them.
struct Recordset::Private {
    QString statement;
    Cursor cursor = Cursor::Static;
    std::weak_ptr<PhysicalConnection> lease;
    ShapePointer shape;
    RowBlock rows;
    bool open = false;
    bool loaded = false;
    int position = 0; ///< -1 before the first row; added rows follow those read
    int lastColumn = -1;
    std::map<int, EditedRow> changed;
    std::vector<EditedRow> added;

    /// Asks for shape and, for reading, rows. A failure leaves all as it was.
    void start(Connection& on);
    /// Reads the rows of a recordset opened for writing. Rows written meanwhile are among them.
    void load();

    bool writes() const { return cursor == Cursor::Optimistic || cursor == Cursor::Batch; }
    int count() const { return rows.rows() + static_cast<int>(added.size()); }
    int columns() const { return static_cast<int>(shape->fields.size()); }
    const ResultField& field(int column) const { return shape->fields[static_cast<std::size_t>(column)]; }
    bool onAdded() const { return position >= rows.rows() && position < count(); }

    void requireOpen() const;
    void requireWriting() const;
    void requireColumn(int column) const;
    void requireCell(int row, int column);
    /// Makes sure that there is a current row, without reading rows where a new one is current.
    void requireRow();

    /// -1 when there is none of this name.
    int columnOf(QStringView name);
    /// What a changed or added row holds; null where the row as read speaks.
    const dialect::Literal* overlaid(int row, int column);
    QString text(int row, int column);
    double number(int row, int column);
    bool isNull(int row, int column);

    void setText(int column, const QString& value);
    void setNumber(int column, double value);
    void setNull(int column);
    void writeCurrent();
    void writeAll();
    void moveTo(int target);

private:
    std::shared_ptr<PhysicalConnection> connection() const;
    EditedRow* edited(int row);
    /// What waits to be written of the current row, after all that can speak against a change of this column.
    ColumnChanges& pendingOf(int column);
    dialect::Literal storedValue(int row, const EditedRow& edit, int column) const;
    ColumnValues valuesOf(const ColumnChanges& changes) const;
    void write(PhysicalConnection& physical, int row, const EditedRow& edit) const;
    static void settle(EditedRow& edit);
};

[[noreturn]] void throwMisuse(const QString& text);

} // namespace liaowu
