// A line of 1,000,000 points at 1200x800 with a thin pen, next to a plotting widget that is installed for
// comparison.
#include "drawing_data.h"
#include "graph/drawing/picture/drawing.h"

#include <QApplication>
#include <benchmark/benchmark.h>
#ifdef LUMOPLOT_HAVE_QCUSTOMPLOT
#include <qcustomplot.h>
#endif

namespace lumoplot {
namespace {

void OurLine(benchmark::State& state, TCurve curve) {
    TxyGraph graph;
    TSeries& series = AddSeries(graph);
    Fill(series, kMillion, curve);
    series.SetLineWidth(1);
    graph.PrepareForDrawing();
    QImage image = EmptyFrame();
    for (auto _ : state) {
        QPainter painter(&image);
        DrawGraph(painter, graph, QRectF(QPointF(), QSizeF(kFrameSize)));
    }
}

// Every frame shows another part of the X axis, as while the mouse moves the picture.
void OurMovingLine(benchmark::State& state, TCurve curve) {
    TxyGraph graph;
    TSeries& series = AddSeries(graph);
    Fill(series, kMillion, curve);
    series.SetLineWidth(1);
    QImage image = EmptyFrame();
    double shift = 0;
    for (auto _ : state) {
        graph.XAxis()->SetMin(shift);
        graph.XAxis()->SetMax(kMillion / 2 + shift);
        shift = shift < kMillion / 2 ? shift + 500 : 0;
        graph.PrepareForDrawing();
        QPainter painter(&image);
        DrawGraph(painter, graph, QRectF(QPointF(), QSizeF(kFrameSize)));
    }
}

#ifdef LUMOPLOT_HAVE_QCUSTOMPLOT
void PeerLine(benchmark::State& state, TCurve curve) {
    QCustomPlot plot;
    plot.setGeometry(QRect(QPoint(), kFrameSize));
    plot.setViewport(QRect(QPoint(), kFrameSize));
    QVector<double> keys(kMillion);
    for (int i = 0; i < kMillion; ++i) keys[i] = i;
    const std::vector<double> values = CurveValues(kMillion, curve);
    QCPGraph& line = *plot.addGraph();
    line.setData(keys, QVector<double>(values.begin(), values.end()), true);
    line.setPen(QPen(Qt::blue, 0));
    line.setAdaptiveSampling(true);
    line.setAntialiased(state.range(0) != 0);
    plot.rescaleAxes();
    for (auto _ : state) plot.replot(QCustomPlot::rpQueuedRefresh);
}

BENCHMARK_CAPTURE(PeerLine, noisy, TCurve::Noisy)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(PeerLine, smooth, TCurve::Smooth)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
#endif
BENCHMARK_CAPTURE(OurLine, noisy, TCurve::Noisy)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OurLine, smooth, TCurve::Smooth)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OurMovingLine, noisy, TCurve::Noisy)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OurMovingLine, smooth, TCurve::Smooth)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace lumoplot

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
#ifndef LUMOPLOT_HAVE_QCUSTOMPLOT
    qInfo("QCustomPlot was not installed when this was built: nothing to compare with");
#endif
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
