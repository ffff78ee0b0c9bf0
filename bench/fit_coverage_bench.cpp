// How often intervals of 95 % hold the true parameters, and how long the uncertainties of a fit take.
#include "fit/many/uncertainty.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <random>

namespace lumoplot {
namespace {

constexpr int kDataSets = 4000;
constexpr int kDataSetsOfSlowWays = 2000;
constexpr int kResamples = 1000;

struct TTrueModel {
    const char* name;
    const char* equation;
    std::vector<std::pair<const char*, double>> parameters;
    double from;
    double to;
    int points;
    double noise;
};

const TTrueModel kModels[] = {
    {"line", "a+b*x", {{"a", 1}, {"b", 2}}, 0, 5, 20, 0.5},
    {"decay", "a*exp(-k*x)+c", {{"a", 3}, {"k", 0.8}, {"c", 0.5}}, 0, 6, 40, 0.1},
    {"michaelis", "v*x/(k+x)", {{"v", 10}, {"k", 3}}, 0.2, 20, 25, 0.3},
    {"gauss", "a*exp(-sqr((x-m)/w))+c", {{"a", 5}, {"m", 4}, {"w", 1.2}, {"c", 1}}, 0, 8, 50, 0.2},
    {"logistic", "k/(1+exp(-r*(x-m)))", {{"k", 20}, {"r", 0.9}, {"m", 6}}, 0, 12, 30, 0.6},
    {"power", "a*x^b", {{"a", 2}, {"b", 0.7}}, 0.5, 10, 25, 0.2},
};

class TSimulation {
public:
    explicit TSimulation(const TTrueModel& model) : m_model(model) {
        m_fit.SetExpression(model.equation);
        m_fit.SetProcType(TFitProcedure::Newton);
        for (const auto& [name, value] : model.parameters) {
            auto parameter = std::make_unique<TDBLParameter>();
            parameter->SetName(name);
            parameter->SetValue(value);
            parameter->SetVary(true);
            m_fit.AddParameter(std::move(parameter));
        }
        m_fit.Compile();
        for (int i = 0; i < model.points; ++i) {
            m_x.push_back(std::lerp(model.from, model.to, i / (model.points - 1.0)));
            m_true.push_back(m_fit.EvaluateAt(m_x.back()));
        }
        m_run.Starts = TFitStarts::Given;
    }

    /// Fits the next data set.
    void Next() {
        m_y = m_true;
        for (double& y : m_y) y += m_model.noise * m_normal(m_random);
        int number = 0;
        for (const auto& parameter : m_model.parameters)
            m_fit.Parameter(++number)->SetValue(parameter.second);
        RunFit(m_fit, m_x, m_y, m_run);
    }

    TFittedData Data() const { return {m_fit, m_x, m_y, m_run}; }
    bool Holds(const TInterval& interval, std::size_t parameter) const {
        const double value = m_model.parameters[parameter].second;
        return interval.Low <= value && value <= interval.High;
    }
    std::size_t ParameterCount() const { return m_model.parameters.size(); }

private:
    const TTrueModel& m_model;
    TCurFit m_fit;
    TFitRun m_run;
    std::vector<double> m_x;
    std::vector<double> m_true;
    std::vector<double> m_y;
    std::mt19937_64 m_random{7};
    std::normal_distribution<double> m_normal;
};

// The part of the intervals that hold, of the parameter for which it is least and most.
void ReportCoverage(benchmark::State& state, const std::vector<int>& holds, int dataSets) {
    const auto [least, most] = std::ranges::minmax(holds);
    state.counters["least_percent"] = 100.0 * least / dataSets;
    state.counters["most_percent"] = 100.0 * most / dataSets;
}

template <class TIntervals>
void Simulate(benchmark::State& state, int dataSets, TIntervals&& intervalsOf) {
    const TTrueModel& model = kModels[state.range(0)];
    state.SetLabel(model.name);
    TSimulation simulation(model);
    std::vector<int> holds(simulation.ParameterCount());
    for (auto _ : state) {
        for (int i = 0; i < dataSets; ++i) {
            simulation.Next();
            const std::vector<TInterval> intervals = intervalsOf(simulation.Data());
            for (std::size_t k = 0; k < holds.size(); ++k)
                holds[k] += simulation.Holds(intervals[k], k) ? 1 : 0;
        }
    }
    ReportCoverage(state, holds, dataSets);
}

void BM_Asymptotic(benchmark::State& state) {
    Simulate(state, kDataSets, [](const TFittedData& data) { return AsymptoticIntervals(data.Fit, 0.95); });
}

void BM_Profile(benchmark::State& state) {
    Simulate(state, kDataSetsOfSlowWays, [](const TFittedData& data) {
        std::vector<TInterval> intervals;
        for (const int number : data.Fit.Result()->Varied)
            intervals.push_back(ProfileOf(data, number).Interval);
        return intervals;
    });
}

void BM_Bootstrap(benchmark::State& state) {
    Simulate(state, kDataSetsOfSlowWays, [](const TFittedData& data) {
        TBootstrapOptions options;
        options.Resamples = kResamples;
        return BootstrapOf(data, options).Intervals;
    });
}

BENCHMARK(BM_Asymptotic)->ArgName("model")->DenseRange(0, 5)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Profile)->ArgName("model")->DenseRange(0, 5)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bootstrap)
    ->ArgName("model")
    ->DenseRange(0, 5)
    ->Iterations(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

/// Cancelled at a moment.
class TEndingProgress final : public TProgress {
public:
    explicit TEndingProgress(double seconds) : m_end(std::chrono::steady_clock::now() + TSeconds(seconds)) {}
    void Begin(const std::string&, std::int64_t, std::int64_t) override {}
    [[nodiscard]] bool StepTo(std::int64_t) override { return std::chrono::steady_clock::now() < m_end; }
    double Late() const { return TSeconds(std::chrono::steady_clock::now() - m_end).count(); }

private:
    using TSeconds = std::chrono::duration<double>;
    std::chrono::time_point<std::chrono::steady_clock, TSeconds> m_end;
};

// 10,000 resamples of 1,000 points and three parameters; then the first picture, and the longest time from a
// cancel to the return.
void BM_TenThousandResamples(benchmark::State& state) {
    const TTrueModel model = {"", "a*exp(-k*x)+c", {{"a", 3}, {"k", 0.8}, {"c", 0.5}}, 0, 6, 1000, 0.1};
    TSimulation simulation(model);
    simulation.Next();
    double firstPicture = 0;
    double late = 0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        TBootstrapOptions options;
        options.Resamples = 10000;
        options.OnProgress = [&](const TBootstrap&) {
            const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
            if (firstPicture == 0) firstPicture = passed.count();
        };
        benchmark::DoNotOptimize(BootstrapOf(simulation.Data(), options));
        state.PauseTiming();
        for (int i = 0; i < 10; ++i) {
            TEndingProgress progress(0.05 * (i + 1));
            TFitRun run;
            run.Progress = &progress;
            const TFittedData data = simulation.Data();
            BootstrapOf({data.Fit, data.X, data.Y, run}, {10000, TResampling::Points, 1, {}});
            late = std::max(late, progress.Late());
        }
        state.ResumeTiming();
    }
    state.counters["first_picture_s"] = firstPicture;
    state.counters["cancel_ms"] = 1000 * late;
}
BENCHMARK(BM_TenThousandResamples)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace lumoplot

BENCHMARK_MAIN();
