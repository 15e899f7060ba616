#include "common/document_numbers.h"
#include "plant_session.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

TEST(DocumentNumbers, EachSeriesCountsItsOwn) {
    struct Case {
        const char* what;
        NumberSeries series;
        const char16_t* rows;
        QString next;
    };
    const Case cases[] = {
        {"first order of a day", orderNumbers(), nullptr, u"250115001"_s},
        {"first requisition", requisitionNumbers(), nullptr, u"2501150001"_s},
        {"first issue", issueNumbers(), nullptr, u"2501150001"_s},
        {"first receipt", receiptNumbers(), nullptr, u"2501150001"_s},
        {"first return", returnNumbers(), nullptr, u"250115T0001"_s},
        {"next order", orderNumbers(),
         u"insert into 採購資料 (採購單號) values ('250115001'),('250115009'),('250114999'),('250116001')",
         u"250115010"_s},
        {"the thousandth order", orderNumbers(), u"insert into 採購資料 (採購單號) values ('250115999')",
         u"250116000"_s},
        {"a typed number counts", orderNumbers(), u"insert into 採購資料 (採購單號) values ('250115Z ')",
         u"250116A"_s},
        {"next requisition", requisitionNumbers(),
         u"insert into 原料申購資料 (申購單號) values ('2501150099')", u"2501150100"_s},
        {"next issue", issueNumbers(),
         u"insert into 原料領料資料 (領料單號) values ('2501150009'),('2501150010')", u"2501150011"_s},
        {"returns do not count among receipts", receiptNumbers(),
         u"insert into 原料入庫資料 (入庫單號,單別) values ('2501150004','采購入庫'),('250115T0007','退貨')",
         u"2501150005"_s},
        {"nor receipts among returns", returnNumbers(),
         u"insert into 原料入庫資料 (入庫單號,單別) values "
         u"('2501150004','采購入庫'),('250115T0007','退貨'),('250114T0009','退貨')",
         u"250115T0008"_s},
        {"the date may stand in the middle", receiptNumbers(),
         u"insert into 原料入庫資料 (入庫單號,單別) values ('A-2501150002','采購入庫')", u"A-2501150003"_s}};
    for (const Case& c : cases) {
        PlantSession plant;
        if (c.rows) plant.run({c.rows});
        EXPECT_EQ(nextDocumentNumber(plant.session, c.series), c.next) << c.what;
    }
}

TEST(DocumentNumbers, TheServersDayCounts) {
    PlantSession plant;
    plant.pool.setClock(QDateTime(QDate(2025, 12, 31), QTime(23, 59, 59)));
    EXPECT_EQ(nextDocumentNumber(plant.session, orderNumbers()), u"251231001"_s);
    plant.pool.setClock(QDateTime(QDate(2026, 1, 1), QTime(0, 0)));
    EXPECT_EQ(nextDocumentNumber(plant.session, orderNumbers()), u"260101001"_s)
        << "after midnight the prefix changes";
}

TEST(DocumentNumbers, AFailureIsToldUnderTheSeriesOwnTitle) {
    const std::pair<NumberSeries, QString> cases[] = {{orderNumbers(), u"取得採購單號流水號錯誤"_s},
                                                      {requisitionNumbers(), u"取得申購單號流水號錯誤"_s},
                                                      {issueNumbers(), u"取得領料單號流水號錯誤"_s},
                                                      {receiptNumbers(), u"取得入庫單號流水號錯誤"_s},
                                                      {returnNumbers(), u"取得退貨單號流水號錯誤"_s}};
    for (const auto& [series, title] : cases) {
        PlantSession plant;
        plant.pool.failAt(2);
        EXPECT_EQ(nextDocumentNumber(plant.session, series), QString());
        ASSERT_EQ(plant.messages.told.size(), 1);
        EXPECT_TRUE(plant.messages.told.first().startsWith(title + u": "_s))
            << plant.messages.told.first().toStdString();
    }
}
