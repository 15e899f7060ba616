#include "purchasing/order_rules.h"
#include "common/text_values.h"
#include "purchasing/order_pricing.h"
#include <QHash>
#include <algorithm>

namespace liaowu {

using namespace Qt::StringLiterals;

std::optional<Finding> checkOrderLines(const OrderLines& lines) {
    for (size_t i = 0; i < lines.size(); ++i) {
        const OrderLine& line = lines[i];
        const int row = static_cast<int>(i) + 1;
        const auto finding = [&](const QString& what, const QString& column) {
            return Finding{u"錯誤"_s, u"第%1行明細%2"_s.arg(row).arg(what), {}, row, column};
        };
        if (line.原料代號.trimmed().isEmpty() && line.原料名稱.trimmed().isEmpty())
            return finding(u"「原料代號及名稱」不能為空!"_s, u"代號"_s);
        if (line.單位.trimmed().isEmpty()) return finding(u"「單位」不能為空!"_s, u"單位"_s);
        if (val(line.寬剖) == 0) return finding(u"「走紙才」不能為零!"_s, u"走紙才"_s);
        if (val(line.數量) == 0) return finding(u"「採購數量」不能為空!"_s, u"大紙數"_s);
    }
    return std::nullopt;
}

void numberOrderLines(OrderLines& lines, double receivedHigh) {
    double high = receivedHigh;
    for (const OrderLine& line : lines)
        high = std::max(high, val(line.序));
    for (OrderLine& line : lines)
        if (val(line.序) <= 0) line.序 = numberText(++high);
}

namespace {

using LineByNumber = QHash<double, const OrderLine*>;

LineByNumber byNumber(const OrderLines& lines) {
    LineByNumber result;
    for (const OrderLine& line : lines)
        if (const double number = val(line.序); number > 0 && !result.contains(number))
            result.insert(number, &line);
    return result;
}

} // namespace

void mergeWarehouseColumns(OrderLines& lines, const OrderLines& loaded, const OrderLines& stored) {
    const LineByNumber storedBy = byNumber(stored);
    const LineByNumber loadedBy = byNumber(loaded);
    for (OrderLine& line : lines) {
        const double number = val(line.序);
        const OrderLine* kept = storedBy.value(number);
        if (!kept) continue;
        const OrderLine* before = loadedBy.value(number);
        const bool typed = before && val(before->已入庫數) != val(line.已入庫數);
        if (!typed) line.已入庫數 = kept->已入庫數;
        line.已檢驗數 = kept->已檢驗數;
        line.檢驗合格數 = kept->檢驗合格數;
        line.未交數 = numberText(openQuantity(line));
        const bool changedHere = before && before->送清.trimmed() != line.送清.trimmed();
        if (!changedHere) line.送清 = kept->送清;
    }
}

std::vector<RequisitionChange> requisitionChanges(const OrderLines& lines, const OrderLines& stored) {
    std::vector<RequisitionChange> changes;
    QHash<std::pair<QString, QString>, size_t> place;
    const auto add = [&](const OrderLine& line, double sign) {
        const QString number = line.請購單號.trimmed();
        const QString code = line.原料代號.trimmed();
        if (number.isEmpty() || code.isEmpty()) return;
        const auto key = std::pair(number, code);
        if (!place.contains(key)) {
            place.insert(key, changes.size());
            changes.push_back({number, code, 0});
        }
        changes[place.value(key)].quantity += sign * val(line.數量);
    };
    for (const OrderLine& line : stored)
        add(line, -1);
    for (const OrderLine& line : lines)
        add(line, 1);
    for (RequisitionChange& change : changes)
        change.quantity = settled(change.quantity);
    std::erase_if(changes, [](const RequisitionChange& change) { return change.quantity == 0; });
    return changes;
}

OrderLine normalizedForStore(const OrderLine& line, bool canSeePrice) {
    OrderLine result = line;
    if (!canSeePrice) {
        result.單價 = line.原單價;
        result.小計 = line.原小計;
    }
    static constexpr QString OrderLine::*numbers[] = {
        &OrderLine::數量,   &OrderLine::單價,     &OrderLine::小計,
        &OrderLine::寬剖,   &OrderLine::小紙數,   &OrderLine::已入庫數,
        &OrderLine::未交數, &OrderLine::已檢驗數, &OrderLine::檢驗合格數};
    for (const auto member : numbers)
        result.*member = numberText(val(result.*member));
    return result;
}

} // namespace liaowu
