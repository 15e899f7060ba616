#include "frame/document_screen.h"
#include "common/clock.h"
#include "common/guard.h"
#include "common/people.h"
#include "common/text_values.h"
#include "frame/lookups.h"
#include "frame/pick_window.h"
#include "frame/tool_strip_view.h"
#include <QApplication>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace liaowu {

using namespace Qt::StringLiterals;

DocumentScreen::DocumentScreen(Process& on, ScreenInfo info, DocumentSpec declared)
    : ScreenFrame(on, std::move(info)), document(std::move(declared)) {
    auto* column = new QVBoxLayout(recordPage());
    column->setContentsMargins(10, 8, 10, 6);
    column->setSpacing(7);

    card = new QFrame(recordPage());
    card->setProperty("card", true);
    auto* cardLine = new QHBoxLayout;
    cardLine->setContentsMargins(0, 0, 0, 0);
    auto* fields = new QWidget(card);
    buildFields(fields, document.header);
    cardLine->addWidget(fields, 1);
    stamp = new QFrame(card);
    stamp->setObjectName(document.approval.panel);
    stamp->setProperty("stamp", true);
    auto* stampLines = new QVBoxLayout(stamp);
    stampLines->setContentsMargins(14, 6, 14, 6);
    stampLines->setSpacing(1);
    auto* word = new QLabel(u"已 %1 "_s.arg(document.approval.kind), stamp);
    word->setAlignment(Qt::AlignCenter);
    stampLines->addWidget(word);
    for (int i = 0; i < 2; ++i) {
        auto* text = new QLabel(stamp);
        text->setObjectName(document.approval.personLabels + u"(%1)"_s.arg(i));
        text->setAlignment(Qt::AlignCenter);
        stampLines->addWidget(text);
    }
    readOnly = new QLabel(u"已%1 唯讀"_s.arg(document.approval.kind), card);
    readOnly->setObjectName(u"lbl唯讀"_s);
    readOnly->setAlignment(Qt::AlignCenter);
    auto* approved = new QVBoxLayout;
    approved->setSpacing(4);
    approved->addWidget(stamp);
    approved->addWidget(readOnly);
    approved->addStretch(1);
    cardLine->addLayout(approved);
    cardLine->addSpacing(14);
    auto* cardColumn = new QVBoxLayout(card);
    cardColumn->setContentsMargins(0, 2, 0, 2);
    cardColumn->addLayout(cardLine);
    column->addWidget(card);

    auto* mark = new EntryField(document.approval.markField, card);
    mark->leftAlone = true;
    mark->hide();

    fml明細 = new LineGrid(u"fml明細"_s, session.messages, recordPage());
    fml明細->prepareGrid(document.lines);
    if (!document.frozenTitle.isEmpty()) fml明細->setFrozenTitle(document.frozenTitle);
    column->addWidget(fml明細, 1);
    fml明細->events.modified = [this] { markModified(true); };
    fml明細->events.notice = [this](const QString& text) { showNotice(text); };

    auto* bottom = new QFrame(recordPage());
    bottom->setProperty("card", true);
    footerLine = new QHBoxLayout(bottom);
    footerLine->setContentsMargins(10, 5, 10, 5);
    footerLine->setSpacing(8);
    const auto command = [&](const QString& name, const QString& caption) {
        auto* made = new QPushButton(caption, bottom);
        made->setObjectName(name);
        made->setFocusPolicy(Qt::NoFocus);
        footerLine->addWidget(made);
        return made;
    };
    QPushButton* remove = command(u"scmd刪除"_s, u"明細刪除"_s);
    remove->setToolTip(u"Ctrl+Delete"_s);
    connect(remove, &QPushButton::clicked, this, [this] { deleteLine(); });
    connect(fml明細, &LineGrid::deleteAsked, remove, &QPushButton::click);
    connect(command(u"scmd輔助"_s, u"輔助 F9"_s), &QPushButton::clicked, this,
            [this] { fml明細->runPick(); });
    column->addWidget(bottom);
    connect(fml明細, &LineGrid::selectionMoved, this, &DocumentScreen::updateDeleteButton);
    connect(fml明細, &LineGrid::lineCountChanged, this, &DocumentScreen::updateDeleteButton);
    buildQuickFind();
    showApproval(u"N"_s, {}, {});
}

// ---- quick find ----

