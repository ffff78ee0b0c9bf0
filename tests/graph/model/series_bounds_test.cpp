#include "data/analysis/least_squares.h"
#include "graph/model/child_graph.h"

#include <gtest/gtest.h>

namespace lumoplot {
namespace {

// Y − 1 − 2·X of the points is 0, 0, 3: mean 1, standard deviation √3.
TEST(SeriesBounds, LieAboutTheMeanOfTheCorrectedY) {
    const double sd = std::sqrt(3.0);
    struct TCase {
        TBoundsType type;
        std::vector<double> levels;
    };
    const TCase cases[] = {
        {TBoundsType::None, {}},
        {TBoundsType::SetValues, {-5, 40}}, // as the axis reads them
        {TBoundsType::OneSD, {1 - sd, 1 + sd}},
        {TBoundsType::TwoSD, {1 - 2 * sd, 1 + 2 * sd}},
        {TBoundsType::ThreeSD, {1 - 3 * sd, 1 + 3 * sd}},
        {TBoundsType::AllSD, {1 - 3 * sd, 1 - 2 * sd, 1 - sd, 1 + sd, 1 + 2 * sd, 1 + 3 * sd}},
    };
    TxyGraph graph;
    TSeries& series = *graph.FindSeries(graph.AddSeries());
    series.SetLowerBound(-5);
    series.SetUpperBound(40);
    for (const double x : {0, 1, 2}) series.AddPoint(x, x == 2 ? 8 : 1 + 2 * x);
    series.SetZeroValue(1);
    series.SetBaseLineSlope(2);
    for (const TCase& c : cases) {
        series.SetBoundsType(c.type);
        const std::vector<double> levels = series.BoundLevels();
        ASSERT_EQ(levels.size(), c.levels.size());
        for (std::size_t i = 0; i < levels.size(); ++i) EXPECT_DOUBLE_EQ(levels[i], c.levels[i]);
    }
    series.Clear();
    EXPECT_TRUE(series.BoundLevels().empty());
    series.SetBoundsType(TBoundsType::SetValues);
    series.SetUpperBound(INFINITY);
    EXPECT_EQ(series.BoundLevels(), std::vector<double>{-5});
}

TEST(SeriesRegressions, AreUpToDateWhenTheGraphIsPrepared) {
    TxyGraph graph;
    TSeries& fitted = *graph.FindSeries(graph.AddSeries());
    TSeries& hidden = *graph.FindSeries(graph.AddSeries());
    TSeries& refused = *graph.FindSeries(graph.AddSeries());
    for (TSeries* series : {&fitted, &hidden, &refused}) {
        for (const double x : {0, 1, 2}) series->AddPoint(x, 5 - x);
        series->SetRegressionType(TRegressionType::Linear);
    }
    hidden.SetActive(false);
    refused.SetRegressionType(TRegressionType::RunningAverage);
    refused.SetRegressionControlValue2(1);
    graph.RequestRepaint(false);
    graph.PrepareForDrawing();
    EXPECT_DOUBLE_EQ(fitted.RegressionLine()->Coefficients().C1, -1);
    EXPECT_TRUE(hidden.RegressionStale()) << "nobody sees it";
    EXPECT_EQ(refused.RegressionError(), "Invalid Running Average limit");
    EXPECT_FALSE(graph.RepaintRequested());
}

} // namespace
} // namespace lumoplot
