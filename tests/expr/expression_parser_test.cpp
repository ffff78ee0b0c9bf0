// The language, case by case: values, errors and the life of variables and formulas.
#include "common/places.h"
#include "common/special_values.h"
#include "common/thrown_text.h"
#include "expr/expression_parser.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <limits>

namespace lumoplot {
namespace {

double ValueOf(std::string_view text) {
    TExpressionParser parser;
    parser.AddExpression(text);
    return parser.Evaluate();
}

std::string ErrorOf(std::string_view text) {
    TExpressionParser parser;
    return ThrownText([&] { parser.AddExpression(text); });
}

struct TValueCase {
    const char* text;
    double expected;
};

// A line of the table is a formula, a bar, and its value, its error or "syntax" for the usual one.
TEST(ExpressionParser, FormulasGiveWhatTheTableSays) {
    std::ifstream file(SourceFile("tests/data_files/expressions.txt"));
    int count = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#')) continue;
        if (line.ends_with('\r')) line.pop_back();
        const std::size_t bar = line.rfind('|');
        ASSERT_NE(bar, std::string::npos) << line;
        const std::string formula = line.substr(0, bar);
        const std::string expected = line.substr(bar + 1);
        ++count;
        if (expected == "syntax")
            EXPECT_EQ(ErrorOf(formula), "Syntax error in expression " + formula);
        else if (expected.starts_with("error: "))
            EXPECT_EQ(ErrorOf(formula), expected.substr(7)) << line;
        else if (expected == "nan")
            EXPECT_TRUE(std::isnan(ValueOf(formula))) << line;
        else
            EXPECT_DOUBLE_EQ(ValueOf(formula), std::strtod(expected.c_str(), nullptr)) << line;
    }
    EXPECT_GT(count, 190);
}

TEST(ExpressionParser, PowerIsWholeOnlyBeforeANumberWithoutAPoint) {
    TExpressionParser parser;
    double x = -2;
    double n = 2.6;
    parser.DefineVariable("x", &x);
    parser.DefineVariable("n", &n);
    const TValueCase cases[] = {
        {"x^3", -8},           {"x^3.0", -8}, {"x^2.6", kNotANumber},    {"x^n", kNotANumber},
        {"intpower(x,n)", -8}, {"2^5e-1", 1}, // no point: 0.5 rounds to 0
        {"x^9", -512},         {"x^0", 1},    {"(x+2)^-1", kNotANumber}, {"x^-3", -0.125},
    };
    for (const auto& c : cases) {
        parser.AddExpression(c.text);
        if (std::isnan(c.expected))
            EXPECT_TRUE(std::isnan(parser.Evaluate())) << c.text;
        else
            EXPECT_DOUBLE_EQ(parser.Evaluate(), c.expected) << c.text;
    }
}

TEST(ExpressionParser, GeneratedVariablesAreShared) {
    TExpressionParser parser;
    EXPECT_EQ(parser.AddExpression("a := 4"), 0);
    EXPECT_EQ(parser.AddExpression("A*2"), 1);
    EXPECT_TRUE(std::isnan(parser.Evaluate()));
    EXPECT_EQ(parser.EvaluateIndex(0), 4);
    EXPECT_EQ(parser.EvaluateIndex(1), 8);
    // Equal priorities group from the left: b takes a's value, the 5 goes into the result of that.
    parser.AddExpression("b := a := 5");
    EXPECT_EQ(parser.Evaluate(), 5);
    parser.AddExpression("b");
    EXPECT_EQ(parser.Evaluate(), 4);
    EXPECT_EQ(ValueOf("2 := 3"), 3);
    // Any other character is a name of its own, however many bytes it has.
    parser.AddExpression("\xC2\xB5 := 6");
    EXPECT_EQ(parser.Evaluate(), 6);
    parser.AddExpression("\xC2\xB5*\xCE\xBC");
    EXPECT_TRUE(std::isnan(parser.Evaluate()));
    parser.AddExpression("\xC2\xB5+1");
    EXPECT_EQ(parser.Evaluate(), 7);
}

TEST(ExpressionParser, AssignmentsHappenInOrder) {
    TExpressionParser parser;
    double x = 3;
    parser.DefineVariable("x", &x);
    parser.AddExpression("x*2 + (x := 10) + x*2");
    EXPECT_EQ(parser.Evaluate(), 36);
    EXPECT_EQ(x, 10);
    parser.AddExpression("(x := x+1)*0 + x^2");
    EXPECT_EQ(parser.Evaluate(), 121);
}

TEST(ExpressionParser, BoundVariablesAreReadAtEveryEvaluation) {
    TExpressionParser parser;
    double x = 2;
    double other = 5;
    parser.DefineVariable("Xv", &x);
    parser.AddExpression("xV^2+1");
    EXPECT_EQ(parser.Evaluate(), 5);
    x = 3;
    EXPECT_EQ(parser.Evaluate(), 10);
    parser.DefineVariable("xv", &other); // earlier formulas keep what they read
    EXPECT_EQ(parser.Evaluate(), 10);
    parser.AddExpression("xv");
    EXPECT_EQ(parser.Evaluate(), 5);
    EXPECT_TRUE(parser.RemoveVariable("XV"));
    EXPECT_FALSE(parser.RemoveVariable("xv"));
    EXPECT_FALSE(parser.RemoveVariable("sin"));
    EXPECT_EQ(parser.Evaluate(), 5);
    parser.AddExpression("xv+1");
    EXPECT_TRUE(std::isnan(parser.Evaluate()));
}

class TOpenParser : public TExpressionParser {
public:
    using TExpressionParser::Constants;
    using TExpressionParser::Words;

protected:
    void FillExpressList() override {
        TExpressionParser::FillExpressList();
        Words().Insert(
            std::make_unique<TFunction>("twice", 1, [](TEvalRecord& r) { r.Result = 2 * *r.Args[0]; }));
        Words().Insert(
            std::make_unique<TFunction>("nothing", 5, true, 0, [](TEvalRecord& r) { r.Result = 0; }));
    }
};

TEST(ExpressionParser, DerivedParsersAddWords) {
    TOpenParser parser;
    parser.AddExpression("twice(4)+1");
    EXPECT_EQ(parser.Evaluate(), 9);
    EXPECT_EQ(ThrownText<EParserException>([&] { parser.AddExpression("1 nothing 2"); }),
              "Can not find operand/function");
}

TEST(ExpressionParser, AFailedFormulaLeavesNoTrace) {
    TOpenParser parser;
    parser.AddExpression("1+1");
    const int words = parser.Words().Count();
    const int constants = parser.Constants().Count();
    for (const char* text : {"new1+new2*3 4", "new1+(2", "new3+1e", "new1+'a'+'b'", "new4+'a'='b'+)("})
        EXPECT_THROW(parser.AddExpression(text), ELumoError) << text;
    EXPECT_EQ(parser.Words().Count(), words);
    EXPECT_EQ(parser.Constants().Count(), constants);
    EXPECT_EQ(parser.ExpressionCount(), 1);
    EXPECT_EQ(parser.Evaluate(), 2);
}

TEST(ExpressionParser, DeepAndLongFormulasCostNoStack) {
    constexpr int kDepth = 100000;
    const std::string open(kDepth, '(');
    const std::string close(kDepth, ')');
    EXPECT_EQ(ValueOf(open + "7" + close), 7);
    EXPECT_EQ(ErrorOf(open + close).substr(0, 29), "Syntax error in expression ((");
    EXPECT_EQ(ErrorOf(open), "Unequal brackets");
    std::string chain = "1";
    std::string nested = "x";
    for (int i = 1; i < kDepth; ++i) chain += i % 2 ? "+x" : "+1";
    for (int i = 0; i < 10000; ++i) nested = "abs(1-" + nested + ")";
    TExpressionParser parser;
    double x = 2;
    parser.DefineVariable("x", &x);
    parser.AddExpression(chain);
    EXPECT_EQ(parser.Evaluate(), 1.5 * kDepth);
    parser.AddExpression(nested);
    EXPECT_EQ(parser.Evaluate(), 0);
}

TEST(ExpressionParser, RandomNumbersFillTheUnitInterval) {
    TExpressionParser parser;
    parser.AddExpression("random");
    double sum = 0;
    constexpr int kDraws = 20000;
    for (int i = 0; i < kDraws; ++i) {
        const double value = parser.Evaluate();
        ASSERT_TRUE(value >= 0 && value < 1);
        sum += value;
    }
    // The standard deviation of the mean is 0.002.
    EXPECT_NEAR(sum / kDraws, 0.5, 0.02);
}

} // namespace
} // namespace lumoplot
