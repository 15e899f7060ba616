#include "purchasing/order_page_view.h"
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

using namespace column_flags;

/// Width in twips, limit in Big5 bytes, filter mode; Entry marks where Enter stops.
constexpr LineColumnRow columns[] = {
    {u"申購單號", 1350, 0, 0, Typed | Pick},
    {u"工單單號", 1050, 0, 0, Typed | Pick | Upper | BoardOnly},
    {u"客戶代號", 0, 0, 0, 0},
    {u"客戶", 1000, 0, 0, BoardOnly},
    {u"紙箱代號", 0, 0, 0, 0},
    {u"料號", 1000, 0, 0, BoardOnly},
    {u"代號", 1200, 20, 0, Typed | Entry | Pick | Upper},
    {u"廠商品名", 1000, 40, 0, Typed | BoardOnly},
    {u"內部品名", 1500, 40, 0, Typed},
    {u"規格", 1000, 40, 0, Typed | Entry},
    {u"大紙數", 900, 20, 3, Typed | Entry | Right},
    {u"單價", 850, 20, 3, Typed | Entry | Right | Money},
    {u"單位", 700, 10, 0, Typed | Entry},
    {u"小計", 1050, 0, 0, Right | Money},
    {u"交貨日", 1000, 0, 0, Typed | Entry | Upper},
    {u"楞別", 600, 10, 0, Typed | BoardOnly},
    {u"剖切尺寸", 1000, 40, 0, Typed | BoardOnly},
    {u"壓線種類", 1000, 10, 0, Typed | BoardOnly},
    {u"壓線尺寸", 1000, 40, 0, Typed | BoardOnly},
    {u"走紙才", 700, 4, 1, Typed | Right | BoardOnly},
    {u"小紙數", 800, 0, 0, Right | BoardOnly},
    {u"原單價", 0, 0, 0, Money},
    {u"原小計", 0, 0, 0, Money},
    {u"已交數", 800, 10, 3, Typed | Right},
    {u"未交數", 800, 0, 0, Right},
    {u"送清", 500, 1, 6, Typed | Upper},
    {u"計價公式", 0, 0, 0, Money},
    {u"備註", 1600, 50, 0, Typed},
    {u"採購序", 0, 0, 0, 0},
    {u"已檢驗數", 0, 0, 0, 0},
    {u"檢驗合格數", 0, 0, 0, 0},
    {u"採購單號", 0, 0, 0, 0},
};

} // namespace

DocumentSpec orderDocumentSpec(const QString& category) {
    using Kind = FieldSpec::Kind;
    DocumentSpec spec;
    spec.header = {
        {Kind::Entry, u"txt採購單號"_s, u"採購單號"_s, 0, 0, 150},
        {Kind::Entry, u"txt採購日期"_s, u"採購日期"_s, 0, 1, 110, 0, 1},
        {Kind::Combo, u"Cbo類別"_s, u"類別"_s, 0, 2, 118},
        {Kind::Combo, u"cbo採購類別"_s, u"採購類別"_s, 0, 3, 110},
        {Kind::Lookup, u"txt廠商代號"_s, u"廠商代號"_s, 1, 0, 122, 10, 0, true, u"scmd廠商代號"_s,
         u"lbl廠商簡稱"_s},
        {Kind::Combo, u"cbo幣別"_s, u"幣別"_s, 1, 1, 110},
        {Kind::Value, u"Lbl分數"_s, u"分數"_s, 1, 2, 60},
        {Kind::Check, u"chk稅"_s, u"稅"_s, 1, 3},
        {Kind::Lookup, u"txt業務員代號"_s, u"採購人員"_s, 2, 0, 122, 8, 0, true, u"scmd業務員"_s,
         u"lbl業務員名稱"_s},
        {Kind::Lookup, u"txt申購單位"_s, u"申購單號"_s, 2, 1, 110, 20, 0, true, u"sscmd申購單位"_s},
        {Kind::Entry, u"txt工單單號"_s, u"工單單號"_s, 2, 2, 118, 20},
    };
    spec.lines = lineColumns(columns, category != u"物料");
    spec.frozenTitle = u"代號"_s;
    spec.approval.alreadyApproved = u"該單已審單,請先取消審單"_s;
    spec.quickFindUnknown = u"查無此採購單,請確認輸入單號是否正確!"_s;
    return spec;
}

