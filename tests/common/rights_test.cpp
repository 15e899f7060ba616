#include "common/people.h"
#include "common/rights.h"
#include "common/users.h"
#include "plant_session.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

QString grantedOf(const UserRights& r) {
    const std::pair<const char16_t*, bool> all[] = {
        {u"查看", r.查看}, {u"修改", r.修改}, {u"新增", r.新增}, {u"打印", r.打印},  {u"刪除", r.刪除},
        {u"審單", r.審單}, {u"核准", r.核准}, {u"審核", r.審核}, {u"驗收", r.驗收},  {u"金額", r.金額},
        {u"批審", r.批審}, {u"批轉", r.批轉}, {u"批核", r.批核}, {u"Excel", r.Excel}};
    QStringList names;
    for (const auto& [name, granted] : all)
        if (granted) names << QString::fromUtf16(name);
    return names.join(u' ');
}

} // namespace

TEST(Rights, AMarkGrantsWhenItIsATick) {
    PlantSession plant;
    plant.run({u"insert into 使用者資料 (使用者) values ('甲'),('乙')",
               uR"(insert into 使用者明細 (使用者,模塊,查看,修改,新增,金額,審單,excel) values
                   ('甲','m1',' √ ','Y','√','','v',null))",
               uR"(insert into 使用者明細 (使用者,模塊,打印,刪除,審核,驗收,核准,批審,批轉,批核,excel) values
                   ('甲','m2','√','√','√','√','√','√','√','√','√'))",
               u"insert into 使用者明細 (使用者,模塊,查看) values ('丙','m1','√')"});
    const auto cases = casesOf<3>({u"甲|m1|查看 新增", u"甲|m2|打印 刪除 核准 審核 驗收 批審 批轉 批核 Excel",
                                   u"甲|m3|", u"乙|m1|", u"丙|m1|", u"|m1|", u"x' or '1'='1|m1|"});
    for (const auto& [user, module, granted] : cases) {
        plant.session.userName = user;
        EXPECT_EQ(grantedOf(loadRights(plant.session, module)), granted) << user << ' ' << module;
    }
    plant.session.userName = u"甲"_s;
    plant.pool.failAt(1);
    EXPECT_EQ(grantedOf(loadRights(plant.session, u"m1"_s)), u""_s) << "a failure grants nothing";
    EXPECT_TRUE(plant.messages.told.isEmpty()) << "and says nothing";
    plant.session.isAdministrator = true;
    plant.pool.failAt(1);
    EXPECT_EQ(grantedOf(loadRights(plant.session, u"m9"_s)).split(u' ').size(), 14)
        << "an administrator needs no row, nor the database";
}

TEST(Rights, TheProfileOfAUser) {
    // Rows of the user and of the scope; code, name, whether an administrator, scope.
    const auto cases = casesOf<3>(
        {u"||||no|", u"('u','0',' S1 ','王一 ')||S1|王一|no|", u"('u',null,'S1','王一')||S1|王一|no|",
         u"('u','','S1','王一')|('u','A')|S1|王一|no| And (業務員代號='A' ) ",
         u"('u','N','S1','王一')|('u','A '),('u','B')|S1|王一|no| And (業務員代號='A' Or 業務員代號='B' ) ",
         u"('u','N','S1','王一')|('u','A''B')|S1|王一|no| And (業務員代號='A''B' ) ",
         u"('u','N','S1','王一')|('v','A')|S1|王一|no|", u"('u','1','S1','王一')|('u','A')|S1|王一|yes|"});
    for (const auto& [row, scopeRows, profile] : cases) {
        PlantSession plant;
        plant.run({u"insert into 公司基本資料 (公司名稱,公式1) values ('x','實際庫存-在領量')"});
        Connection connection(plant.pool, plant.target);
        if (!row.isEmpty())
            connection.Execute(readyMadeSql(
                u"insert into 使用者資料 (使用者,管理者,業務員代號,業務員名稱) values "_s + row));
        if (!scopeRows.isEmpty())
            connection.Execute(
                readyMadeSql(u"insert into 使用者業務明細 (使用者,業務員代號) values "_s + scopeRows));
        plant.session.userName = u"u"_s;
        plant.session.salesmanName.clear();
        loadUserProfile(plant.session);
        const Session& user = plant.session;
        EXPECT_EQ(user.salesmanCode + u'|' + user.salesmanName +
                      (user.isAdministrator ? u"|yes|"_s : u"|no|"_s) + user.salesScope,
                  profile)
            << row << scopeRows;
        EXPECT_EQ(plant.session.formula1, u"實際庫存-在領量"_s) << row;
    }
    for (const auto& mark : {u"1"_s, u"Y"_s, u"y "_s, u"True"_s, u"TRUE"_s, u"√"_s})
        EXPECT_TRUE(isAdministratorMark(mark)) << mark;
    for (const auto& mark : {u""_s, u"0"_s, u"N"_s, u"False"_s, u"11"_s, u"是"_s})
        EXPECT_FALSE(isAdministratorMark(mark)) << mark;
}

