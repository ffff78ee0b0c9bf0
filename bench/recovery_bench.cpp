// What keeping a recovery file costs a graph of 1,000,000 points: the time that the interface thread is held
// after a step (which is to stay below 50 ms), and what the other thread does. The ratio is to saving the
// graph in memory.
#include "graph_bench.h"
#include "session/recovery_writer.h"

#include <QTemporaryDir>
#include <algorithm>
#include <chrono>

namespace lumoplot {
namespace {

constexpr int kPoints = 1000000;

using TClock = std::chrono::steady_clock;

double Since(TClock::time_point start) {
    return std::chrono::duration<double>(TClock::now() - start).count();
}

class TEditedGraph {
public:
    TEditedGraph() {
        TSeries& series = *Graph.FindSeries(Graph.AddSeries());
        for (int i = 0; i < kPoints; ++i) series.AddPoint(i, (i * 7919LL % 1000) * 0.37);
        Session.Start();
    }
    void Step() {
        Session.Change("point", [this] { Graph.FirstSeries()->SetPointY(kPoints / 2, ++m_y); });
    }

    QTemporaryDir Folder;
    TxyGraph Graph;
    TGraphSession Session{Graph};

private:
    double m_y = 0;
};

void SaveInMemory(benchmark::State& state) {
    TEditedGraph edited;
    MeasureSaving(state, edited.Graph);
}

void StepItself(benchmark::State& state) {
    TEditedGraph edited;
    for (auto _ : state) edited.Step();
}

/// All that runs in the interface thread because of the file, while an earlier one may still be written.
void HandOver(benchmark::State& state) {
    TEditedGraph edited;
    TRecoveryWriter writer(edited.Session, {.Kind = QStringLiteral("bench"),
                                            .DocumentName = {},
                                            .Folder = edited.Folder.path(),
                                            .IntervalMs = 0});
    double longest = 0;
    for (auto _ : state) {
        edited.Step();
        const auto start = TClock::now();
        while (TClock::now() - start < std::chrono::milliseconds(1)) QCoreApplication::processEvents();
        const double held = Since(start);
        longest = std::max(longest, held);
        state.SetIterationTime(held);
        writer.Flush();
    }
    state.counters["longest_ms"] = longest * 1000;
}

void InTheOtherThread(benchmark::State& state) {
    TEditedGraph edited;
    TRecoveryWriter writer(edited.Session, {.Kind = QStringLiteral("bench"),
                                            .DocumentName = {},
                                            .Folder = edited.Folder.path(),
                                            .IntervalMs = 0});
    for (auto _ : state) {
        edited.Step();
        const auto start = TClock::now();
        writer.Flush();
        state.SetIterationTime(Since(start));
    }
}

void ReadBack(benchmark::State& state) {
    TEditedGraph edited;
    const TBytes bytes = RecoveryBytes({}, *edited.Session.Snapshot());
    for (auto _ : state) {
        TxyGraph graph;
        ReadRecovery(bytes, graph);
        benchmark::DoNotOptimize(graph.FirstSeries());
    }
    state.counters["bytes"] = static_cast<double>(bytes.size());
}

BENCHMARK(SaveInMemory)->Unit(benchmark::kMillisecond);
BENCHMARK(StepItself)->Unit(benchmark::kMillisecond);
BENCHMARK(HandOver)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(InTheOtherThread)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(ReadBack)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace lumoplot

int main(int argc, char** argv) {
    return lumoplot::RunBenchmarks(argc, argv);
}
