#include "data/odbc_statement.h"
#include "data/test_database.h"

namespace liaowu {
namespace {

using namespace Qt::StringLiterals;
using dialect::Literal;

TEST(OdbcStatement, KnowsWhereASelectCanBeWritten) {
    struct Case {
        QString statement, table, probe;
    };
    const std::vector<Case> cases{
        {u"select 申購單號 from [原料申購資料]where 1=1 order by 申購日期"_s, u"[原料申購資料]"_s,
         u"select 申購單號 from [原料申購資料]"_s},
        {u"Select a From dbo.[採購 from 資料] order by a"_s, u"dbo.[採購 from 資料]"_s,
         u"Select a From dbo.[採購 from 資料]"_s},
        {u"select top 1 a, (select max(b) from u) m from t where c=' from x'"_s, u"t"_s,
         u"select top 1 a, (select max(b) from u) m from t"_s},
        {u"select [a from b], 'x from y' from 料務_板位異動;"_s, u"料務_板位異動"_s,
         u"select [a from b], 'x from y' from 料務_板位異動"_s},
        {u"select * from [t"_s, u"[t"_s, u"select * from [t"_s},
    };
    for (const Case& c : cases) {
        const WritableSelect found = writableSelect(c.statement);
        EXPECT_EQ(found.table, c.table) << c.statement.toStdString();
        EXPECT_EQ(found.probe, c.probe + u" WHERE 1=0"_s);
    }
    for (const QString& readOnly :
         {u"select * from a, b"_s, u"select * from a inner join b on a.x=b.x"_s,
          u"select * from a x where 1=1"_s, u"select distinct a from t"_s, u"select a from t group by a"_s,
          u"select a from t union all select a from u"_s, u"select * from (select * from t) q"_s,
          u"select 1"_s, u"select 1 from"_s, u"delete from t"_s, u""_s})
        EXPECT_EQ(writableSelect(readOnly).table, u"") << readOnly.toStdString();
}

TEST(OdbcStatement, TakesNamesOutOfTheirBrackets) {
    for (const auto& [table, name] :
         {std::pair{u"[採購資料]", u"採購資料"}, {u"dbo.[a]]b]", u"a]b"}, {u"t", u"t"}})
        EXPECT_EQ(plainTableName(QString::fromUtf16(table)), QString::fromUtf16(name));
}

TEST(OdbcStatement, WritesEveryKindOfValue) {
    const Literal null;
    const Literal text{Literal::Kind::Text, u"O'N紙"_s};
    const Literal tenth{Literal::Kind::Float, {}, 0.1};
    const Literal seven{Literal::Kind::Integer, {}, 0, -7};
    const QString a = u"a"_s, b = u"b"_s, odd = u"a]b"_s, key = u"k"_s;
    EXPECT_EQ(
        insertStatement(u"[採購資料]"_s, {{&odd, &text}, {&a, &null}, {&b, &tenth}, {&key, &seven}}).text(),
        u"INSERT INTO [採購資料] ([a]]b],[a],[b],[k]) VALUES (N'O''N紙',NULL,1.0000000000000001e-01,-7)");
    EXPECT_EQ(insertStatement(u"t"_s, {}).text(), u"INSERT INTO t DEFAULT VALUES");
    EXPECT_EQ(
        updateStatement(u"t"_s, {{&a, &text}, {&b, &null}}, {{&key, &seven}}, {{&a, &null}, {&b, &tenth}})
            .text(),
        u"UPDATE t SET [a]=N'O''N紙',[b]=NULL WHERE [k]=-7 AND [a] IS NULL AND [b]=1.0000000000000001e-01");
}

} // namespace
} // namespace liaowu
