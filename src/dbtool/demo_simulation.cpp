#include "dbtool/demo_plant.h"
#include <algorithm>
#include <cmath>
#include <deque>
#include <map>

namespace liaowu::demo {

using namespace Qt::StringLiterals;

namespace {

template <typename T> int sizeOf(const std::vector<T>& list) { return static_cast<int>(list.size()); }

std::vector<QDate> workdays() {
    std::vector<QDate> days;
    for (QDate day = FirstDay; day < Today; day = day.addDays(1))
        if (day.dayOfWeek() != Qt::Sunday) days.push_back(day);
    return days;
}

/// How many of `total` fall on day `index` of `days`, spread evenly.
int share(double total, std::size_t index, std::size_t days) {
    const auto until = [&](std::size_t day) { return std::floor(total * static_cast<double>(day) / static_cast<double>(days)); };
    return static_cast<int>(until(index + 1) - until(index));
}

/// A delivery that is on its way.
struct Delivery {
    int order = 0;
    double part = 1;        ///< of what is still open
    bool closes = false;    ///< the rest will never come: the lines are closed by hand
    bool sendsBack = false; ///< what came is faulty and goes back
};

/// Items of a family lie side by side in the plant.
struct Range {
    int first = 0, count = 0;
};

class Simulation {
public:
    Simulation(Plant& subject, Dice& chance, double size) : plant(subject), dice(chance), scale(size) {
        for (int i = 0; i < sizeOf(plant.items); ++i) {
            Range& range = ranges[plant.item(i).family];
            if (range.count++ == 0) range.first = i;
            groups[{plant.item(i).family, plant.item(i).group}].push_back(i);
        }
    }

    void run() {
        const std::vector<QDate> days = workdays();
        for (index = 0; index < days.size(); ++index) {
            if (today.isValid() && today.month() != days[index].month() && today <= LastClosed) closeMonth();
            today = days[index];
            left = static_cast<int>(days.size() - index);
            serial = {};
            const auto each = [&](double total, auto&& make) {
                const int count = share(total * scale, index, days.size());
                for (int i = 0; i < count; ++i) make(stamp(i, count));
            };
            each(1500, [&](const QString& time) { makeRequisition(time); });
            each(2000, [&](const QString& time) { makeOrder(time); });
            takeDeliveries();
            each(1600, [&](const QString& time) { makeIssue(time); });
        }
        makeOpenWorkOrders();
        makeTracking();
    }

private:
    Plant& plant;
    Dice& dice;
    const double scale;
    std::map<Family, Range> ranges;
    std::map<std::pair<Family, int>, std::vector<int>> groups;
    std::map<Family, std::deque<int>> waiting; ///< approved requisitions with something left to order
    std::map<QDate, std::vector<Delivery>> due;
    std::map<QDate, int> workOrdersOf;
    QDate today;
    std::size_t index = 0;
    int left = 0; ///< working days from today to the end
    struct Serials {
        int requisition = 0, order = 0, receipt = 0, giveBack = 0, issue = 0;
    } serial;

    QString prefix() const { return today.toString(u"yyMMdd"_s); }
    QString stamp(int at, int count) const {
        const QTime time = QTime(8, 20).addSecs(at * 30000 / std::max(count, 1));
        return today.toString(u"yyyy-MM-dd"_s) + u' ' + time.toString(u"hh:mm:ss"_s);
    }
    static QString padded(int number, int width) { return u"%1"_s.arg(number, width, 10, QChar(u'0')); }

    int someItem(Family family) { return ranges[family].first + dice.skewed(ranges[family].count); }
    int anotherOf(int vendor) {
        const std::vector<int>& items = plant.vendor(vendor).items;
        return items[static_cast<std::size_t>(dice.skewed(sizeOf(items)))];
    }
    double someQuantity(const Item& item) {
        const int lots = item.family == Family::Board ? dice.between(2, 40) : dice.between(1, 20);
        return item.lot * lots;
    }
    /// Nearly everything is approved within days; of the latest documents many still wait.
    bool approvedByNow() { return dice.chance(left > 12 ? 0.975 : 0.45); }

    void makeRequisition(const QString&) {
        Requisition requisition;
        requisition.number = prefix() + padded(++serial.requisition, 4);
        requisition.family = dice.chance(0.42) ? Family::Board : Family::Material;
        requisition.date = today;
        requisition.clerk = 5 + dice.below(3);
        requisition.approved = approvedByNow();
        int item = someItem(requisition.family);
        const int vendor = plant.item(item).vendor;
        const int count = dice.between(1, 5);
        for (int i = 0; i < count; ++i) {
            const bool repeated = std::any_of(requisition.lines.begin(), requisition.lines.end(),
                                              [&](const RequisitionLine& line) { return line.item == item; });
            // An item stands once in a requisition.
            if (!repeated)
                requisition.lines.push_back({item, someQuantity(plant.item(item)), 0, -1, today.addDays(dice.between(5, 20))});
            item = dice.chance(0.9) ? anotherOf(vendor) : someItem(requisition.family);
        }
        plant.requisitions.push_back(std::move(requisition));
        if (plant.requisitions.back().approved)
            waiting[plant.requisitions.back().family].push_back(sizeOf(plant.requisitions) - 1);
    }

