#pragma once
#include "frame/document_screen.h"
#include "purchasing/order_lines.h"

namespace liaowu {

/// The controls of the header and the members they stand for.
inline constexpr std::array<FieldOf<OrderHeader>, 11> OrderControls{{
    {u"txt採購單號", &OrderHeader::採購單號},
    {u"txt採購日期", &OrderHeader::採購日期},
    {u"txt廠商代號", &OrderHeader::廠商代號},
    {u"lbl廠商簡稱", &OrderHeader::廠商簡稱},
    {u"txt業務員代號", &OrderHeader::業務員代號},
    {u"lbl業務員名稱", &OrderHeader::業務員名稱},
    {u"cbo幣別", &OrderHeader::幣別},
    {u"cbo採購類別", &OrderHeader::採購類別},
    {u"txt工單單號", &OrderHeader::工單單號},
    {u"txt申購單位", &OrderHeader::申購單位},
    {u"txt品質要求", &OrderHeader::品質要求},
}};

/// Header fields, line columns and words of the order screen.
DocumentSpec orderDocumentSpec(const QString& category);

/// What stands below the grid: quality key, stock figures of the current item, total.
void buildOrderFooter(QHBoxLayout* line, QWidget* owner);
/// The panel `pic經驗`: what is known of the vendor.
QFrame* buildNotesPanel(QWidget* page);
/// The panel `SSFrame1`: quality requirements.
QFrame* buildQualityPanel(QWidget* page);
/// Puts a floating panel to the right of the page, over the grid.
void placePanel(QFrame* panel, QWidget* page);

} // namespace liaowu
