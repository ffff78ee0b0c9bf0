#include "fit/many/fit_batch.h"

#include "common/fit_parameters.h"
#include "common/thrown_text.h"

#include <cmath>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

struct TRuns {
    std::vector<std::vector<double>> X;
    std::vector<std::vector<double>> Y;
    std::vector<TBatchData> Data;
};

// Decays with one rate and an amplitude and a time range of their own, with a known disturbance.
TRuns Decays(int count) {
    TRuns runs;
    for (int k = 0; k < count; ++k) {
        std::vector<double> x, y;
        for (int i = 0; i < 12 + 3 * k; ++i) {
            x.push_back(0.3 * i);
            y.push_back((k + 1) * std::exp(-0.7 * x.back()) + 0.02 * std::sin(40.0 * i + k));
        }
        runs.X.push_back(x);
        runs.Y.push_back(y);
    }
    for (int k = 0; k < count; ++k) {
        const auto place = static_cast<std::size_t>(k);
        runs.Data.push_back({"run " + std::to_string(k + 1), runs.X[place], runs.Y[place]});
    }
    return runs;
}

void DefineDecay(TCurFit& fit) {
    fit.SetExpression("a*exp(-k*x)");
    fit.SetProcType(TFitProcedure::Newton);
    AddParameter(fit, "a", 0.5).SetVary(true);
    AddParameter(fit, "k", 0.1).SetVary(true);
}

// Lines with a common slope by the closed formulas: b = Σ Sxy / Σ Sxx, aᵢ = ȳᵢ − b x̄ᵢ, σ(b)² = s² / Σ Sxx.
TEST(FitBatch, ASharedSlopeIsThatOfTheFormulas) {
    const std::vector<double> x1 = {0, 1, 2, 5}, y1 = {1, 3, 4, 12}, x2 = {1, 2, 4}, y2 = {-3, -2, 4};
    const TBatchData data[] = {{"first", x1, y1}, {"second", x2, y2}};
    TCurFit fit;
    fit.SetExpression("a+b*x");
    AddParameter(fit, "a", 0).SetVary(true);
    AddParameter(fit, "b", 1).SetVary(true);
    const std::string shared[] = {"B"};
    const TGlobalFit global = FitTogether(fit, data, shared, {});

    double sxx = 0, sxy = 0;
    double means[2][2];
    for (int k = 0; k < 2; ++k) {
        const auto& x = k == 0 ? x1 : x2;
        const auto& y = k == 0 ? y1 : y2;
        const auto count = static_cast<double>(x.size());
        double mx = 0, my = 0;
        for (std::size_t i = 0; i < x.size(); ++i) mx += x[i] / count, my += y[i] / count;
        for (std::size_t i = 0; i < x.size(); ++i)
            sxx += (x[i] - mx) * (x[i] - mx), sxy += (x[i] - mx) * (y[i] - my);
        means[k][0] = mx;
        means[k][1] = my;
    }
    const double b = sxy / sxx;
    double rss = 0;
    for (std::size_t i = 0; i < x1.size(); ++i)
        rss += std::pow(y1[i] - means[0][1] - b * (x1[i] - means[0][0]), 2);
    for (std::size_t i = 0; i < x2.size(); ++i)
        rss += std::pow(y2[i] - means[1][1] - b * (x2[i] - means[1][0]), 2);
    EXPECT_EQ(global.Result.End, TFitEnd::Converged);
    EXPECT_GT(global.Result.Iterations, 0);
    EXPECT_EQ(global.Fits[1].Fit->Result()->Iterations, global.Result.Iterations);
    EXPECT_EQ(global.Names, (std::vector<std::string>{"b", "a [first]", "a [second]"}));
    EXPECT_NEAR(global.Result.Rss, rss, 1e-10);
    for (int k = 0; k < 2; ++k) {
        const TCurFit& own = *global.Fits[static_cast<std::size_t>(k)].Fit;
        EXPECT_NEAR(own.Parameter(2)->Value(), b, 1e-9);
        EXPECT_NEAR(own.Parameter(1)->Value(), means[k][1] - b * means[k][0], 1e-9);
        EXPECT_NEAR(own.Parameter(2)->FinalDeviation, std::sqrt(rss / (7 - 3) / sxx), 1e-9);
    }
}

