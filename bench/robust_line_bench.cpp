// The robust line against sorting as many values: on scattered points, on points of a coarse lattice (many
// equal slopes and equal X) and on points of a rounded straight line (all slopes nearly equal).
#include "data/analysis/robust_line.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <random>
#include <vector>

namespace lumoplot {
namespace {

enum TShape : int { Scattered, Lattice, Line };

struct TPoints {
    std::vector<double> x;
    std::vector<double> y;
};

TPoints MakePoints(std::size_t count, TShape shape) {
    std::mt19937_64 random(1);
    const auto unit = [&random] { return static_cast<double>(random() >> 11) * 0x1p-53; };
    TPoints points;
    for (std::size_t i = 0; i < count; ++i) {
        const double x = static_cast<double>(i) * 0.01;
        const double noise = std::sqrt(-2 * std::log(1 - unit())) * std::cos(6.283185307179586 * unit());
        switch (shape) {
        case Scattered:
            points.x.push_back(x);
            points.y.push_back(2 * x + 10 * noise);
            break;
        case Lattice:
            points.x.push_back(std::floor(x));
            points.y.push_back(std::round(noise));
            break;
        case Line:
            points.x.push_back(x);
            points.y.push_back(0.1 * x);
            break;
        }
    }
    return points;
}

template <class TWork>
double SecondsOf(TWork work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double SortSeconds(const std::vector<double>& values) {
    double best = 1e9;
    for (int i = 0; i < 3; ++i) {
        std::vector<double> copy = values;
        std::shuffle(copy.begin(), copy.end(), std::mt19937_64(2));
        best = std::min(best, SecondsOf([&] { std::sort(copy.begin(), copy.end()); }));
    }
    return best;
}

void BM_RobustLine(benchmark::State& state) {
    const TPoints points =
        MakePoints(static_cast<std::size_t>(state.range(1)), static_cast<TShape>(state.range(0)));
    const double sortSeconds = SortSeconds(points.y);
    double seconds = 0;
    for (auto _ : state)
        seconds += SecondsOf([&] { benchmark::DoNotOptimize(FitRobustLine(points.x, points.y)); });
    state.counters["times_std_sort"] = seconds / static_cast<double>(state.iterations()) / sortSeconds;
}
BENCHMARK(BM_RobustLine)
    ->ArgNames({"shape", "points"})
    ->ArgsProduct({{Scattered, Lattice, Line}, {10'000, 100'000, 1'000'000}})
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace lumoplot

BENCHMARK_MAIN();
