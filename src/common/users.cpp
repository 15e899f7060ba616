#include "common/users.h"
#include "common/rights.h"
#include "data/recordset.h"
#include <QSet>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

/// What a user may do over all modules, from the marks in 使用者明細.
struct Granted {
    QSet<QString> rights;
    QSet<QString> modules;
};

QString roleOf(const Granted& granted, bool scoped) {
    if (granted.modules.isEmpty()) return u"沒有權限"_s;
    QStringList words;
    const auto any = [&](const QString& part) {
        for (const QString& module : granted.modules)
            if (module.contains(part)) return true;
        return false;
    };
    if (any(u"採購"_s)) words << u"採購"_s;
    if (any(u"請購"_s)) words << u"請購"_s;
    if (any(u"入庫"_s) || any(u"領料"_s)) words << u"倉儲"_s;
    if (granted.rights.contains(u"審單"_s)) words << u"審單"_s;
    if (granted.rights.contains(u"批審"_s)) words << u"批審"_s;
    words << (granted.rights.contains(u"金額"_s) ? u"看得到金額"_s : u"看不到金額"_s);
    if (scoped) words << u"限所屬業務員"_s;
    return words.join(u"、"_s);
}

} // namespace

std::vector<UserRow> usersOf(Connection& connection) {
    QHash<QString, Granted> granted;
    Recordset marks = select(connection, sql(u"select 使用者,模塊,查看,審單,批審,金額 from 使用者明細"));
    for (; !marks.EOF_(); marks.MoveNext()) {
        if (marks.text(u"查看").trimmed() != u"√") continue;
        Granted& user = granted[marks.text(u"使用者").trimmed()];
        user.modules.insert(marks.text(u"模塊"));
        for (const auto& right : {u"審單"_s, u"批審"_s, u"金額"_s})
            if (marks.text(right).trimmed() == u"√") user.rights.insert(right);
    }
    QSet<QString> scoped;
    Recordset scopes = select(connection, sql(u"select distinct 使用者 from 使用者業務明細"));
    for (; !scopes.EOF_(); scopes.MoveNext())
        scoped.insert(scopes.text(u"使用者").trimmed());

    std::vector<UserRow> users;
    Recordset rows =
        select(connection, sql(u"select 使用者,管理者,業務員名稱 from 使用者資料 order by 使用者"));
    for (; !rows.EOF_(); rows.MoveNext()) {
        const QString name = rows.text(u"使用者").trimmed();
        const QString role = isAdministratorMark(rows.text(u"管理者"))
                                 ? u"管理者"_s
                                 : roleOf(granted.value(name), scoped.contains(name));
        users.push_back({name, rows.text(u"業務員名稱").trimmed(), role});
    }
    return users;
}

} // namespace liaowu