void DocumentScreen::buildQuickFind() {
    auto* box = new EntryField(u"txt速查單號"_s, toolStrip());
    box->setPlaceholderText(u"速查單號"_s);
    box->setFixedWidth(150);
    toolStrip()->addAtEnd(box);
    auto* go = new QPushButton(toolStrip());
    go->setObjectName(u"scmd速查"_s);
    go->setIcon(toolIcon(u"search"_s));
    go->setFlat(true);
    go->setFocusPolicy(Qt::NoFocus);
    toolStrip()->addAtEnd(go);
    connect(go, &QPushButton::clicked, this, &DocumentScreen::runQuickFind);
    connect(box, &QLineEdit::returnPressed, this, &DocumentScreen::runQuickFind);
    box->setProperty("ownsEnter", true);
}

void DocumentScreen::runQuickFind() {
    endOpenEdit();
    auto* box = entry(this, u"txt速查單號"_s);
    const QString number = box->text().trimmed();
    if (number.isEmpty()) {
        session.messages.warn(u"提示"_s, u"速查單號為空,請輸入單號"_s);
    } else if (!quickFind(number)) {
        session.messages.warn(u"提示"_s, document.quickFindUnknown);
    }
}

// ---- look-ups ----

void DocumentScreen::bindPerson(const QString& code, const QString& buttonName, const QString& name,
                                const QString& group) {
    connect(entry(this, code), &EntryField::typedInto, this, [this, name] { label(this, name)->clear(); });
    bindLookup(code, buttonName, [this, code, name, group](bool fromButton) {
        auto* field = entry(this, code);
        const QString text = field->text().trimmed();
        std::optional<std::pair<QString, QString>> person;
        if (!fromButton && !guarded(session, u"依業務代號取得業務資料錯誤"_s, [&] {
                Connection connection(session.pool, session.connectionString);
                person = findPerson(connection, text);
            }))
            return;
        if (!person) {
            session.pickParam = text;
            session.formulaMode = group;
            if (!pickRow(process, personPick(), this)) return;
            person = std::pair(session.picked(0), session.picked(1));
        }
        field->showText(person->first);
        label(this, name)->setText(person->second);
        markModified(true);
        focusNextChild();
    });
}

// ---- lines ----

void DocumentScreen::clearRecordPage() {
    fml明細->clearGrid();
}

void DocumentScreen::updateDeleteButton() {
    button(this, u"scmd刪除"_s)
        ->setEnabled(fml明細->currentRow() <= fml明細->lineCount() && fml明細->lineCount() > 0);
}

void DocumentScreen::deleteLine() {
    endOpenEdit();
    if (fml明細->currentRow() > fml明細->lineCount()) return;
    fml明細->deleteGridRow(fml明細->currentRow());
    fml明細->setLineCount(fml明細->lineCount() - 1);
    markModified(true);
    fml明細->setFocus();
}

void DocumentScreen::markFormula(int row, bool evaluated) {
    if (evaluated) {
        fml明細->unmarkCell(row, u"小計"_s);
    } else {
        fml明細->markCell(row, u"小計"_s, FaultColour, u"計價公式無法計算"_s);
    }
}

void DocumentScreen::tellFormulaFault(Speak speak) {
    const auto speech = [this] { session.messages.stop(u"計算"_s, u"單價公式預設不正確！請處新設置！"_s); };
    if (speak == Speak::Now) speech();
    if (speak == Speak::Later) fml明細->speakLater(speech);
}

bool DocumentScreen::screenKey(int key, Qt::KeyboardModifiers) {
    if (key != Qt::Key_F6 || (mode() != ModeAdd && mode() != ModeEdit)) return false;
    // The editor and the list of a cell are the grid's own.
    if (fml明細->hasFocus() || fml明細->isAncestorOf(QApplication::focusWidget())) {
        fml明細->endEdit();
        for (EntryField* field : card->findChildren<EntryField*>()) {
            if (!field->isVisible() || !field->isEnabled() || field->isLocked()) continue;
            field->setFocus(Qt::OtherFocusReason);
            break;
        }
    } else {
        fml明細->setFocus(Qt::TabFocusReason);
    }
    return true;
}

// ---- saving ----

bool DocumentScreen::showFinding(const Finding& finding) {
    session.messages.stop(finding.title, finding.text);
    if (!finding.control.isEmpty()) {
        entry(this, finding.control)->setFocus(Qt::OtherFocusReason);
    } else {
        // As by Tab, so that the cell offers its list.
        fml明細->select(finding.row, finding.column);
        fml明細->setFocus(Qt::TabFocusReason);
    }
    return false;
}

bool DocumentScreen::findInBrowse(const QString& number) {
    if (reloadBrowse() == Failed) return true;
    if (browseSet.RecordCount() == 0) return false;
    browseSet.MoveFirst();
    if (!browseSet.Find(info().keyColumn, number)) {
        browseSet.MoveLast();
        return false;
    }
    gotoRecord(browseSet.text(0).trimmed());
    return true;
}

