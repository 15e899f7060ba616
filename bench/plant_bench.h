#pragma once
#include "common/messages.h"
#include "common/session.h"
#include "measures.h"
#include "purchasing/order_store.h"
#include "raw_replay.h"
#include <QFileInfo>
#include <QTemporaryDir>

namespace liaowu {

/// A benchmark is not asked anything; what it is told ends it.
class Silent : public Messages {
public:
    bool ask(const QString&, const QString&, bool) override { return false; }
    void notice(const QString&) override {}

protected:
    void show(Icon icon, const QString& title, const QString& text) override;
};

/// A copy of a demo plant and a client on it without a screen. The clock stands at 2025-03-03.
struct PlantBench {
    /// Arguments are the plant and, if wanted, the rounds. Gives the exit code of a program that cannot go on, or 0.
    int open(int argc, char** argv);

    /// An order of materials in stock, for a save.
    OrderSave orderOf(int lines);

    /// Times `deed` and the replay of what it sent, and prints their medians. `undo` brings the plant back to where a deed
    /// starts; it is not timed.
    template <typename Deed, typename Undo>
    void against(const QString& name, Deed deed, Undo undo) {
        std::vector<double> ours, limit;
        RawEngine raw(file);
        for (int i = 0; i < rounds + warmUps; ++i) {
            const Recording recorded = record(pool, deed);
            undo();
            raw.prepare(recorded);
            emptyJournal(raw);
            const double layer = microseconds(deed);
            undo();
            emptyJournal(raw);
            const double engine = microseconds([&] { raw.play(recorded); });
            undo();
            if (i < warmUps) continue;
            ours.push_back(layer);
            limit.push_back(engine);
        }
        row(name, median(ours), median(limit));
    }
    template <typename Deed>
    void against(const QString& name, Deed deed) {
        against(name, deed, [] {});
    }

    /// Else the one whose commit happens to fill the journal pays for all that the other wrote. An empty one is left alone:
    /// to begin it anew costs the others their caches.
    void emptyJournal(RawEngine& raw) const {
        if (QFileInfo(file + QStringLiteral("-wal")).size() > 0)
            raw.run(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
    }

    static constexpr int warmUps = 2;
    QTemporaryDir folder;
    QString file = folder.filePath(QStringLiteral("plant.db"));
    ConnectionPool pool;
    Silent silent;
    Session session{pool, silent};
    int rounds = 15;
};

} // namespace liaowu
