#include "dbtool/demo.h"
#include "data/recordset.h"
#include "data/schema/schema.h"
#include "dbtool/demo_rows.h"

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

void requireEmpty(Connection& connection) {
    for (const QString& table :
         {u"使用者資料"_s, u"採購資料"_s, u"原料申購資料"_s, u"浪紙資料"_s, u"物料資料"_s})
        if (!select(connection, sql(u"select top 1 * from [{}]", table)).EOF_())
            throw DatabaseError(DatabaseError::Usage,
                                u"「%1」已有資料,示範資料只能建在空的資料庫"_s.arg(table));
}

} // namespace

DemoSummary createDemo(ConnectionPool& pool, const QString& connectionString, double scale) {
    createSchema(pool, connectionString, SchemaParts::WithoutIndexes);
    demo::Dice dice(20250115);
    demo::Plant plant = demo::plantWithMasters(dice);
    demo::simulate(plant, dice, scale);
    {
        Connection connection(pool, connectionString);
        Transaction transaction(connection);
        requireEmpty(connection);
        demo::writeVocabulary(connection, plant);
        demo::writeUsers(connection, plant);
        demo::writeMasters(connection, plant);
        demo::writePurchasing(connection, plant);
        demo::writeWarehouse(connection, plant);
        demo::writeOtherModules(connection, plant);
        transaction.commit();
    }
    // One sort is cheaper than finding the place of each row.
    createSchema(pool, connectionString);

    DemoSummary summary;
    summary.requisitions = static_cast<int>(plant.requisitions.size());
    summary.orders = static_cast<int>(plant.orders.size());
    for (const demo::Order& order : plant.orders)
        summary.orderLines += static_cast<int>(order.lines.size());
    summary.receipts = static_cast<int>(plant.receipts.size());
    summary.issues = static_cast<int>(plant.issues.size());
    return summary;
}

} // namespace liaowu
