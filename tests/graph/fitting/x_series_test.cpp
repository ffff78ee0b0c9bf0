// What is worked out from points whose X are the values of another data set lies on the points as they are
// plotted.
#include "common/fit_parameters.h"
#include "common/random_graph.h"
#include "common/special_values.h"
#include "data/analysis/least_squares.h"
#include "data/analysis/statistics.h"
#include "fit/definition/cur_fit.h"
#include "fit/definition/fit_result.h"
#include "graph/drawing/picture/fit_picture.h"
#include "graph/model/graph.h"

#include <QPainter>
#include <cmath>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

constexpr int kCount = 40;
constexpr double kClose = 1e-9;

/// Plotted X, not ascending.
double PlottedX(int i) {
    return 1 + (i * 17 % kCount) * 0.25;
}

class XSeries : public testing::Test {
protected:
    XSeries() {
        X.SetBaseline(3, 0.5);
        Y.SetBaseline(-7, 2);
        for (int i = 0; i < kCount; ++i) X.AddPoint(i, PlottedX(i) + 3 + 0.5 * i);
        Graph.Appearance()->SetXAxisSerIndex(1);
    }
    void Fill(double (*y)(double)) {
        Y.Clear();
        for (int i = 0; i < kCount; ++i) Y.AddPoint(100 - 2 * i, 0); // its own X are others
        int i = kCount;
        for (TPointCursor point = Y.First(); point; point = point.Next())
            Y.SetPointY(point.Id(), y(PlottedX(kCount - i--)) - 7 + 2 * point.X());
    }
    void FitLine() {
        TCurFit& fit = Y.CurveFit();
        AddVaried(fit, {"A", "B"});
        fit.SetExpression("A*x+B");
        fit.SetStatus(TFitStatus::FinalResult);
    }

    TxyGraph Graph;
    TSeries& X = *Graph.FindSeries(Graph.AddSeries());
    TSeries& Y = *Graph.FindSeries(Graph.AddSeries());
};

double Line(double x) {
    return 3 * x + 5;
}
double Parabola(double x) {
    return x * x - 4 * x + 1;
}

TEST_F(XSeries, RegressionsLieOnThePlottedPoints) {
    const std::pair<TRegressionType, double (*)(double)> cases[] = {{TRegressionType::Linear, Line},
                                                                    {TRegressionType::RobustLine, Line},
                                                                    {TRegressionType::Quadratic, Parabola}};
    for (const auto& [type, y] : cases) {
        SCOPED_TRACE(static_cast<int>(type));
        Fill(y);
        Y.SetRegressionType(type);
        Graph.PrepareForDrawing();
        ASSERT_NE(Y.RegressionLine(), nullptr);
        int i = 0;
        for (TPointCursor point = Y.First(); point; point = point.Next()) {
            const double x = PlottedX(i++);
            EXPECT_NEAR((*Y.RegressionLine())(x), y(x), kClose);
            EXPECT_NEAR(point.Derived(), y(x), kClose);
        }
    }
    Y.SetRegressionType(TRegressionType::Spline);
    Graph.PrepareForDrawing();
    ASSERT_FALSE(Y.RegressionCurve().empty());
    EXPECT_EQ(Y.RegressionCurve().front().X, 1);
    EXPECT_EQ(Y.RegressionCurve().back().X, 1 + (kCount - 1) * 0.25);
    EXPECT_NEAR(Y.RegressionCurve().front().Derived, Parabola(1), kClose);
}

TEST_F(XSeries, FitsTheirCurvesAndStatisticsAreOfThePlottedX) {
    Fill(Line);
    FitLine();
    Y.SetRegressionType(TRegressionType::SampledCurve);
    for (int i = 0; i < 2; ++i) Graph.PrepareForDrawing(); // the sampled curve follows the fit
    ASSERT_TRUE(Y.CurveFit().Result());
    EXPECT_NEAR(Y.CurveFit().Parameter(1)->Value(), 3, 1e-6);
    EXPECT_NEAR(Y.CurveFit().Parameter(2)->Value(), 5, 1e-6);
    for (const auto* curve : {&Y.FittedCurve(), &Y.RegressionCurve()}) {
        ASSERT_FALSE(curve->empty());
        EXPECT_EQ(curve->front().X, 1);
        EXPECT_EQ(curve->back().X, 1 + (kCount - 1) * 0.25);
        EXPECT_NEAR(curve->back().Derived, Line(curve->back().X), 1e-5);
    }
    EXPECT_EQ(Y.XStatistics().Mean, 1 + (kCount - 1) * 0.125);
    EXPECT_EQ(X.XStatistics().Mean, (kCount - 1) * 0.5) << "the X data set has its own X";
}

