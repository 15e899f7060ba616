#pragma once
#include "dbtool/demo_dice.h"
#include <QDate>
#include <QString>
#include <array>
#include <map>
#include <vector>

namespace liaowu::demo {

/// The day on which the demo plant stands still; its documents end the day before.
inline const QDate Today(2025, 1, 15);
inline const QDate FirstDay(2023, 11, 15);
/// The stock was counted and closed at the end of these months: before the first document, and once since.
inline const QDate OpeningClosed(2023, 10, 31);
inline const QDate LastClosed(2024, 11, 30);

enum class Family { Board, Material, Paper, Plate };
QString familyWord(Family family);

struct Person {
    QString code, name, department, leftOn;
};

struct Currency {
    QString name;
    double rate; ///< of today, in the base currency
};

struct Vendor {
    QString code, shortName, fullName, kind, tax, phone, contact, fax, days, payment, closing, notes;
    Family family = Family::Material;
    int currency = 0; ///< index, 0 is the base currency
    int buyer = 0;    ///< index of a person
    bool scrapped = false;
    double factor = 1;      ///< against the usual price
    double penalty = 0;     ///< points taken off so far
    std::vector<int> items; ///< those it usually delivers
};

struct BinRow {
    int bin = 0;
    QString receipt, arrived;
    double left = 0, taken = 0;
};

struct Item {
    Family family = Family::Material;
    QString code, name, spec, unit, buyUnit, kind, flute, brand;
    double first = 0, second = 0; ///< the two numbers of the size
    double weight = 0;            ///< basis weight in g/m2, of a material its unit weight
    int vendor = 0, group = 0;    ///< boards of one group share name and price
    double usualPrice = 0;        ///< for `buyUnit`, in the base currency
    double lot = 1;               ///< what quantities are multiples of
    QString created;

    double price = 0; ///< latest purchase price
    int currency = 0;
    double opening = 0, closing = 0, stock = 0;
    QDate moved;
    std::vector<BinRow> bins;
};

struct Customer {
    QString code, name;
};

struct WorkOrder {
    QString number;
    QDate date, delivery;
    int customer = 0, item = 0, sheets = 0, cuts = 1;
    QString carton, part, creaseKind, note;
    std::array<int, 4> creases{};
    bool finished = false;
};

struct RequisitionLine {
    int item = 0;
    double quantity = 0, ordered = 0;
    int workOrder = -1;
    QDate need;
};

struct Requisition {
    QString number;
    Family family = Family::Material;
    QDate date;
    int clerk = 0;
    bool approved = false;
    std::vector<RequisitionLine> lines;
};

struct OrderLine {
    int item = 0, requisition = -1, requisitionLine = -1, workOrder = -1, cuts = 1;
    double quantity = 0, price = 0, amount = 0, received = 0;
    bool closed = false;
    QDate delivery;
    double open() const { return quantity - received; }
};

struct Order {
    QString number, created;
    Family family = Family::Material;
    QDate date;
    int vendor = 0, buyer = 0, currency = 0;
    bool approved = false;
    std::vector<OrderLine> lines;
};

struct ReceiptLine {
    int order = 0, orderLine = 0;
    double quantity = 0, spare = 0, amount = 0;
};

struct Receipt {
    QString number, created, kind, inspection;
    QDate date;
    int order = 0, clerk = 0, bin = -1;
    bool approved = false;
    std::vector<ReceiptLine> lines;
};

struct BinTake {
    QString receipt;
    double quantity = 0;
};

struct IssueLine {
    int item = 0, bin = -1;
    double quantity = 0;
    std::vector<BinTake> takes;
};

struct Issue {
    QString number, created, kind, department, workOrder, machine;
    Family family = Family::Material;
    QDate date;
    int storekeeper = 0, taker = 0;
    bool approved = false;
    bool posted = true; ///< false for a document that came in from elsewhere and waits for the batch approval
    std::vector<IssueLine> lines;
};

struct PriceRow {
    int item = 0, currency = 0, vendor = -1;
    double price = 0, quantity = 0;
    QDate date;
    QString user;
};

struct TrackedLine {
    int order = 0, orderLine = 0, days = 0;
    double penalty = 0;
};

struct Tracking {
    QString number;
    QDate date;
    Family family = Family::Material;
    std::vector<TrackedLine> lines;
};

struct Plant {
    std::vector<Person> people;
    std::vector<Currency> currencies;
    std::vector<Vendor> vendors;
    std::vector<Item> items;
    std::vector<Customer> customers;
    std::vector<QString> bins, departments, machines, plateMachines;
    std::vector<WorkOrder> workOrders;
    std::vector<Requisition> requisitions;
    std::vector<Order> orders;
    std::vector<Receipt> receipts;
    std::vector<Issue> issues;
    std::vector<PriceRow> prices;
    std::vector<Tracking> tracking;

    /// Items of a family lie side by side.
    struct Range {
        int first = 0, count = 0;
    };
    std::map<Family, Range> ranges;

    /// Index of an item, the busy ones far more often.
    int someItem(Dice& dice, Family family) const {
        const Range& range = ranges.at(family);
        return range.first + dice.skewed(range.count);
    }
    Item& item(int index) { return items[static_cast<std::size_t>(index)]; }
    const Item& item(int index) const { return items[static_cast<std::size_t>(index)]; }
    Vendor& vendor(int index) { return vendors[static_cast<std::size_t>(index)]; }
    const Vendor& vendor(int index) const { return vendors[static_cast<std::size_t>(index)]; }
    const Person& person(int index) const { return people[static_cast<std::size_t>(index)]; }
    Order& order(int index) { return orders[static_cast<std::size_t>(index)]; }
    const Order& order(int index) const { return orders[static_cast<std::size_t>(index)]; }
    const WorkOrder& workOrder(int index) const { return workOrders[static_cast<std::size_t>(index)]; }
};

/// Amount of a line and the text that says how it came about, as the order screen writes them.
struct LineAmount {
    double amount = 0;
    QString formula;
};
LineAmount amountOf(const Item& item, double quantity, double price);

/// How a vendor writes the code of a board: letter by letter through its own table.
QString vendorMaterial(const Plant& plant, const QString& code, int vendor);

/// What the vendors that have such a table call the letter; empty for the others.
QString materialLetter(const Vendor& vendor, QChar letter);

QString date8(const QDate& date);
QString padded(int number, int width);

template <typename T>
int sizeOf(const std::vector<T>& list) {
    return static_cast<int>(list.size());
}

/// Staff, vendors, items, customers: the same at every scale.
Plant plantWithMasters(Dice& dice);

/// Lets the plant work from `FirstDay` to the day before `Today`: requisitions, orders, receipts, returns, issues, with
/// their effect on stock, bins, received quantities and prices. At scale 1 about 1,500 requisitions and 2,000 orders.
void simulate(Plant& plant, Dice& dice, double scale);

} // namespace liaowu::demo
