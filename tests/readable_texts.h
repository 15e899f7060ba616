#pragma once
#include <QStringList>
#include <array>
#include <ostream>
#include <stdexcept>
#include <vector>

// Texts in failed checks are read by people. Every test is compiled with this: a test that was not would print bytes for all.
inline std::ostream& operator<<(std::ostream& out, const QString& text) {
    return out << text.toStdString();
}

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text << '"';
}

inline void PrintTo(const QStringList& texts, std::ostream* out) {
    *out << '[' << texts.join(QStringLiteral("]\n [")) << ']';
}

/// A table of cases, a row in a line: `Columns` texts with "|" between them. The last one takes the rest of its row, bars included.
template <size_t Columns>
std::vector<std::array<QString, Columns>> casesOf(std::initializer_list<const char16_t*> rows) {
    std::vector<std::array<QString, Columns>> cases;
    for (const char16_t* row : rows) {
        const QString text = QString::fromUtf16(row);
        std::array<QString, Columns>& cells = cases.emplace_back();
        qsizetype from = 0;
        for (size_t column = 0; column + 1 < Columns; ++column) {
            const qsizetype bar = text.indexOf(u'|', from);
            if (bar < 0) throw std::logic_error("a case lacks cells: " + text.toStdString());
            cells[column] = text.mid(from, bar - from);
            from = bar + 1;
        }
        cells.back() = text.mid(from);
    }
    return cases;
}
