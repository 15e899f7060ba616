// All open lines of a large order picked into a receipt, as a person sees it.
#include "client_bench.h"
#include "frame/base_screen.h"
#include "frame/browse_grid.h"
#include "frame/line_grid.h"
#include "raw_replay.h"
#include <QApplication>
#include <QDialog>
#include <QTest>

using namespace Qt::StringLiterals;

namespace liaowu {

namespace {

constexpr int Rounds = 21;

struct FillBench {
    FillBench(const QString& plant, const QString& function, const QString& category)
        : client(plant), number(client.largeOrder(category, true)), screen(client.open(function)),
          grid(control<LineGrid>(screen, u"fml明細"_s)) {
        client.desktop.inWindow = [](QDialog& window) {
            QTest::keyClick(control<BrowseGrid>(&window, u"MSHFlexGrid1"_s), Qt::Key_Return);
        };
        typeInto(screen, u"txt廠商代號"_s, u"V001"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        settle();
    }

    void type() {
        typeInto(screen, u"txt採購單號"_s, number);
        settle();
    }
    void enter() { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); }

    /// What opening the window sends, and what taking its row sends.
    std::pair<Recording, Recording> sent() {
        const auto take = std::exchange(client.desktop.inWindow,
                                        [](QDialog& window) { QTest::keyClick(&window, Qt::Key_Escape); });
        type();
        const Recording opening = record(client.process.pool, [this] { enter(); });
        client.desktop.inWindow = take;
        type();
        Recording whole = record(client.process.pool, [this] { enter(); });
        settle();
        whole.erase(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(opening.size()));
        return {opening, whole};
    }

    void run(const QString& category) {
        const auto [opening, filling] = sent();
        RawEngine raw(client.file);
        raw.prepare(opening);
        raw.prepare(filling);
        std::vector<double> opened, filled, openingLimit, fillingLimit;
        for (int i = 0; i < Rounds; ++i) {
            type();
            double inWindow = 0;
            QElapsedTimer sinceOpen;
            client.desktop.inWindow = [&](QDialog& window) {
                inWindow = static_cast<double>(sinceOpen.nsecsElapsed()) / 1000;
                auto* list = control<BrowseGrid>(&window, u"MSHFlexGrid1"_s);
                if (list->lineCount() != 350) giveUp(u"not all lines of the order are open"_s);
                QTest::keyClick(list, Qt::Key_Return);
            };
            sinceOpen.start();
            const double whole = untilPainted(grid->viewport(), [this] { enter(); });
            if (grid->lineCount() != 350) giveUp(u"not all lines were filled in"_s);
            opened.push_back(inWindow);
            filled.push_back(whole - inWindow);
            openingLimit.push_back(microseconds([&] { raw.play(opening); }));
            fillingLimit.push_back(microseconds([&] { raw.play(filling); }));
        }
        row(u"pick window of %1, painted"_s.arg(category), median(opened), median(openingLimit));
        int byFormula = 0;
        for (int line = 1; line <= grid->lineCount(); ++line)
            byFormula += grid->text(line, u"計價公式"_s).startsWith(u"計價公式");
        row(u"350 lines of %1 filled, %2 by formula"_s.arg(category).arg(byFormula), median(filled),
            median(fillingLimit));
    }

    Client client;
    QString number;
    ScreenFrame* screen;
    LineGrid* grid;
};

} // namespace

void fillFigures(const QString& plant) {
    FillBench(plant, u"物料入庫作業"_s, u"物料"_s).run(u"物料"_s);
    FillBench(plant, u"浪紙入庫作業"_s, u"紙板"_s).run(u"紙板"_s);
}

} // namespace liaowu
