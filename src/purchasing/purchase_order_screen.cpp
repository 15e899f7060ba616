#include "purchasing/purchase_order_screen.h"
#include "common/clock.h"
#include "common/currency.h"
#include "common/document_numbers.h"
#include "common/guard.h"
#include "common/text_values.h"
#include "frame/lookups.h"
#include "frame/pick_window.h"
#include "purchasing/order_batch.h"
#include "purchasing/order_page_view.h"
#include "purchasing/order_picks.h"
#include "purchasing/order_queries.h"
#include "purchasing/order_rules.h"
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

ScreenInfo infoOf(const Session& session) {
    const bool materials = session.category == u"物料";
    return {.name = u"frm採購作業系統"_s,
            .title = materials ? u"物料採購作業"_s : u"紙板採購作業"_s,
            .moduleKey = materials ? u"frm物料採購作業"_s : u"frm紙板採購作業"_s,
            .table = u"採購資料"_s,
            .keyColumn = u"採購單號"_s,
            .keyField = u"txt採購單號"_s,
            .recordWord = u"採購單號"_s,
            .freshKeys = true,
            .tools = {u"add"_s, u"edit"_s, u"del"_s, u"search"_s, u"save"_s, u"|"_s, u"first"_s,
                      u"previous"_s, u"next"_s, u"last"_s, u"|"_s, u"審單"_s, u"整批審單"_s, u"print"_s,
                      u"|"_s, u"exit"_s}};
}

} // namespace

void registerPurchaseOrderScreen(Process& process) {
    process.registerScreen(u"frm採購作業系統"_s,
                           [](Process& on) -> ScreenFrame* { return new frm採購作業系統(on); });
}

frm採購作業系統::frm採購作業系統(Process& on)
    : DocumentScreen(on, infoOf(on.session), orderDocumentSpec(on.session.category)), rows(fml明細) {
    if (session.approvalParam == u"N") hideTool(u"審單"_s);
    buildFooter();
    buildPanels();
    connectGrid();
    bindLookup(u"txt廠商代號"_s, u"scmd廠商代號"_s, [this](bool fromButton) { lookUpVendor(fromButton); });
    bindPerson(u"txt業務員代號"_s, u"scmd業務員"_s, u"lbl業務員名稱"_s);
    bindLookup(u"txt申購單位"_s, u"sscmd申購單位"_s, [this](bool) { loadRequisition(); });
    // The code alone is not the vendor: what was typed over needs a look-up again.
    connect(entry(this, u"txt廠商代號"_s), &EntryField::typedInto, this,
            [this] { label(this, u"lbl廠商簡稱"_s)->clear(); });
    check(this, u"chk稅"_s)->setEnabled(false);
}

void frm採購作業系統::buildFooter() {
    buildOrderFooter(footer(), this);
    connect(combo(this, u"cbo幣別"_s), &QComboBox::currentTextChanged, this, [this](const QString& currency) {
        label(this, u"lbl合計"_s)->setText(currency.isEmpty() ? u"合計:"_s : u"合計 (%1):"_s.arg(currency));
    });
}

void frm採購作業系統::buildPanels() {
    notesPanel = buildNotesPanel(recordPage());
    qualityPanel = buildQualityPanel(recordPage());
    for (const auto& name : {u"scmd品質要求"_s, u"Label19"_s})
        connect(button(this, name), &QPushButton::clicked, this, [this] {
            placePanel(qualityPanel, recordPage());
            qualityPanel->setVisible(!qualityPanel->isVisible());
            if (qualityPanel->isVisible()) memo(this, u"txt品質要求"_s)->setFocus();
        });
    connect(memo(this, u"txt品質要求"_s), &QPlainTextEdit::textChanged, this, [this] {
        const bool filled = !memo(this, u"txt品質要求"_s)->toPlainText().isEmpty();
        button(this, u"scmd品質要求"_s)->setText(filled ? u"品質要求 ●"_s : u"品質要求"_s);
    });
    connect(button(this, u"LblClose經驗"_s), &QPushButton::clicked, this, [this] { notesPanel->hide(); });
    const QWidget* notes = memo(this, u"txt經驗傳承"_s);
    connect(qApp, &QApplication::focusChanged, this, [this, notes](QWidget* left, QWidget* entered) {
        if (entered && left == notes) notesPanel->hide();
    });
}

