#pragma once
#include "warehouse/stock_posting.h"

namespace liaowu {

class Connection;

/// Bins are kept with the stock, in the same transaction. A row of 原料板位明細 says what of a receipt is left in its bin
/// (入庫數) and what was taken (領料數); 料務_板位異動 says which issue line took it. A database without that table has its
/// bins from elsewhere.
bool keepsBins(Connection& connection);

/// The bins of a receipt's lines before and after a save. Posts nothing for a document without 倉別.
struct BinReceipt {
    StockDocument document = StockDocument::Receipt;
    QString number, category;
    QString bin; ///< 倉別 of the document
    const ReceiptLines* lines = nullptr;
};
/// Changes the rows of a receipt from `before` to `after` by the difference of each item; when the receipt went to another
/// bin, what issues took goes along. Runs when the lines are written. Reads 原料入庫資料, 原料入庫明細 and 料務_板位異動, writes
/// 原料板位明細 and 料務_板位異動. Throws `DatabaseError`.
void postReceiptBins(Connection& connection, const BinReceipt& before, const BinReceipt& after);

/// An issue line as bins see it; 數量 in stock units.
struct BinIssue {
    QString 領料單號;
    int 序 = 0;
    QString 類別, 原料代號, 儲位;
    double 數量 = 0;
};
/// Takes from the oldest rows of the line's bin and records it; what no row holds is not recorded.
void takeFromBins(Connection& connection, const BinIssue& line);
/// Gives back all that the line took. A row that was used up and cleaned away comes back. Runs while the lines of all issues
/// still stand, which tell what else was taken.
void giveBackToBins(Connection& connection, const BinIssue& line);

} // namespace liaowu
