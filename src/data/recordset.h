#pragma once
#include "data/connection.h"
#include <QStringList>
#include <memory>
#include <vector>

namespace liaowu {

/// How a recordset is opened. The first two are for reading; the others write.
enum class Cursor {
    Static,     ///< client cursor, read-only (3, 1)
    Keyset,     ///< client cursor, read-only (1, 1)
    Optimistic, ///< each `Update` writes its row (2, 3) and (1, 3)
    Batch       ///< `UpdateBatch` writes all rows (2, 4)
};

/// Rows of a select on the client. Read to its end when opened (for writing: at the first read or move), so no
/// statement stays open between commands. Rows and columns are numbered from 0; columns also go by name, compared
/// without case. Nulls read as empty texts. Failures throw `DatabaseError`.
class Recordset {
public:
    Recordset();
    ~Recordset();
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;

    void Open(const SqlText& statement, Connection& connection, Cursor cursor = Cursor::Static);
    void Close();
    bool isOpen() const;
    /// Runs the statement again on `connection` (the first one may be gone) and goes to the first row.
    void Requery(Connection& connection);

    bool EOF_() const;
    bool BOF_() const;
    int RecordCount() const;
    /// From 1; 0 before the first and after the last row.
    int AbsolutePosition() const;
    /// 0 and less stand before the first row, more than there are behind the last.
    void setAbsolutePosition(int position);
    /// Moves never fail on an empty set or at its ends; reading a field where there is no row does.
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    /// Goes on from the current row to the first where `column` equals `value` by the server's comparison (case and
    /// trailing blanks do not count). Gives false, and stands at EOF, when there is none.
    bool Find(const QString& column, const QString& value);

    QStringList columnNames() const;
    int columnCount() const;
    /// Position of a column; throws `DatabaseError` when there is none of this name.
    int column(QStringView name) const;

    /// Field of the current row. A float reads as its shortest text.
    QString text(QStringView column) const;
    QString text(int column) const;
    double number(QStringView column) const;
    bool isNull(QStringView column) const;
    bool isNull(int column) const;
    /// Any cell, without moving.
    QString textAt(int row, int column) const;
    bool isNullAt(int row, int column) const;
    /// True when the column's values are numbers of the engine, not texts.
    bool isNumeric(int column) const;

    /// Starts a new row; `set` fills it, `Update` (or `UpdateBatch`) writes it. Only columns that were set are
    /// inserted. New rows stand behind those read; once the rows are read (again), written ones are among them.
    void AddNew();
    /// A text for a column of numbers must be a number or empty, which is 0. NUL characters are dropped.
    void set(QStringView column, const QString& value);
    void set(QStringView column, double value);
    void set(int column, const QString& value);
    void set(int column, double value);
    void setNull(QStringView column);
    void setNull(int column);
    /// Writes the current row: a new one is inserted; of a read one the changed columns, found by primary key and
    /// their old values. No row hit throws `DatabaseError::Conflict`; a table without key cannot be changed. Leaving a
    /// changed row does the same. A row that could not be written stays pending. In batch mode `UpdateBatch` does it.
    void Update();
    /// Writes all pending rows, in a transaction of its own when none is open. On failure all stay pending.
    void UpdateBatch();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

/// The most common read: all rows of a statement.
Recordset select(Connection& connection, const SqlText& statement);

} // namespace liaowu
