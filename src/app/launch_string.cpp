#include "app/launch_string.h"
#include <algorithm>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

constexpr const char16_t* markers[] = {u"&&連結&&=", u"&&種類&&=", u"&&用戶&&=", u"&&審單&&=", u"&&其它&&="};

} // namespace

LaunchValues parseLaunch(const QString& commandLine) {
    std::array<qsizetype, 5> at{};
    for (size_t i = 0; i < at.size(); ++i) {
        at[i] = commandLine.indexOf(QString::fromUtf16(markers[i]));
        if (at[i] > LongestLaunch) at[i] = -1;
    }
    std::array<QString, 5> values;
    for (size_t i = 0; i < at.size(); ++i) {
        if (at[i] < 0) continue;
        const qsizetype from = at[i] + QString::fromUtf16(markers[i]).size();
        if (i == 4) {
            values[i] = commandLine.mid(from);
        } else if (at[i + 1] >= from) {
            values[i] = commandLine.mid(from, at[i + 1] - from);
        }
    }
    return {values[0], values[1], values[2], values[3], values[4]};
}

QString composeLaunch(const LaunchValues& values) {
    const QString texts[] = {values.connection, values.function, values.user, values.approval, values.other};
    QString result;
    for (size_t i = 0; i < 5; ++i)
        result += QString::fromUtf16(markers[i]) + texts[i];
    return result;
}

const std::vector<LaunchTarget>& launchTable() {
    static const std::vector<LaunchTarget> table{
        {u"紙品管理系統"_s, u"frm紙品管理系統"_s, false, {}, {}, u"主檔"_s},
        {u"物料管理系統"_s, u"frm物料管理系統"_s, false, {}, {}, u"主檔"_s},
        {u"浪紙管理系統"_s, u"frm浪紙管理系統"_s, false, {}, {}, u"主檔"_s},
        {u"資材申購作業"_s, u"frm申購作業系統"_s, true, {}, {}, u"採購"_s},
        {u"紙品入庫作業"_s, u"frm原料入庫作業"_s, true, u"紙品"_s, {}, u"倉儲"_s},
        {u"物料入庫作業"_s, u"frm原料入庫作業"_s, true, u"物料"_s, {}, u"倉儲"_s},
        {u"浪紙入庫作業"_s, u"frm原料入庫作業"_s, true, u"紙板"_s, {}, u"倉儲"_s},
        {u"紙板退料作業"_s, u"frm紙板退料作業"_s, true, u"紙板"_s, {}, u"倉儲"_s},
        {u"凸版入庫作業"_s, u"frm原料入庫作業"_s, true, u"凸版"_s, {}, u"倉儲"_s},
        {u"物料採購作業"_s, u"frm採購作業系統"_s, true, u"物料"_s, {}, u"採購"_s},
        {u"紙板採購作業"_s, u"frm採購作業系統"_s, true, u"紙板"_s, {}, u"採購"_s},
        {u"凸版採購作業"_s, u"frm採購作業系統"_s, true, u"凸版"_s, {}, u"採購"_s},
        {u"物料領料作業"_s, u"frm領料作業系統"_s, true, u"物料"_s, {}, u"倉儲"_s},
        {u"浪紙領料作業"_s, u"frm領料作業系統"_s, true, u"紙板"_s, {}, u"倉儲"_s},
        {u"單位換算公式"_s, u"frm原料計價公式"_s, false, {}, u"單位換算"_s, u"公式"_s},
        {u"原料計價公式"_s, u"frm原料計價公式"_s, false, {}, u"計價公式"_s, u"公式"_s},
        {u"採購明細表"_s, u"frm採購明細表"_s, false, {}, {}, u"採購"_s},
        {u"採購未到料"_s, u"frm採購未到料明細"_s, false, {}, {}, u"採購"_s},
    };
    return table;
}

const LaunchTarget* launchTarget(const QString& function) {
    const auto& table = launchTable();
    const auto found = std::find_if(table.begin(), table.end(),
                                    [&](const LaunchTarget& row) { return row.function == function; });
    return found == table.end() ? nullptr : &*found;
}

} // namespace liaowu
