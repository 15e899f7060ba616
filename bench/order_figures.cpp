// An order of 350 lines on the screen: keys, moving through the grid, memory.
#include "client_bench.h"
#include "frame/base_screen.h"
#include "frame/line_grid.h"
#include <QApplication>
#include <QTest>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace liaowu {

void orderFigures(const QString& plant) {
    Client client(plant);
    const QString number = client.largeOrder(u"物料"_s, false);
    ScreenFrame* screen = client.open(u"物料採購作業"_s);
    typeInto(screen, u"txt速查單號"_s, number);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    settle();
    auto* grid = control<LineGrid>(screen, u"fml明細"_s);
    if (grid->lineCount() != 350) giveUp(u"the large order is not shown"_s);
    std::printf("%-56s %10.1f MiB\n", "resident memory, order of 350 lines open", residentMebibytes());

    const auto timed = [](auto work) {
        return microseconds([&] {
            work();
            settle();
        });
    };
    grid->setFocus();
    grid->select(1, u"大紙數"_s);
    settle();
    std::vector<double> moves, keys, ends;
    for (int i = 0; i < 300; ++i)
        moves.push_back(timed([&] { QTest::keyClick(grid, Qt::Key_Down); }));
    for (int i = 0; i < 60; ++i) {
        grid->select(1 + i * 5, u"大紙數"_s);
        settle();
        for (const char key : {'1', '2', '5'})
            keys.push_back(timed([&] { QTest::keyClick(QApplication::focusWidget(), key); }));
        ends.push_back(timed([&] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); }));
    }
    stepsRow(u"moving the selection, stock panel included"_s, moves);
    stepsRow(u"a keystroke in a cell"_s, keys);
    stepsRow(u"Enter after a quantity: line and total recalculated"_s, ends);
}

} // namespace liaowu
