#pragma once
#include "common/messages.h"
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
    QStringList contents(const QStringList& tables) {
        QStringList all;
        for (const QString& table : tables)
            for (const QString& row : rowsOf(QStringLiteral("select * from [%1]").arg(table)))
                all << table + row;
        all.sort();
        return all;
    }

    ToldMessages messages;
    Session session{pool, messages};
};

} // namespace liaowu
