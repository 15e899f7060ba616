#pragma once
#include "common/refusal.h"
#include "common/session.h"
#include "purchasing/order_lines.h"
#include <optional>

namespace liaowu {

class Connection;

/// What the vendor's row adds to a document on show.
struct VendorFacts {
    QString 經驗傳承, 廠商簡稱, 付款天數, 分數;
};

/// A purchase order as read: header, lines by 序 with the visible money masked without `canSeePrice`, vendor facts when
/// the vendor row exists.
struct OrderDocument {
    OrderHeader header;
    OrderLines lines;
    std::optional<VendorFacts> vendor;
};

/// Reads 採購資料, 採購明細資料 and 廠商資料. Nothing when there is no such order. Throws `DatabaseError`.
std::optional<OrderDocument> loadOrder(Connection& connection, const QString& number, bool canSeePrice);

/// All that a save needs to know.
struct OrderSave {
    OrderHeader header; ///< 採購單號 settled; 合計 is the real total
    OrderLines lines;   ///< as on the screen; gets the numbers and warehouse columns that were written
    OrderLines loaded;  ///< as last loaded or saved
    bool isNew = false;
    QString lastDocumentNumber; ///< number of the stored document
    QString loadedStamp;        ///< `stampOf` the header as loaded
    bool canSeePrice = false;
    bool mayApprove = false; ///< holds the 審單 or the 批轉 right
    bool overwrite = false;  ///< write over what another user saved meanwhile
};

/// What tells that a stored header is the one that was loaded.
QString stampOf(const OrderHeader& header);

/// Writes a purchase order in one transaction: header, lines, quantities of the requisition lines they came from, prices to
/// the item master and the price history. Gives a conflict, with nothing written, when the stored header was changed
/// since it was loaded and `overwrite` is off. Throws `DatabaseError` and `Refusal`; then nothing is written either.
/// Writes 採購資料, 採購明細資料, 原料申購明細, 歷史單價記錄 and the item table; deletes from 詢價明細資料 and 詢價單價記錄.
std::optional<SaveConflict> saveOrder(Session& session, OrderSave& save);

/// Deletes an order and its lines, and takes its quantities off the requisition lines. Refuses an approved order, when
/// approval is in force, and one with receipts. Throws `DatabaseError` and `Refusal`.
void deleteOrder(Session& session, const QString& number);

/// Whether receipts hold lines of this order.
bool orderHasReceipts(Connection& connection, const QString& number);

} // namespace liaowu
