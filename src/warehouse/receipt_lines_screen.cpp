#include "common/clock.h"
#include "common/guard.h"
#include "common/text_values.h"
#include "frame/item_picks.h"
#include "frame/pick_window.h"
#include "warehouse/month_guard.h"
#include "warehouse/receipt_pricing.h"
#include "warehouse/receipt_queries.h"
#include "warehouse/receipt_rules.h"
#include "warehouse/receipt_screen.h"
#include <QLabel>
#include <QPushButton>

namespace liaowu {

using namespace Qt::StringLiterals;

void frm原料入庫作業::connectGrid() {
    auto& events = fml明細->events;
    events.mayType = [this](int, const QString& title) { return mayType(title); };
    events.edited = [this](int row, const QString& title, const QString& before, bool batch) {
        return cellEdited(row, title, before, batch);
    };
    events.pick = [this](int row, const QString& title) { return runPick(row, title); };
    events.resolve = [this](int row, const QString& title, const QString& code) {
        return title == u"原料名稱" && resolveItem(row, code, Speak::Never);
    };
    events.entered = [this](int row, const QString& title) { cellEntered(row, title); };
    events.list = [this](int row, const QString& title) {
        return title == u"單位" ? cellList(u"AB-單位"_s, u"耗材類"_s, fml明細->text(row, title), phraseCache)
                                : QStringList();
    };
}

// ---- typing ----

bool frm原料入庫作業::mayType(const QString& title) const {
    if (mode() != ModeAdd && mode() != ModeEdit) return false;
    if (title == u"單價") return showAmounts;
    if (title == u"走紙才" || title == u"數量" || title == u"小紙數") return approvalMark() != u"Y";
    return true;
}

bool frm原料入庫作業::cellEdited(int row, const QString& title, const QString& before, bool batch) {
    ReceiptLine line = rows.at(row);
    const auto quantity = [](const QString& text) { return format(val(text), u"0.0000"); };
    if (title == u"數量") {
        line.數量 = quantity(signedQuantity(line.數量, kind()));
    } else if (title == u"備品") {
        line.備品 = quantity(signedQuantity(line.備品, kind()));
    } else if (title == u"單價") {
        line.單價 = line.原單價 = quantity(line.單價);
    } else if (title == u"走紙才") {
        updateStockQuantity(line);
    } else if (title == u"小紙數") {
        line.入庫數量 = signedQuantity(line.入庫數量, kind());
    }
    rows.put(row, line);
    if (title == u"數量" || title == u"單價" || title == u"單位") {
        fml明細->countRow(row);
        recalculateRows(row, row, batch ? Speak::Never : Speak::Later,
                        title == u"數量" ? StockQuantity::Anew : StockQuantity::Kept);
    } else if ((title == u"採購單號" || title == u"原料名稱") && !batch &&
               !fml明細->text(row, title).trimmed().isEmpty()) {
        typedOver = before;
    }
    return true;
}

bool frm原料入庫作業::isFrozen() {
    if (mode() == ModeAdd) return false;
    bool closed = true;
    guarded(session, u"錯誤"_s, [&] {
        closed = isMonthClosed(session, entry(this, u"txt入庫日期"_s)->text(), session.category);
    });
    return closed;
}

void frm原料入庫作業::deleteLine() {
    if (isFrozen()) return;
    DocumentScreen::deleteLine();
    showTotal();
    showFigures();
}

// ---- arithmetic ----

void frm原料入庫作業::recalculateRows(int from, int to, Speak speak, StockQuantity quantity) {
    bool faulty = false;
    guarded(session, u"取得原料資料錯誤"_s, [&] {
        Connection connection(session.pool, session.connectionString);
        const FormulaTable& table = formulas.table(connection);
        std::vector<double> weights;
        if (session.category == u"紙板")
            weights = vendorWeights(connection, entry(this, u"txt廠商代號"_s)->text().trimmed());
        for (int row = from; row <= to; ++row) {
            ReceiptLine line = rows.at(row);
            if (quantity == StockQuantity::Anew || val(line.走紙才) == 0 || val(line.入庫數量) == 0)
                settleStockQuantity(line);
            std::optional<ReceiptItem> item;
            if (session.category != u"物料")
                item = findReceiptItem(connection, session.category, line.原料代號.trimmed());
            bool evaluated = true;
            try {
                recalculateLine(line, {table, evaluator, session.category, item ? item->stockUnit : QString(),
                                       weights, showAmounts});
            } catch (const FormulaError&) {
                evaluated = false;
                faulty = true;
            }
            rows.put(row, line);
            markFormula(row, evaluated);
        }
    });
    showTotal();
    if (faulty) tellFormulaFault(speak);
}

void frm原料入庫作業::showTotal() {
    putTotal(receiptTotal(rows.all(), showAmounts));
}

void frm原料入庫作業::putTotal(double total) {
    const QString text = format(total, u"0.00");
    entry(this, u"txt合計備用"_s)->setText(text);
    entry(this, u"txt合計"_s)->showText(showAmounts ? text : MaskedMoney);
}

// ---- picks ----

bool frm原料入庫作業::openOrderPick(const QString& filter) {
    session.pickParam = filter;
    session.formulaMode = session.category;
    session.pickVendor = entry(this, u"txt廠商代號"_s)->text().trimmed();
    session.pickMode = kind();
    session.amountRight = showAmounts;
    if (isReturnKind(kind()))
        return pickRow(process, receivedOrderLinePick(monthsAgo(session, 3), today8(session)), this);
    return pickRow(process, openOrderLinePick(), this);
}

void frm原料入庫作業::takeCurrency(const QString& currency, const QString& order) {
    auto* shown = combo(this, u"cbo幣別"_s);
    if (currency.isEmpty() || currency == shown->currentText().trimmed()) return;
    if (fml明細->lineCount() == 0) {
        shown->showText(currency);
    } else {
        session.messages.notice(u"採購單 %1 的幣別是%2,與本單不同"_s.arg(order, currency));
    }
}

void frm原料入庫作業::fillFromOrder() {
    if (mode() != ModeAdd && mode() != ModeEdit) return;
    auto* field = entry(this, u"txt採購單號"_s);
    if (!openOrderPick(field->text().trimmed())) return;
    const QString order = session.picked(0);
    ReceiptLines lines;
    QString currency;
    const bool read = guarded(session, u"取得採購單資料錯誤"_s, [&] {
        Connection connection(session.pool, session.connectionString);
        lines = linesOfOrder(connection, order, session.pickVendor, session.category, kind(), showAmounts);
        currency = currencyOfOrder(connection, order);
    });
    if (!read) return;
    discardTyping();
    field->showText(order);
    takeCurrency(currency, order);
    rows.show(lines);
    recalculateRows(1, fml明細->lineCount(), Speak::Now);
    markModified(true);
    fml明細->setFocus(Qt::OtherFocusReason);
    fml明細->select(1, u"數量"_s);
}

bool frm原料入庫作業::runPick(int row, const QString& title) {
    if ((mode() != ModeAdd && mode() != ModeEdit) || (title != u"採購單號" && title != u"原料名稱"))
        return false;
    const auto before = std::exchange(typedOver, {});
    const bool picked = !isFrozen() && (title == u"採購單號" ? pickOrderLine(row) : pickItem(row));
    if (picked) {
        markModified(true);
    } else if (before) {
        putBack(row, title, *before);
    }
    return picked;
}

void frm原料入庫作業::putBack(int row, const QString& title, const QString& before) {
    // The name of an item may be written anew; all else that was typed was only a search.
    if (title == u"原料名稱" && !rows.at(row).原料代號.trimmed().isEmpty()) return;
    fml明細->setText(row, title, before);
    if (row == fml明細->lineCount() && !fml明細->rowFilled(row)) fml明細->setLineCount(row - 1);
}

bool frm原料入庫作業::pickOrderLine(int row) {
    if (!openOrderPick(fml明細->text(row, u"採購單號"_s).trimmed())) return false;
    // A row that is only now being typed does not make the grid filled.
    if (fml明細->lineCount() == 1 && row == 1 && rows.at(1).原料代號.isEmpty()) fml明細->setLineCount(0);
    takeCurrency(session.picked(10), session.picked(0));
    ReceiptLine line = rows.at(row);
    putOrderPick(line, session.pickResult, kind(), showAmounts);
    rows.put(row, line);
    fml明細->countRow(row);
    recalculateRows(row, row, Speak::Now);
    return true;
}

bool frm原料入庫作業::resolveItem(int row, const QString& code, Speak speak) {
    std::optional<ReceiptItem> item;
    guarded(session, u"取得原料資料錯誤"_s, [&] {
        Connection connection(session.pool, session.connectionString);
        item = findReceiptItem(connection, session.category, code);
    });
    if (!item) return false;
    ReceiptLine line = rows.at(row);
    putItem(line, *item);
    rows.put(row, line);
    fml明細->countRow(row);
    recalculateRows(row, row, speak);
    return true;
}

bool frm原料入庫作業::pickItem(int row) {
    const QString text = fml明細->text(row, u"原料名稱"_s).trimmed();
    if (!text.isEmpty() && resolveItem(row, text, Speak::Now)) return true;
    session.pickParam = text;
    session.formulaMode = session.category;
    session.amountRight = showAmounts;
    return pickRow(process, itemPick(), this) && resolveItem(row, session.picked(0), Speak::Now);
}

// ---- what follows the cursor ----

void frm原料入庫作業::cellEntered(int row, const QString& title) {
    button(this, u"scmd輔助"_s)->setEnabled(title == u"採購單號" || title == u"原料名稱");
    const LineColumn& column = document.lines[static_cast<size_t>(fml明細->column(title))];
    setStatus(6, column.money && !showAmounts ? MaskedMoney : fml明細->text(row, title));
    showFigures();
}

void frm原料入庫作業::showFigures() {
    const QString title = fml明細->currentTitle();
    const ReceiptLine line = rows.at(fml明細->currentRow());
    std::optional<OrderedQuantity> ordered;
    std::optional<ReceiptItem> item;
    if (isActivated() && !line.原料代號.trimmed().isEmpty())
        guarded(session, u"取得庫存資料錯誤"_s, [&] {
            Connection connection(session.pool, session.connectionString);
            if (title == u"數量" || title == u"小紙數") ordered = orderedQuantity(connection, line);
            item = findReceiptItem(connection, session.category, line.原料代號.trimmed());
        });
    control(this, u"pic數量"_s)->setVisible(ordered.has_value());
    if (ordered) {
        label(this, u"lbl應入數"_s)->setText(formatAmount(numberText(ordered->ordered)));
        label(this, u"lbl未入數"_s)->setText(formatAmount(numberText(ordered->open)));
    }
    control(this, u"pic庫存"_s)->setVisible(item.has_value());
    label(this, u"lbl庫存"_s)->setText(item ? formatAmount(item->庫存) + u' ' + item->stockUnit : QString());
}

} // namespace liaowu