void frm採購作業系統::prepare() {
    canSeePrice = rights.金額;
    session.amountRight = canSeePrice;
    if (!rights.批審) hideTool(u"整批審單"_s);
    guarded(session, u"取得所有公式資料錯誤"_s, [this] {
        Connection connection(session.pool, session.connectionString);
        formulas.table(connection);
    });
    guarded(session, u"取得所有片語資料錯誤"_s, [this] { phraseCache = loadPhrases(session); });
    showColumnsOfCategory();
}

void frm採購作業系統::showColumnsOfCategory() {
    if (session.category != u"物料") return;
    fml明細->setColumnTwips(u"內部品名"_s, 2200);
    fml明細->setColumnTitle(u"內部品名"_s, u"原料名稱"_s);
}

SqlText frm採購作業系統::browseStatement() const {
    return orderBrowseStatement(session);
}

SearchSpec frm採購作業系統::searchSpec() const {
    return orderSearch(session, canSeePrice);
}

void frm採購作業系統::screenCommand(const QString& key) {
    if (key == u"審單") {
        approve();
    } else if (key == u"整批審單") {
        openBatch();
    }
}

BatchSpec frm採購作業系統::batchSpec() const {
    return orderBatch(session, canSeePrice);
}

// ---- states ----

void frm採購作業系統::clearRecordPage() {
    DocumentScreen::clearRecordPage();
    for (const auto& name : {u"lbl廠商簡稱"_s, u"lbl業務員名稱"_s})
        label(this, name)->clear();
    showScore({});
    check(this, u"chk稅"_s)->setChecked(false);
    showApproval(u"N"_s, {}, {});
    putTotal(QString());
    isApproved = false;
    loadedLines.clear();
    lastDocumentNumber.clear();
    loadedStamp.clear();
    notesPanel->hide();
    qualityPanel->hide();
    shownItem.clear();
    showStock();
}

void frm採購作業系統::fillNewRecord() {
    entry(this, u"txt採購日期"_s)->showText(today8(session));
    entry(this, u"txt業務員代號"_s)->showText(session.salesmanCode);
    label(this, u"lbl業務員名稱"_s)->setText(session.salesmanName);
    auto* category = combo(this, u"Cbo類別"_s);
    category->clear();
    category->addItem(session.category);
    auto* purpose = combo(this, u"cbo採購類別"_s);
    purpose->clear();
    purpose->addItems({u"庫存"_s, u"生產"_s});
    auto* currency = combo(this, u"cbo幣別"_s);
    currency->lock(!canSeePrice);
    if (canSeePrice) currency->addItems(currencies(session));
    auto* number = entry(this, u"txt採購單號"_s);
    number->setEnabled(false);
    if (session.approvalParam == u"N")
        showApproval(u"Y"_s, session.salesmanName, entry(this, u"txt採購日期"_s)->text(), false);
    showTotal();
    entry(this, u"txt廠商代號"_s)->setFocus(Qt::OtherFocusReason);
}

int frm採購作業系統::showRecord(const QString& key) {
    std::optional<OrderDocument> order;
    const bool read = guarded(session, u"顯示資料錯誤"_s, [&] {
        Connection connection(session.pool, session.connectionString);
        order = loadOrder(connection, key, canSeePrice);
    });
    if (!read || !order) return Failed;
    const OrderHeader& header = order->header;
    clearRecordPage();
    showFields(this, OrderControls, header);
    combo(this, u"Cbo類別"_s)->showText(header.類別);
    auto* currency = combo(this, u"cbo幣別"_s);
    currency->lock(!canSeePrice);
    if (canSeePrice && currency->count() <= 1) {
        currency->clear();
        currency->addItems(currencies(session));
    }
    currency->showText(header.幣別);
    auto* purpose = combo(this, u"cbo採購類別"_s);
    if (purpose->count() == 0) purpose->addItems({u"庫存"_s, u"生產"_s});
    purpose->showText(header.採購類別);
    if (order->vendor) {
        label(this, u"lbl廠商簡稱"_s)->setText(order->vendor->廠商簡稱);
        showScore(order->vendor->分數);
        memo(this, u"txt經驗傳承"_s)->setPlainText(order->vendor->經驗傳承);
    }
    putTotal(header.合計);
    isApproved = header.審單 == u"Y";
    showApproval(isApproved ? u"Y"_s : u"N"_s, header.審單人, header.審單日期, session.approvalParam != u"N");
    rows.show(order->lines);
    loadedLines = order->lines;
    lastDocumentNumber = header.採購單號;
    loadedStamp = stampOf(header);
    entry(this, u"txt速查單號"_s)->showText(QString());
    showStock();
    entry(this, u"txt廠商代號"_s)->setFocus(Qt::OtherFocusReason);
    return 0;
}

