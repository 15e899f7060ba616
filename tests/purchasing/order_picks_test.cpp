#include "frame/item_picks.h"
#include "frame/lookups.h"
#include "purchasing/order_picks.h"
#include "purchasing/order_plant.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

class PickPlant : public OrderPlant {
public:
    /// What a window shows: the named columns of each row (all of them by default), joined by "|".
    QStringList offered(const PickSpec& spec, const PickInput& input, const QStringList& columns = {}) {
        Connection connection(pool, target);
        Recordset rows;
        for (const SqlText& statement : spec.statements(session, input)) {
            rows = select(connection, statement);
            if (rows.RecordCount() > 0) break;
        }
        titles = rows.columnNames();
        QStringList result;
        for (int row = 0; row < rows.RecordCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < rows.columnCount(); ++column)
                if (columns.isEmpty() || columns.contains(titles[column])) cells << rows.textAt(row, column);
            result << cells.join(u'|');
        }
        return result;
    }
    QStringList titles; ///< of the last window
};

} // namespace

TEST(OrderPicks, ItemWindowsShowTheirFamily) {
    PickPlant plant;
    plant.run({u"insert into 紙品資料 (紙品代號,紙品名稱,規格,庫存,單位,單價,進料單位,進價,幣別,卷筒紙) "
               u"values ('S1','白板','31*43','9 ','kg','3','令','30','台幣','平板紙')",
               u"update 物料資料 set 類別='油墨類',單價='11',品檢='Y' where 物料代號='M1'",
               u"update 浪紙資料 set 規格='90*60',庫存='4',單價='6',楞別='BC' where 浪紙代號='B3'"});
    struct Case {
        PickSpec spec;
        QString family, filter;
        QStringList titles, rows;
    };
    const auto titled = [](const QString& code, const QString& name, const QStringList& rest) {
        return QStringList{code, name} + rest;
    };
    const QStringList buying{u"規格"_s, u"庫存"_s, u"進料單位"_s, u"進價"_s, u"幣別"_s};
    const QStringList using_{u"規格"_s, u"庫存"_s, u"單位"_s, u"單價"_s, u"幣別"_s};
    const Case cases[] = {
        {orderItemPick(),
         u"物料"_s,
         u"油"_s,
         titled(u"物料代號"_s, u"物料名稱"_s, buying) + QStringList{u"類別"_s, u"楞別"_s},
         {u"M1|油墨|桶|100|kg|10|台幣|油墨類|"_s}},
        {orderItemPick(),
         u"紙板"_s,
         u"90*"_s,
         titled(u"紙板代號"_s, u"紙板名稱"_s, buying) + QStringList{u"類別"_s, u"楞別"_s},
         {u"B3|K300|90*60|4|㎡|7|台幣||BC"_s}},
        {orderItemPick(),
         u"紙品"_s,
         u"s1"_s,
         titled(u"紙品代號"_s, u"紙品名稱"_s, buying) + QStringList{u"卷筒紙"_s, u"楞別"_s},
         {u"S1|白板|31*43|9 |令|30|台幣|平板紙|"_s}},
        {orderItemPick(),
         u"凸版"_s,
         u"脂"_s,
         titled(u"主料代號"_s, u"主料名稱"_s, buying) + QStringList{u"類別"_s, u"楞別"_s},
         {u"P1|樹脂版|||片|90|台幣||"_s}},
        {requisitionItemPick(), u"物料"_s, u"M1"_s, {}, {u"M1|油墨|桶|100|kg|11|台幣|Y|"_s}},
        {requisitionItemPick(), u"紙板"_s, u"B3"_s, {}, {u"B3|K300|90*60|4|pcs|6|台幣||BC"_s}},
        {requisitionItemPick(),
         u"紙品"_s,
         u"S1"_s,
         titled(u"紙品代號"_s, u"紙品名稱"_s, using_),
         {u"S1|白板|31*43|9|kg|3|台幣"_s}},
        {requisitionItemPick(),
         u"凸版"_s,
         u"P1"_s,
         titled(u"主料代號"_s, u"主料名稱"_s, using_),
         {u"P1|樹脂版|||片||台幣"_s}},
        {itemPick(),
         u"物料"_s,
         u"膠"_s,
         titled(u"物料代號"_s, u"物料名稱"_s, using_),
         {u"M2|膠水|袋|0|kg||美金"_s}},
        {itemPick(),
         u"紙板"_s,
         u"K200"_s,
         titled(u"紙板代號"_s, u"紙板名稱"_s, using_),
         {u"B1|K200|||pcs||台幣"_s, u"B2|K200|||pcs||台幣"_s}},
        {itemPick(),
         u"紙品"_s,
         u""_s,
         titled(u"紙品代號"_s, u"紙品名稱"_s, using_) + QStringList{u"卷筒紙"_s},
         {u"S1|白板|31*43|9|kg|3|台幣|平板紙"_s}},
        {itemPick(), u"凸版"_s, u"沒有"_s, titled(u"主料代號"_s, u"主料名稱"_s, using_), {}}};
    for (const Case& c : cases) {
        plant.session.formulaMode = c.family;
        const std::string what = (c.spec.name + u' ' + c.family).toStdString();
        EXPECT_EQ(plant.offered(c.spec, {c.filter}), c.rows) << what;
        EXPECT_TRUE(c.titles.isEmpty() || plant.titles == c.titles)
            << what << plant.titles.join(u' ').toStdString();
        EXPECT_TRUE(c.spec.moneyColumns.contains(u"進價"_s) && c.spec.moneyColumns.contains(u"單價"_s))
            << what;
    }
    plant.session.formulaMode = u"紙板"_s;
    plant.run({u"update 浪紙資料 set 浪紙名稱='K100' where 浪紙代號='B3'"});
    EXPECT_EQ(plant.offered(orderItemPick(), {u"B"_s, 0}, {u"紙板代號"_s}),
              QStringList({u"B1"_s, u"B2"_s, u"B3"_s}))
        << "by code";
    EXPECT_EQ(plant.offered(orderItemPick(), {u"B"_s, 1}, {u"紙板代號"_s}).first(), u"B3"_s) << "by name";
}

