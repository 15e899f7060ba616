#include "common/text_values.h"
#include <gtest/gtest.h>
#include <random>

using namespace liaowu;
using namespace Qt::StringLiterals;

TEST(TextValues, NumbersAreReadAsTheUserTypedThem) {
    const std::pair<QString, double> cases[] = {
        {u""_s, 0},       {u"12abc"_s, 12}, {u"1,234"_s, 1}, {u"  -3.5"_s, -3.5},
        {u"+7"_s, 7},     {u"."_s, 0},      {u"-"_s, 0},     {u"1.2.3"_s, 1.2},
        {u"1e308"_s, 1},  {u".5"_s, 0.5},   {u"- 5"_s, 0},   {u"５"_s, 0},
        {u"00012"_s, 12}, {u"abc"_s, 0},    {u"\t 4"_s, 4},  {QString(400, u'9'), 0}};
    for (const auto& [text, value] : cases)
        EXPECT_EQ(val(text), value) << text.toStdString();
}

TEST(TextValues, NumbersAreWrittenShortest) {
    const std::pair<double, const char*> cases[] = {{0, "0"},
                                                    {-0.0, "0"},
                                                    {0.5, "0.5"},
                                                    {1234567.891, "1234567.891"},
                                                    {1e15, "1000000000000000"},
                                                    {0.1 + 0.2, "0.3"},
                                                    {1e-7, "0.0000001"},
                                                    {-12.50, "-12.5"},
                                                    {1.0 / 3, "0.333333333333333"},
                                                    {100, "100"},
                                                    {1e20, "100000000000000000000"},
                                                    {999999999999999.9, "1000000000000000"}};
    for (const auto& [value, text] : cases)
        EXPECT_EQ(numberText(value).toStdString(), text);
}

TEST(TextValues, MasksRoundHalfAwayFromZeroOnTheDecimalText) {
    struct Case {
        double value;
        QString mask, text;
    };
    const Case cases[] = {{1.005, u"0.00"_s, u"1.01"_s},
                          {2.675, u"0.00"_s, u"2.68"_s},
                          {-1.005, u"0.00"_s, u"-1.01"_s},
                          {-0.004, u"0.00"_s, u"0.00"_s},
                          {0.5, u"0"_s, u"1"_s},
                          {1.5, u"0"_s, u"2"_s},
                          {2.5, u"0"_s, u"3"_s},
                          {7, u"0000"_s, u"0007"_s},
                          {123456, u"0000"_s, u"123456"_s},
                          {1234567.5, u"###,###,##0"_s, u"1,234,568"_s},
                          {999, u"###,###,##0.0"_s, u"999.0"_s},
                          {0.1234567, u"0.000000"_s, u"0.123457"_s},
                          {9.9999, u"0.000"_s, u"10.000"_s},
                          {20250115, u"####/##/##"_s, u"2025/01/15"_s},
                          {99.995, u"0.00"_s, u"100.00"_s}};
    for (const Case& c : cases)
        EXPECT_EQ(format(c.value, c.mask), c.text) << c.value << " " << c.mask.toStdString();
}

TEST(TextValues, AmountsForPaperCountTheirOwnDecimals) {
    const std::pair<QString, QString> cases[] = {
        {u"1234"_s, u"1,234"_s},       {u"0.12345"_s, u"0.12"_s}, {u""_s, u""_s},
        {u"1234.50"_s, u"1,234.5"_s},  {u"1.234"_s, u"1.234"_s},  {u"1.2345"_s, u"1.2345"_s},
        {u"-9876.5"_s, u"-9,876.5"_s}, {u"1.25"_s, u"1.25"_s}};
    for (const auto& [text, shown] : cases)
        EXPECT_EQ(formatAmount(text), shown);
}

TEST(TextValues, TextsAreCutAtWholeCharacters) {
    struct Case {
        QString text;
        int bytes;
        QString kept;
    };
    const Case cases[] = {{u"紙板ABC"_s, 5, u"紙板A"_s}, {u"紙"_s, 1, u""_s},     {u"紙板"_s, 4, u"紙板"_s},
                          {u"A紙"_s, 2, u"A"_s},         {u"𠮷野"_s, 2, u"𠮷"_s}, {u"𠮷野"_s, 1, u""_s},
                          {u"abc"_s, 0, u""_s},          {u""_s, 3, u""_s}};
    for (const Case& c : cases)
        EXPECT_EQ(truncateBytes(c.text, c.bytes), c.kept) << c.text.toStdString();
}

TEST(TextValues, DatesAreCalendarDates) {
    for (const auto& good : {u""_s, u"20240229"_s, u"20251231"_s, u"20000229"_s})
        EXPECT_EQ(validDate8(good), 0);
    for (const auto& bad : {u"20240230"_s, u"2024023"_s, u"20230229"_s, u"2024/1/1"_s, u"        "_s,
                            u"abcdefgh"_s, u"20241301"_s, u"19000229"_s, u"２０２４０１０１"_s})
        EXPECT_EQ(validDate8(bad), Failed) << bad.toStdString();
    EXPECT_EQ(lastDayOfMonth(u"20240215"_s), u"20240229"_s);
    EXPECT_EQ(lastDayOfMonth(u"20230215"_s), u"20230228"_s);
    EXPECT_EQ(lastDayOfMonth(u"20231105"_s), u"20231130"_s);
    EXPECT_EQ(firstOfNextMonth(u"20241215"_s), u"20250101"_s);
    EXPECT_EQ(firstOfNextMonth(u"20240131"_s), u"20240201"_s);
}

