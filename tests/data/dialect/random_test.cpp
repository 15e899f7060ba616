#include "data/dialect/engine.h"
#include "data/schema/schema.h"
#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>
#include <iostream>
#include <random>

using namespace liaowu;
using namespace liaowu::dialect;

namespace {

QStringList ownStatements() {
    QFile file(QStringLiteral(LIAOWU_SOURCE_DIR "/tests/data/dialect/statements.txt"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

class DialectStatements : public testing::Test {
protected:
    DialectStatements() {
        for (const QString& statement : schemaStatements())
            engine.run(statement);
    }
    Engine engine;
};

/// Changes real statements and strings words together at random, but the same way in every run.
class Mutations {
public:
    explicit Mutations(const QStringList& statements) {
        static const QRegularExpression token(u"N?'(?:[^']|'')*'|\\[[^\\]]*\\]|[\\w.]+|<>|<=|>=|\\s+|."_s,
                                              QRegularExpression::UseUnicodePropertiesOption);
        for (const QString& statement : statements) {
            QStringList parts;
            for (const QRegularExpressionMatch& match : token.globalMatch(statement))
                parts.append(match.captured());
            corpus.append(parts);
        }
    }

    QString next() {
        switch (below(12)) {
        case 0:
            return soup();
        case 1:
            return spliced();
        default:
            return mutated();
        }
    }

private:
    QList<QStringList> corpus;
    /// Whatever can stand for a value, so that many changes still make sense.
    const QStringList values = {u"null"_s,
                                u"''"_s,
                                u"'a'"_s,
                                u"N'中''文'"_s,
                                u"1"_s,
                                u"0"_s,
                                u"1.5"_s,
                                u"2e3"_s,
                                u"-1"_s,
                                u"- -1"_s,
                                u"99999999999999999999"_s,
                                u"getdate()"_s,
                                u"dbo.DT(9)"_s,
                                u"count(*)"_s,
                                u"(1+'2')"_s,
                                u"'1'+2.5"_s,
                                u"('a'+'b')"_s,
                                u"cast(coalesce('','') as float)"_s,
                                u"case when 1=1 then 1.5 else '' end"_s,
                                u"case 'a' when 1 then null end"_s,
                                u"(select max(序) from 採購明細資料)"_s,
                                u"(select top 1 採購單號 from 採購資料 order by 1)"_s,
                                u"isnull(null,1)"_s,
                                u"convert(nvarchar(5),1.50)"_s,
                                u"convert(nvarchar,getdate(),112)"_s,
                                u"left('abc',2)"_s,
                                u"nullif(1,'1')"_s,
                                u"datediff(dd,'20240101',getdate())"_s,
                                u"dateadd(mm,1,'20240131')"_s,
                                u"max(1)"_s,
                                u"sum(cast('1' as float))"_s,
                                u"round(1.25,1)"_s,
                                u"len('a ')"_s,
                                u"getdate()+1"_s,
                                u"'1'%2"_s,
                                u"7/2"_s,
                                u"rtrim(1)"_s};
    const QStringList operators = {u"+"_s,
                                   u"-"_s,
                                   u"*"_s,
                                   u"/"_s,
                                   u"%"_s,
                                   u"="_s,
                                   u"<>"_s,
                                   u"<"_s,
                                   u" like "_s,
                                   u" and "_s,
                                   u" or "_s,
                                   u","_s,
                                   u" between 1 and "_s,
                                   u" not like "_s,
                                   u" escape "_s};
    const QStringList noise = {u"("_s,
                               u")"_s,
                               u","_s,
                               u"'"_s,
                               u"N'"_s,
                               u"["_s,
                               u"]"_s,
                               u"\""_s,
                               u"."_s,
                               u";"_s,
                               u"--"_s,
                               u"/*"_s,
                               u"*/"_s,
                               u"?"_s,
                               u"?t"_s,
                               u" not "_s,
                               u" case "_s,
                               u" when "_s,
                               u" then "_s,
                               u" else "_s,
                               u" end "_s,
                               u" exists "_s,
                               u" in "_s,
                               u" union "_s,
                               u" union all "_s,
                               u" top 3 "_s,
                               u" distinct "_s,
                               u" group by "_s,
                               u" having "_s,
                               u" order by "_s,
                               u"(select "_s,
                               u" from "_s,
                               u"採購資料"_s,
                               u" 採購明細資料 a "_s,
                               u" full join "_s,
                               u" right join "_s,
                               u" on 1=1 "_s,
                               u" is null "_s,
                               u" as "_s,
                               u"\u3000"_s,
                               u"\U0001F600"_s,
                               QString(QChar(0)),
                               QString(QChar(0xD800))};
    std::mt19937 random{20240305};

    qsizetype below(qsizetype bound) {
        return static_cast<qsizetype>(random() % static_cast<quint32>(bound));
    }
    const QString& of(const QStringList& list) { return list[below(list.size())]; }
    const QStringList& statement() { return corpus[below(corpus.size())]; }

    QString soup() {
        QString text = below(2) == 0 ? QString() : u"select "_s;
        for (qsizetype i = below(25); i >= 0; --i) {
            const qsizetype kind = below(4);
            text += of(kind == 0 ? values : kind == 1 ? operators : kind == 2 ? noise : statement()) + u' ';
        }
        return text;
    }
    QString spliced() {
        const QStringList& one = statement();
        const QStringList& other = statement();
        return one.mid(0, below(one.size() + 1)).join(QString()) + u' ' +
               other.mid(below(other.size() + 1)).join(QString());
    }
    QString mutated() {
        QStringList parts = statement();
        for (qsizetype i = below(3); i >= 0; --i) {
            const qsizetype at = below(parts.size());
            QString& part = parts[at];
            const bool isValue = part.startsWith(u'\'') || part.startsWith(u"N'"_s) || part[0].isDigit();
            const bool isName = !isValue && (part[0].isLetter() || part[0] == u'[');
            switch (below(8)) {
            case 0:
                part = of(noise);
                break;
            case 1:
                parts.removeAt(at);
                if (parts.isEmpty()) return {};
                break;
            case 2:
                if (isName) {
                    // Another name or keyword of the same statement.
                    const QString& other = parts[below(parts.size())];
                    part = other[0].isLetter() ? other : part;
                }
                break;
            default:
                if (isValue || (isName && below(3) == 0)) {
                    part = of(values);
                } else if (operators.contains(part)) {
                    part = of(operators);
                }
                break;
            }
        }
        return parts.join(QString());
    }
};

} // namespace

TEST_F(DialectStatements, OwnStatementsTranslateAndRun) {
    const QStringList statements = ownStatements();
    EXPECT_GT(statements.size(), 200);
    for (const QString& statement : statements) {
        try {
            engine.run(statement);
        } catch (const DatabaseError& error) {
            ADD_FAILURE() << statement.toStdString() << "\n  " << error.nativeError << ' ' << error.what();
        }
    }
}

TEST_F(DialectStatements, AnyTextTranslatesOrIsRefused) {
    Mutations mutations(ownStatements());
    constexpr int count = 100000;
    int translations = 0;
    int surprises = 0;
    for (int i = 0; i < count && surprises < 5; ++i) {
        const QString text = mutations.next();
        bool translated = false;
        const QString surprise = engine.surprise(text, &translated);
        translations += translated ? 1 : 0;
        if (surprise.isEmpty()) continue;
        ++surprises;
        ADD_FAILURE() << "input " << i << ": " << text.toStdString() << "\n  " << surprise.toStdString();
    }
    std::cout << count << " texts, " << translations << " of them translated\n";
    EXPECT_GT(translations, count / 20);
}

TEST_F(DialectStatements, NestingIsBoundedHereAndInTheEngine) {
    const struct {
        const char16_t* opening;
        const char16_t* middle;
        const char16_t* closing;
    } nests[] = {
        {u"(", u"1", u")"},
        {u"- ", u"1", u""},
        {u"isnull(null,", u"1", u")"},
        {u"case when 1=1 then ", u"1", u" end"},
        {u"case 1 when 1 then 0 else ", u"1", u" end"},
        {u"(select ", u"1", u")"},
        {u"1+(2*", u"1", u")"},
        {u"left('a'+", u"'b'", u",1)"},
        {u"case when exists(select 1 where 1 in (0,", u"1", u")) then 1 else 0 end"},
        {u"case when not (not 1=", u"1", u") then 1 else 0 end"},
        {u"cast(coalesce('',", u"'1'", u") as nvarchar)"},
        {u"datediff(dd,'2024-01-01',dateadd(dd,", u"1", u",'2024-01-01'))"},
    };
    for (const auto& [opening, middle, closing] : nests) {
        int deepest = 0;
        for (int depth = 1; depth <= 200; ++depth) {
            const QString text = u"select "_s + QString::fromUtf16(opening).repeated(depth) +
                                 QString::fromUtf16(middle) + QString::fromUtf16(closing).repeated(depth);
            bool translated = false;
            EXPECT_EQ(engine.surprise(text, &translated).left(300).toStdString(), "")
                << text.left(60).toStdString();
            if (translated) deepest = depth;
        }
        EXPECT_GE(deepest, 3) << QString::fromUtf16(opening).toStdString();
    }
    const QString chain = u" or 採購單號='1'"_s.repeated(5000);
    EXPECT_EQ(engine.surprise(u"select 1 from 採購資料 where 1=1"_s + chain).left(300).toStdString(), "");
    EXPECT_EQ(engine.surprise(u"select 1"_s + u"+1"_s.repeated(5000)).left(300).toStdString(), "");
    EXPECT_EQ(engine.surprise(u"select ''"_s + u"+'a'"_s.repeated(390)).left(300).toStdString(), "");
    EXPECT_EQ(
        engine.surprise(u"select 1"_s + u" union all select 1"_s.repeated(1000)).left(300).toStdString(), "");
}
