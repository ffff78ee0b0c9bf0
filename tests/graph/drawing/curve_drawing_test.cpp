#include "fit/definition/cur_fit.h"
#include "graph/drawing/picture/drawing.h"
#include "graph/drawing/picture/graph_layout.h"
#include "graph/drawing/recording_device.h"
#include "graph/model/appearance.h"
#include "graph/model/axis.h"

#include <cmath>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

constexpr QRectF kRectangle(0, 0, 600, 400);
const QColor kCurve(20, 150, 30);
constexpr double kClose = 1e-6; // of the plot

class TCurveDrawing : public testing::Test {
protected:
    TCurveDrawing() : m_series(*m_graph.FindSeries(m_graph.AddSeries())) {
        for (const double x : {1.0, 5.0, 9.0}) m_series.AddPoint(x, 100);
        m_series.SetLinesShown(false);
        for (TAxis* axis : {m_graph.XAxis(), m_graph.YAxis()}) {
            axis->SetMin(0);
            axis->SetMax(10);
        }
        TCurFit& fit = m_series.CurveFit();
        fit.SetStatus(TCurFit::kFunction);
        fit.SetCurveColor(MakeColor(20, 150, 30));
        fit.SetExpression("10-x");
        fit.SetNPoints(2);
    }

    std::vector<TRecordedLine> Drawn() {
        TRecordingDevice device;
        m_graph.PrepareForDrawing();
        QPainter painter(&device);
        m_plot = TGraphLayout(TCanvas(painter, TDrawPurpose::Show), m_graph, kRectangle).Plot();
        DrawGraph(painter, m_graph, kRectangle, {});
        return device.LinesIn(kCurve);
    }
    double XOf(QPointF p) const { return (p.x() - m_plot.left()) / m_plot.width(); }
    double YOf(QPointF p) const { return (m_plot.bottom() - p.y()) / m_plot.height(); }

    TxyGraph m_graph;
    TSeries& m_series;
    QRectF m_plot;
};

// From the first to the last X of the data, and without a baseline: the model stands for corrected Y.
TEST_F(TCurveDrawing, GoesThroughTheValuesOfTheModel) {
    m_series.SetZeroValue(50);
    m_series.CurveFit().SetCurveWidth(3);
    const auto lines = Drawn();
    ASSERT_EQ(lines.size(), 1u);
    ASSERT_EQ(lines[0].Points.size(), 2);
    EXPECT_NEAR(XOf(lines[0].Points[0]), 0.1, kClose);
    EXPECT_NEAR(YOf(lines[0].Points[0]), 0.9, kClose);
    EXPECT_NEAR(XOf(lines[0].Points[1]), 0.9, kClose);
    EXPECT_NEAR(YOf(lines[0].Points[1]), 0.1, kClose);
}

TEST_F(TCurveDrawing, IsBrokenWhereTheModelHasNoValue) {
    m_series.CurveFit().SetExpression("5+0*ln((x-4)*(x-6))");
    m_series.CurveFit().SetNPoints(81);
    const auto lines = Drawn();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_LT(XOf(lines[0].Points.back()), 0.4);
    EXPECT_GT(XOf(lines[1].Points.front()), 0.6);
}

} // namespace
} // namespace lumoplot
