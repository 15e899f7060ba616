#include "warehouse/receipt_page_view.h"
#include <QHBoxLayout>
#include <QLabel>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

using namespace column_flags;

/// Width in twips, limit in Big5 bytes, filter mode; Entry marks where Enter stops. What the order line hands over is not
/// typed.
constexpr LineColumnRow columns[] = {
    {u"採購單號", 1250, 30, 0, Typed | Entry | Pick | Upper},
    {u"原料代號", 1300, 30, 0, Typed | Upper},
    {u"原料名稱", 1700, 30, 0, Typed | Pick},
    {u"規格", 1150, 30, 0, Typed},
    {u"數量", 950, 15, 3, Typed | Entry | Right},
    {u"備品", 750, 15, 3, Typed | Entry | Right},
    {u"單價", 900, 15, 3, Typed | Entry | Right | Money},
    {u"單位", 600, 30, 0, Typed},
    {u"小計", 1050, 0, 0, Right | Money},
    {u"走紙才", 700, 10, 1, Typed | Right | BoardOnly},
    {u"單位", 600, 0, 0, 0},
    {u"小紙數", 900, 10, 3, Typed | Right | BoardOnly},
    {u"剖切尺寸", 1000, 30, 0, Typed | BoardOnly},
    {u"原單價", 0, 0, 0, Money},
    {u"原小計", 0, 0, 0, Money},
    {u"備註", 1500, 30, 0, Typed},
    {u"檢驗單號", 1100, 0, 0, 0},
    {u"檢驗員", 800, 30, 0, Typed},
    {u"檢驗", 550, 30, 0, Typed},
    {u"報關單號", 1100, 30, 0, Typed},
    {u"備案單號", 1100, 30, 0, Typed},
    {u"計價公式", 2150, 0, 0, Money},
    {u"採購序", 650, 0, 0, Right},
};

} // namespace

QStringList receiptMoneyTexts() {
    return {u"計價公式"_s};
}

DocumentSpec receiptDocumentSpec(const QString& category) {
    using Kind = FieldSpec::Kind;
    DocumentSpec spec;
    spec.header = {
        {Kind::Entry, u"txt入庫單號"_s, u"入庫單號"_s, 0, 0, 150, 30, 0, true},
        {Kind::Entry, u"txt入庫日期"_s, u"入庫日期"_s, 0, 1, 110, 8, 1},
        {Kind::Combo, u"Cbo單別"_s, u"單別"_s, 0, 2, 130},
        {Kind::Combo, u"Cbo倉別"_s, u"儲位"_s, 0, 3, 130},
        {Kind::Lookup, u"txt廠商代號"_s, u"廠商代號"_s, 1, 0, 122, 20, 0, true, u"scmd廠商代號"_s,
         u"lbl廠商簡稱"_s},
        {Kind::Combo, u"cbo幣別"_s, u"幣別"_s, 1, 1, 110},
        {Kind::Entry, u"txt廠商單號"_s, u"廠商單號"_s, 1, 2, 130, 40},
        {Kind::Entry, u"txt檢驗單號"_s, u"檢驗單號"_s, 1, 3, 130},
        {Kind::Lookup, u"txt業務員代號"_s, u"入庫驗收"_s, 2, 0, 122, 8, 0, true, u"scmd業務員"_s,
         u"lbl業務員名稱"_s},
        {Kind::Lookup, u"txt採購單號"_s, u"採購單號"_s, 2, 1, 110, 30, 0, true, u"scmd採購單號"_s},
        {Kind::Entry, u"txt付款年月"_s, u"付款年月"_s, 2, 2, 90, 6, 1},
        {Kind::Entry, u"txt對帳日期"_s, u"對帳月份"_s, 2, 3, 90, 6, 1},
        {Kind::Entry, u"txt備註"_s, u"備註"_s, 3, 0, 420, 200, 0, false, {}, {}, 3},
    };
    spec.lines = lineColumns(columns, category != u"物料");
    spec.frozenTitle = u"採購單號"_s;
    spec.approval.kind = u"復核"_s;
    spec.approval.markField = u"txt復核"_s;
    spec.approval.personLabels = u"txt復核項"_s;
    spec.approval.panel = u"pic復核"_s;
    spec.approval.approve = &UserRights::審核;
    spec.approval.reverse = &UserRights::批核;
    // A receipt that is approved takes a second stamp.
    spec.approval.alreadyApproved.clear();
    spec.approval.saveParameter = u"復核"_s;
    spec.quickFindUnknown = u"查無此入庫單,請確認輸入單號是否正確!"_s;
    return spec;
}

void buildReceiptFooter(QHBoxLayout* line, QWidget* owner) {
    using Figures = std::vector<std::pair<QString, QString>>;
    for (const auto& [name, figures] :
         {std::pair(u"pic數量"_s, Figures{{u"lbl應入數"_s, u"應入數"_s}, {u"lbl未入數"_s, u"未入數"_s}}),
          std::pair(u"pic庫存"_s, Figures{{u"lbl庫存"_s, u"庫存"_s}})}) {
        auto* group = new QWidget(owner);
        group->setObjectName(name);
        auto* inner = new QHBoxLayout(group);
        inner->setContentsMargins(6, 0, 0, 0);
        inner->setSpacing(5);
        for (const auto& [label, caption] : figures)
            addFigure(inner, group, label, caption);
        group->hide();
        line->addWidget(group);
    }
    line->addStretch(1);
    auto* caption = new QLabel(u"合計:"_s, owner);
    caption->setObjectName(u"lbl合計"_s);
    caption->setProperty("caption", true);
    line->addWidget(caption);
    auto* total = new EntryField(u"txt合計"_s, owner);
    total->filterMode = 3;
    total->byteLimit = 20;
    total->setFixedWidth(140);
    total->setAlignment(Qt::AlignRight);
    line->addWidget(total);
    // The real total, whatever the user may see.
    auto* real = new EntryField(u"txt合計備用"_s, owner);
    real->leftAlone = true;
    real->hide();
}

} // namespace liaowu
