// Six fit models over a million x, each evaluated by hand-written C++, by the compiled chain, in blocks, in
// blocks with the derivatives by all parameters, and by muParser (where it is installed); and the time to
// compile a formula of 100 characters. The ratios of CPU time to the hand-written C++ follow at the end.
#include "expr/blocks/block_evaluator.h"
#include "expr/blocks/block_kernels.h"

#include <array>
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdio>
#include <map>
#include <numbers>
#include <string>
#include <string_view>
#include <vector>

#ifdef LUMOPLOT_HAVE_MUPARSER
#include <muParser.h>
#endif

namespace {

using namespace lumoplot;

constexpr int kPoints = 1'000'000;

struct TParameters {
    double b1 = 1.3, b2 = 0.21, b3 = 0.7, b4 = 2.1, b5 = 1.7, b6 = 0.4, b7 = 6.3, b8 = 2.2;
};

double Sqr(double a) {
    return a * a;
}

double Saturation(const TParameters& p, double x) {
    return p.b1 * (1 - std::exp(-p.b2 * x));
}
double Lanczos(const TParameters& p, double x) {
    return p.b1 * std::exp(-p.b2 * x) + p.b3 * std::exp(-p.b4 * x) + p.b5 * std::exp(-p.b6 * x);
}
double Gauss(const TParameters& p, double x) {
    return p.b1 * std::exp(-p.b2 * x) + p.b3 * std::exp(-Sqr((x - p.b4) / p.b5)) +
           p.b6 * std::exp(-Sqr((x - p.b7) / p.b8));
}
double Rational(const TParameters& p, double x) {
    return (p.b1 + p.b2 * x + p.b3 * x * x) / (1 + p.b4 * x + p.b5 * x * x);
}
double Seasons(const TParameters& p, double x) {
    return p.b1 + p.b2 * std::cos(2 * std::numbers::pi * x / 12) +
           p.b3 * std::sin(2 * std::numbers::pi * x / 12);
}
double Roots(const TParameters&, double x) {
    return std::sqrt(std::fabs(x)) * std::log(x + 1);
}

struct TModel {
    const char* Name;
    const char* Text;
    const char* MuText;
    double (*ByHand)(const TParameters& p, double x);
};

const TModel kModels[] = {
    {"saturation", "b1*(1-exp(-b2*x))", "b1*(1-exp(-b2*x))", &Saturation},
    {"three exps", "b1*exp(-b2*x)+b3*exp(-b4*x)+b5*exp(-b6*x)", "b1*exp(-b2*x)+b3*exp(-b4*x)+b5*exp(-b6*x)",
     &Lanczos},
    {"two peaks", "b1*exp(-b2*x)+b3*exp(-sqr((x-b4)/b5))+b6*exp(-sqr((x-b7)/b8))",
     "b1*exp(-b2*x)+b3*exp(-((x-b4)/b5)^2)+b6*exp(-((x-b7)/b8)^2)", &Gauss},
    {"rational", "(b1+b2*x+b3*x^2)/(1+b4*x+b5*x^2)", "(b1+b2*x+b3*x^2)/(1+b4*x+b5*x^2)", &Rational},
    {"seasons", "b1+b2*cos(2*pi*x/12)+b3*sin(2*pi*x/12)", "b1+b2*cos(2*_pi*x/12)+b3*sin(2*_pi*x/12)",
     &Seasons},
    {"roots", "sqrt(abs(x))*ln(x+1)", "sqrt(abs(x))*ln(x+1)", &Roots},
};

std::vector<double> MakeX() {
    std::vector<double> x(kPoints);
    for (int i = 0; i < kPoints; ++i) x[static_cast<std::size_t>(i)] = 10.0 * i / kPoints;
    return x;
}

constexpr const char* kNames[] = {"b1", "b2", "b3", "b4", "b5", "b6", "b7", "b8"};

class TWork {
public:
    explicit TWork(const TModel& model) : m_model(model), m_x(MakeX()), m_y(kPoints) {
        for (std::size_t i = 0; i < 8; ++i) m_parser.DefineVariable(kNames[i], Parameters()[i]);
        m_parser.DefineVariable("x", &m_xv);
        m_parser.AddExpression(model.Text);
    }

    std::array<double*, 8> Parameters() {
        return {&m_p.b1, &m_p.b2, &m_p.b3, &m_p.b4, &m_p.b5, &m_p.b6, &m_p.b7, &m_p.b8};
    }
    void ByHand() {
        for (std::size_t i = 0; i < m_x.size(); ++i) m_y[i] = m_model.ByHand(m_p, m_x[i]);
    }
    void ByChain() {
        for (std::size_t i = 0; i < m_x.size(); ++i) {
            m_xv = m_x[i];
            m_y[i] = m_parser.Evaluate();
        }
    }

