#include "data/test_database.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

class RecordsetTest : public testing::Test {
protected:
    RecordsetTest() {
        database.run(
            {u"create table [品項] ([代號] nvarchar(20) not null, [名稱] nvarchar(50), [數量] float, "
             u"[序] int, primary key ([代號]))",
             u"insert into [品項] values ('A1', N'紙板', 1.5, 1)",
             u"insert into [品項] values ('B2', null, null, 2)",
             u"insert into [品項] values ('c3', N'膠水', 1250, 3)"});
    }

    Recordset all(Cursor cursor = Cursor::Static) {
        Recordset rows;
        rows.Open(sql(u"select * from [品項] order by [序]"), connection, cursor);
        return rows;
    }

    TestDatabase database;
    Connection connection{database.pool, database.target};
};

TEST_F(RecordsetTest, Moves) {
    for (const Cursor cursor : {Cursor::Static, Cursor::Keyset, Cursor::Optimistic, Cursor::Batch}) {
        Recordset rows = all(cursor);
        EXPECT_EQ(rows.AbsolutePosition(), 1);
        EXPECT_EQ(rows.RecordCount(), 3);
        rows.MovePrevious();
        EXPECT_TRUE(rows.BOF_());
        EXPECT_FALSE(rows.EOF_());
        EXPECT_EQ(rows.AbsolutePosition(), 0);
        rows.MovePrevious();
        rows.MoveNext();
        EXPECT_EQ(rows.text(u"代號"), u"A1");
        rows.MoveLast();
        EXPECT_EQ(rows.AbsolutePosition(), 3);
        rows.MoveNext();
        EXPECT_TRUE(rows.EOF_());
        rows.MoveNext();
        rows.MovePrevious();
        EXPECT_EQ(rows.text(u"代號"), u"c3");
        rows.setAbsolutePosition(2);
        EXPECT_EQ(rows.text(u"代號"), u"B2");
        rows.setAbsolutePosition(99);
        EXPECT_TRUE(rows.EOF_());
        rows.MoveFirst();
        EXPECT_EQ(rows.text(u"代號"), u"A1");
    }
}

TEST_F(RecordsetTest, AnEmptySetIsAtBothEnds) {
    for (const Cursor cursor : {Cursor::Static, Cursor::Optimistic}) {
        Recordset rows;
        rows.Open(sql(u"select * from [品項] where 1=0"), connection, cursor);
        EXPECT_TRUE(rows.EOF_() && rows.BOF_());
        EXPECT_EQ(rows.RecordCount(), 0);
        for (const auto move :
             {&Recordset::MoveFirst, &Recordset::MoveLast, &Recordset::MoveNext, &Recordset::MovePrevious}) {
            (rows.*move)();
            EXPECT_EQ(rows.AbsolutePosition(), 0);
            EXPECT_TRUE(fails([&] { rows.text(u"代號"); }, DatabaseError::Usage));
        }
        EXPECT_EQ(rows.columnNames(), (QStringList{u"代號"_s, u"名稱"_s, u"數量"_s, u"序"_s}));
    }
}

TEST_F(RecordsetTest, ReadsFields) {
    Recordset rows = all();
    EXPECT_EQ(rows.text(u"數量"), u"1.5");
    EXPECT_EQ(rows.number(u"數量"), 1.5);
    EXPECT_TRUE(rows.isNumeric(rows.column(u"數量")));
    EXPECT_TRUE(rows.isNumeric(rows.column(u"序")));
    EXPECT_FALSE(rows.isNumeric(rows.column(u"名稱")));
    rows.MoveNext();
    EXPECT_EQ(rows.text(u"名稱"), u"");
    EXPECT_TRUE(rows.isNull(u"名稱"));
    EXPECT_EQ(rows.number(u"數量"), 0);
    EXPECT_FALSE(rows.isNull(u"代號"));
    EXPECT_EQ(rows.textAt(2, 2), u"1250");
    EXPECT_TRUE(rows.isNullAt(1, 1));
    EXPECT_EQ(rows.AbsolutePosition(), 2) << "any cell without moving";
    for (const auto& [row, column] : {std::pair{3, 0}, {-1, 0}, {0, 4}, {0, -1}})
        EXPECT_TRUE(fails([&, r = row, c = column] { rows.textAt(r, c); }, DatabaseError::Usage));
    EXPECT_TRUE(fails([&] { rows.text(u"沒有"); }, DatabaseError::InvalidColumn));
    EXPECT_TRUE(fails([&] { rows.text(4); }, DatabaseError::Usage));
}

