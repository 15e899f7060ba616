#include "data/test_database.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

class RecordsetTest : public testing::Test {
protected:
    RecordsetTest() {
        database.run(
            {u"create table [品項] ([代號] nvarchar(20) not null, [名稱] nvarchar(50) default N'無', "
             u"[數量] float, [序] int, primary key ([代號]))",
             u"insert into [品項] values ('A1', N'紙板', 1.5, 1), ('B2', null, null, 2), "
             u"('c3', N'膠水', 1250, 3)",
             u"create table [無鍵] ([甲] nvarchar(20), [乙] nvarchar(20) default 'd')"});
        database.pool.setTrace([this](const StatementTrace& trace) { natives += trace.native; });
    }

    Recordset open(QStringView statement, Cursor cursor = Cursor::Optimistic) {
        Recordset rows;
        rows.Open(sql(statement), connection, cursor);
        return rows;
    }
    Recordset all(Cursor cursor = Cursor::Static) {
        return open(u"select * from [品項] order by [序]", cursor);
    }

    /// Starts a row of this code.
    static void add(Recordset& rows, const QString& code) {
        rows.AddNew();
        rows.set(u"代號", code);
    }

    QString stored(const char16_t* column, const char16_t* code) {
        const Recordset rows =
            select(connection, sql(u"select [{}] from [品項] where [代號]='{}'", column, code));
        return rows.EOF_() ? u"(none)"_s : rows.isNull(0) ? u"(null)"_s : rows.text(0);
    }

    QStringList sent(const char16_t* verb) const {
        return natives.filter(QString::fromUtf16(verb), Qt::CaseInsensitive);
    }

    TestDatabase database;
    QStringList natives;
    Connection connection{database.pool, database.target};
};

