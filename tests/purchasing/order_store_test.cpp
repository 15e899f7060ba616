#include "common/refusal.h"
#include "purchasing/order_plant.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

/// "title: text" of the refusal, "conflict: person time", or "saved".
QString outcomeOf(Session& session, OrderSave save) {
    try {
        const auto conflict = saveOrder(session, save);
        return conflict ? u"conflict: "_s + conflict->person + u' ' + conflict->time : u"saved"_s;
    } catch (const Refusal& refusal) {
        return refusal.title + u": "_s + refusal.text;
    }
}

QString outcomeOfDelete(Session& session, const QString& number) {
    try {
        deleteOrder(session, number);
        return u"deleted"_s;
    } catch (const Refusal& refusal) {
        return refusal.title + u": "_s + refusal.text;
    }
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
    OrderSave save = plant.newOrder(u"N1"_s, {line}, u"紙板"_s);
    saveOrder(plant.session, save);
    const OrderSave back = plant.loaded(u"N1"_s);
    ASSERT_EQ(back.lines.size(), 1u);
    for (const OrderLineColumn& column : OrderLineColumns)
        EXPECT_EQ(back.lines[0].*column.member, line.*column.member)
            << QString::fromUtf16(column.name).toStdString();
    const OrderSave masked = plant.loaded(u"N1"_s, false);
    EXPECT_EQ(masked.lines[0].單價 + masked.lines[0].小計, u"************"_s);
    EXPECT_EQ(masked.lines[0].原單價, u"5"_s);
}

TEST(OrderStore, DeliveryDatesOfBoardTakeTheFirst) {
    for (const auto& [category, code, expected] :
         {std::tuple(u"紙板"_s, u"B1"_s, QStringList({u"1|20250201"_s, u"2|20250201"_s, u"3|20250305"_s})),
          std::tuple(u"物料"_s, u"M1"_s, QStringList({u"1|20250201"_s, u"2|"_s, u"3|20250305"_s}))}) {
        OrderPlant plant;
        OrderLines lines(3, plant.line(code, 1, 1));
        lines[0].交貨日期 = u"20250201"_s;
        lines[2].交貨日期 = u"20250305"_s;
        OrderSave save = plant.newOrder(u"N1"_s, lines, category);
        saveOrder(plant.session, save);
        EXPECT_EQ(plant.rows(u"select 序,交貨日期 from 採購明細資料"), expected);
    }
}

TEST(OrderStore, ApprovalIsWrittenOrTakenBack) {
    struct Case {
        QString mark, person, date, written;
    };
    const Case cases[] = {{u"Y"_s, u"主管"_s, u"20250110"_s, u"Y|主管|20250110"_s},
                          {u"Y"_s, u"主管"_s, u""_s, u"Y|主管|20250115"_s},
                          {u"Y"_s, u"主管"_s, u"20250230"_s, u"Y|主管|20250115"_s},
                          {u"N"_s, u"主管"_s, u"20250110"_s, u"N||"_s},
                          {u""_s, u"主管"_s, u"20250110"_s, u"N||"_s}};
    for (const Case& c : cases) {
        OrderPlant plant;
        OrderSave save = plant.newOrder(u"N1"_s, {plant.line(u"M1"_s, 1, 1)});
        save.header.審單 = c.mark;
        save.header.審單人 = c.person;
        save.header.審單日期 = c.date;
        saveOrder(plant.session, save);
        EXPECT_EQ(plant.rows(u"select 審單,審單人,審單日期 from 採購資料"), QStringList(c.written));
    }
}

TEST(OrderStore, AnEditKeepsWhatIsNotItsOwn) {
    OrderPlant plant;
    OrderSave first =
        plant.newOrder(u"N1"_s, {plant.line(u"M1"_s, 10, 8, u"R1"_s), plant.line(u"M2"_s, 5, 2)});
    saveOrder(plant.session, first);
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
    OrderSave first = plant.newOrder(u"N1"_s, OrderLines(3, plant.line(u"M1"_s, 1, 1)));
    saveOrder(plant.session, first);
    plant.run({u"insert into 原料入庫明細 (入庫單號,序,採購單號,採購序) values "
               u"('E1',1,'N1','12'),('E1',2,'N1','9'),('E2',1,'N2','40'),('E2',2,'N1','')"});
    OrderSave edit = plant.loaded(u"N1"_s);
    edit.lines.erase(edit.lines.begin() + 1, edit.lines.end());
    edit.lines.push_back(plant.line(u"M1"_s, 1, 1));
    saveOrder(plant.session, edit);
    EXPECT_EQ(plant.rows(u"select 序 from 採購明細資料"), QStringList({u"1"_s, u"13"_s}));
}

