#pragma once
#include "frame/document_screen.h"
#include "warehouse/receipt_lines.h"

namespace liaowu {

/// A control of the header and the member it stands for.
struct ReceiptBinding {
    QString control;
    QString ReceiptHeader::*member;
};
const std::vector<ReceiptBinding>& receiptBindings();

/// Header fields, line columns and words of the receipt screen for a family; `canSeePrice` decides which columns show.
DocumentSpec receiptDocumentSpec(const QString& category);
/// Columns that hold money in their text and are not shown without the 金額 right.
QStringList receiptMoneyTexts();

/// What stands below the grid: ordered and open quantity of the line, stock of the item, total.
void buildReceiptFooter(QHBoxLayout* line, QWidget* owner);

} // namespace liaowu
