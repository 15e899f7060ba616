#include "common/text_values.h"
#include "formula/formula_definitions.h"
#include "plant_session.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

TEST(FormulaDefinitions, PlainFormulas) {
    for (const auto& plain :
         {u""_s, u"長*寬*單價*數量/10000"_s, u" 長 * ( 寬 + 2.5 ) - 基重 "_s, u"0.5*單價"_s, u"單價*1.5.2"_s})
        EXPECT_TRUE(isPlainFormula(plain)) << plain;
    for (const auto& other : {u"單價*.5"_s, u"單價*1..5"_s, u"長^2"_s, u"高*寬"_s, u"單價*數"_s, u"長x寬"_s,
                              u"長*寬=1"_s, u"1,000*單價"_s, u"單價*２"_s, u"單　價"_s})
        EXPECT_FALSE(isPlainFormula(other)) << other;
}

TEST(FormulaDefinitions, TheFirstMatchCounts) {
    const FormulaTable table{{u" cm "_s, u"CM"_s, u"PCS"_s, u"㎡"_s, u"長*寬"_s, u"1"_s, u" 紙板 "_s},
                             {u"cm"_s, u"cm"_s, u"pcs"_s, u"㎡"_s, u"寬*長"_s, u"2"_s, u"紙板"_s},
                             {u""_s, u""_s, u"pcs"_s, u"㎡"_s, u"長^2"_s, u"3"_s, u"紙板"_s},
                             {u""_s, u""_s, u"pcs"_s, u"㎡"_s, u"長"_s, u"4"_s, u"紙板"_s},
                             {u""_s, u""_s, u"kg"_s, u"kg"_s, u"x*數量"_s, u"5"_s, u"紙品"_s},
                             {u""_s, u""_s, u""_s, u""_s, u"單價"_s, u"6"_s, u"紙品"_s},
                             {u"0"_s, u"0"_s, u"pcs"_s, u"kg"_s, u"數量"_s, u"7"_s, u"紙板"_s}};
    // The two units of the size, base and pricing unit, family; the formula.
    const auto cases =
        casesOf<6>({u"CM|cm |pcs|㎡|紙板|長*寬", u"CM||pcs|㎡|紙板|(none)", u"||pcs|㎡|紙板|(none)",
                    u"CM|cm|pcs|㎡|紙品|(none)", u"CM|cm|pcs|㎡|紙板 |(none)", u"||kg|kg|紙品|(none)",
                    u"||||紙品|單價", u"0|0|pcs|kg|紙板|數量"});
    for (const auto& [unit1, unit2, base, pricing, category, formula] : cases)
        EXPECT_EQ(selectFormula(table, {unit1, unit2, base, pricing, category}).value_or(u"(none)"_s),
                  formula)
            << unit1 << '/' << unit2 << '/' << base << '/' << pricing << category;
    EXPECT_EQ(selectFormula({}, {}), std::nullopt);
}

TEST(FormulaDefinitions, ValuesTakeTheWordsPlaces) {
    struct Case {
        QString formula, text;
        FormulaValues values;
        FormulaMasks masks = {};
    };
    const FormulaValues board{120, 90, 100, 200, 3.25};
    const Case cases[] = {{u"長 * 寬 * 單價 * 數量 / 10000"_s, u"120*90*3.25*100/10000"_s, board},
                          {u"基重+基重"_s, u"200+200"_s, board},
                          {u"高"_s, u"高"_s, board},
                          {u"長寬"_s, u"12090"_s, board},
                          {u"單價"_s, u"0.12346"_s, {0, 0, 0, 0, 0.123455}},
                          {u"數量"_s, u"-2.5"_s, {0, 0, -2.5, 0, 0}},
                          {u"數量"_s, u"0"_s, {0, 0, 0.000001, 0, 0}},
                          {u"長*數量"_s, u"12*0.123"_s, {12.34, 0, 0.12345, 0, 0}, {u"0", u"0.000"}},
                          {u"數量"_s, u"100000000000000000000"_s, {0, 0, 1e20, 0, 0}}};
    for (const Case& c : cases)
        EXPECT_EQ(substituteFormula(c.formula, c.values, c.masks), c.text) << c.formula;
}

