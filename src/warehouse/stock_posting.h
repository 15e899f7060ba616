#pragma once
#include "warehouse/receipt_lines.h"

namespace liaowu {

class Connection;

/// What moves stock: a receipt, an issue, or a return, which moves the order line only.
enum class StockDocument { Receipt, Issue, Return };

/// The kind of a document of 原料入庫資料. One of a returning 單別 with a number without "T" was made on the receipt screen
/// and moves stock as a receipt does.
StockDocument stockDocumentOf(const QString& number, const QString& kind);

/// Whether documents of this family move 庫存; the others move the order line only.
bool keepsStock(const QString& category);

/// What a receipt line adds to 庫存, in the stock unit: board its 入庫數量, materials 數量 + 備品, all else nothing.
double receiptEffect(StockDocument document, const QString& category, const ReceiptLine& line);

// Each runs once for a line, on the document's connection and inside its transaction. An item or an order line that is not
// there is passed over. All throw `DatabaseError`.

/// 庫存 of 浪紙資料 or 物料資料 rises by the line's effect, 異動日期 takes the document's date (YYYYMMDD).
void postReceiptItem(Connection& connection, StockDocument document, const QString& category,
                     const QString& date, const ReceiptLine& line);
/// 庫存 falls by what the line added when it was saved; 異動日期 stays.
void reverseReceiptItem(Connection& connection, StockDocument document, const QString& category,
                        const ReceiptLine& line);

// A line of quantity 0 leaves its order line alone, so that nobody opens one closed by hand with nothing.

/// 已入庫數 of the order line rises by 數量; 未交數 and 送清 follow. Throws `Refusal` when more came than was ordered; `row` is
/// the line's number from 1.
void postOrderLine(Connection& connection, const ReceiptLine& line, int row);
/// 已入庫數 falls by 數量; 未交數 and 送清 follow.
void reverseOrderLine(Connection& connection, const ReceiptLine& line);

/// What an issue takes of an item, in its stock unit.
struct IssuedItem {
    QString 原料代號;
    double 實領數 = 0;
};
/// 庫存 falls by 實領數, 異動日期 takes the document's date.
void postIssueItem(Connection& connection, const QString& category, const QString& date,
                   const IssuedItem& line);
/// 庫存 rises by the 實領數 saved before.
void reverseIssueItem(Connection& connection, const QString& category, const IssuedItem& line);

/// What speaks against an issue.
struct IssueCheck {
    QString rows;             ///< numbers of the rows, each as " [n] "; empty when all is well
    bool belowSafety = false; ///< some row only goes below the safety level: a question, else a refusal
};
/// Looks whether stock suffices for `lines`, given back what the document holds as `stored`. Rows of one item count together.
IssueCheck checkIssueStock(Connection& connection, const QString& category,
                           const std::vector<IssuedItem>& lines, const std::vector<IssuedItem>& stored);

} // namespace liaowu
