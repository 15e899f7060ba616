#include "frame/search_page.h"
#include "common/guard.h"
#include "data/recordset.h"
#include "frame/browse_grid.h"
#include "frame/entry_view.h"
#include "frame/process.h"
#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

QPushButton* pushButton(const QString& name, const QString& caption, QWidget* parent) {
    auto* made = new QPushButton(caption, parent);
    made->setObjectName(name);
    made->setAutoDefault(true);
    return made;
}

} // namespace

SearchPage::SearchPage(Process& on, SearchSpec declared, QWidget* parent)
    : QWidget(parent), process(on), spec(std::move(declared)) {
    setObjectName(u"pic查詢明細表"_s);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(10, 8, 10, 8);
    auto* bar = new QHBoxLayout;
    toPanel = pushButton(u"scmd查詢條件"_s, u"查詢條件"_s, this);
    toRecord = pushButton(u"scmd看此資料"_s, u"看此資料"_s, this);
    toBack = pushButton(u"scmd回前畫面_查詢"_s, u"回前畫面"_s, this);
    for (QPushButton* made : {toPanel, toRecord, toBack})
        bar->addWidget(made);
    bar->addStretch(1);
    column->addLayout(bar);
    panel = new QFrame(this);
    panel->setObjectName(u"span查詢條件"_s);
    panel->setProperty("card", true);
    column->addWidget(panel);
    grid = new BrowseGrid(u"MSHFlexGrid1"_s, process.session, this);
    column->addWidget(grid, 1);
    buildPanel();
    panel->hide();

    connect(toPanel, &QPushButton::clicked, this, [this] {
        showPanel(true);
        chooseOption(searchOption);
    });
    connect(grid, &BrowseGrid::letterTyped, this, [this](const QString& letters) {
        toPanel->click();
        if (text->isVisible()) text->startWith(letters);
    });
    connect(toRecord, &QPushButton::clicked, this, [this] { choose(grid->currentRow()); });
    connect(toBack, &QPushButton::clicked, this, [this] {
        rememberTexts();
        Q_EMIT back();
    });
    connect(grid, &BrowseGrid::accepted, this, &SearchPage::choose);
    connect(grid, &BrowseGrid::rightClicked, this, &SearchPage::choose);
}

void SearchPage::buildPanel() {
    auto* lines = new QVBoxLayout(panel);
    auto* optionGrid = new QGridLayout;
    for (size_t i = 0; i < spec.conditions.size(); ++i) {
        auto* option = new QRadioButton(spec.conditions[i].caption, panel);
        option->setObjectName(u"sopt查詢條件(%1)"_s.arg(i));
        const int index = static_cast<int>(i);
        connect(option, &QRadioButton::clicked, this, [this, index] { chooseOption(index); });
        optionGrid->addWidget(option, index / 5, index % 5);
        options.push_back(option);
        kept << spec.conditions[i].defaultText;
    }
    lines->addLayout(optionGrid);
    auto* inputs = new QHBoxLayout;
    textLabel = new QLabel(panel);
    textLabel->setObjectName(u"lbl查詢名稱(0)"_s);
    text = new EntryField(u"txt查詢內容(0)"_s, panel);
    text->setFixedWidth(180);
    inputs->addWidget(textLabel);
    inputs->addWidget(text);
    dates = new QWidget(panel);
    auto* dateLine = new QHBoxLayout(dates);
    dateLine->setContentsMargins(0, 0, 0, 0);
    const auto dateBox = [&](int index, const QString& caption) {
        dateLine->addWidget(new QLabel(caption, dates));
        auto* box = new EntryField(u"txt查詢內容(%1)"_s.arg(index), dates);
        box->setFixedWidth(90);
        box->filterMode = 1;
        box->setMaxLength(8);
        dateLine->addWidget(box);
        return box;
    };
    from = dateBox(2, u"起始日期:"_s);
    to = dateBox(3, u"結束日期:"_s);
    inputs->addWidget(dates);
    for (const SearchCheck& declared : spec.checks) {
        auto* box = new QCheckBox(declared.caption, panel);
        box->setObjectName(declared.control);
        connect(box, &QCheckBox::clicked, this, [this] { run(); });
        inputs->addWidget(box);
        checks.push_back(box);
    }
    auto* confirm = pushButton(u"scmd確定"_s, u"確 定"_s, panel);
    auto* cancel = pushButton(u"scmd取消"_s, u"取 消"_s, panel);
    inputs->addWidget(confirm);
    inputs->addWidget(cancel);
    inputs->addStretch(1);
    lines->addLayout(inputs);
    connect(confirm, &QPushButton::clicked, this, [this] {
        showPanel(false);
        run();
        grid->setFocus();
    });
    connect(cancel, &QPushButton::clicked, this, [this] {
        showPanel(false);
        grid->setFocus();
    });
    for (EntryField* box : {text, from, to})
        box->setProperty("ownsEnter", true);
    // Esc puts the conditions away, wherever among them the focus is, and not the screen with all that it holds.
    for (QWidget* inside : panel->findChildren<QWidget*>()) {
        inside->setProperty("ownsEscape", true);
        inside->installEventFilter(this);
    }
}

