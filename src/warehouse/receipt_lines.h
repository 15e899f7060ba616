#pragma once
#include "common/record_fields.h"
#include <vector>

namespace liaowu {

/// The header of a receipt or a return, as 原料入庫資料 holds it. Dates YYYYMMDD, months YYYYMM, 合計 in the document's
/// currency.
struct ReceiptHeader {
    QString 入庫單號, 類別, 入庫日期, 經辦代號, 經辦名稱, 廠商代號, 採購單號, 備註, 單別, 幣別, 廠商單號,
        付款年月, 倉別, 對帳日期, 檢驗單號, 合計, 審核, 審核人, 審核日期;
    QString 廠商簡稱; ///< read with the vendor, not stored
};

/// A line of a receipt, as 原料入庫明細 holds it and the grid shows it. 單價 and 小計 hold what is visible (six asterisks
/// without the 金額 right), 原單價 and 原小計 the real values. 數量 is in the order's unit, 入庫數量 in the stock unit.
struct ReceiptLine {
    QString 採購單號, 原料代號, 原料名稱, 規格, 數量, 備品, 單價, 單位, 小計, 走紙才, 入庫單位, 入庫數量,
        剖切尺寸, 原單價, 原小計, 備註, 檢驗單號, 檢驗員, 檢驗, 報關單號, 備案單號, 計價公式, 採購序;
    bool operator==(const ReceiptLine&) const = default;
};
using ReceiptLines = std::vector<ReceiptLine>;

/// Grid columns in the grid's order and the members they show.
inline constexpr std::array<FieldOf<ReceiptLine>, 23> ReceiptLineColumns{{
    {u"採購單號", &ReceiptLine::採購單號}, {u"原料代號", &ReceiptLine::原料代號},
    {u"原料名稱", &ReceiptLine::原料名稱}, {u"規格", &ReceiptLine::規格},
    {u"數量", &ReceiptLine::數量},         {u"備品", &ReceiptLine::備品},
    {u"單價", &ReceiptLine::單價},         {u"單位", &ReceiptLine::單位},
    {u"小計", &ReceiptLine::小計},         {u"走紙才", &ReceiptLine::走紙才},
    {u"單位#2", &ReceiptLine::入庫單位},   {u"小紙數", &ReceiptLine::入庫數量},
    {u"剖切尺寸", &ReceiptLine::剖切尺寸}, {u"原單價", &ReceiptLine::原單價},
    {u"原小計", &ReceiptLine::原小計},     {u"備註", &ReceiptLine::備註},
    {u"檢驗單號", &ReceiptLine::檢驗單號}, {u"檢驗員", &ReceiptLine::檢驗員},
    {u"檢驗", &ReceiptLine::檢驗},         {u"報關單號", &ReceiptLine::報關單號},
    {u"備案單號", &ReceiptLine::備案單號}, {u"計價公式", &ReceiptLine::計價公式},
    {u"採購序", &ReceiptLine::採購序},
}};

/// Whether a 單別 sends goods back.
inline bool isReturnKind(const QString& kind) {
    return kind.contains(u'退');
}

} // namespace liaowu
