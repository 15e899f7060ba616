#pragma once
#include "common/messages.h"
#include "common/refusal.h"
#include "common/session.h"
#include "data/schema/plant_database.h"

namespace liaowu {

/// Keeps what the rules say, as "title: text"; every question is answered with no.
class ToldMessages : public Messages {
public:
    bool ask(const QString& title, const QString& text, bool) override {
        show(Icon::Question, title, text);
        return false;
    }
    void notice(const QString&) override {}
    QStringList told;

protected:
    void show(Icon, const QString& title, const QString& text) override {
        told << title + QStringLiteral(": ") + text;
    }
};

/// A user at an empty plant. A second connection during a transaction is a fault, as for the screens.
class PlantSession : public PlantDatabase {
public:
    PlantSession() {
        pool.forbidSecondConnection(true);
        session.connectionString = target;
        session.userName = QStringLiteral("tester");
        session.salesmanName = QStringLiteral("測試員");
        session.approvalParam = QStringLiteral("Y");
    }

    /// Everything that stands in these tables.
    QStringList contents(std::initializer_list<const char16_t*> tables) {
        QStringList all;
        for (const char16_t* name : tables) {
            const QString table = QString::fromUtf16(name);
            for (const QString& row : rowsOf(QStringLiteral("select * from [%1]").arg(table)))
                all << table + row;
        }
        all.sort();
        return all;
    }

    ToldMessages messages;
    Session session{pool, messages};
};

/// "title: text" of the `Refusal` that `deed` throws; empty when it throws none.
template <typename Deed>
QString refusalOf(Deed deed) {
    try {
        deed();
    } catch (const Refusal& refusal) {
        return refusal.title + QStringLiteral(": ") + refusal.text;
    }
    return {};
}

/// Fails every database call of a deed in turn, until it goes through: after each failure everything in the plant must be as it was.
/// Gives the number of calls.
template <typename Plant, typename Deed>
int failEveryCall(const char* name, Plant& plant, Deed deed) {
    SCOPED_TRACE(name);
    const auto before = plant.everything();
    for (int call = 1; call < 1000; ++call) {
        plant.pool.failAt(call);
        const int error = errorOf(deed);
        const int calls = plant.pool.callCount();
        plant.pool.failAt(0);
        if (error == 0) {
            EXPECT_FALSE(plant.everything() == before) << "nothing was done in the end";
            return call - 1;
        }
        EXPECT_EQ(error, DatabaseError::Injected) << "call " << call;
        EXPECT_EQ(calls, call) << "the failure ended the deed";
        EXPECT_EQ(calls, call) << "the failure ended the deed";
        EXPECT_TRUE(plant.everything() == before) << "something is left of what failed at call " << call;
    }
    ADD_FAILURE() << "never goes through";
    return 0;
}

} // namespace liaowu
