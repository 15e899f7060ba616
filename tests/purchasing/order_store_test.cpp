#include "common/items.h"
#include "purchasing/order_plant.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

/// "title: text" of the refusal, "conflict: person time", or "saved".
QString outcomeOf(Session& session, OrderSave save) {
    QString outcome = u"saved"_s;
    const QString refusal = refusalOf([&] {
        if (const auto conflict = saveOrder(session, save))
            outcome = u"conflict: "_s + conflict->person + u' ' + conflict->time;
    });
    return refusal.isEmpty() ? outcome : refusal;
}

} // namespace

TEST(OrderStore, ANewOrderIsWrittenWhole) {
    OrderPlant plant;
    OrderSave save =
        plant.newOrder(u"250115001"_s, {plant.line(u"M1"_s, 12.5, 8, u"R1"_s), plant.line(u"M2"_s, 3, 0)});
    save.header.品質要求 = u" 第一行\n第二行 "_s;
    save.header.審單人 = u"不該寫入"_s;
    EXPECT_EQ(outcomeOf(plant.session, save), u"saved"_s);
    EXPECT_EQ(
        plant.rows(u"select * from 採購資料"),
        QStringList(
            u"250115001|物料|20250115|V1|甲商|||台幣|庫存||100||N||| 第一行\n第二行 |測試員|2025-01-15 08:30:00||||0||0||"_s));
    EXPECT_EQ(plant.rows(u"select * from 採購明細資料"),
              QStringList({u"1|R1||||||M1|M1|M1||12.5|8|kg|100||||||1|12.5|0|12.5|N|||0|0||250115001|0"_s,
                           u"2|||||||M2|M2|M2||3|0|kg|0||||||1|3|0|3|N|||0|0||250115001|0"_s}));
    EXPECT_EQ(plant.rows(u"select 原料代號,已采購數 from 原料申購明細"),
              QStringList({u"M1|17.5"_s, u"M2|"_s}));
}

TEST(OrderStore, ASavedOrderReadsBackAsItWas) {
    OrderPlant plant;
    OrderLine line = plant.line(u"B1"_s, 10, 5);
    for (const OrderLineColumn& column : OrderLineColumns)
        if ((line.*column.member).isEmpty()) line.*column.member = u"'%[_\"𠮷' "_s.trimmed();
    line.已入庫數 = u"4"_s;
    line.已檢驗數 = u"5"_s;
    line.檢驗合格數 = u"3"_s;
    line.序 = u"7"_s;
    line.採購單號 = u"N1"_s;
    const OrderSave back = plant.saved(plant.newOrder(u"N1"_s, {line}, u"紙板"_s));
    ASSERT_EQ(back.lines.size(), 1u);
    for (const OrderLineColumn& column : OrderLineColumns)
        EXPECT_EQ(back.lines[0].*column.member, line.*column.member) << QString::fromUtf16(column.name);
    const OrderSave masked = plant.loaded(u"N1"_s, false);
    EXPECT_EQ(masked.lines[0].單價 + masked.lines[0].小計, u"************"_s);
    EXPECT_EQ(masked.lines[0].原單價, u"5"_s);
}

TEST(OrderStore, DeliveryDatesOfBoardTakeTheFirst) {
    for (const auto& [category, code, dates] :
         casesOf<3>({u"紙板|B1|20250201 20250201 20250305", u"物料|M1|20250201  20250305"})) {
        OrderPlant plant;
        OrderLines lines(3, plant.line(code, 1, 1));
        lines[0].交貨日期 = u"20250201"_s;
        lines[2].交貨日期 = u"20250305"_s;
        plant.saved(plant.newOrder(u"N1"_s, lines, category));
        EXPECT_EQ(plant.rows(u"select 交貨日期 from 採購明細資料 order by 序").join(u' '), dates);
    }
}

TEST(OrderStore, ApprovalIsWrittenOrTakenBack) {
    for (const auto& [mark, date, written] :
         casesOf<3>({u"Y|20250110|Y|主管|20250110", u"Y||Y|主管|20250115", u"Y|20250230|Y|主管|20250115",
                     u"N|20250110|N||", u"|20250110|N||"})) {
        OrderPlant plant;
        OrderSave save = plant.newOrder(u"N1"_s, {plant.line(u"M1"_s, 1, 1)});
        save.header.審單 = mark;
        save.header.審單人 = u"主管"_s;
        save.header.審單日期 = date;
        saveOrder(plant.session, save);
        EXPECT_EQ(plant.rows(u"select 審單,審單人,審單日期 from 採購資料"), QStringList(written));
    }
}