    Family someFamily() {
        const double u = dice.unit();
        return u < 0.44 ? Family::Board : u < 0.88 ? Family::Material : u < 0.94 ? Family::Paper : Family::Plate;
    }

    void makeOrder(const QString& time) {
        Order order;
        order.number = prefix() + padded(++serial.order, 3);
        order.created = time;
        order.family = someFamily();
        order.date = today;
        order.approved = approvedByNow();
        if (!fromRequisition(order)) fromNeed(order);
        order.currency = plant.vendor(order.vendor).currency;
        order.buyer = plant.vendor(order.vendor).buyer;
        const QDate delivery = today.addDays(dice.between(5, 18));
        for (OrderLine& line : order.lines) {
            line.delivery = line.workOrder >= 0 ? plant.workOrder(line.workOrder).delivery : delivery;
            price(order, line);
        }
        plant.orders.push_back(std::move(order));
        if (plant.orders.back().approved) planDelivery(sizeOf(plant.orders) - 1);
    }

    /// The oldest waiting requisition becomes an order with its usual vendor; what that one does not deliver stays.
    bool fromRequisition(Order& order) {
        std::deque<int>& queue = waiting[order.family];
        if (queue.empty() || !dice.chance(0.85)) return false;
        const int index_ = queue.front();
        queue.pop_front();
        Requisition& requisition = plant.requisitions[static_cast<std::size_t>(index_)];
        bool rest = false;
        order.vendor = -1;
        for (int i = 0; i < sizeOf(requisition.lines); ++i) {
            RequisitionLine& line = requisition.lines[static_cast<std::size_t>(i)];
            if (line.ordered >= line.quantity) continue;
            const int vendor = plant.item(line.item).vendor;
            if (order.vendor < 0) order.vendor = plant.vendor(vendor).scrapped ? 12 : vendor;
            if (vendor != order.vendor && !plant.vendor(vendor).scrapped) {
                rest = true;
                continue;
            }
            OrderLine taken;
            taken.item = line.item;
            taken.requisition = index_;
            taken.requisitionLine = i;
            taken.quantity = line.quantity - line.ordered;
            if (dice.chance(0.08) && taken.quantity >= 2) {
                taken.quantity = std::floor(taken.quantity / 2);
                rest = true;
            }
            line.ordered += taken.quantity;
            order.lines.push_back(taken);
        }
        if (rest && dice.chance(0.8)) queue.push_back(index_);
        return !order.lines.empty();
    }

    void fromNeed(Order& order) {
        const int first = someItem(order.family);
        order.vendor = plant.item(first).vendor;
        if (dice.chance(0.12)) order.vendor = anyVendor(order.family);
        const int count = dice.between(1, 4);
        int item = first;
        for (int i = 0; i < count; ++i) {
            OrderLine line;
            line.item = item;
            line.quantity = someQuantity(plant.item(item));
            if (order.family == Family::Board && dice.chance(0.6)) {
                line.workOrder = makeWorkOrder(item, static_cast<int>(line.quantity), today.addDays(-dice.between(1, 6)));
                line.cuts = plant.workOrder(line.workOrder).cuts;
            }
            order.lines.push_back(line);
            item = anotherOf(plant.item(first).vendor);
        }
    }

    int anyVendor(Family family) {
        for (;;) {
            const int vendor = dice.below(sizeOf(plant.vendors));
            if (plant.vendor(vendor).family == family && !plant.vendor(vendor).scrapped) return vendor;
        }
    }

    int makeWorkOrder(int item, int sheets, const QDate& date) {
        WorkOrder order;
        order.date = date;
        order.number = u"W"_s + date.toString(u"yyMMdd"_s) + padded(++workOrdersOf[date], 3);
        order.delivery = today.addDays(dice.between(8, 20));
        order.customer = dice.below(sizeOf(plant.customers));
        order.item = item;
        order.sheets = sheets;
        order.cuts = dice.between(1, 3);
        const int carton = dice.between(1, 40);
        order.carton = plant.customers[static_cast<std::size_t>(order.customer)].code + u"-BX"_s + padded(carton, 3);
        order.part = u"PN%1-%2"_s.arg(order.customer + 101).arg(padded(carton, 3));
        order.creaseKind = dice.chance(0.7) ? u"外壓"_s : u"內壓"_s;
        const int width = static_cast<int>(plant.item(item).second);
        order.creases = {width / 4, width / 2, width / 4, 0};
        if (dice.chance(0.15)) order.note = u"客戶急件"_s;
        order.finished = today < Today.addDays(-40) && dice.chance(0.9);
        plant.workOrders.push_back(std::move(order));
        return sizeOf(plant.workOrders) - 1;
    }

