#include "data/connection_string.h"
#include "data/test_database.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

TEST(ConnectionString, FindsTheFileOfTheEmbeddedEngine) {
    for (const auto& [text, file] :
         casesOf<2>({u"  provider = sqlite ; DATA SOURCE = /data/my plant.db ;; |/data/my plant.db",
                     u"Data Source=/料務/工廠.db;Provider=SQLite|/料務/工廠.db",
                     u"Provider=SQLite;Data Source=\"/a;b\"\"c.db\"|/a;b\"c.db",
                     u"Provider=SQLite;Data Source='/a;b''c.db';|/a;b'c.db",
                     u"Provider=SQLite;Data Source=/a=b.db|/a=b.db",
                     u"Provider=SQLite;Data Source=/first.db;Data Source=/last.db|/last.db"})) {
        const ConnectionTarget target = parseConnectionString(text);
        EXPECT_EQ(target.engine, ConnectionTarget::Engine::Embedded);
        EXPECT_EQ(target.file, file);
    }
}

TEST(ConnectionString, TurnsOleDbIntoOdbc) {
    for (const auto& [text, expected] :
         casesOf<2>({u"Provider=SQLOLEDB.1;Persist Security Info=True;User ID=sa;Password=pw;Initial "
                     u"Catalog=erp;Data Source=SRV|Server=SRV;Database=erp;UID=sa;PWD=pw",
                     u"provider=sqlncli11;server=10.0.0.5,1444;database=料務;uid=使用者;pwd=密碼|"
                     u"Server=10.0.0.5;Port=1444;Database=料務;UID=使用者;PWD=密碼",
                     u"Provider=MSOLEDBSQL;Data Source=tcp:db\\PLANT , 1433;Initial Catalog=erp|"
                     u"Server=db\\PLANT;Port=1433;Database=erp",
                     u"Provider=SQLOLEDB;Data Source=s;Password=\"a;b}c\";User ID=|Server=s;PWD={a;b}c}",
                     u"Provider=SQLOLEDB;Data Source=s;Password=' pw ';Auto Translate=True;Workstation "
                     u"ID=PC1;Packet Size=4096|Server=s;PWD={ pw }"})) {
        const QString odbc = parseConnectionString(text).odbcString;
        const QString driver = odbc.section(u';', 0, 0);
        EXPECT_TRUE(driver.contains(u"tdsodbc") || driver == u"Driver=FreeTDS") << odbc;
        EXPECT_EQ(odbc.section(u';', 1), expected + u";TDS_Version=7.4;ClientCharset=UTF-8"_s);
    }
}

TEST(ConnectionString, LeavesOdbcStringsAsTheyAre) {
    for (const auto& [text, odbc] : casesOf<2>(
             {u"Driver={SQL Server};Server=s;UID=sa;PWD={a;b}}c};|"
              u"Driver={SQL Server};Server=s;UID=sa;PWD={a;b}}c}",
              u"Driver={FreeTDS};PWD={a;TDS_Version=}x};Server=s|"
              u"Driver={FreeTDS};PWD={a;TDS_Version=}x};Server=s;TDS_Version=7.4;ClientCharset=UTF-8",
              u"DSN=plant;UID=sa|DSN=plant;UID=sa",
              u"driver={FreeTDS};server=s|driver={FreeTDS};server=s;TDS_Version=7.4;ClientCharset=UTF-8",
              u"Driver=FreeTDS;Server=s;tds_version=7.1;clientcharset=BIG5|"
              u"Driver=FreeTDS;Server=s;tds_version=7.1;clientcharset=BIG5"}))
        EXPECT_EQ(parseConnectionString(text).odbcString, odbc);
}

TEST(ConnectionString, NamesWhatItDidNotUnderstandAndNoPassword) {
    for (const auto& [text, named] :
         casesOf<2>({u"|空白", u" ;; |空白", u"/data/plant.db|第 1 項",
                     u"Provider=Oracle;Password=geheim|「Provider」",
                     u"Provider=SQLOLEDB Password=geheim|「Provider」",
                     u"Provider=SQLite;Data Source=;Password=geheim|「Password」",
                     u"Provider=SQLite;Data Source=|「Data Source」",
                     u"Provider=SQLite;Data Source=/a.db;Jurnal=WAL|「Jurnal」",
                     u"Provider=SQLite;Data Source=/a.db;Mode=geheim|「Mode」",
                     u"Provider=SQLOLEDB;User ID=sa;Password=geheim|「Data Source」",
                     u"Provider=SQLOLEDB;Data Source=s;Password=geheim;Farbe=rot|「Farbe」",
                     u"Provider=SQLOLEDB;Data Source=s,geheim|「Data Source」",
                     u"Provider=SQLOLEDB;Data Source=s;Password=x;geheim|第 4 項",
                     u"Provider=SQLOLEDB;Data Source=s;Password=\"geheim|「Password」",
                     u"Provider=SQLOLEDB;Data Source=s;Password='x'geheim|「Password」",
                     u"Provider=SQLOLEDB;Data Source=s;Password='geheim};'|「PWD」",
                     u"Driver={FreeTDS;PWD=geheim|「Driver」", u"Server=s;PWD=geheim|「Server」"})) {
        QString message;
        EXPECT_EQ(errorOf([&, &input = text] { parseConnectionString(input); }, &message),
                  DatabaseError::ConnectionFailed)
            << text;
        EXPECT_TRUE(message.contains(named) && !message.contains(u"geheim")) << text << " -> " << message;
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
            ASSERT_FALSE(embedded ? target.file.isEmpty() : target.odbcString.isEmpty()) << text;
            ++understood;
        } catch (const DatabaseError& error) {
            ASSERT_FALSE(error.text.isEmpty() || error.text.contains(u"geheim"))
                << text << " -> " << error.text;
        }
        parseConnectionString(connectionStringFor(u'/' + before.remove(u'=').remove(QChar(u'\0'))));
    }
    EXPECT_GT(understood, 100);
}