TEST_F(RecordsetTest, FindsColumnsWithoutCase) {
    const Recordset rows =
        select(connection, sql(u"select [代號] as Code, [序] as code, [名稱] as H名稱 from [品項]"));
    EXPECT_EQ(rows.column(u"CODE"), 0);
    EXPECT_EQ(rows.column(u"code"), 1) << "the exact name goes first";
    EXPECT_EQ(rows.column(u"h名稱"), 2);
}

TEST_F(RecordsetTest, FindComparesAsTheServerDoes) {
    struct Case {
        int from;
        QString column, value;
        int position;
    };
    const std::vector<Case> cases{{1, u"代號"_s, u"b2"_s, 2},    {1, u"代號"_s, u"C3  "_s, 3},
                                  {1, u"名稱"_s, u"膠水 "_s, 3}, {2, u"代號"_s, u"B2"_s, 2},
                                  {3, u"代號"_s, u"A1"_s, 0},    {1, u"代號"_s, u"A"_s, 0},
                                  {1, u"名稱"_s, u""_s, 0},      {1, u"數量"_s, u"1250"_s, 3},
                                  {0, u"代號"_s, u"A1"_s, 1},    {1, u"名稱"_s, u"膠水x"_s, 0}};
    for (const Cursor cursor : {Cursor::Static, Cursor::Optimistic}) {
        Recordset rows = all(cursor);
        for (const Case& c : cases) {
            rows.setAbsolutePosition(c.from);
            EXPECT_EQ(rows.Find(c.column, c.value), c.position > 0);
            EXPECT_EQ(rows.AbsolutePosition(), c.position) << c.value;
            EXPECT_EQ(rows.EOF_(), c.position == 0);
        }
    }
}

TEST_F(RecordsetTest, RequeryReadsAgainOnAnyConnection) {
    Recordset rows = all();
    rows.MoveLast();
    connection.Close();
    EXPECT_EQ(rows.text(u"代號"), u"c3") << "read to its end, it outlives its connection";
    database.run({u"delete from [品項] where [序]<3"});
    Connection another(database.pool, database.target);
    rows.Requery(another);
    EXPECT_EQ(rows.RecordCount(), 1);
    EXPECT_EQ(rows.AbsolutePosition(), 1);
}

TEST_F(RecordsetTest, KeepsValuesAsTypedButForNul) {
    const QStringList values =
        u"O'Neil|料\U00020000\U0001F4E6務|a\r\nb\nc\td| 前後 |\uFEFF標記|\"'[]{}?%_;--|N'x'|n\0ul"_s.split(
            u'|')
        << QString(5000, u'長');
    Recordset rows = all(Cursor::Optimistic);
    int number = 10;
    for (const QString& value : values) {
        rows.AddNew();
        rows.set(u"代號", QString::number(++number));
        rows.set(u"名稱", value);
        rows.Update();
        connection.Execute(sql(u"insert into [品項] ([代號],[名稱]) values ('e{}','{}')", number, value));
        const Recordset back = select(
            connection, sql(u"select [名稱] from [品項] where [代號]='{}' or [代號]='e{}'", number, number));
        ASSERT_EQ(back.RecordCount(), 2);
        EXPECT_EQ(back.textAt(0, 0), QString(value).remove(QChar(u'\0')));
        EXPECT_EQ(back.textAt(1, 0), back.textAt(0, 0));
    }
}
