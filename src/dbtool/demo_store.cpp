#include "dbtool/demo_store.h"
#include <algorithm>
#include <cmath>

namespace liaowu::demo {

using namespace Qt::StringLiterals;

QString WorkDay::prefix() const {
    return date.toString(u"yyMMdd"_s);
}

QString WorkDay::stamp(int at, int count) const {
    const QTime time = QTime(8, 20).addSecs(at * 30000 / std::max(count, 1));
    return date.toString(u"yyyy-MM-dd"_s) + u' ' + time.toString(u"hh:mm:ss"_s);
}

namespace {

/// The bin of the oldest row is emptied oldest first; what it lacks is taken from no bin.
void takeFromBins(Item& item, IssueLine& line) {
    line.bin = item.bins.front().bin;
    double wanted = line.quantity;
    for (BinRow& row : item.bins) {
        if (row.bin != line.bin || wanted <= 0) continue;
        const double taken = std::min(row.left, wanted);
        row.left -= taken;
        row.taken += taken;
        wanted -= taken;
        line.takes.push_back({row.receipt, taken});
    }
    item.bins.erase(
        std::remove_if(item.bins.begin(), item.bins.end(), [](const BinRow& row) { return row.left <= 0; }),
        item.bins.end());
}

} // namespace

void Store::startDay(const WorkDay& today) {
    day = today;
    receiptsToday = returnsToday = issuesToday = 0;
}

void Store::expect(int order) {
    const QDate arrival = plant.order(order).lines.front().delivery.addDays(dice.between(-3, 6));
    const double u = dice.unit();
    if (u < 0.80) {
        due[std::max(arrival, day.date.addDays(1))].push_back({order});
    } else if (u < 0.92) {
        due[arrival].push_back({order, 0.6});
        due[arrival.addDays(dice.between(5, 12))].push_back({order});
    } else if (u < 0.96) {
        due[arrival].push_back({order, 0.5});
        due[arrival.addDays(20)].push_back({order, 0, true});
    } else if (u < 0.98) {
        due[arrival.addDays(30)].push_back({order, 0, true});
    }
}

void Store::takeDeliveries() {
    while (!due.empty() && due.begin()->first <= day.date) {
        const std::vector<Delivery> arrived = std::move(due.begin()->second);
        due.erase(due.begin());
        for (std::size_t i = 0; i < arrived.size(); ++i)
            take(arrived[i], day.stamp(static_cast<int>(i), static_cast<int>(arrived.size())));
    }
}

void Store::take(const Delivery& delivery, const QString& time) {
    if (delivery.closes) {
        for (OrderLine& line : plant.order(delivery.order).lines)
            line.closed = line.closed || line.open() > 0;
        return;
    }
    if (delivery.sendsBack) return sendBack(delivery.order, time);
    Order& order = plant.order(delivery.order);
    Receipt receipt = newReceipt(delivery.order, time);
    receipt.number = day.prefix() + padded(++receiptsToday, 4);
    receipt.kind = u"采購入庫"_s;
    if (dice.chance(0.92)) receipt.bin = dice.below(sizeOf(plant.bins) - 1);
    for (int i = 0; i < sizeOf(order.lines); ++i) {
        const OrderLine& line = order.lines[static_cast<std::size_t>(i)];
        const double quantity = delivery.part < 1 ? std::floor(line.open() * delivery.part) : line.open();
        if (quantity <= 0) continue;
        const bool spares = order.family == Family::Material && dice.chance(0.04);
        receipt.lines.push_back({delivery.order, i, quantity, spares ? 1.0 : 0.0, 0});
    }
    if (receipt.lines.empty()) {
        --receiptsToday;
        return;
    }
    if (order.family == Family::Material && dice.chance(0.01)) {
        receipt.inspection = u"QC"_s + receipt.number;
        receipt.kind = u"檢驗入庫"_s;
    }
    post(std::move(receipt));
    const bool board = order.family == Family::Board;
    if ((board && dice.chance(0.02)) || (order.family == Family::Material && dice.chance(0.006))) {
        Delivery back;
        back.order = delivery.order;
        back.sendsBack = true;
        due[day.date.addDays(dice.between(2, 9))].push_back(back);
    }
}

Receipt Store::newReceipt(int order, const QString& time) {
    Receipt receipt;
    receipt.created = time;
    receipt.date = day.date;
    receipt.order = order;
    receipt.clerk = 5 + dice.below(3);
    receipt.approved = day.approved(dice);
    return receipt;
}

/// Board goes back on the return screen, with a T in its number and no stock; materials on the receipt screen.
void Store::sendBack(int number, const QString& time) {
    Order& order = plant.order(number);
    const int i = dice.below(sizeOf(order.lines));
    const OrderLine& line = order.lines[static_cast<std::size_t>(i)];
    const double quantity = std::floor(line.received / 5);
    if (quantity < 1) return;
    const bool board = order.family == Family::Board;
    if (!board && plant.item(line.item).stock < quantity) return;
    Receipt receipt = newReceipt(number, time);
    receipt.kind = u"退貨"_s;
    receipt.number =
        board ? day.prefix() + u'T' + padded(++returnsToday, 4) : day.prefix() + padded(++receiptsToday, 4);
    receipt.lines.push_back({number, i, -quantity, 0, 0});
    post(std::move(receipt));
}

void Store::post(Receipt receipt) {
    const Order& order = plant.order(receipt.order);
    const bool stocked = order.family == Family::Board || order.family == Family::Material;
    for (ReceiptLine& arrived : receipt.lines) {
        OrderLine& line = plant.order(receipt.order).lines[static_cast<std::size_t>(arrived.orderLine)];
        Item& item = plant.item(line.item);
        arrived.amount = amountOf(item, arrived.quantity, line.price).amount;
        line.received += arrived.quantity;
        if (arrived.quantity < 0) line.closed = false;
        if (!stocked || receipt.number.contains(u'T')) continue;
        const double pieces =
            order.family == Family::Board ? arrived.quantity * line.cuts : arrived.quantity + arrived.spare;
        item.stock += pieces;
        item.moved = day.date;
        if (receipt.bin < 0) continue;
        // Two lines of one item share the bin row of their receipt.
        if (!item.bins.empty() && item.bins.back().receipt == receipt.number) {
            item.bins.back().left += pieces;
        } else {
            item.bins.push_back({receipt.bin, receipt.number, receipt.created, pieces, 0});
        }
    }
    plant.receipts.push_back(std::move(receipt));
}

void Store::makeIssue(const QString& time) {
    Issue issue;
    issue.family = dice.chance(0.5) ? Family::Board : Family::Material;
    issue.posted = day.left > 5 || !dice.chance(0.08);
    const int count = dice.between(1, 5);
    for (int i = 0; i < count; ++i)
        addIssueLine(issue);
    if (issue.lines.empty()) return;
    issue.number = day.prefix() + padded(++issuesToday, 4);
    issue.created = time;
    issue.date = day.date;
    issue.kind = dice.chance(0.9) ? u"領料"_s : u"補料"_s;
    issue.department = plant.departments[static_cast<std::size_t>(dice.below(3))];
    issue.machine = dice.pick(plant.machines);
    if (issue.family == Family::Board && !plant.workOrders.empty())
        issue.workOrder =
            plant.workOrders[static_cast<std::size_t>(dice.below(sizeOf(plant.workOrders)))].number;
    issue.storekeeper = 5 + dice.below(3);
    issue.taker = 8 + dice.below(3);
    issue.approved = issue.posted && day.approved(dice);
    plant.issues.push_back(std::move(issue));
}

void Store::addIssueLine(Issue& issue) {
    for (int attempt = 0; attempt < 6; ++attempt) {
        const int position = plant.someItem(dice, issue.family);
        Item& item = plant.item(position);
        const double most = std::floor(item.stock);
        if (most < 2) continue;
        IssueLine line;
        line.item = position;
        line.quantity = std::max(1.0, std::floor(most * (0.04 + 0.4 * dice.unit())));
        if (issue.posted) {
            item.stock -= line.quantity;
            item.moved = day.date;
            if (!item.bins.empty() && dice.chance(0.85)) takeFromBins(item, line);
        }
        issue.lines.push_back(std::move(line));
        return;
    }
}

void Store::closeMonth() {
    for (Item& item : plant.items)
        item.closing = item.stock;
}

} // namespace liaowu::demo
