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

TEST(FormulaStructure, FindsTheLinearVariables) {
    for (const TLinearCase& test : kLinearCases) {
        TExpressionParser parser;
        double x = 0;
        std::array<double, 4> values = {};
        std::array<double*, 4> variables = {};
        parser.DefineVariable("x", &x);
        for (std::size_t i = 0; i < values.size(); ++i) {
            variables[i] = &values[i];
            parser.DefineVariable(std::string(1, static_cast<char>('a' + i)), variables[i]);
        }
        parser.AddExpression(test.formula);
        const std::vector<bool> isLinear = LinearVariables(parser, &x, variables);
        std::string names;
        for (std::size_t i = 0; i < values.size(); ++i)
            if (isLinear[i]) names += static_cast<char>('a' + i);
        EXPECT_EQ(names, test.linear) << test.formula;
    }
}

} // namespace
} // namespace lumoplot
