#include "purchasing/order_plant.h"
#include "purchasing/order_rules.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

/// A line of the given columns; the others are what a sound line holds.
OrderLine lineWith(std::initializer_list<std::pair<QString OrderLine::*, QString>> values) {
    OrderLine line = OrderPlant::line(u"M1"_s, 10, 1);
    for (const auto& [member, text] : values)
        line.*member = text;
    return line;
}

} // namespace

TEST(OrderRules, TheFirstFaultOfTheFirstLineSpeaks) {
    const OrderLine good = lineWith({});
    struct Case {
        OrderLines lines;
        QString text, column;
        int row;
    };
    const Case cases[] = {
        {{}, {}, {}, 0},
        {{good, good}, {}, {}, 0},
        {{lineWith({{&OrderLine::原料代號, u" "_s}})}, {}, {}, 0},
        {{lineWith({{&OrderLine::原料名稱, u""_s}})}, {}, {}, 0},
        {{good,
          lineWith(
              {{&OrderLine::原料代號, u" "_s}, {&OrderLine::原料名稱, u" "_s}, {&OrderLine::單位, u""_s}})},
         u"第2行明細「原料代號及名稱」不能為空!"_s,
         u"代號"_s,
         2},
        {{lineWith({{&OrderLine::單位, u" "_s}, {&OrderLine::寬剖, u"0"_s}})},
         u"第1行明細「單位」不能為空!"_s,
         u"單位"_s,
         1},
        {{lineWith({{&OrderLine::寬剖, u""_s}, {&OrderLine::數量, u"0"_s}})},
         u"第1行明細「走紙才」不能為零!"_s,
         u"走紙才"_s,
         1},
        {{good, lineWith({{&OrderLine::數量, u"0.0"_s}}), lineWith({{&OrderLine::單位, u""_s}})},
         u"第2行明細「採購數量」不能為空!"_s,
         u"大紙數"_s,
         2},
        {{lineWith({{&OrderLine::數量, u"-3"_s}})}, {}, {}, 0}};
    for (const Case& c : cases) {
        const auto finding = checkOrderLines(c.lines);
        ASSERT_EQ(finding.has_value(), c.row > 0) << c.text.toStdString();
        if (!finding) continue;
        EXPECT_EQ(finding->title, u"錯誤"_s);
        EXPECT_EQ(finding->text, c.text);
        EXPECT_EQ(finding->column, c.column);
        EXPECT_EQ(finding->row, c.row);
    }
}

TEST(OrderRules, NewLinesStandAboveAllThatWereEverUsed) {
    struct Case {
        QStringList before;
        double received;
        QStringList after;
    };
    const Case cases[] = {{{}, 0, {}},
                          {{u""_s, u""_s}, 0, {u"1"_s, u"2"_s}},
                          {{u"1"_s, u""_s, u"3"_s, u""_s}, 0, {u"1"_s, u"4"_s, u"3"_s, u"5"_s}},
                          {{u""_s, u"7"_s}, 0, {u"8"_s, u"7"_s}},
                          {{u"0"_s, u"-1"_s, u"x"_s}, 0, {u"1"_s, u"2"_s, u"3"_s}},
                          {{u"2"_s, u""_s}, 9, {u"2"_s, u"10"_s}},
                          {{u"12"_s, u""_s}, 9, {u"12"_s, u"13"_s}}};
    for (const Case& c : cases) {
        OrderLines lines;
        for (const QString& number : c.before)
            lines.push_back(lineWith({{&OrderLine::序, number}}));
        numberOrderLines(lines, c.received);
        QStringList numbers;
        for (const OrderLine& line : lines)
            numbers << line.序;
        EXPECT_EQ(numbers, c.after);
    }
}

