// What benchmarks of graphs share: the main program, without a screen, and what saving a graph costs, to
// which others are compared.
#pragma once

#include "graph/model/graph.h"

#include <QApplication>
#include <benchmark/benchmark.h>

namespace lumoplot {

inline void MeasureSaving(benchmark::State& state, const TxyGraph& graph) {
    for (auto _ : state) {
        TBytes bytes;
        graph.SaveToStream(bytes, TPoints::Include);
        benchmark::DoNotOptimize(bytes.data());
    }
}

inline int RunBenchmarks(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

} // namespace lumoplot
