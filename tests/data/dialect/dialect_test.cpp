#include "data/dialect/engine.h"
#include "data/test_database.h"

using namespace liaowu;
using namespace liaowu::dialect;
using namespace Qt::StringLiterals;

TEST(DialectLift, ValuesDoNotChangeTheShape) {
    const struct {
        QString one, other;
        bool same;
    } cases[] = {
        {u"select a from t where k='x'"_s, u"select a from t where k=N'中''文'"_s, true},
        {u"select a from t where k=1"_s, u"select a from t where k=22"_s, true},
        {u"select a from t where k=1"_s, u"select a from t where k=1.0"_s, false},
        {u"select a from t where k=1"_s, u"select a from t where k='1'"_s, false},
        {u"select a from t where k=1.5"_s, u"select a from t where k=1.5e0"_s, false},
        {u"select top 1 a from t"_s, u"select top 2 a from t"_s, false},
        {u"select top (1) a from t"_s, u"select top (2) a from t"_s, false},
        {u"select a from t order by 1"_s, u"select a from t order by 2"_s, false},
        {u"select a, left(b,1) from t group by a, left(b,1)"_s,
         u"select a, left(b,2) from t group by a, left(b,1)"_s, false},
        {u"select a from t where b='1' group by a"_s, u"select a from t where b='2' group by a"_s, true},
        {u"select convert(nvarchar(10),a,20) from t"_s, u"select convert(nvarchar(10),a,112) from t"_s,
         false},
        {u"select convert(nvarchar(10),a,20) from t"_s, u"select convert(nvarchar(20),a,20) from t"_s, false},
        {u"select convert(nvarchar,left(a,1),20) from t"_s, u"select convert(nvarchar,left(a,2),20) from t"_s,
         true},
        {u"select a from t where k like 'A%'"_s, u"select a from t where k like 'BC%'"_s, true},
        {u"select a from t where k like 'A%'"_s, u"select a from t where k like '%BC%'"_s, false},
        {u"select a from t where k like '%'"_s, u"select a from t where k like '%BC%'"_s, true},
        {u"select a from t where k like 'a!%' escape '!'"_s,
         u"select a from t where k like 'a!%' escape '#'"_s, false},
        {u"select a 'x' from t"_s, u"select a 'y' from t"_s, false},
        {u"select a as 'x' from t"_s, u"select a as 'y' from t"_s, false},
        {u"select 'v' 'x' from t"_s, u"select 'w' 'x' from t"_s, true},
        {u"select case when a='1' then 'x' else 'y' end z from t"_s,
         u"select case when a='2' then 'p' else '' end z from t"_s, true},
        {u"insert into t values ('a', 1)"_s, u"insert into t values ('b', 2)"_s, true},
        {u"create table t (a nvarchar(5) default 'x')"_s, u"create table t (a nvarchar(5) default 'y')"_s,
         false},
    };
    for (const auto& [one, other, same] : cases)
        EXPECT_EQ(lift(one).shape == lift(other).shape, same)
            << one.toStdString() << " / " << other.toStdString();
}

TEST(Dialect, LikeWithFixedPrefixSearchesTheIndex) {
    Engine engine;
    engine.run(u"create table 採購資料 (採購單號 nvarchar(20) primary key, 類別 nvarchar(10), "
               "廠商代號 nvarchar(10))"_s);
    engine.run(u"create table [採購明細資料] ([採購單號] nvarchar(20), 序 int, "
               "constraint pk明細 primary key (採購單號, 序))"_s);
    engine.run(u"create index ix廠商 on 採購資料 (廠商代號)"_s);
    const QString numbering =
        engine.plan(u"select 採購單號 from [採購資料] where 採購單號 like '240101%'order by 採購單號 desc"_s);
    EXPECT_TRUE(numbering.contains(u"SEARCH"_s) && !numbering.contains(u"TEMP B-TREE"_s))
        << numbering.toStdString();
    const QString vendor = engine.plan(u"select * from 採購資料 where 廠商代號 like 'A%' and 類別='x'"_s);
    EXPECT_TRUE(vendor.contains(u"SEARCH 採購資料 USING INDEX ix廠商"_s)) << vendor.toStdString();
    const QString lines =
        engine.plan(u"select b.序 from 採購資料 a inner join 採購明細資料 b on a.採購單號=b.採購單號 "
                    "where a.廠商代號='V1'"_s);
    EXPECT_EQ(lines.count(u"SEARCH"_s), 2) << lines.toStdString();
}

// The oracle counts no positions, and knows no statement that is left to the server alone.
TEST(Dialect, RefusesWithPosition) {
    Engine engine;
    engine.run(u"create table 採購資料 (採購單號 nvarchar(20), 類別 nvarchar(10))"_s);
    const std::pair<QString, QString> cases[] = {
        {u"select 採購單號 form 採購資料"_s, u"Incorrect syntax near '採購資料'. (position 18)"_s},
        {u"select 'abc' + from 採購資料"_s, u"Incorrect syntax near 'from'. (position 16)"_s},
        {u"select N'it''s', 1 from 採購資料 where 類別='x' and and"_s,
         u"Incorrect syntax near 'and'. (position 47)"_s},
        {u"select top 5 percent * from 採購資料"_s,
         u"TOP ... PERCENT is not covered by the embedded engine. (position 14)"_s},
        {u"declare @a int"_s, u"DECLARE is not covered by the embedded engine. (position 1)"_s},
    };
    for (const auto& [statement, expected] : cases) {
        QString text;
        EXPECT_EQ(errorOf([&] { engine.run(statement); }, &text), DatabaseError::NotCovered);
        EXPECT_EQ(text, expected);
    }
}