TEST(OrderStore, WhoSavedMeanwhileIsNamed) {
    struct Case {
        const char16_t* between;
        QString outcome;
    };
    const Case cases[] = {
        {u"update 採購資料 set 轉稅='1'", u"saved"_s},
        {u"update 採購資料 set 修改人='乙',修改時間='2025-01-15 09:00:00'",
         u"conflict: 乙 2025-01-15 09:00:00"_s},
        {u"update 採購資料 set 審單='Y',審單人='丙',審單日期='20250115'", u"conflict: 丙 20250115"_s},
        {u"delete from 採購資料", u"更新錯誤: 採購單 N1 已由其他使用者刪除!"_s}};
    for (const Case& c : cases) {
        OrderPlant plant;
        OrderSave first = plant.newOrder(u"N1"_s, {plant.line(u"M1"_s, 10, 8)});
        saveOrder(plant.session, first);
        OrderSave edit = plant.loaded(u"N1"_s);
        edit.mayApprove = true;
        edit.lines[0].備註 = u"改"_s;
        plant.run({c.between});
        const QStringList before = plant.everything();
        EXPECT_EQ(outcomeOf(plant.session, edit), c.outcome);
        if (c.outcome == u"saved") continue;
        EXPECT_EQ(plant.everything(), before) << "nothing is written";
        edit.overwrite = true;
        if (c.outcome.startsWith(u"conflict")) {
            EXPECT_EQ(outcomeOf(plant.session, edit), u"saved"_s);
            EXPECT_EQ(plant.rows(u"select 備註 from 採購明細資料"), QStringList(u"改"_s));
        }
    }
}

TEST(OrderStore, AStoredMarkStopsWhoMayNotApprove) {
    struct Case {
        QString approvalParam;
        bool mayApprove;
        QString outcome;
    };
    const Case cases[] = {{u"Y"_s, false, u"提示: 該採購單已審單﹐不能再進行修改!"_s},
                          {u""_s, false, u"提示: 該採購單已審單﹐不能再進行修改!"_s},
                          {u"N"_s, false, u"conflict: 主管 20250115"_s},
                          {u"Y"_s, true, u"conflict: 主管 20250115"_s}};
    for (const Case& c : cases) {
        OrderPlant plant;
        OrderSave first = plant.newOrder(u"N1"_s, {plant.line(u"M1"_s, 10, 8)});
        saveOrder(plant.session, first);
        OrderSave edit = plant.loaded(u"N1"_s);
        edit.mayApprove = c.mayApprove;
        plant.session.approvalParam = c.approvalParam;
        plant.run({u"update 採購資料 set 審單='Y',審單人='主管',審單日期='20250115'"});
        EXPECT_EQ(outcomeOf(plant.session, edit), c.outcome);
    }
}

TEST(OrderStore, ADeleteTakesItsQuantitiesBack) {
    OrderPlant plant;
    OrderSave first =
        plant.newOrder(u"N1"_s, {plant.line(u"M1"_s, 10, 8, u"R1"_s), plant.line(u"M2"_s, 5, 2, u"R1"_s),
                                 plant.line(u"M1"_s, 2, 8, u"R9"_s)});
    saveOrder(plant.session, first);
    OrderSave other = plant.newOrder(u"N2"_s, {plant.line(u"M1"_s, 1, 8)});
    saveOrder(plant.session, other);
    plant.run({u"update 原料申購明細 set 已采購數='-3' where 原料代號='M2'",
               u"insert into 採購資料報表2 (採購單號) values ('N1'),('N2')"});
    EXPECT_EQ(outcomeOfDelete(plant.session, u"N1"_s), u"deleted"_s);
    EXPECT_EQ(plant.rows(u"select 原料代號,已采購數 from 原料申購明細"), QStringList({u"M1|5"_s, u"M2|-3"_s}))
        << "only what is above 0 falls";
    for (const QStringView table : {u"採購資料", u"採購明細資料", u"採購資料報表2"})
        EXPECT_EQ(plant.rowsOf(u"select 採購單號 from "_s + table.toString()), QStringList(u"N2"_s));
}

