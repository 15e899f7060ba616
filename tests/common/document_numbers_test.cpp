#include "common/document_numbers.h"
#include "plant_session.h"
#include <map>

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

const std::map<QString, NumberSeries>& allSeries() {
    static const std::map<QString, NumberSeries> series{{u"採購單號"_s, orderNumbers()},
                                                        {u"申購單號"_s, requisitionNumbers()},
                                                        {u"領料單號"_s, issueNumbers()},
                                                        {u"入庫單號"_s, receiptNumbers()},
                                                        {u"退貨單號"_s, returnNumbers()}};
    return series;
}

} // namespace

TEST(DocumentNumbers, EachSeriesCountsItsOwn) {
    // Series, what is shown, the number that comes; what stands there.
    const auto cases = casesOf<4>(
        {u"採購單號|the first|250115001|", u"申購單號|the first|2501150001|",
         u"領料單號|the first|2501150001|", u"入庫單號|the first|2501150001|",
         u"退貨單號|the first|250115T0001|",
         u"採購單號|the next|250115010|採購資料 (採購單號) values "
         u"('250115001'),('250115009'),('250114999'),('250116001')",
         u"採購單號|the thousandth|250116000|採購資料 (採購單號) values ('250115999')",
         u"採購單號|a typed number counts|250116A|採購資料 (採購單號) values ('250115Z ')",
         u"申購單號|the next|2501150100|原料申購資料 (申購單號) values ('2501150099')",
         u"領料單號|the next|2501150011|原料領料資料 (領料單號) values ('2501150009'),('2501150010')",
         u"入庫單號|returns do not count|2501150005|原料入庫資料 (入庫單號,單別) values "
         u"('2501150004','采購入庫'),('250115T0007','退貨')",
         u"入庫單號|a return made among receipts counts|2501150002|原料入庫資料 (入庫單號,單別) values "
         u"('2501150001','退貨'),('250115T0009','退貨')",
         u"退貨單號|receipts do not count|250115T0008|原料入庫資料 (入庫單號,單別) values "
         u"('2501150004','采購入庫'),('250115T0007','退貨'),('250114T0009','退貨')",
         u"入庫單號|the date may stand in the middle|A-2501150003|原料入庫資料 (入庫單號,單別) values "
         u"('A-2501150002','采購入庫')"});
    for (const auto& [series, what, next, rows] : cases) {
        PlantSession plant;
        if (!rows.isEmpty())
            Connection(plant.pool, plant.target).Execute(readyMadeSql(u"insert into "_s + rows));
        EXPECT_EQ(nextDocumentNumber(plant.session, allSeries().at(series)), next) << series << ' ' << what;
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
    for (const auto& [name, series] : allSeries()) {
        PlantSession plant;
        plant.pool.failAt(2);
        EXPECT_EQ(nextDocumentNumber(plant.session, series), QString());
        ASSERT_EQ(plant.messages.told.size(), 1);
        EXPECT_TRUE(plant.messages.told.first().startsWith(u"取得%1流水號錯誤: "_s.arg(name)))
            << plant.messages.told.first();
    }
}
