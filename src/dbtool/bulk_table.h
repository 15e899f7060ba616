#pragma once
#include "data/number_text.h"
#include "data/recordset.h"

namespace liaowu {

/// A value on its way into a text column, or into one of the few columns that are numbers.
class Cell {
public:
    Cell(QString value) : text(std::move(value)) {}
    Cell(const char16_t* value) : text(QString::fromUtf16(value)) {}
    Cell(double value) : text(numberText(value)) {}
    Cell(int value) : text(QString::number(value)) {}
    QString text;
};

/// Appends many rows to one table, in batches small enough to stay out of the way of memory.
class BulkTable {
public:
    /// `columns` are names separated by blanks.
    BulkTable(Connection& on, const QString& table, const QString& columns)
        : connection(on), statement(sql(u"select * from [{}] where 1<>1", table)) {
        rows.Open(statement, connection, Cursor::Batch);
        for (const QString& name : columns.split(u' ', Qt::SkipEmptyParts))
            positions.push_back(rows.column(name));
    }

    void add(std::initializer_list<Cell> cells) { add(std::vector<Cell>(cells)); }
    void add(const std::vector<Cell>& cells) {
        if (cells.size() != positions.size())
            throw std::logic_error("cells and columns of a row do not match");
        rows.AddNew();
        std::size_t i = 0;
        for (const Cell& cell : cells)
            rows.set(positions[i++], cell.text);
        if (++pending == BatchSize) flush();
    }
    /// Writes what is still pending; rows that were not flushed are lost.
    void flush() {
        if (pending == 0) return;
        rows.UpdateBatch();
        pending = 0;
        // A recordset keeps what it has written.
        rows.Close();
        rows.Open(statement, connection, Cursor::Batch);
    }

private:
    static constexpr int BatchSize = 2000;
    Connection& connection;
    SqlText statement;
    Recordset rows;
    std::vector<int> positions;
    int pending = 0;
};

} // namespace liaowu