TEST(OrderStore, ADeleteIsRefused) {
    struct Case {
        const char16_t* before;
        QString approvalParam, outcome;
    };
    const Case cases[] = {{u"update 採購資料 set 審單='Y'", u"Y"_s, u"提示: 該單已審單﹐不允許刪除!"_s},
                          {u"update 採購資料 set 審單='Y'", u""_s, u"提示: 該單已審單﹐不允許刪除!"_s},
                          {u"update 採購資料 set 審單='Y'", u"N"_s, u"deleted"_s},
                          {u"update 採購資料 set 審單=null", u"Y"_s, u"deleted"_s},
                          {u"update 採購明細資料 set 已入庫數='0.5' where 序=2", u"N"_s,
                           u"刪除警告: 本單據有相關入庫資料﹐不能刪除!"_s},
                          {u"update 採購明細資料 set 已入庫數=''", u"Y"_s, u"deleted"_s}};
    for (const Case& c : cases) {
        OrderPlant plant;
        OrderSave first = plant.newOrder(u"N1"_s, {plant.line(u"M1"_s, 10, 8), plant.line(u"M2"_s, 5, 2)});
        saveOrder(plant.session, first);
        plant.run({c.before});
        plant.session.approvalParam = c.approvalParam;
        const QStringList before = plant.everything();
        EXPECT_EQ(outcomeOfDelete(plant.session, u"N1"_s), c.outcome);
        if (c.outcome == u"deleted") continue;
        EXPECT_EQ(plant.everything(), before);
    }
}

namespace {

/// Fails every database call of `deed` in turn; after each failure everything must be as it was. Gives the number of calls.
template <typename Deed>
int failEveryCall(OrderPlant& plant, Deed deed) {
    const QStringList before = plant.everything();
    for (int n = 1; n < 1000; ++n) {
        plant.pool.failAt(n);
        int number = 0;
        try {
            deed();
        } catch (const DatabaseError& error) {
            number = error.nativeError;
        }
        plant.pool.failAt(0);
        if (number == 0) return n - 1;
        EXPECT_EQ(number, DatabaseError::Injected) << "call " << n;
        EXPECT_EQ(plant.everything(), before) << "something is left of a save that failed at call " << n;
    }
    return 1000;
}

} // namespace

TEST(OrderStore, AConnectionThatFailsAtAnyCallLeavesNothingHalfDone) {
    OrderPlant plant;
    const OrderSave made =
        plant.newOrder(u"N1"_s, {plant.line(u"M1"_s, 10, 8, u"R1"_s), plant.line(u"M2"_s, 5, 2, u"R1"_s)});
    OrderSave boards = plant.newOrder(u"N2"_s, {plant.line(u"B1"_s, 10, 9)}, u"紙板"_s);
    saveOrder(plant.session, boards);
    const int added = failEveryCall(plant, [&] {
        OrderSave save = made;
        saveOrder(plant.session, save);
    });
    OrderSave edit = plant.loaded(u"N1"_s);
    edit.lines[0].單價 = edit.lines[0].原單價 = u"9"_s;
    edit.lines.pop_back();
    edit.lines.push_back(plant.line(u"M2"_s, 2, 6));
    const int changed = failEveryCall(plant, [&] {
        OrderSave save = edit;
        saveOrder(plant.session, save);
    });
    OrderSave board = plant.loaded(u"N2"_s);
    board.lines[0].單價 = board.lines[0].原單價 = u"11"_s;
    const int fed = failEveryCall(plant, [&] {
        OrderSave save = board;
        saveOrder(plant.session, save);
    });
    const int removed = failEveryCall(plant, [&] { deleteOrder(plant.session, u"N1"_s); });
    std::printf("failed calls: new %d, edit %d, edit of board %d, delete %d\n", added, changed, fed, removed);
    EXPECT_GT(std::min({added, changed, fed, removed}), 8);
    EXPECT_EQ(plant.rows(u"select 採購單號 from 採購資料"), QStringList(u"N2"_s))
        << "each deed was done in the end";
    EXPECT_EQ(plant.value(u"select 進價 from 浪紙資料 where 浪紙代號='B2'"), u"11"_s);
}

