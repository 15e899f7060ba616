#include "dbtool/demo_store.h"
#include <algorithm>
#include <cmath>
#include <deque>
#include <map>

namespace liaowu::demo {

using namespace Qt::StringLiterals;

namespace {

std::vector<QDate> workdays() {
    std::vector<QDate> days;
    for (QDate day = FirstDay; day < Today; day = day.addDays(1))
        if (day.dayOfWeek() != Qt::Sunday) days.push_back(day);
    return days;
}

/// How many of `total` fall on day `index` of `days`, spread evenly.
int share(double total, std::size_t index, std::size_t days) {
    const auto until = [&](std::size_t day) {
        return std::floor(total * static_cast<double>(day) / static_cast<double>(days));
    };
    return static_cast<int>(until(index + 1) - until(index));
}

class Simulation {
public:
    Simulation(Plant& subject, Dice& chance, double size)
        : plant(subject), dice(chance), scale(size), store(subject, chance) {
        for (int i = 0; i < sizeOf(plant.items); ++i)
            if (plant.item(i).family == Family::Board) boardsOf[plant.item(i).group].push_back(i);
    }

    void run() {
        const std::vector<QDate> days = workdays();
        for (std::size_t index = 0; index < days.size(); ++index) {
            if (index > 0 && day.date.month() != days[index].month() && day.date <= LastClosed)
                store.closeMonth();
            day = {days[index], static_cast<int>(days.size() - index)};
            store.startDay(day);
            requisitionsToday = ordersToday = 0;
            const auto each = [&](double total, auto&& make) {
                const int count = share(total * scale, index, days.size());
                for (int i = 0; i < count; ++i)
                    make(day.stamp(i, count));
            };
            each(1500, [&](const QString&) { makeRequisition(); });
            each(2000, [&](const QString& time) { makeOrder(time); });
            store.takeDeliveries();
            each(1600, [&](const QString& time) { store.makeIssue(time); });
        }
        makeOpenWorkOrders();
        makeTracking();
    }

private:
    Plant& plant;
    Dice& dice;
    const double scale;
    Store store;
    std::map<int, std::vector<int>> boardsOf;  ///< sizes of one name
    std::map<Family, std::deque<int>> waiting; ///< approved requisitions with something left to order
    std::map<QDate, int> workOrdersOf;
    WorkDay day;
    int requisitionsToday = 0, ordersToday = 0;

    int anotherOf(int vendor) {
        const std::vector<int>& items = plant.vendor(vendor).items;
        return items[static_cast<std::size_t>(dice.skewed(sizeOf(items)))];
    }
    double someQuantity(const Item& item) {
        const int lots = item.family == Family::Board ? dice.between(2, 40) : dice.between(1, 20);
        return item.lot * lots;
    }
    void makeRequisition() {
        Requisition requisition;
        requisition.number = day.prefix() + padded(++requisitionsToday, 4);
        requisition.family = dice.chance(0.42) ? Family::Board : Family::Material;
        requisition.date = day.date;
        requisition.clerk = 5 + dice.below(3);
        requisition.approved = day.approved(dice);
        int item = plant.someItem(dice, requisition.family);
        const int vendor = plant.item(item).vendor;
        const int count = dice.between(1, 5);
        for (int i = 0; i < count; ++i) {
            const bool repeated = std::any_of(requisition.lines.begin(), requisition.lines.end(),
                                              [&](const RequisitionLine& line) { return line.item == item; });
            // An item stands once in a requisition.
            if (!repeated)
                requisition.lines.push_back(
                    {item, someQuantity(plant.item(item)), 0, -1, day.date.addDays(dice.between(5, 20))});
            item = dice.chance(0.9) ? anotherOf(vendor) : plant.someItem(dice, requisition.family);
        }
        plant.requisitions.push_back(std::move(requisition));
        if (plant.requisitions.back().approved)
            waiting[plant.requisitions.back().family].push_back(sizeOf(plant.requisitions) - 1);
    }

    Family someFamily() {
        const double u = dice.unit();
        return u < 0.44   ? Family::Board
               : u < 0.88 ? Family::Material
               : u < 0.94 ? Family::Paper
                          : Family::Plate;
    }

    void makeOrder(const QString& time) {
        Order order;
        order.number = day.prefix() + padded(++ordersToday, 3);
        order.created = time;
        order.family = someFamily();
        order.date = day.date;
        order.approved = day.approved(dice);
        if (!fromRequisition(order)) fromNeed(order);
        order.currency = plant.vendor(order.vendor).currency;
        order.buyer = plant.vendor(order.vendor).buyer;
        const QDate delivery = day.date.addDays(dice.between(5, 18));
        for (OrderLine& line : order.lines) {
            line.delivery = line.workOrder >= 0 ? plant.workOrder(line.workOrder).delivery : delivery;
            price(order, line);
        }
        plant.orders.push_back(std::move(order));
        if (plant.orders.back().approved) store.expect(sizeOf(plant.orders) - 1);
    }

