// How long it takes from a cancel to the return of each work with fits, at its longest over twenty moments.
#include "fit/functions/ready_functions.h"
#include "fit/functions/start_values.h"
#include "fit/many/compare_procedures.h"
#include "fit/many/fit_batch.h"
#include "fit/many/uncertainty.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <random>

namespace lumoplot {
namespace {

constexpr int kSets = 4;
constexpr int kPointsOfSet = 250000;
constexpr int kMoments = 20;

/// Cancelled at a moment; then says how long ago that was.
class TEndingProgress final : public TProgress {
public:
    explicit TEndingProgress(double seconds) : m_end(std::chrono::steady_clock::now() + TSeconds(seconds)) {}
    void Begin(const std::string&, std::int64_t, std::int64_t) override {}
    [[nodiscard]] bool StepTo(std::int64_t) override {
        m_isOver = m_isOver || std::chrono::steady_clock::now() >= m_end;
        return !m_isOver;
    }
    bool IsOver() const { return m_isOver; }
    double Late() const { return TSeconds(std::chrono::steady_clock::now() - m_end).count(); }

private:
    using TSeconds = std::chrono::duration<double>;
    std::chrono::time_point<std::chrono::steady_clock, TSeconds> m_end;
    bool m_isOver = false;
};

/// Peaks of one width and different places, with noise.
struct TSets {
    std::vector<double> X;
    std::vector<std::vector<double>> Y;
    std::vector<TBatchData> Data;
    TCurFit Fit;

    TSets() {
        std::mt19937_64 random(3);
        for (int i = 0; i < kPointsOfSet; ++i) X.push_back(10.0 * i / kPointsOfSet);
        for (int k = 0; k < kSets; ++k) {
            Y.emplace_back();
            for (const double x : X) {
                const double from = (x - 4 - 0.3 * k) / 0.8;
                const double noise = static_cast<double>(random() >> 11) * 0x1p-53 - 0.5;
                Y.back().push_back((k + 1) * std::exp(-from * from / 2) + 1 + 0.2 * noise);
            }
        }
        for (int k = 0; k < kSets; ++k)
            Data.push_back({std::to_string(k), X, Y[static_cast<std::size_t>(k)]});
        for (const TReadyFunction& function : ReadyFunctions())
            if (std::string(function.Name) == "gaussian_peak") UseReadyFunction(function, Fit);
        Fit.SetProcType(TFitProcedure::Newton);
        Fit.SetIterMax(2000);
    }
};

enum TWork { Scattered, Robust, Batch, Together, Profile, Bootstrap, Compare, FindStart, WorkCount };
constexpr const char* kWorkNames[] = {"scattered starts", "robust",    "batch",   "together",
                                      "profile",          "bootstrap", "compare", "start values"};

void Do(TWork work, const TSets& sets, const TCurFit& fitted, TProgress& progress) {
    TCurFit fit;
    fit.Assign(&sets.Fit);
    TFitRun run;
    run.Progress = &progress;
    const std::string shared[] = {"s"};
    const TFittedData data{fitted, sets.X, sets.Y[0], run};
    switch (work) {
    case Scattered:
        run.SearchRuns = 1000;
        RunFit(fit, sets.X, sets.Y[0], run);
        break;
    case Robust:
        run.Robust = TRobust::Cauchy;
        RunFit(fit, sets.X, sets.Y[0], run);
        break;
    case Batch: FitEach(fit, sets.Data, run); break;
    case Together: FitTogether(fit, sets.Data, shared, run); break;
    case Profile:
        for (const int number : fitted.Result()->Varied)
            if (ProfileOf(data, number).WasCancelled) break;
        break;
    case Bootstrap: BootstrapOf(data, {10000, TResampling::Residuals, 1, {}}); break;
    case Compare: CompareProcedures(fit, sets.X, sets.Y[0], run, {100, {}}); break;
    case FindStart: FindStartValues(fit, sets.X, sets.Y[0], run); break;
    case WorkCount: break;
    }
}

void BM_CancelOfWork(benchmark::State& state) {
    static const TSets sets;
    static const TCurFit* const fitted = [] {
        auto* fit = new TCurFit;
        fit->Assign(&sets.Fit);
        RunFit(*fit, sets.X, sets.Y[0]);
        return fit;
    }();
    const auto work = static_cast<TWork>(state.range(0));
    state.SetLabel(kWorkNames[work]);
    double longest = 0;
    int cancelled = 0;
    for (auto _ : state) {
        for (int i = 0; i < kMoments; ++i) {
            TEndingProgress progress(0.02 * (i + 1));
            Do(work, sets, *fitted, progress);
            if (!progress.IsOver()) continue;
            longest = std::max(longest, progress.Late());
            ++cancelled;
        }
    }
    state.counters["longest_ms"] = 1000 * longest;
    state.counters["cancelled"] = cancelled;
}
BENCHMARK(BM_CancelOfWork)->DenseRange(0, WorkCount - 1)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace lumoplot

BENCHMARK_MAIN();