bool DocumentScreen::drawNumber(const NumberSeries& series) {
    auto* number = entry(this, info().keyField);
    if (!number->text().trimmed().isEmpty() && !number->property("drawn").toBool()) return true;
    const QString drawn = nextDocumentNumber(session, series);
    if (drawn.isEmpty()) return false;
    number->showText(drawn);
    number->setProperty("drawn", true);
    return true;
}

bool DocumentScreen::runSave(bool isNew, const QString& duplicate, bool alsoOnEdit,
                             const std::function<std::optional<SaveConflict>(bool)>& write) {
    const auto busily = [&](bool overwrite) {
        Busy busy(session.messages);
        return write(overwrite);
    };
    try {
        const std::optional<SaveConflict> conflict = busily(false);
        if (conflict) {
            if (!session.messages.ask(
                    u"詢問"_s,
                    u"此單開啟後已由%1於%2修改,確定以畫面資料覆蓋?"_s.arg(conflict->person, conflict->time),
                    false))
                return false;
            busily(true);
        }
        return true;
    } catch (const Refusal& refusal) {
        session.messages.warn(refusal.title, refusal.text);
    } catch (const DatabaseError& error) {
        const bool known = error.isDuplicateKey() && (isNew || alsoOnEdit);
        session.messages.stop(isNew ? u"儲存錯誤"_s : u"更新錯誤"_s, known ? duplicate : error.text);
    }
    return false;
}

void DocumentScreen::finishSave(const QString& number, bool isNew, const QString& editText) {
    entry(this, info().keyField)->setProperty("drawn", false);
    currentKey = number;
    session.documentSaved = true;
    markModified(false);
    session.messages.notice(u"已儲存 %1"_s.arg(number));
    // Who started the screen for this document goes on; otherwise the user is told, and stays.
    if (!session.screenFunction.isEmpty()) return;
    if (isNew) {
        session.messages.inform(u"資料儲存"_s, u"資料儲存完畢!"_s);
        beginEdit();
    } else {
        session.messages.inform(u"資料更新"_s, editText);
        gotoRecord(number);
    }
}

void DocumentScreen::deleteDocument(const QString& number, const std::function<void()>& remove) {
    if (!rights.刪除) {
        refuse();
        showPage(mode());
        return;
    }
    if (number.isEmpty() || !session.messages.ask(u"刪除詢問"_s, u"確定要刪除此筆資料?"_s, false)) return;
    if (!guarded(session, u"刪除錯誤"_s, remove)) return;
    session.messages.inform(u"資料刪除"_s, u"資料刪除完畢!"_s);
    discardTyping();
    beginEdit();
}

// ---- approval ----

QString DocumentScreen::approvalMark() const {
    return entry(card, document.approval.markField)->text();
}
QString DocumentScreen::approvalPerson() const {
    return label(card, document.approval.personLabels + u"(0)"_s)->text();
}
QString DocumentScreen::approvalDate() const {
    return label(card, document.approval.personLabels + u"(1)"_s)->text();
}

void DocumentScreen::showApproval(const QString& mark, const QString& person, const QString& date,
                                  bool shown) {
    entry(card, document.approval.markField)->setText(mark);
    label(card, document.approval.personLabels + u"(0)"_s)->setText(person);
    label(card, document.approval.personLabels + u"(1)"_s)->setText(date);
    stamp->setVisible(mark == u"Y" && shown);
    readOnly->setVisible(mark == u"Y" && shown);
}

void DocumentScreen::approvalStep(const std::function<bool()>& mayOpen, const std::function<void()>& save) {
    const ApprovalWords& words = document.approval;
    session.scratchText = words.kind;
    session.scratchA = approvalMark();
    session.approveAllowed = rights.*words.approve;
    session.reverseAllowed = rights.*words.reverse;
    if (!session.approveAllowed && !session.reverseAllowed) {
        refuse(RefusedTextApproval);
        return;
    }
    if (mayOpen && !mayOpen()) return;
    session.approvalDone = false;
    process.runWindow(u"frm單據審核"_s, this);
    if (!session.approvalDone) return;
    if (session.scratchA == u"Y" && isApproved && !words.alreadyApproved.isEmpty()) {
        session.messages.warn(u"提示"_s, words.alreadyApproved);
        return;
    }
    showApproval(session.scratchA, session.scratchB, today8(session));
    markModified(true);
    if (session.messages.ask(u"詢問"_s, u"操作成功,是否立即儲存?"_s)) save();
}

} // namespace liaowu
