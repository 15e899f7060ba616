#pragma once
#include "frame/document_screen.h"
#include "purchasing/order_lines.h"

namespace liaowu {

/// A control of the header and the column it stands for, in the order of the save.
struct OrderBinding {
    QString control;
    QString OrderHeader::*member;
};
const std::vector<OrderBinding>& orderBindings();

/// Header fields, line columns and words of the order screen.
DocumentSpec orderDocumentSpec(const QString& category);
/// Columns that 物料 does not show.
QStringList boardOnlyColumns();

/// What stands below the grid: quality key, stock figures of the current item, total.
void buildOrderFooter(QHBoxLayout* line, QWidget* owner);
/// The panel `pic經驗`: what is known of the vendor.
QFrame* buildNotesPanel(QWidget* page);
/// The panel `SSFrame1`: quality requirements.
QFrame* buildQualityPanel(QWidget* page);
/// Puts a floating panel to the right of the page, over the grid.
void placePanel(QFrame* panel, QWidget* page);

} // namespace liaowu
