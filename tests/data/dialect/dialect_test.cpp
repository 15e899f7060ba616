#include "data/dialect/engine.h"

using namespace liaowu;
using namespace liaowu::dialect;
using namespace Qt::StringLiterals;

TEST(DialectLift, ValuesDoNotChangeTheShape) {
    for (const auto& [one, other] : casesOf<2>(
             {u"select a from t where k='x'|select a from t where k=N'中''文'",
              u"select a from t where k=1|select a from t where k=22",
              u"select a from t where b='1' group by a|select a from t where b='2' group by a",
              u"select convert(nvarchar,left(a,1),20) from t|select convert(nvarchar,left(a,2),20) from t",
              u"select a from t where k like 'A%'|select a from t where k like 'BC%'",
              u"select a from t where k like '%'|select a from t where k like '%BC%'",
              u"select 'v' 'x' from t|select 'w' 'x' from t",
              u"select case when a='1' then 'x' else 'y' end z from t|"
              u"select case when a='2' then 'p' else '' end z from t",
              u"insert into t values ('a', 1)|insert into t values ('b', 2)"}))
        EXPECT_EQ(lift(one).shape, lift(other).shape);
    for (const auto& [one, other] : casesOf<2>(
             {u"select a from t where k=1|select a from t where k=1.0",
              u"select a from t where k=1|select a from t where k='1'",
              u"select a from t where k=1.5|select a from t where k=1.5e0",
              u"select top 1 a from t|select top 2 a from t",
              u"select top (1) a from t|select top (2) a from t",
              u"select a from t order by 1|select a from t order by 2",
              u"select a, left(b,1) from t group by a, left(b,1)|"
              u"select a, left(b,2) from t group by a, left(b,1)",
              u"select convert(nvarchar(10),a,20) from t|select convert(nvarchar(10),a,112) from t",
              u"select convert(nvarchar(10),a,20) from t|select convert(nvarchar(20),a,20) from t",
              u"select a from t where k like 'A%'|select a from t where k like '%BC%'",
              u"select a from t where k like 'a!%' escape '!'|select a from t where k like 'a!%' escape '#'",
              u"select a 'x' from t|select a 'y' from t", u"select a as 'x' from t|select a as 'y' from t",
              u"create table t (a nvarchar(5) default 'x')|create table t (a nvarchar(5) default 'y')"}))
        EXPECT_NE(lift(one).shape, lift(other).shape) << other;
}

TEST(Dialect, LikeWithFixedPrefixSearchesTheIndex) {
    Engine engine;
    engine.run(u"create table 採購資料 (採購單號 nvarchar(20) primary key, 類別 nvarchar(10) null, "
               "廠商代號 nvarchar(10))"_s);
    engine.run(u"create table [採購明細資料] ([採購單號] nvarchar(20), 序 int, "
               "constraint pk明細 primary key (採購單號, 序))"_s);
    engine.run(u"create index ix廠商 on 採購資料 (廠商代號)"_s);
    const auto planOf = [&](const QString& statement) {
        const QByteArray native = translate(lift(statement), *engine.catalog).native;
        return engineRows(engine.handle, "EXPLAIN QUERY PLAN " + native).join(u'\n');
    };
    const QString numbering =
        planOf(u"select 採購單號 from [採購資料] where 採購單號 like '240101%'order by 採購單號 desc"_s);
    EXPECT_TRUE(numbering.contains(u"SEARCH"_s) && !numbering.contains(u"TEMP B-TREE"_s)) << numbering;
    const QString vendor = planOf(u"select * from 採購資料 where 廠商代號 like 'A%' and 類別='x'"_s);
    EXPECT_TRUE(vendor.contains(u"SEARCH 採購資料 USING INDEX ix廠商"_s)) << vendor;
    const QString lines =
        planOf(u"select b.序 from 採購資料 a inner join 採購明細資料 b on a.採購單號=b.採購單號 "
               "where a.廠商代號='V1'"_s);
    EXPECT_EQ(lines.count(u"SEARCH"_s), 2) << lines;
}

// The oracle counts no positions, and knows no statement that is left to the server alone.
TEST(Dialect, RefusesWithPosition) {
    Engine engine;
    engine.run(u"create table 採購資料 (採購單號 nvarchar(20), 類別 nvarchar(10))"_s);
    for (const auto& [statement, expected] :
         casesOf<2>({u"select 採購單號 form 採購資料|Incorrect syntax near '採購資料'. (position 18)",
                     u"select 'abc' + from 採購資料|Incorrect syntax near 'from'. (position 16)",
                     u"select N'it''s', 1 from 採購資料 where 類別='x' and and|"
                     u"Incorrect syntax near 'and'. (position 47)",
                     u"select top 5 percent * from 採購資料|"
                     u"TOP ... PERCENT is not covered by the embedded engine. (position 14)",
                     u"declare @a int|DECLARE is not covered by the embedded engine. (position 1)"})) {
        QString text;
        EXPECT_EQ(errorOf([&, &refused = statement] { engine.run(refused); }, &text),
                  DatabaseError::NotCovered);
        EXPECT_EQ(text, expected);
    }
}
