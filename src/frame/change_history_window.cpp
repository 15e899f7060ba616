#include "frame/change_history_window.h"
#include "common/change_history.h"
#include "common/guard.h"
#include "data/recordset.h"
#include "frame/browse_grid.h"
#include "frame/entry_view.h"
#include "frame/process.h"
#include <QDialog>
#include <QLabel>
#include <QVBoxLayout>

namespace liaowu {

using namespace Qt::StringLiterals;

void showChangeHistory(Process& process, QWidget* owner, const ChangeHistoryOf& of) {
    QDialog panel(owner);
    panel.setObjectName(u"frm系統修改明細"_s);
    panel.setWindowTitle(u"修改記錄"_s);
    auto* column = new QVBoxLayout(&panel);
    auto* grid = new BrowseGrid(u"MSHFlexGrid1"_s, process.session, &panel);
    column->addWidget(grid, 1);
    auto* hint = new QLabel(u"雙擊關閉窗口"_s, &panel);
    hint->setProperty("caption", true);
    column->addWidget(hint);
    QObject::connect(grid, &BrowseGrid::accepted, &panel, [&panel] { panel.accept(); });
    QObject::connect(grid, &BrowseGrid::rightClicked, &panel, [&panel] { panel.accept(); });
    guarded(process.session, u"顯示資料錯誤"_s, [&] {
        Connection connection(process.session.pool, process.session.connectionString);
        grid->show(select(connection, changeHistoryStatement(of.fstr_TableName, of.fstr_KeyName,
                                                             of.fstr_KeyValue, of.fbyt_Style)),
                   {{u"項目"_s, 90}, {u"項目值"_s, 210}});
    });
    panel.resize(340, 190);
    if (owner) {
        // Beside the lower right corner of the screen that opened it.
        const QRect area = owner->window()->geometry();
        const int right = area.left() + std::min(pixelsOfTwips(11880), area.width());
        panel.move(right - panel.width(), area.bottom() - pixelsOfTwips(400) - panel.height());
    }
    process.desktop.runModal(panel);
}

} // namespace liaowu
