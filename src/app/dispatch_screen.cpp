#include "app/dispatch.h"
#include "app/launch_string.h"
#include "approval/approval_dialog.h"
#include "common/rights.h"
#include "formula/formula_screen.h"
#include "frame/base_screen.h"
#include "frame/process.h"
#include "purchasing/price_history_window.h"
#include "purchasing/purchase_order_screen.h"
#include "purchasing/requisition_screen.h"
#include "warehouse/receipt_screen.h"

namespace liaowu {

using namespace Qt::StringLiterals;

void registerEverything(Process& process) {
    registerApproval(process);
    registerFormulaScreen(process);
    registerPurchaseOrderScreen(process);
    registerPriceHistory(process);
    registerRequisitionScreen(process);
    registerReceiptScreen(process);
}

namespace {

QString colour(int red, int green, int blue) {
    return QString::number(red + 256 * green + 65536 * blue);
}

} // namespace

ScreenFrame* dispatchScreen(Process& process) {
    Session& session = process.session;
    session.gridColours = {colour(0, 192, 192),   colour(253, 254, 239), colour(0, 0, 217),
                           colour(255, 255, 255), colour(62, 139, 255),  colour(255, 255, 255),
                           colour(255, 74, 74)};
    loadUserProfile(session);
    const QString function = session.functionName.trimmed();
    const LaunchTarget* target = launchTarget(function);
    if (!target) return nullptr;
    if (target->keepsFunction) session.screenFunction = function;
    session.category = target->category;
    session.formulaMode = target->formulaMode;
    if (!process.knowsScreen(target->screen)) {
        session.messages.inform(u"提示"_s, u"「%1」尚未提供!"_s.arg(function));
        return nullptr;
    }
    return process.openScreen(target->screen);
}

ScreenFrame* launch(Process& process, const QString& text) {
    Session& session = process.session;
    session.commandLine = text.trimmed();
    if (session.commandLine.size() < ShortestLaunch) {
        session.messages.stop(u"提示"_s, u"外部參數錯誤!"_s);
        return nullptr;
    }
    const LaunchValues values = parseLaunch(session.commandLine);
    session.connectionString = values.connection;
    session.functionName = values.function;
    session.userName = values.user;
    session.approvalParam = values.approval;
    session.otherParam = values.other;
    return dispatchScreen(process);
}

} // namespace liaowu