TEST(TextValues, SizesAreSplitIntoRuns) {
    EXPECT_EQ(splitNumbers(u"31.5*43", 2), (std::vector<QString>{u"31.5"_s, u"43"_s}));
    EXPECT_EQ(splitNumbers(u"寬31長43高9", 2), (std::vector<QString>{u"31"_s, u"43"_s}));
    EXPECT_EQ(splitNumbers(u"寬31長43高9", 3), (std::vector<QString>{u"31"_s, u"43"_s, u"9"_s}));
    EXPECT_EQ(splitNumbers(u"abc", 2), (std::vector<QString>{QString(), QString()}));
    EXPECT_EQ(splitNumbers(u"5", 3), (std::vector<QString>{u"5"_s, QString(), QString()}));
}

TEST(TextValues, CodesCountOnAsAnOdometer) {
    const std::pair<QString, QString> cases[] = {{u"0009"_s, u"0010"_s},
                                                 {u"A9"_s, u"B0"_s},
                                                 {u"AZ"_s, u"BA"_s},
                                                 {u"2401150099"_s, u"2401150100"_s},
                                                 {u"9999"_s, u"Z0000"_s},
                                                 {u""_s, u"Z"_s},
                                                 {u"A-9"_s, u"B-0"_s},
                                                 {u"250115999"_s, u"250116000"_s},
                                                 {u" 0001 "_s, u"0002"_s},
                                                 {u"ZZ"_s, u"ZAA"_s},
                                                 {u"0:"_s, u"0A"_s},
                                                 {u"0/"_s, u"00"_s},
                                                 {u"a"_s, u"ZA"_s},
                                                 {u"-"_s, u"Z-"_s},
                                                 {u"250115T0009"_s, u"250115T0010"_s}};
    for (const auto& [code, next] : cases)
        EXPECT_EQ(nextCode(code), next) << code.toStdString();
    const std::pair<QString, QString> items[] = {
        {u"AB0099"_s, u"AB0100"_s}, {u"AB99"_s, u"AB100"_s}, {u"ABC"_s, u"ABC"_s}};
    for (const auto& [code, next] : items)
        EXPECT_EQ(nextItemCodeAfter(code), next);
}

TEST(TextValues, FiltersTakeWhatTheirModeTakes) {
    struct Case {
        int mode;
        QString typed, kept;
    };
    const Case cases[] = {
        {1, u"１２a-3"_s, u"123"_s}, {2, u"aB1紙"_s, u"AB"_s},   {3, u"-1.5=x，"_s, u"-1.5="_s},
        {4, u"1 :-x"_s, u"1 :-"_s},  {5, u"1.+-"_s, u"1.+"_s},   {6, u"YNyn.*H"_s, u"YN.*"_s},
        {7, u"VvY.*"_s, u"V.*"_s},   {8, u"YNHCV"_s, u"YNHC"_s}, {9, u"1.-+="_s, u"1.-+"_s},
        {0, u"紙x"_s, u"紙x"_s},     {10, u"ａ"_s, u"ａ"_s}};
    for (const Case& c : cases)
        EXPECT_EQ(filterText(c.typed, c.mode), c.kept) << c.mode;
    for (int mode = 1; mode <= 9; ++mode) {
        EXPECT_EQ(filterKey(8, mode), 8);
        EXPECT_EQ(filterKey(13, mode), 13);
    }
}

TEST(TextValues, AFieldOfOneLineTakesATextAsALine) {
    struct Case {
        QString text;
        int mode;
        bool upper;
        QString taken;
    };
    const Case cases[] = {{u"a\r\nb\nc\rd"_s, 0, false, u"a b c d"_s},
                          {u"n"_s, 6, true, u"N"_s},
                          {u"n"_s, 6, false, u""_s},
                          {u"ｙ"_s, 6, true, u"Y"_s},
                          {u"１２\n３"_s, 1, false, u"123"_s},
                          {u"kg-a"_s, 0, true, u"KG-A"_s},
                          {u"𠮷é"_s, 0, true, u"𠮷É"_s},
                          {u""_s, 3, true, u""_s}};
    for (const Case& c : cases)
        EXPECT_EQ(acceptedText(c.text, c.mode, c.upper), c.taken) << c.text.toStdString();
}

TEST(TextValues, WrittenNumbersReadBackAsTheSame) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> digits(-1, 1);
    std::uniform_int_distribution<int> scale(-6, 12);
    for (int i = 0; i < 100000; ++i) {
        const double value = digits(random) * std::pow(10, scale(random));
        const double back = val(numberText(value));
        ASSERT_NEAR(back, value, std::fabs(value) * 1e-14 + 1e-300);
        ASSERT_EQ(numberText(back), numberText(value));
    }
}
