#include "common/text_values.h"
#include "frame/line_grid.h"
#include <QApplication>
#include <QClipboard>
#include <QRegularExpression>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

/// A block from a spreadsheet: tabs and line ends, cells with either in quotes.
std::vector<QStringList> parsedBlock(const QString& text) {
    std::vector<QStringList> rows;
    QStringList row;
    QString cell;
    bool quoted = false;
    bool cellStarted = false;
    const auto endCell = [&] {
        row << cell;
        cell.clear();
        cellStarted = false;
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (quoted) {
            if (c != u'"') {
                cell += c;
            } else if (i + 1 < text.size() && text[i + 1] == u'"') {
                cell += c;
                ++i;
            } else {
                quoted = false;
            }
        } else if (c == u'"' && !cellStarted) {
            quoted = true;
            cellStarted = true;
        } else if (c == u'\t') {
            endCell();
        } else if (c == u'\n' || c == u'\r') {
            if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
            endCell();
            rows.push_back(row);
            row.clear();
        } else {
            cell += c;
            cellStarted = true;
        }
    }
    if (cellStarted || !cell.isEmpty() || !row.isEmpty()) {
        endCell();
        rows.push_back(row);
    }
    return rows;
}

/// A cell as a spreadsheet writes it: in quotes when it would fall apart otherwise.
QString blockCell(QString text) {
    static const QRegularExpression apart(u"[\t\n\r]|^\""_s);
    if (!text.contains(apart)) return text;
    return u'"' + text.replace(u'"', u"\"\""_s) + u'"';
}

/// Whether the filter took all of a pasted text, and a quantity or price reads as one number. Thousands separators are layout,
/// not a fault.
bool fitsFilter(const QString& raw, const QString& taken, int filter) {
    static const QRegularExpression number(u"^-?(\\d+\\.?\\d*|\\.\\d+)$"_s);
    if (taken.size() != QString(raw).remove(u',').size()) return false;
    return filter != 3 || taken.isEmpty() || number.match(taken).hasMatch();
}

} // namespace

void LineGrid::copySelection() const {
    const QItemSelection selection = selectionModel()->selection();
    if (selection.isEmpty()) return;
    const QItemSelectionRange block = selection.first();
    QStringList lines;
    for (int r = block.top(); r <= block.bottom(); ++r) {
        QStringList cells;
        // Hidden columns hold what the user may not see.
        for (int c = block.left(); c <= block.right(); ++c)
            if (!isColumnHidden(c)) cells << blockCell(model_.text(r, c));
        lines << cells.join(u'\t');
    }
    QApplication::clipboard()->setText(lines.join(u'\n'));
}

void LineGrid::pasteBlock(const QString& text) {
    const std::vector<QStringList> block = parsedBlock(text);
    if (block.empty()) return;
    endEdit();
    const int firstRow = currentRow();
    const int firstColumn = currentIndex().column();
    int faults = 0;
    int taken = 0;
    int left = 0;
    for (size_t i = 0; i < block.size(); ++i) {
        const int row = firstRow + static_cast<int>(i);
        if (row > LineModel::MaxRows || !previousRowFilled(row)) {
            left += static_cast<int>(block.size() - i);
            break;
        }
        int column = firstColumn;
        bool brought = false;
        for (const QString& cell : block[i]) {
            while (column < model_.columnCount() && isColumnHidden(column))
                ++column;
            if (column >= model_.columnCount()) break;
            const LineColumn& declared = model_.columns()[static_cast<size_t>(column)];
            const QString raw = cell.trimmed();
            const QString value = acceptedText(raw, declared.filter, declared.upper);
            // What a code has just filled in is not wiped by the empty cells behind it.
            if (raw.isEmpty() && brought) {
                ++taken;
                ++column;
                continue;
            }
            bool good = mayType(model_.index(row - 1, column));
            if (good && declared.filter > 0) good = fitsFilter(raw, value, declared.filter);
            if (good && declared.pick && events.resolve && !value.isEmpty()) {
                good = events.resolve(row, declared.title, value);
                if (good) {
                    brought = true;
                    countRow(row);
                    if (events.modified) events.modified();
                }
            } else if (good) {
                good = commit(row, column, value, true);
            }
            if (good || raw.isEmpty() || raw == model_.text(row - 1, column)) {
                ++taken;
            } else {
                ++faults;
                markCell(row, declared.title, FaultColour,
                         u"貼上的內容「%1」不能放入此欄"_s.arg(raw.left(40)));
            }
            ++column;
        }
    }
    // The line under the cursor may be another one now.
    Q_EMIT selectionMoved();
    QString told = u"已貼上 %1 格"_s.arg(taken);
    if (faults > 0) told += u",%1 格有誤(紅底)"_s.arg(faults);
    if (left > 0) told += u",%1 列未貼上"_s.arg(left);
    if (events.notice) events.notice(told);
}

} // namespace liaowu
