#include "data/row_block.h"
#include "data/database_error.h"
#include "data/number_text.h"
#include <cstring>

namespace liaowu {

namespace {

template <typename Number>
Number readNumber(QByteArrayView bytes) {
    Number value;
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
}

QString decode(QByteArrayView bytes) {
    QString text = QString::fromUtf8(bytes);
    // The decoder takes a byte order mark at the front for its own; here it belongs to the value.
    if (bytes.startsWith("\xef\xbb\xbf")) text.prepend(QChar(QChar::ByteOrderMark));
    return text;
}

} // namespace

QString RowBlock::Cell::text() const {
    switch (kind) {
    case Kind::Null:
        return {};
    case Kind::Text:
        return decode(bytes);
    case Kind::Float:
        return numberText(readNumber<double>(bytes));
    case Kind::Integer:
        return QString::number(readNumber<qint64>(bytes));
    }
    return {};
}

double RowBlock::Cell::number() const {
    switch (kind) {
    case Kind::Null:
        return 0;
    case Kind::Text:
        return val(decode(bytes));
    case Kind::Float:
        return readNumber<double>(bytes);
    case Kind::Integer:
        return static_cast<double>(readNumber<qint64>(bytes));
    }
    return 0;
}

dialect::Literal RowBlock::Cell::value() const {
    dialect::Literal value;
    switch (kind) {
    case Kind::Null:
        break;
    case Kind::Text:
        value.kind = dialect::Literal::Kind::Text;
        value.text = decode(bytes);
        break;
    case Kind::Float:
        value.kind = dialect::Literal::Kind::Float;
        value.number = readNumber<double>(bytes);
        break;
    case Kind::Integer:
        value.kind = dialect::Literal::Kind::Integer;
        value.integer = readNumber<qint64>(bytes);
        break;
    }
    return value;
}

void RowBlock::reset(int cellsOfRow) {
    chunks.clear();
    width = cellsOfRow;
    rowCount = cellsInLast = cellsInRow = 0;
}

void RowBlock::addChunk() {
    finish();
    Chunk next;
    const auto cells = static_cast<std::size_t>(width);
    if (chunks.empty()) {
        // Most reads are of one row.
        next.bytes.reserve(cells * 16);
        next.ends.reserve(cells);
    } else {
        // It will be about as large as the one before.
        next.bytes.reserve(chunks.back().bytes.size() * 17 / 16);
        next.ends.reserve(cells * rowsOfChunk);
    }
    chunks.push_back(std::move(next));
    cellsInLast = 0;
}

void RowBlock::refuseSize() {
    throw DatabaseError(DatabaseError::Usage, QStringLiteral("查詢結果的資料量過大!"));
}

void RowBlock::finish() {
    // A few rows are read and dropped at once: only what was reserved for many more is worth a copy.
    if (chunks.empty() || (chunks.size() == 1 && cellsInLast != width * rowsOfChunk)) return;
    Chunk& chunk = chunks.back();
    if (chunk.bytes.capacity() - chunk.bytes.size() > chunk.bytes.capacity() / 8) chunk.bytes.shrink_to_fit();
    if (chunk.ends.capacity() != chunk.ends.size()) chunk.ends.shrink_to_fit();
}

RowBlock::Cell RowBlock::cell(int row, int column) const {
    const Chunk& chunk = chunks[static_cast<std::size_t>(row / rowsOfChunk)];
    const auto at = static_cast<std::size_t>(row % rowsOfChunk * width + column);
    const quint32 entry = chunk.ends[at];
    const quint32 begin = at == 0 ? 0 : chunk.ends[at - 1] & endMask;
    return {static_cast<Kind>(entry >> 30),
            QByteArrayView(chunk.bytes.data() + begin, (entry & endMask) - begin)};
}

qsizetype RowBlock::memory() const {
    qsizetype sum = 0;
    for (const Chunk& chunk : chunks)
        sum += static_cast<qsizetype>(chunk.bytes.capacity() + chunk.ends.capacity() * sizeof(quint32));
    return sum;
}

} // namespace liaowu
