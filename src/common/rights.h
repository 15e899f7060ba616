#pragma once
#include "common/session.h"

namespace liaowu {

/// What a user may do in one module; all false until loaded.
struct UserRights {
    bool 查看 = false, 修改 = false, 新增 = false, 打印 = false, 刪除 = false, 審單 = false, 核准 = false,
         審核 = false, 驗收 = false, 金額 = false, 批審 = false, 批轉 = false, 批核 = false, Excel = false;
};

/// Loads the user's row of 使用者資料 (salesperson, administrator mark), the scope of 使用者業務明細 and 公式1 of
/// 公司基本資料 into the session. A failure is shown under "錯誤" and leaves the fields empty.
void loadUserProfile(Session& session);

/// The user's rights in a module, from 使用者明細; an administrator has all, without a query. A failure gives none, with
/// no message: the screen then refuses to open.
UserRights loadRights(Session& session, const QString& moduleKey);

/// Whether a value of 使用者資料.管理者 makes an administrator: "1", "Y", "True" or "√", in any case, trimmed.
bool isAdministratorMark(const QString& mark);

/// The salesperson scope on a qualified column, for statements that join two tables which both have it.
QString scopeOn(const Session& session, const QString& table);

/// What stands in the place of money for a user without the 金額 right.
inline const QString MaskedMoney = QStringLiteral("******");

/// Texts of refused rights; the word differs from place to place.
inline const QString RefusedTitle = QStringLiteral("提示");
inline const QString RefusedText = QStringLiteral("您還沒有權限進行這項操作,請與管理員聯繫");
inline const QString RefusedTextApproval = QStringLiteral("您還沒有權限進行這項操作,請與管理員聯係");
inline const QString RefusedTextConsult = QStringLiteral("您還沒有權限進行這項操作,請咨詢管理員!");

} // namespace liaowu
