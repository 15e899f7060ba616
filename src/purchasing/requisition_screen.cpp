#include "purchasing/requisition_screen.h"
#include "common/clock.h"
#include "common/guard.h"
#include "common/phrases.h"
#include "common/text_values.h"
#include "frame/lookups.h"
#include "frame/pick_window.h"
#include "purchasing/order_picks.h"
#include "purchasing/order_queries.h"
#include "purchasing/requisition_queries.h"
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

/// The controls of the header and the members they stand for.
constexpr std::array<FieldOf<RequisitionHeader>, 11> controls{{
    {u"txt申購單號", &RequisitionHeader::申購單號},
    {u"Cbo類別", &RequisitionHeader::類別},
    {u"txt申購日期", &RequisitionHeader::申購日期},
    {u"txt經辦人代號", &RequisitionHeader::經辦代號},
    {u"lbl經辦人名稱", &RequisitionHeader::經辦名稱},
    {u"txt工單單號", &RequisitionHeader::工單單號},
    {u"lbl申購單位", &RequisitionHeader::申購單位},
    {u"txt需求日期", &RequisitionHeader::需求日期},
    {u"Cbo請購原因", &RequisitionHeader::請購原因},
    {u"Cbo庫別", &RequisitionHeader::庫別},
    {u"txt備注", &RequisitionHeader::備註},
}};

ScreenInfo screenInfo() {
    return {.name = u"frm申購作業系統"_s,
            .title = u"原料申購作業"_s,
            .moduleKey = u"frm資材請購作業"_s,
            .table = u"原料申購資料"_s,
            .keyColumn = u"申購單號"_s,
            .keyField = u"txt申購單號"_s,
            .recordWord = u"申購單號"_s,
            .tools = {u"add"_s, u"edit"_s, u"del"_s, u"search"_s, u"save"_s, u"|"_s, u"first"_s,
                      u"previous"_s, u"next"_s, u"last"_s, u"|"_s, u"審單"_s, u"批審"_s, u"print"_s, u"|"_s,
                      u"exit"_s}};
}

using namespace column_flags;

constexpr LineColumnRow columns[] = {
    {u"原料代號", 1400, 20, 0, Typed | Entry | Pick | Upper},
    {u"原料名稱", 2400, 40, 0, Typed},
    {u"規格", 1700, 50, 0, Typed},
    {u"數量", 1100, 20, 3, Typed | Entry | Right},
    {u"單位", 700, 4, 0, Typed | Entry},
    {u"工單單號", 1400, 20, 0, Typed},
    {u"需求日期", 1200, 8, 1, Typed | Entry},
    {u"用途說明", 3200, 100, 0, Typed | Entry},
    {u"序", 0, 0, 0, 0},
    {u"工單單號", 0, 20, 0, 0},
    {u"已采購數", 1000, 0, 0, Right},
    {u"楞別", 800, 4, 0, Typed},
};

DocumentSpec documentSpec() {
    using Kind = FieldSpec::Kind;
    DocumentSpec spec;
    spec.header = {
        {Kind::Entry, u"txt申購單號"_s, u"申購單號"_s, 0, 0, 150, 20, 0, true},
        {Kind::Entry, u"txt申購日期"_s, u"申購日期"_s, 0, 1, 110, 8, 1},
        {Kind::Combo, u"Cbo類別"_s, u"類別"_s, 0, 2, 110},
        {Kind::Combo, u"Cbo請購原因"_s, u"請購原因"_s, 0, 3, 140},
        {Kind::Lookup, u"txt經辦人代號"_s, u"經辦人"_s, 1, 0, 122, 8, 0, true, u"scmd經辦人"_s,
         u"lbl經辦人名稱"_s},
        {Kind::Entry, u"txt需求日期"_s, u"需求日期"_s, 1, 1, 110, 8, 1},
        {Kind::Entry, u"txt工單單號"_s, u"工單單號"_s, 1, 2, 110, 20},
        {Kind::Combo, u"Cbo庫別"_s, u"庫別"_s, 1, 3, 140},
        {Kind::Lookup, u"lbl申購單位"_s, u"申購單位"_s, 2, 0, 122, 20, 0, false, u"scmd申購單位"_s},
        {Kind::Entry, u"txt備注"_s, u"備註"_s, 2, 1, 360, 100, 0, false, {}, {}, 3},
    };
    spec.lines = lineColumns(columns);
    spec.frozenTitle = u"原料代號"_s;
    spec.quickFindUnknown = u"查無此申購單,請確認輸入單號是否正確!"_s;
    return spec;
}

} // namespace

