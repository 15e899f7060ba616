#include "data/dialect/collation.h"
#include "data/dialect/engine.h"
#include <gtest/gtest.h>
#include <random>

using namespace liaowu;
using namespace liaowu::dialect;

namespace {

/// First value of a select as text; an error as its number.
QString valueOf(Engine& engine, const QString& expression) {
    try {
        const Engine::Result result = engine.run(u"select "_s + expression);
        const QVariant value = result.rows.at(0).at(0);
        return value.isValid() ? value.toString() : u"null"_s;
    } catch (const DatabaseError& error) {
        return u"error %1"_s.arg(error.nativeError);
    }
}

int sign(int value) {
    return value < 0 ? -1 : value > 0 ? 1 : 0;
}

} // namespace

TEST(DialectCollation, ComparesAsTheServerInProgramAndEngine) {
    const struct {
        QString left;
        QString right;
        int order;
    } cases[] = {
        {u"abc"_s, u"ABC  "_s, 0},
        {u""_s, u"   "_s, 0},
        {u" a"_s, u"a"_s, -1},
        {u"ＡＢＣ１"_s, u"abc1"_s, 0},
        {u"あ"_s, u"ア"_s, 0},
        {u"é"_s, u"e"_s, 1},
        {u"É"_s, u"é"_s, 0},
        {u"臺"_s, u"台"_s, 1},
        {u"z"_s, u"一"_s, -1},
        {u"9"_s, u"a"_s, -1},
        {u"a-1"_s, u"a1"_s, -1},
        {u"a"_s, u"a1"_s, -1},
        {u"紙板A"_s, u"紙板a "_s, 0},
        {u"紙板1"_s, u"紙板2"_s, -1},
        {u"\u3000"_s, u""_s, 1},
        {u"20240131"_s, u"20240201"_s, -1},
        {u"\U0001F600"_s, u"\U0001F601"_s, -1},
        {u"\uFFEE"_s, u"\U0001F600"_s, -1},
    };
    Engine engine;
    engine.run(u"create table t (a nvarchar(20), b nvarchar(20))"_s);
    for (const auto& [left, right, order] : cases) {
        EXPECT_EQ(sign(compareTexts(left, right)), order)
            << left.toStdString() << " / " << right.toStdString();
        EXPECT_EQ(sign(compareTexts(right, left)), -order)
            << right.toStdString() << " / " << left.toStdString();
        engine.run(u"delete t insert into t values (N'%1', N'%2')"_s.arg(left, right));
        const QString compared =
            u"(select case when a<b then -1 when a=b then 0 when a>b then 1 end from t)"_s;
        EXPECT_EQ(valueOf(engine, compared).toInt(), order)
            << left.toStdString() << " / " << right.toStdString();
    }
}

TEST(DialectCollation, HoldsWhereverTextsMeet) {
    Engine engine;
    engine.run(u"create table t (k int primary key, v nvarchar(20), w nvarchar(20))"_s);
    engine.run(u"insert into t values (1,'a','x'),(2,'A ','X'),(3,'b','y'),(4,null,'Z')"_s);
    const std::pair<QString, QString> cases[] = {
        {u"count(*) from t where v in ('A')"_s, u"2"_s},
        {u"count(*) from t where v+'' = 'A'"_s, u"2"_s},
        {u"count(*) from t where left(v,1) in (select upper(v) from t)"_s, u"3"_s},
        {u"count(*) from (select distinct v from t) d"_s, u"3"_s},
        {u"count(*) from (select left(v,1) x from t group by left(v,1)) d"_s, u"3"_s},
        {u"count(*) from (select v from t union select upper(v) from t) d"_s, u"3"_s},
        {u"count(distinct v) from t"_s, u"2"_s},
        {u"max(v) from t"_s, u"b"_s},
        {u"count(*) from t a inner join t b on a.v=rtrim(b.v)"_s, u"5"_s},
        {u"case (select v from t where k=2) when 'a' then 'same' else 'other' end"_s, u"same"_s},
        {u"isnull(nullif((select v from t where k=2),'a'),'none')"_s, u"none"_s},
        {u"count(*) from t where v between 'a ' and 'A'"_s, u"2"_s},
        {u"count(*) from t where not v <> 'a'"_s, u"2"_s},
        {u"top 1 k from t order by lower(v) desc, k"_s, u"3"_s},
        {u"top 1 k from t where v like 'A%' order by rtrim(v)+w desc, k desc"_s, u"2"_s},
    };
    for (const auto& [expression, expected] : cases)
        EXPECT_EQ(valueOf(engine, expression).toStdString(), expected.toStdString())
            << expression.toStdString();
    // A key that differs in case or trailing blanks only is a duplicate.
    engine.run(u"create table u (k nvarchar(5) primary key)"_s);
    engine.run(u"insert into u values ('x')"_s);
    EXPECT_THROW(engine.run(u"insert into u values (N'Ｘ ')"_s), DatabaseError);
}