TEST(OrderPicks, WindowsAreDeclaredAsTheyLook) {
    struct Case {
        PickSpec spec;
        QString name, title;
        bool several, eachKey;
        QStringList sorts;
        QString box;
        QStringList dates;
    };
    const QStringList byCode{u"代 號"_s, u"名稱規格"_s};
    const Case cases[] = {
        {requisitionLinePick(u"物料"_s),
         u"frm原料輔助視窗_請購"_s,
         u"原料輔助視窗(採購)"_s,
         true,
         false,
         byCode,
         {},
         {}},
        {workOrderPick(),
         u"frm工單輔助視窗_採購"_s,
         u"工單輔助視窗(採購)"_s,
         false,
         false,
         {u"單號"_s, u"材質"_s, u"交貨日期"_s, u"客戶"_s},
         {},
         {}},
        {orderItemPick(), u"frm原料輔助視窗_採購"_s, u"原料輔助視窗(採購)"_s, false, false, byCode, {}, {}},
        {requisitionPick(), u"frm採購輔助視窗_請購單"_s, u"採購輔助視窗"_s, false, false, {}, {}, {}},
        {requisitionItemPick(), u"frm原料輔助視窗_申購"_s, u"原料輔助視窗"_s, true, false, {}, {}, {}},
        {itemPick(), u"frm原料輔助視窗"_s, u"原料輔助視窗"_s, false, true, {}, {}, {}},
        {openOrderLinePick(), u"frm採購輔助視窗"_s, u"採購輔助視窗"_s, false, false, {}, u"顯示全部"_s, {}},
        {receivedOrderLinePick(u"a"_s, u"b"_s),
         u"frm採購輔助視窗_退貨"_s,
         u"採購輔助視窗_退貨"_s,
         false,
         false,
         {},
         {},
         {u"起始日期:"_s, u"結束日期:"_s}}};
    for (const Case& c : cases) {
        EXPECT_EQ(c.spec.name + c.spec.title, c.name + c.title);
        EXPECT_EQ(c.spec.several, c.several) << c.name.toStdString();
        EXPECT_EQ(c.spec.filterEachKey, c.eachKey) << c.name.toStdString();
        EXPECT_EQ(c.spec.sortOptions, c.sorts) << c.name.toStdString();
        EXPECT_EQ(c.spec.checkBox, c.box) << c.name.toStdString();
        EXPECT_EQ(c.spec.dateLabels, c.dates) << c.name.toStdString();
    }
}