void registerRequisitionScreen(Process& process) {
    process.registerScreen(u"frm申購作業系統"_s,
                           [](Process& on) -> ScreenFrame* { return new frm申購作業系統(on); });
}

frm申購作業系統::frm申購作業系統(Process& on)
    : DocumentScreen(on, screenInfo(), documentSpec()), rows(fml明細) {
    if (session.approvalParam == u"N") hideTool(u"審單"_s);
    addFigure(footer(), this, u"lbl庫存數"_s, u"庫存"_s);
    addFigure(footer(), this, u"lbl安全庫存"_s, u"安全庫存"_s);
    footer()->addStretch(1);
    connectGrid();
    bindPerson(u"txt經辦人代號"_s, u"scmd經辦人"_s, u"lbl經辦人名稱"_s, u"倉儲部"_s);
    connect(button(this, u"scmd申購單位"_s), &QPushButton::clicked, this, [this] { lookUpDepartment(); });
}

void frm申購作業系統::connectGrid() {
    auto& events = fml明細->events;
    events.mayType = [this](int, const QString& title) {
        return (mode() == ModeAdd || mode() == ModeEdit) && title != u"已采購數";
    };
    events.edited = [this](int row, const QString& title, const QString&, bool batch) {
        return cellEdited(row, title, batch);
    };
    events.pick = [this](int row, const QString& title) { return runPick(row, title); };
    events.resolve = [this](int row, const QString&, const QString& code) { return resolveCode(row, code); };
    events.entered = [this](int, const QString& title) {
        button(this, u"scmd輔助"_s)->setEnabled(title == u"原料代號");
    };
    connect(fml明細, &LineGrid::selectionMoved, this, [this] { showStock(); });
}

SqlText frm申購作業系統::browseStatement() const {
    return requisitionBrowseStatement();
}
SearchSpec frm申購作業系統::searchSpec() const {
    return requisitionSearch(session);
}

BatchSpec frm申購作業系統::batchSpec() const {
    QString last;
    if (browseSet.isOpen() && browseSet.RecordCount() > 0)
        last = browseSet.textAt(browseSet.RecordCount() - 1, 0).trimmed();
    return requisitionBatch(session, last);
}

void frm申購作業系統::screenCommand(const QString& key) {
    if (key == u"審單") {
        approve();
    } else if (key == u"批審") {
        if (rights.批審 && !browseSet.isOpen()) reloadBrowse();
        openBatch();
    }
}

QString frm申購作業系統::family() const {
    return combo(const_cast<frm申購作業系統*>(this), u"Cbo類別"_s)->currentText();
}

// ---- states ----

void frm申購作業系統::fillLists() {
    setItems(this, u"Cbo類別"_s, {u"紙板"_s, u"物料"_s});
    // Nobody chose a reason or a warehouse that merely stands first.
    setItems(this, u"Cbo請購原因"_s, QStringList(QString()) + phrases(session, u"BU-請購類別"_s));
    setItems(this, u"Cbo庫別"_s, QStringList(QString()) + phrases(session, u"BV_庫別"_s));
}

void frm申購作業系統::clearRecordPage() {
    DocumentScreen::clearRecordPage();
    label(this, u"lbl經辦人名稱"_s)->clear();
    showApproval(u"N"_s, {}, {});
    isApproved = false;
    lastDocumentNumber.clear();
    loadedStamp.clear();
}

