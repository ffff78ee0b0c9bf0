#include "graph/fitting/fit_all.h"

#include "common/fit_parameters.h"
#include "data/series/y_error_rule.h"

#include <cmath>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

// Straight lines through three points each: slope and its error √(rss / Sxx) by hand.
TEST(FitAll, ParametersBecomeDataSetsWithErrors) {
    TxyGraph graph;
    const double ys[3][3] = {{1, 2, 4}, {0, 5, 7}, {2, 2, 2}};
    for (const auto& y : ys) {
        TSeries& series = *graph.FindSeries(graph.AddSeries());
        for (int i = 0; i < 3; ++i) series.AddPoint(i, y[i]);
    }
    graph.FindSeries(3)->SetActive(false);
    TCurFit fit;
    fit.SetExpression("a+b*x");
    AddParameter(fit, "a", 0).SetVary(true);
    AddParameter(fit, "b", 1).SetVary(true);
    const std::vector<TBatchFit> fits = FitAllDataSets(graph, fit, {});
    ASSERT_EQ(fits.size(), 2u) << "only what is shown";
    const int first = AddParameterDataSets(graph, fits);
    EXPECT_EQ(first, 4);
    const TSeries& slopes = *graph.FindSeries(5);
    EXPECT_EQ(slopes.SeriesName(), "b");
    EXPECT_NEAR(slopes.GetPoint(1)->Y, 1.5, 1e-9);
    EXPECT_NEAR(slopes.GetPoint(2)->Y, 3.5, 1e-9);
    EXPECT_NEAR(slopes.YError(1), std::sqrt(1.0 / 6 / 2), 1e-9);
    EXPECT_NEAR(slopes.YError(2), std::sqrt(1.5 / 2), 1e-9);
}

// Weights 1/σ² with σ = 10 % of Y: the mean is Σ(1/y) / Σ(1/y²).
TEST(FitAll, DataSetsWeighByTheirErrors) {
    TxyGraph graph;
    TSeries& series = *graph.FindSeries(graph.AddSeries());
    for (const double y : {1.0, 2.0, 4.0}) series.AddPoint(series.Count() + 1, y);
    SetYErrorsBy(series, {TYErrorKind::Percent, 10});
    TCurFit fit;
    fit.SetExpression("m+0*x");
    AddParameter(fit, "m", 1).SetVary(true);
    fit.SetWeighting({.ByYErrors = true});
    EXPECT_NEAR(FitAllDataSets(graph, fit, {})[0].Fit->Parameter(1)->Value(), 1.75 / 1.3125, 1e-9);
    DropYErrors(series);
    EXPECT_EQ(FitAllDataSets(graph, fit, {})[0].Error,
              "The fit weighs by the errors of Y, and the points have none");
}

} // namespace
} // namespace lumoplot
