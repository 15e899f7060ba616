#pragma once
#include "common/record_fields.h"
#include <vector>

namespace liaowu {

/// The header of a requisition, as 原料申購資料 holds it. Dates are YYYYMMDD.
struct RequisitionHeader {
    QString 申購單號, 類別, 申購日期, 經辦代號, 經辦名稱, 工單單號, 申購單位, 需求日期, 請購原因, 庫別, 備註,
        審單, 審單人, 審單日期;
    QString 修改人, 修改時間; ///< as loaded: they tell whether somebody else has saved since
};

/// A line of a requisition, as 原料申購明細 holds it and the grid shows it. An order line finds it by number and item.
struct RequisitionLine {
    QString 原料代號, 原料名稱, 規格, 數量, 單位, 印件編號, 需求日期, 備注, 序, 工單單號, 已采購數, 楞別;
    bool operator==(const RequisitionLine&) const = default;
};
using RequisitionLines = std::vector<RequisitionLine>;

/// Grid columns and the members they show. The second 工單單號 is a column of its own and stays hidden.
inline constexpr std::array<FieldOf<RequisitionLine>, 12> RequisitionLineColumns{{
    {u"原料代號", &RequisitionLine::原料代號},
    {u"原料名稱", &RequisitionLine::原料名稱},
    {u"規格", &RequisitionLine::規格},
    {u"數量", &RequisitionLine::數量},
    {u"單位", &RequisitionLine::單位},
    {u"工單單號", &RequisitionLine::印件編號},
    {u"需求日期", &RequisitionLine::需求日期},
    {u"用途說明", &RequisitionLine::備注},
    {u"序", &RequisitionLine::序},
    {u"工單單號#2", &RequisitionLine::工單單號},
    {u"已采購數", &RequisitionLine::已采購數},
    {u"楞別", &RequisitionLine::楞別},
}};

} // namespace liaowu