TEST_F(RecordsetTest, Moves) {
    for (const Cursor cursor : {Cursor::Static, Cursor::Keyset, Cursor::Optimistic, Cursor::Batch}) {
        Recordset rows = all(cursor);
        EXPECT_EQ(rows.AbsolutePosition(), 1);
        EXPECT_EQ(rows.RecordCount(), 3);
        rows.MovePrevious();
        EXPECT_TRUE(rows.BOF_() && !rows.EOF_());
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
        Recordset rows = open(u"select * from [品項] where 1=0", cursor);
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
    EXPECT_TRUE(rows.isNumeric(2) && rows.isNumeric(3) && !rows.isNumeric(1));
    rows.MoveNext();
    EXPECT_EQ(rows.text(u"名稱"), u"");
    EXPECT_TRUE(rows.isNull(u"名稱") && !rows.isNull(u"代號"));
    EXPECT_EQ(rows.number(u"數量"), 0);
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
    for (const Cursor cursor : {Cursor::Static, Cursor::Optimistic}) {
        Recordset rows = all(cursor);
        for (const auto& [from, column, value, position] :
             casesOf<4>({u"1|代號|b2|2", u"1|代號|C3  |3", u"1|名稱|膠水 |3", u"2|代號|B2|2", u"3|代號|A1|0",
                         u"1|代號|A|0", u"1|名稱||0", u"1|數量|1250|3", u"0|代號|A1|1", u"1|名稱|膠水x|0"})) {
            rows.setAbsolutePosition(from.toInt());
            EXPECT_EQ(rows.Find(column, value), position != u"0");
            EXPECT_EQ(rows.AbsolutePosition(), position.toInt()) << value;
            EXPECT_EQ(rows.EOF_(), position == u"0");
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

TEST_F(RecordsetTest, AddNewReadsNoRows) {
    int before = 3;
    for (const Cursor cursor : {Cursor::Optimistic, Cursor::Batch}) {
        natives.clear();
        Recordset rows = all(cursor);
        add(rows, u"n%1"_s.arg(before));
        rows.set(u"數量", 0.1);
        cursor == Cursor::Batch ? rows.UpdateBatch() : rows.Update();
        EXPECT_EQ(rows.text(u"數量"), u"0.1");
        EXPECT_TRUE(rows.isNull(u"名稱"));
        EXPECT_TRUE(sent(u"select").isEmpty()) << natives.join(u'\n');
        EXPECT_EQ(sent(u"insert").size(), 1);
        rows.MoveFirst();
        EXPECT_EQ(sent(u"select").size(), 1) << "read at the first move";
        EXPECT_EQ(rows.RecordCount(), ++before) << "the new row among them, once";
    }
    EXPECT_EQ(stored(u"名稱", u"n3"), u"無") << "what was not set takes its default";
    EXPECT_EQ(stored(u"序", u"n3"), u"(null)");
}

TEST_F(RecordsetTest, UpdateWritesTheChangedColumnsOnly) {
    Recordset rows = open(u"select * from [品項] where [代號]='a1'");
    database.run({u"update [品項] set [序]=77"}); // another user, another column
    natives.clear();
    rows.set(u"數量", u"2.25"_s);
    rows.set(u"名稱", u"紙板"_s); // as it was
    rows.Update();
    const QStringList updates = sent(u"UPDATE \"品項\"");
    EXPECT_TRUE(updates.size() == 1 && !updates.front().contains(u"名稱")) << updates.join(u'\n');
    EXPECT_EQ(stored(u"數量", u"A1"), u"2.25");
    EXPECT_EQ(stored(u"序", u"A1"), u"77");
    rows.set(u"數量", 3.5);
    EXPECT_EQ(rows.number(u"數量"), 3.5);
    rows.Update();
    EXPECT_EQ(stored(u"數量", u"A1"), u"3.5") << "the second change knows the first";
    natives.clear();
    rows.Update();
    EXPECT_TRUE(natives.isEmpty()) << "nothing changed, nothing sent";
}

TEST_F(RecordsetTest, NullsAndKeysAreValuesLikeOthers) {
    Recordset rows = all(Cursor::Optimistic);
    rows.setNull(u"名稱");
    rows.Update();
    EXPECT_EQ(stored(u"名稱", u"A1"), u"(null)");
    rows.set(u"代號", u"Z9"_s);
    rows.Update();
    rows.set(u"名稱", u"新"_s);
    rows.Update();
    EXPECT_EQ(stored(u"名稱", u"Z9"), u"新");
    EXPECT_EQ(stored(u"名稱", u"A1"), u"(none)");
    rows.MoveNext();
    rows.set(u"名稱", u"膠"_s); // was null
    rows.set(u"數量", 1.0);
    rows.Update();
    EXPECT_EQ(stored(u"名稱", u"B2"), u"膠");
    EXPECT_FALSE(rows.isNull(u"名稱"));
}

TEST_F(RecordsetTest, AColumnThatAnotherUserChangedIsAConflict) {
    struct Case {
        const char* what;
        const char16_t *theirs, *column;
    };
    for (const Case& c : {Case{"another sum", u"update [品項] set [數量]=9", u"數量"},
                          Case{"only another case", u"update [品項] set [名稱]=N'ab'", u"名稱"},
                          Case{"now null", u"update [品項] set [數量]=null", u"數量"},
                          Case{"deleted", u"delete from [品項]", u"序"}}) {
        database.run({u"delete from [品項]", u"insert into [品項] values ('A1', N'AB', 1.5, 1)"});
        Recordset rows = all(Cursor::Optimistic);
        EXPECT_EQ(rows.text(u"名稱"), u"AB");
        database.run({c.theirs});
        rows.set(QString::fromUtf16(c.column), 5.0);
        EXPECT_TRUE(fails([&] { rows.Update(); }, DatabaseError::Conflict, u"其他使用者")) << c.what;
        EXPECT_NE(stored(c.column, u"A1"), u"5") << c.what;
    }
}

TEST_F(RecordsetTest, ATableWithoutKeyTakesNewRowsOnly) {
    Recordset rows = open(u"select * from [無鍵]");
    for (int equal = 0; equal < 2; ++equal) {
        rows.AddNew();
        rows.set(u"甲", u"1"_s);
        rows.Update();
    }
    rows.AddNew();
    rows.Update(); // all defaults
    rows.MoveFirst();
    ASSERT_EQ(rows.RecordCount(), 3);
    EXPECT_EQ(rows.textAt(2, 1), u"d");
    EXPECT_TRUE(fails([&] { rows.set(u"甲", u"2"_s); }, DatabaseError::Usage, u"主鍵"));
    Recordset partial = open(u"select [名稱] from [品項]");
    EXPECT_TRUE(fails([&] { partial.set(u"名稱", u"x"_s); }, DatabaseError::Usage))
        << "the key was not selected";
}

TEST_F(RecordsetTest, WhatCannotBeWrittenIsRefused) {
    Recordset readOnly = all();
    EXPECT_TRUE(fails([&] { readOnly.AddNew(); }, DatabaseError::Usage));
    EXPECT_TRUE(fails([&] { readOnly.set(u"名稱", u"x"_s); }, DatabaseError::Usage));
    EXPECT_TRUE(fails([&] { readOnly.Update(); }, DatabaseError::Usage));
    Recordset computed = open(u"select [代號], [序]+1 as [下] from [品項]");
    EXPECT_TRUE(fails([&] { computed.set(u"下", 1.0); }, DatabaseError::Usage));
    Recordset joined = open(u"select a.[代號] from [品項] a inner join [品項] b on a.[代號]=b.[代號]");
    EXPECT_TRUE(fails([&] { joined.AddNew(); }, DatabaseError::Usage));
    Recordset rows = all(Cursor::Optimistic);
    connection.Close();
    EXPECT_TRUE(fails([&] { rows.MoveFirst(); }, DatabaseError::Usage))
        << "not yet read, and its connection gone";
}

TEST_F(RecordsetTest, NumbersAndTextsTakeTheFormOfTheirColumn) {
    Recordset rows = all(Cursor::Optimistic);
    rows.AddNew();
    rows.set(u"代號", 7.50);
    rows.set(u"數量", u" 12.5 "_s);
    rows.set(u"序", u""_s);
    rows.Update();
    EXPECT_EQ(stored(u"數量", u"7.5"), u"12.5");
    EXPECT_EQ(stored(u"序", u"7.5"), u"0");
    EXPECT_TRUE(fails([&] { rows.set(u"數量", u"12kg"_s); }, DatabaseError::CastFailed, u"「數量」"));
}

TEST_F(RecordsetTest, LeavingAChangedRowWritesIt) {
    Recordset rows = all(Cursor::Optimistic);
    rows.set(u"名稱", u"離開"_s);
    rows.MoveNext();
    EXPECT_EQ(stored(u"名稱", u"A1"), u"離開");
    add(rows, u"n1"_s);
    rows.AddNew();
    EXPECT_EQ(stored(u"代號", u"n1"), u"n1");
    rows.set(u"代號", u"N1"_s);
    EXPECT_TRUE(fails([&] { rows.Update(); }, DatabaseError::DuplicateKey));
    rows.set(u"代號", u"n2"_s);
    rows.Update();
    EXPECT_EQ(rows.AbsolutePosition(), 5);
    EXPECT_EQ(stored(u"代號", u"n2"), u"n2") << "a refused row can be mended";
}

TEST_F(RecordsetTest, ABatchWritesAllOrNothing) {
    Recordset rows = all(Cursor::Batch);
    rows.set(u"名稱", u"改"_s);
    for (const QString& code : {u"n1"_s, u"n2"_s, u"b2"_s}) { // the last one is there already
        add(rows, code);
        rows.Update();
    }
    EXPECT_TRUE(sent(u"insert").isEmpty()) << "a batch writes when told";
    EXPECT_TRUE(fails([&] { rows.UpdateBatch(); }, DatabaseError::DuplicateKey));
    EXPECT_EQ(database.value(u"select count(*) from [品項]"), u"3");
    EXPECT_EQ(stored(u"名稱", u"A1"), u"紙板");
    EXPECT_FALSE(connection.inTransaction());
    rows.set(u"代號", u"n3"_s);
    rows.UpdateBatch();
    EXPECT_EQ(database.value(u"select count(*) from [品項]"), u"6");
    EXPECT_EQ(stored(u"名稱", u"A1"), u"改");
    natives.clear();
    rows.UpdateBatch();
    EXPECT_TRUE(natives.isEmpty()) << "nothing is written twice";
}

TEST_F(RecordsetTest, RowsOfOneShapeShareOneStatement) {
    Recordset rows = all(Cursor::Batch);
    for (int i = 0; i < 4; ++i) {
        rows.AddNew();
        if (i % 2) rows.set(u"序", double(i));
        rows.set(u"代號", QString::number(i));
        if (i % 2 == 0) rows.set(u"序", double(i));
    }
    rows.UpdateBatch();
    QStringList inserts = sent(u"insert");
    EXPECT_EQ(inserts.size(), 4);
    EXPECT_EQ(inserts.removeDuplicates(), 3);
}