TEST(DialectCollation, OrdersAnyTextsAlike) {
    const QStringList letters = {u" "_s,  u"a"_s,  u"A"_s,          u"Ａ"_s, u"b"_s,  u"1"_s,
                                 u"１"_s, u"-"_s,  u"_"_s,          u"%"_s,  u"["_s,  u"é"_s,
                                 u"紙"_s, u"板"_s, u"\U0001F600"_s, u"あ"_s, u"ア"_s, u"\t"_s};
    std::mt19937 random(1);
    const auto below = [&](qsizetype bound) {
        return static_cast<qsizetype>(random() % static_cast<quint64>(bound));
    };
    const auto randomText = [&](qsizetype longest) {
        QString text;
        for (qsizetype i = below(longest + 1); i > 0; --i)
            text += letters[below(letters.size())];
        return text;
    };
    Engine engine;
    engine.run(u"create table t (v nvarchar(20)) "_s);
    engine.run(u"create index ix on t (v)"_s);
    for (int i = 0; i < 3000; ++i) {
        const QString a = randomText(4);
        const QString b = randomText(4);
        const QString c = randomText(4);
        const QByteArray left = a.toUtf8();
        const QByteArray right = b.toUtf8();
        ASSERT_EQ(sign(compareTexts(a, b)), sign(compareUtf8(left, right)))
            << a.toStdString() << " / " << b.toStdString();
        if (compareTexts(a, b) <= 0 && compareTexts(b, c) <= 0) {
            ASSERT_LE(compareTexts(a, c), 0);
        }
        engine.run(u"insert into t values (N'%1')"_s.arg(a));
    }
    // The range that a fixed prefix adds must not lose a row that the pattern takes.
    for (int i = 0; i < 400; ++i) {
        const QString pattern = randomText(3) + u'%' + randomText(1);
        const QString ranged = u"select count(*) from t where v like N'%1'"_s.arg(pattern);
        const QString plain = u"select count(*) from t where v+'' like N'%1'"_s.arg(pattern);
        ASSERT_EQ(engine.run(ranged).rows, engine.run(plain).rows) << pattern.toStdString();
    }
}

TEST(DialectTypes, ConvertWhereTypesMeet) {
    Engine engine;
    engine.run(u"create table t (s nvarchar(20), n nvarchar(20), i int, f float)"_s);
    engine.run(u"insert into t values ('12', null, '7', ' 2.5 ')"_s);
    const std::pair<QString, QString> cases[] = {
        {u"s+i from t"_s, u"19"_s},
        {u"s+f from t"_s, u"14.5"_s},
        {u"i+f from t"_s, u"9.5"_s},
        {u"i/2 from t"_s, u"3"_s},
        {u"f/0 from t"_s, u"error 8134"_s},
        {u"i%0 from t"_s, u"error 8134"_s},
        {u"s+s from t"_s, u"1212"_s},
        {u"s-s from t"_s, u"error 8117"_s},
        {u"sum(s) from t"_s, u"error 8117"_s},
        {u"cast(coalesce(n,'') as float) from t"_s, u"0"_s},
        {u"cast(n as float) from t"_s, u"null"_s},
        {u"case when i=7 then '' else f end from t"_s, u"0"_s},
        {u"case when i=7 then 'x' else f end from t"_s, u"error 8114"_s},
        {u"isnull(i,'x') from t"_s, u"7"_s},
        {u"isnull(n,f) from t"_s, u"2.5"_s},
        {u"coalesce(i,f)/2 from t"_s, u"3.5"_s},
        {u"count(*) from t where s=12.0"_s, u"1"_s},
        {u"count(*) from t where i='07'"_s, u"1"_s},
        {u"count(*) from t where i='x'"_s, u"error 245"_s},
        {u"count(*) from t where f in ('2.5',9)"_s, u"1"_s},
        {u"s from (select s from t union all select f from t) d where s>11"_s, u"12"_s},
        {u"'x'+cast(f as nvarchar) from t"_s, u"x2.5"_s},
        {u"'x'+cast(1.50 as nvarchar) from t"_s, u"x1.50"_s},
        {u"(select k from (select 1 k union all select 2) d)"_s, u"error 512"_s},
        {u"(select s from t where i=8)"_s, u"null"_s},
        {u"avg(i) from (select i from t union all select 8) d"_s, u"7"_s},
    };
    for (const auto& [expression, expected] : cases)
        EXPECT_EQ(valueOf(engine, expression).toStdString(), expected.toStdString())
            << expression.toStdString();
    engine.run(u"update t set s=f, f='', i=3.9, n=1.50"_s);
    EXPECT_EQ(engine.run(u"select * from t"_s).rows.at(0),
              QVariantList({u"2.5"_s, u"1.50"_s, qlonglong(3), double(0)}));
}