TEST(OrderPicks, RequisitionsAreOfferedWhenApprovedAndOpen) {
    PickPlant plant;
    plant.run({u"update 物料資料 set 廠商代號='V1' where 物料代號='M1'",
               u"insert into 原料申購資料 (申購單號,類別,審單) values "
               u"('R2','物料','N'),('R3','物料',null),('R4','紙板','Y'),('R5','凸版','Y')",
               u"insert into 原料申購明細 (申購單號,序,原料代號,數量,已采購數) values "
               u"('R2',1,'M1','5','0'),('R3',1,'M1','5','0'),"
               u"('R4',1,'B1','5','5'),('R4',2,'B2','5','8'),('R4',3,'B3','5.5','0.5'),('R5',1,'P1','3','')",
               u"update 原料申購明細 set 數量='' where 申購單號='R1' and 原料代號='M2'"});
    struct Case {
        QString family, vendor, filter;
        QStringList lines, whole;
    };
    const Case cases[] = {{u"物料"_s, u"V1"_s, u""_s, {u"R1|M1|95"_s}, {u"R1|M1|95"_s}},
                          {u"物料"_s, u"V2"_s, u""_s, {}, {}},
                          {u"物料"_s, u"V1"_s, u"R2"_s, {}, {}},
                          {u"物料"_s, u"V1"_s, u"1"_s, {u"R1|M1|95"_s}, {}},
                          {u"紙板"_s, u"V9"_s, u""_s, {u"R4|B2|-3"_s, u"R4|B3|5"_s}, {u"R4|B3|5"_s}},
                          {u"凸版"_s, u"V1"_s, u"R5"_s, {u"R5|P1|3"_s}, {u"R5|P1|3"_s}}};
    for (const Case& c : cases) {
        plant.session.formulaMode = c.family;
        plant.session.pickVendor = c.vendor;
        const std::string what = (c.family + c.vendor + c.filter).toStdString();
        EXPECT_EQ(plant.offered(requisitionLinePick(c.family), {c.filter},
                                {u"申購單號"_s, u"原料代號"_s, u"未采購數"_s}),
                  c.lines)
            << what;
        EXPECT_EQ(plant.offered(requisitionPick(), {c.filter}, {u"申購單號"_s, u"原料代號"_s, u"未採購數"_s}),
                  c.whole)
            << what;
    }
}

namespace {

/// An approved order of materials (N1), one of board (N2), and others that must not be offered.
void addOrders(OrderPlant& plant) {
    plant.run({u"insert into 採購資料 (採購單號,類別,採購日期,廠商代號,廠商簡稱,幣別,審單) values "
               u"('N1','物料','20250110','V1','甲商','台幣','Y'),"
               u"('N2','紙板','20250111','V1','甲商','台幣','Y'),('N3','物料','20250112','V1','甲商','台幣','"
               u"N'),('N4','物料','20250113','V2','乙商','美金','Y'),"
               u"('N5','物料','20250114','','','台幣','Y')",
               u"insert into 採購明細資料 "
               u"(採購單號,序,原料代號,原料名稱,廠商名稱,規格,數量,單價,小計,單位,已入庫數,檢驗合格數,送清,"
               u"請購單號,檢驗單號,剖切尺寸,寬剖) values "
               u"('N1',1,'M1','油墨','墨','桶','10','8','80','kg','4','0','N','R1','','','1'),"
               u"('N1',2,'M2','膠水','膠','袋','5','2','10','桶','0','0','N','','','','1'),"
               u"('N1',3,'M1','油墨','墨','桶','7','8','56','kg','7','0','N','','','','1'),"
               u"('N1',4,'M1','油墨','墨','桶','7','8','56','kg','1','0','Y','','','','1'),"
               u"('N1',5,'沒有','名','名','桶','7','8','56','kg','1','0','N','','','','1'),"
               u"('N2',1,'B1','K200','牛','90*60','100','3','300','pcs','10','60','N','','Q1','45*30','2'),"
               u"('N2',2,'B9','K900','牛','90*60','50','3','150','㎡','','','N','','','',''),"
               u"('N3',1,'M1','油墨','墨','桶','3','8','24','kg','1','0','N','','','','1'),"
               u"('N4',1,'M1','油墨','墨','桶','3','8','24','kg','1','0','N','','','','1'),"
               u"('N5',1,'M1','油墨','墨','桶','3','8','24','kg','0','0','N','','','','1')"});
}

} // namespace