TEST(OrderStore, AnEditKeepsWhatIsNotItsOwn) {
    OrderPlant plant;
    plant.saved(plant.newOrder(u"N1"_s, {plant.line(u"M1"_s, 10, 8, u"R1"_s), plant.line(u"M2"_s, 5, 2)}));
    plant.run({u"update 採購資料 set 轉稅='1',發票號碼='F9' where 採購單號='N1'",
               u"insert into 詢價明細資料 (詢價單號,序) values ('N1',1),('N2',1)",
               u"insert into 詢價單價記錄 (詢價單號,貨品代號) values ('N1','M1'),('N2','M1')"});
    OrderSave edit = plant.loaded(u"N1"_s);
    // Goods come in while the order is open.
    plant.run({u"update 採購明細資料 set 已入庫數='6',未交數='4',已檢驗數='7',檢驗合格數='6',送清='Y' where "
               u"採購單號='N1' and 序=1"});
    plant.pool.setClock(QDateTime(QDate(2025, 1, 16), QTime(10, 0)));
    plant.session.salesmanName = u"另一人"_s;
    edit.lines[0].數量 = u"7"_s;
    edit.lines.erase(edit.lines.begin() + 1);
    edit.lines.push_back(plant.line(u"M2"_s, 1, 3, u"R1"_s));
    EXPECT_EQ(outcomeOf(plant.session, edit), u"saved"_s);
    EXPECT_EQ(plant.rows(u"select 製單人,製單時間,修改人,修改時間,轉稅,發票號碼 from 採購資料"),
              QStringList(u"測試員|2025-01-15 08:30:00|另一人|2025-01-16 10:00:00|1|F9"_s));
    EXPECT_EQ(
        plant.rows(u"select 序,原料代號,數量,已入庫數,未交數,已檢驗數,檢驗合格數,送清 from 採購明細資料"),
        QStringList({u"1|M1|7|6|1|7|6|Y"_s, u"2|M2|1|0|1|0|0|N"_s}));
    EXPECT_EQ(plant.rows(u"select 原料代號,已采購數 from 原料申購明細"),
              QStringList({u"M1|12"_s, u"M2|1"_s}));
    EXPECT_EQ(plant.rows(u"select 詢價單號 from 詢價明細資料") +
                  plant.rows(u"select 詢價單號 from 詢價單價記錄"),
              QStringList({u"N2"_s, u"N2"_s}));
}

TEST(OrderStore, NumbersOfLinesStandAboveAllReceived) {
    OrderPlant plant;
    OrderSave edit = plant.saved(plant.newOrder(u"N1"_s, OrderLines(3, plant.line(u"M1"_s, 1, 1))));
    plant.run({u"insert into 原料入庫明細 (入庫單號,序,採購單號,採購序) values "
               u"('E1',1,'N1','12'),('E1',2,'N1','9'),('E2',1,'N2','40'),('E2',2,'N1','')"});
    edit.lines.erase(edit.lines.begin() + 1, edit.lines.end());
    edit.lines.push_back(plant.line(u"M1"_s, 1, 1));
    saveOrder(plant.session, edit);
    EXPECT_EQ(plant.rows(u"select 序 from 採購明細資料"), QStringList({u"1"_s, u"13"_s}));
}

