#include "graph/drawing/picture/drawing.h"
#include "graph/drawing/recording_device.h"
#include "graph/model/appearance.h"
#include "graph/model/graph.h"
#include "graph/mouse/graph_mouse.h"

#include <cmath>
#include <gtest/gtest.h>
#include <map>

namespace lumoplot {
namespace {

constexpr QRectF kSheet(0, 0, 640, 480);
constexpr TColor kBarColor = 0x123456;

class ErrorBars : public testing::Test {
protected:
    ErrorBars() {
        Graph.resize(640, 480);
        Series.SetLinesShown(false);
        Series.SetPointsShown(true);
        Series.SetPointColor(kBarColor);
    }

    /// The straight lines in the colour of the bars; symbols are shapes.
    std::vector<QLineF> Bars() {
        Graph.PrepareForDrawing();
        Graph.grab();
        TRecordingDevice device;
        QPainter painter(&device);
        DrawGraph(painter, Graph, kSheet);
        std::vector<QLineF> bars;
        for (const TRecordedLine& line : device.Record().Lines)
            if (line.Points.size() == 2 && line.Pen.color() == QColor(0x56, 0x34, 0x12))
                bars.emplace_back(line.Points[0], line.Points[1]);
        return bars;
    }
    const TPlotMap& Map() { return *Graph.Mouse().Map(); }

    TxyGraph Graph;
    TSeries& Series = *Graph.FindSeries(Graph.AddSeries());
};

TEST_F(ErrorBars, ReachFromBelowToAboveTheCorrectedPoint) {
    Series.AddPoint(1, 10, 2);
    Series.AddPoint(2, 20);
    Series.AddPoint(3, 30, 0.5);
    Series.SetZeroValue(5);
    const auto bars = Bars();
    ASSERT_EQ(bars.size(), 6u) << "two bars with two caps each";
    for (const auto& [first, x, y, error] : {std::tuple(0u, 1.0, 5.0, 2.0), {3u, 3.0, 25.0, 0.5}}) {
        EXPECT_NEAR(bars[first].x1(), Map().X.Position(x), 1);
        EXPECT_NEAR(bars[first].y1(), Map().Y.Position(y + error), 1);
        EXPECT_NEAR(bars[first].y2(), Map().Y.Position(y - error), 1);
        EXPECT_EQ(bars[first + 1].y1(), bars[first].y1());
        EXPECT_EQ(bars[first + 2].y1(), bars[first].y2());
        EXPECT_NEAR(bars[first + 1].center().x(), bars[first].x1(), 1e-9);
    }
    EXPECT_LE(Graph.YAxis()->Min(), 3) << "the range holds the bars";
}

TEST_F(ErrorBars, GoDownToTheFrameOfALogarithmicAxis) {
    Graph.YAxis()->SetLogScale(true);
    Series.AddPoint(1, 10, 12);
    Series.AddPoint(2, 100, 1);
    for (const bool isReversed : {false, true}) {
        Graph.YAxis()->SetReversed(isReversed);
        const auto bars = Bars();
        ASSERT_EQ(bars.size(), 5u) << "one of the four ends has no cap";
        const double frame = isReversed ? Map().Plot.top() : Map().Plot.bottom();
        EXPECT_NEAR(isReversed ? bars[0].y1() : bars[0].y2(), frame, 1);
    }
}

// Of each pixel column of a very large data set its coverage is the same as that of its bars one by one.
TEST_F(ErrorBars, VeryManyAreFewerShapesInAFile) {
    for (int i = 0; i < 30000; ++i) Series.AddPoint(i, std::sin(i / 3000.0), 0.1);
    Series.SetPointsShown(false);
    Series.SetLinesShown(true);
    Series.SetLineColor(kBarColor);
    const auto bars = Bars();
    EXPECT_LT(bars.size(), 8000u);
    std::map<double, double> longest;
    for (const QLineF& bar : bars) {
        EXPECT_GE(bar.y1(), Map().Plot.top() - 1);
        longest[std::round(bar.x1())] = std::max(longest[std::round(bar.x1())], bar.y2() - bar.y1());
    }
    const double length = Map().Y.Position(0) - Map().Y.Position(0.2);
    for (const auto& [x, most] : longest)
        if (x > Map().X.Position(100) && x < Map().X.Position(29900)) {
            EXPECT_GE(most, length - 1) << x;
        }
}

} // namespace
} // namespace lumoplot
