#include "data/sql_text.h"
#include "data/test_database.h"
#include <stdexcept>

using namespace liaowu;
using namespace Qt::StringLiterals;

TEST(SqlText, FillsPlaceholders) {
    struct Case {
        const char* rule;
        SqlText made;
        QStringView expected;
    };
    const std::vector<Case> cases{
        {"text in quotes", sql(u"where a='{}'", u"x"), u"where a='x'"},
        {"apostrophes double", sql(u"a='{}'", u"O'Neil''s"), u"a='O''Neil''''s'"},
        {"a quote alone cannot end the literal", sql(u"a='{}'", u"' or 1=1 --"), u"a=''' or 1=1 --'"},
        {"not ASCII gets its N", sql(u"a='{}'", u"紙板"), u"a=N'紙板'"},
        {"four-byte characters get their N", sql(u"a='{}'", u"\U00020000"), u"a=N'\U00020000'"},
        {"half of a literal decides for all", sql(u"a like '{}紙%'", u"x"), u"a like N'x紙%'"},
        {"literal of the template", sql(u"類別='紙板' and b='x'"), u"類別=N'紙板' and b='x'"},
        {"an N that stands is kept", sql(u"a=N'{}' and b=n'紙'", u"紙"), u"a=N'紙' and b=n'紙'"},
        {"the n of a word is none", sql(u"a in('紙')"), u"a in(N'紙')"},
        {"no name out of word and N", sql(u"a like'%{}%' then'紙'", u"紙"), u"a like N'%紙%' then N'紙'"},
        {"doubled apostrophe of the template stays", sql(u"a='it''s {}'", u"x"), u"a='it''s x'"},
        {"empty literal", sql(u"a='' and b='{}'", u""), u"a='' and b=''"},
        {"names", sql(u"select [{}] from [{}]", u"a]b", u"採購資料"), u"select [a]]b] from [採購資料]"},
        {"a quote inside a name", sql(u"[it's]='{}'", u"x"), u"[it's]='x'"},
        {"numbers stand bare", sql(u"top {} x={}", 5, 0.1), u"top 5 x=0.1"},
        {"numbers in quotes", sql(u"x='{}'", 1e21), u"x='1000000000000000000000'"},
        {"no comment by a sign", sql(u"x-{}", -1), u"x- -1"},
        {"line breaks stay", sql(u"a='{}'", u"a\r\nb\tc"), u"a='a\r\nb\tc'"},
        {"braces of a value are no placeholder", sql(u"a='{}' and b='{}'", u"{}", u"y"), u"a='{}' and b='y'"},
        {"a single brace is itself", sql(u"a='{x}{}'", u"y"), u"a='{x}y'"},
        {"NUL is dropped", sql(u"a='{}'", QString(u"a\0b"_s)), u"a='ab'"},
        {"infinity is no number of a document", sql(u"x={}", 1e308 * 10), u"x=0"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(c.made.text(), c.expected) << c.rule;
}

TEST(SqlText, RefusesFaultsOfTheProgram) {
    EXPECT_THROW(sql(u"a='{}' and b='{}'", u"x"), std::logic_error) << "too few values";
    EXPECT_THROW(sql(u"a='{}'", u"x", u"y"), std::logic_error) << "too many values";
    EXPECT_THROW(sql(u"where a={}", u"1"), std::logic_error) << "text outside of quotes";
    EXPECT_THROW(sql(u"where a='{}", u"1"), std::logic_error) << "literal without end";
    EXPECT_THROW(sql(u"where [{}", u"1"), std::logic_error) << "name without end";
}

// Whatever the value, the literal must end where the template ends it, and hold the value.
TEST(SqlText, AnyValueStaysInsideItsLiteral) {
    const std::u16string alphabet = u"'[]{}N\\ab紙;-\n";
    quint32 seed = 20240115;
    const auto random = [&] { return seed = seed * 1664525 + 1013904223; };
    for (int round = 0; round < 20'000; ++round) {
        QString value;
        for (quint32 i = random() >> 28; i > 0; --i)
            value += QChar(alphabet[(random() >> 16) % alphabet.size()]);
        const QString text = sql(u"x='{}'|", value).text();
        QString content = text.mid(text.indexOf(u'\'') + 1).chopped(2);
        ASSERT_TRUE(text.endsWith(u"'|")) << text;
        ASSERT_FALSE(QString(content).remove(u"''"_s).contains(u'\'')) << text;
        ASSERT_EQ(content.replace(u"''"_s, u"'"_s), value) << text;
    }
}
