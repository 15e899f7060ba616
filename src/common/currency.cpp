#include "common/currency.h"
#include "common/guard.h"
#include "common/text_values.h"
#include "data/recordset.h"

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

double rateIn(const Recordset& row) {
    const double rate = row.RecordCount() > 0 ? val(row.text(u"匯率")) : 1;
    return rate == 0 ? 1 : rate;
}

double rateOf(Connection& connection, const QString& currency) {
    return rateIn(select(connection, sql(u"select * from [匯率檔] where 幣別='{}' ", currency)));
}

double targetRate(Connection& connection, const QString& to) {
    if (!to.isEmpty()) return rateOf(connection, to);
    Recordset row = select(connection, sql(u"select top 1 * from 匯率檔 where 默認幣別='Y'"));
    if (row.RecordCount() == 0) row = select(connection, sql(u"select top 1 * from 匯率檔"));
    return rateIn(row);
}

double converted(double amount, double sourceRate, double targetRate) {
    return val(format(amount * sourceRate / targetRate, u"0.000000"));
}

template <typename Convert>
double shown(Session& session, Convert convert) {
    double result = 0;
    guarded(session, u"取得幣別資料錯誤"_s, [&] {
        Connection connection(session.pool, session.connectionString);
        result = convert(connection);
    });
    return result;
}

} // namespace

QStringList currencies(Session& session) {
    QStringList names{QString()};
    guarded(session, u"取得幣別資料錯誤"_s, [&] {
        Connection connection(session.pool, session.connectionString);
        for (Recordset rows = select(connection, sql(u"select * from [匯率檔] order by 幣別")); !rows.EOF_();
             rows.MoveNext())
            names << rows.text(u"幣別").trimmed();
    });
    return names;
}

double convertCurrency(Connection& connection, const QString& from, double amount, const QString& to) {
    if (from.trimmed() == to.trimmed()) return amount;
    const double target = targetRate(connection, to.trimmed());
    return converted(amount, rateOf(connection, from.trimmed()), target);
}

double convertCurrencyAt(Connection& connection, const QString& from, double amount, const QString& to,
                         const QString& date) {
    if (from.trimmed() == to.trimmed()) return amount;
    const double target = targetRate(connection, to.trimmed());
    // The rows of the history without a currency are the net-weight settings' own.
    if (from.trimmed().isEmpty()) return converted(amount, 1, target);
    const Recordset history = select(
        connection,
        sql(u"select  * from [匯率修改記錄] where 幣別='{}'  and 修改日期 <'{}'  order by 修改日期 desc ",
            from.trimmed(), date));
    return converted(amount, rateIn(history), target);
}

double convertCurrency(Session& session, const QString& from, double amount, const QString& to) {
    if (from.trimmed() == to.trimmed()) return amount;
    return shown(session,
                 [&](Connection& connection) { return convertCurrency(connection, from, amount, to); });
}

double convertCurrencyAt(Session& session, const QString& from, double amount, const QString& to,
                         const QString& date) {
    if (from.trimmed() == to.trimmed()) return amount;
    return shown(session, [&](Connection& connection) {
        return convertCurrencyAt(connection, from, amount, to, date);
    });
}

} // namespace liaowu
