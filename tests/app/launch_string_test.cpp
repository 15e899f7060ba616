#include "app/launch_string.h"
#include <gtest/gtest.h>
#include <random>

using namespace liaowu;
using namespace Qt::StringLiterals;

TEST(LaunchString, FiveValuesBetweenTheirMarkers) {
    const LaunchValues values{u"Provider=SQLite;Data Source=a b.db"_s, u" 物料採購作業 "_s, u"採購甲"_s,
                              u"N"_s, u"DSN=x;PWD=&&=&&"_s};
    const LaunchValues back = parseLaunch(composeLaunch(values));
    EXPECT_EQ(back.connection, values.connection);
    EXPECT_EQ(back.function, values.function);
    EXPECT_EQ(back.user, values.user);
    EXPECT_EQ(back.approval, values.approval);
    EXPECT_EQ(back.other, values.other);
}

TEST(LaunchString, AMissingOrMisplacedMarkerLeavesItsFieldEmpty) {
    struct Case {
        QString text;
        QStringList values;
    };
    const Case cases[] = {
        {u"&&連結&&=c&&種類&&=f&&用戶&&=u&&審單&&=&&其它&&="_s, {u"c"_s, u"f"_s, u"u"_s, u""_s, u""_s}},
        {u"&&連結&&=c&&種類&&=f&&審單&&=Y&&其它&&=o"_s, {u"c"_s, u""_s, u""_s, u"Y"_s, u"o"_s}},
        {u"&&種類&&=f&&連結&&=c&&用戶&&=u&&審單&&=Y&&其它&&=o"_s,
         {u""_s, u"f&&連結&&=c"_s, u"u"_s, u"Y"_s, u"o"_s}},
        {u"no markers at all, but long enough"_s, {u""_s, u""_s, u""_s, u""_s, u""_s}},
        {u"&&其它&&=tail"_s, {u""_s, u""_s, u""_s, u""_s, u"tail"_s}},
    };
    for (const Case& c : cases) {
        const LaunchValues v = parseLaunch(c.text);
        EXPECT_EQ((QStringList{v.connection, v.function, v.user, v.approval, v.other}), c.values)
            << c.text.toStdString();
    }
}

TEST(LaunchString, EveryFunctionHasItsRow) {
    EXPECT_EQ(launchTable().size(), 18u);
    EXPECT_EQ(launchTarget(u"浪紙入庫作業"_s)->category, u"紙板"_s);
    EXPECT_FALSE(launchTarget(u"原料計價公式"_s)->keepsFunction);
    EXPECT_EQ(launchTarget(u"單位換算公式"_s)->formulaMode, u"單位換算"_s);
    EXPECT_EQ(launchTarget(u"浪紙採購作業"_s), nullptr);
}

TEST(LaunchString, AnyBytesGiveValues) {
    const int inputs = qEnvironmentVariableIsSet("LIAOWU_RANDOM_INPUTS")
                           ? qEnvironmentVariableIntValue("LIAOWU_RANDOM_INPUTS")
                           : 100000;
    std::mt19937 random(11);
    const QStringList pieces{u"&&連結&&="_s,
                             u"&&種類&&="_s,
                             u"&&用戶&&="_s,
                             u"&&審單&&="_s,
                             u"&&其它&&="_s,
                             u"&"_s,
                             u"="_s,
                             u"x"_s,
                             QString(QChar(0)),
                             u"紙"_s,
                             QString(QChar(0xD842)),
                             u"&&"_s,
                             QString(5000, u'a')};
    for (int i = 0; i < inputs; ++i) {
        QString text;
        for (size_t n = random() % 14; n > 0; --n)
            text += pieces[static_cast<qsizetype>(random() % static_cast<unsigned>(pieces.size()))];
        const LaunchValues v = parseLaunch(text);
        // Every value is a part of the string that stands behind its marker.
        if (!v.function.isEmpty()) {
            ASSERT_TRUE(text.contains(u"&&種類&&="_s + v.function));
        }
        if (!v.other.isEmpty()) {
            ASSERT_TRUE(text.endsWith(v.other));
        }
    }
}