TEST(DialectDates, FollowTheClockOfTheServer) {
    Engine engine;
    const std::pair<QString, QString> cases[] = {
        {u"dbo.DT(9)"_s, u"2024-03-05 13:04:05"_s},
        {u"convert(nvarchar,getdate(),112)"_s, u"20240305"_s},
        {u"convert(nvarchar(10),getdate(),111)"_s, u"2024/03/05"_s},
        {u"datediff(dd,'20240301',getdate())"_s, u"4"_s},
        {u"datediff(dd,cast('2024/03/04 23:59' as datetime),dbo.DT(9))"_s, u"1"_s},
        {u"datediff(mm,'20231231','20240101')"_s, u"1"_s},
        {u"datediff(dd,'20240230','20240301')"_s, u"error 241"_s},
        {u"cast('20240230' as datetime)"_s, u"error 242"_s},
        {u"cast('soon' as datetime)"_s, u"error 241"_s},
        {u"cast('1700-01-01' as datetime)"_s, u"error 242"_s},
        {u"dateadd(mm,1,'20240131')"_s, u"2024-02-29 00:00:00"_s},
        {u"dateadd(yy,9000,getdate())"_s, u"error 517"_s},
        {u"getdate()+1"_s, u"2024-03-06 13:04:05"_s},
        {u"case when getdate()>'20240305' then 1 else 0 end"_s, u"1"_s},
        {u"year('2024/03/05')"_s, u"2024"_s},
        {u"convert(nvarchar,cast('2024-03-05 1:02:03.457PM' as datetime),121)"_s,
         u"2024-03-05 13:02:03.457"_s},
        {u"isdate('20240230')+isdate('2024-02-29')"_s, u"1"_s},
    };
    for (const auto& [expression, expected] : cases)
        EXPECT_EQ(valueOf(engine, expression).toStdString(), expected.toStdString())
            << expression.toStdString();
    engine.now = engine.now.addDays(1);
    EXPECT_EQ(valueOf(engine, u"dbo.DT(9)"_s), u"2024-03-06 13:04:05"_s);
}

TEST(DialectResults, TellWhereRowsCanBeWritten) {
    Engine engine;
    engine.run(u"create table t (鍵 nvarchar(5) primary key, 值 float)"_s);
    engine.run(u"create view v as select 鍵, 值*2 倍, cast(值 as nvarchar) 文 from t"_s);
    const auto described = [&](const QString& statement) {
        const Translation translation = translate(lift(statement), *engine.catalog);
        QStringList columns = {translation.baseTable};
        for (const ResultColumn& column : translation.columns)
            columns += u"%1:%2:%3"_s.arg(column.name, column.baseColumn).arg(static_cast<int>(column.type));
        return columns.join(u' ').toStdString();
    };
    const int text = static_cast<int>(Type::Text);
    const int number = static_cast<int>(Type::Float);
    const auto expected = [](const QString& pattern, int one, int other) {
        return pattern.arg(one).arg(other).toStdString();
    };
    EXPECT_EQ(described(u"select * from t where 1<>1"_s), expected(u"t 鍵:鍵:%1 值:值:%2"_s, text, number));
    EXPECT_EQ(described(u"select 值 as 數, 鍵 from t order by 1"_s),
              expected(u"t 數:值:%1 鍵:鍵:%2"_s, number, text));
    EXPECT_EQ(described(u"select distinct 鍵, 值 from t"_s), expected(u" 鍵::%1 值::%2"_s, text, number));
    EXPECT_EQ(described(u"select a.鍵, b.值 from t a, t b"_s), expected(u" 鍵::%1 值::%2"_s, text, number));
    EXPECT_EQ(described(u"select 倍, 文 from v"_s), expected(u" 倍::%1 文::%2"_s, number, text));
}

TEST(DialectErrors, TravelWithNumberAndText) {
    EXPECT_EQ(functionError(u"8114|Error converting data type nvarchar to float."_s),
              std::make_pair(8114, u"Error converting data type nvarchar to float."_s));
    for (const QString& foreign :
         {u"no such table: a|b"_s, u""_s, u"|x"_s, u"UNIQUE constraint failed: t.a"_s})
        EXPECT_EQ(functionError(foreign).first, 0) << foreign.toStdString();
}
