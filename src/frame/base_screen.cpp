#include "frame/base_screen.h"
#include "common/guard.h"
#include "common/text_values.h"
#include "frame/batch_page.h"
#include "frame/change_history_window.h"
#include "frame/form_view.h"
#include "frame/search_page.h"
#include "frame/tool_strip_view.h"
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace liaowu {

using namespace Qt::StringLiterals;

ScreenFrame::ScreenFrame(Process& on, ScreenInfo info)
    : process(on), session(on.session), about(std::move(info)) {
    setObjectName(about.name);
    setWindowTitle(about.title + u"[*]"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setMinimumSize(1000, 620);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    strip = new ToolStrip(toolsOf(about.tools), this);
    connect(strip, &ToolStrip::clicked, this, &ScreenFrame::runTool);
    column->addWidget(strip);

    pages = new QStackedWidget(this);
    column->addWidget(pages, 1);
    record = new QWidget(this);
    record->setObjectName(u"pic基本資料"_s);
    pages->addWidget(record);
    pageOfMode.insert(ModeAdd, record);
    pageOfMode.insert(ModeEdit, record);

    auto* status = new QWidget(this);
    status->setObjectName(u"StatusBar1"_s);
    status->setAttribute(Qt::WA_StyledBackground);
    auto* line = new QHBoxLayout(status);
    line->setContentsMargins(14, 3, 14, 3);
    line->setSpacing(18);
    noticeLabel = new QLabel(status);
    noticeLabel->setObjectName(u"lbl通知"_s);
    for (size_t i = 0; i < panels.size(); ++i) {
        panels[i] = new QLabel(status);
        panels[i]->setObjectName(u"panel%1"_s.arg(i + 1));
        if (i == 7) line->addWidget(noticeLabel, 1);
        line->addWidget(panels[i]);
    }
    panels[7]->setText(u"修改記錄"_s);
    panels[7]->setProperty("link", true);
    panels[7]->setCursor(Qt::PointingHandCursor);
    column->addWidget(status);

    qApp->installEventFilter(this);
}

ScreenFrame::~ScreenFrame() {
    process.forget(this);
}

void ScreenFrame::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!activated && !refused) QTimer::singleShot(0, this, &ScreenFrame::activate);
}

void ScreenFrame::activate() {
    if (activated || refused) return;
    process.desktop.setNoticeSink([self = QPointer<ScreenFrame>(this)](const QString& text) {
        if (self) self->showNotice(text);
    });
    setEnabled(false);
    rights = loadRights(session, about.moduleKey);
    if (!rights.查看) {
        refused = true;
        session.messages.warn(RefusedTitle, refusalText());
        close();
        return;
    }
    activated = true;
    prepare();
    setEnabled(true);
    start();
    watchTyping();
    if (!session.databaseNotice.isEmpty()) showNotice(session.databaseNotice);
}

QString ScreenFrame::refusalText() const {
    return RefusedText;
}

void ScreenFrame::start() {
    if (!about.document || !rights.新增) {
        beginEdit();
    } else if (reloadBrowse() == Failed) {
        lockForm(record);
    } else {
        addRecord();
    }
}

void ScreenFrame::refuse(const QString& text) {
    session.messages.warn(RefusedTitle, text);
}

// ---- toolbar ----

void ScreenFrame::runTool(const QString& key) {
    if (running || !strip->isOn(key)) return;
    // One command at a time: what a window that it opens lets through does nothing.
    running = true;
    const QPointer<ScreenFrame> alive(this);
    endOpenEdit();
    const QString before = currentMode;
    if (before != ModeSearch) {
        previousMode = before;
        previousControl = focusWidget();
    }
    if (key == u"add") {
        addRecord();
    } else if (key == u"edit") {
        discardTyping();
        beginEdit();
    } else if (key == u"del") {
        deleteRecord();
    } else if (key == u"search") {
        openSearch();
    } else if (key == u"save" && currentMode == ModeBatch) {
        batchPage->approveMarked();
    } else if (key == u"save") {
        session.documentSaved = false;
        saveRecord();
        // Started by the launcher, the screen is done with the document it was opened for.
        if (alive && session.documentSaved && !session.screenFunction.isEmpty()) close();
    } else if (key == u"first" || key == u"previous" || key == u"next" || key == u"last") {
        move(key);
    } else if (key == u"print") {
        openPrint();
    } else if (key == u"exit") {
        close();
    } else {
        screenCommand(key);
    }
    if (alive) running = false;
}

bool ScreenFrame::isToolOn(const QString& key) const {
    return strip->isOn(key) && strip->isShown(key);
}
bool ScreenFrame::isToolShown(const QString& key) const {
    return strip->isShown(key);
}
void ScreenFrame::setToolOn(const QString& key, bool on) {
    strip->setOn(key, on);
}
void ScreenFrame::hideTool(const QString& key) {
    strip->setShown(key, false);
}