    /// Vendors change their prices by the quarter.
    double offered(const Order& order, const Item& item) const {
        const int quarter = today.year() * 4 + (today.month() - 1) / 3;
        const int wave = (quarter * 7 + order.vendor * 5 + item.group * 3) % 9 - 4;
        const double rate = plant.currencies[static_cast<std::size_t>(plant.vendor(order.vendor).currency)].rate;
        const double base = item.usualPrice * plant.vendor(order.vendor).factor * (1 + 0.006 * wave) / rate;
        return std::round(base * 100) / 100;
    }

    /// Prices the line and writes a changed price back, for board to every size of the name.
    void price(const Order& order, OrderLine& line) {
        line.price = std::max(offered(order, plant.item(line.item)), 0.01);
        line.amount = amountOf(plant.item(line.item), line.quantity, line.price).amount;
        const Item& item = plant.item(line.item);
        if (item.price == line.price && item.currency == order.currency) return;
        const auto feed = [&](int index_) {
            plant.item(index_).price = line.price;
            plant.item(index_).currency = order.currency;
            plant.prices.push_back({index_, order.currency, order.vendor, line.price, line.quantity, today,
                                    order.buyer < 2 ? u"採購甲"_s : u"採購丙"_s});
        };
        if (item.family != Family::Board) return feed(line.item);
        for (const int other : groups[{item.family, item.group}]) feed(other);
    }

    void planDelivery(int order) {
        const QDate day = plant.order(order).lines.front().delivery.addDays(dice.between(-3, 6));
        const double u = dice.unit();
        if (u < 0.80) {
            due[std::max(day, today.addDays(1))].push_back({order});
        } else if (u < 0.92) {
            due[day].push_back({order, 0.6});
            due[day.addDays(dice.between(5, 12))].push_back({order});
        } else if (u < 0.96) {
            due[day].push_back({order, 0.5});
            due[day.addDays(20)].push_back({order, 0, true});
        } else if (u < 0.98) {
            due[day.addDays(30)].push_back({order, 0, true});
        }
    }

    void takeDeliveries() {
        while (!due.empty() && due.begin()->first <= today) {
            const std::vector<Delivery> arrived = std::move(due.begin()->second);
            due.erase(due.begin());
            for (std::size_t i = 0; i < arrived.size(); ++i)
                take(arrived[i], stamp(static_cast<int>(i), static_cast<int>(arrived.size())));
        }
    }

    void take(const Delivery& delivery, const QString& time) {
        if (delivery.closes) {
            for (OrderLine& line : plant.order(delivery.order).lines) line.closed = line.closed || line.open() > 0;
            return;
        }
        if (delivery.sendsBack) return sendBack(delivery.order, time);
        Order& order = plant.order(delivery.order);
        Receipt receipt = newReceipt(delivery.order, time);
        receipt.number = prefix() + padded(++serial.receipt, 4);
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
            --serial.receipt;
            return;
        }
        if (order.family == Family::Material && dice.chance(0.01)) {
            receipt.inspection = u"QC"_s + receipt.number;
            receipt.kind = u"檢驗入庫"_s;
        }
        post(receipt);
        const bool board = order.family == Family::Board;
        if ((board && dice.chance(0.02)) || (order.family == Family::Material && dice.chance(0.006))) {
            Delivery back;
            back.order = delivery.order;
            back.sendsBack = true;
            due[today.addDays(dice.between(2, 9))].push_back(back);
        }
    }

    Receipt newReceipt(int order, const QString& time) {
        Receipt receipt;
        receipt.created = time;
        receipt.date = today;
        receipt.order = order;
        receipt.clerk = 5 + dice.below(3);
        receipt.approved = approvedByNow();
        return receipt;
    }

    /// Board goes back on the return screen, with a T in its number and no stock; materials on the receipt screen.
    void sendBack(int number, const QString& time) {
        Order& order = plant.order(number);
        const int i = dice.below(sizeOf(order.lines));
        const OrderLine& line = order.lines[static_cast<std::size_t>(i)];
        const double quantity = std::floor(line.received / 5);
        if (quantity < 1) return;
        const bool board = order.family == Family::Board;
        if (!board && plant.item(line.item).stock < quantity) return;
        Receipt receipt = newReceipt(number, time);
        receipt.kind = u"退貨"_s;
        receipt.number = board ? prefix() + u'T' + padded(++serial.giveBack, 4) : prefix() + padded(++serial.receipt, 4);
        receipt.lines.push_back({number, i, -quantity, 0, 0});
        post(receipt);
    }

