#pragma once
#include "common/refusal.h"
#include "common/session.h"
#include "warehouse/receipt_lines.h"
#include <optional>

namespace liaowu {

class Connection;

/// A receipt as read: header, lines by 序 with the visible money masked without `canSeePrice`.
struct ReceiptDocument {
    ReceiptHeader header;
    ReceiptLines lines;
    QString stamp; ///< tells this version of the document
};
/// Reads 原料入庫資料, 原料入庫明細 and 廠商資料. Nothing when there is no such document. Throws `DatabaseError`.
std::optional<ReceiptDocument> loadReceipt(Connection& connection, const QString& number, bool canSeePrice);

/// All that a save needs to know.
struct ReceiptSave {
    ReceiptHeader header; ///< 入庫單號 settled; 合計 is the real total
    ReceiptLines lines;   ///< as on the screen
    ReceiptLines saved;   ///< as last loaded or saved: what is undone before `lines` are posted
    bool isNew = false;
    QString savedNumber;
    QString loadedStamp; ///< the version that was loaded; becomes the one that was written
    bool canSeePrice = false;
    bool mayApprove = false; ///< holds the 審核 or the 批核 right
    bool overwrite = false;  ///< write over what another user saved meanwhile
};

/// Writes a receipt in one transaction and posts it: undoes the saved lines, writes header and lines, posts the lines to
/// 庫存, order lines and bins. An order line whose 已入庫數 comes out unchanged keeps its 送清. Gives a conflict, with nothing
/// written, when the stored header was changed since it was loaded and `overwrite` is off; with it, what is undone are
/// the stored lines. Throws `DatabaseError` and `Refusal`; then nothing is written either. Sets 審核日期 of the
/// header as written.
std::optional<SaveConflict> saveReceipt(Session& session, ReceiptSave& save);

/// Whether the stored document bears the approval mark.
bool isReceiptApproved(Connection& connection, const QString& number);

/// Deletes a receipt, its bins and its print rows, and undoes what its lines posted: those of `saved`, or the stored ones when
/// somebody has saved since `loadedStamp`. Throws `DatabaseError`, and `Refusal` for an approved document.
void deleteReceipt(Session& session, const QString& number, const ReceiptLines& saved,
                   const QString& loadedStamp);

} // namespace liaowu
