#pragma once
#include "common/rights.h"
#include "data/recordset.h"
#include "frame/batch_spec.h"
#include "frame/desktop.h"
#include "frame/process.h"
#include "frame/search_spec.h"
#include "frame/tools.h"
#include <QPointer>
#include <QWidget>

class QLabel;
class QStackedWidget;

namespace liaowu {

class BatchPage;
class SearchPage;
class ToolStrip;

/// What a screen declares of itself.
struct ScreenInfo {
    QString name;      ///< class name, the objectName of the window
    QString title;     ///< window title
    QString moduleKey; ///< of 使用者明細.模塊
    QString table;     ///< of the record on show, for the change history
    QString keyColumn;
    QString keyField;   ///< control that shows the key
    QString recordWord; ///< what "依…顯示資料發生錯誤!" names
    QString addingText = QStringLiteral("新增中....");
    bool document = true;    ///< audit columns 製單人 rather than 建檔人
    bool endsProcess = true; ///< closing ends the process outright
    bool freshKeys =
        false; ///< navigation reads the keys anew each time, so that it sees what others added and deleted
    std::vector<QString> tools;
};

/// The frame that every large screen stands in: toolbar, stacked pages, mode, browse set of keys, status panels, function
/// keys, refusals. A screen declares itself by `ScreenInfo`, supplies the few operations below, and reads `session`
/// and `rights`.
class ScreenFrame : public QWidget {
    Q_OBJECT
public:
    ScreenFrame(Process& process, ScreenInfo info);
    ~ScreenFrame() override;

    const ScreenInfo& info() const { return about; }
    QString mode() const { return currentMode; }
    bool isActivated() const { return activated; }
    bool wasRefused() const { return refused; }
    bool isModified() const { return isWindowModified(); }

    /// A toolbar command, as a click or its function key gives it.
    void runTool(const QString& key);
    bool isToolOn(const QString& key) const;
    bool isToolShown(const QString& key) const;
    /// Status panels 1 to 8; panel 8 is the record viewer.
    QString statusText(int panel) const;
    void setStatus(int panel, const QString& text);
    QString notice() const;
    void showNotice(const QString& text);
    void clickPanel(int panel);

    Process& process;
    Session& session;
    UserRights rights;

protected:
    // What a screen supplies.
    /// Combos and caches, once, after the rights are known.
    virtual void prepare() {}
    /// Enters the first mode: documents add with the 新增 right, else edit.
    virtual void start();
    /// The keys of all records in the screen's order.
    virtual SqlText browseStatement() const { return {}; }
    /// Reads and shows the record; gives 0, or 9 when it could not.
    virtual int showRecord(const QString& key) = 0;
    /// Defaults and state of a new record; the rights and the mode are settled.
    virtual void fillNewRecord() {}
    virtual void saveRecord() = 0;
    virtual void deleteRecord() {}
    virtual void openPrint();
    virtual SearchSpec searchSpec() const { return {}; }
    virtual BatchSpec batchSpec() const { return {}; }
    /// A key that the frame does not know.
    virtual void screenCommand(const QString&) {}
    /// Ends what is being typed into a grid, so that a command sees it.
    virtual void endOpenEdit() {}
    /// Clears what belongs to the record page besides its fields (the line grid).
    virtual void clearRecordPage() {}
    /// A key of the screen's own, tested on the form before a control sees it.
    virtual bool screenKey(int, Qt::KeyboardModifiers) { return false; }
    /// Text of the refusal when the screen may not be opened.
    virtual QString refusalText() const;

    // The frame's operations.
    void addRecord();
    void beginEdit();
    void gotoRecord(const QString& key);
    /// 0 with rows (standing on the last), 1 without, 9 on failure.
    int reloadBrowse();
    void openSearch();
    void leaveSearch();
    /// The batch approval page, for who holds the 批審 right.
    void openBatch();
    void showPage(const QString& mode);
    void updateStatus();
    /// Shows the record and speaks when it fails.
    bool displayRecord(const QString& key);
    /// Every way in which typing is discarded comes through here.
    void discardTyping();
    void markModified(bool modified);
    void setToolOn(const QString& key, bool on);
    void hideTool(const QString& key);
    QWidget* addPage(const QString& mode, QWidget* page);
    void refuse(const QString& text = RefusedText);
    /// The record page, where the fields are.
    QWidget* recordPage() const { return record; }
    ToolStrip* toolStrip() const { return strip; }
    /// Runs `lookup` on Enter in the field and on a click of its button; a field not typed into only moves on.
    void bindLookup(const QString& field, const QString& buttonName,
                    std::function<void(bool fromButton)> lookup);

    QString currentKey;
    QString previousMode;
    bool firstSearch = true;
    Recordset browseSet;

    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void activate();
    bool functionKey(int key, Qt::KeyboardModifiers modifiers);
    /// What F8 does: unlike the toolbar's key it keeps the screen open.
    void saveAndStay();
    bool enterKey(QWidget* target);
    void move(const QString& where);
    bool standOnRecord(bool forward);
    void showTools();
    void openHistory();
    void watchTyping();

    ScreenInfo about;
    QString currentMode;
    ToolStrip* strip;
    QStackedWidget* pages;
    QHash<QString, QWidget*> pageOfMode;
    QWidget* record;
    SearchPage* search = nullptr;
    BatchPage* batchPage = nullptr;
    std::array<QLabel*, 8> panels{};
    QLabel* noticeLabel;
    QPointer<QWidget> previousControl;
    QHash<QString, std::function<void(bool)>> lookups;
    bool hasRecord = true; ///< false while 修改 has nothing to show
    bool activated = false;
    bool refused = false;
    bool running = false;
    bool closing = false;
};

} // namespace liaowu
