// The data that the drawing benchmarks show.
#pragma once

#include "graph/model/graph.h"

#include <QImage>
#include <cmath>
#include <random>

namespace lumoplot {

constexpr QSize kFrameSize(1200, 800);
constexpr int kMillion = 1000000;

enum class TCurve { Noisy, Smooth };

inline std::vector<double> CurveValues(int count, TCurve curve, double level = 0) {
    std::mt19937 random(1);
    std::normal_distribution<> noise;
    std::vector<double> values;
    for (int i = 0; i < count; ++i)
        values.push_back(level + (curve == TCurve::Noisy ? noise(random) : 4 * std::sin(i / 3e4)));
    return values;
}

inline void Fill(TSeries& series, int count, TCurve curve, double level = 0) {
    TPointChain points;
    double x = 0;
    for (const double y : CurveValues(count, curve, level)) points.Add(x++, y, {});
    series.SwapPoints(std::move(points));
}

inline TSeries& AddSeries(TxyGraph& graph) {
    return *graph.FindSeries(graph.AddSeries());
}

inline QImage EmptyFrame() {
    QImage image(kFrameSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    return image;
}

} // namespace lumoplot
