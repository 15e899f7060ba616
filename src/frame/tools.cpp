#include "frame/tools.h"
#include <algorithm>
#include <stdexcept>

namespace liaowu {

namespace {

struct ToolRow {
    const char16_t *key, *caption, *shortcut, *icon;
    unsigned enabledIn;
};

constexpr ToolRow table[] = {
    {u"add", u"新增", u"F1", u"add", Always},
    {u"edit", u"修改", u"", u"edit", Always},
    {u"del", u"刪除", u"F3", u"delete", InEdit},
    {u"search", u"查詢", u"F2", u"search", Always},
    {u"save", u"儲存", u"F8", u"save", InAdd | InEdit | InBatch},
    {u"first", u"第一筆", u"", u"first", InEdit},
    {u"previous", u"上一筆", u"PgUp", u"previous", InEdit},
    {u"next", u"下一筆", u"PgDn", u"next", InEdit},
    {u"last", u"最末筆", u"", u"last", InEdit},
    {u"審單", u"審單", u"F12", u"approve", InEdit},
    {u"審核", u"審核", u"F12", u"approve", InEdit},
    {u"批審", u"批審", u"F11", u"batch", InEdit | InBatch},
    {u"整批審單", u"整批審單", u"F11", u"batch", Always},
    {u"reload", u"還原", u"F5", u"reload", InEdit},
    {u"詢價記錄", u"詢價記錄", u"", u"history", InEdit},
    {u"print", u"列印", u"F4", u"print", Always},
    {u"exit", u"離開", u"Esc", u"exit", Always},
};

} // namespace

std::vector<Tool> toolsOf(const std::vector<QString>& keys) {
    std::vector<Tool> tools;
    for (const QString& key : keys) {
        if (key == u"|") {
            tools.push_back({key, {}, {}, {}, Always});
            continue;
        }
        const auto row =
            std::find_if(std::begin(table), std::end(table), [&](const ToolRow& r) { return key == r.key; });
        if (row == std::end(table)) throw std::logic_error("no toolbar key " + key.toStdString());
        tools.push_back({key, QString::fromUtf16(row->caption), QString::fromUtf16(row->shortcut),
                         QString::fromUtf16(row->icon), row->enabledIn});
    }
    return tools;
}

QString toolOfFunctionKey(const std::vector<QString>& keys, int key) {
    if (key < Qt::Key_F1 || key > Qt::Key_F35) return {};
    const QString pressed = QStringLiteral("F%1").arg(key - Qt::Key_F1 + 1);
    for (const ToolRow& row : table)
        if (const QString tool = QString::fromUtf16(row.key);
            pressed == row.shortcut && std::find(keys.begin(), keys.end(), tool) != keys.end())
            return tool;
    return {};
}

ModeBit modeBit(const QString& mode) {
    if (mode == ModeAdd) return InAdd;
    if (mode == ModeSearch) return InSearch;
    if (mode == ModePrint) return InPrint;
    if (mode == ModeBatch) return InBatch;
    return InEdit;
}

} // namespace liaowu
