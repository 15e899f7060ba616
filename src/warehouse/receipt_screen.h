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
    bool cellEdited(int row, const QString& title, const QString& before, bool batch);
    bool runPick(int row, const QString& title);
    bool pickOrderLine(int row);
    bool pickItem(int row);
    bool resolveItem(int row, const QString& code, Speak speak);
    /// The order line window that the document's 單別 asks for.
    bool openOrderPick(const QString& filter);
    void takeCurrency(const QString& currency, const QString& order);
    /// Whether lines of a stored document may no longer be taken out or picked.
    bool isFrozen();
    /// A pick that was left gives the cell back what it held before the search was typed.
    void putBack(int row, const QString& title, const QString& before);
    /// A 小紙數 that was typed or stored is what lies in the warehouse, whatever 走紙才 makes of the quantity.
    enum class StockQuantity { Anew, Kept };
    /// Recalculates rows and the total. The amount of a line whose formula cannot be evaluated stays.
    void recalculateRows(int from, int to, Speak speak, StockQuantity quantity = StockQuantity::Anew);
    void showTotal();
    void putTotal(double total);
    void cellEntered(int row, const QString& title);
    /// What was ordered and is open of the current line, and the stock of its item, below the grid.
    void showFigures();

    // saving
    QString kind() const;
    ReceiptHeader headerOnScreen() const;
    bool settleMonth(bool isNew, bool approving);
    void saveReceiptAs(const QString& parameter);
    void finish(const ReceiptSave& save);
    void approve();

    LineRecords<ReceiptLineColumns> rows;
    FormulaBook formulas{FormulaOrder::ByPosition};
    PhraseCache phraseCache;
    QStringList kinds, stores, currencyNames;
    CEval evaluator;
    bool showAmounts = false;
    QString savedNumber;
    QString loadedStamp;
    ReceiptLines savedLines;          ///< as last loaded or saved: what a save undoes
    std::optional<QString> typedOver; ///< what a cell held before a search was typed into it
};

} // namespace liaowu