TEST(OrderRules, WhatTheWarehouseWroteStays) {
    // Received quantity and 送清, of the same line: as loaded, as stored by now, as it stands on the screen.
    struct Case {
        const char* what;
        QString loaded, loadedMark, stored, storedMark, quantity, shown, shownMark;
        QString received, open, mark;
    };
    const Case cases[] = {{"nothing happened", u"0"_s, u"N"_s, u"0"_s, u"N"_s, u"10"_s, u"0"_s, u"N"_s,
                           u"0"_s, u"10"_s, u"N"_s},
                          {"received in between", u"0"_s, u"N"_s, u"4"_s, u"N"_s, u"10"_s, u"0"_s, u"N"_s,
                           u"4"_s, u"6"_s, u"N"_s},
                          {"all of it in between", u"0"_s, u"N"_s, u"10"_s, u"Y"_s, u"10"_s, u"0"_s, u"N"_s,
                           u"10"_s, u"0"_s, u"Y"_s},
                          {"reversed in between", u"10"_s, u"Y"_s, u"0"_s, u"N"_s, u"10"_s, u"10"_s, u"Y"_s,
                           u"0"_s, u"10"_s, u"N"_s},
                          {"closed by hand here", u"0"_s, u"N"_s, u"4"_s, u"N"_s, u"10"_s, u"0"_s, u"Y"_s,
                           u"4"_s, u"6"_s, u"Y"_s},
                          {"opened by hand here", u"0"_s, u"Y"_s, u"0"_s, u"Y"_s, u"10"_s, u"0"_s, u"N"_s,
                           u"0"_s, u"10"_s, u"N"_s},
                          {"received quantity typed here", u"4"_s, u"N"_s, u"6"_s, u"N"_s, u"10"_s, u"5"_s,
                           u"N"_s, u"5"_s, u"5"_s, u"N"_s},
                          {"the same number written otherwise", u"4"_s, u"N"_s, u"6"_s, u"N"_s, u"10"_s,
                           u"4.0"_s, u"N"_s, u"6"_s, u"4"_s, u"N"_s},
                          {"a new quantity and a receipt", u"0"_s, u"N"_s, u"4"_s, u"N"_s, u"3.5"_s, u"0"_s,
                           u"N"_s, u"4"_s, u"-0.5"_s, u"N"_s},
                          {"no crumbs of far digits", u"0"_s, u"N"_s, u"1000000"_s, u"N"_s, u"1000000.1"_s,
                           u"0"_s, u"N"_s, u"1000000"_s, u"0.1"_s, u"N"_s},
                          {"blanks in the mark", u"0"_s, u"N "_s, u"4"_s, u"Y"_s, u"10"_s, u"0"_s, u"N"_s,
                           u"4"_s, u"6"_s, u"Y"_s}};
    for (const Case& c : cases) {
        const auto at = [&](const QString& received, const QString& mark) {
            return lineWith(
                {{&OrderLine::序, u"3"_s}, {&OrderLine::已入庫數, received}, {&OrderLine::送清, mark}});
        };
        OrderLines lines{at(c.shown, c.shownMark), lineWith({{&OrderLine::已入庫數, u"9"_s}})};
        lines[0].數量 = c.quantity;
        OrderLine stored = at(c.stored, c.storedMark);
        stored.已檢驗數 = u"8"_s;
        stored.檢驗合格數 = u"7"_s;
        mergeWarehouseColumns(lines, {at(c.loaded, c.loadedMark)},
                              {lineWith({{&OrderLine::序, u"1"_s}}), stored});
        EXPECT_EQ(lines[0].已入庫數, c.received) << c.what;
        EXPECT_EQ(lines[0].未交數, c.open) << c.what;
        EXPECT_EQ(lines[0].送清, c.mark) << c.what;
        EXPECT_EQ(lines[0].已檢驗數 + lines[0].檢驗合格數, u"87"_s) << c.what;
        EXPECT_EQ(lines[1].已入庫數, u"9"_s) << "a line without a number is nobody's";
    }
}

TEST(OrderRules, RequisitionsCountWhatASaveChanges) {
    const auto line = [](const QString& requisition, const QString& code, double quantity) {
        OrderLine made = OrderPlant::line(code, quantity, 1, requisition);
        return made;
    };
    struct Case {
        OrderLines lines, stored;
        QStringList changes;
    };
    const Case cases[] = {
        {{}, {}, {}},
        {{line(u"R1"_s, u"A"_s, 5), line(u""_s, u"A"_s, 9), line(u"R1"_s, u""_s, 9)}, {}, {u"R1 A 5"_s}},
        {{line(u"R1"_s, u"A"_s, 5)}, {line(u"R1"_s, u"A"_s, 5)}, {}},
        {{line(u"R1"_s, u"A"_s, 7)}, {line(u"R1"_s, u"A"_s, 5)}, {u"R1 A 2"_s}},
        {{}, {line(u"R1"_s, u"A"_s, 5)}, {u"R1 A -5"_s}},
        {{line(u"R1"_s, u"A"_s, 2), line(u"R1"_s, u"A"_s, 3)}, {line(u"R1"_s, u"A"_s, 5)}, {}},
        {{line(u"R2"_s, u"A"_s, 5)}, {line(u"R1"_s, u"A"_s, 5)}, {u"R1 A -5"_s, u"R2 A 5"_s}},
        {{line(u" R1 "_s, u"A"_s, 0.3)}, {line(u"R1"_s, u" A"_s, 0.1), line(u"R1"_s, u"A"_s, 0.2)}, {}}};
    for (const Case& c : cases) {
        QStringList changes;
        for (const RequisitionChange& change : requisitionChanges(c.lines, c.stored))
            changes << change.申購單號 + u' ' + change.原料代號 + u' ' + numberText(change.quantity);
        EXPECT_EQ(changes, c.changes);
    }
}

TEST(OrderRules, NumbersAreStoredAsNumbers) {
    const OrderLine line = lineWith({{&OrderLine::數量, u"12 張"_s},
                                     {&OrderLine::單價, MaskedMoney},
                                     {&OrderLine::小計, MaskedMoney},
                                     {&OrderLine::原單價, u"3.50"_s},
                                     {&OrderLine::原小計, u"42.00"_s},
                                     {&OrderLine::已入庫數, u""_s},
                                     {&OrderLine::備註, u" 留白 "_s}});
    const OrderLine hidden = normalizedForStore(line, false);
    EXPECT_EQ(QStringList({hidden.數量, hidden.單價, hidden.小計, hidden.已入庫數, hidden.備註}),
              QStringList({u"12"_s, u"3.5"_s, u"42"_s, u"0"_s, u" 留白 "_s}));
}
