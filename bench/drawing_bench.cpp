// Frames of large data sets at 1200x800, next to a plain polyline through all points.
#include "drawing_data.h"
#include "graph/drawing/lines/series_positions.h"
#include "graph/drawing/picture/drawing.h"
#include "graph/plotted/nearest_point.h"
#include "graph_bench.h"

#include <QTemporaryDir>

namespace lumoplot {
namespace {

void Frames(benchmark::State& state, TxyGraph& graph) {
    graph.PrepareForDrawing();
    QImage image = EmptyFrame();
    for (auto _ : state) {
        QPainter painter(&image);
        DrawGraph(painter, graph, QRectF(QPointF(), QSizeF(kFrameSize)));
    }
}

void OneLine(benchmark::State& state, TCurve curve) {
    TxyGraph graph;
    TSeries& series = AddSeries(graph);
    Fill(series, kMillion, curve);
    series.SetLineWidth(static_cast<int>(state.range(0)));
    Frames(state, graph);
}

// The same points, mapped beforehand, as one polyline of the toolkit with a thin pen, not antialiased.
void PlainPolyline(benchmark::State& state, TCurve curve) {
    TxyGraph graph;
    TSeries& series = AddSeries(graph);
    Fill(series, kMillion, curve);
    graph.PrepareForDrawing();
    const TScaleMap xMap(graph.XAxis()->Min(), graph.XAxis()->Max(), 40, kFrameSize.width() - 15);
    const TScaleMap yMap(graph.YAxis()->Min(), graph.YAxis()->Max(), kFrameSize.height() - 40, 30);
    std::vector<QPointF> points;
    TSeriesPositions(series, xMap, yMap).ForEachRun([&](auto x, auto y) {
        for (std::size_t i = 0; i < x.size(); ++i) points.emplace_back(x[i], y[i]);
    });
    QImage image = EmptyFrame();
    for (auto _ : state) {
        QPainter painter(&image);
        painter.setPen(QPen(Qt::blue, 1));
        painter.drawPolyline(points.data(), static_cast<int>(points.size()));
    }
}

void EmptyPlot(benchmark::State& state) {
    TxyGraph graph;
    AddSeries(graph).AddPoint(0, 0);
    Frames(state, graph);
}

// A frame of data that no frame has shown before.
void FirstFrame(benchmark::State& state, TCurve curve) {
    TxyGraph graph;
    TSeries& series = AddSeries(graph);
    Fill(series, kMillion, curve);
    series.SetLineWidth(1);
    const std::int32_t last = series.LastId();
    QImage image = EmptyFrame();
    for (auto _ : state) {
        state.PauseTiming();
        series.SetPointY(last, static_cast<double>(state.iterations() % 2));
        graph.PrepareForDrawing();
        state.ResumeTiming();
        QPainter painter(&image);
        DrawGraph(painter, graph, QRectF(QPointF(), QSizeF(kFrameSize)));
    }
}

/// 100,000 points, each with an error bar; the argument tells how many pixels high.
void ErrorBars(benchmark::State& state) {
    TxyGraph graph;
    TSeries& series = AddSeries(graph);
    Fill(series, 100000, TCurve::Smooth);
    series.SetYErrors(std::vector<double>(100000, 0.005 * static_cast<double>(state.range(0))));
    Frames(state, graph);
}

void TenSeriesWithPoints(benchmark::State& state) {
    TxyGraph graph;
    for (int k = 0; k < 10; ++k) {
        TSeries& series = AddSeries(graph);
        Fill(series, 100000, TCurve::Noisy, 3 * k);
        series.SetPointsShown(true);
        series.SetPointSize(static_cast<int>(state.range(0)));
    }
    Frames(state, graph);
}

void Export(benchmark::State& state) {
    TxyGraph graph;
    Fill(AddSeries(graph), kMillion, TCurve::Noisy);
    const double scale = static_cast<double>(state.range(0)) / 96;
    const QTemporaryDir folder;
    const std::string file = folder.filePath(QStringLiteral("picture.png")).toStdString();
    for (auto _ : state) SaveGraphPicture(graph, file, kFrameSize, {.PixelsPerUnit = scale});
}

// What each movement of the mouse costs: the point nearest to it, with so many points in a pixel.
void NearestOfAMillion(benchmark::State& state) {
    TxyGraph graph;
    Fill(AddSeries(graph), kMillion, TCurve::Noisy);
    graph.PrepareForDrawing();
    const double pixels = static_cast<double>(kMillion) / static_cast<double>(state.range(0));
    const TScaleMap xMap(0, kMillion, 0, pixels);
    const TScaleMap yMap(-5, 5, 800, 0);
    const TPlotMap map{QRectF(0, 0, pixels, 800), xMap, yMap, yMap, {}};
    for (auto _ : state) benchmark::DoNotOptimize(NearestPoint(graph, map, {pixels / 2, 300}, 10));
}

BENCHMARK(NearestOfAMillion)->Arg(1)->Arg(1000)->Arg(kMillion)->Unit(benchmark::kMicrosecond);
BENCHMARK(EmptyPlot)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(PlainPolyline, noisy, TCurve::Noisy)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(PlainPolyline, smooth, TCurve::Smooth)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FirstFrame, noisy, TCurve::Noisy)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FirstFrame, smooth, TCurve::Smooth)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OneLine, noisy, TCurve::Noisy)->Arg(1)->Arg(2)->Arg(5)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OneLine, smooth, TCurve::Smooth)->Arg(1)->Arg(2)->Arg(5)->Unit(benchmark::kMillisecond);
BENCHMARK(ErrorBars)->Arg(1)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(TenSeriesWithPoints)->Arg(6)->Arg(12)->Unit(benchmark::kMillisecond);
BENCHMARK(Export)->Arg(100)->Arg(300)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace lumoplot

int main(int argc, char** argv) {
    return lumoplot::RunBenchmarks(argc, argv);
}