void buildOrderFooter(QHBoxLayout* line, QWidget* owner) {
    auto* quality = new QPushButton(u"品質要求"_s, owner);
    quality->setObjectName(u"scmd品質要求"_s);
    quality->setFocusPolicy(Qt::NoFocus);
    line->addWidget(quality);
    auto* stock = new QWidget(owner);
    stock->setObjectName(u"pic產品視窗"_s);
    auto* figures = new QHBoxLayout(stock);
    figures->setContentsMargins(6, 0, 0, 0);
    figures->setSpacing(5);
    addFigure(figures, stock, u"lbl品名"_s, {});
    addFigure(figures, stock, u"lbl實際庫存"_s, u"實際庫存"_s);
    addFigure(figures, stock, u"lbl安全庫存"_s, u"安全庫存"_s);
    addFigure(figures, stock, u"lbl在單量"_s, u"在單量"_s);
    addFigure(figures, stock, u"LBL在產量"_s, u"在領量"_s);
    addFigure(figures, stock, u"Lbl可用庫存"_s, u"可用庫存"_s);
    line->addWidget(stock);
    auto* hint = new QLabel(u"雙擊可查看該原料歷史單價記錄!"_s, owner);
    hint->setObjectName(u"pic提示"_s);
    hint->setProperty("hint", true);
    hint->hide();
    line->addWidget(hint);
    line->addStretch(1);
    auto* caption = new QLabel(u"合計:"_s, owner);
    caption->setObjectName(u"lbl合計"_s);
    caption->setProperty("caption", true);
    line->addWidget(caption);
    auto* total = new QLabel(owner);
    total->setObjectName(u"lbl合計金額"_s);
    total->setProperty("total", true);
    line->addWidget(total);
    // The total as a number, and the real one whatever the user may see.
    for (const auto& name : {u"txt合計"_s, u"txt合計備用"_s}) {
        auto* field = new EntryField(name, owner);
        field->leftAlone = true;
        lockKeyField(field);
        field->hide();
    }
}

namespace {

QFrame* panelWith(QWidget* page, const QString& name, const QString& caption, QHBoxLayout*& head,
                  QPlainTextEdit*& text, const QString& textName) {
    auto* panel = new QFrame(page);
    panel->setObjectName(name);
    panel->setProperty("card", true);
    panel->setFixedSize(360, 190);
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(10, 8, 10, 10);
    head = new QHBoxLayout;
    auto* title = new QLabel(caption, panel);
    title->setProperty("valueLabel", true);
    head->addWidget(title);
    head->addStretch(1);
    column->addLayout(head);
    text = new QPlainTextEdit(panel);
    text->setObjectName(textName);
    column->addWidget(text, 1);
    panel->hide();
    return panel;
}

} // namespace

QFrame* buildNotesPanel(QWidget* page) {
    QHBoxLayout* head = nullptr;
    QPlainTextEdit* text = nullptr;
    QFrame* panel = panelWith(page, u"pic經驗"_s, u"廠商注意事項"_s, head, text, u"txt經驗傳承"_s);
    text->setReadOnly(true);
    text->setFocusPolicy(Qt::ClickFocus);
    auto* score = new QLabel(panel);
    score->setObjectName(u"lbl目前分數"_s);
    score->setProperty("caption", true);
    head->addWidget(score);
    head->addSpacing(10);
    auto* close = new QPushButton(u"關閉"_s, panel);
    close->setObjectName(u"LblClose經驗"_s);
    close->setFocusPolicy(Qt::NoFocus);
    head->addWidget(close);
    return panel;
}

QFrame* buildQualityPanel(QWidget* page) {
    QHBoxLayout* head = nullptr;
    QPlainTextEdit* text = nullptr;
    QFrame* panel = panelWith(page, u"SSFrame1"_s, u"品質要求"_s, head, text, u"txt品質要求"_s);
    text->setTabChangesFocus(true);
    auto* close = new QPushButton(u"關閉"_s, panel);
    close->setObjectName(u"Label19"_s);
    close->setFocusPolicy(Qt::NoFocus);
    head->addWidget(close);
    return panel;
}

void placePanel(QFrame* panel, QWidget* page) {
    panel->move(page->width() - panel->width() - 24, page->height() - panel->height() - 64);
    panel->raise();
}

} // namespace liaowu
