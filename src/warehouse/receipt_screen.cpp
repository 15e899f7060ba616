#include "warehouse/receipt_screen.h"
#include "common/clock.h"
#include "common/currency.h"
#include "common/guard.h"
#include "common/people.h"
#include "common/text_values.h"
#include "frame/lookups.h"
#include "frame/pick_window.h"
#include "warehouse/month_guard.h"
#include "warehouse/receipt_page_view.h"
#include "warehouse/receipt_queries.h"
#include "warehouse/receipt_rules.h"
#include <QLabel>
#include <QPushButton>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

ScreenInfo infoOf(const Session& session) {
    return {.name = u"frm原料入庫作業"_s,
            .title = session.category == u"物料" ? session.category + u"入庫作業系統"_s : u"原料入庫作業"_s,
            .moduleKey = u"frm%1入庫作業"_s.arg(session.category),
            .table = u"原料入庫資料"_s,
            .keyColumn = u"入庫單號"_s,
            .keyField = u"txt入庫單號"_s,
            .recordWord = u"入庫單號"_s,
            .addingText = u"新增中..."_s,
            .tools = {u"add"_s, u"edit"_s, u"del"_s, u"search"_s, u"save"_s, u"reload"_s, u"|"_s, u"first"_s,
                      u"previous"_s, u"next"_s, u"last"_s, u"|"_s, u"審核"_s, u"print"_s, u"|"_s, u"exit"_s}};
}

} // namespace

void registerReceiptScreen(Process& process) {
    process.registerScreen(u"frm原料入庫作業"_s,
                           [](Process& on) -> ScreenFrame* { return new frm原料入庫作業(on); });
}

frm原料入庫作業::frm原料入庫作業(Process& on)
    : DocumentScreen(on, infoOf(on.session), receiptDocumentSpec(on.session.category)), rows(fml明細) {
    buildReceiptFooter(footer(), this);
    connectGrid();
    bindLookup(u"txt廠商代號"_s, u"scmd廠商代號"_s, [this](bool) { lookUpVendor(); });
    bindPerson(u"txt業務員代號"_s, u"scmd業務員"_s, u"lbl業務員名稱"_s);
    bindLookup(u"txt採購單號"_s, u"scmd採購單號"_s, [this](bool) { fillFromOrder(); });
    connect(entry(this, u"txt廠商代號"_s), &EntryField::typedInto, this,
            [this] { label(this, u"lbl廠商簡稱"_s)->clear(); });
    // A number that was typed over a refused one stays.
    connect(entry(this, u"txt入庫單號"_s), &EntryField::typedInto, this,
            [this] { entry(this, u"txt入庫單號"_s)->setProperty("drawn", false); });
    connect(entry(this, u"txt合計"_s), &EntryField::typedInto, this,
            [this] { entry(this, u"txt合計備用"_s)->setText(entry(this, u"txt合計"_s)->text()); });
    lockField(entry(this, u"txt檢驗單號"_s));
}

void frm原料入庫作業::prepare() {
    showAmounts = rights.金額;
    session.amountRight = showAmounts;
    guarded(session, u"取得所有公式資料錯誤"_s, [this] {
        Connection connection(session.pool, session.connectionString);
        formulas.table(connection);
    });
    guarded(session, u"取得所有片語資料錯誤"_s, [this] { phraseCache = loadPhrases(session, u"AB-單位"_s); });
    kinds = phrasesOf(session, u"入庫"_s, u"BB-異動類別"_s);
    stores = phrases(session, u"CS-儲位"_s);
    if (showAmounts) currencyNames = currencies(session);
    if (!showAmounts)
        for (const QString& title : receiptMoneyTexts())
            fml明細->setColumnTwips(title, 0);
}

SqlText frm原料入庫作業::browseStatement() const {
    return receiptBrowseStatement(session);
}

SearchSpec frm原料入庫作業::searchSpec() const {
    return receiptSearch(session, showAmounts);
}

void frm原料入庫作業::screenCommand(const QString& key) {
    if (key == u"審核") {
        approve();
    } else if (key == u"reload" && session.messages.ask(u"還原詢問"_s, u"確定要還原此筆資料?"_s)) {
        discardTyping();
        displayRecord(currentKey);
    }
}

// ---- states ----

void frm原料入庫作業::fillLists() {
    setItems(this, u"Cbo單別"_s, kinds);
    setItems(this, u"Cbo倉別"_s, QStringList(QString()) + stores);
    setItems(this, u"cbo幣別"_s, currencyNames);
}

void frm原料入庫作業::showMoneyFields() {
    combo(this, u"cbo幣別"_s)->lock(!showAmounts);
    auto* total = entry(this, u"txt合計"_s);
    if (showAmounts) {
        openField(total);
    } else {
        lockKeyField(total);
    }
}

