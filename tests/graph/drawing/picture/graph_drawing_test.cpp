#include "graph/drawing/lines/column_reducer.h"
#include "graph/drawing/lines/series_positions.h"
#include "graph/drawing/picture/drawing.h"
#include "graph/drawing/picture/graph_layout.h"
#include "graph/drawing/recording_device.h"
#include "graph/model/appearance.h"
#include "graph/model/axis.h"
#include "graph/model/child_graph.h"
#include "graph/model/settings.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>

namespace lumoplot {
namespace {

constexpr QRectF kPanel(0, 0, 600, 400);
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

class TGraphDrawing : public testing::Test {
protected:
    TSeries& Add(std::initializer_list<QPointF> points, TColor color = MakeColor(1, 2, 3)) {
        TSeries& series = *m_graph.FindSeries(m_graph.AddSeries());
        for (const QPointF point : points) series.AddPoint(point.x(), point.y());
        series.SetLineColor(color);
        series.SetPointColor(color);
        return series;
    }
    void Draw(const TDrawOptions& options = {}, const QRectF& rectangle = kPanel) {
        PrepareWithChildGraphs(m_graph);
        QPainter painter(&m_device);
        DrawGraph(painter, m_graph, rectangle, options);
    }
    TGraphLayout Layout() {
        m_graph.PrepareForDrawing();
        QPainter painter(&m_layoutDevice);
        return TGraphLayout(TCanvas(painter, TDrawPurpose::Show), m_graph, kPanel);
    }
    bool Says(const char* text) const { return m_device.FindText(QString::fromUtf8(text)) != nullptr; }

