#include "common/fit_parameters.h"
#include "fit/definition/cur_fit.h"
#include "graph/drawing/picture/drawing.h"
#include "graph/drawing/picture/graph_layout.h"
#include "graph/drawing/recording_device.h"
#include "graph/model/appearance.h"
#include "graph/model/axis.h"
#include "graph/model/child_graph.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

constexpr QRectF kPlotRectangle(0, 0, 600, 400);
constexpr TColor kRegressionColor = MakeColor(200, 10, 20);
constexpr TColor kBoundsColor = MakeColor(10, 20, 200);
const QColor kRegression(200, 10, 20);
const QColor kBounds(10, 20, 200);
constexpr double kNearly = 0.05; // units; the places of a curve are 1/3 unit apart here

class TRegressionDrawing : public testing::Test {
protected:
    TSeries& Add(std::initializer_list<QPointF> points) {
        TSeries& series = *m_graph.FindSeries(m_graph.AddSeries());
        for (const QPointF point : points) series.AddPoint(point.x(), point.y());
        series.SetLinesShown(false);
        series.SetRegressionColor(kRegressionColor);
        series.SetBoundsColor(kBoundsColor);
        return series;
    }
    void SetAxes(double minX, double maxX, double minY, double maxY) {
        m_graph.XAxis()->SetMin(minX);
        m_graph.XAxis()->SetMax(maxX);
        m_graph.YAxis()->SetMin(minY);
        m_graph.YAxis()->SetMax(maxY);
    }
    void Draw(TRecordingDevice& device, TDrawPurpose purpose = TDrawPurpose::Show) {
        m_graph.PrepareForDrawing();
        QPainter painter(&device);
        m_plot = TGraphLayout(TCanvas(painter, purpose), m_graph, kPlotRectangle).Plot();
        DrawGraph(painter, m_graph, kPlotRectangle, {TChildGraphs::LeaveOut, purpose});
    }
    /// The corners of the lines of a colour in fractions of the plot, (0, 0) at its lower left.
    std::vector<QPointF> Corners(const QColor& color = kRegression) {
        TRecordingDevice device;
        Draw(device);
        std::vector<QPointF> corners;
        const auto lines = device.LinesIn(color);
        m_lineCount = lines.size();
        for (const TRecordedLine& line : lines)
            for (const QPointF p : line.Points)
                corners.emplace_back((p.x() - m_plot.left()) / m_plot.width(),
                                     (m_plot.bottom() - p.y()) / m_plot.height());
        return corners;
    }
    /// The heights of the bounds in fractions of the plot, ascending.
    std::vector<double> Levels() {
        TRecordingDevice device;
        Draw(device);
        std::vector<double> levels;
        for (const TRecordedLine& line : device.LinesIn(kBounds)) {
            EXPECT_EQ(line.Points.front().x(), m_plot.left());
            EXPECT_EQ(line.Points.back().x(), m_plot.right());
            EXPECT_EQ(line.Points.front().y(), line.Points.back().y());
            levels.push_back((m_plot.bottom() - line.Points[0].y()) / m_plot.height());
        }
        std::ranges::sort(levels);
        return levels;
    }

    TxyGraph m_graph;
    QRectF m_plot;
    std::size_t m_lineCount = 0; ///< of the last Corners
};

void ExpectCorners(const std::vector<QPointF>& corners, const std::vector<QPointF>& expected,
                   double tolerance = 1e-6) {
    ASSERT_EQ(corners.size(), expected.size());
    for (std::size_t i = 0; i < corners.size(); ++i)
        EXPECT_LT((corners[i] - expected[i]).manhattanLength(), tolerance) << i;
}

TEST_F(TRegressionDrawing, ALineRunsFromTheFirstPointToTheLast) {
    TSeries& series = Add({{2, 30}, {4, 50}, {6, 70}}); // Y = 10 + 10·X
    SetAxes(0, 10, 0, 100);
    for (const auto type : {TRegressionType::Linear, TRegressionType::RobustLine}) {
        series.SetRegressionType(type);
        ExpectCorners(Corners(), {{0.2, 0.3}, {0.6, 0.7}});
    }
    series.SetZeroValue(20); // the line lies on its corrected points
    series.SetBaseLineSlope(2);
    ExpectCorners(Corners(), {{0.2, 0.06}, {0.6, 0.38}});
    series.SetActive(false);
    EXPECT_TRUE(Corners().empty());
}

