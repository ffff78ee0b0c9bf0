// Lines of 50 to 1,000,000 points, ordered, with unordered X and in closed loops, solid and dashed, on
// screens and on paper, next to a plotting widget that is installed for comparison.
#include "drawing_data.h"
#include "graph/drawing/picture/drawing.h"
#include "graph/model/appearance.h"

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

enum class TPathKind { Ordered, UnorderedX, Loops };

struct TDevice {
    const char* Name;
    QSizeF Units;
    double Scale;
};

struct TLineCase {
    TPathKind Kind;
    int Count;
    int Width;
    TPenStyle Style;
    TDevice Device;
};

struct TPathPoints {
    std::vector<double> X;
    std::vector<double> Y;
};

// Noise over ascending X or over X in any order, or a noisy ring that is run through again and again.
TPathPoints PathOf(TPathKind kind, int count) {
    std::mt19937 random(3);
    std::uniform_real_distribution<> even(0, count);
    std::normal_distribution<> noise;
    TPathPoints path;
    for (int i = 0; i < count; ++i) {
        const double turn = 0.1 * i;
        const double radius = 1 + 0.1 * noise(random);
        const bool isRing = kind == TPathKind::Loops;
        path.X.push_back(isRing ? radius * std::cos(turn) : kind == TPathKind::Ordered ? i : even(random));
        path.Y.push_back(isRing ? radius * std::sin(turn) : noise(random));
    }
    return path;
}

void FillWith(TSeries& series, const std::vector<double>& values) {
    TPointChain points;
    double x = 0;
    for (const double value : values) points.Add(x++, value, {});
    series.SwapPoints(std::move(points));
}

void OurCase(benchmark::State& state, const TLineCase& row) {
    TxyGraph graph;
    const TPathPoints path = PathOf(row.Kind, row.Count);
    if (row.Kind != TPathKind::Ordered) {
        FillWith(AddSeries(graph), path.X);
        graph.Appearance()->SetXAxisSerIndex(1);
    }
    TSeries& series = AddSeries(graph);
    FillWith(series, path.Y);
    series.SetLineWidth(row.Width);
    series.SetLineStyle(row.Style);
    graph.PrepareForDrawing();
    QImage image((row.Device.Units * row.Device.Scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    for (auto _ : state) {
        QPainter painter(&image);
        painter.scale(row.Device.Scale, row.Device.Scale);
        DrawGraph(painter, graph, QRectF(QPointF(), row.Device.Units));
    }
}

#ifdef LUMOPLOT_HAVE_QCUSTOMPLOT
// Its fast mode: adaptive sampling where the X ascend, segments instead of whole polylines.
void PeerCase(benchmark::State& state, const TLineCase& row) {
    QCustomPlot plot;
    plot.setGeometry(QRect(QPoint(), kFrameSize));
    plot.setViewport(QRect(QPoint(), kFrameSize));
    plot.setPlottingHint(QCP::phFastPolylines);
    const TPathPoints path = PathOf(row.Kind, row.Count);
    const QVector<double> x(path.X.begin(), path.X.end());
    const QVector<double> y(path.Y.begin(), path.Y.end());
    QCPAbstractPlottable* line = nullptr;
    if (row.Kind == TPathKind::Ordered) {
        auto* graph = plot.addGraph();
        graph->setData(x, y, true);
        graph->setAdaptiveSampling(true);
        line = graph;
    } else {
        auto* curve = new QCPCurve(plot.xAxis, plot.yAxis);
        curve->setData(x, y);
        line = curve;
    }
    line->setPen(QPen(Qt::blue, row.Width, row.Style == TPenStyle::Solid ? Qt::SolidLine : Qt::DashLine));
    line->setAntialiased(true);
    plot.rescaleAxes();
    for (auto _ : state) plot.replot(QCustomPlot::rpQueuedRefresh);
}
#endif

std::string NameOf(const TLineCase& row) {
    constexpr const char* kKinds[] = {"ordered", "unordered", "loops"};
    return std::string(kKinds[static_cast<int>(row.Kind)]) + "/" + std::to_string(row.Count) + "/width" +
           std::to_string(row.Width) + (row.Style == TPenStyle::Solid ? "/solid/" : "/dashed/") +
           row.Device.Name;
}

template <class TRun>
void Register(const std::string& name, TRun run, const TLineCase& row) {
    benchmark::RegisterBenchmark(name.c_str(), run, row)->Unit(benchmark::kMillisecond)->MinTime(0.05);
}

// The peer draws at 1x only, and not what would take it minutes.
void RegisterCase(const TLineCase& row) {
    Register("Line/" + NameOf(row), OurCase, row);
#ifdef LUMOPLOT_HAVE_QCUSTOMPLOT
    const bool takesLong = row.Count > (row.Kind == TPathKind::Ordered ? 1000000 : 5000) ||
                           (row.Style != TPenStyle::Solid && row.Count > 1000);
    if (row.Device.Scale == 1 && !takesLong) Register("Peer/" + NameOf(row), PeerCase, row);
#endif
}

void RegisterCases() {
    const QSizeF paper(1122, 794);
    const TDevice devices[] = {{"1x", QSizeF(kFrameSize), 1},
                               {"2x", QSizeF(kFrameSize), 2},
                               {"A4at100dpi", paper, 100.0 / 96},
                               {"A4at300dpi", paper, 300.0 / 96}};
    for (const TPathKind kind : {TPathKind::Ordered, TPathKind::UnorderedX, TPathKind::Loops})
        for (const int count : {50, 100, 600, 1000, 5000, 20000, 1000000})
            for (const int width : {1, 2, 5})
                for (const TPenStyle style : {TPenStyle::Solid, TPenStyle::Dash})
                    for (const TDevice& device : devices) RegisterCase({kind, count, width, style, device});
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
    lumoplot::RegisterCases();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