    void post(Receipt& receipt) {
        const Order& order = plant.order(receipt.order);
        const bool stocked = order.family == Family::Board || order.family == Family::Material;
        for (ReceiptLine& arrived : receipt.lines) {
            OrderLine& line = plant.order(receipt.order).lines[static_cast<std::size_t>(arrived.orderLine)];
            Item& item = plant.item(line.item);
            arrived.amount = amountOf(item, arrived.quantity, line.price).amount;
            line.received += arrived.quantity;
            if (arrived.quantity < 0) line.closed = false;
            if (!stocked || receipt.number.contains(u'T')) continue;
            const double pieces = order.family == Family::Board ? arrived.quantity * line.cuts : arrived.quantity + arrived.spare;
            item.stock += pieces;
            item.moved = today;
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

    void makeIssue(const QString& time) {
        Issue issue;
        issue.family = dice.chance(0.5) ? Family::Board : Family::Material;
        issue.posted = left > 5 || !dice.chance(0.08);
        const int count = dice.between(1, 5);
        for (int i = 0; i < count; ++i) addIssueLine(issue);
        if (issue.lines.empty()) return;
        issue.number = prefix() + padded(++serial.issue, 4);
        issue.created = time;
        issue.date = today;
        issue.kind = dice.chance(0.9) ? u"領料"_s : u"補料"_s;
        issue.department = plant.departments[static_cast<std::size_t>(dice.below(3))];
        issue.machine = dice.pick(plant.machines);
        if (issue.family == Family::Board && !plant.workOrders.empty())
            issue.workOrder = plant.workOrders[static_cast<std::size_t>(dice.below(sizeOf(plant.workOrders)))].number;
        issue.storekeeper = 5 + dice.below(3);
        issue.taker = 8 + dice.below(3);
        issue.approved = issue.posted && approvedByNow();
        plant.issues.push_back(std::move(issue));
    }

    void addIssueLine(Issue& issue) {
        for (int attempt = 0; attempt < 6; ++attempt) {
            const int index_ = someItem(issue.family);
            Item& item = plant.item(index_);
            const double most = std::floor(item.stock);
            if (most < 2) continue;
            IssueLine line;
            line.item = index_;
            line.quantity = std::max(1.0, std::floor(most * (0.04 + 0.4 * dice.unit())));
            if (issue.posted) {
                item.stock -= line.quantity;
                item.moved = today;
                if (!item.bins.empty() && dice.chance(0.85)) takeFromBins(item, line);
            }
            issue.lines.push_back(std::move(line));
            return;
        }
    }

    /// The bin of the oldest row is emptied oldest first; what it lacks is taken from no bin.
    static void takeFromBins(Item& item, IssueLine& line) {
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
        item.bins.erase(std::remove_if(item.bins.begin(), item.bins.end(), [](const BinRow& row) { return row.left <= 0; }),
                        item.bins.end());
    }

    void closeMonth() {
        for (Item& item : plant.items) item.closing = item.stock;
    }

    /// What production still waits for, for the pick of the order screen.
    void makeOpenWorkOrders() {
        const int count = 120;
        for (int i = 0; i < count; ++i) {
            const int item = someItem(Family::Board);
            const int order = makeWorkOrder(item, 50 * dice.between(2, 40), today.addDays(-dice.below(20)));
            plant.workOrders[static_cast<std::size_t>(order)].finished = i % 20 == 0;
        }
    }

    /// A few reviews of what vendors owe, with points off for late lines.
    void makeTracking() {
        for (int month = 0; month < 4; ++month) {
            Tracking tracking;
            tracking.date = QDate(2024, 9 + month, 25);
            tracking.family = month % 2 == 0 ? Family::Board : Family::Material;
            tracking.number = tracking.date.toString(u"yyyyMM"_s) + u"0001"_s;
            for (int i = sizeOf(plant.orders) - 1; i >= 0 && sizeOf(tracking.lines) < 12; --i) {
                const Order& order = plant.order(i);
                if (order.family != tracking.family || !order.approved || order.date > tracking.date) continue;
                for (int l = 0; l < sizeOf(order.lines); ++l) {
                    const OrderLine& line = order.lines[static_cast<std::size_t>(l)];
                    if (line.open() <= 0 || line.closed) continue;
                    const int days = static_cast<int>(tracking.date.daysTo(line.delivery));
                    const double penalty = days < -3 ? 1 : days < 0 ? 0.5 : 0;
                    plant.vendor(order.vendor).penalty += penalty;
                    tracking.lines.push_back({i, l, days, penalty});
                }
            }
            if (!tracking.lines.empty()) plant.tracking.push_back(std::move(tracking));
        }
    }
};

} // namespace

void simulate(Plant& plant, Dice& dice, double scale) { Simulation(plant, dice, scale).run(); }

} // namespace liaowu::demo
