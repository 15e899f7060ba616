#include "frame/item_picks.h"
#include "frame/lookups.h"
#include "purchasing/order_picks.h"
#include "purchasing/order_plant.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

class PickPlant : public OrderPlant {
public:
    /// What a window shows: the named columns of its rows (all of them by default), "/" between cells and ", " between rows.
    QString offered(const PickSpec& spec, const PickInput& input, const QStringList& columns = {}) {
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
            result << cells.join(u'/');
        }
        return result.join(u", "_s);
    }
    QStringList titles; ///< of the last window

    /// An approved order of materials (N1), one of board (N2), and others that must not be offered.
    void addOrders() {
        run({uR"(insert into 採購資料 (採購單號,類別,採購日期,廠商代號,廠商簡稱,幣別,審單) values
                 ('N1','物料','20250110','V1','甲商','台幣','Y'),('N2','紙板','20250111','V1','甲商','台幣','Y'),
                 ('N3','物料','20250112','V1','甲商','台幣','N'),('N4','物料','20250113','V2','乙商','美金','Y'),
                 ('N5','物料','20250114','','','台幣','Y'))",
             uR"(insert into 採購明細資料 (採購單號,序,原料代號,原料名稱,廠商名稱,規格,數量,單價,小計,單位,
                 已入庫數,檢驗合格數,送清,請購單號,檢驗單號,剖切尺寸,寬剖) values
                 ('N1',1,'M1','油墨','墨','桶','10','8','80','kg','4','0','N','R1','','','1'),
                 ('N1',2,'M2','膠水','膠','袋','5','2','10','桶','0','0','N','','','','1'),
                 ('N1',3,'M1','油墨','墨','桶','7','8','56','kg','7','0','N','','','','1'),
                 ('N1',4,'M1','油墨','墨','桶','7','8','56','kg','1','0','Y','','','','1'),
                 ('N1',5,'沒有','名','名','桶','7','8','56','kg','1','0','N','','','','1'),
                 ('N2',1,'B1','K200','牛','90*60','100','3','300','pcs','10','60','N','','Q1','45*30','2'),
                 ('N2',2,'B9','K900','牛','90*60','50','3','150','㎡','','','N','','','',''),
                 ('N3',1,'M1','油墨','墨','桶','3','8','24','kg','1','0','N','','','','1'),
                 ('N4',1,'M1','油墨','墨','桶','3','8','24','kg','1','0','N','','','','1'),
                 ('N5',1,'M1','油墨','墨','桶','3','8','24','kg','0','0','N','','','','1'))"});
    }
};

} // namespace

