#include "data/analysis/statistics.h"

#include "common/special_values.h"
#include "data/analysis/nist_file.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace lumoplot {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

struct TNistCase {
    const char* file;
    const char* deviationLabel;
    double meanDigits;
    double varianceDigits;
    double exactVariance = 0; ///< of the doubles that stand for the data, from rational arithmetic
};

TEST(Statistics, ReferenceDataKeepTheirDigits) {
    const TNistCase cases[] = {
        {"Lew.dat", "s:", 14, 12},
        {"Mavro.dat", "s:", 14, 12},
        {"NumAcc1.dat", "s:", 14, 12},
        // Rounding the values to doubles leaves the exact variance with 9.15 and 7.95 of its digits.
        {"NumAcc3.dat", "(denom. = n-1):", 14, 9, 0.01000000000698492},
        {"NumAcc4.dat", "s:", 14, 7.9, 0.01000000011175871},
    };
    for (const TNistCase& c : cases) {
        const TNistFile file(c.file);
        const TStatistics statistics = ComputeStatistics(file.Column(0), 0);
        const double deviation = file.Certified(c.deviationLabel);
        EXPECT_GE(AgreeingDigits(statistics.Mean, file.Certified("Sample Mean")), c.meanDigits) << c.file;
        EXPECT_GE(AgreeingDigits(statistics.Variance, deviation * deviation), c.varianceDigits) << c.file;
        if (c.exactVariance == 0) continue;
        EXPECT_GE(AgreeingDigits(statistics.Variance, c.exactVariance), 15) << c.file;
    }
}

TEST(Statistics, SmallListsMatchHandArithmetic) {
    // d = -1.5, -0.5, 0.5, 1.5: Σd² = 5, Σd³ = 0, Σd⁴ = 10.25
    const TStatistics four =
        ComputeStatistics(std::vector<double>{3, kNaN, 1, -kInfinity, 4, 2, kInfinity}, 0);
    EXPECT_EQ(four.Message, "");
    EXPECT_FALSE(four.Failed);
    EXPECT_EQ(four.Count, 4U);
    EXPECT_EQ(four.Sum, 10);
    EXPECT_EQ(four.Mean, 2.5);
    EXPECT_EQ(four.Mode, 1);
    EXPECT_DOUBLE_EQ(four.Variance, 5.0 / 3);
    EXPECT_EQ(four.Skew, 0);
    EXPECT_DOUBLE_EQ(four.Kurtosis, 10.25 / (25 * 4) - 3);

    // d = -1, -1, -1, 3: Σd² = 12, Σd³ = 24, Σd⁴ = 84, variance 4
    const TStatistics skewed = ComputeStatistics(std::vector<double>{0, 4, 0, 0}, 0);
    EXPECT_EQ(skewed.Variance, 4);
    EXPECT_DOUBLE_EQ(skewed.Skew, 24.0 / (4 * 64));
    EXPECT_DOUBLE_EQ(skewed.Kurtosis, 84.0 / (144 * 4) - 3);
}

struct TOrderCase {
    int count; // of the values 1, 2, 3 …
    double median;
    double quantile20;
    double quantile80;
    double quantile25;
    double quantile75;
};

TEST(Statistics, OrderValuesAreTakenWithoutAveraging) {
    const TOrderCase cases[] = {
        {2, 1, 0, 2, 0, 2}, {3, 1, 0, 3, 0, 3}, {4, 2, 0, 4, 1, 3},
        {5, 2, 1, 4, 1, 4}, {9, 4, 1, 8, 2, 7}, {20, 10, 4, 16, 5, 15},
    };
    for (const TOrderCase& c : cases) {
        std::vector<double> values;
        for (int i = c.count; i > 0; --i) values.push_back(i);
        const TStatistics statistics = ComputeStatistics(values, 0);
        EXPECT_EQ(statistics.Median, c.median) << c.count;
        EXPECT_EQ(statistics.Quantile20, c.quantile20) << c.count;
        EXPECT_EQ(statistics.Quantile80, c.quantile80) << c.count;
        EXPECT_EQ(statistics.Quantile25, c.quantile25) << c.count;
        EXPECT_EQ(statistics.Quantile75, c.quantile75) << c.count;
    }
}

struct TModeCase {
    std::vector<double> values;
    double tolerance;
    double mode;
};

