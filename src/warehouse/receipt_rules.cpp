#include "warehouse/receipt_rules.h"
#include "common/text_values.h"

namespace liaowu {

using namespace Qt::StringLiterals;

std::optional<Finding> checkReceiptDate(const ReceiptHeader& header) {
    if (header.入庫日期.trimmed().isEmpty())
        return Finding{u"錯誤"_s, u"「入庫日期」欄位不允許空白!"_s, u"txt入庫日期"_s};
    if (validDate8(header.入庫日期) != 0)
        return Finding{u"錯誤"_s, u"「入庫日期」日期輸入錯誤!"_s, u"txt入庫日期"_s};
    return std::nullopt;
}

std::optional<Finding> checkReceiptHeader(const ReceiptHeader& header) {
    if (header.入庫單號.trimmed().isEmpty())
        return Finding{u"錯誤"_s, u"「入庫單號」欄位不可為空白!"_s, u"txt入庫單號"_s};
    if (validDate8(QString(header.付款年月 + u"01"_s)) != 0)
        return Finding{u"錯誤"_s, u"「付款日期」日期輸入錯誤!"_s, u"txt付款年月"_s};
    if (validDate8(QString(header.對帳日期 + u"01"_s)) != 0)
        return Finding{u"錯誤"_s, u"「對帳月份」日期輸入錯誤!"_s, u"txt對帳日期"_s};
    return std::nullopt;
}

PaymentMonths paymentMonths(const VendorTerms& terms, const QString& date, const QString& today) {
    const QString month = date.left(6);
    if (terms.付款方式.trimmed() == u"現金") return {month, month};
    const bool next = terms.結帳日.trimmed() == u"25日結帳" && val(date.mid(6, 2)) > 25;
    const QString reconciled = next ? firstOfNextMonth(date).left(6) : month;
    QDate start = dateOf8(reconciled + u"01"_s);
    if (!start.isValid()) start = dateOf8(today);
    return {reconciled, date8(start.addDays(static_cast<int>(val(terms.付款天數)))).left(6)};
}

QString signedQuantity(const QString& typed, const QString& kind) {
    const QString text = typed.trimmed();
    if (!isReturnKind(kind) || text.isEmpty() || text.startsWith(u'-')) return text;
    return u'-' + text;
}

ReceiptLine normalizedForStore(const ReceiptLine& line, bool canSeePrice) {
    ReceiptLine result = line;
    if (!canSeePrice) {
        result.單價 = line.原單價;
        result.小計 = line.原小計;
    }
    static constexpr QString ReceiptLine::*numbers[] = {&ReceiptLine::數量,   &ReceiptLine::備品,
                                                        &ReceiptLine::單價,   &ReceiptLine::小計,
                                                        &ReceiptLine::走紙才, &ReceiptLine::入庫數量};
    for (const auto& column : ReceiptLineColumns)
        result.*column.member = (result.*column.member).trimmed();
    for (const auto member : numbers)
        result.*member = numberText(val(result.*member));
    return result;
}

} // namespace liaowu