TEST(OrderPicks, ItemWindowsShowTheirFamily) {
    PickPlant plant;
    plant.run({u"insert into 紙品資料 (紙品代號,紙品名稱,規格,庫存,單位,單價,進料單位,進價,幣別,卷筒紙) "
               u"values ('S1','白板','31*43','9 ','kg','3','令','30','台幣','平板紙')",
               u"update 物料資料 set 類別='油墨類',單價='11',品檢='Y' where 物料代號='M1'",
               u"update 浪紙資料 set 規格='90*60',庫存='4',單價='6',楞別='BC' where 浪紙代號='B3'"});
    // Family, filter, the item's word in the titles, what follows the common titles, rows.
    const auto show = [&](const PickSpec& spec, const QString& common,
                          std::initializer_list<const char16_t*> cases) {
        for (const auto& [family, filter, word, more, rows] : casesOf<5>(cases)) {
            plant.session.formulaMode = family;
            EXPECT_EQ(plant.offered(spec, {filter}), rows) << spec.name << family;
            const QString titles = u"%1代號 %1名稱 %2%3"_s.arg(word, common, more);
            EXPECT_TRUE(plant.titles.join(u' ').startsWith(titles)) << plant.titles.join(u' ');
        }
        EXPECT_TRUE(spec.moneyColumns.contains(u"進價"_s) && spec.moneyColumns.contains(u"單價"_s));
    };
    show(orderItemPick(), u"規格 庫存 進料單位 進價 幣別"_s,
         {u"物料|油|物料| 類別 楞別|M1/油墨/桶/100/kg/10/台幣/油墨類/",
          u"紙板|90*|紙板| 類別 楞別|B3/K300/90*60/4/㎡/7/台幣//BC",
          u"紙品|s1|紙品| 卷筒紙 楞別|S1/白板/31*43/9 /令/30/台幣/平板紙/",
          u"凸版|脂|主料| 類別 楞別|P1/樹脂版///片/90/台幣//"});
    const QString ofUse = u"規格 庫存 單位 單價 幣別"_s;
    show(requisitionItemPick(), ofUse,
         {u"物料|M1|物料| 品檢|M1/油墨/桶/100/kg/11/台幣/Y/", u"紙板|B3|紙板||B3/K300/90*60/4/pcs/6/台幣//BC",
          u"紙品|S1|紙品||S1/白板/31*43/9/kg/3/台幣", u"凸版|P1|主料||P1/樹脂版///片//台幣"});
    show(itemPick(), ofUse,
         {u"物料|膠|物料||M2/膠水/袋/0/kg//美金", u"紙板|K200|紙板||B1/K200///pcs//台幣, B2/K200///pcs//台幣",
          u"紙品||紙品| 卷筒紙|S1/白板/31*43/9/kg/3/台幣/平板紙", u"凸版|沒有|主料||"});
    plant.session.formulaMode = u"紙板"_s;
    plant.run({u"update 浪紙資料 set 浪紙名稱='K100' where 浪紙代號='B3'"});
    EXPECT_EQ(plant.offered(orderItemPick(), {u"B"_s, 0}, {u"紙板代號"_s}), u"B1, B2, B3"_s) << "by code";
    EXPECT_EQ(plant.offered(orderItemPick(), {u"B"_s, 1}, {u"紙板代號"_s}).left(2), u"B3"_s) << "by name";
}

TEST(OrderPicks, WindowsAreDeclaredAsTheyLook) {
    const std::pair<PickSpec, QString> windows[] = {
        {requisitionLinePick(u"物料"_s), u"frm原料輔助視窗_請購|原料輔助視窗(採購)|several|代 號,名稱規格"_s},
        {workOrderPick(), u"frm工單輔助視窗_採購|工單輔助視窗(採購)|one|單號,材質,交貨日期,客戶"_s},
        {orderItemPick(), u"frm原料輔助視窗_採購|原料輔助視窗(採購)|one|代 號,名稱規格"_s},
        {requisitionPick(), u"frm採購輔助視窗_請購單|採購輔助視窗|one|"_s},
        {requisitionItemPick(), u"frm原料輔助視窗_申購|原料輔助視窗|several|"_s},
        {itemPick(), u"frm原料輔助視窗|原料輔助視窗|one, by each key|"_s},
        {openOrderLinePick(), u"frm採購輔助視窗|採購輔助視窗|one|顯示全部"_s},
        {receivedOrderLinePick(u"a"_s, u"b"_s),
         u"frm採購輔助視窗_退貨|採購輔助視窗_退貨|one|起始日期:,結束日期:"_s}};
    for (const auto& [spec, look] : windows)
        EXPECT_EQ(spec.name + u'|' + spec.title + (spec.several ? u"|several"_s : u"|one"_s) +
                      (spec.filterEachKey ? u", by each key|"_s : u"|"_s) + spec.sortOptions.join(u',') +
                      spec.checkBox + spec.dateLabels.join(u','),
                  look);
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
    // Family, vendor and filter; what the line's window offers, and the header's.
    const auto cases =
        casesOf<5>({u"物料|V1||R1/M1/95|R1/M1/95", u"物料|V2|||", u"物料|V1|R2||", u"物料|V1|1|R1/M1/95|",
                    u"紙板|V9||R4/B2/-3, R4/B3/5|R4/B3/5", u"凸版|V1|R5|R5/P1/3|R5/P1/3"});
    for (const auto& [family, vendor, filter, lines, whole] : cases) {
        plant.session.formulaMode = family;
        plant.session.pickVendor = vendor;
        EXPECT_EQ(plant.offered(requisitionLinePick(family), {filter},
                                {u"申購單號"_s, u"原料代號"_s, u"未采購數"_s}),
                  lines)
            << family << vendor << filter;
        EXPECT_EQ(plant.offered(requisitionPick(), {filter}, {u"申購單號"_s, u"原料代號"_s, u"未採購數"_s}),
                  whole)
            << family << vendor << filter;
    }
}

