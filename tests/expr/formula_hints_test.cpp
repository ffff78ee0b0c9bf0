#include "expr/formula_hints.h"

#include <gtest/gtest.h>

namespace lumoplot {
namespace {

struct TSignCase {
    const char* formula;
    const char* rewritten; ///< null: nothing to say
};

TEST(FormulaHints, ASignBeforeAPowerIsSeen) {
    const TSignCase cases[] = {
        {"-x^2", "-(x^2)"},
        {"a*exp(-x^2/s)", "a*exp(-(x^2)/s)"},
        {"a*-x ^ b + 1", "a*-(x ^ b) + 1"},
        {"-2^2", "-(2^2)"},
        {"- (x-1)^2", "-((x-1)^2)"},
        {"-sqr(x)^2^3", "-(sqr(x)^2^3)"},
        {"--x^2", nullptr},
        {"---x^2", "-(x^2)"},
        {"+x^2", nullptr},
        {"-x^3", nullptr}, // the same either way
        {"-x^-3", "-(x^-3)"},
        {"a-x^2", nullptr},
        {"a!-x^2", nullptr},
        {"(a)-x^2", nullptr},
        {"-(x^2)", nullptr},
        {"-x*y^2", nullptr},
        {"2^-x^2", nullptr}, // brackets would not say what was meant
        {"max(1,-x^2)*-y^2", "max(1,-(x^2))*-(y^2)"},
        {"-(1+-x^2)^2", "-((1+-(x^2))^2)"},
        {"1 and -x^2", "1 and -(x^2)"},
        {"1e-3^2", nullptr}, // no sign but an exponent
        {"-µ^2", "-(µ^2)"},
        {"'-x^2'='a'", nullptr},
        {"-x^", nullptr},
        {"-", nullptr},
        {"-(x^2", nullptr},
        {"", nullptr},
    };
    for (const TSignCase& c : cases) {
        const auto hint = FindSignHint(c.formula);
        ASSERT_EQ(hint.has_value(), c.rewritten != nullptr) << c.formula;
        if (!hint) continue;
        EXPECT_EQ(hint->Rewritten, c.rewritten);
    }
    const auto hint = FindSignHint("1+exp(-x^2)");
    EXPECT_EQ(hint->Place, 6u);
    EXPECT_EQ(hint->Length, 4u);
    EXPECT_EQ(hint->Text, "a sign binds tighter than ^: write -(x^2)");
}

TEST(FormulaHints, AProductWithoutItsSignIsSeen) {
    const TSignCase cases[] = {
        {"2x", "2*x"},
        {"a*exp(-k x)+c", "a*exp(-k*x)+c"},
        {"(x+1) (x-1)", "(x+1)*(x-1)"},
        {"3sin(x)cos(x)2", "3*sin(x)*cos(x)*2"},
        {"2exp(-x)", "2*exp(-x)"},
        {"2e3x", "2e3*x"},
        {"k(x-1)", "k*(x-1)"}, // a variable of the parser
        {"a0(1-x)", "a0*(1-x)"},
        {"2(3-x)^2", "2*(3-x)^2"},
        {"x!2", nullptr}, // what stands behind a value has meanings of its own
        {"gamma(x)", nullptr},
        {"sqtr(x)", nullptr}, // a function that is misspelt
        {"7 mod 4", nullptr},
        {"2 3", nullptr}, // one number rather than two
        {"1e", nullptr},
        {"not x and k", nullptr},
        {"max(1,x)", nullptr},
        {"1e-3*x", nullptr},
        {"'2x'", nullptr},
        {"", nullptr},
    };
    for (const TSignCase& c : cases) {
        TExpressionParser parser;
        double k = 0;
        parser.DefineVariable("k", &k);
        const auto hint = FindProductHint(c.formula, parser);
        ASSERT_EQ(hint.has_value(), c.rewritten != nullptr) << c.formula;
        if (hint) {
            EXPECT_EQ(hint->Rewritten, c.rewritten);
        }
    }
    TExpressionParser parser;
    const auto hint = FindProductHint("1+sin(x)(x-1)", parser);
    EXPECT_EQ(hint->Text, "a product needs its sign: write sin(x)*(x-1)");
    EXPECT_EQ(hint->Place, 2u);
    EXPECT_EQ(hint->Length, 11u);
}

TEST(FormulaHints, AnUnknownFunctionIsNamedWithItsPlace) {
    const std::pair<const char*, const char*> cases[] = {
        {"3+sin(log(x))", "log at 7: not known; ln, log10?"},
        {"µ*Sqt (x)", "Sqt at 3: not known; sqr, sqrt?"},
        {"arcsn(1)", "arcsn at 1: not known; arcsin?"},
        {"asin(1)", "asin at 1: not known; arcsin?"},
        {"2*gamma(x)", "gamma at 3: not known"},
        {"2exq(x)", "exq at 2: not known; exp?"},
    };
    for (const auto& [formula, text] : cases) {
        TExpressionParser parser;
        const auto hint = FindNameHint(formula, parser);
        ASSERT_TRUE(hint) << formula;
        EXPECT_EQ(hint->Text(), text);
    }
    for (const char* formula : {"log", "ln(x)", "'log(x)'='a'", "1 and (2)", "a*(x)"}) {
        TExpressionParser parser;
        double x = 0;
        parser.DefineVariable("x", &x);
        EXPECT_FALSE(FindNameHint(formula, parser)) << formula;
    }
}

} // namespace
} // namespace lumoplot
