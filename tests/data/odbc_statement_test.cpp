#include "data/odbc_statement.h"
#include "data/test_database.h"

using namespace liaowu;
using namespace Qt::StringLiterals;
using liaowu::dialect::Literal;

TEST(OdbcStatement, KnowsWhereASelectCanBeWritten) {
    for (const auto& [statement, table, probe] :
         casesOf<3>({u"select 申購單號 from [原料申購資料]where 1=1 order by 申購日期|"
                     u"[原料申購資料]|"
                     u"select 申購單號 from [原料申購資料]",
                     u"Select a From dbo.[採購 from 資料] order by a|"
                     u"dbo.[採購 from 資料]|"
                     u"Select a From dbo.[採購 from 資料]",
                     u"select top 1 a, (select max(b) from u) m from t where c=' from x'|"
                     u"t|"
                     u"select top 1 a, (select max(b) from u) m from t",
                     u"select [a from b], 'x from y' from 料務_板位異動;|"
                     u"料務_板位異動|"
                     u"select [a from b], 'x from y' from 料務_板位異動",
                     u"select * from [t|[t|select * from [t"})) {
        const WritableSelect found = writableSelect(statement);
        EXPECT_EQ(found.table, table) << statement;
        EXPECT_EQ(found.probe, probe + u" WHERE 1=0"_s);
    }
    for (const QString& readOnly :
         {u"select * from a, b"_s, u"select * from a inner join b on a.x=b.x"_s,
          u"select * from a x where 1=1"_s, u"select distinct a from t"_s, u"select a from t group by a"_s,
          u"select a from t union all select a from u"_s, u"select * from (select * from t) q"_s,
          u"select 1"_s, u"select 1 from"_s, u"delete from t"_s, u""_s})
        EXPECT_EQ(writableSelect(readOnly).table, u"") << readOnly;
}

TEST(OdbcStatement, TakesNamesOutOfTheirBrackets) {
    for (const auto& [table, name] : casesOf<2>({u"[採購資料]|採購資料", u"dbo.[a]]b]|a]b", u"t|t"}))
        EXPECT_EQ(plainTableName(table), name);
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
