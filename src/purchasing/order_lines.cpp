#include "purchasing/order_lines.h"
#include <algorithm>

namespace liaowu {

QStringList textsOf(const OrderLine& line) {
    QStringList texts;
    for (const OrderLineColumn& column : OrderLineColumns) texts << line.*column.member;
    return texts;
}

OrderLine lineOf(const QStringList& texts) {
    OrderLine line;
    for (size_t i = 0; i < OrderLineColumns.size(); ++i) line.*OrderLineColumns[i].member = texts.value(static_cast<qsizetype>(i));
    return line;
}

bool isBlank(const OrderLine& line) {
    return std::all_of(OrderLineColumns.begin(), OrderLineColumns.end(),
                       [&](const OrderLineColumn& column) { return (line.*column.member).trimmed().isEmpty(); });
}

} // namespace liaowu
