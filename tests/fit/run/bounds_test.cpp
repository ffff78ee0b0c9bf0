// Fits whose parameters have bounds, by each procedure.
#include "fit/run/curve_fitter.h"

#include "common/fit_parameters.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace lumoplot {
namespace {

constexpr double kNone = std::numeric_limits<double>::infinity();

struct TBounded {
    const char* name;
    double start;
    double min = -kNone;
    double max = kNone;
};

void Define(TCurFit& fit, const char* equation, const std::vector<TBounded>& parameters,
            TFitProcedure procType) {
    fit.SetExpression(equation);
    fit.SetProcType(procType);
    fit.SetIterMax(2000);
    for (const TBounded& bounded : parameters) {
        TDBLParameter& parameter = AddParameter(fit, bounded.name, bounded.start);
        parameter.SetBounds(bounded.min, bounded.max);
        parameter.SetVary(true);
    }
}

struct TPoints {
    std::vector<double> x;
    std::vector<double> y;

    double Mean(const std::vector<double>& values) const {
        double sum = 0;
        for (const double value : values) sum += value;
        return sum / static_cast<double>(values.size());
    }
};

template <class TFunction>
TPoints PointsOf(int count, double step, TFunction&& function) {
    TPoints points;
    for (int i = 0; i < count; ++i) {
        points.x.push_back(i * step);
        points.y.push_back(function(points.x.back()));
    }
    return points;
}

// With the slope held at its bound the best intercept is mean y − bound · mean x, and its error the residual
// deviation by the root of the count.
TEST(Bounds, HoldALinearParameter) {
    const TPoints points = PointsOf(20, 0.5, [](double x) { return 1 + 2 * x + 0.1 * std::sin(9 * x); });
    for (const TFitProcedure procType : kEveryProcedure) {
        TCurFit fit;
        Define(fit, "a+b*x", {{"a", 1}, {"b", 0.5, 0, 1.5}}, procType);
        const TFitResult result = RunFit(fit, points.x, points.y);
        EXPECT_EQ(result.End, TFitEnd::Converged) << static_cast<int>(procType);
        EXPECT_EQ(fit.Parameter(2)->Value(), 1.5) << static_cast<int>(procType);
        EXPECT_NEAR(fit.Parameter(1)->Value(), points.Mean(points.y) - 1.5 * points.Mean(points.x), 1e-12);
        EXPECT_NEAR(result.StandardError(0), result.ResidualSD / std::sqrt(20.0), 1e-12)
            << static_cast<int>(procType);
        EXPECT_TRUE(std::isnan(result.StandardError(1))) << static_cast<int>(procType);
        ASSERT_FALSE(result.Remarks.empty());
        EXPECT_TRUE(result.Remarks.front().starts_with("b ends on its upper bound 1.5"))
            << static_cast<int>(procType);
    }
}

// With the rate held the best amplitude is Σ y e / Σ e e.
TEST(Bounds, HoldANonlinearParameter) {
    const TPoints points = PointsOf(40, 0.2, [](double x) { return 3 * std::exp(-0.5 * x); });
    double product = 0;
    double square = 0;
    for (std::size_t i = 0; i < points.x.size(); ++i) {
        const double e = std::exp(-0.3 * points.x[i]);
        product += e * points.y[i];
        square += e * e;
    }
    for (const TFitProcedure procType : kEveryProcedure) {
        for (const double start : {0.1, 0.3, 7.0}) {
            TCurFit fit;
            Define(fit, "a*exp(-b*x)", {{"a", 1}, {"b", start, 0, 0.3}}, procType);
            EXPECT_EQ(RunFit(fit, points.x, points.y).End, TFitEnd::Converged) << static_cast<int>(procType);
            EXPECT_EQ(fit.Parameter(2)->Value(), 0.3) << static_cast<int>(procType);
            EXPECT_NEAR(fit.Parameter(1)->Value(), product / square, 1e-9) << static_cast<int>(procType);
        }
    }
}

TEST(Bounds, ThatDoNotHoldChangeNothing) {
    const TPoints points =
        PointsOf(40, 0.2, [](double x) { return 3 * std::exp(-0.5 * x) + 0.05 * std::sin(30 * x); });
    for (const TFitProcedure procType : kEveryProcedure) {
        TCurFit free;
        TCurFit bounded;
        Define(free, "a*exp(-b*x)+c", {{"a", 1}, {"b", 0.1}, {"c", 1}}, procType);
        // Two of them start on a bound that they have to leave.
        Define(bounded, "a*exp(-b*x)+c", {{"a", 1, 0, 10}, {"b", 0.1, 0.1, 5}, {"c", 1, -1, 1}}, procType);
        const double rss = RunFit(free, points.x, points.y).Rss;
        const TFitResult result = RunFit(bounded, points.x, points.y);
        EXPECT_EQ(result.End, TFitEnd::Converged) << static_cast<int>(procType);
        EXPECT_NEAR(result.Rss / rss, 1, 1e-12) << static_cast<int>(procType);
        EXPECT_NEAR(bounded.Parameter(2)->Value(), free.Parameter(2)->Value(), 1e-8)
            << static_cast<int>(procType);
        EXPECT_TRUE(std::isfinite(result.StandardError(1))) << static_cast<int>(procType);
    }
}

// Random bounds about a sum of two decays: nothing within them that is near is lower.
TEST(Bounds, NothingNearWithinThemIsLower) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> uniform(0, 1);
    const TPoints points = PointsOf(
        60, 0.1, [&](double x) { return 2 * std::exp(-x) + 1 + 0.1 * x + 0.1 * (uniform(random) - 0.5); });
    for (int round = 0; round < 40; ++round) {
        std::vector<TBounded> bounds = {{"a", 1}, {"b", 1}, {"c", 1}, {"d", 0.5}};
        for (TBounded& bound : bounds) {
            bound.min = 3 * uniform(random) - 1;
            bound.max = bound.min + 0.05 + uniform(random);
        }
        TCurFit fit;
        Define(fit, "a*exp(-b*x)+c+d*x", bounds, kEveryProcedure[round % 4]);
        const TFitResult result = RunFit(fit, points.x, points.y);
        fit.Compile();
        for (int trial = 0; trial < 60; ++trial) {
            std::vector<double> best;
            for (int i = 1; i <= 4; ++i) {
                const auto& bound = bounds[static_cast<std::size_t>(i - 1)];
                double& value = *fit.Parameter(i)->ValueRef();
                best.push_back(value);
                ASSERT_TRUE(value >= bound.min && value <= bound.max) << round << ' ' << bound.name;
                value = std::clamp(value + 0.02 * (uniform(random) - 0.5), bound.min, bound.max);
            }
            double rss = 0;
            for (std::size_t i = 0; i < points.x.size(); ++i) {
                const double residual = points.y[i] - fit.EvaluateAt(points.x[i]);
                rss += residual * residual;
            }
            EXPECT_GE(rss, result.Rss * (1 - 1e-9)) << round << ' ' << TextOf(result.End);
            for (int i = 1; i <= 4; ++i)
                *fit.Parameter(i)->ValueRef() = best[static_cast<std::size_t>(i - 1)];
        }
    }
}

} // namespace
} // namespace lumoplot