void frm原料入庫作業::clearRecordPage() {
    DocumentScreen::clearRecordPage();
    for (const auto& name : {u"lbl廠商簡稱"_s, u"lbl業務員名稱"_s})
        label(this, name)->clear();
    showApproval(u"N"_s, {}, {});
    isApproved = false;
    savedNumber.clear();
    loadedStamp.clear();
    savedLines.clear();
    putTotal(0);
    showFigures();
}

void frm原料入庫作業::fillNewRecord() {
    fillLists();
    showMoneyFields();
    entry(this, u"txt入庫日期"_s)->showText(today8(session));
    entry(this, u"txt業務員代號"_s)->showText(session.salesmanCode);
    label(this, u"lbl業務員名稱"_s)->setText(session.salesmanName);
    combo(this, u"Cbo單別"_s)->showText(u"采購入庫"_s);
    combo(this, u"Cbo倉別"_s)->showText(QString());
    entry(this, u"txt入庫單號"_s)->setProperty("drawn", false);
    button(this, u"scmd採購單號"_s)->setEnabled(session.category != u"凸版");
    entry(this, u"txt入庫單號"_s)->setFocus(Qt::OtherFocusReason);
}

int frm原料入庫作業::showRecord(const QString& key) {
    std::optional<ReceiptDocument> receipt;
    const bool read = guarded(session, u"顯示資料錯誤"_s, [&] {
        Connection connection(session.pool, session.connectionString);
        receipt = loadReceipt(connection, key, showAmounts);
    });
    if (!read || !receipt) return Failed;
    const ReceiptHeader& header = receipt->header;
    clearRecordPage();
    fillLists();
    showFields(this, ReceiptControls, header);
    showMoneyFields();
    button(this, u"scmd採購單號"_s)->setEnabled(true);
    isApproved = header.審核 == u"Y";
    showApproval(isApproved ? u"Y"_s : u"N"_s, header.審核人, header.審核日期);
    rows.show(receipt->lines);
    savedNumber = header.入庫單號;
    loadedStamp = receipt->stamp;
    // What was posted is undone as it was stored, whatever the formulas make of it now.
    savedLines = receipt->lines;
    putTotal(val(header.合計));
    if (!isApproved) recalculateRows(1, fml明細->lineCount(), Speak::Now, StockQuantity::Kept);
    showFigures();
    entry(this, u"txt速查單號"_s)->showText(QString());
    entry(this, u"txt入庫日期"_s)->setFocus(Qt::OtherFocusReason);
    return 0;
}

bool frm原料入庫作業::quickFind(const QString& number) {
    if (findInBrowse(number)) return true;
    std::optional<QString> sentBack;
    const bool read = guarded(session, u"開始查詢錯誤"_s, [&] {
        Connection connection(session.pool, session.connectionString);
        sentBack = findSentBack(session, connection, number);
    });
    if (sentBack) gotoRecord(*sentBack);
    return !read || sentBack;
}

// ---- header look-ups ----

QString frm原料入庫作業::kind() const {
    return combo(const_cast<frm原料入庫作業*>(this), u"Cbo單別"_s)->currentText().trimmed();
}

void frm原料入庫作業::lookUpVendor() {
    auto* field = entry(this, u"txt廠商代號"_s);
    session.pickParam = field->text().trimmed();
    session.formulaMode = session.category;
    session.pickMode = kind();
    if (!pickRow(process, receivingVendorPick(), this)) return;
    field->showText(session.picked(0));
    label(this, u"lbl廠商簡稱"_s)->setText(session.picked(1));
    combo(this, u"cbo幣別"_s)->showText(session.picked(6));
    const VendorTerms terms{session.picked(8), session.picked(9), session.picked(7)};
    const PaymentMonths months =
        paymentMonths(terms, entry(this, u"txt入庫日期"_s)->text().trimmed(), today8(session));
    entry(this, u"txt對帳日期"_s)->showText(months.reconciled);
    entry(this, u"txt付款年月"_s)->showText(months.paid);
    markModified(true);
    entry(this, u"txt採購單號"_s)->setFocus(Qt::OtherFocusReason);
}

// ---- saving ----

ReceiptHeader frm原料入庫作業::headerOnScreen() const {
    ReceiptHeader header;
    takeFields(this, ReceiptControls, header);
    header.類別 = session.category;
    header.合計 = entry(const_cast<frm原料入庫作業*>(this), u"txt合計備用"_s)->text();
    header.審核 = approvalMark();
    header.審核人 = approvalPerson();
    header.審核日期 = approvalDate();
    return header;
}

