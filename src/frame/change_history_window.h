#pragma once
#include <QString>

class QWidget;

namespace liaowu {

class Process;

/// The record whose audit columns are shown. Style 0: a master (建檔人, 建檔時間); 1: a document (製單人, 製單時間).
struct ChangeHistoryOf {
    QString fstr_TableName;
    QString fstr_KeyName;
    QString fstr_KeyValue;
    int fbyt_Style = 0;
};

/// The small modal panel `frm系統修改明細`: who made and who last changed the record.
void showChangeHistory(Process& process, QWidget* owner, const ChangeHistoryOf& of);

} // namespace liaowu
