// The language, case by case: values, errors and the life of variables and formulas.
#include "common/special_values.h"
#include "expr/expression_parser.h"

#include <cmath>
#include <cstring>
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
    try {
        parser.AddExpression(text);
    } catch (const ELumoError& error) {
        return error.what();
    }
    return "no error";
}

struct TValueCase {
    const char* text;
    double expected;
};

TEST(ExpressionParser, GroupsByPriorityFromTheLeft) {
    const TValueCase cases[] = {
        {"1+2*3", 7},
        {"8-2-1", 5},
        {"2*3^2", 18},
        {"2^3^2", 64},
        {"100/10/2", 5},
        {"7 div 2*2", 6},
        {"-2^2", 4}, // a folded sign binds tighter than a power
        {"2^-1", 0.5},
        {"2^-1^2", 0.25},
        {"3!", 6},
        {"0!", 1},
        {"2.6!", 6},
        {"-3!", 1}, // the sign comes first: (-3)!
        {"2^3!", 64},
        {"5%", 0.05},
        {"200*5%", 10},
        {"1+1=2", 1},
        {"not 1=2", 1},
        {"1=1 and 2>1", 1},
        {"1 or 0 and 0", 0}, // "or" and "and" have one priority
        {"((((2))))*(1+(2))", 6},
        {"1 and not 0", 1},
        {"!3", 6}, // what stands on either side of a word with one argument is that argument
    };
    for (const auto& c : cases) EXPECT_DOUBLE_EQ(ValueOf(c.text), c.expected) << c.text;
}

