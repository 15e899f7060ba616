#include "purchasing/order_batch.h"
#include "common/clock.h"
#include "common/rights.h"
#include "data/recordset.h"

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

/// Appends the rows of `from` to the table of `to`, by position.
void appendByPosition(const Recordset& from, Recordset& to) {
    if (from.columnCount() != to.columnCount())
        throw DatabaseError(DatabaseError::Usage, u"第二資料庫的資料表欄位數與本資料庫不同"_s);
    const QStringList names = to.columnNames();
    for (int row = 0; row < from.RecordCount(); ++row) {
        to.AddNew();
        for (int c = 0; c < from.columnCount(); ++c) {
            if (from.isNullAt(row, c)) {
                to.setNull(names[c]);
            } else {
                to.set(names[c], from.textAt(row, c));
            }
        }
    }
    if (from.RecordCount() > 0) to.UpdateBatch();
}

} // namespace

void copyToSecondDatabase(Session& session, const QString& number) {
    Connection main(session.pool, session.connectionString);
    if (select(main, sql(u"select 採購單號 from [採購資料] where 採購單號='{}' and 轉稅='1' ", number))
            .RecordCount() == 0)
        return;
    const SqlText header = sql(u"select * from 採購資料 where 採購單號 = '{}'", number);
    const SqlText lines = sql(u"select * from 採購明細資料 where 採購單號 = '{}'", number);
    const Recordset headerRow = select(main, header);
    const Recordset lineRows = select(main, lines);
    Connection second(session.pool, session.otherParam);
    Transaction transaction(second);
    if (select(second, header).RecordCount() > 0) return;
    Recordset target;
    target.Open(header, second, Cursor::Batch);
    appendByPosition(headerRow, target);
    Recordset targetLines;
    targetLines.Open(lines, second, Cursor::Batch);
    appendByPosition(lineRows, targetLines);
    transaction.commit();
}

void approveOrder(Session& session, const QString& number) {
    {
        Connection connection(session.pool, session.connectionString);
        connection.Execute(sql(u"update 採購資料 set 審單='Y',審單日期='{}',審單人='{}' where 採購單號='{}'",
                               serverTime(connection, 2), session.salesmanName, number));
    }
    copyToSecondDatabase(session, number);
}

BatchSpec orderBatch(Session& session, bool canSeePrice) {
    BatchSpec spec;
    spec.page = u"pic整批審單"_s;
    spec.dateBoxes = {u"txt訂單日期1"_s, u"txt訂單日期2"_s};
    spec.numberBoxes = {u"txt客戶單號2"_s, u"txt客戶單號4"_s};
    spec.defaults = {daysAgo(session, 7), today8(session), {}, u"zzzzzzzz"_s};
    spec.columns = {{u"採購單號"_s, 1400}, {u"廠商代號"_s, 1200},     {u"廠商簡稱"_s, 1900},
                    {u"採購日期"_s, 1300}, {u"採購人員代號"_s, 1500}, {u"採購員"_s, 1300},
                    {u"幣別"_s, 900},      {u"備注"_s, 2600},         {u"審單"_s, 700}};
    spec.list = [&session](const BatchInput& input) {
        return sql(u"select 採購單號,廠商代號,廠商簡稱,採購日期,  業務員代號,業務員名稱,幣別,'',審單  from "
                   u"採購資料 where 審單<>'Y' and  (採購日期 "
                   u"between '{}' and '{}') and (採購單號 between '{}' and '{}') ",
                   input.fromDate, input.toDate, input.fromNumber, input.toNumber) +
               readyMadeSql(scopeOn(session, u"採購資料"_s)) + sql(u"order by 採購單號 ");
    };
    spec.detail = [canSeePrice](const QString& number) {
        return canSeePrice ? sql(u"select 原料代號,原料名稱 as 產品名稱,規格,數量,單價  from 採購明細資料 "
                                 u"where 採購單號='{}'",
                                 number)
                           : sql(u"select 原料代號,原料名稱 as 產品名稱,規格,數量,'******' as 單價  from "
                                 u"採購明細資料 where 採購單號='{}'",
                                 number);
    };
    spec.approve = [&session](const QString& number) { approveOrder(session, number); };
    return spec;
}

} // namespace liaowu
