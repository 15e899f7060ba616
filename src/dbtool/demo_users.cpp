#include "dbtool/demo_users.h"
#include "dbtool/bulk_table.h"
#include "dbtool/demo_rows.h"

namespace liaowu::demo {

using namespace Qt::StringLiterals;

const std::vector<User>& users() {
    static const QString edit = u"查看 修改 新增 打印 刪除 excel"_s;
    static const std::vector<User> all{
        {u"admin"_s, 4, true, {}, {}, u"管理者,擁有全部權限"_s},
        {u"採購甲"_s, 0, false, edit + u" 金額"_s, {}, u"採購,看得到金額"_s},
        {u"採購乙"_s, 1, false, edit, {}, u"採購,看不到金額"_s},
        {u"採購丙"_s, 2, false, edit + u" 金額"_s, u"S03 S04"_s,
         u"採購,只看得到業務員S03、S04的廠商與採購單"_s},
        {u"主管甲"_s,
         4,
         false,
         edit + u" 金額 審單 批轉 審核 批核 批審 驗收 核准"_s,
         {},
         u"主管,可審單、反審及批審"_s},
        {u"倉管甲"_s, 5, false, edit + u" 驗收"_s, {}, u"倉管,入庫、領料、退貨,看不到金額"_s},
        {u"訪客"_s, -1, false, {}, {}, u"沒有任何權限"_s}};
    return all;
}

void writeUsers(Connection& connection, const Plant& plant) {
    static const QString rightNames =
        u"打印 刪除 金額 查看 修改 新增 審核 審單 驗收 核准 批審 批轉 批核 excel"_s;
    static const QStringList modules{
        u"frm紙板管理系統"_s, u"frm物料管理系統"_s, u"frm紙品管理系統"_s, u"frm採購明細表"_s,
        u"frm浪紙設定資料"_s, u"frm資材請購作業"_s, u"frm物料領料作業"_s, u"frm紙品領料作業"_s,
        u"frm紙板領料作業"_s, u"frm物料入庫作業"_s, u"frm紙品入庫作業"_s, u"frm紙板入庫作業"_s,
        u"frm凸版入庫作業"_s, u"frm物料採購作業"_s, u"frm紙板採購作業"_s, u"frm紙板退貨作業"_s,
        u"frm採購未到明細"_s, u"frm資材計價公式"_s, u"frm整批審核"_s};

    BulkTable staff(connection, u"業務資料"_s, u"業務員代號 業務員名稱 部門 離職日期"_s);
    for (const Person& person : plant.people)
        staff.add({person.code, person.name, person.department, person.leftOn});
    staff.flush();
    BulkTable groups(connection, u"部門資料"_s, u"組名 部門"_s);
    groups.add({u"倉儲部", u"倉儲部"});
    groups.add({u"倉儲部", u"資材部"});
    groups.flush();

    BulkTable logins(connection, u"使用者資料"_s, u"使用者 管理者 業務員代號 業務員名稱"_s);
    BulkTable scopes(connection, u"使用者業務明細"_s, u"使用者 業務員代號"_s);
    BulkTable rights(connection, u"使用者明細"_s, u"使用者 模塊 "_s + rightNames);
    for (const User& user : users()) {
        const Person person = user.person < 0 ? Person{} : plant.person(user.person);
        logins.add({user.login, user.administrator ? u"1" : u"0", person.code, person.name});
        for (const QString& salesman : user.scope.split(u' ', Qt::SkipEmptyParts))
            scopes.add({user.login, salesman});
        const QStringList granted = user.rights.split(u' ', Qt::SkipEmptyParts);
        for (const QString& module : modules) {
            std::vector<Cell> cells{user.login, module};
            for (const QString& right : rightNames.split(u' '))
                cells.emplace_back(user.administrator || granted.contains(right) ? u"√" : u"");
            rights.add(cells);
        }
    }
    logins.flush();
    scopes.flush();
    rights.flush();
}

} // namespace liaowu::demo
