#include "formula/formula_screen.h"
#include "common/guard.h"
#include "common/phrases.h"
#include "formula/formula_definitions.h"
#include "frame/base_screen.h"
#include "frame/line_grid.h"
#include <QButtonGroup>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

ScreenInfo infoOf(const Session& session) {
    return {.name = u"frm原料計價公式"_s,
            .title = session.formulaMode == u"單位換算" ? u"單位換算公式"_s : u"原料計價公式"_s,
            .moduleKey = u"frm資材計價公式"_s,
            .document = false,
            .endsProcess = false,
            .tools = {u"save"_s, u"|"_s, u"exit"_s}};
}

std::vector<LineColumn> columnsOf(bool conversion) {
    const auto unit = [](const QString& title) {
        LineColumn column{title, 1300, 6};
        column.typable = column.entry = true;
        return column;
    };
    LineColumn formula{u"計算公式"_s, 6200, 255};
    formula.typable = formula.entry = formula.upper = true;
    return {unit(u"單位(長)"_s), unit(u"單位(寬)"_s), unit(u"庫存單位"_s),
            unit(conversion ? u"換算單位"_s : u"計價單位"_s), formula};
}

struct PadKey {
    int index, row, column;
    const char16_t* caption;
};
constexpr PadKey pad[] = {{7, 0, 0, u"7"},     {8, 0, 1, u"8"},     {9, 0, 2, u"9"},   {13, 0, 3, u"/"},
                          {16, 0, 4, u"長"},   {15, 0, 5, u"寬"},   {4, 1, 0, u"4"},   {5, 1, 1, u"5"},
                          {6, 1, 2, u"6"},     {12, 1, 3, u"*"},    {21, 1, 4, u"高"}, {17, 1, 5, u"數量"},
                          {1, 2, 0, u"1"},     {2, 2, 1, u"2"},     {3, 2, 2, u"3"},   {11, 2, 3, u"-"},
                          {18, 2, 4, u"基重"}, {19, 2, 5, u"單價"}, {0, 3, 0, u"0"},   {14, 3, 1, u"."},
                          {23, 3, 2, u"("},    {10, 3, 3, u"+"},    {22, 3, 4, u")"},  {20, 3, 5, u"C"}};
constexpr int ClearKey = 20;

} // namespace

class frm原料計價公式 : public ScreenFrame {
public:
    explicit frm原料計價公式(Process& on)
        : ScreenFrame(on, infoOf(on.session)), conversion(session.formulaMode == u"單位換算") {
        auto* column = new QVBoxLayout(recordPage());
        column->setContentsMargins(10, 8, 10, 8);
        buildOptions(column);
        grid = new LineGrid(u"fml明細"_s, session.messages, recordPage());
        grid->prepareGrid(columnsOf(conversion));
        column->addWidget(grid, 1);
        buildBottom(column);
        connectGrid();
    }

protected:
    void prepare() override {
        guarded(session, u"取得所有片語資料錯誤"_s,
                [this] { phraseCache = loadPhrases(session, u"AB-單位"_s); });
    }

    void start() override {
        showPage(ModeEdit);
        for (int panel = 1; panel <= 8; ++panel)
            setStatus(panel, QString());
        if (conversion) {
            formulaKind = u"單位換算"_s;
            loadFormulas();
        } else {
            choose(1);
        }
        grid->setFocus(Qt::TabFocusReason);
    }

    int showRecord(const QString&) override { return 0; }
    void endOpenEdit() override { grid->endEdit(); }
    QString refusalText() const override { return RefusedText; }

    void saveRecord() override {
        if (!rights.修改) {
            refuse();
            return;
        }
        setEnabled(false);
        saveFormulaRows();
        setEnabled(true);
        grid->setFocus(Qt::OtherFocusReason);
    }

private:
    QString pricingTitle() const { return conversion ? u"換算單位"_s : u"計價單位"_s; }

    void buildOptions(QVBoxLayout* column) {
        auto* panel = new QWidget(recordPage());
        panel->setObjectName(u"SSPanel1"_s);
        auto* line = new QHBoxLayout(panel);
        line->setContentsMargins(2, 0, 2, 0);
        for (int i = 0; const auto& caption : {u"紙品"_s, u"紙板"_s}) {
            auto* option = new QRadioButton(caption, panel);
            option->setObjectName(u"sopt類別(%1)"_s.arg(i));
            connect(option, &QRadioButton::clicked, this, [this, i] { choose(i); });
            line->addWidget(option);
            options.push_back(option);
            ++i;
        }
        line->addStretch(1);
        panel->setVisible(!conversion);
        column->addWidget(panel);
    }

