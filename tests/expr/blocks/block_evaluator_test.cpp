// The blocks: exactness of each operation on every set of kernels, odd lengths, formulas whose order matters,
// and derivatives with known values.
#include "common/special_values.h"
#include "common/thrown_text.h"
#include "expr/blocks/block_evaluator.h"
#include "expr/blocks/block_kernels.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <random>

namespace lumoplot {
namespace {

std::vector<const TBlockKernels*> AllKernels() {
    std::vector<const TBlockKernels*> all;
    for (const TBlockKernels* const* next = AvailableKernels(); *next; ++next) all.push_back(*next);
    return all;
}

/// Both signs of every size, what is special, and what is nearly a multiple of pi/2.
std::vector<double> Samples() {
    std::vector<double> samples = {kInfinity, kNotANumber};
    const auto add = [&](std::initializer_list<double> xs) { samples.insert(samples.end(), xs); };
    add({0, 5e-324, 1e-310, 2.2250738585072014e-308, 1.7976931348623157e308, 4503599627370495.5});
    add({0.5, 0.49999999999999994, 1, 1.5, 2, 2.5, 1e4, 1e5, 1e16, 1e22});
    add({708, 709, 709.74, 709.75, 710, 744.4, 744.44, 745});
    for (int k = 1; k < 7000; ++k) {
        const double multiple = k * (std::numbers::pi / 2);
        for (const double x : {multiple, std::nextafter(multiple, 0), std::nextafter(multiple, 1e9)})
            samples.push_back(x);
    }
    std::mt19937_64 random(5);
    std::uniform_real_distribution<> exponent(-320, 308);
    std::uniform_real_distribution<> near(0, 1);
    for (int i = 0; i < 20'000; ++i) {
        samples.push_back(std::pow(10, exponent(random)));
        samples.push_back(std::pow(10, exponent(random) / 60));
        samples.push_back(near(random));
        samples.push_back(1 + near(random) / 100);
    }
    const std::size_t half = samples.size();
    for (std::size_t i = 0; i < half; ++i) samples.push_back(-samples[i]);
    return samples;
}

double UlpsBetween(double a, double b) {
    if (std::isnan(a) || std::isnan(b)) return std::isnan(a) == std::isnan(b) ? 0 : kInfinity;
    if (std::isinf(a) || std::isinf(b) || a == 0 || b == 0)
        return a == b && std::signbit(a) == std::signbit(b) ? 0 : kInfinity;
    const auto place = [](double value) {
        const auto bits = std::bit_cast<std::int64_t>(value);
        return bits < 0 ? std::numeric_limits<std::int64_t>::min() - bits : bits;
    };
    const std::int64_t low = std::min(place(a), place(b));
    const std::int64_t high = std::max(place(a), place(b));
    return static_cast<double>(static_cast<std::uint64_t>(high) - static_cast<std::uint64_t>(low));
}

struct TExactnessCase {
    const char* text;
    double ulps;
};

// Of functions that the chain takes from the library, which is 1 ulp off more often on Windows.
#if defined(_WIN32)
constexpr double kLibrary = 3;
#else
constexpr double kLibrary = 2;
#endif

// Each operation alone, its operands given exactly.
const TExactnessCase kExactness[] = {
    {"exp(x)", 2},
    {"ln(x)", 2},
    {"log10(x)", 2},
    {"sin(x)", 2},
    {"cos(x)", 2},
    {"tan(x)", kLibrary},
    {"arcsin(x)", 2},
    {"arccos(x)", 2},
    {"sinh(x)", kLibrary},
    {"cosh(x)", kLibrary},
    {"tanh(x)", kLibrary},
    {"arcsinh(x)", kLibrary},
    {"arccosh(x)", kLibrary},
    {"arctanh(x)", kLibrary},
    {"sqrt(x)", 0},
    {"abs(x)", 0},
    {"-x", 0},
    {"round(x)", 0},
    {"trunc(x)", 0},
    {"sqr(x)", 0},
    {"x%", 0},
    {"degtorad(x)", 0},
    {"radtodeg(x)", 0},
    {"x!", 0},
    {"not x", 0},
    {"x^2", 0},
    {"x^3", 0},
    {"x^4", 0},
    {"x^5", 0},
    {"x^6", 0},
    {"x^7", 0},
    {"x^8", 0},
    {"x^9", 0},
    {"x^0.3", 0},
    {"x+p", 0},
    {"p-x", 0},
    {"x*p", 0},
    {"p/x", 0},
    {"x/p", 0},
    {"x>p", 0},
    {"x>=p", 0},
    {"p<=x", 0},
    {"x<p", 0},
    {"x<>p", 0},
    {"x=p", 0},
    {"max(x,p)", 0},
    {"min(p,x)", 0},
    {"x div p", 0},
    {"x mod p", 0},
    {"x xor p", 0},
    {"logN(p,x)", 0},
    {"arctan2(x,p)", 0},
    {"x*x-x", 0},
};

TEST(BlockEvaluator, EveryOperationIsAsExactAsTheChain) {
    const std::vector<double> x = Samples();
    std::vector<double> y(x.size());
    for (const TBlockKernels* kernels : AllKernels())
        for (const double parameter : {0.5, 0.0, 3.0}) {
            for (const TExactnessCase& c : kExactness) {
                TExpressionParser parser;
                double xv = 0;
                double p = parameter;
                parser.DefineVariable("x", &xv);
                parser.DefineVariable("p", &p);
                parser.AddExpression(c.text);
                TBlockEvaluator(parser, &xv, {}, kernels).Evaluate(x, y);
                for (std::size_t i = 0; i < x.size(); ++i) {
                    xv = x[i];
                    const double expected = parser.Evaluate();
                    ASSERT_LE(UlpsBetween(y[i], expected), c.ulps)
                        << c.text << " at " << x[i] << " with " << kernels->Name << ": " << y[i] << " for "
                        << expected;
                }
            }
        }
}

/// A parser with x, a and b bound.
struct TFixture {
    explicit TFixture(const char* text) {
        Parser.DefineVariable("x", &X);
        Parser.DefineVariable("a", &A);
        Parser.DefineVariable("b", &B);
        Parser.AddExpression(text);
    }
    std::vector<double> Values(const std::vector<double>& x) {
        std::vector<double> y(x.size(), -1);
        TBlockEvaluator(Parser, &X).Evaluate(x, y);
        return y;
    }

