#include "fit/run/fit_statistics.h"

#include "fit/run/robust_weights.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace lumoplot {
namespace {

constexpr double kRounding = 1e-13;

// By the closed forms for one and two degrees of freedom.
TEST(FitStatistics, ProbabilitiesHaveTheirClosedForms) {
    for (const double t : {0.0, 0.3, 1.0, 2.5, 40.0, 1e6}) {
        EXPECT_NEAR(StudentProbability(t, 1), 1 - 2 / std::numbers::pi * std::atan(t), kRounding) << t;
        EXPECT_NEAR(StudentProbability(-t, 2), 1 - t / std::sqrt(2 + t * t), kRounding) << t;
        EXPECT_NEAR(StudentProbability(t, 1e6), NormalProbability(t), 1e-6) << t;
        EXPECT_NEAR(ChiSquareProbability(t, 1), std::erfc(std::sqrt(t / 2)), kRounding) << t;
        EXPECT_NEAR(ChiSquareProbability(t, 2), std::exp(-t / 2), kRounding) << t;
        EXPECT_NEAR(ChiSquareProbability(t, 4), std::exp(-t / 2) * (1 + t / 2), kRounding) << t;
    }
    EXPECT_TRUE(std::isnan(StudentProbability(1, 0)));
}

// Six residuals by hand: 3 above, 3 below, 2 runs where 4 ± √(3·2/5) are expected.
TEST(FitStatistics, ResidualsThatGoTogetherAreSeen) {
    const TFitQuality quality = QualityOf({1, 1, 1, -1, -1, -1}, 6, 0.4, 2);
    EXPECT_EQ(quality.Freedom, 4);
    EXPECT_NEAR(quality.AdjustedRSquared, 1 - 0.6 * 5 / 4, kRounding);
    EXPECT_NEAR(quality.RunsDeviation, -2 / std::sqrt(1.2), kRounding);
    EXPECT_NEAR(quality.DurbinWatson, 4.0 / 6, kRounding);
    EXPECT_NEAR(quality.Aic, 6, kRounding);
    EXPECT_NEAR(quality.Aicc, 6 + 24.0 / 2, kRounding);
    EXPECT_NEAR(quality.Bic, 3 * std::log(6), kRounding);
}

TEST(RobustWeights, FallWithTheResidual) {
    const std::vector<double> residuals = {-1, 1, 1, -1, 0.5, 100};
    for (const TRobust robust : {TRobust::Huber, TRobust::Cauchy, TRobust::Tukey}) {
        const std::vector<double> weights = RobustWeights(robust, residuals, 2);
        EXPECT_GE(weights[4], weights[0]);
        EXPECT_EQ(weights[0], weights[1]);
        EXPECT_LT(weights[5], 0.02);
        EXPECT_GT(weights[0], 0.8);
    }
    EXPECT_EQ(RobustWeights(TRobust::Tukey, std::vector<double>{0, 0, 0, 0, 5}, 1)[4], 0);
}

// Of normal residuals the deviation that each kind ends with is that of the asymptotic efficiency of its
// constant, 95 %, but for what the weights take from the covariance.
TEST(RobustWeights, TheDeviationMakesUpForTheWeights) {
    std::vector<double> residuals; // the middles of 2000 equal shares of a normal distribution
    for (int i = 0; i < 2000; ++i) {
        double low = -6, high = 6;
        for (int k = 0; k < 50; ++k) {
            const double middle = 0.5 * (low + high);
            (0.5 * std::erfc(-middle / std::sqrt(2)) < (i + 0.5) / 2000 ? low : high) = middle;
        }
        residuals.push_back(low);
    }
    for (const TRobust robust : {TRobust::Huber, TRobust::Cauchy, TRobust::Tukey}) {
        const std::vector<double> weights = RobustWeights(robust, residuals, 2);
        double mean = 0;
        for (const double weight : weights) mean += weight / 2000;
        const double deviation = RobustDeviation(robust, residuals, 2);
        EXPECT_NEAR(mean / (deviation * deviation), 0.95, 0.005);
    }
}

} // namespace
} // namespace lumoplot