TEST(FormulaDefinitions, SizesAndTheirUnits) {
    // Number and unit of the first and of the second part.
    const auto cases =
        casesOf<2>({u"120*90|120 /90 ", u"120CM*90 公分|120 CM/90 公分", u"120﹡90|120 /90 ",
                    u"120x90x5|120 /905 *", u"120Ｘ90|120 /90 ", u"120X90|0 0/0 0", u"|0 0/0 0", u"*|0 /0 ",
                    u" K2A3 * 4 |23 KA/4 ", u"1.2.3*.5|1.2 /0.5 ", u"box|0 bo/0 ", u"120|0 0/0 0"});
    for (const auto& [text, read] : cases) {
        const SizeText size = splitSize(text);
        EXPECT_EQ(numberText(size.first.number) + u' ' + size.first.unit + u'/' +
                      numberText(size.second.number) + u' ' + size.second.unit,
                  read)
            << text;
    }
}

TEST(FormulaDefinitions, ASaveReplacesOneKindAndNothingElse) {
    struct : PlantSession {
        QStringList everything() { return rows(u"select * from 採購計價公式 order by 序,公式"); }
    } plant;
    plant.run({uR"(insert into 採購計價公式 (單位1,單位2,基本單位,計價單位,公式,序,類別) values
                   ('','','kg','令','數量',7,'紙品'),('','','kg','kg','單價',9,'紙板'),('','','kg','令','長',3,'紙板'),
                   ('','','kg','張','寬',1,'單位換算'))"});
    const FormulaTable table{{u" cm "_s, u"CM"_s, u"pcs"_s, u"㎡"_s, u" 長*寬*'單價' "_s, u"9"_s, u"別的"_s},
                             {u""_s, u""_s, u""_s, u"kg"_s, u"單價"_s, u""_s, u""_s}};
    const auto save = [&](const FormulaTable& formulas) { saveFormulas(plant.session, u"紙板"_s, formulas); };
    EXPECT_GT(failEveryCall("formulas", plant, [&] { save(table); }), 3);
    const QString conversion = u"||kg|張|寬|1|單位換算"_s, paper = u"||kg|令|數量|7|紙品"_s;
    const QStringList expected{conversion, u"cm|CM|pcs|㎡|長*寬*'單價'|1|紙板"_s, u"|||kg|單價|2|紙板"_s,
                               paper};
    EXPECT_EQ(plant.everything(), expected);
    EXPECT_EQ(errorOf([&] { save({table[0], table[0]}); }), DatabaseError::DuplicateKey);
    EXPECT_EQ(plant.everything(), expected) << "a repeated key changes nothing";
    save({});
    EXPECT_EQ(plant.everything(), QStringList({conversion, paper})) << "an empty grid empties the kind";
}

TEST(FormulaDefinitions, TheOrderOfReadingDecides) {
    PlantSession plant;
    plant.run(
        {u"insert into 採購計價公式 (單位1,單位2,基本單位,計價單位,公式,序,類別) values "
         u"('a','','kg','1','',2,'紙板'),('b','','kg','1','',1,'紙板'),('c','','kg','1','',1,'單位換算')"});
    Connection connection(plant.pool, plant.target);
    const auto units = [](const FormulaTable& table) {
        QString names;
        for (const PricingFormula& row : table)
            names += row.單位1;
        return names;
    };
    EXPECT_EQ(units(loadFormulasOf(connection, u"紙板"_s)), u"ba"_s);
    EXPECT_TRUE(units(loadFormulas(connection, FormulaOrder::ByPosition)).endsWith(u'a'));
    EXPECT_NE(units(loadFormulas(connection, FormulaOrder::ByCategory)).indexOf(u'c'), 1)
        << "kinds lie together";
}

TEST(FormulaDefinitions, ABookThatCouldNotBeReadIsReadLater) {
    PlantSession plant;
    Connection connection(plant.pool, plant.target);
    connection.Execute(sql(u"insert into 採購計價公式 (單位1,單位2,基本單位,計價單位,公式,序,類別) values "
                           u"('a','','kg','1','長',1,'紙板')"));
    FormulaBook book(FormulaOrder::ByPosition);
    plant.pool.failAt(1);
    EXPECT_THROW(book.table(connection), DatabaseError);
    EXPECT_EQ(book.table(connection).size(), 1u);
    connection.Execute(sql(u"delete from 採購計價公式"));
    EXPECT_EQ(book.table(connection).size(), 1u) << "a screen prices by what stood at its start";
}