TEST(Statistics, ModeIsWhereTheLongestRunReachedItsLength) {
    const TModeCase cases[] = {
        {{3, 1, 2}, 0, 1},
        {{1, 2, 2}, 0, 1}, // the start of a later run does not count, so both runs are 1 long
        {{1, 2, 2, 2}, 0, 2},
        {{2, 2, 1, 3, 3, 3}, 0, 3}, // two after the start of 3, one after that of 2
        {{1, 1.25, 1.5, 4, 4}, 0.5, 1.5},
        {{1, 1.25, 1.5, 4, 4}, 0.25, 1.25},
        {{1, 1, 2}, -1, 0},
    };
    for (const TModeCase& c : cases)
        EXPECT_EQ(ComputeStatistics(c.values, c.tolerance).Mode, c.mode)
            << c.values.size() << " " << c.tolerance;
}

TEST(Statistics, FewerThanTwoValuesFail) {
    for (const std::vector<double>& values : {std::vector<double>{}, {7}, {kNaN, 7, kInfinity}}) {
        const TStatistics statistics = ComputeStatistics(values, 0);
        EXPECT_TRUE(statistics.Failed);
        EXPECT_EQ(statistics.Message, "No Statistics are available unless more than one point exists");
        EXPECT_EQ(statistics.Count, values.empty() ? 0U : 1U);
        EXPECT_EQ(statistics.Mean, 0);
    }
}

TEST(Statistics, EqualValuesHaveNoDeviance) {
    // 49 · 0.1 / 49 is not 0.1 in doubles; the mean still is.
    for (const double value : {5.0, 0.1, -kLargest, 5e-324}) {
        const TStatistics statistics = ComputeStatistics(std::vector<double>(49, value), 0);
        EXPECT_FALSE(statistics.Failed);
        EXPECT_EQ(statistics.Message,
                  "No skew/kurtosis are available because there is no deviance in the data");
        EXPECT_EQ(statistics.Mean, value);
        EXPECT_EQ(statistics.Median, value);
        EXPECT_EQ(statistics.Variance, 0);
        EXPECT_EQ(statistics.Skew, 0);
        EXPECT_EQ(statistics.Kurtosis, 0);
    }
}

TEST(Statistics, ChainOrderCanBeKept) {
    const std::vector<double> walked = {1, 3, 2, 4};
    EXPECT_EQ(ComputeStatistics(walked, 0, TValueOrder::AsWalked).Median, 3);
    EXPECT_EQ(ComputeStatistics(walked, 0).Median, 2);
}

// Adding a constant, exactly, changes no moment; multiplying by a power of two scales them exactly.
TEST(Statistics, MomentsDoNotDependOnPlaceOrUnit) {
    const std::vector<double> base = {0, 1, 1, 3, 8, 20, 21};
    const TStatistics expected = ComputeStatistics(base, 0);
    std::vector<double> moved = base;
    for (double& value : moved) value += 0x1p48;
    const TStatistics far = ComputeStatistics(moved, 0);
    constexpr double kRounding = 1e-14; // a few roundings a term
    EXPECT_NEAR(far.Variance, expected.Variance, kRounding * expected.Variance);
    EXPECT_NEAR(far.Skew, expected.Skew, kRounding);
    EXPECT_NEAR(far.Kurtosis, expected.Kurtosis, kRounding);

    for (const int exponent : {-300, 300, 1000, -1070}) {
        std::vector<double> scaled = base;
        for (double& value : scaled) value = std::ldexp(value, exponent);
        const TStatistics statistics = ComputeStatistics(scaled, 0);
        EXPECT_EQ(statistics.Variance, std::ldexp(expected.Variance, 2 * exponent)) << exponent;
        EXPECT_EQ(statistics.Skew, std::ldexp(expected.Skew, -3 * exponent)) << exponent;
        if (exponent > -1000) {
            EXPECT_EQ(statistics.Kurtosis, expected.Kurtosis) << exponent;
        }
    }
}

TEST(Statistics, LargeValuesThatCancelHaveASum) {
    EXPECT_EQ(ComputeStatistics(std::vector<double>{1e308, 1e308, -1e308, -1e308}, 0).Sum, 0);
    EXPECT_EQ(ComputeStatistics(std::vector<double>{1e308, -1e308, -1e308, 1e308, -1e308}, 0).Sum, -1e308);
    EXPECT_EQ(ComputeStatistics(std::vector<double>{-1e308, -1e308, 5}, 0).Sum, -kInfinity);
}

TEST(Statistics, TheWholeRangeOfDoublesHasAMean) {
    const TStatistics statistics =
        ComputeStatistics(std::vector<double>{-kLargest, kLargest, kLargest, kLargest}, 0);
    EXPECT_DOUBLE_EQ(statistics.Mean, kLargest / 2);
    EXPECT_EQ(statistics.Variance, kInfinity);
    EXPECT_DOUBLE_EQ(statistics.Kurtosis, 84.0 / (144 * 4) - 3); // the shape of 0, 4, 4, 4
}

} // namespace
} // namespace lumoplot
