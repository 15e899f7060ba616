#pragma once
#include "common/record_fields.h"
#include "common/rights.h"
#include <vector>

namespace liaowu {

/// The header of a purchase order, as 採購資料 holds it. All texts: dates YYYYMMDD, numbers in the document's currency.
struct OrderHeader {
    QString 採購單號, 類別, 採購日期, 廠商代號, 廠商簡稱, 業務員代號, 業務員名稱, 幣別, 採購類別, 工單單號,
        合計, 申購單位, 審單, 審單人, 審單日期, 品質要求;
    QString 修改人, 修改時間; ///< as loaded: tell whether somebody else has saved since
};

/// A line of a purchase order, as 採購明細資料 holds it and the grid shows it. 單價 and 小計 hold what is visible (six
/// asterisks without the 金額 right), 原單價 and 原小計 the real values.
struct OrderLine {
    QString 請購單號, 印件編號, 客戶代號, 客戶簡稱, 紙箱代號, 料號, 原料代號, 廠商名稱, 原料名稱, 規格, 數量,
        單價, 單位, 小計, 交貨日期, 楞別, 剖切尺寸, 壓線種類, 壓線尺寸, 寬剖, 小紙數, 原單價, 原小計,
        已入庫數, 未交數, 送清, 計價公式, 備註, 序, 已檢驗數, 檢驗合格數, 採購單號;
    bool operator==(const OrderLine&) const = default;
};
using OrderLines = std::vector<OrderLine>;

/// A grid column of the order and the member that it shows, in the grid's order.
using OrderLineColumn = FieldOf<OrderLine>;
inline constexpr std::array<OrderLineColumn, 32> OrderLineColumns{{
    {u"申購單號", &OrderLine::請購單號},
    {u"工單單號", &OrderLine::印件編號},
    {u"客戶代號", &OrderLine::客戶代號},
    {u"客戶", &OrderLine::客戶簡稱},
    {u"紙箱代號", &OrderLine::紙箱代號},
    {u"料號", &OrderLine::料號},
    {u"代號", &OrderLine::原料代號},
    {u"廠商品名", &OrderLine::廠商名稱},
    {u"內部品名", &OrderLine::原料名稱},
    {u"規格", &OrderLine::規格},
    {u"大紙數", &OrderLine::數量},
    {u"單價", &OrderLine::單價},
    {u"單位", &OrderLine::單位},
    {u"小計", &OrderLine::小計},
    {u"交貨日", &OrderLine::交貨日期},
    {u"楞別", &OrderLine::楞別},
    {u"剖切尺寸", &OrderLine::剖切尺寸},
    {u"壓線種類", &OrderLine::壓線種類},
    {u"壓線尺寸", &OrderLine::壓線尺寸},
    {u"走紙才", &OrderLine::寬剖},
    {u"小紙數", &OrderLine::小紙數},
    {u"原單價", &OrderLine::原單價},
    {u"原小計", &OrderLine::原小計},
    {u"已交數", &OrderLine::已入庫數},
    {u"未交數", &OrderLine::未交數},
    {u"送清", &OrderLine::送清},
    {u"計價公式", &OrderLine::計價公式},
    {u"備註", &OrderLine::備註},
    {u"採購序", &OrderLine::序},
    {u"已檢驗數", &OrderLine::已檢驗數},
    {u"檢驗合格數", &OrderLine::檢驗合格數},
    {u"採購單號", &OrderLine::採購單號},
}};

inline QStringList textsOf(const OrderLine& line) {
    return textsOf(OrderLineColumns, line);
}
inline OrderLine lineOf(const QStringList& texts) {
    return recordOf(OrderLineColumns, texts);
}
inline bool isBlank(const OrderLine& line) {
    return isBlank(OrderLineColumns, line);
}

} // namespace liaowu
