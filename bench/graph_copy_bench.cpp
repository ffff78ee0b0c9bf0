// Copying a graph with 1,000,000 points by its file format, against a memcpy of the encoded bytes both ways
// plus the append of the same points. Prints the ratio and the speed in MB/s.
#include "graph/model/graph.h"

#include <QApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <functional>
#include <random>

namespace {

using namespace lumoplot;

constexpr int kPoints = 1'000'000;
constexpr int kRounds = 7;

// The best of several rounds, in milliseconds.
double Milliseconds(const std::function<void()>& work) {
    double best = 1e300;
    for (int round = 0; round < kRounds; ++round) {
        const auto start = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
        best = std::min(best, time.count());
    }
    return best;
}

void AppendPoints(TDataSeries& series) {
    std::mt19937_64 random(1);
    for (int i = 0; i < kPoints; ++i) series.AddPoint(i * 0.001, static_cast<double>(random()) * 1e-19);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    TxyGraph graph, copy;
    AppendPoints(*graph.FindSeries(graph.AddSeries()));
    TBytes bytes;
    graph.SaveToStream(bytes, TPoints::Include);
    TBytes there(bytes.size()), back(bytes.size());
    const double copying = Milliseconds([&] {
        std::memcpy(there.data(), bytes.data(), bytes.size());
        std::memcpy(back.data(), there.data(), bytes.size());
    });
    copy.AddSeries();
    const double appending = Milliseconds([&] {
        TSeries& series = *copy.FindSeries(1);
        series.Clear();
        for (std::size_t block = 0; block < graph.FirstSeries()->Points().BlockCount(); ++block) {
            const TPointSpans spans = graph.FirstSeries()->Points().Block(block);
            for (std::size_t i = 0; i < spans.X.size(); ++i) series.AddPoint(spans.X[i], spans.Y[i]);
        }
    });
    const double whole = Milliseconds([&] { copy.CopyFrom(graph); });
    const double megabytes = static_cast<double>(bytes.size()) / 1e6;
    std::printf("memcpy of %.1f MB both ways %8.2f ms\n", megabytes, copying);
    std::printf("append of %d points   %8.2f ms\n", kPoints, appending);
    std::printf("CopyFrom                   %8.2f ms  %.0f MB/s  ratio %.2f (limit 5)\n", whole,
                megabytes / whole * 1000, whole / (copying + appending));
}