bool frm採購作業系統::quickFind(const QString& number) {
    return findInBrowse(number);
}

// ---- header look-ups ----

void frm採購作業系統::showScore(const QString& score) {
    label(this, u"Lbl分數"_s)->setText(score);
    label(this, u"lbl目前分數"_s)->setText(u"廠商目前分數:"_s + score);
}

void frm採購作業系統::takeVendor(const VendorRow& vendor) {
    entry(this, u"txt廠商代號"_s)->showText(vendor.廠商代號);
    label(this, u"lbl廠商簡稱"_s)->setText(vendor.廠商簡稱);
    combo(this, u"cbo幣別"_s)->showText(vendor.幣別);
    showScore(vendor.分數);
    entry(this, u"txt業務員代號"_s)->showText(vendor.業務員代號);
    label(this, u"lbl業務員名稱"_s)->setText(vendor.業務員名稱);
    check(this, u"chk稅"_s)->setChecked(val(vendor.發票稅率) > 0);
    memo(this, u"txt經驗傳承"_s)->setPlainText(vendor.經驗傳承);
    markModified(true);
    // What is known of the vendor comes up beside the new order, without taking the focus.
    if (mode() == ModeAdd && !vendor.經驗傳承.trimmed().isEmpty()) {
        placePanel(notesPanel, recordPage());
        notesPanel->show();
    }
    entry(this, u"txt採購日期"_s)->setFocus(Qt::OtherFocusReason);
}

void frm採購作業系統::lookUpVendor(bool fromButton) {
    auto* field = entry(this, u"txt廠商代號"_s);
    const QString text = field->text().trimmed();
    std::optional<VendorRow> vendor;
    const auto find = [&](const QString& code) {
        return guarded(session, u"依廠商代號取得廠商資料錯誤"_s, [&] {
            Connection connection(session.pool, session.connectionString);
            vendor = findVendor(session, connection, code);
        });
    };
    if (!fromButton && !find(text)) return;
    if (!vendor) {
        session.pickParam = text;
        session.formulaMode = session.category;
        if (!pickRow(process, vendorPick(), this) || !find(session.picked(0))) return;
    }
    if (vendor) takeVendor(*vendor);
}

void frm採購作業系統::loadRequisition() {
    if (combo(this, u"Cbo類別"_s)->currentText().isEmpty()) {
        session.messages.stop(u"錯誤"_s, u"資材類別不能為空,確認后重新輸入!"_s);
        return;
    }
    auto* field = entry(this, u"txt申購單位"_s);
    session.pickParam = field->text().trimmed();
    handOverToPick();
    if (!pickRow(process, requisitionPick(), this)) return;
    const QString number = session.picked(0);
    OrderLines incoming;
    const bool read = guarded(session, u"取得申購單資料錯誤"_s, [&] {
        Connection connection(session.pool, session.connectionString);
        incoming = requisitionLines(connection, number, session.category, canSeePrice);
        if (session.category == u"紙板")
            for (OrderLine& line : incoming)
                line.廠商名稱 = vendorItemName(connection, line.原料代號, session.pickVendor);
    });
    if (!read) return;
    discardTyping();
    field->showText(number);
    rows.show(incoming);
    markModified(true);
    // A price comes into the document's currency on whichever way the requisition was loaded.
    refreshAllPrices();
    fml明細->setFocus(Qt::OtherFocusReason);
    fml明細->select(1, u"大紙數"_s);
}

