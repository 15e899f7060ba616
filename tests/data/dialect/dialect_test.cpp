#include "data/dialect/engine.h"
#include <gtest/gtest.h>

using namespace liaowu;
using namespace liaowu::dialect;
using namespace Qt::StringLiterals;

namespace {

QString shapeOf(const QString& statement) {
    return lift(statement).shape;
}

class Dialect : public testing::Test {
protected:
    Dialect() {
        engine.run(
            u"create table 採購資料 (採購單號 nvarchar(20) not null primary key, 類別 nvarchar(10) default "
            u"'', "
            "廠商代號 nvarchar(10) default '', 審單 nvarchar(1) null, 採購日期 nvarchar(8) default '')"_s);
        engine.run(u"create table [採購明細資料] ([採購單號] nvarchar(20), 序 int, 原料代號 nvarchar(20) "
                   u"default '', "
                   "數量 nvarchar(20) default '', 已入庫數 nvarchar(20), 單價 float, "
                   "constraint pk明細 primary key (採購單號, 序))"_s);
        engine.run(u"create index ix廠商 on 採購資料 (廠商代號)"_s);
    }
    Engine engine;

    QString errorOf(const QString& statement) {
        try {
            engine.run(statement);
        } catch (const DatabaseError& error) {
            return u"%1 %2"_s.arg(error.nativeError).arg(error.text);
        }
        return u"none"_s;
    }
};

} // namespace

TEST(DialectLift, ValuesDoNotChangeTheShape) {
    const struct {
        const char16_t* one;
        const char16_t* other;
        bool same;
    } cases[] = {
        {u"select a from t where k='x'", u"select a from t where k=N'中''文'", true},
        {u"select a from t where k=1", u"select a from t where k=22", true},
        {u"select a from t where k=1", u"select a from t where k=1.0", false},
        {u"select a from t where k=1", u"select a from t where k='1'", false},
        {u"select a from t where k=1.5", u"select a from t where k=1.5e0", false},
        {u"select top 1 a from t", u"select top 2 a from t", false},
        {u"select top (1) a from t", u"select top (2) a from t", false},
        {u"select a from t order by 1", u"select a from t order by 2", false},
        {u"select a, left(b,1) from t group by a, left(b,1)",
         u"select a, left(b,2) from t group by a, left(b,1)", false},
        {u"select a from t where b='1' group by a", u"select a from t where b='2' group by a", true},
        {u"select convert(nvarchar(10),a,20) from t", u"select convert(nvarchar(10),a,112) from t", false},
        {u"select convert(nvarchar(10),a,20) from t", u"select convert(nvarchar(20),a,20) from t", false},
        {u"select convert(nvarchar,left(a,1),20) from t", u"select convert(nvarchar,left(a,2),20) from t",
         true},
        {u"select a from t where k like 'A%'", u"select a from t where k like 'BC%'", true},
        {u"select a from t where k like 'A%'", u"select a from t where k like '%BC%'", false},
        {u"select a from t where k like '%'", u"select a from t where k like '%BC%'", true},
        {u"select a from t where k like 'a!%' escape '!'", u"select a from t where k like 'a!%' escape '#'",
         false},
        {u"select a 'x' from t", u"select a 'y' from t", false},
        {u"select a as 'x' from t", u"select a as 'y' from t", false},
        {u"select 'v' 'x' from t", u"select 'w' 'x' from t", true},
        {u"select case when a='1' then 'x' else 'y' end z from t",
         u"select case when a='2' then 'p' else '' end z from t", true},
        {u"insert into t values ('a', 1)", u"insert into t values ('b', 2)", true},
        {u"create table t (a nvarchar(5) default 'x')", u"create table t (a nvarchar(5) default 'y')", false},
    };
    for (const auto& [one, other, same] : cases)
        EXPECT_EQ(shapeOf(QString::fromUtf16(one)) == shapeOf(QString::fromUtf16(other)), same)
            << QString::fromUtf16(one).toStdString() << " / " << QString::fromUtf16(other).toStdString();
}

TEST_F(Dialect, LikeWithFixedPrefixSearchesTheIndex) {
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

TEST_F(Dialect, RefusesWithPosition) {
    const std::pair<const char16_t*, const char16_t*> cases[] = {
        {u"select 採購單號 form 採購資料", u"102 Incorrect syntax near '採購資料'. (position 18)"},
        {u"select 'abc' + from 採購資料", u"102 Incorrect syntax near 'from'. (position 16)"},
        {u"select N'it''s', 1 from 採購資料 where 類別='x' and and",
         u"102 Incorrect syntax near 'and'. (position 47)"},
        {u"select x from 採購資料", u"207 Invalid column name 'x'."},
        {u"select a.x from 採購資料 a", u"207 Invalid column name 'x'."},
        {u"select b.類別 from 採購資料 a", u"4104 The multi-part identifier \"b.類別\" could not be bound."},
        {u"select * from 不存在", u"208 Invalid object name '不存在'."},
        {u"select top 5 percent * from 採購資料",
         u"102 TOP ... PERCENT is not covered by the embedded engine. (position 14)"},
        {u"select 採購單號 from 採購資料, 採購明細資料", u"209 Ambiguous column name '採購單號'."},
        {u"select 'abc", u"105 Unclosed quotation mark after the character string 'abc'."},
        {u"declare @a int", u"102 DECLARE is not covered by the embedded engine. (position 1)"},
    };
    for (const auto& [statement, expected] : cases)
        EXPECT_EQ(errorOf(QString::fromUtf16(statement)).toStdString(),
                  QString::fromUtf16(expected).toStdString());
}
