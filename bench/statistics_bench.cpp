// Statistics, least squares, smoothing and the spline over 1,000,000 points, each against std::sort of the
// same values; and the statistics of a data series, which answers from its cache until a point changes.
#include "data/analysis/least_squares.h"
#include "data/analysis/smoothing.h"
#include "data/analysis/spline.h"
#include "data/analysis/statistics.h"
#include "data/series/data_series.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <random>
#include <vector>

namespace lumoplot {
namespace {

constexpr std::size_t kPoints = 1'000'000;

std::vector<double> RandomValues() {
    std::mt19937_64 random(1);
    std::vector<double> values(kPoints);
    for (double& value : values) value = static_cast<double>(random() >> 11) * 0x1p-53;
    return values;
}

template <class TWork>
double SecondsOf(TWork work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Of std::sort, copying included.
double SortSeconds() {
    static const double seconds = [] {
        const std::vector<double> values = RandomValues();
        double best = 1e9;
        for (int i = 0; i < 5; ++i) {
            best = std::min(best, SecondsOf([&] {
                                std::vector<double> copy = values;
                                std::sort(copy.begin(), copy.end());
                                benchmark::DoNotOptimize(copy.data());
                            }));
        }
        return best;
    }();
    return seconds;
}

template <class TWork>
void Run(benchmark::State& state, TWork work) {
    const double sortSeconds = SortSeconds();
    double seconds = 0;
    for (auto _ : state) seconds += SecondsOf(work);
    state.counters["times_std_sort"] = seconds / static_cast<double>(state.iterations()) / sortSeconds;
}

struct TPoints {
    std::vector<double> y = RandomValues();
    std::vector<double> x;

    TPoints() {
        for (std::size_t i = 0; i < kPoints; ++i) x.push_back(static_cast<double>(i));
    }
};

void BM_StatisticsOfUnsorted(benchmark::State& state) {
    const TPoints points;
    Run(state, [&] { benchmark::DoNotOptimize(ComputeStatistics(points.y, 0)); });
}

void BM_StatisticsOfAscending(benchmark::State& state) {
    const TPoints points;
    Run(state, [&] { benchmark::DoNotOptimize(ComputeStatistics(points.x, 0)); });
}

void BM_FitLine(benchmark::State& state) {
    const TPoints points;
    Run(state, [&] { benchmark::DoNotOptimize(FitLine(points.x, points.y)); });
}

void BM_FitQuadratic(benchmark::State& state) {
    const TPoints points;
    Run(state, [&] { benchmark::DoNotOptimize(FitQuadratic(points.x, points.y)); });
}

void BM_Spline(benchmark::State& state) {
    const TPoints points;
    Run(state, [&] { benchmark::DoNotOptimize(SampleSpline(points.x, points.y, 1000, 0)); });
}

void BM_SmoothExponentially(benchmark::State& state) {
    const TPoints points;
    Run(state, [&] { benchmark::DoNotOptimize(SmoothExponentially(points.y, 0.05)); });
}

void BM_RunningAverage(benchmark::State& state) {
    const TPoints points;
    const auto window = static_cast<std::size_t>(state.range(0));
    Run(state, [&] { benchmark::DoNotOptimize(RunningAverage(points.y, window)); });
}

void FillSeries(TDataSeries& series) {
    const TPoints points;
    for (std::size_t i = 0; i < kPoints; ++i) series.AddPoint(points.x[i], points.y[i]);
}

void BM_SeriesStatisticsAfterAChange(benchmark::State& state) {
    TDataSeries series;
    FillSeries(series);
    double y = 0;
    Run(state, [&] {
        series.SetPointY(1, y += 0x1p-20);
        benchmark::DoNotOptimize(series.YStatistics());
    });
}

void BM_SeriesStatisticsFromTheCache(benchmark::State& state) {
    TDataSeries series;
    FillSeries(series);
    series.YStatistics();
    Run(state, [&] { benchmark::DoNotOptimize(series.YStatistics()); });
}

void BM_SeriesRegressionAfterAChange(benchmark::State& state) {
    TDataSeries series;
    FillSeries(series);
    series.SetRegressionType(TRegressionType{static_cast<int>(state.range(0))});
    double y = 0;
    Run(state, [&] {
        series.SetPointY(1, y += 0x1p-20);
        series.CalcRegression();
    });
}

void BM_SeriesRegressionUpToDate(benchmark::State& state) {
    TDataSeries series;
    FillSeries(series);
    series.SetRegressionType(TRegressionType::RobustLine);
    series.CalcRegression();
    Run(state, [&] { series.UpdateRegression(); });
}

BENCHMARK(BM_StatisticsOfUnsorted)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StatisticsOfAscending)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FitLine)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FitQuadratic)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Spline)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SmoothExponentially)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RunningAverage)->Arg(19)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SeriesStatisticsAfterAChange)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SeriesStatisticsFromTheCache)->Unit(benchmark::kNanosecond);
BENCHMARK(BM_SeriesRegressionAfterAChange)->DenseRange(1, 7)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SeriesRegressionUpToDate)->Unit(benchmark::kNanosecond);

} // namespace
} // namespace lumoplot

BENCHMARK_MAIN();
