#include "data/connection_string.h"
#include "data/test_database.h"

namespace liaowu {
namespace {

using namespace Qt::StringLiterals;

/// A connection string, and what is expected of it.
using Cases = std::vector<std::pair<QString, QString>>;

TEST(ConnectionString, FindsTheFileOfTheEmbeddedEngine) {
    const Cases cases{
        {u"  provider = sqlite ; DATA SOURCE = /data/my plant.db ;; "_s, u"/data/my plant.db"_s},
        {u"Data Source=/料務/工廠.db;Provider=SQLite"_s, u"/料務/工廠.db"_s},
        {u"Provider=SQLite;Data Source=\"/a;b\"\"c.db\""_s, u"/a;b\"c.db"_s},
        {u"Provider=SQLite;Data Source='/a;b''c.db';"_s, u"/a;b'c.db"_s},
        {u"Provider=SQLite;Data Source=/a=b.db"_s, u"/a=b.db"_s},
        {u"Provider=SQLite;Data Source=/first.db;Data Source=/last.db"_s, u"/last.db"_s},
    };
    for (const auto& [text, file] : cases) {
        const ConnectionTarget target = parseConnectionString(text);
        EXPECT_EQ(target.engine, ConnectionTarget::Engine::Embedded);
        EXPECT_EQ(target.file, file);
    }
}

TEST(ConnectionString, TurnsOleDbIntoOdbc) {
    const Cases cases{
        {u"Provider=SQLOLEDB.1;Persist Security Info=True;User ID=sa;Password=pw;Initial Catalog=erp;Data "
         "Source=SRV"_s,
         u"Server=SRV;Database=erp;UID=sa;PWD=pw"_s},
        {u"provider=sqlncli11;server=10.0.0.5,1444;database=料務;uid=使用者;pwd=密碼"_s,
         u"Server=10.0.0.5;Port=1444;Database=料務;UID=使用者;PWD=密碼"_s},
        {u"Provider=MSOLEDBSQL;Data Source=tcp:db\\PLANT , 1433;Initial Catalog=erp"_s,
         u"Server=db\\PLANT;Port=1433;Database=erp"_s},
        {u"Provider=SQLOLEDB;Data Source=s;Password=\"a;b}c\";User ID="_s, u"Server=s;PWD={a;b}c}"_s},
        {u"Provider=SQLOLEDB;Data Source=s;Password=' pw ';Auto Translate=True;Workstation ID=PC1;Packet "
         "Size=4096"_s,
         u"Server=s;PWD={ pw }"_s},
    };
    for (const auto& [text, expected] : cases) {
        const QString odbc = parseConnectionString(text).odbcString;
        const QString driver = odbc.section(u';', 0, 0);
        EXPECT_TRUE(driver.contains(u"tdsodbc") || driver == u"Driver=FreeTDS") << odbc.toStdString();
        EXPECT_EQ(odbc.section(u';', 1), expected + u";TDS_Version=7.4;ClientCharset=UTF-8"_s);
    }
}

TEST(ConnectionString, LeavesOdbcStringsAsTheyAre) {
    const Cases cases{
        {u"Driver={SQL Server};Server=s;UID=sa;PWD={a;b}}c};"_s,
         u"Driver={SQL Server};Server=s;UID=sa;PWD={a;b}}c}"_s},
        {u"Driver={FreeTDS};PWD={a;TDS_Version=}x};Server=s"_s,
         u"Driver={FreeTDS};PWD={a;TDS_Version=}x};Server=s;TDS_Version=7.4;ClientCharset=UTF-8"_s},
        {u"DSN=plant;UID=sa"_s, u"DSN=plant;UID=sa"_s},
        {u"driver={FreeTDS};server=s"_s, u"driver={FreeTDS};server=s;TDS_Version=7.4;ClientCharset=UTF-8"_s},
        {u"Driver=FreeTDS;Server=s;tds_version=7.1;clientcharset=BIG5"_s,
         u"Driver=FreeTDS;Server=s;tds_version=7.1;clientcharset=BIG5"_s},
    };
    for (const auto& [text, odbc] : cases)
        EXPECT_EQ(parseConnectionString(text).odbcString, odbc);
}

TEST(ConnectionString, NamesWhatItDidNotUnderstandAndNoPassword) {
    const Cases cases{
        {u""_s, u"空白"_s},
        {u" ;; "_s, u"空白"_s},
        {u"/data/plant.db"_s, u"第 1 項"_s},
        {u"Provider=Oracle;Password=geheim"_s, u"「Provider」"_s},
        {u"Provider=SQLOLEDB Password=geheim"_s, u"「Provider」"_s},
        {u"Provider=SQLite;Data Source=;Password=geheim"_s, u"「Password」"_s},
        {u"Provider=SQLite;Data Source="_s, u"「Data Source」"_s},
        {u"Provider=SQLite;Data Source=/a.db;Jurnal=WAL"_s, u"「Jurnal」"_s},
        {u"Provider=SQLite;Data Source=/a.db;Mode=geheim"_s, u"「Mode」"_s},
        {u"Provider=SQLOLEDB;User ID=sa;Password=geheim"_s, u"「Data Source」"_s},
        {u"Provider=SQLOLEDB;Data Source=s;Password=geheim;Farbe=rot"_s, u"「Farbe」"_s},
        {u"Provider=SQLOLEDB;Data Source=s,geheim"_s, u"「Data Source」"_s},
        {u"Provider=SQLOLEDB;Data Source=s;Password=x;geheim"_s, u"第 4 項"_s},
        {u"Provider=SQLOLEDB;Data Source=s;Password=\"geheim"_s, u"「Password」"_s},
        {u"Provider=SQLOLEDB;Data Source=s;Password='x'geheim"_s, u"「Password」"_s},
        {u"Provider=SQLOLEDB;Data Source=s;Password='geheim};'"_s, u"「PWD」"_s},
        {u"Driver={FreeTDS;PWD=geheim"_s, u"「Driver」"_s},
        {u"Server=s;PWD=geheim"_s, u"「Server」"_s},
    };
    for (const auto& [text, named] : cases) {
        QString message;
        EXPECT_EQ(errorOf([&, &input = text] { parseConnectionString(input); }, &message),
                  DatabaseError::ConnectionFailed)
            << text.toStdString();
        EXPECT_TRUE(message.contains(named) && !message.contains(u"geheim"))
            << text.toStdString() << " -> " << message.toStdString();
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
    const QStringList pieces =
        u"Provider=|SQLite|SQLOLEDB|Data Source=|Driver=|{|}|\"|'|;|=|DSN=|Server=|,| |Initial Catalog|\0|"
        "\xD840|\U00020000|紙|Password=;|User ID=sa;|1433|\n|Mode="_s.split(u'|');
    quint32 seed = 4711;
    const auto random = [&] { return (seed = seed * 1664525 + 1013904223) >> 12; };
    const auto randomText = [&](quint32 bound) {
        QString text;
        for (quint32 i = random() % bound; i > 0; --i)
            text += pieces[random() % static_cast<quint32>(pieces.size())];
        return text;
    };
    int understood = 0;
    for (int round = 0; round < 100'000; ++round) {
        QString before = randomText(8);
        const QString text = before + u";Password=geheim;"_s + randomText(6);
        try {
            const ConnectionTarget target = parseConnectionString(text);
            const bool embedded = target.engine == ConnectionTarget::Engine::Embedded;
            ASSERT_FALSE(embedded ? target.file.isEmpty() : target.odbcString.isEmpty())
                << text.toStdString();
            ++understood;
        } catch (const DatabaseError& error) {
            ASSERT_FALSE(error.text.isEmpty() || error.text.contains(u"geheim"))
                << text.toStdString() << " -> " << error.text.toStdString();
        }
        parseConnectionString(connectionStringFor(u'/' + before.remove(u'=').remove(QChar(u'\0'))));
    }
    EXPECT_GT(understood, 100);
}

} // namespace
} // namespace liaowu