// ---- saving ----

OrderHeader frm採購作業系統::headerOnScreen() const {
    auto* self = const_cast<frm採購作業系統*>(this);
    OrderHeader header;
    takeFields(this, OrderControls, header);
    header.類別 = session.category;
    header.合計 = entry(self, u"txt合計備用"_s)->text();
    header.審單 = approvalMark();
    header.審單人 = approvalPerson();
    header.審單日期 = approvalDate();
    header.品質要求 = memo(self, u"txt品質要求"_s)->toPlainText();
    return header;
}

bool frm採購作業系統::checkHeader() {
    if (label(this, u"lbl廠商簡稱"_s)->text().isEmpty()) entry(this, u"txt廠商代號"_s)->showText(QString());
    if (label(this, u"lbl業務員名稱"_s)->text().isEmpty())
        entry(this, u"txt業務員代號"_s)->showText(QString());
    if (label(this, u"lbl廠商簡稱"_s)->text().trimmed().isEmpty())
        return showFinding({u"錯誤"_s, u"「廠商」欄位不可為空白!"_s, u"txt廠商代號"_s});
    auto* date = entry(this, u"txt採購日期"_s);
    if (date->text().isEmpty()) date->showText(today8(session));
    if (validDate8(date->text()) != 0)
        return showFinding({u"錯誤"_s, u"「採購日期」日期輸入錯誤!"_s, u"txt採購日期"_s});
    if (const auto finding = checkOrderLines(rows.all())) return showFinding(*finding);
    return true;
}

void frm採購作業系統::saveOrderAs(const QString& parameter) {
    const bool isNew = mode() == ModeAdd;
    if (!isNew && !rights.修改) return refuse();
    if (session.approvalParam == u"Y" && approvalMark() == u"Y" && isApproved && parameter != u"審單") {
        session.messages.warn(u"提示"_s, u"該單已審單,不允許修改"_s);
        return;
    }
    fml明細->endEdit();
    if (!checkHeader()) return;
    if (!isNew && parameter != u"審單" && !session.messages.ask(u"詢問"_s, u"確定更新此筆資料?"_s)) return;

    if (isNew && !drawNumber(orderNumbers())) return;
    OrderSave save;
    save.header = headerOnScreen();
    save.lines = rows.all();
    save.loaded = loadedLines;
    save.isNew = isNew;
    save.lastDocumentNumber = lastDocumentNumber;
    save.loadedStamp = loadedStamp;
    save.canSeePrice = canSeePrice;
    save.mayApprove = rights.審單 || rights.批轉;
    const bool written =
        runSave(isNew, u"採購明細中有重復的原物料或採購單號重復!"_s, false, [&](bool overwrite) {
            save.overwrite = overwrite;
            return saveOrder(session, save);
        });
    if (!written) return;
    lastDocumentNumber = save.header.採購單號;
    loadedStamp = stampOf(save.header);
    loadedLines = save.lines;
    // Lines saved for the first time have their numbers now, by which the next save knows them.
    for (size_t i = 0; i < save.lines.size(); ++i)
        rows.put(static_cast<int>(i) + 1, save.lines[i]);
    isApproved = save.header.審單 == u"Y";
    finishSave(save.header.採購單號, isNew, u"資料更新完畢!"_s);
}

void frm採購作業系統::deleteRecord() {
    deleteDocument(lastDocumentNumber, [this] { deleteOrder(session, lastDocumentNumber); });
}

void frm採購作業系統::approve() {
    approvalStep(
        [this] {
            if (!isApproved || rights.驗收) return true;
            bool received = true;
            const bool read = guarded(session, u"顯示資料錯誤"_s, [&] {
                Connection connection(session.pool, session.connectionString);
                received = orderHasReceipts(connection, lastDocumentNumber);
            });
            if (read && received) session.messages.warn(u"提示"_s, u"此採購單已有入庫產生,反審單被取消!"_s);
            return read && !received;
        },
        [this] { saveOrderAs(u"審單"_s); });
}

} // namespace liaowu