    void buildBottom(QVBoxLayout* column) {
        auto* line = new QHBoxLayout;
        removeButton = new QPushButton(u"明細刪除"_s, recordPage());
        removeButton->setObjectName(u"scmd刪除"_s);
        removeButton->setFocusPolicy(Qt::NoFocus);
        line->addWidget(removeButton, 0, Qt::AlignTop);
        line->addStretch(1);
        picCal = new QFrame(recordPage());
        picCal->setObjectName(u"picCal"_s);
        picCal->setProperty("card", true);
        auto* keys = new QGridLayout(picCal);
        keys->setContentsMargins(8, 6, 8, 6);
        keys->setSpacing(4);
        for (const PadKey& key : pad) {
            auto* made = new QPushButton(QString::fromUtf16(key.caption), picCal);
            made->setObjectName(u"scmdNum(%1)"_s.arg(key.index));
            made->setFocusPolicy(Qt::NoFocus);
            made->setFixedWidth(58);
            connect(made, &QPushButton::clicked, this,
                    [this, key] { padPressed(key.index, QString::fromUtf16(key.caption)); });
            keys->addWidget(made, key.row, key.column);
        }
        // The grid keeps its size when the pad comes and goes.
        QSizePolicy policy = picCal->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        picCal->setSizePolicy(policy);
        picCal->hide();
        line->addWidget(picCal);
        column->addLayout(line);
    }

    void connectGrid() {
        grid->events.entered = [this](int, const QString& title) {
            picCal->setVisible(title == u"計算公式");
            updateDelete();
        };
        grid->events.list = [this](int row, const QString& title) {
            return title == u"計算公式"
                       ? QStringList()
                       : cellList(u"AB-單位"_s, u"耗材類"_s, grid->text(row, title), phraseCache);
        };
        grid->events.edited = [this](int, const QString&, const QString&, bool) {
            updateDelete();
            return true;
        };
        grid->events.modified = [this] { markModified(true); };
        grid->events.notice = [this](const QString& text) { showNotice(text); };
        connect(grid, &LineGrid::lineCountChanged, this, [this] { updateDelete(); });
        connect(removeButton, &QPushButton::clicked, this, [this] {
            grid->deleteGridRow(grid->currentRow());
            grid->setLineCount(grid->lineCount() - 1);
            markModified(true);
            grid->setFocus(Qt::OtherFocusReason);
        });
    }

    void updateDelete() {
        removeButton->setEnabled(grid->lineCount() > 0 && grid->currentRow() <= grid->lineCount());
    }

    void padPressed(int index, const QString& caption) {
        grid->endEdit();
        const int row = grid->currentRow();
        if (!grid->previousRowFilled(row)) {
            session.messages.warn(u"警告"_s, u"前一列資料尚未輸入!"_s);
            return;
        }
        QString text = grid->text(row, u"計算公式"_s);
        if (index == ClearKey) {
            text.chop(1);
        } else {
            text += caption;
        }
        grid->commit(row, grid->column(u"計算公式"_s), text, false);
    }

    void choose(int option) {
        options[static_cast<size_t>(option)]->setChecked(true);
        formulaKind = options[static_cast<size_t>(option)]->text();
        loadFormulas();
    }

    void loadFormulas() {
        discardTyping();
        grid->clearGrid();
        guarded(session, u"顯示資料錯誤"_s, [this] {
            Connection connection(session.pool, session.connectionString);
            int row = 0;
            for (const PricingFormula& formula : loadFormulasOf(connection, formulaKind))
                grid->setRowTexts(++row, {formula.單位1.trimmed(), formula.單位2.trimmed(),
                                          formula.基本單位.trimmed(), formula.計價單位.trimmed(),
                                          formula.公式.trimmed()});
            grid->setLineCount(row);
        });
    }

    void saveFormulaRows() {
        for (int row = 1; row <= grid->lineCount(); ++row) {
            const auto missing = [&](const QString& title, const QString& text) {
                if (!grid->text(row, title).trimmed().isEmpty()) return false;
                session.messages.warn(u"提示"_s, text.arg(row));
                grid->select(row, title);
                return true;
            };
            if (missing(pricingTitle(), u"第%1筆明細計價單位為必輸入項目!"_s) ||
                missing(u"計算公式"_s, u"第%1筆明細公式為必輸入項!"_s))
                return;
        }
        FormulaTable rows;
        for (int row = 1; row <= grid->lineCount(); ++row) {
            const QStringList texts = grid->rowTexts(row);
            rows.push_back({texts[0], texts[1], texts[2], texts[3], texts[4], {}, formulaKind});
        }
        try {
            Busy busy(session.messages);
            saveFormulas(session, formulaKind, rows);
        } catch (const DatabaseError&) {
            session.messages.stop(u"儲存錯誤"_s, u"保存失敗，請檢查公式設置是否有重複項"_s);
            return;
        }
        markModified(false);
        session.messages.inform(u"儲存"_s,
                                u"儲存完畢,新的設定必須重新調入採購作業系統或入庫作業系統才能生效"_s);
    }

    bool conversion;
    LineGrid* grid;
    QPushButton* removeButton;
    QFrame* picCal;
    std::vector<QRadioButton*> options;
    QString formulaKind;
    PhraseCache phraseCache;
};

void registerFormulaScreen(Process& process) {
    process.registerScreen(u"frm原料計價公式"_s,
                           [](Process& on) -> ScreenFrame* { return new frm原料計價公式(on); });
}

} // namespace liaowu
