// What no statement of the oracle shows: see oracle.tsv for the rest.
#include "data/dialect/collation.h"
#include "data/dialect/engine.h"
#include <random>

using namespace liaowu;
using namespace liaowu::dialect;

namespace {

/// First value of a select as text; an error as its number.
QString valueOf(Engine& engine, const QString& expression) {
    try {
        const QVariant value = engine.run(u"select "_s + expression).rows.at(0).at(0);
        return value.isValid() ? value.toString() : u"null"_s;
    } catch (const DatabaseError& error) {
        return u"error %1"_s.arg(error.nativeError);
    }
}

/// Expressions and their values, as "expression|value".
void expectValues(Engine& engine, std::initializer_list<const char16_t*> cases) {
    for (const auto& [expression, expected] : casesOf<2>(cases))
        EXPECT_EQ(valueOf(engine, expression), expected) << expression;
}

int sign(int value) {
    return value < 0 ? -1 : value > 0 ? 1 : 0;
}

} // namespace

TEST(DialectCollation, ComparesAsTheServerInTextsAndBytes) {
    const QString order =
        u"=   < a<20240131<20240201<9<a=A  <a-1<a1<ＡＢＣ１=abc1<z<é=É<\u3000<あ=ア<一<台<紙板1<"
        "紙板2<紙板A=紙板a <臺<\uFFEE<\U0001F600<\U0001F601"_s;
    std::vector<std::pair<QString, int>> ranks;
    for (int rank = 0; const QString& equal : order.split(u'<')) {
        for (const QString& text : equal.split(u'='))
            ranks.emplace_back(text, rank);
        ++rank;
    }
    for (const auto& [left, leftRank] : ranks) {
        for (const auto& [right, rightRank] : ranks) {
            const int expected = sign(leftRank - rightRank);
            EXPECT_EQ(sign(compareTexts(left, right)), expected) << left << " / " << right;
            EXPECT_EQ(sign(compareUtf8(left.toUtf8(), right.toUtf8())), expected) << left << " / " << right;
        }
    }
}

TEST(DialectCollation, HoldsWhereverTextsMeet) {
    Engine engine;
    engine.run(u"create table t (k int primary key, v nvarchar(20), w nvarchar(20))"_s);
    engine.run(u"insert into t values (1,'a','x'),(2,'A ','X'),(3,'b','y'),(4,null,'Z')"_s);
    expectValues(engine, {u"count(*) from t where v+'' = 'A'|2",
                          u"count(*) from t where left(v,1) in (select upper(v) from t)|3",
                          u"count(*) from (select distinct v from t) d|3",
                          u"count(*) from (select left(v,1) x from t group by left(v,1)) d|3",
                          u"count(*) from (select v from t union select upper(v) from t) d|3",
                          u"max(v) from t|b", u"count(*) from t a inner join t b on a.v=rtrim(b.v)|5",
                          u"case (select v from t where k=2) when 'a' then 'same' else 'other' end|same",
                          u"isnull(nullif((select v from t where k=2),'a'),'none')|none",
                          u"top 1 k from t order by lower(v) desc, k|3",
                          u"top 1 k from t where v like 'A%' order by rtrim(v)+w desc, k desc|2"});
}

TEST(DialectCollation, OrdersAnyTextsAlike) {
    const QStringList letters = u" |a|A|Ａ|b|1|１|-|_|%|[|é|紙|板|\U0001F600|あ|ア|\t"_s.split(u'|');
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
        const QString a = randomText(4), b = randomText(4), c = randomText(4);
        ASSERT_EQ(sign(compareTexts(a, b)), sign(compareUtf8(a.toUtf8(), b.toUtf8()))) << a << " / " << b;
        if (compareTexts(a, b) <= 0 && compareTexts(b, c) <= 0) {
            ASSERT_LE(compareTexts(a, c), 0);
        }
        engine.run(u"insert into t values (N'%1')"_s.arg(a));
    }
    // The range that a fixed prefix adds must not lose a row that the pattern takes.
    for (int i = 0; i < 400; ++i) {
        const QString pattern = randomText(3) + u'%' + randomText(1);
        const QString counted = u"count(*) from t where v%1 like N'%2'"_s;
        ASSERT_EQ(valueOf(engine, counted.arg(QString(), pattern)),
                  valueOf(engine, counted.arg(u"+''"_s, pattern)))
            << pattern;
    }
}

