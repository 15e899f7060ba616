#pragma once
#include "data/sql_text.h"
#include <QHash>
#include <functional>
#include <vector>

namespace liaowu {

/// One way to search: option, its label, and the clause that its text fills.
struct SearchCondition {
    QString caption;
    QString label;  ///< beside the text box; empty hides the box
    int limit = 0;  ///< Big5 bytes
    int filter = 0; ///< mode of `filterKey`
    QString defaultText;
    bool withDates = true; ///< the date boxes are shown and count
};

/// What stands on the search page when it runs.
struct SearchInput {
    int option = 0;
    QString text;
    QString from, to;            ///< date boxes, eight digits
    QHash<QString, bool> checks; ///< by control name
};

struct SearchCheck {
    QString control;
    QString caption;
};

/// A search page, declared.
struct SearchSpec {
    std::vector<SearchCondition> conditions;
    std::vector<SearchCheck> checks;
    /// First and last day that the date boxes start with, eight digits; empty texts when they could not be read.
    std::function<std::pair<QString, QString>()> defaultDates;
    /// The whole statement; its last column is a hidden copy of the key.
    std::function<SqlText(const SearchInput&)> statement;
    QHash<QString, int> widths; ///< by column title, in pixels; 0 hides
};

} // namespace liaowu
