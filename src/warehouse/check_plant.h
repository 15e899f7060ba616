#pragma once
#include "data/connection.h"
#include <QStringList>
#include <vector>

namespace liaowu {

/// A stored figure that the documents contradict.
struct Difference {
    QString table;  ///< where it stands
    QString key;    ///< of its row, parts joined by "/"
    QString column; ///< the figure; empty when the row itself is the fault
    QString stored;
    QString expected;
    /// One line for a person.
    QString text() const;
};

struct PlantCheck {
    std::vector<Difference> differences;
    QStringList notes; ///< what could not be looked at, and why
    int orderLines = 0, requisitionLines = 0, receiptLines = 0, issueLines = 0, items = 0, binRows = 0;
};

/// Recomputes from the documents what running figures say: 已入庫數, 未交數 and 送清 of order lines, 已采購數 of
/// requisition lines, 庫存 of board and materials since their last closing, and the bins. Also finds lines without
/// their document. Changes nothing.
///
/// A line closed by hand is no fault. A return with a T in its number moves no stock. An issue line counts once
/// 料務_扣庫存 knows it or its document is approved; in a database without that table every line counts, and the
/// bins are not looked at. Figures are in the unit of the column they stand in.
PlantCheck checkPlant(Connection& connection);

} // namespace liaowu
