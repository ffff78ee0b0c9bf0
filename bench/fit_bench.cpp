// Curve fits: the certified problems from both starts by each procedure, and 100,000 points by a model of
// four parameters against the `fit` of gnuplot, where that is installed.
#include "fit/many/certified.h"
#include "fit/run/curve_fitter.h"
#include "support/number_text.h"
#include "support/replace_file.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <random>

namespace lumoplot {
namespace {

constexpr int kIterations = 2000;
constexpr int kPoints = 100'000;
constexpr char kEquation[] = "a*exp(-b*x)+c*sin(x)+d";

std::string FileText(const std::string& name) {
    const auto bytes = ReadWholeFile(std::string(LUMOPLOT_SOURCE_DIR) + "/examples/certified/" + name);
    return {bytes.begin(), bytes.end()};
}

struct TCertifiedSet {
    std::vector<TCertifiedProblem> problems = ReadCertifiedProblems(FileText("problems.tsv"));
    std::vector<TCertifiedData> data;

    TCertifiedSet() {
        for (const TCertifiedProblem& problem : problems)
            data.push_back(ReadCertifiedData(FileText(LowerCased(problem.Name) + ".csv")));
    }
};

void BM_CertifiedProblems(benchmark::State& state) {
    const TCertifiedSet set;
    const TFitProcedure procedure{static_cast<int>(state.range(0))};
    double digits = 0;
    double runs = 0;
    for (auto _ : state) {
        for (std::size_t i = 0; i < set.problems.size(); ++i) {
            for (int start = 0; start < 2; ++start) {
                digits +=
                    RunCertified(set.problems[i], set.data[i], start, procedure, kIterations).ParameterDigits;
                ++runs;
            }
        }
    }
    state.counters["runs"] = runs / static_cast<double>(state.iterations());
    state.counters["mean_digits"] = digits / runs;
}
BENCHMARK(BM_CertifiedProblems)
    ->ArgName("procedure")
    ->DenseRange(static_cast<int>(TFitProcedure::Powell), static_cast<int>(TFitProcedure::Newton))
    ->Unit(benchmark::kMillisecond);

TCertifiedData ManyPoints() {
    std::mt19937_64 random(1);
    TCertifiedData data;
    for (int i = 0; i < kPoints; ++i) {
        const double x = 20.0 * i / kPoints;
        const double noise = static_cast<double>(random() >> 11) * 0x1p-53 - 0.5;
        data.X.push_back(x);
        data.Y.push_back(5 * std::exp(-0.3 * x) + 2 * std::sin(x) + 1 + 0.1 * noise);
    }
    return data;
}

double Fit(const TCertifiedData& data, TFitProcedure procedure) {
    TCurFit fit;
    fit.SetExpression(kEquation);
    fit.SetProcType(procedure);
    for (const char* name : {"a", "b", "c", "d"}) {
        auto parameter = std::make_unique<TDBLParameter>();
        parameter->SetName(name);
        parameter->SetValue(1);
        parameter->SetVary(true);
        fit.AddParameter(std::move(parameter));
    }
    return RunFit(fit, data.X, data.Y).Rss;
}

/// Two peaks on a slope: eight parameters, two of them places, two widths, four linear.
struct TPeaks {
    static constexpr int kCount = 1000000;
    TCertifiedData data;

    TPeaks() {
        std::mt19937_64 random(2);
        for (int i = 0; i < kCount; ++i) {
            const double x = 10.0 * i / kCount;
            const double noise = static_cast<double>(random() >> 11) * 0x1p-53 - 0.5;
            const double left = (x - 3) / 0.7;
            const double right = (x - 6.5) / 1.2;
            data.X.push_back(x);
            data.Y.push_back(4 * std::exp(-left * left) + 2 * std::exp(-right * right) + 1 + 0.2 * x +
                             0.2 * noise);
        }
    }

    TFitResult Fit(TProgress* progress = nullptr, TFitProcedure procedure = TFitProcedure::Newton) const {
        TCurFit fit;
        fit.SetExpression("a*exp(-sqr((x-m)/s))+b*exp(-sqr((x-n)/t))+c+d*x");
        fit.SetProcType(procedure);
        fit.SetIterMax(kIterations);
        const std::pair<const char*, double> starts[] = {{"a", 1}, {"m", 2.5}, {"s", 1}, {"b", 1},
                                                         {"n", 7}, {"t", 1},   {"c", 0}, {"d", 0}};
        for (const auto& [name, value] : starts) {
            auto parameter = std::make_unique<TDBLParameter>();
            parameter->SetName(name);
            parameter->SetValue(value);
            parameter->SetVary(true);
            fit.AddParameter(std::move(parameter));
        }
        TFitRun run;
        run.Progress = progress;
        return RunFit(fit, data.X, data.Y, run);
    }
};

void BM_MillionPoints(benchmark::State& state) {
    const TPeaks peaks;
    TFitResult result;
    for (auto _ : state) result = peaks.Fit();
    state.counters["converged"] = result.End == TFitEnd::Converged;
    state.counters["evaluations"] = result.Evaluations;
}
BENCHMARK(BM_MillionPoints)->Unit(benchmark::kMillisecond)->UseRealTime();

/// Cancelled at a moment; then says how long ago that was.
class TCancelAfter final : public TProgress {
public:
    explicit TCancelAfter(double seconds)
        : m_end(std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds)) {}
    void Begin(const std::string&, std::int64_t, std::int64_t) override {}
    [[nodiscard]] bool StepTo(std::int64_t) override { return std::chrono::steady_clock::now() < m_end; }
    double SecondsSince() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - m_end).count();
    }