TEST_F(TRegressionDrawing, CurvesStayOnTheirFormulas) {
    struct TCase {
        const char* name;
        bool logX, logY;
        int type;
        double c2;
    };
    const TCase cases[] = {
        {"parabola", false, false, 3, 0.5},
        {"line on log X", true, false, 1, 0},
        {"line on log Y", false, true, 1, 0},
        {"parabola on both", true, true, 3, 0.5},
    };
    for (const TCase& c : cases) {
        SCOPED_TRACE(c.name);
        m_graph.FreeAllSeries();
        const auto formula = [&](double x) { return 1 + 2 * x + c.c2 * x * x; };
        TSeries& series = Add({{1, formula(1)}, {4, formula(4)}, {50, formula(50)}, {100, formula(100)}});
        series.SetRegressionType(TRegressionType{c.type});
        m_graph.XAxis()->SetLogScale(c.logX);
        m_graph.YAxis()->SetLogScale(c.logY);
        SetAxes(1, 100, 1, 10000);
        const std::vector<QPointF> corners = Corners();
        ASSERT_GT(corners.size(), 300U);
        for (const QPointF corner : corners) {
            const double x = c.logX ? std::pow(100, corner.x()) : 1 + 99 * corner.x();
            const double y = formula(x);
            const double height = c.logY ? std::log10(y) / 4 : (y - 1) / 9999;
            ASSERT_NEAR(corner.y(), height, kNearly / m_plot.height()) << x;
        }
    }
}

TEST_F(TRegressionDrawing, SmoothedValuesAndSplinesGoFromPlaceToPlace) {
    TSeries& series = Add({{0, 80}, {5, 40}, {10, 0}});
    SetAxes(0, 10, 0, 100);
    series.SetZeroValue(-10);
    series.SetRegressionControlValue2(0.5);
    for (const auto type :
         {TRegressionType::ExponentialSmoothing, TRegressionType::RunningAverage}) { // 80, 60, then 30 or 20
        series.SetRegressionType(type);
        ExpectCorners(Corners(),
                      {{0, 0.9}, {0.5, 0.7}, {1, type == TRegressionType::ExponentialSmoothing ? 0.4 : 0.3}});
    }
    series.SetRegressionType(TRegressionType::Spline);
    series.SetRegressionControlValue1(4);
    series.SetRegressionControlValue2(1e30); // natural ends: the straight line through the points
    ExpectCorners(Corners(), {{0, 0.9}, {0.25, 0.7}, {0.5, 0.5}, {0.75, 0.3}, {1, 0.1}});
    series.SetDuplicatesAllowed(true);
    EXPECT_TRUE(Corners().empty());
}

// Against the corrected Y of another data set the regression lies where the points lie.
TEST_F(TRegressionDrawing, ARegressionFollowsTheXOfAnotherDataSet) {
    TSeries& xSeries = Add({{0, 13}, {1, 11}, {2, 17}});
    xSeries.SetZeroValue(10);
    TSeries& series = Add({{0, 20}, {1, 40}, {2, 60}, {3, 80}});
    m_graph.Appearance()->SetXAxisSerIndex(1);
    series.SetUseXAxisSeries(true);
    SetAxes(0, 10, 0, 100);
    series.SetRegressionType(TRegressionType::ExponentialSmoothing); // from point to point
    series.SetRegressionControlValue2(0.5);
    ExpectCorners(Corners(), {{0.3, 0.2}, {0.1, 0.3}, {0.7, 0.45}});
    series.SetPointY(1, 10);                           // (3, 10), (1, 40), (7, 60)
    series.SetRegressionType(TRegressionType::Linear); // slope 780 / 168 about the mean (11 / 3, 110 / 3)
    ExpectCorners(Corners(), {{0.1, 170.0 / 700}, {0.7, 365.0 / 700}});
    series.SetRegressionType(TRegressionType::Spline);
    EXPECT_NEAR(Corners().front().x(), 0.1, 1e-6);
}

TEST_F(TRegressionDrawing, BoundsLieAboutTheMeanOfWhatIsShown) {
    TSeries& series = Add({{0, 40}, {1, 50}, {2, 60}}); // mean 50, standard deviation 10
    SetAxes(0, 2, 0, 100);
    const auto expectLevels = [this](TBoundsType type, const std::vector<double>& expected) {
        m_graph.FirstSeries()->SetBoundsType(type);
        const std::vector<double> levels = Levels();
        ASSERT_EQ(levels.size(), expected.size());
        for (std::size_t i = 0; i < levels.size(); ++i) EXPECT_NEAR(levels[i], expected[i], 1e-6);
    };
    expectLevels(TBoundsType::None, {});
    expectLevels(TBoundsType::AllSD, {0.2, 0.3, 0.4, 0.6, 0.7, 0.8});
    series.SetZeroValue(25);
    expectLevels(TBoundsType::ThreeSD, {0.55}); // the lower one lies below the plot
    series.SetLowerBound(5);
    series.SetUpperBound(95);
    expectLevels(TBoundsType::SetValues, {0.05, 0.95});
    series.SetActive(false);
    expectLevels(TBoundsType::SetValues, {});
}

