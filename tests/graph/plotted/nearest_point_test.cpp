// The quick search against a walk over all points.
#include "graph/plotted/nearest_point.h"

#include "graph/model/graph.h"
#include "graph/plotted/paired_points.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace lumoplot {
namespace {

const QRectF kPlot(40, 30, 400, 300);

std::optional<double> NearestDistance(const TxyGraph& graph, const TPlotMap& map, QPointF place,
                                      double reach) {
    std::optional<double> best;
    for (const auto& series : graph.Series()) {
        if (!IsDrawn(*series)) continue;
        const TSeries* xSeries = XSeriesOf(*series);
        TPointCursor xPoint = xSeries ? xSeries->First() : TPointCursor();
        for (TPointCursor point = series->First(); point; point = point.Next()) {
            if (xSeries && !xPoint) break;
            const double x = xSeries ? xSeries->CorrectedY(xPoint.X(), xPoint.Y()) : point.X();
            if (xSeries) xPoint = xPoint.Next();
            const QPointF at(map.X.Position(x),
                             map.YOf(*series).Position(series->CorrectedY(point.X(), point.Y())));
            const double distance = std::hypot(at.x() - place.x(), at.y() - place.y());
            const bool isShown = kPlot.adjusted(-1, -1, 1, 1).contains(at);
            if (isShown && distance <= reach && (!best || distance < *best)) best = distance;
        }
    }
    return best;
}

struct TAxisCase {
    const char* name;
    TScaleMap x;
    TScaleMap y;
    bool paired;
};

TEST(NearestPoint, IsTheOneThatAWalkFinds) {
    const TScaleMap linearX(0, 100, kPlot.left(), kPlot.right());
    const TScaleMap linearY(-3, 3, kPlot.bottom(), kPlot.top());
    const TAxisCase cases[] = {{"linear", linearX, linearY, false},
                               {"reversed", TScaleMap(20, 30, kPlot.right(), kPlot.left()), linearY, false},
                               {"logarithmic",
                                TScaleMap(1, 100, kPlot.left(), kPlot.right(), TScaleKind::Log),
                                TScaleMap(0.01, 10, kPlot.bottom(), kPlot.top(), TScaleKind::Log), false},
                               {"paired", TScaleMap(-2, 2, kPlot.left(), kPlot.right()), linearY, true}};
    std::mt19937 random(3);
    std::normal_distribution<> noise;
    std::uniform_real_distribution<> across(0, 1);
    TxyGraph graph;
    for (int k = 0; k < 3; ++k) {
        TSeries& series = *graph.FindSeries(graph.AddSeries());
        series.SetNumericalTolerance(0.01);
        for (int i = 0; i < 3000; ++i) series.AddPoint(100 * across(random), noise(random));
        series.SetBaseLineSlope(0.01 * k);
    }
    graph.FindSeries(3)->SetYAxisOfSeries(graph.YAxis_Second());
    for (const TAxisCase& axes : cases) {
        graph.Appearance()->SetXAxisSerIndex(axes.paired ? 1 : 0);
        const TPlotMap map{kPlot, axes.x, axes.y, linearY, {}};
        int found = 0;
        for (int i = 0; i < 300; ++i) {
            const QPointF place(kPlot.left() + kPlot.width() * across(random),
                                kPlot.top() + kPlot.height() * across(random));
            const auto hit = NearestPoint(graph, map, place, 6);
            const auto expected = NearestDistance(graph, map, place, 6);
            ASSERT_EQ(hit.has_value(), expected.has_value()) << axes.name;
            if (!hit) continue;
            ++found;
            EXPECT_NEAR(hit->Distance, *expected, 1e-9) << axes.name;
            const auto point = hit->Series->GetPoint(hit->Id);
            ASSERT_TRUE(point);
            EXPECT_DOUBLE_EQ(hit->Y, hit->Series->CorrectedY(point->X, point->Y));
        }
        EXPECT_GT(found, 100) << axes.name;
    }
}

TEST(NearestPoint, OfEqualOnesTheOneDrawnLast) {
    TxyGraph graph;
    for (int k = 0; k < 2; ++k) graph.FindSeries(graph.AddSeries())->AddPoint(1, 1);
    const TScaleMap map(0, 2, 0, 100);
    const auto hit = NearestPoint(graph, {QRectF(0, 0, 100, 100), map, map, map, {}}, {50, 50}, 5);
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->Series->SeriesIndex(), 2);
}

} // namespace
} // namespace lumoplot