// With nothing in common the sum of squares splits into those of the data sets.
TEST(FitBatch, SharingNothingIsFittingEach) {
    const TRuns runs = Decays(3);
    TCurFit fit;
    DefineDecay(fit);
    const std::vector<TBatchFit> each = FitEach(fit, runs.Data, {});
    const TGlobalFit global = FitTogether(fit, runs.Data, {}, {});
    ASSERT_EQ(each.size(), 3u);
    for (std::size_t k = 0; k < each.size(); ++k) {
        EXPECT_EQ(each[k].Fit->Result()->End, TFitEnd::Converged);
        for (int i = 1; i <= 2; ++i)
            EXPECT_NEAR(global.Fits[k].Fit->Parameter(i)->Value(), each[k].Fit->Parameter(i)->Value(), 1e-7);
    }
    const std::string shared[] = {"k"};
    const TGlobalFit common = FitTogether(fit, runs.Data, shared, {});
    EXPECT_GT(common.Result.Rss, global.Result.Rss);
    EXPECT_NEAR(common.Fits[0].Fit->Parameter(2)->Value(), 0.7, 0.02);
    EXPECT_EQ(common.Result.Quality.Freedom, static_cast<int>(common.Result.PointsUsed) - 4);
}

// Of two values: χ² = (difference)² / (sum of the squares of the errors), with one degree of freedom.
TEST(FitBatch, ParametersThatAgreeAreRecognised) {
    const TRuns runs = Decays(2);
    TCurFit fit;
    DefineDecay(fit);
    const std::vector<TBatchFit> fits = FitEach(fit, runs.Data, {});
    const std::vector<const TBatchFit*> both = {&fits[0], &fits[1]};
    const std::vector<TParameterAgreement> agreements = AgreementsOf(both);
    ASSERT_EQ(agreements.size(), 2u);
    for (int i = 1; i <= 2; ++i) {
        const TDBLParameter& first = *fits[0].Fit->Parameter(i);
        const TDBLParameter& second = *fits[1].Fit->Parameter(i);
        const double variance = std::pow(first.FinalDeviation, 2) + std::pow(second.FinalDeviation, 2);
        const double square = std::pow(first.Value() - second.Value(), 2) / variance;
        EXPECT_NEAR(agreements[static_cast<std::size_t>(i - 1)].Probability, std::erfc(std::sqrt(square / 2)),
                    1e-9);
    }
    EXPECT_EQ(AgreementText(agreements),
              "k is the same in all data sets within its errors: it may have one value in common.");
    EXPECT_TRUE(AgreementsOf(std::span(both).first(1)).empty()) << "nothing to compare with";
}

TEST(FitBatch, BoundsAndTiesHoldForAll) {
    const TRuns runs = Decays(2);
    TCurFit fit;
    DefineDecay(fit);
    fit.SetExpression("a*exp(-k*x)+0*h");
    AddParameter(fit, "h", 1).SetTie("ln(2)/k");
    fit.Parameter(2)->SetBounds(0, 0.6);
    const std::string shared[] = {"k"};
    const TGlobalFit global = FitTogether(fit, runs.Data, shared, {});
    for (const TBatchFit& own : global.Fits) {
        EXPECT_EQ(own.Fit->Parameter(2)->Value(), 0.6);
        EXPECT_DOUBLE_EQ(own.Fit->Parameter(3)->Value(), std::log(2.0) / 0.6);
    }
}

TEST(FitBatch, WhatCanNotBeFittedIsNamed) {
    TRuns runs = Decays(2);
    const std::vector<double> none;
    runs.Data.insert(runs.Data.begin() + 1, {"empty", none, none});
    TCurFit fit;
    DefineDecay(fit);
    const std::vector<TBatchFit> each = FitEach(fit, runs.Data, {});
    ASSERT_EQ(each.size(), 3u);
    EXPECT_EQ(each[1].Error, "There are no points to fit");
    const auto table = BatchTable(each);
    EXPECT_EQ(table[0], (std::vector<std::string>{"Data set", "a", "error of a", "k", "error of k", "R²",
                                                  "Residual deviation", "End"}));
    EXPECT_EQ(table[2],
              (std::vector<std::string>{"empty", "", "", "", "", "", "", "There are no points to fit"}));
    EXPECT_EQ(table[3].front(), "run 2");
    EXPECT_EQ(ThrownText([&] { FitTogether(fit, runs.Data, {}, {}); }), "empty: There are no points to fit");
    const std::string shared[] = {"q"};
    EXPECT_EQ(ThrownText([&] { FitTogether(fit, std::span(runs.Data).first(1), shared, {}); }),
              "There is no varied parameter \"q\" to share");
}

} // namespace
} // namespace lumoplot
