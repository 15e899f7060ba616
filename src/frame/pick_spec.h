#pragma once
#include "data/sql_text.h"
#include <QHash>
#include <QStringList>
#include <functional>

namespace liaowu {

struct Session;

/// What a pick window asks its statement for.
struct PickInput {
    QString filter;
    int sort = 0;         ///< index of the chosen sort option
    bool checked = false; ///< of the check box
    QString from, to;     ///< date boxes, where a window has them
};

/// A pick or lookup window, declared.
struct PickSpec {
    QString name;  ///< objectName of the window
    QString title; ///< window title
    QString errorTitle;
    bool withFilter = true;
    bool filterEachKey = false;
    bool several = false; ///< returns the block of selected rows
    QStringList sortOptions;
    QString checkBox;       ///< caption; empty for none
    QStringList dateLabels; ///< two labels, or none
    QString from, to;
    /// The statements in the order in which they are tried until one gives rows.
    std::function<std::vector<SqlText>(const Session&, const PickInput&)> statements;
    QHash<QString, int> widths; ///< by title, in twips; 0 hides
    QStringList moneyColumns;   ///< hidden without `Session::amountRight`
};

} // namespace liaowu