TEST(OrderPicks, OpenOrderLinesOfAVendor) {
    PickPlant plant;
    addOrders(plant);
    struct Case {
        QString family, vendor, filter;
        bool all;
        QStringList rows;
    };
    const Case cases[] = {
        {u"物料"_s, u"V1"_s, u""_s, false, {u"N1|M1|6|6|1"_s, u"N1|M2|5|0|2"_s, u"N5|M1|3|3|1"_s}},
        {u"物料"_s,
         u"V1"_s,
         u""_s,
         true,
         {u"N1|M1|6|6|1"_s, u"N1|M2|5|0|2"_s, u"N1|M1|0|0|3"_s, u"N5|M1|3|3|1"_s}},
        {u"物料"_s, u"V1"_s, u"膠"_s, false, {u"N1|M2|5|0|2"_s}},
        {u"物料"_s, u"V1"_s, u"n5"_s, false, {u"N5|M1|3|3|1"_s}},
        {u"物料"_s, u"V2"_s, u"M1"_s, false, {u"N4|M1|2|2|1"_s, u"N5|M1|3|3|1"_s}},
        {u"物料"_s, u"V1"_s, u"1"_s, false, {}},
        {u"紙板"_s, u"V1"_s, u""_s, false, {u"N2|B1|90|50|1"_s, u"N2|B9|50|0|2"_s}},
        {u"紙板"_s, u"V2"_s, u""_s, false, {}}};
    for (const Case& c : cases) {
        plant.session.formulaMode = c.family;
        plant.session.pickVendor = c.vendor;
        PickInput input{c.filter};
        input.checked = c.all;
        EXPECT_EQ(plant.offered(openOrderLinePick(), input,
                                {u"採購單號"_s, u"原料代號"_s, u"未收數"_s, u"入庫數"_s, u"序"_s}),
                  c.rows)
            << (c.family + c.vendor + c.filter).toStdString();
    }
    plant.session.pickVendor = u"V1"_s;
    EXPECT_EQ(plant.offered(openOrderLinePick(), {u"N2"_s}).first(),
              u"N2|B1|K200|90*60|90|pcs|3|300|50|pcs|台幣||V1|甲商|Q1|1|45*30|2"_s);
    EXPECT_EQ(plant.titles.size(), 18);
    // Whoever sees the orders of one salesperson receives for no other.
    plant.run({u"update 採購資料 set 業務員代號=case when 採購單號='N5' then 'S2' else 'S1' end"});
    plant.session.salesScope = u" And (業務員代號='S2' ) "_s;
    plant.session.formulaMode = u"物料"_s;
    plant.session.pickVendor = u"V1"_s;
    EXPECT_EQ(plant.offered(openOrderLinePick(), {}, {u"採購單號"_s}), QStringList(u"N5"_s));
}

TEST(OrderPicks, ReceivedOrderLinesOfAVendor) {
    PickPlant plant;
    addOrders(plant);
    plant.session.pickVendor = u"V1"_s;
    struct Case {
        QString family, filter, from, to;
        QStringList rows;
    };
    const Case cases[] = {
        {u"物料"_s,
         u""_s,
         u"20250101"_s,
         u"20250131"_s,
         {u"N1|M1|墨|4|4|1"_s, u"N1|M1|墨|7|7|3"_s, u"N1|M1|墨|1|1|4"_s, u"N1|沒有|名|1|0|5"_s}},
        {u"物料"_s, u""_s, u"20250111"_s, u"20250131"_s, {}},
        {u"物料"_s,
         u"油"_s,
         u"20250110"_s,
         u"20250110"_s,
         {u"N1|M1|墨|4|4|1"_s, u"N1|M1|墨|7|7|3"_s, u"N1|M1|墨|1|1|4"_s}},
        {u"紙板"_s, u""_s, u"20250101"_s, u"20250131"_s, {u"N2|B1|牛|10|10|1"_s}}};
    for (const Case& c : cases) {
        plant.session.formulaMode = c.family;
        PickInput input{c.filter};
        input.from = c.from;
        input.to = c.to;
        EXPECT_EQ(
            plant.offered(receivedOrderLinePick(c.from, c.to), input,
                          {u"採購單號"_s, u"原料代號"_s, u"廠商品名"_s, u"已入庫數"_s, u"入庫數"_s, u"序"_s}),
            c.rows)
            << (c.family + c.filter + c.from).toStdString();
    }
}