bool frm原料入庫作業::settleMonth(bool isNew, bool approving) {
    auto* date = entry(this, u"txt入庫日期"_s);
    bool closed = false;
    if (!guarded(session, isNew ? u"儲存錯誤"_s : u"更新錯誤"_s,
                 [&] { closed = isMonthClosed(session, date->text(), session.category); }))
        return false;
    if (!closed || approving) return true;
    if (isNew) {
        date->showText(firstOfNextMonth(date->text()));
        return true;
    }
    session.messages.warn(u"提示"_s, u"本月份已有結轉,不允許此操作"_s);
    return false;
}

void frm原料入庫作業::saveReceiptAs(const QString& parameter) {
    const bool isNew = mode() == ModeAdd;
    const bool approving = parameter == document.approval.saveParameter;
    if (!isNew && !rights.修改) return refuse();
    if (const auto finding = checkReceiptDate(headerOnScreen())) {
        showFinding(*finding);
        return;
    }
    if (isNew) drawNumber(receiptNumbers());
    if (!settleMonth(isNew, approving)) return;
    if (isApproved && approvalMark() == u"Y" && !approving) {
        session.messages.warn(u"提示"_s, u"該單已審單,不允許修改"_s);
        return;
    }
    fml明細->endEdit();
    if (label(this, u"lbl業務員名稱"_s)->text().trimmed().isEmpty())
        entry(this, u"txt業務員代號"_s)->showText(QString());
    if (const auto finding = checkReceiptHeader(headerOnScreen())) {
        showFinding(*finding);
        return;
    }
    if (!isNew && !approving && !session.messages.ask(u"詢問"_s, u"確定更新此筆資料?"_s)) return;
    ReceiptSave save{headerOnScreen(), rows.all(),  savedLines,  isNew,
                     savedNumber,      loadedStamp, showAmounts, rights.審核 || rights.批核};
    const bool written = runSave(isNew, u"入庫單號重複!"_s, true, [&](bool overwrite) {
        save.overwrite = overwrite;
        return saveReceipt(session, save);
    });
    if (written) finish(save);
}

void frm原料入庫作業::finish(const ReceiptSave& save) {
    const ReceiptHeader& header = save.header;
    entry(this, u"txt入庫單號"_s)->setProperty("drawn", false);
    savedNumber = currentKey = header.入庫單號;
    savedLines = save.lines;
    loadedStamp = save.loadedStamp;
    isApproved = header.審核 == u"Y";
    showApproval(header.審核, isApproved ? header.審核人 : QString(),
                 isApproved ? header.審核日期 : QString());
    markModified(false);
    session.messages.inform(save.isNew ? u"資料儲存"_s : u"資料更新"_s, u"資料儲存完畢!"_s);
    if (save.isNew) {
        reloadBrowse();
        gotoRecord(header.入庫單號);
    } else {
        showFigures();
    }
    const bool vendorKnown = header.廠商代號.isEmpty() || !header.廠商簡稱.isEmpty();
    session.messages.notice(vendorKnown ? u"已儲存 %1"_s.arg(header.入庫單號)
                                        : u"已儲存 %1,但查無廠商 %2"_s.arg(header.入庫單號, header.廠商代號));
}

void frm原料入庫作業::deleteRecord() {
    if (!rights.刪除) {
        refuse();
        showPage(mode());
        return;
    }
    if (savedNumber.isEmpty()) return;
    bool approved = false;
    if (!guarded(session, u"刪除錯誤"_s, [&] {
            Connection connection(session.pool, session.connectionString);
            approved = isReceiptApproved(connection, savedNumber);
        }))
        return;
    if (approved) {
        session.messages.warn(u"提示"_s, u"該單已審核﹐不允許刪除!"_s);
        return;
    }
    if (!session.messages.ask(u"刪除詢問"_s, u"確定要刪除此筆資料?"_s, false)) return;
    if (!entry(this, u"txt檢驗單號"_s)->text().trimmed().isEmpty()) {
        session.messages.stop(u"錯誤"_s, u"該單由進料檢驗自動產生,不允許刪除"_s);
        return;
    }
    if (!guarded(session, u"刪除錯誤"_s,
                 [this] { deleteReceipt(session, savedNumber, savedLines, loadedStamp); }))
        return;
    session.messages.inform(u"資料刪除"_s, u"資料刪除完畢!"_s);
    discardTyping();
    beginEdit();
}

void frm原料入庫作業::approve() {
    if (label(this, u"lbl業務員名稱"_s)->text().trimmed().isEmpty()) {
        session.messages.warn(u"提示"_s, u"請選擇入庫驗收員代號,名稱!"_s);
        return;
    }
    approvalStep({}, [this] { saveReceiptAs(document.approval.saveParameter); });
}

} // namespace liaowu
