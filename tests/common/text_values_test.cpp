#include "common/text_values.h"
#include <gtest/gtest.h>
#include <random>

using namespace liaowu;
using namespace Qt::StringLiterals;

TEST(TextValues, NumbersAreReadAsTheUserTypedThem) {
    for (const auto& [text, value] :
         casesOf<2>({u"|0", u"12abc|12", u"1,234|1", u"  -3.5|-3.5", u"+7|7", u".|0", u"-|0", u"1.2.3|1.2",
                     u"1e308|1", u".5|0.5", u"- 5|0", u"５|0", u"00012|12", u"abc|0", u"\t 4|4"}))
        EXPECT_EQ(val(text), value.toDouble()) << text;
    EXPECT_EQ(val(QString(400, u'9')), 0);
}

TEST(TextValues, NumbersAreWrittenShortest) {
    for (const auto& [value, text] :
         casesOf<2>({u"0|0", u"-0|0", u"0.5|0.5", u"1234567.891|1234567.891", u"1e15|1000000000000000",
                     // Sums of a computer.
                     u"0.30000000000000004|0.3", u"1e-7|0.0000001", u"-12.50|-12.5",
                     u"0.33333333333333333|0.333333333333333", u"100|100", u"1e20|100000000000000000000",
                     u"999999999999999.9|1000000000000000"}))
        EXPECT_EQ(numberText(value.toDouble()), text);
}

TEST(TextValues, MasksRoundHalfAwayFromZeroOnTheDecimalText) {
    const auto cases = casesOf<3>(
        {u"1.005|0.00|1.01", u"2.675|0.00|2.68", u"-1.005|0.00|-1.01", u"-0.004|0.00|0.00", u"0.5|0|1",
         u"1.5|0|2", u"2.5|0|3", u"7|0000|0007", u"123456|0000|123456", u"1234567.5|###,###,##0|1,234,568",
         u"999|###,###,##0.0|999.0", u"0.1234567|0.000000|0.123457", u"9.9999|0.000|10.000",
         u"20250115|####/##/##|2025/01/15", u"99.995|0.00|100.00"});
    for (const auto& [value, mask, text] : cases)
        EXPECT_EQ(format(value.toDouble(), mask), text) << value << " " << mask;
}

TEST(TextValues, AmountsForPaperCountTheirOwnDecimals) {
    for (const auto& [text, shown] :
         casesOf<2>({u"1234|1,234", u"0.12345|0.12", u"|", u"1234.50|1,234.5", u"1.234|1.234",
                     u"1.2345|1.2345", u"-9876.5|-9,876.5", u"1.25|1.25"}))
        EXPECT_EQ(formatAmount(text), shown);
}

TEST(TextValues, TextsAreCutAtWholeCharacters) {
    for (const auto& [text, bytes, kept] :
         casesOf<3>({u"紙板ABC|5|紙板A", u"紙|1|", u"紙板|4|紙板", u"A紙|2|A", u"𠮷野|2|𠮷", u"𠮷野|1|",
                     u"abc|0|", u"|3|"}))
        EXPECT_EQ(truncateBytes(text, bytes.toInt()), kept) << text;
}

TEST(TextValues, DatesAreCalendarDates) {
    for (const auto& good : {u""_s, u"20240229"_s, u"20251231"_s, u"20000229"_s})
        EXPECT_EQ(validDate8(good), 0);
    for (const auto& bad : {u"20240230"_s, u"2024023"_s, u"20230229"_s, u"2024/1/1"_s, u"        "_s,
                            u"abcdefgh"_s, u"20241301"_s, u"19000229"_s, u"２０２４０１０１"_s})
        EXPECT_EQ(validDate8(bad), Failed) << bad;
    for (const auto& [day, last, next] : casesOf<3>(
             {u"20240215|20240229|20240301", u"20230215|20230228|20230301", u"20231105|20231130|20231201",
              u"20241215|20241231|20250101", u"20240131|20240131|20240201"})) {
        EXPECT_EQ(lastDayOfMonth(day), last);
        EXPECT_EQ(firstOfNextMonth(day), next);
    }
}

TEST(TextValues, SizesAreSplitIntoRuns) {
    for (const auto& [text, parts, numbers] :
         casesOf<3>({u"31.5*43|2|31.5,43", u"寬31長43高9|2|31,43", u"寬31長43高9|3|31,43,9", u"abc|2|,",
                     u"5|3|5,,"})) {
        const std::vector<QString> found = splitNumbers(text, parts.toInt());
        EXPECT_EQ(QStringList(found.begin(), found.end()).join(u','), numbers);
    }
}

TEST(TextValues, CodesCountOnAsAnOdometer) {
    for (const auto& [code, next] :
         casesOf<2>({u"0009|0010", u"A9|B0", u"AZ|BA", u"2401150099|2401150100", u"9999|Z0000", u"|Z",
                     u"A-9|B-0", u"250115999|250116000", u" 0001 |0002", u"ZZ|ZAA", u"0:|0A", u"0/|00",
                     u"a|ZA", u"-|Z-", u"250115T0009|250115T0010"}))
        EXPECT_EQ(nextCode(code), next) << code;
    for (const auto& [code, next] : casesOf<2>({u"AB0099|AB0100", u"AB99|AB100", u"ABC|ABC"}))
        EXPECT_EQ(nextItemCodeAfter(code), next);
}

TEST(TextValues, FiltersTakeWhatTheirModeTakes) {
    for (const auto& [mode, typed, kept] :
         casesOf<3>({u"1|１２a-3|123", u"2|aB1紙|AB", u"3|-1.5=x，|-1.5=", u"4|1 :-x|1 :-", u"5|1.+-|1.+",
                     u"6|YNyn.*H|YN.*", u"7|VvY.*|V.*", u"8|YNHCV|YNHC", u"9|1.-+=|1.-+", u"0|紙x|紙x",
                     u"10|ａ|ａ"}))
        EXPECT_EQ(filterText(typed, mode.toInt()), kept) << mode;
    for (int mode = 1; mode <= 9; ++mode) {
        EXPECT_EQ(filterKey(8, mode), 8);
        EXPECT_EQ(filterKey(13, mode), 13);
    }
}

TEST(TextValues, AFieldOfOneLineTakesATextAsALine) {
    for (const auto& [text, mode, upper, taken] :
         casesOf<4>({u"a\r\nb\nc\rd|0|no|a b c d", u"n|6|yes|N", u"n|6|no|", u"ｙ|6|yes|Y",
                     u"１２\n３|1|no|123", u"kg-a|0|yes|KG-A", u"𠮷é|0|yes|𠮷É", u"|3|yes|"}))
        EXPECT_EQ(acceptedText(text, mode.toInt(), upper == u"yes"), taken) << text;
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
