#pragma once
#include "data/dialect/dialect.h"
#include <QByteArray>
#include <QString>
#include <vector>

namespace liaowu {

/// Rows of a result as one run of bytes for each thousand rows: texts as UTF-8, numbers in 8 bytes, and one word for
/// each cell with its kind and where it ends. A text is decoded when it is asked for.
class RowBlock {
public:
    enum class Kind : quint32 { Null, Text, Float, Integer };

    struct Cell {
        Kind kind = Kind::Null;
        QByteArrayView bytes;

        QString text() const;
        double number() const;
        dialect::Literal value() const;
    };

    /// Drops all rows; the next ones have this many cells.
    void reset(int cellsOfRow);

    /// Cells come in order, row by row.
    void appendNull() { close(Kind::Null); }
    void appendText(const char* utf8, int size) {
        append(utf8, size);
        close(Kind::Text);
    }
    void appendFloat(double value) { appendBytes(Kind::Float, &value); }
    void appendInteger(qint64 value) { appendBytes(Kind::Integer, &value); }
    /// No more cells: gives back what was reserved too much.
    void finish();

    int rows() const { return rowCount; }
    int columns() const { return width; }
    Cell cell(int row, int column) const;
    /// Bytes held, for measurements.
    qsizetype memory() const;

private:
    static constexpr int rowsOfChunk = 1024;
    static constexpr quint32 endMask = 0x3fffffff;

    struct Chunk {
        std::vector<char> bytes;
        std::vector<quint32> ends;
    };

    Chunk& last() {
        if (chunks.empty() || cellsInLast == width * rowsOfChunk) addChunk();
        return chunks.back();
    }
    template <typename Number>
    void appendBytes(Kind kind, const Number* value) {
        static_assert(sizeof(Number) == 8);
        append(reinterpret_cast<const char*>(value), 8);
        close(kind);
    }
    void append(const char* bytes, int size) {
        std::vector<char>& end = last().bytes;
        end.insert(end.end(), bytes, bytes + size);
    }
    void close(Kind kind) {
        Chunk& chunk = last();
        const std::size_t end = chunk.bytes.size();
        if (end > endMask) refuseSize();
        chunk.ends.push_back(static_cast<quint32>(kind) << 30 | static_cast<quint32>(end));
        ++cellsInLast;
        if (++cellsInRow == width) {
            cellsInRow = 0;
            ++rowCount;
        }
    }
    void addChunk();
    [[noreturn]] static void refuseSize();

    std::vector<Chunk> chunks;
    int width = 0;
    int rowCount = 0;
    int cellsInLast = 0;
    int cellsInRow = 0;
};

} // namespace liaowu