TEST(OrderStore, ANumberThatStandsAlreadyIsADuplicate) {
    OrderPlant plant;
    OrderSave first = plant.newOrder(u"N1"_s, {plant.line(u"M1"_s, 10, 8)});
    saveOrder(plant.session, first);
    const QStringList before = plant.everything();
    OrderSave again = plant.newOrder(u"n1 "_s.trimmed(), {plant.line(u"M2"_s, 1, 1, u"R1"_s)});
    EXPECT_EQ(errorOf([&] { saveOrder(plant.session, again); }), DatabaseError::DuplicateKey);
    OrderSave twice =
        plant.newOrder(u"N3"_s, {plant.line(u"M1"_s, 1, 1, u"R1"_s), plant.line(u"M1"_s, 2, 1)});
    twice.lines[0].序 = twice.lines[1].序 = u"4"_s;
    EXPECT_EQ(errorOf([&] { saveOrder(plant.session, twice); }), DatabaseError::DuplicateKey);
    EXPECT_EQ(plant.everything(), before);
}

TEST(OrderStore, ASavedPriceGoesBackOnce) {
    struct Case {
        QString category, code;
        double price;
        bool canSeePrice;
        QString master; ///< 進價|進料單位|幣別 afterwards
        QStringList history;
    };
    const QString row = u"%1|%2|20250115|%3|10|台幣|V1|甲商|tester"_s;
    const Case cases[] = {
        {u"物料"_s, u"M1"_s, 10, true, u"10|kg|台幣"_s, {}},
        {u"物料"_s, u"M1"_s, 0, true, u"10|kg|台幣"_s, {}},
        {u"物料"_s, u"M1"_s, 12.5, false, u"10|kg|台幣"_s, {}},
        {u"物料"_s, u"M1"_s, 12.5, true, u"12.5|kg|台幣"_s, {row.arg(u"物料"_s, u"M1"_s, u"12.5"_s)}},
        {u"物料"_s, u"M2"_s, 4, true, u"4|kg|台幣"_s, {row.arg(u"物料"_s, u"M2"_s, u"4"_s)}},
        {u"物料"_s, u"沒有"_s, 9, true, u"(none)"_s, {}},
        {u"紙板"_s,
         u"B1"_s,
         6,
         true,
         u"6|kg|台幣"_s,
         {row.arg(u"紙板"_s, u"B1"_s, u"6"_s), row.arg(u"紙板"_s, u"B2"_s, u"6"_s)}},
        {u"紙板"_s, u"B3"_s, 8, true, u"8|kg|台幣"_s, {row.arg(u"紙板"_s, u"B3"_s, u"8"_s)}},
        {u"凸版"_s, u"P1"_s, 91, true, u"91|kg|台幣"_s, {row.arg(u"凸版"_s, u"P1"_s, u"91"_s)}}};
    for (const Case& c : cases) {
        OrderPlant plant;
        OrderSave save = plant.newOrder(u"N1"_s, {plant.line(c.code, 10, c.price)}, c.category);
        save.canSeePrice = c.canSeePrice;
        saveOrder(plant.session, save);
        const QString what = c.category + c.code + numberText(c.price);
        const QString statement =
            c.category == u"物料" ? u"select 進價,進料單位,幣別 from 物料資料 where 物料代號='%1'"_s
            : c.category == u"紙板" ? u"select 進價,進料單位,幣別 from 浪紙資料 where 浪紙代號='%1'"_s
                                    : u"select 進價,進料單位,幣別 from 凸版主料資料 where 主料代號='%1'"_s;
        const QStringList master = plant.rowsOf(statement.arg(c.code));
        EXPECT_EQ(master.value(0, u"(none)"_s), c.master) << what.toStdString();
        const QString all =
            u"select 類別,貨品代號,添加日期,單價,數量,幣別,廠商代號,廠商簡稱,作業員 from 歷史單價記錄 order by 貨品代號"_s;
        EXPECT_EQ(plant.rowsOf(all), c.history) << what.toStdString();
        // Saved again as it stands, whatever the master says by now.
        plant.run({u"update 物料資料 set 進價='1'", u"update 浪紙資料 set 進價='1'",
                   u"update 凸版主料資料 set 進價='1'"});
        OrderSave again = plant.loaded(u"N1"_s, c.canSeePrice);
        saveOrder(plant.session, again);
        EXPECT_EQ(plant.rowsOf(all), c.history) << what.toStdString() << " saved again";
    }
}