TEST(Rights, AFailingProfileIsTold) {
    PlantSession plant;
    plant.session.connectionString = u"Provider=SQLite;Data Source=/nowhere/plant.db"_s;
    plant.session.salesScope = u"old"_s;
    plant.session.isAdministrator = true;
    loadUserProfile(plant.session);
    ASSERT_EQ(plant.messages.told.size(), 1);
    EXPECT_TRUE(plant.messages.told.first().startsWith(u"錯誤: "));
    EXPECT_FALSE(plant.session.isAdministrator);
    EXPECT_EQ(plant.session.salesScope, QString());
}

TEST(Rights, TheScopeOnAJoinedTable) {
    PlantSession plant;
    plant.session.salesScope = u" And (業務員代號='A' Or 業務員代號='B' ) "_s;
    EXPECT_EQ(scopeOn(plant.session, u"採購資料"_s),
              u" And (採購資料.業務員代號='A' Or 採購資料.業務員代號='B' ) "_s);
    plant.session.salesScope.clear();
    EXPECT_EQ(scopeOn(plant.session, u"採購資料"_s), QString());
}

TEST(Rights, RolesInWords) {
    PlantSession plant;
    plant.run({u"insert into 使用者資料 (使用者,管理者,業務員名稱) values "
               u"('a','1','甲'),('b','','乙'),('c','0','丙'),('d',null,'丁')",
               u"insert into 使用者明細 (使用者,模塊,查看,金額,審單,批審) values "
               u"('b','frm物料採購作業','√','√','',''),('b','frm紙板入庫作業','√','','√',''),"
               u"('c','frm資材請購作業','√','','','√'),('d','frm物料採購作業','','√','√','√')",
               u"insert into 使用者業務明細 (使用者,業務員代號) values ('c','S1')"});
    Connection connection(plant.pool, plant.target);
    QStringList rows;
    for (const UserRow& user : usersOf(connection))
        rows << user.userName + u'|' + user.salesmanName + u'|' + user.role;
    EXPECT_EQ(rows, QStringList({u"a|甲|管理者"_s, u"b|乙|採購、倉儲、審單、看得到金額"_s,
                                 u"c|丙|請購、批審、看不到金額、限所屬業務員"_s, u"d|丁|沒有權限"_s}));
}

TEST(People, ByExactCodeOrName) {
    PlantSession plant;
    plant.run(
        {uR"(insert into 業務資料 (業務員代號,業務員名稱) values ('S1','王一 '),('S2','O''Hara'),('王二','S3'))"});
    Connection connection(plant.pool, plant.target);
    for (const auto& [text, found] : casesOf<2>({u"S1|S1|王一", u"s1 |S1|王一", u"王一|S1|王一",
                                                 u"O'Hara|S2|O'Hara", u"王二|王二|S3", u"S|", u"%|", u"|"})) {
        const auto person = findPerson(connection, text);
        EXPECT_EQ(person ? person->first + u'|' + person->second : QString(), found) << text;
    }
}
