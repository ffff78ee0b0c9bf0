#include "expr/blocks/formula_structure.h"

#include <array>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

struct TLinearCase {
    const char* formula;
    const char* linear; ///< of a, b, c, d
};

constexpr TLinearCase kLinearCases[] = {
    {"a*exp(-b*x)+c", "ac"},     {"(a+b*x)/(1+c*x)", "ab"},
    {"a*b*x+c", "ac"},                                     // one of two that exclude each other
    {"a*b*c+d*x", "ad"},         {"(a+d)*b*x+c*x", "acd"}, // those that exclude fewest
    {"b+c*x+a*sin(d*x)", "abc"}, {"abs(a)*x+max(b,x)+c^2+1/d", ""},
    {"a*(x>b)+round(c)", "a"}, // steps have slope 0 and are no lines
    {"(c:=a*x)+b", ""},        // what is assigned has no structure
    {"a*x+b*random", ""},
};

/// A formula of x and of a, b, c and d.
struct TFormula {
    TExpressionParser Parser;
    double X = 0;
    std::array<double, 4> Values = {};
    std::array<double*, 4> Variables = {};

    explicit TFormula(const char* text) {
        Parser.DefineVariable("x", &X);
        for (std::size_t i = 0; i < Values.size(); ++i) {
            Variables[i] = &Values[i];
            Parser.DefineVariable(std::string(1, static_cast<char>('a' + i)), Variables[i]);
        }
        Parser.AddExpression(text);
    }
};

struct TPowerCase {
    const char* formula;
    std::array<std::optional<double>, 4> powers;
};

constexpr std::optional<double> kOpen;
const TPowerCase kPowerCases[] = {
    {"a*exp(-b*x)+c", {kOpen, -1, kOpen, kOpen}},
    {"a*exp(-sqr((x-b)/c)/2)", {kOpen, 1, 1, kOpen}},
    {"a*sin(2*pi*x/b+c)", {kOpen, 1, 0, kOpen}},
    {"a*x^b/(c^b+x^b)+d", {kOpen, 0, 1, kOpen}},
    {"(a+b*x)/(1+c*x)", {kOpen, kOpen, -1, kOpen}},
    {"a*exp(-b/(8.314*x))", {kOpen, 1, kOpen, kOpen}},
    {"a*exp(b*(1/x-1/298.15))", {kOpen, 1, kOpen, kOpen}},
    {"exp(-a*sqr(x))*sqrt(1+b/x)", {-2, 1, kOpen, kOpen}},
};

TEST(FormulaStructure, FindsThePowersOfX) {
    for (const TPowerCase& test : kPowerCases) {
        TFormula formula(test.formula);
        const auto powers = PowersOfX(formula.Parser, &formula.X, formula.Variables);
        for (std::size_t i = 0; i < powers.size(); ++i) {
            EXPECT_EQ(powers[i].has_value(), test.powers[i].has_value()) << test.formula << " by " << i;
            EXPECT_NEAR(powers[i].value_or(0), test.powers[i].value_or(0), 1e-9)
                << test.formula << " by " << i;
        }
    }
}

TEST(FormulaStructure, FindsTheLinearVariables) {
    for (const TLinearCase& test : kLinearCases) {
        TFormula formula(test.formula);
        const std::vector<bool> isLinear = LinearVariables(formula.Parser, &formula.X, formula.Variables);
        std::string names;
        for (std::size_t i = 0; i < isLinear.size(); ++i)
            if (isLinear[i]) names += static_cast<char>('a' + i);
        EXPECT_EQ(names, test.linear) << test.formula;
    }
}

} // namespace
} // namespace lumoplot
