// The band filter over a whole data set (blocks, response, convolution, normalization, new points) against a
// plain direct convolution of arrays of the same sizes, written so that the compiler makes vector code of it.
#include "data/filter/band_filter.h"
#include "data/filter/band_filter_spectrum.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <random>

namespace lumoplot {
namespace {

constexpr int kPoints = 1'000'000;

void Fill(TDataSeries& series) {
    std::mt19937 random(1);
    TPointChain points;
    for (int i = 0; i < kPoints; ++i) {
        const double noise = static_cast<double>(random()) / 4294967296.0 - 0.5;
        points.Add(i * 0.001, 5 + std::sin(i * 0.01) + noise, {});
    }
    series.SwapPoints(std::move(points));
}

/// Outputs a block at a time, so that they stay in the nearest cache while the response runs over them.
void ConvolvePlainly(const std::vector<double>& response, const std::vector<double>& in,
                     std::vector<double>& out) {
    constexpr std::size_t kBlock = 1024;
    const std::size_t last = response.size() - 1;
    for (std::size_t from = 0; from < out.size(); from += kBlock) {
        const std::size_t to = std::min(from + kBlock, out.size());
        for (std::size_t i = from; i < to; ++i) out[i] = 0;
        for (std::size_t k = 0; k <= last; ++k)
            for (std::size_t i = from; i < to; ++i) out[i] += response[k] * in[i + last - k];
    }
}

template <class TWork>
double SecondsOf(TWork work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double PlainSeconds(std::size_t samples, std::size_t width) {
    const std::vector<double> response(2 * width + 1, 1.0 / static_cast<double>(2 * width + 1));
    const std::vector<double> in(samples, 1.5);
    std::vector<double> out(samples - 2 * width);
    double best = 1e9;
    for (int i = 0; i < 5; ++i) {
        best = std::min(best, SecondsOf([&] { ConvolvePlainly(response, in, out); }));
        benchmark::DoNotOptimize(out.data());
    }
    return best;
}

void BM_BandFilter(benchmark::State& state) {
    const auto every = static_cast<int>(state.range(0));
    const auto width = static_cast<int>(state.range(1));
    TDataSeries series;
    Fill(series);
    const TBandFilterSettings settings{.CountEvery = every, .ResponseWidth = width};
    const double plain =
        PlainSeconds(static_cast<std::size_t>(kPoints / every), static_cast<std::size_t>(width));
    TSilentProgress progress;
    double best = 1e9;
    for (auto _ : state)
        best = std::min(best,
                        SecondsOf([&] { benchmark::DoNotOptimize(FilterBand(series, settings, progress)); }));
    state.counters["best_ms"] = 1000 * best;
    state.counters["times_plain_convolution"] = best / plain;
}
BENCHMARK(BM_BandFilter)
    ->ArgNames({"N", "M"})
    ->Args({1, 100})
    ->Args({1, 4})
    ->Args({5, 5})
    ->Unit(benchmark::kMillisecond);

/// What the page works out when a setting changes that the samples depend on.
void BM_Spectrum(benchmark::State& state) {
    TDataSeries series;
    Fill(series);
    TSilentProgress progress;
    for (auto _ : state) {
        const auto samples = SampleBlocks(series, 1, progress);
        benchmark::DoNotOptimize(AmplitudeSpectrum(samples->Values, samples->Step));
    }
}
BENCHMARK(BM_Spectrum)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace lumoplot

BENCHMARK_MAIN();