    TExpressionParser Parser;
    double X = 77;
    double A = 2;
    double B = 3;
};

TEST(BlockEvaluator, AnyLengthIsFilledAndNothingBehindIt) {
    TFixture fixture("a*exp(-b*x)+x^2");
    for (const std::size_t length : {0, 1, 3, 7, 8, 9, 255, 256, 257, 1000}) {
        std::vector<double> x(length + 1, 0.25);
        for (std::size_t i = 0; i < length; ++i) x[i] = 0.01 * static_cast<double>(i);
        std::vector<double> y(length + 1, -1);
        TBlockEvaluator(fixture.Parser, &fixture.X)
            .Evaluate(std::span(x).first(length), std::span(y).first(length));
        for (std::size_t i = 0; i < length; ++i)
            ASSERT_DOUBLE_EQ(y[i], 2 * std::exp(-3 * x[i]) + x[i] * x[i]) << length;
        EXPECT_EQ(y[length], -1);
    }
    EXPECT_EQ(fixture.X, 77);
}

TEST(BlockEvaluator, WhatDoesNotVaryIsTheSameEverywhere) {
    EXPECT_EQ(TFixture("a+b").Values({1, 2, 3}), std::vector<double>(3, 5));
    EXPECT_EQ(TFixture("2*3").Values({1, 2}), std::vector<double>(2, 6));
    EXPECT_EQ(TFixture("x").Values({1, 2}), (std::vector<double>{1, 2}));
    EXPECT_EQ(TFixture("('u'<'v')*x").Values({1, 2}), (std::vector<double>{1, 2}));
    TExpressionParser empty;
    std::vector<double> y(2, 0);
    TBlockEvaluator(empty, nullptr).Evaluate(std::vector<double>{1, 2}, y);
    EXPECT_TRUE(std::isnan(y[0]) && std::isnan(y[1]));
}

TEST(BlockEvaluator, AssignmentsHappenForOneXAfterTheOther) {
    TFixture fixture("b := b+x");
    EXPECT_EQ(fixture.Values({1, 2, 3}), (std::vector<double>{4, 6, 9}));
    EXPECT_EQ(fixture.B, 9);
    EXPECT_EQ(TFixture("(x := x+1)*x").Values({1, 2}), (std::vector<double>{4, 9}));
}

TEST(BlockEvaluator, EachRandomNumberIsDrawn) {
    const std::vector<double> y = TFixture("random-random").Values({1, 2, 3});
    EXPECT_NE(y[0], 0);
    EXPECT_NE(y[0], y[1]);
    EXPECT_NE(y[1], y[2]);
}

struct TSlopeCase {
    const char* text;
    double x;
    double byX;
    double byA;
};

TEST(BlockEvaluator, DerivativesAreExact) {
    const double ln2 = std::numbers::ln2;
    const TSlopeCase cases[] = {
        {"a*x^3", 2, 24, 8},
        {"x^a", 3, 6, 9 * std::log(3)},
        {"a^x", 3, 8 * ln2, 12},
        {"x/a", 3, 0.5, -0.75},
        {"exp(a*x)", 0, 2, 0},
        {"a", 3, 0, 1},
        {"x", 3, 1, 0},
        {"7", 3, 0, 0},
        {"abs(-x)", 3, 1, 0},
        {"max(x,a)", 3, 1, 0},
        {"min(x,a)", 3, 0, 1},
        {"round(x)+trunc(a)+(x>a)+x!+(x div a)", 3, 0, 0},
        {"logN(a,x)", 8, 1 / (8 * ln2), -1.5 / ln2},
        {"arctan2(x,a)", 2, 0.25, -0.25},
        {"intpower(x,a)", 5, 10, 0}, // the exponent is rounded: a step
        {"x^0", 0, 0, 0},
        {"x^1", 0, 1, 0},
        {"x^a", 0, 0, 0}, // the limit of x^a ln(x)
        {"tanh(1000*x)", 3, 0, 0},
        {"(a := 5*x)+a", 3, 10, 0}, // the assigned value is what varies
        {"x+random", 3, 1, 0},
    };
    for (const TSlopeCase& c : cases) {
        TFixture fixture(c.text);
        double* variables[] = {&fixture.X, &fixture.A};
        std::vector<double> y(2);
        std::vector<double> slopes(4);
        TBlockEvaluator(fixture.Parser, &fixture.X, variables)
            .EvaluateWithDerivatives(std::vector<double>{1, c.x}, y, slopes);
        EXPECT_DOUBLE_EQ(slopes[1], c.byX) << c.text;
        EXPECT_DOUBLE_EQ(slopes[3], c.byA) << c.text;
        EXPECT_EQ(fixture.X, 77);
    }
}

class TForeignParser : public TExpressionParser {
protected:
    void FillExpressList() override {
        TExpressionParser::FillExpressList();
        Words().Insert(
            std::make_unique<TFunction>("twice", 1, [](TEvalRecord& r) { r.Result = 2 * *r.Args[0]; }));
    }
};

TEST(BlockEvaluator, ForeignWordsHaveValuesButNoDerivatives) {
    TForeignParser parser;
    double x = 0;
    double* variables[] = {&x};
    parser.DefineVariable("x", &x);
    parser.AddExpression("twice(x)+x^2");
    std::vector<double> y(2);
    TBlockEvaluator(parser, &x).Evaluate(std::vector<double>{1, 3}, y);
    EXPECT_EQ(y, (std::vector<double>{3, 15}));
    EXPECT_EQ(ThrownText<EParserException>([&] { TBlockEvaluator(parser, &x, variables); }),
              "No derivative of twice");
}

TEST(BlockEvaluator, LongFormulasCostNoStack) {
    std::string text = "x";
    for (int i = 0; i < 100'000; ++i) text += i % 2 ? "+x*a" : "-x*b";
    TFixture fixture(text.c_str());
    double* variables[] = {&fixture.A};
    std::vector<double> y(1);
    std::vector<double> slopes(1);
    TBlockEvaluator(fixture.Parser, &fixture.X, variables)
        .EvaluateWithDerivatives(std::vector<double>{1}, y, slopes);
    EXPECT_EQ(y[0], 1 - 50'000);
    EXPECT_EQ(slopes[0], 50'000);
}

} // namespace
} // namespace lumoplot
