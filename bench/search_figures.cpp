// The search page of orders over half a million lines, as a person sees it.
#include "client_bench.h"
#include "data/recordset.h"
#include "frame/base_screen.h"
#include "frame/browse_grid.h"
#include "raw_replay.h"
#include <QApplication>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleOptionSlider>
#include <QTest>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace liaowu {

namespace {

constexpr int WantedLines = 500000;
/// A key held down repeats some 30 times a second: this is a minute of it.
constexpr int HeldKeys = 2000;
constexpr int DragSteps = 200;

/// Adds lines of 物料 to the stored orders, each a copy of one that is there, until there are enough.
void addLines(Client& client) {
    QStringList names, values;
    qint64 lines = 0;
    {
        Connection connection(client.process.pool, client.target);
        names = select(connection, sql(u"select * from 採購明細資料 where 1<>1")).columnNames();
        lines = select(connection, sql(u"select count(*) as n from 採購明細資料")).text(0).toInt();
    }
    client.process.pool.clear();
    RawEngine raw(client.file);
    raw.run(u"BEGIN"_s);
    for (int copy = 1; lines < WantedLines; ++copy) {
        values = names;
        values[names.indexOf(u"序"_s)] = u"序+%1"_s.arg(copy * 1000);
        for (QString& value : values)
            value.prepend(u"採購明細資料."_s);
        lines += raw.run(
            u"INSERT INTO 採購明細資料 (%1) SELECT %2 FROM 採購明細資料 JOIN 採購資料 USING (採購單號) "
            "WHERE 類別='物料' AND 序<1000 ORDER BY 採購單號 LIMIT %3"_s.arg(names.join(u','))
                .arg(values.join(u','))
                .arg(WantedLines - lines));
    }
    raw.run(u"COMMIT"_s);
    raw.run(u"PRAGMA wal_checkpoint(TRUNCATE)"_s);
}

struct Period {
    QString name, from, to;
    int rounds;
};

struct SearchBench {
    explicit SearchBench(const QString& plant) : client(plant) {
        addLines(client);
        screen = client.open(u"物料採購作業"_s);
        screen->runTool(u"search"_s);
        settle();
        grid = control<BrowseGrid>(screen, u"MSHFlexGrid1"_s);
    }

    /// Fills in the conditions; the button is all that is left to press.
    void prepare(const Period& period) {
        QTest::mouseClick(control<QPushButton>(screen, u"scmd查詢條件"_s), Qt::LeftButton);
        typeInto(screen, u"txt查詢內容(2)"_s, period.from);
        typeInto(screen, u"txt查詢內容(3)"_s, period.to);
        settle();
    }
    void confirm() { QTest::mouseClick(control<QPushButton>(screen, u"scmd確定"_s), Qt::LeftButton); }
    double search(const Period& period) {
        prepare(period);
        const double time = untilPainted(grid->viewport(), [this] { confirm(); });
        if (grid->lineCount() == 0) giveUp(u"a search that finds nothing measures nothing"_s);
        return time;
    }

    /// Until a search is back, nothing else happens: the cursor must say so.
    void mustShowThatItWaits(const Period& period) {
        prepare(period);
        bool waits = true;
        client.process.pool.setTrace([&](const StatementTrace&) {
            const QCursor* cursor = QApplication::overrideCursor();
            waits &= cursor && cursor->shape() == Qt::WaitCursor;
        });
        confirm();
        client.process.pool.setTrace({});
        settle();
        if (!waits) giveUp(u"a search without the wait cursor"_s);
    }

    double key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        return untilPainted(grid->viewport(),
                            [&] { QTest::keyClick(QApplication::focusWidget(), key, modifiers); });
    }
    void mustStandOn(int line) {
        if (grid->currentRow() != line)
            giveUp(u"the list stands on line %1, not on %2"_s.arg(grid->currentRow()).arg(line));
    }

    void scroll(const Period& period) {
        const QString of = u", "_s + period.name;
        std::vector<double> pages;
        while (grid->currentRow() < grid->lineCount() && pages.size() < HeldKeys)
            pages.push_back(key(Qt::Key_PageDown));
        stepsRow(u"PageDown held"_s + of, pages);
        std::vector<double> ends;
        for (int i = 0; i < 20; ++i) {
            ends.push_back(key(Qt::Key_Home));
            mustStandOn(1);
            ends.push_back(key(Qt::Key_End));
            mustStandOn(grid->lineCount());
        }
        key(Qt::Key_Home);
        stepsRow(u"End and Home"_s + of, ends);
        stepsRow(u"dragging to the end"_s + of, drag());
    }

    /// The mouse takes the handle of the scroll bar down to its end.
    std::vector<double> drag() {
        QScrollBar* bar = grid->verticalScrollBar();
        QStyleOptionSlider option;
        option.initFrom(bar);
        option.orientation = Qt::Vertical;
        option.minimum = bar->minimum();
        option.maximum = bar->maximum();
        option.pageStep = bar->pageStep();
        option.sliderPosition = option.sliderValue = bar->value();
        const QRect handle =
            bar->style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, bar);
        const QPoint start = handle.center();
        QTest::mousePress(bar, Qt::LeftButton, {}, start);
        std::vector<double> times;
        for (int i = 1; i <= DragSteps; ++i) {
            const QPoint at(start.x(), start.y() + (bar->height() - start.y()) * i / DragSteps);
            const int before = bar->value();
            const double time = microseconds([&] {
                QTest::mouseMove(bar, at);
                settle();
            });
            if (bar->value() != before) times.push_back(time);
        }
        QTest::mouseRelease(bar, Qt::LeftButton, {}, QPoint(start.x(), bar->height()));
        if (bar->value() != bar->maximum()) giveUp(u"the handle did not reach the end"_s);
        return times;
    }

    void against(const Period& period) {
        std::vector<double> ours, limit;
        RawEngine raw(client.file);
        prepare(period);
        Recording recorded = record(client.process.pool, [this] { confirm(); });
        // Before it the page has asked for today's date.
        recorded.erase(recorded.begin(), recorded.end() - 1);
        raw.prepare(recorded);
        for (int i = 0; i < period.rounds; ++i) {
            ours.push_back(search(period));
            limit.push_back(microseconds([&] { raw.play(recorded); }));
        }
        row(u"search of %1, %2 lines, painted"_s.arg(period.name).arg(grid->lineCount()), median(ours),
            median(limit));
    }

    Client client;
    ScreenFrame* screen;
    BrowseGrid* grid;
};

} // namespace

void searchFigures(const QString& plant) {
    const Period periods[] = {{u"a month"_s, u"20241201"_s, u"20241231"_s, 21},
                              {u"a year"_s, u"20240101"_s, u"20241231"_s, 7},
                              {u"all time"_s, u"00000000"_s, u"99999999"_s, 7}};
    SearchBench bench(plant);
    bench.mustShowThatItWaits(periods[0]);
    for (const Period& period : periods) {
        bench.search(period);
        bench.scroll(period);
        std::printf("%-56s %10.1f MiB, %.1f MiB at most\n",
                    qPrintable(u"resident memory, %1 lines"_s.arg(bench.grid->lineCount())),
                    residentMebibytes(), peakMebibytes());
    }
    for (const Period& period : periods)
        bench.against(period);
}

} // namespace liaowu