TEST(ExpressionParser, FoldsSignsAndNots) {
    const TValueCase cases[] = {
        {"-(-2)", 2},         {"--2", 2},         {"- - -2", -2},     {"+-+-3", 3},
        {"3--2", 5},          {"3-+-2", 5},       {"2*-3", -6},       {"5%-2", -1.95},
        {"not 1", 0},         {"not 0", 1},       {"not 2", 3},       {"not not 1", 1},
        {"not not not 1", 0}, {"1+not not 5", 6}, {"max(-3,-2)", -2}, {"max(0,not not 4)", 4},
    };
    for (const auto& c : cases) EXPECT_DOUBLE_EQ(ValueOf(c.text), c.expected) << c.text;
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

TEST(ExpressionParser, FunctionsHaveTheirUsualValues) {
    const TValueCase cases[] = {
        {"PI", 3.141592653589793},
        {"Exp(1)", 2.718281828459045},
        {"sqr(-3)", 9},
        {"sqrt(2)", 1.4142135623730951},
        {"abs(-2.5)", 2.5},
        {"round(2.5)", 2},
        {"round(3.5)", 4},
        {"round(-0.3)", 0},
        {"trunc(-2.7)", -2},
        {"ln(10)", 2.302585092994046},
        {"log10(1000)", 3},
        {"logN(2,8)", 3},
        {"logn(10,1000)", 3},
        {"logN(3,81)", 4},
        {"power(2,0.5)", 1.4142135623730951},
        {"pow(4,-0.5)", 0.5},
        {"intpower(2,2.6)", 8},
        {"max(2,3)", 3},
        {"min(2,3)", 2},
        {"sin(pi/6)", 0.5},
        {"cos(pi/3)", 0.5},
        {"tan(pi/4)", 1},
        {"arcsin(1)", 1.5707963267948966},
        {"arccos(0)", 1.5707963267948966},
        {"arctan2(1,0)", 1.5707963267948966}, // y comes first
        {"arctan2(0,-1)", 3.141592653589793},
        {"sinh(1)", 1.1752011936438014},
        {"cosh(1)", 1.543080634815244},
        {"tanh(0.5)", 0.46211715726000975},
        {"arcsinh(1)", 0.881373587019543},
        {"arccosh(2)", 1.3169578969248166},
        {"arctanh(0.5)", 0.5493061443340549},
        {"degtorad(180)", 3.141592653589793},
        {"radtodeg(pi)", 180},
        {"170!", 7.257415615307994e306},
        {"171!", kInfinity},
        {"7 div 2", 3},
        {"-7 div 2", -3},
        {"-7 mod 3", -1},
        {"7.5 mod 3", 2}, // 7.5 rounds to 8
        {"-9223372036854775808 div -1", 9223372036854775808.0},
        {"-9223372036854775808 mod -1", 0},
        {"1e400", kInfinity},
    };
    for (const auto& c : cases) EXPECT_DOUBLE_EQ(ValueOf(c.text), c.expected) << c.text;
}

TEST(ExpressionParser, WhatHasNoRealValueIsNotANumber) {
    for (const char* text : {"1/0",          "0/0",          "ln(0)",          "ln(-1)",      "log10(0)",
                             "logN(1,5)",    "logN(-2,4)",   "logN(2,0)",      "sqrt(-1)",    "exp(709.75)",
                             "0^-1",         "power(0,-2)",  "intpower(0,-2)", "(-8)^(1/3)",  "arcsin(1.1)",
                             "arccos(-1.1)", "arccosh(0.9)", "arctanh(1)",     "arctanh(-1)", "arctanh(2)",
                             "5 div 0",      "5 mod 0.4",    "1e19 div 3",     "3 mod 1e300", "unknown",
                             "unknown+1",    "not unknown",  "1 or 1/0",       "unknown^0",   "1^unknown",
                             "unknown!"})
        EXPECT_TRUE(std::isnan(ValueOf(text))) << text;
    EXPECT_EQ(ValueOf("exp(-744.44)"), 0);
    EXPECT_EQ(ValueOf("exp(709.7)"), std::exp(709.7));
}

TEST(ExpressionParser, NoValueIsTheDoubleOfAllOnes) {
    TExpressionParser parser;
    std::vector<double> values = {parser.Evaluate(), parser.EvaluateIndex(-1), parser.EvaluateIndex(0)};
    for (const char* text : {"1/0", "unknown", "exp(800)", "1 div 0", "sqrt(-1)", "(-8)^(1/3)", "arcsin(2)",
                             "arccos(-2)", "arccosh(0)", "arctanh(1)", "logn(1,2)"})
        values.push_back(ValueOf(text));
    for (const double value : values) {
        unsigned char bytes[sizeof value];
        std::memcpy(bytes, &value, sizeof value);
        for (const unsigned char byte : bytes) EXPECT_EQ(byte, 0xFF);
    }
}

TEST(ExpressionParser, LogicLooksAtTheLowByteOfTheRoundedValue) {
    const TValueCase cases[] = {
        {"256 and 1", 0},       {"255 and 1", 1},      {"0.6 and 1", 1},   {"0.4 or 0", 0},
        {"256 or 512", 0},      {"2 xor 3", 1},        {"255 xor 1", 254}, {"not 256", 1},
        {"not(-1)", 254},       {"not 1e300", 1},      {"5>4", 1},         {"4>=5", 0},
        {"1e-21>=1.05e-20", 1}, {"1e-21>=1.2e-20", 0}, {"2e-31=0", 1},     {"2e-30<>0", 1},
        {"2e-31<>0", 0},        {"1/0=1/0", 0},        {"1/0<>1/0", 0},    {"1/0>0", 0},
    };
    for (const auto& c : cases) EXPECT_EQ(ValueOf(c.text), c.expected) << c.text;
}

TEST(ExpressionParser, StringsAreCompared) {
    const TValueCase cases[] = {
        {"'abc'='abc'", 1}, {"'abc'='abd'", 0}, {"'b'>'a'", 1},  {"'B'='b'", 1}, // formulas are lower-cased
        {"'a'<'ab'", 1},    {"'a'>='a'", 1},    {"'b'<='a'", 0}, {"''=''", 1},   {"'a b'='a b' and 1", 1},
        {"2*('x'='x')", 2},
    };
    for (const auto& c : cases) EXPECT_EQ(ValueOf(c.text), c.expected) << c.text;
    EXPECT_EQ(ErrorOf("'a'<>'a'"), "<> is not a valid string operand");
    EXPECT_EQ(ErrorOf("'a'+'b'"), "+ is not a valid string operand");
}

TEST(ExpressionParser, BrokenFormulasAreNamedInTheError) {
    for (const char* text : {"",           " ",         "1 2",       "2x",          "x y",
                             "()",         "(1)(2)",    "2(3)",      ")(",          "1)+(2",
                             "sin",        "sin 1",     "sin()",     "max(1)",      "max(1,2,3)",
                             "max(,1)",    "max(1,)",   "1,2",       "(1,2)",       "sin((1,2))",
                             "max(1,2),3", "*3",        "3-",        "1+*2",        "1 + not 0",
                             "3!4",        "-",         "not",       "not not",     "not -1",
                             "pi(2)",      "2 pi",      "pi()",      "1\t+2",       "'abc'",
                             "'a'=1",      "abs('a')",  "('a')='a'", "'a'='b'='c'", "sin(1)2",
                             "2 sin(1)",   "sin(1)(2)", "x(1)",      "=",           "a:=",
                             ":=3",        "(-)",       "(sin)(1)",  "1=<2",        "\xC3\xA9\xC3\xA9"})
        EXPECT_EQ(ErrorOf(text), std::string("Syntax error in expression ") + text);
    for (const char* text : {"(", ")", "(1", "1)", "sin(1", "((1)", "1 2)", "max(1,2"})
        EXPECT_EQ(ErrorOf(text), "Unequal brackets") << text;
    EXPECT_EQ(ErrorOf("1.2.3"), "Syntax error in expression 1.2.3"); // two numbers, 1.2 and .3
    EXPECT_EQ(ErrorOf("2E+"), "'2e+' is not a valid floating point value");
    EXPECT_EQ(ErrorOf("1+."), "'.' is not a valid floating point value");
    EXPECT_EQ(ErrorOf("2exp(1)"), "'2e' is not a valid floating point value");
    EXPECT_EQ(ErrorOf(" (1+X "), "Unequal brackets");
    EXPECT_EQ(ErrorOf(" 1 X "), "Syntax error in expression  1 X ");
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

TEST(ExpressionParser, VariablesAreListedInDictionaryOrder) {
    TExpressionParser parser;
    double value = 1;
    for (const char* name : {"zeta", "B1", "alpha", "b10", "b2"}) parser.DefineVariable(name, &value);
    parser.AddExpression("generated+1");
    TExprCollection list(4);
    parser.GetVariables(list);
    std::string names;
    for (const TExprWord* word : list) names += word->Name() + " ";
    EXPECT_EQ(names, "alpha b1 b10 b2 zeta ");
    parser.ClearVariables();
    parser.GetVariables(list);
    EXPECT_EQ(list.Count(), 0);
}

TEST(ExpressionParser, FormulasAreFoundByTheirTextInAnyCase) {
    TExpressionParser parser;
    EXPECT_EQ(parser.ExpressionIndex(""), -1);
    EXPECT_EQ(parser.ExpressionIndex("1+1"), 0);
    EXPECT_EQ(parser.ExpressionIndex("Abs(-7)"), 1);
    EXPECT_EQ(parser.ExpressionIndex("1+1"), 0);
    EXPECT_EQ(parser.Evaluate(), 2);
    EXPECT_EQ(parser.ExpressionIndex("aBS(-7)"), 1);
    EXPECT_EQ(parser.Evaluate(), 7);
    EXPECT_EQ(parser.ExpressionText(1), "Abs(-7)");
    parser.ClearExpressions();
    EXPECT_TRUE(std::isnan(parser.Evaluate()));
    EXPECT_EQ(parser.ExpressionIndex("1+1"), 0);
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
    try {
        parser.AddExpression("1 nothing 2");
        FAIL();
    } catch (const EParserException& error) {
        EXPECT_STREQ(error.what(), "Can not find operand/function");
    }
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