TEST(DialectTypes, ConvertWhereTypesMeet) {
    Engine engine;
    engine.run(u"create table t (s nvarchar(20), n nvarchar(20), i int, f float)"_s);
    engine.run(u"insert into t values ('12', null, '7', ' 2.5 ')"_s);
    expectValues(engine, {u"s+i from t|19", u"i/2 from t|3", u"i%0 from t|error 8134",
                          u"isnull(i,'x') from t|7", u"isnull(n,f) from t|2.5", u"coalesce(i,f)/2 from t|3.5",
                          u"count(*) from t where s=12.0|1", u"count(*) from t where i='07'|1",
                          u"count(*) from t where i='x'|error 245", u"count(*) from t where f in ('2.5',9)|1",
                          u"s from (select s from t union all select f from t) d where s>11|12",
                          u"'x'+cast(f as nvarchar) from t|x2.5", u"(select s from t where i=8)|null"});
    engine.run(u"update t set s=f, f='', i=3.9, n=1.50"_s);
    EXPECT_EQ(engine.run(u"select * from t"_s).rows.at(0),
              QVariantList({u"2.5"_s, u"1.50"_s, qlonglong(3), double(0)}));
}

TEST(DialectDates, FollowTheClockOfTheServer) {
    Engine engine;
    expectValues(
        engine,
        {u"dbo.DT(9)|2024-03-05 13:04:05", u"datediff(dd,'20240301',getdate())|4",
         u"datediff(dd,cast('2024/03/04 23:59' as datetime),dbo.DT(9))|1",
         u"cast('1700-01-01' as datetime)|error 242", u"cast('soon' as datetime)|error 241",
         u"dateadd(yy,9000,getdate())|error 517", u"getdate()+1|2024-03-06 13:04:05",
         u"convert(nvarchar,cast('2024-03-05 1:02:03.457PM' as datetime),121)|2024-03-05 13:02:03.457"});
    engine.pool.setClock(engine.now.addDays(1));
    EXPECT_EQ(valueOf(engine, u"dbo.DT(9)"_s), u"2024-03-06 13:04:05");
    engine.pool.setClock({});
    const QDateTime running = QDateTime::fromString(valueOf(engine, u"dbo.DT(9)"_s), u"yyyy-MM-dd HH:mm:ss");
    EXPECT_LE(std::abs(running.secsTo(QDateTime::currentDateTime())), 60);
}

TEST(DialectResults, TellWhereRowsCanBeWritten) {
    Engine engine;
    engine.run(u"create table t (鍵 nvarchar(5) primary key, 值 float)"_s);
    engine.run(u"create view v as select 鍵, 值*2 倍, cast(值 as nvarchar) 文 from t"_s);
    for (const auto& [statement, expected] :
         casesOf<2>({u"select * from t where 1<>1|t 鍵:鍵:text 值:值:number",
                     u"select 值 as 數, 鍵 from t order by 1|t 數:值:number 鍵:鍵:text",
                     u"select distinct 鍵, 值 from t| 鍵::text 值::number",
                     u"select a.鍵, b.值 from t a, t b| 鍵::text 值::number",
                     u"select 倍, 文 from v| 倍::number 文::text"})) {
        const Translation translation = translate(lift(statement), *engine.catalog);
        QString described = translation.baseTable;
        for (const ResultColumn& column : translation.columns)
            described += u" %1:%2:%3"_s.arg(column.name, column.baseColumn,
                                            column.type == Type::Text    ? u"text"_s
                                            : column.type == Type::Float ? u"number"_s
                                                                         : u"other"_s);
        EXPECT_EQ(described, expected) << statement;
    }
}

TEST(DialectErrors, TravelWithNumberAndText) {
    EXPECT_EQ(functionError(u"8114|Error converting."_s), std::pair(8114, u"Error converting."_s));
    for (const QString& foreign :
         {u"no such table: a|b"_s, u""_s, u"|x"_s, u"UNIQUE constraint failed: t.a"_s})
        EXPECT_EQ(functionError(foreign).first, 0) << foreign;
}