    void ByBlocks() { TBlockEvaluator(m_parser, &m_xv).Evaluate(m_x, m_y); }
    void WithSlopes() {
        m_slopes.resize(8 * m_x.size());
        TBlockEvaluator(m_parser, &m_xv, Parameters()).EvaluateWithDerivatives(m_x, m_y, m_slopes);
    }

    const TModel& m_model;
    TParameters m_p;
    double m_xv = 0;
    TExpressionParser m_parser;
    std::vector<double> m_x;
    std::vector<double> m_y;
    std::vector<double> m_slopes;
};

template <void (TWork::*Method)()>
void RunModel(benchmark::State& state) {
    TWork work(kModels[state.range(0)]);
    for (auto _ : state) {
        (work.*Method)();
        benchmark::DoNotOptimize(work.m_y.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
    state.SetLabel(work.m_model.Name);
}

BENCHMARK(RunModel<&TWork::ByHand>)->Name("hand")->DenseRange(0, 5);
BENCHMARK(RunModel<&TWork::ByChain>)->Name("chain")->DenseRange(0, 5);
BENCHMARK(RunModel<&TWork::ByBlocks>)->Name("blocks")->DenseRange(0, 5);
BENCHMARK(RunModel<&TWork::WithSlopes>)->Name("slopes")->DenseRange(0, 5);

void Compile(benchmark::State& state) {
    const char* text = "b1*exp(-b2*x)+b3*exp(-sqr((x-b4)/b5))+b6*exp(-sqr((x-b7)/b8))+(b1+b2*x+b3*x^2)/"
                       "(1+b4*x+b5*x^2)+b8*pi";
    TWork work(kModels[0]);
    for (auto _ : state) {
        work.m_parser.ClearExpressions();
        benchmark::DoNotOptimize(work.m_parser.AddExpression(text));
    }
    state.SetLabel(std::to_string(std::string_view(text).size()) + " characters");
}
BENCHMARK(Compile)->Name("compile");

void CompileForBlocks(benchmark::State& state) {
    TWork work(kModels[2]);
    for (auto _ : state) {
        TBlockEvaluator evaluator(work.m_parser, &work.m_xv, work.Parameters());
        benchmark::DoNotOptimize(&evaluator);
    }
    state.SetLabel(work.m_model.Name);
}
BENCHMARK(CompileForBlocks)->Name("block evaluator with derivatives");

#ifdef LUMOPLOT_HAVE_MUPARSER
void RunMuParser(benchmark::State& state) {
    TWork work(kModels[state.range(0)]);
    mu::Parser parser;
    for (std::size_t i = 0; i < 8; ++i) parser.DefineVar(kNames[i], work.Parameters()[i]);
    parser.DefineVar("x", &work.m_xv);
    parser.SetExpr(work.m_model.MuText);
    for (auto _ : state) {
        for (std::size_t i = 0; i < work.m_x.size(); ++i) {
            work.m_xv = work.m_x[i];
            work.m_y[i] = parser.Eval();
        }
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
    state.SetLabel(work.m_model.Name);
}
BENCHMARK(RunMuParser)->Name("muparser")->DenseRange(0, 5);
#endif

/// The console's table, and the ratios to the hand-written C++ behind it.
class TRatioReporter : public benchmark::ConsoleReporter {
public:
    TRatioReporter() : ConsoleReporter(OO_None) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) m_times[run.benchmark_name()] = run.GetAdjustedCPUTime();
    }

    void PrintRatios() const {
        std::printf("\nratio to C++");
        for (const TModel& model : kModels) std::printf("%12s", model.Name);
        std::printf("%12s\n", "geo. mean");
        for (const char* way : {"chain", "blocks", "slopes", "muparser"}) PrintRatiosOf(way);
    }

private:
    double TimeOf(const char* way, std::size_t model) const {
        const auto time = m_times.find(std::string(way).append("/").append(std::to_string(model)));
        return time == m_times.end() ? 0 : time->second;
    }

    // Nothing for a way that was filtered out or is not built.
    void PrintRatiosOf(const char* way) const {
        for (std::size_t model = 0; model < std::size(kModels); ++model)
            if (TimeOf(way, model) == 0 || TimeOf("hand", model) == 0) return;
        double logarithms = 0;
        std::printf("%-12s", way);
        for (std::size_t model = 0; model < std::size(kModels); ++model) {
            const double ratio = TimeOf(way, model) / TimeOf("hand", model);
            logarithms += std::log(ratio);
            std::printf("%12.2f", ratio);
        }
        std::printf("%12.2f\n", std::exp(logarithms / std::size(kModels)));
    }

    std::map<std::string, double> m_times;
};

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    TRatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.PrintRatios();
    std::printf("block kernels: %s\n", (*AvailableKernels())->Name);
}
