#pragma once
#include "common/refusal.h"
#include <optional>

namespace liaowu {

/// What tells one stored version of a document from another. The clock counts seconds, so the person goes with the time.
struct DocumentStamp {
    QString 修改人, 修改時間;     ///< of the last change
    QString mark;                 ///< 審單 or 審核, "Y" or anything else
    QString approver, approvedOn; ///< who set the mark

    /// The version as a text, to be kept while the document is on show.
    QString text() const { return change() + (mark == u"Y" ? u'Y' : u'N'); }

    /// Who saved after the version `loaded`; nothing when that version still stands.
    std::optional<SaveConflict> since(const QString& loaded) const {
        if (text() == loaded) return std::nullopt;
        // A mark set from outside of the screen leaves its own person and day.
        if (loaded.startsWith(change()) && !approver.isEmpty()) return SaveConflict{approver, approvedOn};
        return SaveConflict{修改人, 修改時間};
    }

private:
    QString change() const { return 修改時間 + u'|' + 修改人 + u'|'; }
};

/// The version that the current row of a header holds; `markColumn` is 審單 or 審核.
template <typename Rows>
DocumentStamp storedStamp(const Rows& header, const QString& markColumn) {
    const auto text = [&](const QString& column) { return header.text(column).trimmed(); };
    return {text(QStringLiteral("修改人")), text(QStringLiteral("修改時間")), text(markColumn),
            text(markColumn + u'人'), text(markColumn + QStringLiteral("日期"))};
}

} // namespace liaowu