// From the first to the last X of the data, and without a baseline: the model stands for corrected Y.
TEST_F(TRegressionDrawing, ACurveOfAFitGoesThroughTheValuesOfItsModelAndIsBrokenWhereThereAreNone) {
    TSeries& series = Add({{1, 100}, {5, 100}, {9, 100}});
    SetAxes(0, 10, 0, 10);
    series.SetZeroValue(50);
    TCurFit& fit = series.CurveFit();
    fit.SetStatus(TFitStatus::Function);
    fit.SetCurveColor(kBoundsColor);
    fit.SetExpression("10-x");
    fit.SetNPoints(2);
    ExpectCorners(Corners(kBounds), {{0.1, 0.9}, {0.9, 0.1}});
    fit.SetExpression("5+0*ln((x-4)*(x-6))");
    fit.SetNPoints(81);
    const std::vector<QPointF> corners = Corners(kBounds);
    EXPECT_EQ(m_lineCount, 2u);
    for (const QPointF corner : corners) EXPECT_GT(std::abs(corner.x() - 0.5), 0.1);
}

// The line through four points, by hand: s = √0.9, t = 4.30265 for two degrees of freedom; the mean of X
// is 1.5.
TEST_F(TRegressionDrawing, BandsOfAFitAreThoseOfItsFormulas) {
    TSeries& series = Add({{0, 0}, {1, 2}, {2, 1}, {3, 3}});
    SetAxes(0, 10, -10, 10);
    TCurFit& fit = series.CurveFit();
    fit.SetExpression("a+b*x");
    for (const char* name : {"a", "b"}) AddParameter(fit, name, 1).SetVary(true);
    fit.SetStatus(TFitStatus::FinalResult);
    fit.SetCurveColor(kBoundsColor);
    struct TCase {
        TFitBands shown;
        std::vector<std::pair<double, double>> lowAndHigh; ///< at X = 0 and at X = 3
    };
    const std::pair<double, double> prediction(-5.02212, 8.02212);
    const std::pair<double, double> confidence(-3.11514, 6.11514);
    for (const TCase& bands : {TCase{TFitBands::None, {}},
                               {TFitBands::Confidence, {confidence}},
                               {TFitBands::Prediction, {prediction}},
                               {TFitBands::Both, {prediction, confidence}}}) {
        m_graph.Appearance()->SetFitBands(bands.shown);
        TRecordingDevice device;
        Draw(device);
        std::vector<QRectF> shapes;
        for (const TRecordedShape& shape : device.Record().Shapes)
            if (shape.Brush.color().alpha() < 255 && shape.Brush.color().blue() == kBounds.blue())
                shapes.push_back(shape.Bounds);
        ASSERT_EQ(shapes.size(), bands.lowAndHigh.size());
        for (std::size_t i = 0; i < shapes.size(); ++i) {
            const auto valueAt = [&](double y) { return -10 + 20 * (m_plot.bottom() - y) / m_plot.height(); };
            EXPECT_NEAR(valueAt(shapes[i].bottom()), bands.lowAndHigh[i].first, 1e-3);
            EXPECT_NEAR(valueAt(shapes[i].top()), bands.lowAndHigh[i].second, 1e-3);
        }
    }
}

// The least squares line through these points is 0.3 + 0.8 x.
TEST_F(TRegressionDrawing, ResidualsStandAboveThePlot) {
    TSeries& series = Add({{0, 0}, {1, 2}, {2, 1}, {3, 3}});
    series.SetPointsShown(true);
    series.SetPointColor(kRegressionColor);
    SetAxes(0, 4, -5, 5);
    TCurFit& fit = series.CurveFit();
    fit.SetExpression("0.3+0.8*x");
    fit.SetStatus(TFitStatus::Function);
    m_graph.Appearance()->SetGraphTitle("Title");
    for (const bool isShown : {false, true}) {
        m_graph.Appearance()->SetShowResiduals(isShown);
        TRecordingDevice device;
        Draw(device);
        EXPECT_EQ(device.FindText(QStringLiteral("Residuals")) != nullptr, isShown);
        if (!isShown) continue;
        QPainter painter(&device);
        const QRectF panel =
            TGraphLayout(TCanvas(painter, TDrawPurpose::Show), m_graph, kPlotRectangle).ResidualPlace();
        EXPECT_LT(panel.bottom(), m_plot.top());
        EXPECT_GT(panel.top(), device.FindText(QStringLiteral("Title"))->Place.y());
        std::vector<QPointF> centres;
        for (const TRecordedShape& shape : device.Record().Shapes)
            if (shape.Bounds.width() < 10 && panel.contains(shape.Bounds.center()))
                centres.push_back(shape.Bounds.center());
        const double residuals[] = {-0.3, 0.9, -0.9, 0.3}; // of a scale from −1 to 1
        ASSERT_EQ(centres.size(), std::size(residuals));
        for (std::size_t i = 0; i < centres.size(); ++i) {
            EXPECT_NEAR((centres[i].x() - panel.left()) / panel.width(), static_cast<double>(i) / 4, 0.01);
            EXPECT_NEAR(1 - 2 * (centres[i].y() - panel.top()) / panel.height(), residuals[i], 0.02);
        }
    }
    m_graph.XAxis()->SetOffsetType(TAxis::ao_Maximum);
    TRecordingDevice device;
    Draw(device);
    EXPECT_EQ(device.FindText(QStringLiteral("Residuals")), nullptr) << "the X axis stands there";
}

} // namespace
} // namespace lumoplot
