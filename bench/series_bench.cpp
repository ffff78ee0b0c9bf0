// The points of a data series against what the standard library does with the same numbers. A million points
// each; the ratios are printed as counters, and so are the bytes that the points take.
#include "data/series/data_series.h"
#include "data/series/series_data.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <new>
#include <random>

namespace {

std::size_t liveBytes = 0;
constexpr std::size_t kHeader = alignof(std::max_align_t);

} // namespace

// Every allocation carries its size in front, so that what is live can be counted.
void* operator new(std::size_t size) {
    auto* block = static_cast<std::byte*>(std::malloc(size + kHeader));
    if (!block) throw std::bad_alloc();
    *reinterpret_cast<std::size_t*>(block) = size;
    liveBytes += size;
    return block + kHeader;
}

void operator delete(void* pointer) noexcept {
    if (!pointer) return;
    auto* block = static_cast<std::byte*>(pointer) - kHeader;
    liveBytes -= *reinterpret_cast<std::size_t*>(block);
    std::free(block);
}

void operator delete(void* pointer, std::size_t) noexcept {
    operator delete(pointer);
}

namespace lumoplot {
namespace {

constexpr int kCount = 1'000'000;

struct TLinkedPoint {
    int Id;
    double X;
    double Y;
    double Derived;
    TLinkedPoint* Next;
};

template <class TWork>
double Seconds(TWork work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Runs both by turns, takes the time of the first and prints how many times the second it took.
template <class TWork, class TReference>
void Compare(benchmark::State& state, TWork work, TReference reference) {
    double workTime = 0;
    double referenceTime = 0;
    for (auto _ : state) {
        const double time = Seconds(work);
        state.SetIterationTime(time);
        workTime += time;
        referenceTime += Seconds(reference);
    }
    state.counters["ratio"] = workTime / referenceTime;
    state.counters["ns_per_point"] = workTime * 1e9 / kCount / static_cast<double>(state.iterations());
}

std::vector<double> RandomX() {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<> any(0, 1e6);
    std::vector<double> x(kCount);
    for (double& value : x) value = any(random);
    return x;
}

void AppendAscendingAgainstPushBack(benchmark::State& state) {
    Compare(
        state,
        [] {
            TDataSeries series;
            for (int i = 0; i < kCount; ++i) series.AddPoint(i, i & 255);
            benchmark::DoNotOptimize(series.MaxY());
        },
        [] {
            std::vector<TLinkedPoint> points;
            for (int i = 0; i < kCount; ++i)
                points.push_back({i, static_cast<double>(i), static_cast<double>(i & 255), 0, nullptr});
            benchmark::DoNotOptimize(points.data());
        });
}
BENCHMARK(AppendAscendingAgainstPushBack)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

void InsertRandomAgainstSort(benchmark::State& state) {
    const std::vector<double> x = RandomX();
    std::vector<std::pair<double, double>> pairs(kCount);
    Compare(
        state,
        [&] {
            TDataSeries series;
            for (const double value : x) series.AddPoint(value, value);
            benchmark::DoNotOptimize(series.MaxY());
        },
        [&] {
            for (int i = 0; i < kCount; ++i) pairs[static_cast<std::size_t>(i)] = {x[i], x[i]};
            std::sort(pairs.begin(), pairs.end());
            benchmark::DoNotOptimize(pairs.data());
        });
}
BENCHMARK(InsertRandomAgainstSort)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

/// A descending file is read by insertions at the front.
void InsertDescending(benchmark::State& state) {
    for (auto _ : state) {
        TDataSeries series;
        for (int i = kCount; i > 0; --i) series.AddPoint(i, i);
        benchmark::DoNotOptimize(series.MaxY());
    }
}
BENCHMARK(InsertDescending)->Unit(benchmark::kMillisecond);

/// With duplicates allowed, points within the tolerance stand in front of their neighbours, out of order.
void InsertRandomOutOfOrder(benchmark::State& state) {
    const std::vector<double> x = RandomX();
    for (auto _ : state) {
        TDataSeries series;
        series.SetNumericalTolerance(2);
        series.SetDuplicatesAllowed(true);
        for (const double value : x) series.AddPoint(value, value);
        benchmark::DoNotOptimize(series.MaxY());
    }
}
BENCHMARK(InsertRandomOutOfOrder)->Unit(benchmark::kMillisecond)->Iterations(3);

enum class TOrder : int { Ascending, Descending, Random };

void BytesPerPoint(benchmark::State& state) {
    const auto order = static_cast<TOrder>(state.range(0));
    const std::vector<double> x = RandomX();
    const std::vector<double> derived(kCount, 1.0);
    for (auto _ : state) {
        const std::size_t before = liveBytes;
        TDataSeries series;
        series.SetDuplicatesAllowed(true);
        for (int i = 0; i < kCount; ++i)
            series.AddPoint(order == TOrder::Random ? x[i] : order == TOrder::Ascending ? i : -i, i);
        state.counters["bytes"] = static_cast<double>(liveBytes - before) / kCount;
        series.SetDerived(derived);
        state.counters["bytes_with_derived"] = static_cast<double>(liveBytes - before) / kCount;
    }
}
BENCHMARK(BytesPerPoint)->ArgName("order")->DenseRange(0, 2)->Unit(benchmark::kMillisecond)->Iterations(1);

/// A series whose Ids and places are unrelated, and all its Ids in random order.
struct TShuffledSeries {
    TDataSeries Series;
    std::vector<int> Ids;

    TShuffledSeries() {
        Series.SetDuplicatesAllowed(true);
        for (const double x : RandomX()) Series.AddPoint(x, x);
        for (int id = 1; id <= kCount; ++id) Ids.push_back(id);
        std::shuffle(Ids.begin(), Ids.end(), std::mt19937_64(2));
    }
};

template <class TWork>
void ById(benchmark::State& state, TWork work) {
    for (auto _ : state) {
        TShuffledSeries shuffled;
        const double time = Seconds([&] {
            for (const int id : shuffled.Ids) work(shuffled.Series, id);
        });
        state.SetIterationTime(time);
        state.counters["ns_per_point"] = time * 1e9 / kCount;
    }
}

void FindById(benchmark::State& state) {
    ById(state, [](TDataSeries& series, int id) { benchmark::DoNotOptimize(series.GetPoint(id)); });
}
BENCHMARK(FindById)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

void ChangeById(benchmark::State& state) {
    ById(state, [](TDataSeries& series, int id) { series.SetPointY(id, id); });
}
BENCHMARK(ChangeById)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

void DeleteById(benchmark::State& state) {
    ById(state, [](TDataSeries& series, int id) { series.DeletePoint(id); });
}
BENCHMARK(DeleteById)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

void RecalcExtents(benchmark::State& state) {
    TDataSeries series;
    for (int i = 0; i < kCount; ++i) series.AddPoint(i, i & 255);
    for (auto _ : state) series.RecalcExtents();
}
BENCHMARK(RecalcExtents)->Unit(benchmark::kMillisecond);

void CopyPoints(benchmark::State& state) {
    TDataSeries series;
    for (int i = 0; i < kCount; ++i) series.AddPoint(i, i & 255);
    for (auto _ : state) {
        TDataSeries copy;
        copy.SetData(series.Data());
        benchmark::DoNotOptimize(copy.MaxY());
    }
}
BENCHMARK(CopyPoints)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace lumoplot

BENCHMARK_MAIN();