void frm申購作業系統::fillNewRecord() {
    if (!rights.批審) hideTool(u"批審"_s);
    fillLists();
    entry(this, u"txt申購日期"_s)->showText(today8(session));
    entry(this, u"txt經辦人代號"_s)->showText(session.salesmanCode);
    label(this, u"lbl經辦人名稱"_s)->setText(session.salesmanName);
    if (session.approvalParam == u"N")
        showApproval(u"Y"_s, session.salesmanName, entry(this, u"txt申購日期"_s)->text(), false);
    setToolOn(u"print"_s, false);
    combo(this, u"Cbo類別"_s)->setFocus(Qt::OtherFocusReason);
}

int frm申購作業系統::showRecord(const QString& key) {
    if (!rights.批審) hideTool(u"批審"_s);
    std::optional<RequisitionDocument> requisition;
    const bool read = guarded(session, u"顯示資料錯誤"_s, [&] {
        Connection connection(session.pool, session.connectionString);
        requisition = loadRequisition(connection, key);
    });
    if (!read || !requisition) return Failed;
    const RequisitionHeader& header = requisition->header;
    clearRecordPage();
    fillLists();
    showFields(this, controls, header);
    isApproved = header.審單 == u"Y";
    showApproval(isApproved ? u"Y"_s : u"N"_s, header.審單人, header.審單日期, session.approvalParam != u"N");
    rows.show(requisition->lines);
    lastDocumentNumber = header.申購單號;
    loadedStamp = requisition->stamp;
    entry(this, u"txt速查單號"_s)->showText(QString());
    showStock();
    entry(this, u"txt申購日期"_s)->setFocus(Qt::OtherFocusReason);
    return 0;
}

bool frm申購作業系統::quickFind(const QString& number) {
    return findInBrowse(number);
}

// ---- look-ups ----

void frm申購作業系統::lookUpDepartment() {
    session.pickParam = u"AA-部門"_s;
    session.pickCategory.clear();
    session.pickMode.clear();
    if (!pickRow(process, phrasePick(), this)) return;
    entry(this, u"lbl申購單位"_s)->showText(session.picked(0));
    markModified(true);
}

// ---- lines ----

bool frm申購作業系統::cellEdited(int row, const QString& title, bool) {
    if (title == u"數量")
        fml明細->setText(row, title, numberText(val(format(val(fml明細->text(row, title)), u"0.0000"))));
    return true;
}

bool frm申購作業系統::runPick(int row, const QString& title) {
    if (title != u"原料代號" || (mode() != ModeAdd && mode() != ModeEdit)) return false;
    const QString text = fml明細->text(row, title).trimmed();
    if (resolveCode(row, text)) {
        markModified(true);
        fml明細->select(row, u"規格"_s);
        return true;
    }
    session.pickParam = text;
    session.formulaMode = family();
    session.amountRight = rights.金額;
    const auto pickedRows = pickRows(process, requisitionItemPick(), this);
    if (pickedRows.empty() || pickedRows.front().value(0).trimmed().isEmpty()) return false;
    int at = row;
    for (const QStringList& picked : pickedRows) {
        RequisitionLine line = lineOfItemPick(picked, family());
        if (at == row) {
            const RequisitionLine here = rows.at(row);
            line.數量 = here.數量;
            line.已采購數 = here.已采購數;
        }
        rows.put(at, line);
        fml明細->countRow(at);
        at = fml明細->lineCount() + 1;
    }
    markModified(true);
    fml明細->select(at - 1, u"規格"_s);
    showStock();
    return true;
}

bool frm申購作業系統::resolveCode(int row, const QString& code) {
    std::optional<RequisitionItem> item;
    guarded(session, u"取得原料資料錯誤"_s, [&] {
        Connection connection(session.pool, session.connectionString);
        item = findRequisitionItem(connection, family(), code);
    });
    if (!item) return false;
    RequisitionLine line = rows.at(row);
    const RequisitionLine found = lineOfItemPick(
        {item->code, item->name, item->規格, item->庫存, item->單位, item->單價, item->幣別, {}, item->楞別},
        family());
    line.原料代號 = found.原料代號;
    line.原料名稱 = found.原料名稱;
    line.規格 = found.規格;
    line.單位 = found.單位;
    line.楞別 = found.楞別;
    rows.put(row, line);
    fml明細->countRow(row);
    showStock();
    return true;
}