TEST(OrderPicks, OpenOrderLinesOfAVendor) {
    PickPlant plant;
    plant.addOrders();
    const auto cases = casesOf<5>({u"物料|V1|||N1/M1/6/6/1, N1/M2/5/0/2, N5/M1/3/3/1",
                                   u"物料|V1||all|N1/M1/6/6/1, N1/M2/5/0/2, N1/M1/0/0/3, N5/M1/3/3/1",
                                   u"物料|V1|膠||N1/M2/5/0/2", u"物料|V1|n5||N5/M1/3/3/1",
                                   u"物料|V2|M1||N4/M1/2/2/1, N5/M1/3/3/1", u"物料|V1|1||",
                                   u"紙板|V1|||N2/B1/90/50/1, N2/B9/50/0/2", u"紙板|V2|||"});
    for (const auto& [family, vendor, filter, all, rows] : cases) {
        plant.session.formulaMode = family;
        plant.session.pickVendor = vendor;
        PickInput input{filter};
        input.checked = !all.isEmpty();
        EXPECT_EQ(plant.offered(openOrderLinePick(), input,
                                {u"採購單號"_s, u"原料代號"_s, u"未收數"_s, u"入庫數"_s, u"序"_s}),
                  rows)
            << family << vendor << filter;
    }
    plant.session.pickVendor = u"V1"_s;
    EXPECT_EQ(plant.offered(openOrderLinePick(), {u"N2"_s}).section(u", "_s, 0, 0),
              u"N2/B1/K200/90*60/90/pcs/3/300/50/pcs/台幣//V1/甲商/Q1/1/45*30/2"_s);
    // Whoever sees the orders of one salesperson receives for no other; an order without a vendor is anybody's.
    plant.run({u"update 採購資料 set 業務員代號='S1'",
               u"update 採購資料 set 業務員代號='S2',廠商代號=null where 採購單號='N5'"});
    plant.session.salesScope = u" And (業務員代號='S2' ) "_s;
    plant.session.formulaMode = u"物料"_s;
    EXPECT_EQ(plant.offered(openOrderLinePick(), {}, {u"採購單號"_s}), u"N5"_s);
}

TEST(OrderPicks, ReceivedOrderLinesOfAVendor) {
    PickPlant plant;
    plant.addOrders();
    plant.session.pickVendor = u"V1"_s;
    const auto cases = casesOf<5>(
        {u"物料||20250101|20250131|N1/M1/墨/4/4/1, N1/M1/墨/7/7/3, N1/M1/墨/1/1/4, N1/沒有/名/1/0/5",
         u"物料||20250111|20250131|",
         u"物料|油|20250110|20250110|N1/M1/墨/4/4/1, N1/M1/墨/7/7/3, N1/M1/墨/1/1/4",
         u"紙板||20250101|20250131|N2/B1/牛/10/10/1"});
    for (const auto& [family, filter, from, to, rows] : cases) {
        plant.session.formulaMode = family;
        PickInput input{filter};
        input.from = from;
        input.to = to;
        EXPECT_EQ(
            plant.offered(receivedOrderLinePick(from, to), input,
                          {u"採購單號"_s, u"原料代號"_s, u"廠商品名"_s, u"已入庫數"_s, u"入庫數"_s, u"序"_s}),
            rows)
            << family << filter << from;
    }
}