/// What is near white is the page.
int InkOf(const QImage& picture) {
    int ink = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (qGray(picture.pixel(x, y)) < 250) ++ink;
    return ink;
}

QImage PictureOf(const TFitPicture& fit) {
    QImage picture(300, 200, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    fit.Paint(painter, QRectF(picture.rect()), {});
    return picture;
}

TEST_F(XSeries, ThePictureOfAFitFollowsTheXDataSet) {
    Fill(Line);
    FitLine();
    Graph.PrepareForDrawing();
    const TXRange range = CurveRange(Y);
    EXPECT_EQ(range.From, 1);
    EXPECT_EQ(range.To, 1 + (kCount - 1) * 0.25);
    TFitPicture kept;
    kept.Take(Y, nullptr);
    X.SetPointY(X.First().Id(), 500);
    kept.Take(Y, nullptr);
    TFitPicture anew;
    anew.Take(Y, nullptr);
    EXPECT_GT(InkOf(PictureOf(anew)), 0);
    EXPECT_EQ(PictureOf(kept), PictureOf(anew));
}

TEST_F(XSeries, ADataSetWithXOfItsOwnKeepsThemInAFile) {
    Fill(Line);
    const int third = Graph.AddSeries();
    Graph.FindSeries(third)->SetUseXAxisSeries(false);
    TxyGraph loaded;
    LoadBytes(loaded, FileOf(Graph));
    EXPECT_TRUE(loaded.FindSeries(2)->XSource());
    EXPECT_FALSE(loaded.FindSeries(third)->XSource());
    TxyGraph again;
    LoadBytes(again, FileOf(loaded));
    EXPECT_EQ(FileOf(again), FileOf(loaded));
    Graph.Appearance()->SetXAxisSerIndex(0);
    LoadBytes(loaded, FileOf(Graph));
    EXPECT_FALSE(loaded.FindSeries(2)->UseXAxisSeries());
}

TEST_F(XSeries, ResultsAreStaleWhenAnythingChangesThePlottedXAndOnlyThen) {
    Fill(Line);
    FitLine();
    Y.SetRegressionType(TRegressionType::Linear);
    TAppearance& appearance = *Graph.Appearance();
    const std::pair<bool, std::function<void()>> cases[] = {
        {true, [&] { X.SetPointY(1, 12); }},
        {true, [&] { X.DeletePoint(2); }},
        {true, [&] { X.SetZeroValue(1); }},
        {true, [&] { Y.SetZeroValue(1); }},
        {true, [&] { Y.SetUseXAxisSeries(false); }},
        {true, [&] { Y.SetUseXAxisSeries(true); }},
        {true, [&] { appearance.SetXAxisSerIndex(0); }},
        {true, [&] { appearance.SetXAxisSerIndex(1); }},
        {false, [&] { X.SetLineColor(7); }},
        {false, [&] { X.SetRegressionType(TRegressionType::Linear); }},
        {false, [&] { Graph.ReverseSeries(); }},
        {true, [&] { X.SetDuplicatesAllowed(true); }},
    };
    for (const auto& [isStale, change] : cases) {
        SCOPED_TRACE(&isStale - &cases[0].first);
        Graph.PrepareForDrawing();
        ASSERT_FALSE(Y.RegressionStale() || Y.CurveFit().IsStale());
        change();
        EXPECT_EQ(Y.RegressionStale(), isStale);
        EXPECT_EQ(Y.CurveFit().IsStale(), isStale);
    }
}

TEST_F(XSeries, PlacesWithoutAnXAreLeftOut) {
    Fill(Line);
    X.SetPointY(4, kNaN);
    X.SetPointY(5, std::numeric_limits<double>::infinity());
    for (int i = 0; i < 3; ++i) X.DeletePoint(kCount - i);
    FitLine();
    Y.SetRegressionType(TRegressionType::Linear);
    Graph.PrepareForDrawing();
    EXPECT_NEAR((*Y.RegressionLine())(10), 35, kClose);
    EXPECT_EQ(Y.CurveFit().Result()->PointsUsed, kCount - 5);
    EXPECT_EQ(Y.XStatistics().Count, kCount - 5);
}

} // namespace
} // namespace lumoplot
