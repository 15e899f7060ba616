#pragma once
#include "common/refusal.h"
#include <optional>

namespace liaowu {

/// What tells one stored version of a document from another. The clock counts seconds, so the person goes with the time.
struct DocumentStamp {
    QString 修改人, 修改時間;      ///< of the last change
    QString mark;                  ///< 審單 or 審核, "Y" or anything else
    QString approver, approvedOn;  ///< who set the mark

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

} // namespace liaowu
