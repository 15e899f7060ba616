#pragma once
#include "common/document_numbers.h"
#include "common/refusal.h"
#include "frame/base_screen.h"
#include "frame/form_view.h"
#include "frame/line_grid.h"
#include <optional>

class QFrame;
class QHBoxLayout;
class QLabel;
class QPushButton;

namespace liaowu {

/// The words and rights of a document's approval.
struct ApprovalWords {
    QString kind = QStringLiteral("審單");              ///< "審單" or "復核", as the dialog shows it
    QString markField = QStringLiteral("txt審單");      ///< control of the mark
    QString personLabels = QStringLiteral("txt審單項"); ///< two labels: (0) person, (1) date
    QString panel = QStringLiteral("pic審單");
    bool UserRights::*approve = &UserRights::審單;
    bool UserRights::*reverse = &UserRights::批轉;
    /// What an approval of an approved document says; empty accepts it and stamps again.
    QString alreadyApproved = QStringLiteral("該單已審單");
    QString saveParameter = QStringLiteral("審單");
};

/// What a document screen declares beyond its `ScreenInfo`.
struct DocumentSpec {
    std::vector<FieldSpec> header;
    std::vector<LineColumn> lines;
    QString frozenTitle; ///< column that stays in sight
    ApprovalWords approval;
    QString quickFindUnknown; ///< text when the number searched is not there
};

/// The frame of the documents: a card of header fields, the line grid, what stands below it, approval and quick find.
class DocumentScreen : public ScreenFrame {
    Q_OBJECT
public:
    DocumentScreen(Process& process, ScreenInfo info, DocumentSpec spec);
    LineGrid* lines() const { return fml明細; }

protected:
    /// The approval step up to the question whether to save. `mayOpen` is asked before the dialog opens;
    /// `save` runs the screen's save in its approval mode.
    void approvalStep(const std::function<bool()>& mayOpen, const std::function<void()>& save);
    /// Shows mark, person and date, and the stamp exactly when the mark is "Y" and `shown`.
    void showApproval(const QString& mark, const QString& person, const QString& date, bool shown = true);
    QString approvalMark() const;
    QString approvalPerson() const;
    QString approvalDate() const;
    /// When a fault of a line is told: at once, when the cell's editor has closed, or not at all (a pasted block).
    enum class Speak { Now, Later, Never };
    /// Marks the amount of a line whose formula could not be evaluated, or takes the mark off again.
    void markFormula(int row, bool evaluated);
    void tellFormulaFault(Speak speak);
    /// Says what speaks against a save and puts the focus there; gives false.
    bool showFinding(const Finding& finding);
    /// Goes to a document of the browse set, read anew; false when it is not there.
    bool findInBrowse(const QString& number);
    /// Fills the empty number of a new document with the next one. A number that was drawn and refused is drawn anew; a typed
    /// one stays. False when none could be drawn.
    bool drawNumber(const NumberSeries& series);
    /// Runs the writing of a save: wait cursor, the question when somebody saved meanwhile, the message of a failure with
    /// what was typed in place. `write` takes whether to overwrite. `duplicate` is the text for a number that exists.
    bool runSave(bool isNew, const QString& duplicate, bool alsoOnEdit,
                 const std::function<std::optional<SaveConflict>(bool overwrite)>& write);
    /// What follows a save that was written; `editText` is what an update says.
    void finishSave(const QString& number, bool isNew, const QString& editText);
    /// Right, question, deletion, message, and the latest document.
    void deleteDocument(const QString& number, const std::function<void()>& remove);
    /// Whether the document on show could be found by this number; shows it.
    virtual bool quickFind(const QString& number) = 0;
    virtual void deleteLine();

    void endOpenEdit() override { fml明細->endEdit(); }
    void clearRecordPage() override;
    bool screenKey(int key, Qt::KeyboardModifiers modifiers) override;
    QHBoxLayout* footer() const { return footerLine; }
    QFrame* headerCard() const { return card; }
    void updateDeleteButton();
    /// Look-up of a person: by Enter in `code`, which opens the window of the group's people when nobody is found, or by the
    /// button; the name goes to `name`. A code that is typed over needs a look-up again.
    void bindPerson(const QString& code, const QString& buttonName, const QString& name,
                    const QString& group = {});

    LineGrid* fml明細;
    DocumentSpec document;
    bool isApproved = false;

private:
    void buildQuickFind();
    void runQuickFind();

    QFrame* card;
    QFrame* stamp;
    QLabel* readOnly;
    QHBoxLayout* footerLine;
};

} // namespace liaowu