    /// The oldest waiting requisition becomes an order with its usual vendor; what that one does not deliver stays.
    bool fromRequisition(Order& order) {
        std::deque<int>& queue = waiting[order.family];
        if (queue.empty() || !dice.chance(0.85)) return false;
        const int position = queue.front();
        queue.pop_front();
        Requisition& requisition = plant.requisitions[static_cast<std::size_t>(position)];
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
            taken.requisition = position;
            taken.requisitionLine = i;
            taken.quantity = line.quantity - line.ordered;
            if (dice.chance(0.08) && taken.quantity >= 2) {
                taken.quantity = std::floor(taken.quantity / 2);
                rest = true;
            }
            line.ordered += taken.quantity;
            order.lines.push_back(taken);
        }
        if (rest && dice.chance(0.8)) queue.push_back(position);
        return !order.lines.empty();
    }

    void fromNeed(Order& order) {
        const int first = plant.someItem(dice, order.family);
        order.vendor = plant.item(first).vendor;
        if (dice.chance(0.12)) order.vendor = anyVendor(order.family);
        const int count = dice.between(1, 4);
        int item = first;
        for (int i = 0; i < count; ++i) {
            OrderLine line;
            line.item = item;
            line.quantity = someQuantity(plant.item(item));
            if (order.family == Family::Board && dice.chance(0.6)) {
                line.workOrder = makeWorkOrder(item, static_cast<int>(line.quantity),
                                               day.date.addDays(-dice.between(1, 6)));
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
        order.delivery = day.date.addDays(dice.between(8, 20));
        order.customer = dice.below(sizeOf(plant.customers));
        order.item = item;
        order.sheets = sheets;
        order.cuts = dice.between(1, 3);
        const int carton = dice.between(1, 40);
        order.carton =
            plant.customers[static_cast<std::size_t>(order.customer)].code + u"-BX"_s + padded(carton, 3);
        order.part = u"PN%1-%2"_s.arg(order.customer + 101).arg(padded(carton, 3));
        order.creaseKind = dice.chance(0.7) ? u"外壓"_s : u"內壓"_s;
        const int width = static_cast<int>(plant.item(item).second);
        order.creases = {width / 4, width / 2, width / 4, 0};
        if (dice.chance(0.15)) order.note = u"客戶急件"_s;
        order.finished = day.date < Today.addDays(-40) && dice.chance(0.9);
        plant.workOrders.push_back(std::move(order));
        return sizeOf(plant.workOrders) - 1;
    }

    /// Vendors change their prices by the quarter.
    double offered(const Order& order, const Item& item) const {
        const int quarter = day.date.year() * 4 + (day.date.month() - 1) / 3;
        const int wave = (quarter * 7 + order.vendor * 5 + item.group * 3) % 9 - 4;
        const double rate =
            plant.currencies[static_cast<std::size_t>(plant.vendor(order.vendor).currency)].rate;
        const double base = item.usualPrice * plant.vendor(order.vendor).factor * (1 + 0.006 * wave) / rate;
        return std::round(base * 100) / 100;
    }

    /// Prices the line and writes a changed price back, for board to every size of the name.
    void price(const Order& order, OrderLine& line) {
        line.price = std::max(offered(order, plant.item(line.item)), 0.01);
        line.amount = amountOf(plant.item(line.item), line.quantity, line.price).amount;
        const Item& item = plant.item(line.item);
        if (item.price == line.price && item.currency == order.currency) return;
        const auto feed = [&](int position) {
            plant.item(position).price = line.price;
            plant.item(position).currency = order.currency;
            plant.prices.push_back({position, order.currency, order.vendor, line.price, line.quantity,
                                    day.date, order.buyer < 2 ? u"採購甲"_s : u"採購丙"_s});
        };
        if (item.family != Family::Board) return feed(line.item);
        for (const int other : boardsOf[item.group])
            feed(other);
    }

    /// What production still waits for, for the pick of the order screen.
    void makeOpenWorkOrders() {
        const int count = 120;
        for (int i = 0; i < count; ++i) {
            const int item = plant.someItem(dice, Family::Board);
            const int order =
                makeWorkOrder(item, 50 * dice.between(2, 40), day.date.addDays(-dice.below(20)));
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
                if (order.family != tracking.family || !order.approved || order.date > tracking.date)
                    continue;
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

void simulate(Plant& plant, Dice& dice, double scale) {
    Simulation(plant, dice, scale).run();
}

} // namespace liaowu::demo
