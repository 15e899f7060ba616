#include "data/dialect/engine.h"
#include "data/schema/schema.h"
#include <QFile>
#include <QRegularExpression>
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
        const qsizetype kind = below(12);
        return kind == 0 ? soup() : kind == 1 ? spliced() : mutated();
    }

private:
    QList<QStringList> corpus;
    /// Whatever can stand for a value, so that many changes still make sense.
    const QStringList values =
        u"null|''|'a'|N'中''文'|1|0|1.5|2e3|-1|- -1|99999999999999999999|getdate()|dbo.DT(9)|count(*)|"
        "(1+'2')|'1'+2.5|('a'+'b')|cast(coalesce('','') as float)|case when 1=1 then 1.5 else '' end|"
        "case 'a' when 1 then null end|(select max(序) from 採購明細資料)|"
        "(select top 1 採購單號 from 採購資料 order by 1)|isnull(null,1)|convert(nvarchar(5),1.50)|"
        "convert(nvarchar,getdate(),112)|left('abc',2)|nullif(1,'1')|"
        "datediff(dd,'20240101',getdate())|dateadd(mm,1,'20240131')|max(1)|sum(cast('1' as float))|"
        "round(1.25,1)|len('a ')|getdate()+1|'1'%2|7/2|rtrim(1)"_s.split(u'|');
    const QStringList operators =
        u"+|-|*|/|%|=|<>|<| like | and | or |,| between 1 and | not like | escape "_s.split(u'|');
    const QStringList noise =
        u"(|)|,|'|N'|[|]|\"|.|;|--|/*|*/|?|?t| not | case | when | then | else | end | exists | in |"
        " union | union all | top 3 | distinct | group by | having | order by |(select | from |採購資料|"
        " 採購明細資料 a | full join | right join | on 1=1 | is null | as |\u3000|\U0001F600"_s.split(u'|') +
        QStringList{QString(QChar(0)), QString(QChar(0xD800))};
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
            const qsizetype change = below(8);
            if (change == 0) {
                part = of(noise);
            } else if (change == 1) {
                parts.removeAt(at);
                if (parts.isEmpty()) return {};
            } else if (change == 2 && isName) {
                // Another name or keyword of the same statement.
                const QString& other = parts[below(parts.size())];
                if (other[0].isLetter()) part = other;
            } else if (change > 2 && (isValue || (isName && below(3) == 0))) {
                part = of(values);
            } else if (change > 2 && operators.contains(part)) {
                part = of(operators);
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
            ADD_FAILURE() << statement << "\n  " << error.nativeError << ' ' << error.what();
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
        ADD_FAILURE() << "input " << i << ": " << text << "\n  " << surprise;
    }
    std::cout << count << " texts, " << translations << " of them translated\n";
    EXPECT_GT(translations, count / 20);
}

TEST_F(DialectStatements, NestingIsBoundedHereAndInTheEngine) {
    const auto surpriseOf = [this](const QString& text, bool* translated = nullptr) {
        return engine.surprise(u"select "_s + text, translated).left(300);
    };
    // What opens, what stands inside, what closes.
    for (const QString& nest :
         {u"(|1|)"_s, u"- |1|"_s, u"isnull(null,|1|)"_s, u"case when 1=1 then |1| end"_s,
          u"case 1 when 1 then 0 else |1| end"_s, u"(select |1|)"_s, u"1+(2*|1|)"_s, u"left('a'+|'b'|,1)"_s,
          u"case when exists(select 1 where 1 in (0,|1|)) then 1 else 0 end"_s,
          u"case when not (not 1=|1|) then 1 else 0 end"_s, u"cast(coalesce('',|'1'|) as nvarchar)"_s,
          u"datediff(dd,'2024-01-01',dateadd(dd,|1|,'2024-01-01'))"_s}) {
        const QStringList parts = nest.split(u'|');
        int deepest = 0;
        for (int depth = 1; depth <= 200; ++depth) {
            bool translated = false;
            EXPECT_EQ(surpriseOf(parts[0].repeated(depth) + parts[1] + parts[2].repeated(depth), &translated),
                      u"")
                << nest << ", depth " << depth;
            if (translated) deepest = depth;
        }
        EXPECT_GE(deepest, 3) << nest;
    }
    for (const QString& chain : {u"1 from 採購資料 where 1=1"_s + u" or 採購單號='1'"_s.repeated(5000),
                                 u"1"_s + u"+1"_s.repeated(5000), u"''"_s + u"+'a'"_s.repeated(390),
                                 u"1"_s + u" union all select 1"_s.repeated(1000)})
        EXPECT_EQ(surpriseOf(chain), u"") << chain.left(60);
}
