#include "purchasing/price_history_window.h"
#include "common/guard.h"
#include "data/recordset.h"
#include "frame/browse_grid.h"
#include "frame/process.h"
#include "purchasing/price_history.h"
#include <QDialog>
#include <QLabel>
#include <QVBoxLayout>

namespace liaowu {

using namespace Qt::StringLiterals;

void registerPriceHistory(Process& process) {
    process.registerWindow(u"frm歷史單價明細_採購"_s, [](Process& on, QWidget* owner) {
        QDialog window(owner);
        window.setObjectName(u"frm歷史單價明細_採購"_s);
        window.setWindowTitle(u"歷史單價明細"_s);
        auto* column = new QVBoxLayout(&window);
        auto* item = new QLabel(on.session.filterName, &window);
        item->setObjectName(u"lbl原料名稱"_s);
        item->setProperty("valueLabel", true);
        column->addWidget(item);
        auto* grid = new BrowseGrid(u"MSHFlexGrid1"_s, on.session, &window);
        column->addWidget(grid, 1);
        guarded(on.session, u"顯示資料錯誤"_s, [&] {
            Connection connection(on.session.pool, on.session.connectionString);
            grid->show(
                select(connection, priceHistoryStatement(on.session.formulaMode, on.session.filterCode)), {});
        });
        grid->setFocus();
        window.resize(520, 320);
        on.desktop.runModal(window);
    });
}

} // namespace liaowu