TEST(OrderStore, WhoSavedMeanwhileIsNamed) {
    const char16_t* approval = u"update 採購資料 set 審單='Y',審單人='主管',審單日期='20250115'";
    const QString refused = u"提示: 該採購單已審單﹐不能再進行修改!"_s;
    struct Case {
        const char16_t* between;
        QString approvalParam;
        bool mayApprove;
        QString outcome;
    };
    const Case cases[] = {
        {u"update 採購資料 set 轉稅='1'", u"Y"_s, true, u"saved"_s},
        {u"update 採購資料 set 修改人='乙',修改時間='2025-01-15 09:00:00'", u"Y"_s, true,
         u"conflict: 乙 2025-01-15 09:00:00"_s},
        {u"delete from 採購資料", u"Y"_s, true, u"更新錯誤: 採購單 N1 已由其他使用者刪除!"_s},
        {approval, u"Y"_s, false, refused},
        {approval, u""_s, false, refused},
        {approval, u"N"_s, false, u"conflict: 主管 20250115"_s},
        {approval, u"Y"_s, true, u"conflict: 主管 20250115"_s}};
    for (const Case& c : cases) {
        OrderPlant plant;
        OrderSave edit = plant.saved(plant.newOrder(u"N1"_s, {plant.line(u"M1"_s, 10, 8)}));
        edit.mayApprove = c.mayApprove;
        edit.lines[0].備註 = u"改"_s;
        plant.session.approvalParam = c.approvalParam;
        plant.run({c.between});
        const QStringList before = plant.everything();
        EXPECT_EQ(outcomeOf(plant.session, edit), c.outcome);
        if (c.outcome == u"saved") continue;
        EXPECT_EQ(plant.everything(), before) << "nothing is written";
        if (!c.outcome.startsWith(u"conflict")) continue;
        edit.overwrite = true;
        EXPECT_EQ(outcomeOf(plant.session, edit), u"saved"_s);
        EXPECT_EQ(plant.rows(u"select 備註 from 採購明細資料"), QStringList(u"改"_s));
    }
}

TEST(OrderStore, ADeleteTakesItsQuantitiesBack) {
    OrderPlant plant;
    plant.saved(
        plant.newOrder(u"N1"_s, {plant.line(u"M1"_s, 10, 8, u"R1"_s), plant.line(u"M2"_s, 5, 2, u"R1"_s),
                                 plant.line(u"M1"_s, 2, 8, u"R9"_s)}));
    plant.saved(plant.newOrder(u"N2"_s, {plant.line(u"M1"_s, 1, 8)}));
    plant.run({u"update 原料申購明細 set 已采購數='-3' where 原料代號='M2'",
               u"insert into 採購資料報表2 (採購單號) values ('N1'),('N2')"});
    deleteOrder(plant.session, u"N1"_s);
    EXPECT_EQ(plant.rows(u"select 原料代號,已采購數 from 原料申購明細"), QStringList({u"M1|5"_s, u"M2|-3"_s}))
        << "only what is above 0 falls";
    for (const QStringView table : {u"採購資料", u"採購明細資料", u"採購資料報表2"})
        EXPECT_EQ(plant.rowsOf(u"select 採購單號 from "_s + table.toString()), QStringList(u"N2"_s));
}

TEST(OrderStore, ADeleteIsRefused) {
    // What stands there, approval of the launch, what is said.
    const auto cases = casesOf<3>(
        {u"update 採購資料 set 審單='Y'|Y|提示: 該單已審單﹐不允許刪除!",
         u"update 採購資料 set 審單='Y'||提示: 該單已審單﹐不允許刪除!", u"update 採購資料 set 審單='Y'|N|",
         u"update 採購資料 set 審單=null|Y|",
         u"update 採購明細資料 set 已入庫數='0.5' where 序=2|N|刪除警告: 本單據有相關入庫資料﹐不能刪除!",
         u"update 採購明細資料 set 已入庫數=''|Y|"});
    for (const auto& [state, approvalParam, refusal] : cases) {
        OrderPlant plant;
        plant.saved(plant.newOrder(u"N1"_s, {plant.line(u"M1"_s, 10, 8), plant.line(u"M2"_s, 5, 2)}));
        Connection(plant.pool, plant.target).Execute(readyMadeSql(state));
        plant.session.approvalParam = approvalParam;
        const QStringList before = plant.everything();
        EXPECT_EQ(refusalOf([&] { deleteOrder(plant.session, u"N1"_s); }), refusal);
        EXPECT_EQ(plant.everything() == before, !refusal.isEmpty()) << state;
    }
}

