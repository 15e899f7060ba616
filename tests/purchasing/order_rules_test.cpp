#include "purchasing/order_plant.h"
#include "purchasing/order_rules.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

/// The parts of a cell of a case; none in an empty one.
QStringList partsOf(const QString& cell, QChar between) {
    return cell.isEmpty() ? QStringList() : cell.split(between);
}

} // namespace

TEST(OrderRules, TheFirstFaultOfTheFirstLineSpeaks) {
    // Lines of code, name, unit, sheet count and quantity; row and column of what is said.
    const auto cases = casesOf<2>(
        {u"|", u"M1,M1,kg,1,10;M1,M1,kg,1,10|", u" ,M1,kg,1,10|", u"M1,,kg,1,10|", u"M1,M1,kg,1,-3|",
         u"M1,M1,kg,1,10; , ,,1,10|2 代號 錯誤: 第2行明細「原料代號及名稱」不能為空!",
         u"M1,M1, ,0,10|1 單位 錯誤: 第1行明細「單位」不能為空!",
         u"M1,M1,kg,,0|1 走紙才 錯誤: 第1行明細「走紙才」不能為零!",
         u"M1,M1,kg,1,10;M1,M1,kg,1,0.0;M1,M1,,1,10|2 大紙數 錯誤: 第2行明細「採購數量」不能為空!"});
    for (const auto& [typed, said] : cases) {
        OrderLines lines;
        for (const QString& texts : partsOf(typed, u';')) {
            const QStringList cells = texts.split(u',');
            OrderLine& line = lines.emplace_back();
            line.原料代號 = cells[0];
            line.原料名稱 = cells[1];
            line.單位 = cells[2];
            line.寬剖 = cells[3];
            line.數量 = cells[4];
        }
        const auto finding = checkOrderLines(lines);
        EXPECT_EQ(
            finding ? u"%1 %2 %3: %4"_s.arg(finding->row).arg(finding->column, finding->title, finding->text)
                    : QString(),
            said)
            << typed;
    }
}

TEST(OrderRules, NewLinesStandAboveAllThatWereEverUsed) {
    const auto cases = casesOf<3>({u"|0|", u",|0|1,2", u"1,,3,|0|1,4,3,5", u",7|0|8,7", u"0,-1,x|0|1,2,3",
                                   u"2,|9|2,10", u"12,|9|12,13"});
    for (const auto& [before, received, after] : cases) {
        OrderLines lines;
        for (const QString& number : partsOf(before, u','))
            lines.emplace_back().序 = number;
        numberOrderLines(lines, received.toDouble());
        QStringList numbers;
        for (const OrderLine& line : lines)
            numbers << line.序;
        EXPECT_EQ(numbers.join(u','), after) << before;
    }
}

TEST(OrderRules, WhatTheWarehouseWroteStays) {
    // Received quantity and 送清 of the same line: as loaded, as stored by now, as it stands on the screen behind its quantity;
    // then what is written: received, open, 送清.
    const auto cases = casesOf<9>(
        {u"nothing happened|0|N|0|N|10|0|N|0 10 N", u"received in between|0|N|4|N|10|0|N|4 6 N",
         u"all of it in between|0|N|10|Y|10|0|N|10 0 Y", u"reversed in between|10|Y|0|N|10|10|Y|0 10 N",
         u"closed by hand here|0|N|4|N|10|0|Y|4 6 Y", u"opened by hand here|0|Y|0|Y|10|0|N|0 10 N",
         u"received quantity typed here|4|N|6|N|10|5|N|5 5 N",
         u"the same number written otherwise|4|N|6|N|10|4.0|N|6 4 N",
         u"a new quantity and a receipt|0|N|4|N|3.5|0|N|4 -0.5 N",
         u"no crumbs of far digits|0|N|1000000|N|1000000.1|0|N|1000000 0.1 N",
         u"blanks in the mark|0|N |4|Y|10|0|N|4 6 Y"});
    const auto at = [](const QString& received, const QString& mark) {
        OrderLine line = OrderPlant::line(u"M1"_s, 10, 1);
        line.序 = u"3"_s;
        line.已入庫數 = received;
        line.送清 = mark;
        return line;
    };
    for (const auto& [what, loaded, loadedMark, now, nowMark, quantity, shown, shownMark, written] : cases) {
        OrderLines lines{at(shown, shownMark), at(u"9"_s, u"N"_s)};
        lines[0].數量 = quantity;
        lines[1].序.clear();
        OrderLines stored{at(u"1"_s, u"Y"_s), at(now, nowMark)};
        stored[0].序 = u"1"_s;
        stored[1].已檢驗數 = u"8"_s;
        stored[1].檢驗合格數 = u"7"_s;
        mergeWarehouseColumns(lines, {at(loaded, loadedMark)}, stored);
        EXPECT_EQ(lines[0].已入庫數 + u' ' + lines[0].未交數 + u' ' + lines[0].送清, written) << what;
        EXPECT_EQ(lines[0].已檢驗數 + lines[0].檢驗合格數, u"87"_s) << what;
        EXPECT_EQ(lines[1].已入庫數, u"9"_s) << "a line without a number is nobody's";
    }
}

TEST(OrderRules, RequisitionsCountWhatASaveChanges) {
    // Requisition, item and quantity of each line now and as stored; what changes.
    const auto cases = casesOf<3>({u"||", u"R1/A/5;/A/9;R1//9||R1 A 5", u"R1/A/5|R1/A/5|",
                                   u"R1/A/7|R1/A/5|R1 A 2", u"|R1/A/5|R1 A -5", u"R1/A/2;R1/A/3|R1/A/5|",
                                   u"R2/A/5|R1/A/5|R1 A -5, R2 A 5", u" R1 /A/0.3|R1/ A/0.1;R1/A/0.2|"});
    const auto linesOf = [](const QString& texts) {
        OrderLines lines;
        for (const QString& text : partsOf(texts, u';')) {
            const QStringList cells = text.split(u'/');
            lines.push_back(OrderPlant::line(cells[1], cells[2].toDouble(), 1, cells[0]));
        }
        return lines;
    };
    for (const auto& [now, stored, expected] : cases) {
        QStringList changes;
        for (const RequisitionChange& change : requisitionChanges(linesOf(now), linesOf(stored)))
            changes << change.申購單號 + u' ' + change.原料代號 + u' ' + numberText(change.quantity);
        EXPECT_EQ(changes.join(u", "_s), expected) << now << " for " << stored;
    }
}

TEST(OrderRules, NumbersAreStoredAsNumbers) {
    OrderLine line;
    line.數量 = u"12 張"_s;
    line.單價 = line.小計 = MaskedMoney;
    line.原單價 = u"3.50"_s;
    line.原小計 = u"42.00"_s;
    line.備註 = u" 留白 "_s;
    const OrderLine hidden = normalizedForStore(line, false);
    EXPECT_EQ(QStringList({hidden.數量, hidden.單價, hidden.小計, hidden.已入庫數, hidden.備註}),
              QStringList({u"12"_s, u"3.5"_s, u"42"_s, u"0"_s, u" 留白 "_s}));
}
