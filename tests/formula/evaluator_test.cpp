#include "formula/calculator.h"
#include "formula/evaluator.h"
#include <gtest/gtest.h>
#include <random>

using namespace liaowu;
using namespace Qt::StringLiterals;

TEST(Evaluator, Values) {
    const auto cases =
        casesOf<2>({u"|0", u"   |0", u"+5|5", u"1.|1", u".5|0.5", u" 1 + 2 |3", u"1.5+2.5|4",
                    u"120*90*100*3.25/10000|351",
                    // A sign belongs to its number.
                    u"-2^2|4", u"2^-1|0.5", u"2*-3|-6", u"-(1+2)|-3", u"1--2|3", u"-(-(2))|2",
                    // What goes first.
                    u"2^3^2|64", u"1+2*3|7", u"(1+2)*3|9", u"8/4/2|1", u"7-3-2|2", u"2*(3+4)^2|98"});
    for (const auto& [text, value] : cases)
        EXPECT_DOUBLE_EQ(CEval().Evaluate(text), value.toDouble()) << text;
}

TEST(Evaluator, FaultsNameTheirColumn) {
    const auto cases = casesOf<2>(
        {u"1 2|Operator expected : Column 3", u"1.2.3|Operand contains multiple decimal points : Column 4",
         u")|Operand expected : Column 1",
         u"1)|Closing parenthesis without matching open parenthesis : Column 2",
         u"(1|Closing parenthesis expected : Column 3", u"()|Operand expected : Column 2",
         u"2(3)|Operator expected : Column 2", u"1+|Operand expected : Column 3",
         u"1+ABC|Undefined symbol : 'ABC' : Column 3", u"寬|Unexpected character encountered : Column 1",
         u"1e5|Operator expected : Column 2", u".|Invalid operand : Column 1",
         u"1---2|Operand expected : Column 4", u"--2|Operand expected : Column 2",
         u"*1|Operand expected : Column 1", u"１|Unexpected character encountered : Column 1"});
    for (const auto& [text, message] : cases) {
        try {
            CEval().Evaluate(text);
            ADD_FAILURE() << text << " was accepted";
        } catch (const FormulaError& error) {
            EXPECT_EQ(error.description, message);
            EXPECT_EQ(error.number, FormulaError::Conversion);
        }
    }
}

TEST(Evaluator, ArithmeticFailsAsAnError) {
    for (const auto& text : {u"1/0"_s, u"9^9^9^9"_s, u"(0-8)^0.5"_s, u"0/0"_s})
        EXPECT_THROW(CEval().Evaluate(text), FormulaError);
    try {
        CEval().EvaluatePostfix(u"1 foo "_s);
        ADD_FAILURE();
    } catch (const FormulaError& error) {
        EXPECT_EQ(error.number, FormulaError::BadToken);
        EXPECT_EQ(error.description, u"Bad token in Evaluate: foo"_s);
    }
    EXPECT_EQ(CEval().EvaluatePostfix(QString()), 0);
}

TEST(Evaluator, SymbolsStandForNumbers) {
    CEval evaluator;
    evaluator.m_SymbolTable.Add(u"Rate"_s, u"1.5"_s);
    EXPECT_DOUBLE_EQ(evaluator.Evaluate(u"RATE*2"_s), 3);
    evaluator.m_SymbolTable.Update(u"rate"_s, u"2"_s);
    EXPECT_DOUBLE_EQ(evaluator.Evaluate(u"Rate^2"_s), 4);
    EXPECT_THROW(evaluator.m_SymbolTable.Add(u"rate"_s, u"1"_s), FormulaError);
    EXPECT_THROW(evaluator.m_SymbolTable.Add(u"x"_s, u"abc"_s), FormulaError);
    EXPECT_THROW(evaluator.m_SymbolTable.Update(u"y"_s, u"1"_s), FormulaError);
    EXPECT_THROW(evaluator.m_SymbolTable.Value(u"y"_s), FormulaError);
    evaluator.m_SymbolTable.Delete(u"RATE"_s);
    EXPECT_EQ(evaluator.m_SymbolTable.Count(), 0);
    EXPECT_THROW(CStack().Pop(), FormulaError);
    EXPECT_THROW(CStack().GetPopValue(), FormulaError);
}

TEST(Evaluator, RandomTextGivesAValueOrAFault) {
    const int wanted = qEnvironmentVariableIntValue("LIAOWU_RANDOM_INPUTS");
    const int inputs = wanted > 0 ? wanted : 200000;
    std::mt19937 random(20250115);
    const QString alphabet = u"0123456789.+-*/^()  A_b寬\t￥\xD842"_s;
    CEval evaluator;
    int values = 0;
    for (int i = 0; i < inputs; ++i) {
        QString text;
        for (size_t length = random() % 24; length > 0; --length)
            text += alphabet[static_cast<qsizetype>(random() % static_cast<unsigned>(alphabet.size()))];
        try {
            ASSERT_TRUE(std::isfinite(evaluator.Evaluate(text)));
            ++values;
        } catch (const FormulaError& error) {
            ASSERT_FALSE(error.description.isEmpty());
        }
    }
    EXPECT_GT(values, inputs / 200);
}

TEST(Calculator, ComputesWhatSiteFormulasHold) {
    EXPECT_EQ(vxCalc(u"100-20+(3*4)"_s), 92);
    EXPECT_EQ(vxCalc(u"-5+2"_s), -3);
    for (const auto& text : {u"實際庫存-1"_s, u"(1+2"_s, u"1/0"_s, u""_s, u"1+"_s, u"2^2"_s})
        EXPECT_FALSE(vxCalc(text)) << text;
}