void frm申購作業系統::showStock() {
    if (!isActivated()) return;
    const QString code = fml明細->text(fml明細->currentRow(), u"原料代號"_s).trimmed();
    std::optional<RequisitionItem> item;
    if (!code.isEmpty())
        guarded(session, u"取得庫存資料錯誤"_s, [&] {
            Connection connection(session.pool, session.connectionString);
            item = findRequisitionItem(connection, family(), code);
        });
    label(this, u"lbl庫存數"_s)->setText(item ? formatAmount(item->庫存) + u' ' + item->單位 : QString());
    label(this, u"lbl安全庫存"_s)
        ->setText(!item                      ? QString()
                  : item->安全庫存.isEmpty() ? u"<未設置>"_s
                                             : formatAmount(item->安全庫存));
}

// ---- saving ----

RequisitionHeader frm申購作業系統::headerOnScreen() const {
    RequisitionHeader header;
    takeFields(this, controls, header);
    header.審單 = approvalMark();
    header.審單人 = approvalPerson();
    header.審單日期 = approvalDate();
    return header;
}

bool frm申購作業系統::check() {
    if (validDate8(entry(this, u"txt申購日期"_s)->text()) != 0 ||
        entry(this, u"txt申購日期"_s)->text().isEmpty())
        return showFinding({u"錯誤"_s, u"「申購日期」日期輸入錯誤!"_s, u"txt申購日期"_s});
    if (validDate8(entry(this, u"txt需求日期"_s)->text()) != 0)
        return showFinding({u"錯誤"_s, u"「需求日期」日期輸入錯誤!"_s, u"txt需求日期"_s});
    return true;
}

void frm申購作業系統::saveAs(const QString& parameter) {
    const bool isNew = mode() == ModeAdd;
    const bool approving = parameter == document.approval.saveParameter;
    if (!isNew && !rights.修改) return refuse();
    fml明細->endEdit();
    if (!check()) return;
    if (session.approvalParam == u"Y" && approvalMark() == u"Y" && isApproved && !approving) {
        session.messages.warn(u"提示"_s, u"該單已審單,不允許修改"_s);
        return;
    }
    if (const auto finding = checkRequisitionLines(rows.all())) {
        showFinding(*finding);
        return;
    }
    if (label(this, u"lbl經辦人名稱"_s)->text().isEmpty())
        entry(this, u"txt經辦人代號"_s)->showText(QString());
    if (!isNew && !approving && !session.messages.ask(u"詢問"_s, u"確定更新此筆資料?"_s)) return;
    if (isNew && !drawNumber(requisitionNumbers())) return;
    RequisitionSave save{headerOnScreen(),           rows.all(), isNew, lastDocumentNumber, loadedStamp,
                         rights.審單 || rights.批轉, false};
    const bool written = runSave(isNew, u"申購單號重複!"_s, true, [&](bool overwrite) {
        save.overwrite = overwrite;
        return saveRequisition(session, save);
    });
    if (!written) return;
    lastDocumentNumber = save.header.申購單號;
    isApproved = save.header.審單 == u"Y";
    finishSave(save.header.申購單號, isNew, u"資料儲存完畢!"_s);
}

void frm申購作業系統::deleteRecord() {
    deleteDocument(lastDocumentNumber, [this] { deleteRequisition(session, lastDocumentNumber); });
}

void frm申購作業系統::approve() {
    if (label(this, u"lbl經辦人名稱"_s)->text().trimmed().isEmpty()) {
        session.messages.warn(u"提示"_s, u"請選擇經辦人代號,名稱!"_s);
        return;
    }
    approvalStep({}, [this] { saveAs(document.approval.saveParameter); });
}

} // namespace liaowu
