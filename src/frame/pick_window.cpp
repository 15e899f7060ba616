#include "frame/pick_window.h"
#include "common/guard.h"
#include "data/recordset.h"
#include "frame/browse_grid.h"
#include "frame/entry_view.h"
#include "frame/process.h"
#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>

namespace liaowu {

using namespace Qt::StringLiterals;

PickWindow::PickWindow(Process& on, PickSpec declared, QWidget* owner)
    : QDialog(owner), process(on), spec(std::move(declared)) {
    setObjectName(spec.name);
    setWindowTitle(spec.title);
    build();
    resize(760, 460);
    if (owner) {
        const QRect area = owner->window()->geometry();
        move(area.right() - width() - 40, area.top() + 110);
    }
}

void PickWindow::build() {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(10, 10, 10, 6);
    auto* line = new QHBoxLayout;
    if (spec.withFilter) {
        filter = new EntryField(u"txt查詢"_s, this);
        filter->setPlaceholderText(u"輸入以篩選"_s);
        filter->setFixedWidth(200);
        filter->showText(process.session.pickParam);
        filter->installEventFilter(this);
        line->addWidget(filter);
        auto* confirm = new QPushButton(u"查詢"_s, this);
        confirm->setObjectName(u"cmd確定"_s);
        confirm->setAutoDefault(false);
        connect(confirm, &QPushButton::clicked, this, [this] { run(false); });
        line->addWidget(confirm);
        if (spec.filterEachKey) connect(filter, &EntryField::typedInto, this, [this] { run(true); });
    }
    for (int i = 0; i < spec.sortOptions.size(); ++i) {
        auto* option = new QRadioButton(spec.sortOptions[i], this);
        option->setObjectName(u"opt排序(%1)"_s.arg(i));
        option->setChecked(i == 0);
        connect(option, &QRadioButton::clicked, this, [this] { run(false); });
        line->addWidget(option);
        sorts.push_back(option);
    }
    if (!spec.checkBox.isEmpty()) {
        box = new QCheckBox(spec.checkBox, this);
        box->setObjectName(u"chk選項"_s);
        connect(box, &QCheckBox::clicked, this, [this] { run(false); });
        line->addWidget(box);
    }
    if (spec.dateLabels.size() == 2) {
        const auto date = [&](const QString& name, const QString& caption, const QString& value) {
            line->addWidget(new QLabel(caption, this));
            auto* made = new EntryField(name, this);
            made->filterMode = 1;
            made->setMaxLength(8);
            made->setFixedWidth(90);
            made->showText(value);
            made->installEventFilter(this);
            line->addWidget(made);
            return made;
        };
        from = date(u"txt起始日期"_s, spec.dateLabels[0], spec.from);
        to = date(u"txt結束日期"_s, spec.dateLabels[1], spec.to);
    }
    line->addStretch(1);
    column->addLayout(line);
    grid = new BrowseGrid(u"MSHFlexGrid1"_s, process.session, this);
    grid->allowSeveral(spec.several);
    column->addWidget(grid, 1);
    count = new QLabel(this);
    count->setObjectName(u"lbl筆數"_s);
    column->addWidget(count);
    connect(grid, &BrowseGrid::accepted, this, &PickWindow::take);
    connect(grid, &BrowseGrid::letterTyped, this, [this](const QString& text) {
        if (filter) filter->startWith(text);
    });
}

void PickWindow::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (opened) return;
    opened = true;
    run(false);
}

void PickWindow::run(bool keepFocus) {
    PickInput input;
    input.filter = filter ? filter->text().trimmed() : process.session.pickParam.trimmed();
    for (size_t i = 0; i < sorts.size(); ++i)
        if (sorts[i]->isChecked()) input.sort = static_cast<int>(i);
    input.checked = box && box->isChecked();
    if (from) input.from = from->text();
    if (to) input.to = to->text();
    QHash<QString, int> widths;
    for (auto it = spec.widths.begin(); it != spec.widths.end(); ++it)
        widths.insert(it.key(), pixelsOfTwips(it.value()));
    if (!process.session.amountRight)
        for (const QString& money : spec.moneyColumns)
            widths.insert(money, 0);
    guarded(process.session, spec.errorTitle, [&] {
        Connection connection(process.session.pool, process.session.connectionString);
        Recordset rows;
        for (const SqlText& statement : spec.statements(process.session, input)) {
            rows = select(connection, statement);
            if (rows.RecordCount() > 0) break;
        }
        grid->show(std::move(rows), widths);
    });
    count->setText(u"共 %1 筆"_s.arg(grid->lineCount()));
    for (int row = 1; row <= grid->lineCount(); ++row) {
        if (grid->rows().textAt(row - 1, 0).trimmed().compare(input.filter, Qt::CaseInsensitive) != 0)
            continue;
        grid->selectRow1(row);
        break;
    }
    if (!keepFocus) grid->setFocus();
}

void PickWindow::take() {
    result_.clear();
    for (const int row : spec.several ? grid->selectedRows() : std::vector<int>{grid->currentRow()})
        if (row > 0) result_.push_back(grid->rowTexts(row));
    accept();
}

bool PickWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            run(false);
            return true;
        }
        if (watched == filter && (key == Qt::Key_Down || key == Qt::Key_Up)) {
            grid->setFocus();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void PickWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QDialog::keyPressEvent(event);
    } else if (auto* pressed = qobject_cast<QPushButton*>(focusWidget())) {
        pressed->click();
    } else {
        focusNextChild();
    }
}

std::vector<QStringList> pickRows(Process& process, const PickSpec& spec, QWidget* owner) {
    process.session.pickResult.clear();
    process.session.requisitionPickRows.clear();
    PickWindow window(process, spec, owner);
    process.desktop.runModal(window);
    return window.picked();
}

bool pickRow(Process& process, const PickSpec& spec, QWidget* owner) {
    const std::vector<QStringList> rows = pickRows(process, spec, owner);
    if (!rows.empty()) process.session.pickResult = rows.front();
    return !process.session.picked(0).isEmpty();
}

} // namespace liaowu