TEST(OrderStore, AConnectionThatFailsAtAnyCallLeavesNothingHalfDone) {
    OrderPlant plant;
    const auto failSave = [&](const char* name, const OrderSave& order) {
        return failEveryCall(name, plant, [&] {
            OrderSave save = order;
            saveOrder(plant.session, save);
        });
    };
    OrderSave board = plant.saved(plant.newOrder(u"N2"_s, {plant.line(u"B1"_s, 10, 9)}, u"紙板"_s));
    const int added = failSave("new", plant.newOrder(u"N1"_s, {plant.line(u"M1"_s, 10, 8, u"R1"_s),
                                                               plant.line(u"M2"_s, 5, 2, u"R1"_s)}));
    OrderSave edit = plant.loaded(u"N1"_s);
    edit.lines[0].單價 = edit.lines[0].原單價 = u"9"_s;
    edit.lines.back() = plant.line(u"M2"_s, 2, 6);
    const int changed = failSave("edit", edit);
    board.lines[0].單價 = board.lines[0].原單價 = u"11"_s;
    const int fed = failSave("edit of board", board);
    const int removed = failEveryCall("delete", plant, [&] { deleteOrder(plant.session, u"N1"_s); });
    std::printf("failed calls: new %d, edit %d, edit of board %d, delete %d\n", added, changed, fed, removed);
    EXPECT_GT(std::min({added, changed, fed, removed}), 8);
    EXPECT_EQ(plant.rows(u"select 採購單號 from 採購資料"), QStringList(u"N2"_s))
        << "each deed was done in the end";
    EXPECT_EQ(plant.value(u"select 進價 from 浪紙資料 where 浪紙代號='B2'"), u"11"_s);
}

TEST(OrderStore, ANumberThatStandsAlreadyIsADuplicate) {
    OrderPlant plant;
    plant.saved(plant.newOrder(u"N1"_s, {plant.line(u"M1"_s, 10, 8)}));
    const QStringList before = plant.everything();
    OrderSave again = plant.newOrder(u"n1"_s, {plant.line(u"M2"_s, 1, 1, u"R1"_s)});
    EXPECT_EQ(errorOf([&] { saveOrder(plant.session, again); }), DatabaseError::DuplicateKey);
    OrderSave twice =
        plant.newOrder(u"N3"_s, {plant.line(u"M1"_s, 1, 1, u"R1"_s), plant.line(u"M1"_s, 2, 1)});
    twice.lines[0].序 = twice.lines[1].序 = u"4"_s;
    EXPECT_EQ(errorOf([&] { saveOrder(plant.session, twice); }), DatabaseError::DuplicateKey);
    EXPECT_EQ(plant.everything(), before);
}

TEST(OrderStore, ASavedPriceGoesBackOnce) {
    // Family, item, price, whether it is seen; whose history grows; 進價, 進料單位 and 幣別 of the item afterwards.
    const auto cases = casesOf<6>(
        {u"物料|M1|10|yes||10|kg|台幣", u"物料|M1|0|yes||10|kg|台幣", u"物料|M1|12.5|no||10|kg|台幣",
         u"物料|M1|12.5|yes|M1|12.5|kg|台幣", u"物料|M2|4|yes|M2|4|kg|台幣", u"物料|沒有|9|yes||(none)",
         u"紙板|B1|6|yes|B1 B2|6|kg|台幣", u"紙板|B3|8|yes|B3|8|kg|台幣", u"凸版|P1|91|yes|P1|91|kg|台幣"});
    const QString all =
        u"select 類別,貨品代號,添加日期,單價,數量,幣別,廠商代號,廠商簡稱,作業員 from 歷史單價記錄 order by 貨品代號"_s;
    for (const auto& [category, code, price, seen, fed, master] : cases) {
        OrderPlant plant;
        OrderSave save = plant.newOrder(u"N1"_s, {plant.line(code, 10, price.toDouble())}, category);
        save.canSeePrice = seen == u"yes";
        OrderSave again = plant.saved(save);
        const ItemFamily* family = itemFamily(category);
        const QStringList items = plant.rowsOf(
            u"select 進價,進料單位,幣別 from %1 where %2='%3'"_s.arg(family->table, family->code, code));
        EXPECT_EQ(items.value(0, u"(none)"_s), master) << code << price;
        QStringList history;
        for (const QString& item : fed.split(u' ', Qt::SkipEmptyParts))
            history << u"%1|%2|20250115|%3|10|台幣|V1|甲商|tester"_s.arg(category, item, price);
        EXPECT_EQ(plant.rowsOf(all), history) << code << price;
        // Saved again as it stands, whatever the master says by now.
        plant.run({u"update 物料資料 set 進價='1'", u"update 浪紙資料 set 進價='1'",
                   u"update 凸版主料資料 set 進價='1'"});
        saveOrder(plant.session, again);
        EXPECT_EQ(plant.rowsOf(all), history) << code << price << " saved again";
    }
}