TEST(OrderPicks, LookUpsFallBack) {
    PickPlant plant;
    plant.run({u"update 廠商資料 set 廠商類別='物料商',業務員代號='S1'",
               u"insert into 廠商資料 (廠商代號,廠商簡稱,廠商類別,業務員代號,報廢與否) values "
               u"('V3','丙商','紙板商','S2',''),('V4','丁商',null,'S2',null),('V5','戊商','物料商','S2','Y')",
               u"insert into 業務資料 (業務員代號,業務員名稱,部門,離職日期) values "
               u"('S1','王一','倉儲部',''),('S2','王二','資材部',null),('S3','李三','業務部',''),('S4','王四'"
               u",'倉儲部','20240101')",
               u"insert into 部門資料 (組名,部門) values ('倉儲部','倉儲部'),('倉儲部','資材部')",
               u"insert into 片語資料 (代號,類別,內容,備註,分類,合同品名,工序) values "
               u"('2','AA-部門','印刷課','x','','','印刷'),('1','AA-部門','倉儲部','y','','',''),('3','BD-"
               u"印刷內容','四色','z','','','印刷'),('4','AZ-海關編號','4808','','','紙板','')"});
    const auto people = [&](const QString& filter, const QString& group) {
        plant.session.formulaMode = group;
        return plant.offered(personPick(), {filter}, {u"人員代號"_s});
    };
    EXPECT_EQ(people(u"王"_s, u""_s), QStringList({u"S1"_s, u"S2"_s})) << "who has left is never offered";
    EXPECT_EQ(people(u"李"_s, u"倉儲部"_s), QStringList({u"S3"_s}))
        << "outside of the group when it has none of that name";
    EXPECT_EQ(people(u""_s, u"倉儲部"_s), QStringList({u"S1"_s, u"S2"_s}));
    EXPECT_EQ(people(u"趙"_s, u"倉儲部"_s), QStringList({u"S1"_s, u"S2"_s, u"S3"_s}))
        << "all, when there is none at all";
    EXPECT_EQ(people(u"王"_s, u"沒有這組"_s), QStringList({u"S1"_s, u"S2"_s}));

    const auto vendors = [&](const QString& filter, const QString& kind, const QString& scope = {}) {
        plant.session.formulaMode = kind;
        plant.session.salesScope = scope;
        return plant.offered(vendorPick(), {filter}, {u"廠商代號"_s});
    };
    EXPECT_EQ(vendors(u"V"_s, u"物料"_s), QStringList({u"V1"_s, u"V2"_s, u"V4"_s}))
        << "scrapped ones are out, those without a kind are in";
    EXPECT_EQ(vendors(u"丙"_s, u"紙板"_s), QStringList({u"V3"_s}));
    EXPECT_EQ(vendors(u"沒有"_s, u"紙板"_s), QStringList({u"V3"_s, u"V4"_s}));
    EXPECT_EQ(vendors(u""_s, u"物料"_s, u" And (業務員代號='S2' ) "_s), QStringList({u"V4"_s}));
    EXPECT_EQ(vendors(u"甲"_s, u"物料"_s, u" And (業務員代號='S2' ) "_s), QStringList({u"V4"_s}))
        << "the scope holds for the fallback too";
    plant.session.salesScope.clear();

    const auto phrase = [&](const QString& category, const QString& second, const QString& mode) {
        plant.session.pickParam = category;
        plant.session.pickCategory = second;
        plant.session.pickMode = mode;
        return plant.offered(phrasePick(), {});
    };
    EXPECT_EQ(phrase(u"AA-部門"_s, u""_s, u""_s), QStringList({u"倉儲部|y|1"_s, u"印刷課|x|2"_s}));
    EXPECT_EQ(phrase(u"AA-部門"_s, u"BD-印刷內容"_s, u"印刷"_s),
              QStringList({u"印刷課|x|2"_s, u"四色|z|3"_s}));
    EXPECT_EQ(phrase(u"AZ-海關編號"_s, u"AZ-海關編號"_s, u""_s), QStringList({u"4808|紙板|4"_s}));

    addOrders(plant);
    const auto receiving = [&](const QString& filter, const QString& kind) {
        plant.session.formulaMode = u"物料"_s;
        plant.session.pickMode = kind;
        return plant.offered(receivingVendorPick(), {filter}, {u"廠商代號"_s});
    };
    EXPECT_EQ(receiving(u""_s, u"采購入庫"_s), QStringList({u"V1"_s, u"V2"_s}));
    EXPECT_EQ(receiving(u"乙"_s, u"退貨"_s), QStringList({u"V2"_s}));
    EXPECT_EQ(receiving(u"沒有"_s, u"采購入庫"_s), QStringList({u"V1"_s, u"V2"_s}))
        << "all of them when the text finds none";
}