    TxyGraph m_graph;
    TRecordingDevice m_device;
    TRecordingDevice m_layoutDevice;
};

const QColor kDataColor(1, 2, 3);

TEST_F(TGraphDrawing, AnEmptyGraphWaitsForDataUnlessItHoldsAnother) {
    Draw();
    EXPECT_TRUE(Says("Waiting for the data..."));
    EXPECT_TRUE(m_device.Record().Lines.empty());
    TxyChildGr& child = *m_graph.AddChildGraph();
    TSeries& series = *child.FindSeries(child.AddSeries());
    for (const int x : {1, 2}) series.AddPoint(x, x);
    TRecordingDevice device;
    PrepareWithChildGraphs(m_graph);
    QPainter painter(&device);
    DrawGraph(painter, m_graph, kPanel, {});
    EXPECT_FALSE(device.FindText(QStringLiteral("Waiting for the data...")));
}

TEST_F(TGraphDrawing, AnInconsistentRangeShowsItsCaption) {
    Add({{0, 0}, {1, 1}});
    m_graph.YAxis()->SetStepSize(1); // an automatic step would bring the automatic range with it
    m_graph.YAxis()->SetMin(5);
    m_graph.YAxis()->SetMax(1);
    Draw();
    EXPECT_TRUE(Says("MAX/MIN VALUES INCONSISTENT"));
    EXPECT_TRUE(m_device.LinesIn(kDataColor).empty());
}

TEST_F(TGraphDrawing, TheLineRunsThroughCorrectedPointsWithGaps) {
    TSeries& series = Add({{0, 10}, {1, 20}, {2, kNan}, {3, 30}, {4, HUGE_VAL}, {5, 60}, {10, 110}});
    series.SetZeroValue(10);
    series.SetBaseLineSlope(2);
    m_graph.YAxis()->SetMin(0);
    m_graph.YAxis()->SetMax(100);
    m_graph.XAxis()->SetMin(0);
    m_graph.XAxis()->SetMax(10);
    const QRectF plot = Layout().Plot();
    Draw();
    const auto lines = m_device.LinesIn(kDataColor);
    ASSERT_EQ(lines.size(), 3u); // two lines and the dot between two gaps
    const auto at = [&plot](double x, double y) {
        return QPointF(plot.left() + plot.width() * x / 10, plot.bottom() - plot.height() * y / 100);
    };
    EXPECT_LT((lines[0].Points[1] - at(1, 8)).manhattanLength(), 0.01);
    EXPECT_LT((lines[1].Points[0] - at(3, 14)).manhattanLength(), 0.01);
    EXPECT_LT((lines[2].Points[1] - at(10, 80)).manhattanLength(), 0.01);
}

TEST_F(TGraphDrawing, PointsStandWhereTheAxesSay) {
    TSeries& series = Add({{1, 1}, {10, 10}, {100, 1000}});
    series.SetLinesShown(false);
    series.SetPointsShown(true);
    series.SetPointShape(TPointShape::Square);
    series.SetPointSize(10);
    series.SetYAxisOfSeries(m_graph.YAxis_Second());
    m_graph.XAxis()->SetLogScale(true);
    m_graph.XAxis()->SetReversed(true);
    m_graph.YAxis_Second()->SetMin(0);
    m_graph.YAxis_Second()->SetMax(2000);
    const QRectF plot = Layout().Plot();
    Draw();
    const auto shapes = m_device.ShapesIn(kDataColor);
    ASSERT_EQ(shapes.size(), 3u);
    const QRectF middle = shapes[1].Bounds;
    EXPECT_NEAR(middle.width(), 10, 0.01);
    EXPECT_NEAR(middle.center().x(), plot.center().x(), 0.01);
    EXPECT_NEAR(middle.center().y(), plot.bottom() - plot.height() * 10 / 2000, 0.01);
    EXPECT_GT(shapes[0].Bounds.center().x(), middle.center().x());
}

TEST_F(TGraphDrawing, ADataSetServesAsX) {
    Add({{0, 5}, {1, 1}, {2, 3}}, kRed);
    Add({{0, 10}, {7, 20}, {9, 30}, {10, 40}});
    m_graph.Appearance()->SetXAxisSerIndex(1);
    Draw();
    const auto lines = m_device.LinesIn(kDataColor);
    ASSERT_EQ(lines.size(), 1u);
    ASSERT_EQ(lines[0].Points.size(), 3u); // the X data set has no fourth value
    EXPECT_GT(lines[0].Points[0].x(), lines[0].Points[2].x());
    EXPECT_GT(lines[0].Points[2].x(), lines[0].Points[1].x());
    EXPECT_TRUE(m_device.LinesIn(Qt::red).empty());
}

TEST_F(TGraphDrawing, OnlyPlotOffGraphLeavesThePlot) {
    Add({{0, 0}, {5, 5}, {6, 50}});
    m_graph.YAxis()->SetMin(0);
    m_graph.YAxis()->SetMax(10);
    const QRectF plot = Layout().Plot();
    const auto highest = [this] {
        double y = HUGE_VAL;
        for (const TRecordedLine& line : m_device.LinesIn(kDataColor))
            for (const QPointF point : line.Points) y = std::min(y, point.y());
        return y;
    };
    Draw();
    EXPECT_GE(highest(), plot.top() - 0.2);
    m_graph.Appearance()->SetPlotOffGraph(true);
    Draw();
    EXPECT_NEAR(highest(), 0, 0.2);
}

TEST_F(TGraphDrawing, PaperTakesNoBackgroundAndPlainLinesWhenAsked) {
    TSeries& series = Add({{0, 0}, {1, 1}});
    series.SetLineStyle(TPenStyle::Dash);
    m_graph.Appearance()->SetMarginColor(kAqua);
    m_graph.Appearance()->SetPrintLineStyle(false);
    Draw({TChildGraphs::Include, TDrawPurpose::Print});
    EXPECT_TRUE(m_device.ShapesIn(Qt::cyan).empty());
    EXPECT_EQ(m_device.LinesIn(kDataColor).back().Pen.style(), Qt::SolidLine);
    m_graph.Appearance()->SetPrintBkgndColor(true);
    m_graph.Appearance()->SetPrintLineStyle(true);
    Draw({TChildGraphs::Include, TDrawPurpose::Print});
    EXPECT_FALSE(m_device.ShapesIn(Qt::cyan).empty());
    EXPECT_EQ(m_device.LinesIn(kDataColor).back().Pen.style(), Qt::DashLine);
}

TEST_F(TGraphDrawing, ChildGraphsLieInsideTheirParent) {
    Add({{0, 0}, {1, 1}});
    TxyChildGr& child = *m_graph.AddChildGraph();
    child.Dimensions()->SetHorPosition(0.5);
    child.Dimensions()->SetHorSize(0.5);
    child.Dimensions()->SetVerSize(0.5);
    child.Appearance()->SetGraphTitle("Inset");
    TSeries& series = *child.FindSeries(child.AddSeries());
    series.AddPoint(0, 0);
    series.AddPoint(1, 1);
    Draw({TChildGraphs::LeaveOut, TDrawPurpose::Show});
    EXPECT_FALSE(Says("Inset"));
    Draw();
    const TRecordedText* title = m_device.FindText(QStringLiteral("Inset"));
    ASSERT_TRUE(title);
    EXPECT_TRUE(QRectF(300, 0, 300, 200).contains(title->Place));
}

// Along such a width there would be place for the minutes of all dates, more than any memory holds.
TEST_F(TGraphDrawing, AChildGraphOfAnySizeHasTicksThatCanBeCounted) {
    Add({{0, 0}, {1, 1}});
    TxyChildGr& child = *m_graph.AddChildGraph();
    child.FindSeries(child.AddSeries())->AddPoint(1, 1);
    child.XAxis()->SetShowAsTime(true);
    child.XAxis()->SetMin(-600000);
    child.XAxis()->SetMax(2900000);
    child.Dimensions()->SetHorPosition(1e300);
    child.Dimensions()->SetHorSize(1e8);
    Draw();
    EXPECT_LT(m_device.Record().Lines.size(), 100000u);
}

TEST_F(TGraphDrawing, MarksAreDrawnOnTheirAxes) {
    Add({{0, 0}, {10, 10}});
    m_graph.AddMark({0, 5, 0, 0, 0, kRed, "upright", TMarkType::VerticalLine});
    m_graph.AddMark({0, 0, 5, 0, 0, kRed, "level", TMarkType::HorizontalLine});
    m_graph.AddMark({0, 3, 3, 0, 0, kRed, "spot", TMarkType::Point});
    m_graph.AddMark({0, 2, 2, 4, 4, kRed, "slope", TMarkType::Line});
    m_graph.AddMark({0, 5, 0, 0, 0, kRed, "hidden", TMarkType::VerticalLine, TMarkDrawing::None});
    m_graph.AddMark({0, 500, 0, 0, 0, kRed, "outside", TMarkType::VerticalLine});
    Draw();
    EXPECT_TRUE(m_device.LinesIn(Qt::red).empty());
    m_graph.Appearance()->SetShowMarks(true);
    const TGraphLayout layout = Layout();
    Draw();
    const auto lines = m_device.LinesIn(Qt::red);
    ASSERT_EQ(lines.size(), 5u); // the point has two
    EXPECT_NEAR(lines[0].Points[0].x(), layout.Axes().X.Map().Position(5), 0.01);
    EXPECT_NEAR(lines[1].Points[0].y(), layout.Axes().Y.Map().Position(5), 0.01);
    for (const char* caption : {"upright", "level", "spot", "slope"}) {
        const TRecordedText* text = m_device.FindText(QString::fromLatin1(caption));
        ASSERT_TRUE(text) << caption;
        EXPECT_TRUE(layout.Plot().contains(text->Place)) << caption;
    }
    EXPECT_FALSE(Says("hidden"));
    EXPECT_FALSE(Says("outside"));
}

// The same line through the summary of a large data set and through its points one by one.
TEST_F(TGraphDrawing, SummariesChangeNothing) {
    TSeries& series = Add({});
    TPointChain points;
    for (int i = 0; i < 30000; ++i) points.Add(i, i % 977 == 5 ? kNan : std::sin(i * 0.7) + i * 1e-4, {});
    series.SwapPoints(std::move(points));
    series.SetBaseLineSlope(1e-4);
    for (const bool log : {false, true})
        for (const double first : {-100.0, 500.0, 20000.0}) {
            const TScaleMap xMap(first, first + 9000, 0, 300);
            const TScaleMap yMap(log ? 0.01 : -1, 1, 200, 0, log ? TScaleKind::Log : TScaleKind::Linear);
            const TSeriesPositions positions(series, xMap, yMap);
            TColumnReducer reducer(0, 300);
            positions.ForEachRun([&](auto x, auto y) { reducer.Add(x, y); });
            const TPolylines expected = reducer.Finish();
            const TPolylines lines = positions.Reduced(0, 300);
            ASSERT_EQ(lines.Count(), expected.Count());
            for (std::size_t i = 0; i < lines.Count(); ++i)
                EXPECT_TRUE(std::ranges::equal(lines.Line(i), expected.Line(i)));
        }
    const auto before = SummaryOf(series);
    EXPECT_EQ(SummaryOf(series), before);
    series.SetPointsShown(true);
    EXPECT_EQ(SummaryOf(series), before);
    series.SetPointY(17, 5);
    EXPECT_NE(SummaryOf(series), before);
}

// What a line covers is kept from picture to picture, and only as long as it is so.
TEST_F(TGraphDrawing, AKeptCloudIsThatOfItsPointsAxesAndPen) {
    const auto fill = [](TSeries& series, int factor) {
        TPointChain points;
        for (int i = 0; i < 20000; ++i) points.Add(i, i * factor % 10007, {});
        series.SwapPoints(std::move(points));
    };
    TSeries& x = Add({});
    TSeries& y = Add({});
    fill(x, 7919);
    fill(y, 104729);
    m_graph.Appearance()->SetXAxisSerIndex(1);
    const auto picture = [&] {
        m_graph.PrepareForDrawing();
        QImage image(kPanel.size().toSize(), QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        DrawGraph(painter, m_graph, kPanel);
        return image;
    };
    const QImage first = picture();
    EXPECT_EQ(picture(), first);
    const std::function<void()> changes[] = {
        [&] { y.SetPointY(5, 60000); }, [&] { x.SetPointY(5, 30000); }, [&] { y.SetLineWidth(4); },
        [&] { m_graph.XAxis()->SetMax(5000); }, [&] { y.SetLineStyle(TPenStyle::Dot); }};
    QImage before = first;
    for (const auto& change : changes) {
        change();
        const QImage after = picture();
        EXPECT_NE(after, before);
        before = after;
    }
}

TEST_F(TGraphDrawing, TheLegendNamesTheDataSetsThatAskForIt) {
    for (const char* name : {"first", "second", "third"}) {
        TSeries& series = Add({{0, 0}, {1, 1}});
        series.SetSeriesName(name);
        series.SetShowInLegend(std::string(name) != "second");
    }
    Draw();
    EXPECT_FALSE(Says("first"));
    m_graph.Legend()->Setvisible(true);
    Draw();
    EXPECT_TRUE(Says("first") && Says("third"));
    EXPECT_FALSE(Says("second"));
}

TEST_F(TGraphDrawing, AutomaticTitlesNameTheOnlyDataSet) {
    TSeries& series = Add({{0, 0}, {1, 1}});
    EXPECT_EQ(TitleOf(*m_graph.YAxis()), QStringLiteral("Y axis"));
    series.SetSeriesName("Voltage [V]");
    EXPECT_EQ(TitleOf(*m_graph.YAxis()), QStringLiteral("Voltage [V]"));
    Add({{0, 0}});
    EXPECT_EQ(TitleOf(*m_graph.YAxis()), QStringLiteral("Y axis"));
    m_graph.YAxis()->SetTitle("Mine");
    EXPECT_EQ(TitleOf(*m_graph.YAxis()), QStringLiteral("Mine"));
}

TEST_F(TGraphDrawing, AFrameWithTicksInsideHasThemOnSidesWithoutAnAxis) {
    Add({{0, 0}, {10, 100}});
    const auto linesFromRight = [&] {
        const QRectF plot = Layout().Plot();
        TRecordingDevice device;
        QPainter painter(&device);
        DrawGraph(painter, m_graph, kPanel);
        return std::ranges::count_if(device.Record().Lines, [&](const TRecordedLine& line) {
            return line.Points.size() == 2 && line.Points[0].y() == line.Points[1].y() &&
                   std::abs(line.Points[0].x() - plot.right()) < 1 && line.Points[1].x() < plot.right() &&
                   line.Points[1].x() > plot.right() - 10;
        });
    };
    m_graph.Appearance()->SetShowFrame(true);
    EXPECT_EQ(linesFromRight(), 0);
    m_graph.Appearance()->SetTicksInside(true);
    EXPECT_GT(linesFromRight(), 5);
    m_graph.YAxis_Second()->SetShowAxis(true);
    m_graph.YAxis_Second()->SetMax(3); // other ticks
    const auto ofBoth = linesFromRight();
    m_graph.YAxis()->SetShowAxis(false);
    EXPECT_EQ(linesFromRight(), ofBoth) << "those of the second axis alone";
}

TEST_F(TGraphDrawing, AxesCrossWhereTheirOffsetSays) {
    Add({{0, 0}, {10, 10}});
    TAxis& y = *m_graph.YAxis();
    struct TCase {
        TAxis::TAxisOffsetType type;
        double offset, fraction;
    };
    const TCase cases[] = {{TAxis::ao_Minimum, 3, 0},        {TAxis::ao_Maximum, 3, 1},
                           {TAxis::ao_percentage, 25, 0.25}, {TAxis::ao_absolute, 3, 0.3},
                           {TAxis::ao_absolute, 99, 1},      {TAxis::ao_absolute, kNan, 0}};
    m_graph.XAxis()->SetMin(0);
    m_graph.XAxis()->SetMax(10);
    for (const TCase& c : cases) {
        y.SetOffsetType(c.type);
        y.SetOffset(c.offset);
        const TGraphLayout layout = Layout();
        const QRectF plot = layout.Plot();
        EXPECT_NEAR(layout.Axes().Y.Line(), plot.left() + c.fraction * plot.width(), 0.01) << c.fraction;
    }
}

TEST_F(TGraphDrawing, DegenerateInputIsDrawn) {
    using TData = std::vector<QPointF>;
    const double huge = 1e308;
    const TData data[] = {{{1, 1}},
                          {{0, 0}},
                          {{1, 5}, {2, 5}, {3, 5}},
                          {{1, kNan}, {2, kNan}},
                          {{-1e300, -1e300}, {1e300, 1e300}},
                          {{-huge, -huge}, {huge, huge}},
                          {{0, 0}, {1e-300, 1e-300}, {2e-300, 1e-310}},
                          {{5e-324, 5e-324}, {1e-323, 1e-323}},
                          {{-5, -5}, {-1, 0}, {3, 7}}};
    for (const TData& points : data)
        for (const bool log : {false, true})
            for (const QSizeF size :
                 {QSizeF(0, 0), QSizeF(1, 1), QSizeF(30, 5), QSizeF(300, 200), QSizeF(20000, 20000)}) {
                TxyGraph graph;
                TSeries& series = *graph.FindSeries(graph.AddSeries());
                series.SetPointsShown(true);
                for (const QPointF point : points) series.AddPoint(point.x(), point.y());
                graph.XAxis()->SetLogScale(log);
                graph.YAxis()->SetLogScale(log);
                graph.XAxis()->SetShowAsTime(!log);
                graph.PrepareForDrawing();
                QImage image(300, 200, QImage::Format_ARGB32_Premultiplied);
                image.fill(Qt::transparent);
                QPainter painter(&image);
                DrawGraph(painter, graph, QRectF(QPointF(), size));
                EXPECT_EQ(qAlpha(image.pixel(2, 2)) == 255, size.width() > 3) << size.width();
            }
}

} // namespace
} // namespace lumoplot