private:
    std::chrono::time_point<std::chrono::steady_clock, std::chrono::duration<double>> m_end;
};

// The longest time from a cancel to the return, over cancels at twenty moments.
void BM_Cancel(benchmark::State& state) {
    const TPeaks peaks;
    double longest = 0;
    for (auto _ : state) {
        for (int i = 0; i < 20; ++i) {
            TCancelAfter progress(0.02 * (i + 1));
            const TFitResult result = peaks.Fit(&progress, TFitProcedure{static_cast<int>(state.range(0))});
            if (result.End == TFitEnd::Cancelled) longest = std::max(longest, progress.SecondsSince());
        }
    }
    state.counters["longest_ms"] = 1000 * longest;
}
BENCHMARK(BM_Cancel)
    ->ArgName("procedure")
    ->DenseRange(static_cast<int>(TFitProcedure::Powell), static_cast<int>(TFitProcedure::Newton))
    ->Iterations(1);

double SecondsOf(const auto& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Runs gnuplot on commands; the time of an empty run has to be taken off.
class TGnuplot {
public:
    explicit TGnuplot(const TCertifiedData& data) {
        std::string text;
        for (std::size_t i = 0; i < data.X.size(); ++i)
            text += FormatShortest(data.X[i]) + ' ' + FormatShortest(data.Y[i]) + '\n';
        Write("points.dat", text);
    }
    ~TGnuplot() {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    TGnuplot(const TGnuplot&) = delete;
    TGnuplot& operator=(const TGnuplot&) = delete;

    bool IsInstalled() const { return Run("\n") == 0; }
    double FitSeconds() const {
        const std::string read = "stats 'points.dat' nooutput\n";
        const std::string fit = "set fit quiet nolog\na=1;b=1;c=1;d=1\nf(x)=a*exp(-b*x)+c*sin(x)+d\n"
                                "fit f(x) 'points.dat' via a,b,c,d\n";
        const double reading = SecondsOf([&] { Run(read); });
        return SecondsOf([&] { Run(fit); }) - reading;
    }

private:
    void Write(const std::string& name, const std::string& text) const {
        ReplaceFile((m_folder / name).string(),
                    std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
    }
    int Run(const std::string& commands) const {
        Write("commands.gp", commands);
#if defined(_WIN32)
        const std::string quiet = " > NUL 2>&1";
#else
        const std::string quiet = " > /dev/null 2>&1";
#endif
        const std::string folder = m_folder.string();
        return std::system(("cd \"" + folder + "\" && gnuplot commands.gp" + quiet).c_str());
    }

    std::filesystem::path m_folder = [] {
        const auto folder = std::filesystem::temp_directory_path() / "lumoplot_fit_bench";
        std::filesystem::create_directories(folder);
        return folder;
    }();
};

// Once, because it takes long; 0 when gnuplot is not installed.
double GnuplotSeconds(const TCertifiedData& data) {
    static const double seconds = [&data] {
        const TGnuplot gnuplot(data);
        return gnuplot.IsInstalled() ? gnuplot.FitSeconds() : 0;
    }();
    return seconds;
}

void BM_ManyPoints(benchmark::State& state) {
    const TCertifiedData data = ManyPoints();
    const double peer = GnuplotSeconds(data);
    double seconds = 0;
    for (auto _ : state)
        seconds += SecondsOf(
            [&] { benchmark::DoNotOptimize(Fit(data, TFitProcedure{static_cast<int>(state.range(0))})); });
    seconds /= static_cast<double>(state.iterations());
    if (peer > 0)
        state.counters["times_gnuplot"] = seconds / peer;
    else
        state.SetLabel("gnuplot is not installed");
}
BENCHMARK(BM_ManyPoints)
    ->ArgName("procedure")
    ->DenseRange(static_cast<int>(TFitProcedure::Powell), static_cast<int>(TFitProcedure::Newton))
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace lumoplot

BENCHMARK_MAIN();
