#include "frame/batch_page.h"
#include "common/guard.h"
#include "data/recordset.h"
#include "frame/browse_grid.h"
#include "frame/form_view.h"
#include "frame/line_grid.h"
#include "frame/process.h"
#include <QEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

/// A label that a double click answers.
class ClosingLabel : public QLabel {
public:
    using QLabel::QLabel;
    std::function<void()> doubleClicked;

protected:
    void mouseDoubleClickEvent(QMouseEvent*) override { doubleClicked(); }
};

} // namespace

BatchPage::BatchPage(Process& on, BatchSpec declared, QWidget* parent)
    : QWidget(parent), process(on), spec(std::move(declared)) {
    setObjectName(spec.page);
    build();
}

void BatchPage::build() {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(10, 8, 10, 8);
    auto* card = new QFrame(this);
    card->setProperty("card", true);
    auto* line = new QHBoxLayout(card);
    const auto box = [&](const QString& name, const QString& caption, bool date) {
        auto* text = new QLabel(caption, card);
        text->setProperty("caption", true);
        line->addWidget(text);
        auto* field = new EntryField(name, card);
        field->setFixedWidth(110);
        if (date) {
            field->filterMode = 1;
            field->setMaxLength(8);
        }
        line->addWidget(field);
    };
    box(spec.dateBoxes[0], u"日期:"_s, true);
    box(spec.dateBoxes[1], u"至"_s, true);
    box(spec.numberBoxes[0], u"單號:"_s, false);
    box(spec.numberBoxes[1], u"至"_s, false);
    const auto command = [&](const QString& name, const QString& caption, auto action) {
        auto* made = new QPushButton(caption, card);
        made->setObjectName(name);
        line->addWidget(made);
        connect(made, &QPushButton::clicked, this, action);
    };
    command(u"scmd確定1"_s, u"列出"_s, [this] { load(); });
    command(u"scmd審單"_s, u"全部審單"_s, [this] { markAll(); });
    line->addStretch(1);
    column->addWidget(card);

    grid = new LineGrid(u"fml整批審單"_s, process.session.messages, this);
    std::vector<LineColumn> columns;
    for (const BatchSpec::Column& declared : spec.columns) {
        LineColumn made{declared.title, declared.width};
        if (declared.title == spec.markTitle) {
            made.limit = 1;
            made.filter = 6;
            made.typable = made.entry = true;
        }
        columns.push_back(made);
    }
    grid->prepareGrid(columns);
    column->addWidget(grid, 1);
    grid->events.mayType = [this](int row, const QString&) { return row <= grid->lineCount(); };
    grid->events.edited = [this](int row, const QString& title, const QString&, bool) {
        const QString mark = grid->text(row, title);
        return mark.isEmpty() || mark == u"Y" || mark == u"N";
    };
    grid->events.entered = [this](int row, const QString& title) {
        if (title == spec.columns.front().title) showDetail(row);
    };
    grid->events.doubleClicked = [this](int row, const QString& title) {
        if (title == spec.markTitle) flip(row);
    };

    panel = new QFrame(this);
    panel->setObjectName(u"pic訂單明細"_s);
    panel->setProperty("card", true);
    auto* lines = new QVBoxLayout(panel);
    auto* caption = new ClosingLabel(u"雙擊可關閉畫面"_s, panel);
    caption->setObjectName(u"lbl關閉明細"_s);
    caption->setProperty("caption", true);
    caption->doubleClicked = [this] { panel->hide(); };
    lines->addWidget(caption);
    detail = new BrowseGrid(u"fmlDetail"_s, process.session, panel);
    lines->addWidget(detail, 1);
    panel->setFixedHeight(220);
    panel->hide();
    column->addWidget(panel);
}

void BatchPage::endEdit() {
    grid->endEdit();
}

void BatchPage::open() {
    entry(this, spec.dateBoxes[0])->showText(spec.defaults.fromDate);
    entry(this, spec.dateBoxes[1])->showText(spec.defaults.toDate);
    entry(this, spec.numberBoxes[0])->showText(spec.defaults.fromNumber);
    entry(this, spec.numberBoxes[1])->showText(spec.defaults.toNumber);
    load();
    grid->setFocus(Qt::OtherFocusReason);
}

void BatchPage::load() {
    grid->clearGrid();
    panel->hide();
    shown.clear();
    guarded(process.session, u"開始查詢錯誤"_s, [this] {
        Connection connection(process.session.pool, process.session.connectionString);
        const BatchInput input{entry(this, spec.dateBoxes[0])->text(), entry(this, spec.dateBoxes[1])->text(),
                               entry(this, spec.numberBoxes[0])->text(),
                               entry(this, spec.numberBoxes[1])->text()};
        const Recordset rows = select(connection, spec.list(input));
        const int count = std::min(rows.RecordCount(), LineModel::MaxRows);
        for (int row = 0; row < count; ++row) {
            QStringList texts;
            for (int c = 0; c < rows.columnCount(); ++c)
                texts << rows.textAt(row, c).trimmed();
            grid->setRowTexts(row + 1, texts);
        }
        grid->setLineCount(count);
    });
    Q_EMIT listed(grid->lineCount());
}

void BatchPage::markAll() {
    grid->endEdit();
    if (grid->lineCount() == 0) return;
    const QString mark = grid->text(1, spec.markTitle) == u"Y" ? u"N"_s : u"Y"_s;
    for (int row = 1; row <= grid->lineCount(); ++row)
        grid->setText(row, spec.markTitle, mark);
}

void BatchPage::flip(int row) {
    if (row > grid->lineCount()) return;
    grid->setText(row, spec.markTitle, grid->text(row, spec.markTitle) == u"Y" ? u"N"_s : u"Y"_s);
}

void BatchPage::showDetail(int row) {
    const QString number = grid->text(row, spec.columns.front().title);
    if (number.isEmpty() || number == shown) return;
    shown = number;
    guarded(process.session, u"顯示資料錯誤"_s, [&] {
        Connection connection(process.session.pool, process.session.connectionString);
        detail->show(select(connection, spec.detail(number)), {});
    });
    panel->show();
}

void BatchPage::approveMarked() {
    grid->endEdit();
    QStringList numbers;
    for (int row = 1; row <= grid->lineCount(); ++row)
        if (grid->text(row, spec.markTitle) == u"Y") numbers << grid->text(row, spec.columns.front().title);
    if (numbers.isEmpty()) return;
    QStringList failed;
    int done = 0;
    {
        Busy busy(process.session.messages);
        for (const QString& number : std::as_const(numbers)) {
            // What is approved is approved: stopping in between leaves nothing half done.
            if (!process.desktop.progress(u"整批審單"_s, done, static_cast<int>(numbers.size()))) break;
            try {
                spec.approve(number);
            } catch (const DatabaseError& error) {
                failed << number + u": "_s + error.text;
            }
            ++done;
        }
        process.desktop.progress(u"整批審單"_s, static_cast<int>(numbers.size()),
                                 static_cast<int>(numbers.size()));
    }
    if (!failed.isEmpty()) process.session.messages.stop(u"回填批審錯誤"_s, failed.join(u'\n'));
    process.session.messages.notice(u"已處理 %1 筆,共 %2 筆"_s.arg(done).arg(numbers.size()));
    load();
}

} // namespace liaowu
