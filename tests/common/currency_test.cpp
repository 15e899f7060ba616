#include "common/currency.h"
#include "plant_session.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

class Rates : public PlantSession {
public:
    Rates() {
        run({u"insert into 匯率檔 (幣別,匯率,默認幣別) values "
             u"('台幣','1','Y'),('美金','4','N'),('日圓','0','N'),('港幣',' ','N')",
             u"insert into 匯率修改記錄 (幣別,匯率,修改日期) values "
             u"('美金','3','20240101'),('美金','3.5','20240601'),('美金','4','20250101'),"
             u"('日圓','0','20240101'),('台幣','2','20240101')",
             u"insert into 匯率修改記錄 (幣別,匯率,修改日期,材質名稱) values "
             u"('','0.5','20240101','K'),(null,'0.25','20240102','M')"});
    }
};

} // namespace

TEST(Currency, AmountsAtTodaysRates) {
    Rates plant;
    Connection connection(plant.pool, plant.target);
    const auto cases = casesOf<4>(
        {u"美金|台幣|100|400", u"台幣|美金|100|25", u"美金||100|400", u" 美金 |美金|0.12345678|0.12345678",
         u"| |7|7", u"歐元|台幣|5|5", u"歐元|美金|8|2", u"日圓|台幣|5|5", u"台幣|日圓|5|5", u"台幣|港幣|5|5",
         u"台幣|歐元|0.1234567|0.123457", u"|美金|8|2", u"美金|台幣|-2.5|-10", u"x' or 1=1 --|台幣|3|3"});
    for (const auto& [from, to, amount, result] : cases)
        EXPECT_EQ(convertCurrency(connection, from, amount.toDouble(), to), result.toDouble())
            << from << " > " << to;
}

TEST(Currency, TheSourcesRateIsThatOfBefore) {
    Rates plant;
    Connection connection(plant.pool, plant.target);
    // What 10 of the source are in the target at a date.
    const auto cases =
        casesOf<4>({u"美金|台幣|20240601|30", u"美金|台幣|20240602|35", u"美金|台幣|20240101|10",
                    u"美金|台幣|99991231|40", u"美金||20240602|35", u"台幣|美金|20240602|5",
                    u"歐元|台幣|20250601|10", u"日圓|美金|20250601|2.5", u"|台幣|20250601|10",
                    u"|美金|20250601|2.5", u"美金| 美金|20240602|10", u"美金|台幣||10"});
    for (const auto& [from, to, date, result] : cases)
        EXPECT_EQ(convertCurrencyAt(connection, from, 10, to, date), result.toDouble())
            << from << " > " << to << " at " << date;
}

TEST(Currency, WithoutARateTableAllIsOne) {
    PlantSession plant;
    Connection connection(plant.pool, plant.target);
    EXPECT_EQ(convertCurrency(connection, u"美金"_s, 10.1234567, u""_s), 10.123457);
    EXPECT_EQ(convertCurrencyAt(connection, u"美金"_s, 10, u"台幣"_s, u"20250101"_s), 10);
    EXPECT_EQ(currencies(plant.session), QStringList(QString()));
    // Without a marked one the first row is the base.
    plant.run({u"insert into 匯率檔 (幣別,匯率,默認幣別) values ('美金','4',null)"});
    EXPECT_EQ(convertCurrency(connection, u"歐元"_s, 8, u""_s), 2);
}

TEST(Currency, TheListBeginsWithNone) {
    Rates plant;
    plant.run({u"insert into 匯率檔 (幣別,匯率) values ('人民幣 ','4')"});
    const QStringList sorted = plant.rows(u"select rtrim(幣別) from 匯率檔 order by 幣別");
    EXPECT_EQ(currencies(plant.session), QStringList(QString()) + sorted);
}

TEST(Currency, AFailureIsToldAndGivesNothing) {
    Rates plant;
    plant.session.connectionString = u"Provider=SQLite;Data Source=/nowhere/plant.db"_s;
    EXPECT_EQ(convertCurrencyAt(plant.session, u"美金"_s, 10, u"台幣"_s, u"20250101"_s), 0);
    EXPECT_EQ(convertCurrency(plant.session, u"美金"_s, 10, u"台幣"_s), 0);
    EXPECT_EQ(currencies(plant.session), QStringList(QString()));
    ASSERT_EQ(plant.messages.told.size(), 3);
    for (const QString& told : plant.messages.told)
        EXPECT_TRUE(told.startsWith(u"取得幣別資料錯誤: ")) << told;
    EXPECT_EQ(convertCurrency(plant.session, u"美金"_s, 10, u"美金"_s), 10)
        << "equal currencies need no database";
}
