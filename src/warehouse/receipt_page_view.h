#pragma once
#include "frame/document_screen.h"
#include "warehouse/receipt_lines.h"

namespace liaowu {

/// The controls of the header and the members they stand for.
inline constexpr std::array<FieldOf<ReceiptHeader>, 15> ReceiptControls{{
    {u"txt入庫單號", &ReceiptHeader::入庫單號},
    {u"txt入庫日期", &ReceiptHeader::入庫日期},
    {u"txt業務員代號", &ReceiptHeader::經辦代號},
    {u"lbl業務員名稱", &ReceiptHeader::經辦名稱},
    {u"txt廠商代號", &ReceiptHeader::廠商代號},
    {u"lbl廠商簡稱", &ReceiptHeader::廠商簡稱},
    {u"txt採購單號", &ReceiptHeader::採購單號},
    {u"txt備註", &ReceiptHeader::備註},
    {u"Cbo單別", &ReceiptHeader::單別},
    {u"cbo幣別", &ReceiptHeader::幣別},
    {u"txt廠商單號", &ReceiptHeader::廠商單號},
    {u"txt付款年月", &ReceiptHeader::付款年月},
    {u"Cbo倉別", &ReceiptHeader::倉別},
    {u"txt對帳日期", &ReceiptHeader::對帳日期},
    {u"txt檢驗單號", &ReceiptHeader::檢驗單號},
}};

/// Header fields, line columns and words of the receipt screen for a family; `canSeePrice` decides which columns show.
DocumentSpec receiptDocumentSpec(const QString& category);
/// Columns that hold money in their text and are not shown without the 金額 right.
QStringList receiptMoneyTexts();

/// What stands below the grid: ordered and open quantity of the line, stock of the item, total.
void buildReceiptFooter(QHBoxLayout* line, QWidget* owner);

} // namespace liaowu
