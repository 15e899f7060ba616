#include "data/odbc_statement.h"
#include "data/test_database.h"

namespace liaowu {
namespace {

using namespace Qt::StringLiterals;
using dialect::Literal;

TEST(OdbcStatement, KnowsWhereASelectCanBeWritten) {
    struct Case {
        const char16_t* statement;
        const char16_t* table;
        const char16_t* probe;
    };
    const std::vector<Case> cases{
        {u"Select * From [採購資料]", u"[採購資料]", u"Select * From [採購資料] WHERE 1=0"},
        {u"select 申購單號 from [原料申購資料]where 1=1 order by 申購日期", u"[原料申購資料]",
         u"select 申購單號 from [原料申購資料] WHERE 1=0"},
        {u"select a from dbo.[採購 from 資料] order by a", u"dbo.[採購 from 資料]",
         u"select a from dbo.[採購 from 資料] WHERE 1=0"},
        {u"select top 1 a, (select max(b) from u) m from t where c=' from x'", u"t",
         u"select top 1 a, (select max(b) from u) m from t WHERE 1=0"},
        {u"select [a from b], 'x from y' from 料務_板位異動;", u"料務_板位異動",
         u"select [a from b], 'x from y' from 料務_板位異動 WHERE 1=0"},
        {u"select * from a, b", u"", u""},
        {u"select * from a inner join b on a.x=b.x", u"", u""},
        {u"select * from a x where 1=1", u"", u""},
        {u"select distinct a from t", u"", u""},
        {u"select a from t group by a", u"", u""},
        {u"select a from t union all select a from u", u"", u""},
        {u"select * from (select * from t) q", u"", u""},
        {u"select 1", u"", u""},
        {u"select 1 from", u"", u""},
        {u"delete from t", u"", u""},
        {u"", u"", u""},
        {u"select * from [t", u"[t", u"select * from [t WHERE 1=0"},
    };
    for (const Case& c : cases) {
        const WritableSelect found = writableSelect(QString::fromUtf16(c.statement));
        EXPECT_EQ(found.table, QString::fromUtf16(c.table)) << QString::fromUtf16(c.statement).toStdString();
        EXPECT_EQ(found.probe, QString::fromUtf16(c.probe));
    }
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
