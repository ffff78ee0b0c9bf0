// What a step of undo costs on a graph of 10 data sets of 100,000 points (or one of 1,000,000): to look for
// changes, to record one, to put a state back. The ratio is to saving the whole graph in memory.
#include "graph_bench.h"
#include "session/graph_snapshot.h"

namespace lumoplot {
namespace {

constexpr int kSeries = 10;
constexpr int kPoints = 100000;

class TLargeGraph {
public:
    explicit TLargeGraph(int seriesCount = kSeries) {
        for (int i = 0; i < seriesCount; ++i) {
            TSeries& series = *Graph.FindSeries(Graph.AddSeries());
            for (int k = 0; k < kSeries * kPoints / seriesCount; ++k)
                series.AddPoint(k, (k * 7919 % 1000) * 0.37 + i);
        }
    }

    TxyGraph Graph;
    std::shared_ptr<TMemoryMeter> Meter = std::make_shared<TMemoryMeter>();
};

void SaveWhole(benchmark::State& state) {
    TLargeGraph large;
    MeasureSaving(state, large.Graph);
}

void FirstState(benchmark::State& state) {
    TLargeGraph large;
    for (auto _ : state) benchmark::DoNotOptimize(TGraphSnapshot(large.Graph, nullptr, large.Meter));
}

void NothingChanged(benchmark::State& state) {
    TLargeGraph large;
    const TGraphSnapshot before(large.Graph, nullptr, large.Meter);
    for (auto _ : state)
        benchmark::DoNotOptimize(TGraphSnapshot(large.Graph, &before, large.Meter) == before);
}

void OnePointChanged(benchmark::State& state) {
    TLargeGraph large(static_cast<int>(state.range(0)));
    const TGraphSnapshot before(large.Graph, nullptr, large.Meter);
    double y = 0;
    std::size_t bytes = 0;
    for (auto _ : state) {
        large.Graph.FirstSeries()->SetPointY(kPoints / 2, ++y);
        const std::size_t used = large.Meter->Bytes;
        const TGraphSnapshot after(large.Graph, &before, large.Meter);
        bytes = large.Meter->Bytes - used;
        benchmark::DoNotOptimize(after == before);
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}

void PutOnePointBack(benchmark::State& state) {
    TLargeGraph large;
    const TGraphSnapshot before(large.Graph, nullptr, large.Meter);
    for (auto _ : state) {
        large.Graph.FirstSeries()->SetPointY(kPoints / 2, 1e6);
        before.Restore(large.Graph, 1);
    }
}

void PutDeletedFirstBack(benchmark::State& state) {
    TLargeGraph large;
    const TGraphSnapshot before(large.Graph, nullptr, large.Meter);
    for (auto _ : state) {
        large.Graph.DeleteSeries(1);
        before.Restore(large.Graph, 1);
    }
}

BENCHMARK(SaveWhole)->Unit(benchmark::kMillisecond);
BENCHMARK(FirstState)->Unit(benchmark::kMillisecond);
BENCHMARK(NothingChanged)->Unit(benchmark::kMillisecond);
BENCHMARK(OnePointChanged)->Arg(kSeries)->Arg(1)->ArgName("sets")->Unit(benchmark::kMillisecond);
BENCHMARK(PutOnePointBack)->Unit(benchmark::kMillisecond);
BENCHMARK(PutDeletedFirstBack)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace lumoplot

int main(int argc, char** argv) {
    return lumoplot::RunBenchmarks(argc, argv);
}