TEST(OrderPicks, LookUpsFallBack) {
    PickPlant plant;
    plant.run(
        {u"update 廠商資料 set 廠商類別='物料商',業務員代號='S1'",
         u"insert into 廠商資料 (廠商代號,廠商簡稱,廠商類別,業務員代號,報廢與否) values "
         u"('V3','丙商','紙板商','S2',''),('V4','丁商',null,'S2',null),('V5','戊商','物料商','S2','Y')",
         uR"(insert into 業務資料 (業務員代號,業務員名稱,部門,離職日期) values ('S1','王一','倉儲部',''),
                   ('S2','王二','資材部',null),('S3','李三','業務部',''),('S4','王四','倉儲部','20240101'))",
         u"insert into 部門資料 (組名,部門) values ('倉儲部','倉儲部'),('倉儲部','資材部')",
         uR"(insert into 片語資料 (代號,類別,內容,備註,分類,合同品名,工序) values
                   ('2','AA-部門','印刷課','x','','','印刷'),('1','AA-部門','倉儲部','y','','',''),
                   ('3','BD-印刷內容','四色','z','','','印刷'),('4','AZ-海關編號','4808','','','紙板',''))"});
    for (const auto& [filter, group, found, why] : casesOf<4>(
             {u"王||S1, S2|who has left is never offered",
              u"李|倉儲部|S3|outside of the group when it has none of that name",
              u"|倉儲部|S1, S2|all of the group", u"趙|倉儲部|S1, S2, S3|all, when there is none at all",
              u"王|沒有這組|S1, S2|a group without departments"})) {
        plant.session.formulaMode = group;
        EXPECT_EQ(plant.offered(personPick(), {filter}, {u"人員代號"_s}), found) << why;
    }
    for (const auto& [filter, kind, scope, found, why] :
         casesOf<5>({u"V|物料||V1, V2, V4|scrapped ones are out, those without a kind are in",
                     u"丙|紙板||V3|by name", u"沒有|紙板||V3, V4|all of the kind",
                     u"|物料| And (業務員代號='S2' ) |V4|the scope",
                     u"甲|物料| And (業務員代號='S2' ) |V4|the scope holds for the fallback too"})) {
        plant.session.formulaMode = kind;
        plant.session.salesScope = scope;
        EXPECT_EQ(plant.offered(vendorPick(), {filter}, {u"廠商代號"_s}), found) << why;
    }
    plant.session.salesScope.clear();
    for (const auto& [category, second, mode, found] :
         casesOf<4>({u"AA-部門|||倉儲部/y/1, 印刷課/x/2", u"AA-部門|BD-印刷內容|印刷|印刷課/x/2, 四色/z/3",
                     u"AZ-海關編號|AZ-海關編號||4808/紙板/4"})) {
        plant.session.pickParam = category;
        plant.session.pickCategory = second;
        plant.session.pickMode = mode;
        EXPECT_EQ(plant.offered(phrasePick(), {}), found);
    }
    plant.addOrders();
    plant.session.formulaMode = u"物料"_s;
    for (const auto& [filter, kind, found, why] :
         casesOf<4>({u"|采購入庫|V1, V2|with something to come", u"乙|退貨|V2|with something received",
                     u"沒有|采購入庫|V1, V2|all of them when the text finds none"})) {
        plant.session.pickMode = kind;
        EXPECT_EQ(plant.offered(receivingVendorPick(), {filter}, {u"廠商代號"_s}), found) << why;
    }
}

TEST(OrderPicks, APastedCodeIsTakenWhenItsWindowOffersIt) {
    PickPlant plant;
    plant.run({u"insert into 物料資料 (物料代號,物料名稱) values ('XM1','別的'),('M1X','別的')"});
    plant.session.formulaMode = u"物料"_s;
    Connection connection(plant.pool, plant.target);
    for (const auto& [code, found] : casesOf<2>({u"M1|M1", u" m1 |M1", u"M|", u"油墨|", u"M1%|", u"|"})) {
        const auto row = exactPick(plant.session, connection, orderItemPick(), code);
        EXPECT_EQ(row ? row->value(0) : QString(), found) << code;
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

    // Which letters count is the phrases' business.
    OrderPlant plant;
    plant.run({u"insert into 片語資料 (代號,類別,內容,廠商代號,尺寸大小) values "
               u"('A','EN-材質編碼','A','V1','尺尺尺尺尺尺尺尺')"});
    Connection connection(plant.pool, plant.target);
    EXPECT_EQ(vendorItemName(connection, u"AxA"_s, u"V1"_s), u"尺"_s.repeated(16));
    EXPECT_EQ(vendorItemName(connection, u"AAA"_s, u"V1"_s), u"尺"_s.repeated(20)) << "cut at forty bytes";
}