bool SearchPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if ((key == Qt::Key_Return || key == Qt::Key_Enter) && qobject_cast<EntryField*>(watched)) {
            showPanel(false);
            run();
            grid->setFocus();
            return true;
        }
        if (key == Qt::Key_Escape) {
            showPanel(false);
            grid->setFocus();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void SearchPage::showPanel(bool shown) {
    panel->setVisible(shown);
    for (QPushButton* made : {toPanel, toRecord, toBack})
        made->setEnabled(!shown);
}

void SearchPage::chooseOption(int option) {
    if (!kept.isEmpty()) kept[searchOption] = text->text();
    searchOption = option;
    const SearchCondition& condition = spec.conditions[static_cast<size_t>(option)];
    for (size_t i = 0; i < options.size(); ++i) {
        const bool chosenOne = static_cast<int>(i) == option;
        options[i]->setChecked(chosenOne);
        options[i]->setStyleSheet(chosenOne ? u"color: #ff0000;"_s : u"color: #808080;"_s);
    }
    textLabel->setText(condition.label);
    textLabel->setVisible(!condition.label.isEmpty());
    text->setVisible(!condition.label.isEmpty());
    text->byteLimit = condition.limit;
    text->filterMode = condition.filter;
    text->showText(kept.value(option));
    dates->setVisible(condition.withDates);
    if (text->isVisible()) text->setFocus();
}

void SearchPage::rememberTexts() {
    if (!kept.isEmpty()) kept[searchOption] = text->text();
}

SearchInput SearchPage::input() const {
    SearchInput result{searchOption, text->text().trimmed(), from->text(), to->text(), {}};
    for (const QCheckBox* box : checks)
        result.checks.insert(box->objectName(), box->isChecked());
    return result;
}

void SearchPage::fillDates() {
    if (datesKnown || !spec.defaultDates) return;
    const auto [first, last] = spec.defaultDates();
    datesKnown = !last.isEmpty();
    from->showText(first);
    to->showText(last);
}

void SearchPage::open(bool afresh) {
    showPanel(false);
    fillDates();
    if (afresh && !spec.conditions.empty()) {
        rememberTexts();
        searchOption = 0;
        text->showText(kept.value(0));
        text->setVisible(true);
    }
    run();
    grid->setFocus();
}

void SearchPage::run() {
    rememberTexts();
    guarded(process.session, u"開始查詢錯誤"_s, [this] {
        Connection connection(process.session.pool, process.session.connectionString);
        grid->show(select(connection, spec.statement(input())), spec.widths);
    });
    toRecord->setEnabled(grid->lineCount() > 0 && !panel->isVisible());
    Q_EMIT found(grid->lineCount());
}

void SearchPage::choose(int row) {
    if (row < 1) return;
    rememberTexts();
    const QStringList texts = grid->rowTexts(row);
    if (!texts.isEmpty() && !texts.last().trimmed().isEmpty()) Q_EMIT chosen(texts.last().trimmed());
}

} // namespace liaowu