TEST(OrderPicks, APastedCodeIsTakenWhenItsWindowOffersIt) {
    PickPlant plant;
    plant.run({u"insert into 物料資料 (物料代號,物料名稱) values ('XM1','別的'),('M1X','別的')"});
    plant.session.formulaMode = u"物料"_s;
    Connection connection(plant.pool, plant.target);
    const std::pair<QString, QString> cases[] = {{u"M1"_s, u"M1"_s}, {u" m1 "_s, u"M1"_s}, {u"M"_s, u""_s},
                                                 {u"油墨"_s, u""_s}, {u"M1%"_s, u""_s},    {u""_s, u""_s}};
    for (const auto& [code, found] : cases) {
        const auto row = exactPick(plant.session, connection, orderItemPick(), code);
        EXPECT_EQ(row ? row->value(0) : QString(), found) << code.toStdString();
    }
}

TEST(OrderPicks, PickedTextsAreCutToTheirColumns) {
    OrderLine line;
    line.送清 = u"Y"_s;
    line.規格 = u"原有"_s;
    line.序 = u"4"_s;
    putItemPick(line,
                {u"K"_s.repeated(25), u"名"_s.repeated(30), u"規"_s.repeated(30), u"5"_s, u"單位很長啊"_s,
                 u"1"_s, u"台幣"_s, u""_s, u"一二三四五六"_s},
                u"紙板"_s);
    EXPECT_EQ(QStringList({line.原料代號, line.原料名稱, line.廠商名稱, line.規格, line.單位, line.楞別,
                           line.寬剖, line.送清, line.序}),
              QStringList({u"K"_s.repeated(20), u"名"_s.repeated(20), u"名"_s.repeated(20), u"原有"_s,
                           u"單位很長啊"_s, u"一二三四五"_s, u"1"_s, u"Y"_s, u"4"_s}));
    putItemPick(line, {u"M"_s, u"名"_s, u"規"_s.repeated(30), u""_s, u""_s, u""_s, u""_s, u""_s, u"楞"_s},
                u"物料"_s);
    EXPECT_EQ(line.規格 + line.楞別, u"規"_s.repeated(20) + u"一二三四五"_s)
        << "materials bring their size, and no flute";

    OrderPlant plant;
    Connection connection(plant.pool, plant.target);
    for (const char16_t letter : {u'A', u'B'})
        connection.Execute(sql(u"insert into 片語資料 (代號,類別,內容,廠商代號,尺寸大小) values "
                               u"('{}','EN-材質編碼','{}','V1','{}')",
                               QString(letter), QString(letter), u"尺"_s.repeated(8)));
    EXPECT_EQ(vendorItemName(connection, u"AxB"_s, u"V1"_s), u"尺"_s.repeated(16));
    EXPECT_EQ(vendorItemName(connection, u"ABA"_s, u"V1"_s), u"尺"_s.repeated(20)) << "cut at forty bytes";
    EXPECT_EQ(vendorItemName(connection, u"xyz"_s, u"V1"_s), u"xyz"_s) << "no letter known: the code itself";
    EXPECT_EQ(vendorItemName(connection, u"AB"_s, u"V2"_s), u"AB"_s) << "another vendor's words do not count";
    EXPECT_EQ(vendorItemName(connection, u""_s, u"V1"_s), u""_s);
}
