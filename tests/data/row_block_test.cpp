#include "data/row_block.h"
#include "data/test_database.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

static void appendText(RowBlock& rows, const QByteArray& utf8) {
    rows.appendText(utf8.constData(), static_cast<int>(utf8.size()));
}

TEST(RowBlock, KeepsEveryKindOfCell) {
    RowBlock rows;
    rows.reset(6);
    rows.appendNull();
    appendText(rows, "");
    appendText(rows, QByteArray("\xef\xbb\xbf料\U00020000\0x", 12));
    rows.appendFloat(0.1 + 0.2);
    rows.appendInteger(-9'007'199'254'740'993);
    rows.appendFloat(-0.0);
    rows.finish();
    ASSERT_EQ(rows.rows(), 1);
    EXPECT_EQ(rows.cell(0, 0).kind, RowBlock::Kind::Null);
    EXPECT_EQ(rows.cell(0, 1).kind, RowBlock::Kind::Text);
    EXPECT_EQ(rows.cell(0, 1).text(), u"");
    EXPECT_EQ(rows.cell(0, 2).text(), u"\uFEFF料\U00020000\0x"_s);
    EXPECT_EQ(rows.cell(0, 3).text(), u"0.3");
    EXPECT_EQ(rows.cell(0, 3).number(), 0.1 + 0.2);
    EXPECT_EQ(rows.cell(0, 4).text(), u"-9007199254740993");
    EXPECT_EQ(rows.cell(0, 5).text(), u"0");
}

TEST(RowBlock, FindsCellsOverManyChunks) {
    constexpr int count = 5000;
    RowBlock rows;
    rows.reset(3);
    for (int i = 0; i < count; ++i) {
        appendText(rows, QByteArray::number(i));
        if (i % 3 == 0)
            rows.appendNull();
        else
            rows.appendInteger(i);
        appendText(rows, QByteArray(i % 7, 'x'));
    }
    rows.finish();
    ASSERT_EQ(rows.rows(), count);
    for (int i = 0; i < count; ++i) {
        ASSERT_EQ(rows.cell(i, 0).text(), QString::number(i));
        ASSERT_EQ(rows.cell(i, 1).kind == RowBlock::Kind::Null, i % 3 == 0) << i;
        ASSERT_EQ(rows.cell(i, 2).bytes.size(), i % 7) << i;
    }
    rows.reset(1);
    EXPECT_EQ(rows.rows(), 0);
}

// Half a million rows of a listing must fit beside everything else on an old office machine.
TEST(RowBlock, IsCompact) {
    RowBlock rows;
    rows.reset(14);
    for (int i = 0; i < 50'000; ++i)
        for (int column = 0; column < 14; ++column)
            appendText(rows, "1234567890");
    rows.finish();
    EXPECT_LT(rows.memory() / 50'000, 14 * (10 + 4) * 11 / 10);
}
