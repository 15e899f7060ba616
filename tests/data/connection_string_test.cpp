#include "data/connection_string.h"
#include "data/test_database.h"
#include <algorithm>

namespace liaowu {
namespace {

using namespace Qt::StringLiterals;

TEST(ConnectionString, FindsTheFileOfTheEmbeddedEngine) {
    struct Case {
        const char16_t* text;
        const char16_t* file;
    };
    const std::vector<Case> cases{
        {u"Provider=SQLite;Data Source=/data/plant.db", u"/data/plant.db"},
        {u"  provider = sqlite ; DATA SOURCE = /data/my plant.db ;; ", u"/data/my plant.db"},
        {u"Data Source=/料務/工廠.db;Provider=SQLite", u"/料務/工廠.db"},
        {u"Provider=SQLite;Data Source=\"/a;b\"\"c.db\"", u"/a;b\"c.db"},
        {u"Provider=SQLite;Data Source='/a;b''c.db';", u"/a;b'c.db"},
        {u"Provider=SQLite;Data Source=/a=b.db", u"/a=b.db"},
        {u"Provider=SQLite;Data Source=/first.db;Data Source=/last.db", u"/last.db"},
    };
    for (const Case& c : cases) {
        const ConnectionTarget target = parseConnectionString(QString::fromUtf16(c.text));
        EXPECT_EQ(target.engine, ConnectionTarget::Engine::Embedded);
        EXPECT_EQ(target.file, QString::fromUtf16(c.file));
    }
}

QString withoutDriver(QString odbc) {
    const qsizetype end = odbc.indexOf(u';');
    EXPECT_TRUE(odbc.left(end).contains(u"tdsodbc") || odbc.left(end) == u"Driver=FreeTDS")
        << odbc.toStdString();
    return odbc.mid(end + 1);
}

TEST(ConnectionString, TurnsOleDbIntoOdbc) {
    struct Case {
        const char16_t* text;
        const char16_t* odbc;
    };
    const std::vector<Case> cases{
        {u"Provider=SQLOLEDB.1;Persist Security Info=True;User ID=sa;Password=pw;Initial Catalog=erp;Data "
         u"Source=SRV",
         u"Server=SRV;Database=erp;UID=sa;PWD=pw;TDS_Version=7.4;ClientCharset=UTF-8"},
        {u"provider=sqlncli11;server=10.0.0.5,1444;database=料務;uid=使用者;pwd=密碼",
         u"Server=10.0.0.5;Port=1444;Database=料務;UID=使用者;PWD=密碼;TDS_Version=7.4;ClientCharset=UTF-8"},
        {u"Provider=MSOLEDBSQL;Data Source=tcp:db\\PLANT , 1433;Initial Catalog=erp",
         u"Server=db\\PLANT;Port=1433;Database=erp;TDS_Version=7.4;ClientCharset=UTF-8"},
        {u"Provider=SQLOLEDB;Data Source=s;Password=\"a;b}c\";User ID=",
         u"Server=s;PWD={a;b}c};TDS_Version=7.4;ClientCharset=UTF-8"},
        {u"Provider=SQLOLEDB;Data Source=s;Password=' pw ';Auto Translate=True;Workstation ID=PC1;Packet "
         u"Size=4096",
         u"Server=s;PWD={ pw };TDS_Version=7.4;ClientCharset=UTF-8"},
    };
    for (const Case& c : cases) {
        const ConnectionTarget target = parseConnectionString(QString::fromUtf16(c.text));
        EXPECT_EQ(target.engine, ConnectionTarget::Engine::Odbc);
        EXPECT_EQ(withoutDriver(target.odbcString), QString::fromUtf16(c.odbc));
    }
}

TEST(ConnectionString, LeavesOdbcStringsAsTheyAre) {
    struct Case {
        const char16_t* text;
        const char16_t* odbc;
    };
    const std::vector<Case> cases{
        {u"Driver={SQL Server};Server=s;UID=sa;PWD={a;b}}c};",
         u"Driver={SQL Server};Server=s;UID=sa;PWD={a;b}}c}"},
        {u"Driver={FreeTDS};PWD={a;TDS_Version=}x};Server=s",
         u"Driver={FreeTDS};PWD={a;TDS_Version=}x};Server=s;TDS_Version=7.4;ClientCharset=UTF-8"},
        {u"DSN=plant;UID=sa", u"DSN=plant;UID=sa"},
        {u"Driver=SQLite3;Database=/tmp/x.db", u"Driver=SQLite3;Database=/tmp/x.db"},
        {u"driver={FreeTDS};server=s", u"driver={FreeTDS};server=s;TDS_Version=7.4;ClientCharset=UTF-8"},
        {u"Driver=FreeTDS;Server=s;tds_version=7.1;clientcharset=BIG5",
         u"Driver=FreeTDS;Server=s;tds_version=7.1;clientcharset=BIG5"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(parseConnectionString(QString::fromUtf16(c.text)).odbcString, QString::fromUtf16(c.odbc));
}

TEST(ConnectionString, NamesWhatItDidNotUnderstandAndNoPassword) {
    struct Case {
        const char16_t* text;
        const char16_t* named;
    };
    const std::vector<Case> cases{
        {u"", u"空白"},
        {u" ;; ", u"空白"},
        {u"/data/plant.db", u"第 1 項"},
        {u"Provider=Oracle;Password=geheim", u"「Provider」"},
        {u"Provider=SQLOLEDB Password=geheim", u"「Provider」"},
        {u"Provider=SQLite;Password=geheim", u"「Password」"},
        {u"Provider=SQLite;Data Source=;Password=geheim", u"「Password」"},
        {u"Provider=SQLite;Data Source=", u"「Data Source」"},
        {u"Provider=SQLite;Data Source=/a.db;Jurnal=WAL", u"「Jurnal」"},
        {u"Provider=SQLite;Data Source=/a.db;Mode=geheim", u"「Mode」"},
        {u"Provider=SQLOLEDB;User ID=sa;Password=geheim", u"「Data Source」"},
        {u"Provider=SQLOLEDB;Data Source=s;Password=geheim;Farbe=rot", u"「Farbe」"},
        {u"Provider=SQLOLEDB;Data Source=s,geheim", u"「Data Source」"},
        {u"Provider=SQLOLEDB;Data Source=s;Password=x;geheim", u"第 4 項"},
        {u"Provider=SQLOLEDB;Data Source=s;Password=\"geheim", u"「Password」"},
        {u"Provider=SQLOLEDB;Data Source=s;Password='x'geheim", u"「Password」"},
        {u"Provider=SQLOLEDB;Data Source=s;Password='geheim};'", u"「PWD」"},
        {u"Driver={FreeTDS;PWD=geheim", u"「Driver」"},
        {u"Server=s;PWD=geheim", u"「Server」"},
    };
    for (const Case& c : cases) {
        const QString text = QString::fromUtf16(c.text);
        QString message;
        EXPECT_EQ(errorOf([&] { parseConnectionString(text); }, &message), DatabaseError::ConnectionFailed)
            << text.toStdString();
        EXPECT_TRUE(message.contains(QString::fromUtf16(c.named)))
            << text.toStdString() << " -> " << message.toStdString();
        EXPECT_FALSE(message.contains(u"geheim")) << message.toStdString();
    }
}

TEST(ConnectionString, IsMadeForAnyFileName) {
    for (const QString& file : {u"/data/plant.db"_s, u"/a;b.db"_s, u" /a \"b\" .db "_s, u"'q'.db"_s,
                                u"x=y.db"_s, u"\"q\".db"_s, u"料務 {1}.db"_s}) {
        EXPECT_EQ(parseConnectionString(connectionStringFor(file)).file, file);
    }
    for (const QString& text :
         {u"Provider=SQLite;Data Source=x"_s, u"dsn = plant"_s, u"Server=s;Driver={x}"_s})
        EXPECT_EQ(connectionStringFor(text), text);
}

// Any input gives a target or an error of ours, and a password between other keys is never shown.
TEST(ConnectionString, SurvivesAnyInput) {
    const QStringList pieces{u"Provider="_s,  u"SQLite"_s,      u"SQLOLEDB"_s,   u"Data Source="_s,
                             u"Driver="_s,    u"{"_s,           u"}"_s,          u"\""_s,
                             u"'"_s,          u";"_s,           u"="_s,          u"DSN="_s,
                             u"Server="_s,    u","_s,           u" "_s,          u"Initial Catalog"_s,
                             u"\0"_s,         u"\xD840"_s,      u"\U00020000"_s, u"紙"_s,
                             u"Password=;"_s, u"User ID=sa;"_s, u"1433"_s,       u"\n"_s,
                             u"Mode="_s};
    quint32 seed = 4711;
    const auto random = [&] { return (seed = seed * 1664525 + 1013904223) >> 12; };
    int understood = 0;
    for (int round = 0; round < 100'000; ++round) {
        QString before, after;
        for (quint32 i = random() % 8; i > 0; --i)
            before += pieces[random() % static_cast<quint32>(pieces.size())];
        for (quint32 i = random() % 6; i > 0; --i)
            after += pieces[random() % static_cast<quint32>(pieces.size())];
        const QString text = before + u";Password=geheim;"_s + after;
        try {
            const ConnectionTarget target = parseConnectionString(text);
            const bool embedded = target.engine == ConnectionTarget::Engine::Embedded;
            ASSERT_FALSE(embedded ? target.file.isEmpty() : target.odbcString.isEmpty())
                << text.toStdString();
            ++understood;
        } catch (const DatabaseError& error) {
            ASSERT_FALSE(error.text.contains(u"geheim"))
                << text.toStdString() << " -> " << error.text.toStdString();
            ASSERT_FALSE(error.text.isEmpty());
        }
        parseConnectionString(connectionStringFor(u'/' + before.remove(u'=').remove(QChar(u'\0'))));
    }
    EXPECT_GT(understood, 100);
}

} // namespace
} // namespace liaowu
