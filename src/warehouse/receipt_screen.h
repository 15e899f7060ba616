#pragma once
#include "common/phrases.h"
#include "data/connection.h"
#include "formula/evaluator.h"
#include "formula/formula_definitions.h"
#include "frame/document_screen.h"
#include "frame/line_records_grid.h"
#include "warehouse/receipt_store.h"

namespace liaowu {

void registerReceiptScreen(Process& process);

/// The goods receipt: `frm原料入庫作業`, one screen for the families 物料, 紙板, 紙品 and 凸版.
class frm原料入庫作業 : public DocumentScreen {
public:
    explicit frm原料入庫作業(Process& process);

protected:
    void prepare() override;
    void start() override { beginEdit(); }
    SqlText browseStatement() const override;
    int showRecord(const QString& key) override;
    void fillNewRecord() override;
    void saveRecord() override { saveReceiptAs(QString()); }
    void deleteRecord() override;
    SearchSpec searchSpec() const override;
    void screenCommand(const QString& key) override;
    void clearRecordPage() override;
    bool quickFind(const QString& number) override;
    void deleteLine() override;

private:
    void fillLists();
    void showMoneyFields();

    // header look-ups
    void lookUpVendor();
    void fillFromOrder();

    // lines
    void connectGrid();
    bool mayType(const QString& title) const;
    bool cellEdited(int row, const QString& title, bool batch);
    bool runPick(int row, const QString& title);
    bool pickOrderLine(int row);
    bool pickItem(int row);
    bool resolveItem(int row, const QString& code);
    /// The order line window that the document's 單別 asks for.
    bool openOrderPick(const QString& filter);
    void takeCurrency(const QString& currency, const QString& order);
    /// Whether lines of a stored document may no longer be taken out or picked.
    bool isFrozen();
    /// Recalculates rows and the total. A formula that cannot be evaluated is told in a notice; its amount stays.
    void recalculateRows(int from, int to);
    void showTotal();
    void putTotal(double total);
    void cellEntered(int row, const QString& title);

    // saving
    QString kind() const;
    ReceiptHeader headerOnScreen() const;
    bool settleMonth(bool isNew, bool approving);
    void saveReceiptAs(const QString& parameter);
    void finish(const ReceiptSave& save);
    void approve();

    LineRecords<ReceiptLineColumns> rows;
    FormulaTable formulas;
    PhraseCache phraseCache;
    QStringList kinds, stores, currencyNames;
    CEval evaluator;
    bool showAmounts = false;
    QString savedNumber;
    QString loadedStamp;
    ReceiptLines savedLines; ///< as last loaded or saved: what a save undoes
};

} // namespace liaowu