bool ScreenFrame::functionKey(int key, Qt::KeyboardModifiers modifiers) {
    if (modifiers & (Qt::AltModifier | Qt::ShiftModifier | Qt::MetaModifier)) return false;
    // Where there is no record to move to, a list or a text has these keys; a combo would change its choice by them.
    const auto moveBy = [&](const QString& tool) {
        if (!isToolOn(tool)) return qobject_cast<QComboBox*>(focusWidget()) != nullptr;
        runTool(tool);
        return true;
    };
    if (modifiers & Qt::ControlModifier) {
        if (key == Qt::Key_Home) return moveBy(u"first"_s);
        if (key == Qt::Key_End) return moveBy(u"last"_s);
        return false;
    }
    if (key == Qt::Key_PageUp) return moveBy(u"previous"_s);
    if (key == Qt::Key_PageDown) return moveBy(u"next"_s);
    if (key == Qt::Key_Escape) {
        close();
        return true;
    }
    const QString tool = toolOfFunctionKey(about.tools, key);
    if (tool.isEmpty()) return false;
    if (tool == u"save" && currentMode != ModeBatch) {
        saveAndStay();
    } else if (isToolShown(tool)) {
        runTool(tool);
    }
    return true;
}

void ScreenFrame::saveAndStay() {
    if (!strip->isOn(u"save"_s) || running) return;
    running = true;
    const QPointer<ScreenFrame> alive(this);
    endOpenEdit();
    session.documentSaved = false;
    const bool wasNew = currentMode == ModeAdd;
    saveRecord();
    if (!alive) return;
    running = false;
    if (!session.documentSaved || session.screenFunction.isEmpty()) return;
    const QString saved = currentKey;
    if (wasNew) reloadBrowse();
    gotoRecord(saved);
    showNotice(u"已儲存 %1"_s.arg(saved));
}

bool ScreenFrame::enterKey(QWidget* target) {
    if (target->property("ownsEnter").toBool()) return false;
    auto* field = qobject_cast<EntryField*>(target);
    if (!field && !qobject_cast<QComboBox*>(target) && !qobject_cast<QAbstractButton*>(target)) return false;
    if (qobject_cast<QPushButton*>(target)) return false;
    const auto lookup = lookups.constFind(target->objectName());
    if (field && lookup != lookups.constEnd() && field->typed && !field->isLocked()) {
        (*lookup)(false);
    } else {
        focusNextChild();
    }
    return true;
}

bool ScreenFrame::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease && watched == panels[7]) clickPanel(8);
    if (event->type() != QEvent::KeyPress || !activated || !isEnabled())
        return QWidget::eventFilter(watched, event);
    auto* target = qobject_cast<QWidget*>(watched);
    if (!target || target->window() != this || QApplication::activePopupWidget()) return false;
    auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Escape && target->property("ownsEscape").toBool()) return false;
    if (functionKey(key->key(), key->modifiers()) || screenKey(key->key(), key->modifiers())) return true;
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) return enterKey(target);
    return false;
}

void ScreenFrame::bindLookup(const QString& field, const QString& buttonName,
                             std::function<void(bool)> lookup) {
    lookups.insert(field, lookup);
    if (!buttonName.isEmpty())
        connect(button(this, buttonName), &QPushButton::clicked, this,
                [lookup = std::move(lookup)] { lookup(true); });
}

// ---- pages and state ----

QWidget* ScreenFrame::addPage(const QString& mode, QWidget* page) {
    pages->addWidget(page);
    pageOfMode.insert(mode, page);
    return page;
}

void ScreenFrame::showPage(const QString& mode) {
    currentMode = mode;
    static const QHash<QString, QString> pressed{
        {ModeAdd, u"add"_s}, {ModeEdit, u"edit"_s}, {ModeSearch, u"search"_s}, {ModePrint, u"print"_s}};
    strip->press(pressed.value(mode));
    if (QWidget* page = pageOfMode.value(mode)) pages->setCurrentWidget(page);
    showTools();
    updateStatus();
}

void ScreenFrame::showTools() {
    static const QStringList needRecord{u"reload"_s,   u"del"_s,   u"save"_s,    u"first"_s,
                                        u"previous"_s, u"next"_s,  u"last"_s,    u"審單"_s,
                                        u"審核"_s,     u"print"_s, u"詢價記錄"_s};
    for (const Tool& tool : toolsOf(about.tools)) {
        if (tool.key == u"|") continue;
        const bool nothing = currentMode == ModeEdit && !hasRecord && needRecord.contains(tool.key);
        strip->setOn(tool.key, (tool.enabledIn & modeBit(currentMode)) && !nothing);
    }
}

