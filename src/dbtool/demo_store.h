#pragma once
#include "dbtool/demo_plant.h"
#include <map>

namespace liaowu::demo {

/// A day on which the plant works.
struct WorkDay {
    QDate date;
    int left = 0; ///< working days from here to the last one, which is 1

    QString prefix() const;
    /// Time of entry of document `at` of `count` that day.
    QString stamp(int at, int count) const;
    /// Nearly everything is approved within days; of the latest documents many still wait.
    bool approved(Dice& dice) const { return dice.chance(left > 12 ? 0.975 : 0.45); }
};

/// The warehouse: takes what vendors deliver, sends back what is faulty, hands out to production.
class Store {
public:
    Store(Plant& subject, Dice& chance) : plant(subject), dice(chance) {}

    void startDay(const WorkDay& today);
    /// An approved order will be delivered: in time or late, at once or in parts, some never in full.
    void expect(int order);
    void takeDeliveries();
    void makeIssue(const QString& time);
    void closeMonth();

private:
    /// A delivery that is on its way.
    struct Delivery {
        int order = 0;
        double part = 1;        ///< of what is still open
        bool closes = false;    ///< the rest will never come: the lines are closed by hand
        bool sendsBack = false; ///< what came is faulty and goes back
    };
    void take(const Delivery& delivery, const QString& time);
    void sendBack(int number, const QString& time);
    Receipt newReceipt(int order, const QString& time);
    void post(Receipt receipt);
    void addIssueLine(Issue& issue);

    Plant& plant;
    Dice& dice;
    std::map<QDate, std::vector<Delivery>> due;
    WorkDay day;
    int receiptsToday = 0, returnsToday = 0, issuesToday = 0;
};

} // namespace liaowu::demo
