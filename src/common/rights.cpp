#include "common/rights.h"
#include "common/guard.h"
#include "data/recordset.h"
#include "data/schema/schema.h"

namespace liaowu {

using namespace Qt::StringLiterals;

bool isAdministratorMark(const QString& mark) {
    const QString text = mark.trimmed().toUpper();
    return text == u"1" || text == u"Y" || text == u"TRUE" || text == u"√";
}

namespace {

QString scopeOf(Connection& connection, const QString& userName) {
    Recordset rows = select(
        connection, sql(u"select 使用者業務明細.使用者,使用者業務明細.業務員代號 from   使用者業務明細  "
                        u"where  使用者業務明細.使用者 = '{}' ",
                        userName));
    if (rows.RecordCount() == 0) return {};
    QString scope = u" And ("_s;
    for (; !rows.EOF_(); rows.MoveNext())
        scope += sql(u"業務員代號='{}'", rows.text(u"業務員代號").trimmed()).text() + u" Or "_s;
    if (scope.endsWith(u"Or ")) scope.chop(3);
    return scope + u") "_s;
}

} // namespace

void loadUserProfile(Session& session) {
    session.salesScope.clear();
    session.isAdministrator = false;
    guarded(session, u"錯誤"_s, [&] {
        Connection connection(session.pool, session.connectionString);
        const Recordset user =
            select(connection, sql(u"select 使用者, 管理者, 業務員代號, 業務員名稱 from [使用者資料]  "
                                   u"where 使用者資料.使用者 = '{}' ",
                                   session.userName));
        if (user.RecordCount() > 0) {
            session.salesmanCode = user.text(u"業務員代號").trimmed();
            session.salesmanName = user.text(u"業務員名稱").trimmed();
            session.isAdministrator = isAdministratorMark(user.text(u"管理者"));
        }
        if (!session.isAdministrator) session.salesScope = scopeOf(connection, session.userName);
        const Recordset company = select(connection, sql(u"select 公式1 from 公司基本資料 "));
        session.formula1 = company.RecordCount() > 0 ? company.text(u"公式1") : QString();
        // A newer file works as far as it is the same; the user should know why something may not.
        if (const int stored = storedVersion(connection); stored > schemaVersion())
            session.databaseNotice =
                u"資料庫的版本 %1 比程式的版本 %2 新,請更新程式"_s.arg(stored).arg(schemaVersion());
    });
}

UserRights loadRights(Session& session, const QString& moduleKey) {
    static constexpr std::pair<const char16_t*, bool UserRights::*> columns[] = {
        {u"查看", &UserRights::查看}, {u"修改", &UserRights::修改},  {u"新增", &UserRights::新增},
        {u"打印", &UserRights::打印}, {u"刪除", &UserRights::刪除},  {u"審單", &UserRights::審單},
        {u"核准", &UserRights::核准}, {u"審核", &UserRights::審核},  {u"驗收", &UserRights::驗收},
        {u"金額", &UserRights::金額}, {u"批審", &UserRights::批審},  {u"批轉", &UserRights::批轉},
        {u"批核", &UserRights::批核}, {u"excel", &UserRights::Excel}};
    UserRights rights;
    if (session.isAdministrator) {
        for (const auto& [column, right] : columns)
            rights.*right = true;
        return rights;
    }
    Busy busy(session.messages);
    try {
        Connection connection(session.pool, session.connectionString);
        const Recordset row = select(
            connection,
            sql(u"select 使用者資料.使用者,使用者明細.打印,使用者明細.刪除,使用者明細.金額,使用者明細.查看,  "
                u"     "
                u"使用者明細.修改,使用者明細.新增,使用者明細.審核,使用者明細.審單,       "
                u"使用者明細.驗收,使用者明細.核准,"
                u"使用者明細.批審,使用者明細.批轉,使用者明細.批核,使用者明細.excel from [使用者資料] Left "
                u"Join 使用者明細 "
                u"On 使用者資料.使用者=使用者明細.使用者 where 使用者資料.使用者 = '{}'   And "
                u"使用者明細.模塊 = '{}' ",
                session.userName, moduleKey));
        if (row.RecordCount() > 0)
            for (const auto& [column, right] : columns)
                rights.*right = row.text(column).trimmed() == u"√";
    } catch (const DatabaseError&) {
        // No rights, no message: the screen's own refusal tells the user, and the profile load told of the database.
        return {};
    }
    return rights;
}

QString scopeOn(const Session& session, const QString& table) {
    QString scope = session.salesScope;
    return scope.replace(u"業務員代號="_s, table + u".業務員代號="_s);
}

} // namespace liaowu