void ScreenFrame::setStatus(int panel, const QString& text) {
    panels[static_cast<size_t>(panel - 1)]->setText(text);
}
QString ScreenFrame::statusText(int panel) const {
    return panels[static_cast<size_t>(panel - 1)]->text();
}

void ScreenFrame::updateStatus() {
    const bool recordShown = currentMode == ModeAdd || currentMode == ModeEdit;
    setStatus(1, recordShown ? u"目前筆數"_s : currentMode == ModeSearch ? u"查詢筆數"_s : QString());
    setStatus(3, recordShown ? u"總筆數"_s : QString());
    if (currentMode == ModeAdd) {
        setStatus(2, about.addingText);
    } else if (currentMode == ModeEdit) {
        setStatus(2, browseSet.isOpen() ? QString::number(browseSet.AbsolutePosition()) : QString());
    } else {
        setStatus(2, QString());
    }
    setStatus(4, recordShown && browseSet.isOpen() ? QString::number(browseSet.RecordCount()) : QString());
}

QString ScreenFrame::notice() const {
    return noticeLabel->text();
}
void ScreenFrame::showNotice(const QString& text) {
    noticeLabel->setText(text);
}

void ScreenFrame::markModified(bool modified) {
    if (modified && currentMode != ModeAdd && currentMode != ModeEdit) return;
    setWindowModified(modified);
    strip->markUnsaved(modified);
}

void ScreenFrame::discardTyping() {
    markModified(false);
}

void ScreenFrame::watchTyping() {
    for (EntryField* field : record->findChildren<EntryField*>()) {
        if (field->property("cellEditor").toBool()) continue;
        connect(field, &EntryField::typedInto, this, [this] { markModified(true); });
        connect(field, &EntryField::cut, this,
                [this](int limit) { session.messages.warn(u"訊息"_s, u"最多只可輸入%1個字!"_s.arg(limit)); });
    }
    for (EntryCombo* field : record->findChildren<EntryCombo*>())
        connect(field, &QComboBox::activated, this, [this] { markModified(true); });
    for (QPlainTextEdit* field : record->findChildren<QPlainTextEdit*>())
        connect(field, &QPlainTextEdit::textChanged, this, [this, field] {
            if (field->hasFocus()) markModified(true);
        });
}

// ---- search ----

void ScreenFrame::openSearch() {
    if (!search) {
        search = new SearchPage(process, searchSpec(), this);
        addPage(ModeSearch, search);
        connect(search, &SearchPage::chosen, this, [this](const QString& key) { gotoRecord(key); });
        connect(search, &SearchPage::back, this, &ScreenFrame::leaveSearch);
        connect(search, &SearchPage::found, this, [this](int rows) { setStatus(2, QString::number(rows)); });
    }
    const bool first = firstSearch;
    firstSearch = false;
    showPage(ModeSearch);
    search->open(first);
}

void ScreenFrame::leaveSearch() {
    const QString mode = previousMode.isEmpty() ? ModeEdit : previousMode;
    // Coming back must not lose what was typed before the search: the page is shown again, not loaded.
    showPage(mode);
    if (mode == ModeSearch) return;
    strip->markUnsaved(isWindowModified());
    if (previousControl) previousControl->setFocus();
}

// ---- batch approval ----

void ScreenFrame::openBatch() {
    if (!rights.批審) {
        refuse(RefusedTextApproval);
        showPage(currentMode);
        return;
    }
    discardTyping();
    if (!batchPage) {
        batchPage = new BatchPage(process, batchSpec(), this);
        addPage(ModeBatch, batchPage);
        connect(batchPage, &BatchPage::listed, this,
                [this](int rows) { setStatus(2, QString::number(rows)); });
    }
    showPage(ModeBatch);
    setStatus(1, u"查詢筆數"_s);
    batchPage->open();
}

// ---- the record viewer, the end ----

void ScreenFrame::clickPanel(int panel) {
    if (panel == 8 && currentMode == ModeEdit) openHistory();
}

void ScreenFrame::openHistory() {
    showChangeHistory(
        process, this,
        {about.table, about.keyColumn, controlText(entry(record, about.keyField)), about.document ? 1 : 0});
}

void ScreenFrame::closeEvent(QCloseEvent* event) {
    if (!closing) {
        closing = true;
        discardTyping();
        qApp->removeEventFilter(this);
        browseSet = Recordset();
        process.forget(this);
        if (about.endsProcess || refused) process.desktop.endProcess();
    }
    event->accept();
}

} // namespace liaowu
