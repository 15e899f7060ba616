#include "common/guard.h"
#include "common/text_values.h"
#include "frame/base_screen.h"
#include "frame/form_view.h"
#include "frame/tool_strip_view.h"

namespace liaowu {

using namespace Qt::StringLiterals;

int ScreenFrame::reloadBrowse() {
    int result = Failed;
    guarded(session, u"取得所有%1錯誤"_s.arg(about.recordWord), [&] {
        browseSet = Recordset();
        Connection connection(session.pool, session.connectionString);
        browseSet.Open(browseStatement(), connection, Cursor::Static);
        if (browseSet.RecordCount() > 0) {
            browseSet.MoveLast();
            result = 0;
        } else {
            result = 1;
        }
    });
    return result;
}

bool ScreenFrame::displayRecord(const QString& key) {
    currentKey = key;
    markModified(false);
    if (showRecord(key) == Failed) {
        lockForm(record);
        session.messages.stop(u"錯誤"_s, u"依%1顯示資料發生錯誤!"_s.arg(about.recordWord));
        return false;
    }
    markModified(false);
    return true;
}

void ScreenFrame::beginEdit() {
    firstSearch = true;
    hasRecord = false;
    showPage(ModeEdit);
    clearForm(record);
    unlockForm(record);
    clearRecordPage();
    const int loaded = reloadBrowse();
    if (loaded != 0) {
        lockForm(record);
        if (loaded == 1) session.messages.inform(u"訊息"_s, u"資料庫無任何資料, 請先新增資料!"_s);
        updateStatus();
        return;
    }
    hasRecord = true;
    showTools();
    lockKeyField(entry(record, about.keyField));
    displayRecord(browseSet.text(0).trimmed());
    updateStatus();
}

void ScreenFrame::addRecord() {
    if (!rights.新增) {
        refuse();
        showPage(currentMode.isEmpty() ? ModeEdit : currentMode);
        return;
    }
    discardTyping();
    firstSearch = true;
    showPage(ModeAdd);
    strip->setOn(u"save"_s, false);
    currentKey.clear();
    clearForm(record);
    unlockForm(record);
    clearRecordPage();
    openKeyField(entry(record, about.keyField));
    fillNewRecord();
    strip->setOn(u"save"_s, true);
    updateStatus();
}

bool ScreenFrame::standOnRecord(bool forward) {
    const int position = browseSet.isOpen() ? browseSet.AbsolutePosition() : 0;
    // A screen that opened for adding has read no keys yet.
    if (about.freshKeys || !browseSet.isOpen()) {
        const int loaded = reloadBrowse();
        if (loaded == 1) beginEdit();
        if (loaded != 0) return false;
    }
    if (!browseSet.EOF_() && !browseSet.BOF_() && browseSet.text(0).trimmed() == currentKey) return true;
    browseSet.MoveFirst();
    if (browseSet.Find(about.keyColumn, currentKey)) return true;
    // A record that another user deleted has left its place to the one behind it.
    const int place = position > 0 ? position : browseSet.RecordCount() + 1;
    browseSet.setAbsolutePosition(forward ? place - 1 : place);
    return true;
}

void ScreenFrame::move(const QString& where) {
    unlockForm(record);
    if (!standOnRecord(where == u"next")) return;
    if (where == u"first") {
        browseSet.MoveFirst();
    } else if (where == u"last") {
        browseSet.MoveLast();
    } else if (where == u"next") {
        browseSet.MoveNext();
        if (browseSet.EOF_()) {
            browseSet.MoveLast();
            lockKeyField(entry(record, about.keyField));
            session.messages.inform(u"訊息"_s, u"目前的資料錄位置在最後一筆!"_s);
            return;
        }
    } else {
        browseSet.MovePrevious();
        if (browseSet.BOF_()) {
            browseSet.MoveFirst();
            lockKeyField(entry(record, about.keyField));
            session.messages.inform(u"訊息"_s, u"目前的資料錄位置在第一筆!"_s);
            return;
        }
    }
    discardTyping();
    displayRecord(browseSet.text(0).trimmed());
    updateStatus();
}

void ScreenFrame::gotoRecord(const QString& key) {
    discardTyping();
    currentKey = key;
    hasRecord = true;
    const auto found = [&] {
        if (!browseSet.isOpen() || browseSet.RecordCount() == 0) return false;
        browseSet.MoveFirst();
        return browseSet.Find(about.keyColumn, key);
    };
    // A record that others added meanwhile is not among the keys yet.
    if (!found() && reloadBrowse() == 0) found();
    showPage(ModeEdit);
    unlockForm(record);
    lockKeyField(entry(record, about.keyField));
    displayRecord(key);
    updateStatus();
}

void ScreenFrame::openPrint() {
    if (!rights.打印) {
        refuse();
        return;
    }
    session.messages.inform(u"列印"_s, u"列印功能尚未提供!"_s);
}

} // namespace liaowu
