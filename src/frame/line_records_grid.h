#pragma once
#include "common/record_fields.h"
#include "frame/line_grid.h"

namespace liaowu {

/// The rows of a line grid as records. `Columns` is the table that names a grid column's member, in the grid's order. Rows
/// count from 1.
template <const auto& Columns>
class LineRecords {
public:
    using Record = typename std::remove_cvref_t<decltype(Columns)>::value_type::RecordType;

    explicit LineRecords(LineGrid* shown) : grid(shown) {}

    Record at(int row) const { return recordOf(Columns, grid->rowTexts(row)); }
    void put(int row, const Record& record) { grid->setRowTexts(row, textsOf(Columns, record)); }
    std::vector<Record> all() const {
        std::vector<Record> records;
        for (int row = 1; row <= grid->lineCount(); ++row)
            records.push_back(at(row));
        return records;
    }
    /// Takes the place of all that the grid shows.
    void show(const std::vector<Record>& records) {
        grid->clearGrid();
        int row = 0;
        for (const Record& record : records)
            put(++row, record);
        grid->setLineCount(row);
    }

private:
    LineGrid* grid;
};

} // namespace liaowu
