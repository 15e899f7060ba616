#pragma once
#include "common/refusal.h"
#include "warehouse/receipt_lines.h"
#include <optional>

namespace liaowu {

/// The date is there and is one.
std::optional<Finding> checkReceiptDate(const ReceiptHeader& header);
/// Number, month of payment and month of reconciliation, in this order.
std::optional<Finding> checkReceiptHeader(const ReceiptHeader& header);

/// How a vendor is paid: 付款方式, 結帳日, 付款天數.
struct VendorTerms {
    QString 付款方式, 結帳日, 付款天數;
};
/// Months YYYYMM.
struct PaymentMonths {
    QString reconciled, paid;
};
/// 對帳日期 and 付款年月 of what came on `date`; `today` stands in where the date is none. Both YYYYMMDD.
PaymentMonths paymentMonths(const VendorTerms& terms, const QString& date, const QString& today);

/// A typed quantity as the document's 單別 has it: one that sends back takes one minus sign.
QString signedQuantity(const QString& typed, const QString& kind);

/// Texts that stand in the number columns of 原料入庫明細 as numbers, the real money in the place of the visible.
ReceiptLine normalizedForStore(const ReceiptLine& line, bool canSeePrice);

} // namespace liaowu
