#pragma once
#include "common/refusal.h"
#include "common/session.h"
#include "purchasing/requisition_lines.h"
#include <optional>

namespace liaowu {

class Connection;

/// A requisition as read: header, and lines by 序 with the number column empty, as the grid shows them.
struct RequisitionDocument {
    RequisitionHeader header;
    RequisitionLines lines;
    QString stamp; ///< tells this version of the document
};
std::optional<RequisitionDocument> loadRequisition(Connection& connection, const QString& number);

struct RequisitionSave {
    RequisitionHeader header;
    RequisitionLines lines; ///< gets the dates and numbers that were written
    bool isNew = false;
    QString lastDocumentNumber;
    QString loadedStamp;
    bool mayApprove = false; ///< holds the 審單 or the 批轉 right
    bool overwrite = false;
};

/// Two rows with the same item speak against a save: an order line could not tell them apart.
std::optional<Finding> checkRequisitionLines(const RequisitionLines& lines);

/// Writes a requisition in one transaction. A line's date that is empty or no date takes the header's; lines are numbered
/// from 1; 已采購數 is taken from the stored line of the same item, so that an order saved meanwhile is not lost. Gives a
/// conflict, with nothing written, when the stored header was changed since it was loaded and `overwrite` is off.
/// Throws `DatabaseError` and `Refusal`. Writes 原料申購資料 and 原料申購明細.
std::optional<SaveConflict> saveRequisition(Session& session, RequisitionSave& save);

/// Deletes a requisition and its lines; refuses an approved one when approval is in force.
void deleteRequisition(Session& session, const QString& number);

} // namespace liaowu
