#pragma once
#include "frame/document_screen.h"
#include "frame/line_records_grid.h"
#include "purchasing/requisition_store.h"

namespace liaowu {

void registerRequisitionScreen(Process& process);

/// The material requisition: `frm申購作業系統`.
class frm申購作業系統 : public DocumentScreen {
public:
    explicit frm申購作業系統(Process& process);

protected:
    SqlText browseStatement() const override;
    int showRecord(const QString& key) override;
    void fillNewRecord() override;
    void saveRecord() override { saveAs(QString()); }
    void deleteRecord() override;
    SearchSpec searchSpec() const override;
    BatchSpec batchSpec() const override;
    void screenCommand(const QString& key) override;
    void clearRecordPage() override;
    bool quickFind(const QString& number) override;
    QString refusalText() const override { return QStringLiteral("您還沒有權限進行這項操作,請與管理員聯系"); }

private:
    void connectGrid();
    void fillLists();
    QString family() const;
    void lookUpDepartment();
    bool cellEdited(int row, const QString& title, bool batch);
    bool runPick(int row, const QString& title);
    bool resolveCode(int row, const QString& code);
    void showStock();
    bool check();
    void saveAs(const QString& parameter);
    RequisitionHeader headerOnScreen() const;
    void approve();

    LineRecords<RequisitionLineColumns> rows;
    QString lastDocumentNumber;
    QString loadedStamp;
};

} // namespace liaowu
