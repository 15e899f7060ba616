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
        constexpr qsizetype last = Columns - 1;
        if (text.count(u'|') < last) throw std::logic_error("a case lacks cells: " + text.toStdString());
        std::array<QString, Columns>& cells = cases.emplace_back();
        for (qsizetype column = 0; column < last; ++column)
            cells[static_cast<size_t>(column)] = text.section(u'|', column, column);
        cells.back() = text.section(u'|', last);
    }
    return cases;
}
