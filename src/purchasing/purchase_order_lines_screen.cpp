#include "common/guard.h"
#include "common/text_values.h"
#include "data/recordset.h"
#include "frame/pick_window.h"
#include "purchasing/order_picks.h"
#include "purchasing/order_queries.h"
#include "purchasing/purchase_order_screen.h"
#include <QLabel>
#include <QPushButton>

namespace liaowu {

using namespace Qt::StringLiterals;

void frm採購作業系統::connectGrid() {
    auto& events = fml明細->events;
    events.mayType = [this](int, const QString& title) { return mayType(title); };
    events.edited = [this](int row, const QString& title, const QString& before, bool batch) {
        return cellEdited(row, title, before, batch);
    };
    events.pick = [this](int row, const QString& title) { return runPick(row, title); };
    events.resolve = [this](int row, const QString& title, const QString& code) {
        return resolvePasted(row, title, code);
    };
    events.entered = [this](int row, const QString& title) { cellEntered(row, title); };
    events.list = [this](int row, const QString& title) { return listOf(row, title); };
    events.doubleClicked = [this](int row, const QString& title) {
        if (title != u"單價" || !rights.金額 || row > fml明細->lineCount()) return;
        if (fml明細->text(row, u"工單單號"_s).trimmed().isEmpty()) return;
        session.formulaMode = session.category;
        session.filterCode = fml明細->text(row, u"代號"_s).trimmed();
        session.filterName = fml明細->text(row, u"內部品名"_s).trimmed();
        process.runWindow(u"frm歷史單價明細_採購"_s, this);
    };
    connect(fml明細, &LineGrid::selectionMoved, this, &frm採購作業系統::showStock);
}

// ---- typing ----

bool frm採購作業系統::mayType(const QString& title) const {
    if (mode() != ModeAdd && mode() != ModeEdit) return false;
    if (title == u"單價" || title == u"大紙數" || title == u"單位" || title == u"壓線種類")
        return !isSettled();
    if (title == u"已交數") return session.isAdministrator;
    return true;
}

QStringList frm採購作業系統::listOf(int row, const QString& title) const {
    const QString own = fml明細->text(row, title);
    if (title == u"送清") return cellList(u"YN"_s, u"YN"_s, own, phraseCache);
    if (title == u"楞別") return cellList(u"EB-楞別"_s, u"EB-楞別"_s, own, phraseCache);
    if (isSettled()) return {};
    if (title == u"單位") return cellList(u"AB-單位"_s, u"資材"_s, own, phraseCache);
    if (title == u"壓線種類") return cellList(u"EL-壓線種類"_s, u"EL-壓線種類"_s, own, phraseCache);
    return {};
}

bool frm採購作業系統::cellEdited(int row, const QString& title, const QString& before, bool batch) {
    OrderLine line = rows.at(row);
    const Speak speak = batch ? Speak::Never : Speak::Later;
    if (title == u"大紙數") {
        line.數量 = numberText(val(format(val(line.數量), u"0.0000")));
        updateOpenQuantity(line);
        rows.put(row, line);
        fml明細->countRow(row);
        recalculate(row, speak);
    } else if (title == u"單價") {
        if (!rights.金額) {
            if (!batch) fml明細->speakLater([this] { refuse(RefusedTextConsult); });
            return false;
        }
        line.單價 = line.原單價 = numberText(val(format(val(line.單價), u"0.0000")));
        rows.put(row, line);
        fml明細->countRow(row);
        recalculate(row, speak);
    } else if (title == u"單位") {
        fml明細->countRow(row);
        recalculate(row, speak);
    } else if (title == u"已交數") {
        line.已入庫數 = numberText(val(line.已入庫數));
        line.未交數 = numberText(openQuantity(line));
        rows.put(row, line);
    } else if (title == u"走紙才") {
        line.寬剖 = numberText(val(line.寬剖));
        line.小紙數 = numberText(val(line.寬剖) * val(line.數量));
        rows.put(row, line);
    } else if (title == u"規格" || title == u"剖切尺寸") {
        line.規格 = line.規格.trimmed();
        line.剖切尺寸 = line.剖切尺寸.trimmed();
        const bool sure = updateSheetCount(line);
        rows.put(row, line);
        if (sure) {
            fml明細->unmarkCell(row, u"走紙才"_s);
            // What was mended need not be told any longer.
            if (notice().startsWith(u"第%1行剖切尺寸"_s.arg(row))) showNotice(QString());
        } else {
            fml明細->markCell(row, u"走紙才"_s, FaultColour, u"剖切尺寸沒有數字"_s);
            if (!batch && session.category != u"物料")
                session.messages.notice(u"第%1行剖切尺寸沒有數字,走紙才以 %2 計"_s.arg(row).arg(line.寬剖));
        }
    } else if (title == u"申購單號") {
        typedOver = before;
    } else if (title != u"代號" && title != u"工單單號") {
        fml明細->setText(row, title, fml明細->text(row, title).trimmed());
    }
    return true;
}

// ---- arithmetic ----

void frm採購作業系統::recalculate(int row, Speak speak) {
    OrderLine line = rows.at(row);
    const FormulaTable* table = nullptr;
    const bool read = guarded(session, u"取得原料資料錯誤"_s, [&] {
        Connection connection(session.pool, session.connectionString);
        table = &formulas.table(connection);
        if (const auto found = findItem(connection, session.category, line.原料代號.trimmed()))
            itemRow = *found;
    });
    // What the line costs is not known: its amount stays, and is marked.
    if (!read) return markFormula(row, false);
    bool evaluated = true;
    try {
        recalculateLine(line, {*table, evaluator, session.category, itemRow.單位, canSeePrice});
    } catch (const FormulaError&) {
        evaluated = false;
    }
    rows.put(row, line);
    markFormula(row, evaluated);
    if (evaluated) {
        showTotal();
    } else {
        tellFormulaFault(speak);
    }
}

void frm採購作業系統::showTotal() {
    putTotal(numberText(orderTotal(rows.all(), canSeePrice)));
}

void frm採購作業系統::putTotal(const QString& total) {
    entry(this, u"txt合計備用"_s)->setText(total);
    entry(this, u"txt合計"_s)->setText(canSeePrice ? total : MaskedMoney);
    label(this, u"lbl合計金額"_s)->setText(canSeePrice ? format(val(total), u"###,###,##0.00") : MaskedMoney);
}

void frm採購作業系統::priceLine(Connection& connection, OrderLine& line, const PriceFound& master) {
    putPrice(line,
             priceOfNewLine(connection, entry(this, u"txt廠商代號"_s)->text().trimmed(), line.原料代號,
                            master, combo(this, u"cbo幣別"_s)->currentText(),
                            entry(this, u"txt採購日期"_s)->text().trimmed()),
             canSeePrice);
}

void frm採購作業系統::refreshAllPrices() {
    for (int row = 1; row <= fml明細->lineCount(); ++row) {
        OrderLine line = rows.at(row);
        guarded(session, u"取得原料資料錯誤"_s, [&] {
            Connection connection(session.pool, session.connectionString);
            PriceFound master;
            if (const auto found = findItem(connection, session.category, line.原料代號)) {
                itemRow = *found;
                master = {val(found->進價), found->幣別.trimmed()};
            }
            priceLine(connection, line, master);
        });
        rows.put(row, line);
        recalculate(row, Speak::Now);
    }
    showTotal();
}

// ---- picks ----

void frm採購作業系統::handOverToPick() {
    session.formulaMode = session.category;
    session.pickVendor = entry(this, u"txt廠商代號"_s)->text().trimmed();
    session.amountRight = canSeePrice;
}

bool frm採購作業系統::runPick(int row, const QString& title) {
    if (mode() != ModeAdd && mode() != ModeEdit) return false;
    session.pickParam = fml明細->text(row, title).trimmed();
    handOverToPick();
    bool picked = false;
    if (title == u"申購單號") picked = pickRequisitionLines(row);
    if (title == u"工單單號") picked = pickWorkOrder(row);
    if (title == u"代號") picked = pickItem(row);
    typedOver.reset();
    if (picked) {
        markModified(true);
        showStock();
    }
    return picked;
}

bool frm採購作業系統::pickRequisitionLines(int row) {
    const auto pickedRows = pickRows(process, requisitionLinePick(session.category), this);
    if (pickedRows.empty() || pickedRows.front().value(0).trimmed().isEmpty()) return false;
    session.requisitionPickRows = pickedRows;
    // The first row takes the place of the row that was being typed in, when it holds nothing else yet.
    int at = row;
    OrderLine here = rows.at(row);
    here.請購單號.clear();
    if (!isBlank(here)) {
        at = fml明細->lineCount() + 1;
        // The row keeps the requisition it came from: what was typed over it was a search.
        if (typedOver) fml明細->setText(row, u"申購單號"_s, *typedOver);
    }
    for (const QStringList& picked : pickedRows) {
        OrderLine line = lineOfRequisitionPick(picked, session.category);
        guarded(session, u"取得原料資料錯誤"_s, [&] {
            Connection connection(session.pool, session.connectionString);
            if (session.category == u"紙板")
                line.廠商名稱 = vendorItemName(connection, line.原料代號, session.pickVendor);
            priceLine(connection, line, {val(picked.value(6)), picked.value(7).trimmed()});
        });
        rows.put(at, line);
        fml明細->countRow(at);
        recalculate(at, Speak::Now);
        at = fml明細->lineCount() + 1;
    }
    fml明細->select(at - 1, u"代號"_s);
    return true;
}

bool frm採購作業系統::pickWorkOrder(int row) {
    if (!pickRow(process, workOrderPick(), this)) return false;
    takeWorkOrder(row, session.pickResult, Speak::Now);
    return true;
}

void frm採購作業系統::takeWorkOrder(int row, const QStringList& picked, Speak speak) {
    OrderLine line = lineOfWorkOrderPick(picked, rows.at(row));
    if (!canSeePrice) line.單價 = MaskedMoney;
    if (session.category == u"紙板")
        guarded(session, u"取得輔助資料錯誤"_s, [&] {
            Connection connection(session.pool, session.connectionString);
            line.廠商名稱 = vendorItemName(connection, line.原料代號, session.pickVendor);
        });
    rows.put(row, line);
    fml明細->countRow(row);
    recalculate(row, speak);
}

bool frm採購作業系統::pickItem(int row) {
    if (!pickRow(process, orderItemPick(), this)) return false;
    takeItem(row, session.pickResult, Speak::Now);
    return true;
}

void frm採購作業系統::takeItem(int row, const QStringList& picked, Speak speak) {
    OrderLine line = rows.at(row);
    putItemPick(line, picked, session.category);
    guarded(session, u"取得原料資料錯誤"_s, [&] {
        Connection connection(session.pool, session.connectionString);
        if (session.category == u"紙板")
            line.廠商名稱 = vendorItemName(connection, line.原料代號, session.pickVendor);
        priceLine(connection, line, {val(picked.value(5)), picked.value(6).trimmed()});
    });
    rows.put(row, line);
    fml明細->countRow(row);
    recalculate(row, speak);
}

bool frm採購作業系統::resolvePasted(int row, const QString& title, const QString& code) {
    const PickSpec spec = title == u"代號"       ? orderItemPick()
                          : title == u"工單單號" ? workOrderPick()
                                                 : requisitionLinePick(session.category);
    handOverToPick();
    std::optional<QStringList> offered;
    guarded(session, u"取得原料資料錯誤"_s, [&] {
        Connection connection(session.pool, session.connectionString);
        offered = exactPick(session, connection, spec, code);
    });
    if (!offered) return false;
    if (title == u"代號") {
        takeItem(row, *offered, Speak::Never);
    } else if (title == u"工單單號") {
        takeWorkOrder(row, *offered, Speak::Never);
    } else {
        // A number stands for several items: which of them is told by the code beside it.
        fml明細->setText(row, title, offered->value(0).trimmed());
    }
    return true;
}

// ---- what follows the cursor ----

void frm採購作業系統::cellEntered(int row, const QString& title) {
    if (fml明細->hasFocus()) notesPanel->hide();
    button(this, u"scmd輔助"_s)->setEnabled(title == u"代號" || title == u"申購單號" || title == u"工單單號");
    label(this, u"pic提示"_s)->setVisible(title == u"單價");
    // The formula's text holds the price.
    QString formula = title == u"小計" ? fml明細->text(row, u"計價公式"_s) : QString();
    if (!formula.isEmpty() && !canSeePrice) formula = u"計價公式: "_s + MaskedMoney;
    setStatus(6, formula);
}

void frm採購作業系統::showStock() {
    if (!isActivated()) return;
    const QString code = fml明細->text(fml明細->currentRow(), u"代號"_s).trimmed();
    if (code == shownItem && !code.isEmpty()) return;
    shownItem = code;
    findChild<QWidget*>(u"pic產品視窗"_s)->setVisible(!code.isEmpty());
    if (code.isEmpty()) return;
    StockFigures figures;
    guarded(session, u"取得庫存資料錯誤"_s, [&] {
        Connection connection(session.pool, session.connectionString);
        figures = stockFigures(session, connection, session.category, code);
    });
    const auto number = [](double value) { return formatAmount(numberText(value)); };
    const QString unit = figures.unit.isEmpty() ? QString() : u' ' + figures.unit;
    label(this, u"lbl品名"_s)
        ->setText(fontMetrics().elidedText(fml明細->text(fml明細->currentRow(), u"內部品名"_s),
                                           Qt::ElideRight, 150));
    label(this, u"lbl實際庫存"_s)->setText(figures.known ? number(figures.actual) + unit : u"無"_s);
    label(this, u"lbl安全庫存"_s)
        ->setText(figures.safety.isEmpty() ? u"未設置"_s : number(val(figures.safety)));
    label(this, u"lbl在單量"_s)->setText(number(figures.ordered));
    label(this, u"LBL在產量"_s)->setText(number(figures.issuing));
    if (figures.formulaFailed) session.messages.warn(u"提示"_s, u"公式設置有問題，可用庫存已設為0"_s);
    label(this, u"Lbl可用庫存"_s)->setText(figures.available > 0 ? number(figures.available) : u"無"_s);
}

} // namespace liaowu
