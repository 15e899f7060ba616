#pragma once
#include "common/phrases.h"
#include "data/connection.h"
#include "formula/evaluator.h"
#include "formula/formula_definitions.h"
#include "frame/document_screen.h"
#include "frame/line_records_grid.h"
#include "purchasing/order_pricing.h"
#include "purchasing/order_store.h"

class QLabel;
class QTimer;

namespace liaowu {

void registerPurchaseOrderScreen(Process& process);

/// The purchase order: `frm採購作業系統`, one screen for the families 物料, 紙板 and 凸版.
class frm採購作業系統 : public DocumentScreen {
public:
    explicit frm採購作業系統(Process& process);

protected:
    void prepare() override;
    SqlText browseStatement() const override;
    int showRecord(const QString& key) override;
    void fillNewRecord() override;
    void saveRecord() override { saveOrderAs(QString()); }
    void deleteRecord() override;
    SearchSpec searchSpec() const override;
    BatchSpec batchSpec() const override;
    void screenCommand(const QString& key) override;
    void clearRecordPage() override;
    bool quickFind(const QString& number) override;
    QString refusalText() const override { return RefusedText; }

private:
    // the page
    void buildFooter();
    void buildPanels();
    void connectGrid();
    void showColumnsOfCategory();

    // header look-ups
    void lookUpVendor(bool fromButton);
    void showScore(const QString& score);
    void takeVendor(const struct VendorRow& vendor);
    void loadRequisition();

    // lines
    bool cellEdited(int row, const QString& title, const QString& before, bool batch);
    bool mayType(const QString& title) const;
    /// Approved where approval is in force: what it costs is no longer open.
    bool isSettled() const { return isApproved && session.approvalParam != u"N"; }
    QStringList listOf(int row, const QString& title) const;
    bool runPick(int row, const QString& title);
    bool pickRequisitionLines(int row);
    bool pickWorkOrder(int row);
    bool pickItem(int row);
    /// A pasted code is taken when the column's pick window offers exactly this one.
    bool resolvePasted(int row, const QString& title, const QString& code);
    void takeItem(int row, const QStringList& picked, Speak speak);
    void takeWorkOrder(int row, const QStringList& picked, Speak speak);
    /// What a pick window reads besides its filter.
    void handOverToPick();
    /// Recalculates a row and the total.
    void recalculate(int row, Speak speak);
    void priceLine(Connection& connection, OrderLine& line, const PriceFound& master);
    void refreshAllPrices();
    void showTotal();
    void putTotal(const QString& total);
    void cellEntered(int row, const QString& title);
    void showStock();

    // saving
    void saveOrderAs(const QString& parameter);
    OrderHeader headerOnScreen() const;
    bool checkHeader();
    void approve();

    LineRecords<OrderLineColumns> rows;
    FormulaBook formulas{FormulaOrder::ByCategory};
    PhraseCache phraseCache;
    CEval evaluator;
    ItemRow itemRow; ///< the last item that a look-up found: its 單位 chooses the formula
    bool canSeePrice = false;
    QString lastDocumentNumber;
    QString loadedStamp;
    OrderLines loadedLines;           ///< as last loaded or saved
    QString shownItem;                ///< item of the stock panel
    std::optional<QString> typedOver; ///< what a search text in 申購單號 has taken the place of
    QFrame* notesPanel = nullptr;
    QFrame* qualityPanel = nullptr;
};

} // namespace liaowu
