#include "data/analysis/regression.h"

#include "common/special_values.h"
#include "data/analysis/least_squares.h"
#include "data/analysis/nist_file.h"
#include "data/analysis/smoothing.h"
#include "data/analysis/spline.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace lumoplot {
namespace {

TEST(LeastSquares, ReferenceDataKeepTheirDigits) {
    const TNistFile norris("Norris.dat");
    const TRegressionCoefficients line = FitLine(norris.Column(1), norris.Column(0)).Coefficients();
    EXPECT_GE(AgreeingDigits(line.C0, norris.Certified("B0 ")), 11);
    EXPECT_GE(AgreeingDigits(line.C1, norris.Certified("B1 ")), 13);
    EXPECT_EQ(line.C2, 0);

    const TNistFile pontius("Pontius.dat");
    const TRegressionCoefficients parabola =
        FitQuadratic(pontius.Column(1), pontius.Column(0)).Coefficients();
    EXPECT_GE(AgreeingDigits(parabola.C0, pontius.Certified("B0 ")), 11);
    EXPECT_GE(AgreeingDigits(parabola.C1, pontius.Certified("B1 ")), 13);
    EXPECT_GE(AgreeingDigits(parabola.C2, pontius.Certified("B2 ")), 12);
}

struct TFitCase {
    std::vector<double> x;
    std::vector<double> y;
    TRegressionCoefficients expected;
};

void ExpectCoefficients(const TFittedCurve& curve, const TRegressionCoefficients& expected) {
    constexpr double kRounding = 1e-13; // coefficients of the cases are small whole numbers
    EXPECT_NEAR(curve.Coefficients().C0, expected.C0, kRounding);
    EXPECT_NEAR(curve.Coefficients().C1, expected.C1, kRounding);
    EXPECT_NEAR(curve.Coefficients().C2, expected.C2, kRounding);
}

TEST(LeastSquares, LinesMatchHandArithmetic) {
    const TFitCase cases[] = {
        {{}, {}, {0, 0, 0}},
        {{4}, {3}, {3, 0, 0}},
        {{4, 4, 4}, {1, 2, 6}, {3, 0, 0}}, // no spread: flat at the mean
        {{0, 2}, {1, 5}, {1, 2, 0}},
        {{0, 0, 2, 2}, {0, 2, 4, 6}, {1, 2, 0}},
        {{2, 0, 1}, {5, 1, 3}, {1, 2, 0}}, // in any order
        {{0, 1, 2, 3, 9}, {1, 3, kNaN, 7, kInfinity}, {1, 2, 0}},
        {{0, 1, kNaN, kInfinity}, {1, 3, 5, 7}, {1, 2, 0}},
        {{kNaN}, {kNaN}, {0, 0, 0}},
    };
    for (const TFitCase& c : cases) ExpectCoefficients(FitLine(c.x, c.y), c.expected);
}

TEST(LeastSquares, ParabolasMatchHandArithmetic) {
    const TFitCase cases[] = {
        {{0, 1, 2}, {1, 0, 3}, {1, -3, 2}},
        {{0, 0, 1, 1, 2, 2}, {0, 2, -1, 1, 2, 4}, {1, -3, 2}}, // pairs about the same curve
        {{-1, 0, 1, 2, 9}, {3, 1, 3, 9, kNaN}, {1, 0, 2}},
        {{0, 1, 0, 1}, {1, 3, 1, 3}, {1, 2, 0}}, // two different X: the line
        {{4, 4, 4}, {1, 2, 6}, {3, 0, 0}},
        {{}, {}, {0, 0, 0}},
    };
    for (const TFitCase& c : cases) ExpectCoefficients(FitQuadratic(c.x, c.y), c.expected);
}

// Seconds of a clock that started long ago: squares of X leave no digits for the differences.
TEST(LeastSquares, DerivedValuesAreExactFarFromTheOrigin) {
    std::vector<double> x;
    std::vector<double> y;
    for (int i = -50; i <= 50; ++i) {
        x.push_back(1.7e9 + i);
        y.push_back(0.5 * i * i - 3.0 * i + 7);
    }
    const TFittedCurve curve = FitQuadratic(x, y);
    for (std::size_t i = 0; i < x.size(); ++i) EXPECT_NEAR(curve(x[i]), y[i], 1e-9);
    EXPECT_TRUE(std::isnan(curve(kNaN)));
}

TEST(LeastSquares, UnitsOfXAndYDoNotMatter) {
    const std::vector<double> x = {0, 1, 2, 4, 7};
    const std::vector<double> y = {1, 0, 3, -1, 2};
    const TRegressionCoefficients base = FitQuadratic(x, y).Coefficients();
    for (const int exponent : {-300, 300}) {
        std::vector<double> scaledX;
        std::vector<double> scaledY;
        for (const double value : x) scaledX.push_back(std::ldexp(value, exponent));
        for (const double value : y) scaledY.push_back(std::ldexp(value, -exponent));
        const TRegressionCoefficients scaled = FitQuadratic(scaledX, scaledY).Coefficients();
        EXPECT_EQ(scaled.C0, std::ldexp(base.C0, -exponent));
        EXPECT_EQ(scaled.C1, std::ldexp(base.C1, -2 * exponent));
        EXPECT_EQ(scaled.C2, std::ldexp(base.C2, -3 * exponent)) << exponent;
    }
}

// A cubic is its own spline when the ends have its slopes; both ends share one slope here, so x³ − x about 0.
TEST(Spline, ReproducesACubicWithItsEndSlope) {
    const auto cubic = [](double x) { return x * x * x - x; };
    const std::vector<double> x = {-2, -1.5, -0.25, 0, 1, 2};
    std::vector<double> y;
    for (const double value : x) y.push_back(cubic(value));
    const TSpline spline = SampleSpline(x, y, 64, 11);
    ASSERT_EQ(spline.Curve.size(), 65U);
    for (std::size_t i = 0; i < x.size(); ++i) EXPECT_NEAR(spline.SecondDerivatives[i], 6 * x[i], 1e-13);
    for (std::size_t i = 0; i < spline.Curve.size(); ++i) {
        EXPECT_EQ(spline.Curve[i].X, -2 + static_cast<double>(i) / 16);
        EXPECT_NEAR(spline.Curve[i].Derived, cubic(spline.Curve[i].X), 1e-13);
    }
}

// Three points 0, 1, 0 at X 0, 1, 2: 4 · s1 = 6 · (−2), so s1 = −3 between ends without curvature.
TEST(Spline, HugeAndUndefinedEndSlopesLeaveNaturalEnds) {
    const std::vector<double> x = {0, 1, 2};
    const std::vector<double> y = {0, 1, 0};
    for (const double slope : {0.99e30, 1e300, kInfinity, -kInfinity, kNaN}) {
        const TSpline spline = SampleSpline(x, y, 4, slope);
        EXPECT_EQ(spline.SecondDerivatives, (std::vector<double>{0, -3, 0}));
        EXPECT_DOUBLE_EQ(spline.Curve[1].Derived, 0.6875); // 1/2 − (1/8 − 1/2) · 3 / 6 = 0.6875
    }
    EXPECT_NE(SampleSpline(x, y, 4, 0.98e30).SecondDerivatives[0], 0);
}

TEST(Spline, PointsThatCannotBeKnotsAreLeftOut) {
    const std::vector<double> x = {0, 0, 1, 0.5, kNaN, 1.5, 2};
    const std::vector<double> y = {0, 9, 1, 9, 9, kInfinity, 0};
    const TSpline spline = SampleSpline(x, y, 2, kNaturalEndSlope);
    EXPECT_EQ(spline.SecondDerivatives, (std::vector<double>{0, 0, -3, 0, 0, 0, 0}));
    ASSERT_EQ(spline.Curve.size(), 3U);
    EXPECT_EQ(spline.Curve[1].Derived, 1);
    EXPECT_EQ(spline.Curve[2].X, 2);

    EXPECT_TRUE(SampleSpline(std::vector<double>{1, 1}, std::vector<double>{1, 2}, 10, 0).Curve.empty());
    EXPECT_TRUE(SampleSpline({}, {}, 10, 0).SecondDerivatives.empty());
}

TEST(CurveGrid, StepsEvenlyAndEndsExactly) {
    EXPECT_EQ(CurveGrid(0, 1, 4), (std::vector<double>{0, 0.25, 0.5, 0.75, 1}));
    const std::vector<double> grid = CurveGrid(0.1, 0.7, 1'000'000);
    EXPECT_EQ(grid.size(), 1'000'001U);
    EXPECT_EQ(grid.back(), 0.7);
    constexpr double kLargest = std::numeric_limits<double>::max();
    EXPECT_EQ(CurveGrid(-kLargest, kLargest, 2), (std::vector<double>{-kLargest, 0, kLargest}));
    EXPECT_TRUE(CurveGrid(0, 1, 0).empty());
    EXPECT_TRUE(CurveGrid(0, 1, -3).empty());
    EXPECT_TRUE(CurveGrid(0, 1, 1'000'001).empty());
    EXPECT_TRUE(CurveGrid(1, 1, 10).empty());
    EXPECT_TRUE(CurveGrid(kNaN, 1, 10).empty());
}

TEST(Smoothing, WeighsEachValueAgainstThoseBefore) {
    const std::vector<double> y = {8, 4, 0, 2};
    EXPECT_EQ(SmoothExponentially(y, 0.5), (std::vector<double>{8, 6, 3, 2.5}));
    EXPECT_EQ(SmoothExponentially(y, 1), y);
    EXPECT_EQ(SmoothExponentially(y, 0), (std::vector<double>{8, 8, 8, 8}));
    EXPECT_TRUE(SmoothExponentially({}, 0.5).empty());
}

TEST(Smoothing, ValuesThatAreNotFiniteArePassedOver) {
    const std::vector<double> y = {kNaN, 8, kInfinity, 4, kNaN};
    const std::vector<double> smooth = SmoothExponentially(y, 0.5);
    const std::vector<double> average = RunningAverage(y, 2);
    EXPECT_TRUE(std::isnan(smooth[0]));
    EXPECT_TRUE(std::isnan(average[0]));
    EXPECT_EQ(std::vector(smooth.begin() + 1, smooth.end()), (std::vector<double>{8, 8, 6, 6}));
    EXPECT_EQ(std::vector(average.begin() + 1, average.end()), (std::vector<double>{8, 8, 6, 6}));
}

TEST(RunningAverage, WindowIsTheTruncatedReciprocal) {
    struct TCase {
        double controlValue;
        std::size_t window;
    };
    const TCase cases[] = {
        {0.05, 19},
        {0.1, 9},
        {0.2, 4},
        {0.25, 4},
        {0.5, 2},
        {0.3, 3},
        {1.0 / 3, 3}, // the double lies below one third
        {0x1p-20, 1 << 20},
        // The reciprocals of the doubles fall short by 2.8e-17 and 2.7e-20 of themselves: 64 bits hold only
        // the first of these differences.
        {1.0 / 2049, 2048},
        {1.0 / 4323, 4323},
        {1e-9, 999'999'999},
        {5e-324, std::numeric_limits<std::size_t>::max()},
    };
    for (const TCase& c : cases) EXPECT_EQ(RunningAverageWindow(c.controlValue), c.window) << c.controlValue;
    for (const double value : {0.6, 0.5000001, 1.0, kInfinity, 0.0, -0.1, kNaN})
        EXPECT_THROW(RunningAverageWindow(value), ERegressionError) << value;
}

TEST(RunningAverage, AgreesWithAddingUpEachWindow) {
    std::mt19937_64 random(5);
    std::vector<double> y;
    for (int i = 0; i < 100; ++i) y.push_back(static_cast<double>(random() % 1000)); // sums are exact
    for (const std::size_t window : {1, 2, 3, 19, 99, 100, 101, 5000}) {
        const std::vector<double> average = RunningAverage(y, window);
        for (std::size_t i = 0; i < y.size(); ++i) {
            const std::size_t length = std::min(window, i + 1);
            double sum = 0;
            for (std::size_t k = i + 1 - length; k <= i; ++k) sum += y[k];
            EXPECT_EQ(average[i], sum / static_cast<double>(length)) << window << " at " << i;
        }
    }
}

TEST(RunningAverage, AHugeValueLeavesNoTrace) {
    const std::vector<double> y = {1, 2, 1e300, 3, 4, 5};
    EXPECT_EQ(RunningAverage(y, 2).back(), 4.5);
}

} // namespace
} // namespace lumoplot
