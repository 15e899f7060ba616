#include "common/document_stamp.h"

namespace liaowu {

using namespace Qt::StringLiterals;

QString documentStamp(const QString& changedAt, const QString& mark) {
    return changedAt + u'|' + (mark == u"Y" ? u"Y"_s : u"N"_s);
}

std::optional<SaveConflict> changedSince(const Recordset& header, const QString& markColumn,
                                         const QString& loadedStamp) {
    const auto text = [&](const QString& column) { return header.text(column).trimmed(); };
    const QString changedAt = text(u"修改時間"_s);
    if (documentStamp(changedAt, text(markColumn)) == loadedStamp) return std::nullopt;
    // A mark set from outside of the screen leaves its own person and day.
    const QString approver = text(markColumn + u'人');
    if (loadedStamp.startsWith(changedAt + u'|') && !approver.isEmpty())
        return SaveConflict{approver, text(markColumn + u"日期"_s)};
    return SaveConflict{text(u"修改人"_s), changedAt};
}

} // namespace liaowu
