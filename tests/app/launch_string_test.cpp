#include "app/launch_string.h"
#include <gtest/gtest.h>
#include <random>

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

QString partsOf(const QString& launch) {
    const LaunchValues v = parseLaunch(launch);
    return QStringList{v.connection, v.function, v.user, v.approval, v.other}.join(u'|');
}

} // namespace

TEST(LaunchString, FiveValuesBetweenTheirMarkers) {
    const LaunchValues values{u"Provider=SQLite;Data Source=a b.db"_s, u" 物料採購作業 "_s, u"採購甲"_s,
                              u"N"_s, u"DSN=x;PWD=&&=&&"_s};
    EXPECT_EQ(partsOf(composeLaunch(values)),
              u"Provider=SQLite;Data Source=a b.db| 物料採購作業 |採購甲|N|DSN=x;PWD=&&=&&"_s);
}

TEST(LaunchString, AMissingOrMisplacedMarkerLeavesItsFieldEmpty) {
    for (const auto& [text, parts] :
         casesOf<2>({u"&&連結&&=c&&種類&&=f&&用戶&&=u&&審單&&=&&其它&&=|c|f|u||",
                     u"&&連結&&=c&&種類&&=f&&審單&&=Y&&其它&&=o|c|||Y|o",
                     u"&&種類&&=f&&連結&&=c&&用戶&&=u&&審單&&=Y&&其它&&=o||f&&連結&&=c|u|Y|o",
                     u"no markers at all, but long enough|||||", u"&&其它&&=tail|||||tail"}))
        EXPECT_EQ(partsOf(text), parts) << text;
}

TEST(LaunchString, EveryFunctionHasItsRow) {
    EXPECT_EQ(launchTable().size(), 18u);
    EXPECT_EQ(launchTarget(u"浪紙入庫作業"_s)->category, u"紙板"_s);
    EXPECT_FALSE(launchTarget(u"原料計價公式"_s)->keepsFunction);
    EXPECT_EQ(launchTarget(u"單位換算公式"_s)->formulaMode, u"單位換算"_s);
    EXPECT_EQ(launchTarget(u"浪紙採購作業"_s), nullptr);
}

TEST(LaunchString, AnyBytesGiveValues) {
    const int wanted = qEnvironmentVariableIntValue("LIAOWU_RANDOM_INPUTS");
    const int inputs = wanted > 0 ? wanted : 100000;
    std::mt19937 random(11);
    const QStringList pieces =
        u"&&連結&&= &&種類&&= &&用戶&&= &&審單&&= &&其它&&= & = x 紙 &&"_s.split(u' ') +
        QStringList{QString(QChar(0)), QString(QChar(0xD842)), QString(5000, u'a')};
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
