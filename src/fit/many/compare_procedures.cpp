#include "fit/many/compare_procedures.h"

#include "fit/run/fit_points.h"
#include "fit/run/scattered_starts.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

constexpr char kCompareCaption[] = "Comparing Procedures....";
constexpr double kSameEndOfRuns = 1e-4; // relative difference of sums of squares
constexpr int kProcedures = 4;

/// Shows how many of the runs are done, whatever a run reports.
class TRunsProgress final : public TProgress {
public:
    explicit TRunsProgress(TProgress& outer) : m_outer(outer) {}
    void Begin(const std::string&, std::int64_t, std::int64_t) override {}
    [[nodiscard]] bool StepTo(std::int64_t) override {
        IsCancelled = IsCancelled || !m_outer.StepTo(Done);
        return !IsCancelled;
    }
    std::int64_t Done = 0;
    bool IsCancelled = false;

private:
    TProgress& m_outer;
};

// The runs that have converged, by their sums of squares.
void NumberMinima(std::vector<TComparedRun>& runs) {
    std::vector<TComparedRun*> found;
    for (TComparedRun& run : runs) {
        run.Minimum = 0;
        if (run.Trouble.empty() && run.End == TFitEnd::Converged) found.push_back(&run);
    }
    std::ranges::stable_sort(found, {}, &TComparedRun::Rss);
    int number = 0;
    double last = std::numeric_limits<double>::quiet_NaN();
    for (TComparedRun* run : found) {
        if (!(run->Rss - last <= kSameEndOfRuns * run->Rss)) {
            ++number;
            last = run->Rss;
        }
        run->Minimum = number;
    }
}

class TComparer {
public:
    TComparer(const TCurFit& fit, std::span<const double> x, std::span<const double> y, const TFitRun& run)
        : m_x(x), m_y(y), m_run(run), m_outer(run.Progress ? *run.Progress : m_silent), m_progress(m_outer) {
        m_fit.Assign(&fit);
        m_varied = CheckedParameters(m_fit);
        m_run.Progress = &m_progress;
        m_run.Starts = TFitStarts::Given;
        m_run.SearchRuns = 0;
        m_run.OnIteration = {};
    }

    std::vector<TComparedRun> Run(const TCompareOptions& options) {
        m_outer.Begin(kCompareCaption, 0, static_cast<std::int64_t>(options.Starts) * kProcedures);
        const TFitPoints points = PointsBetweenMargins(m_fit, m_x, m_y, m_run.Errors);
        TVector start;
        for (const TDBLParameter* parameter : m_varied) start.push_back(parameter->Value());
        TScatteredStarts scattered(m_fit, m_varied, points);
        std::vector<TComparedRun> runs;
        for (int number = 0; number < options.Starts; ++number) {
            for (int procedure = 0; procedure < kProcedures; ++procedure) {
                TComparedRun one = RunFrom(start, TFitProcedure{procedure});
                if (m_progress.IsCancelled) return runs;
                one.Start = number;
                runs.push_back(std::move(one));
                ++m_progress.Done;
                NumberMinima(runs);
                if (options.OnRun) options.OnRun(runs);
            }
            start = scattered.Next();
        }
        return runs;
    }

private:
    TComparedRun RunFrom(const TVector& start, TFitProcedure procedure) {
        for (std::size_t i = 0; i < start.size(); ++i) *m_varied[i]->ValueRef() = start[i];
        m_fit.SetProcType(procedure);
        TComparedRun one;
        one.Procedure = procedure;
        one.Rss = std::numeric_limits<double>::quiet_NaN();
        const auto begin = std::chrono::steady_clock::now();
        try {
            const TFitResult result = RunFit(m_fit, m_x, m_y, m_run);
            one.End = result.End;
            one.Rss = result.Rss;
            one.Iterations = result.Iterations;
            one.Evaluations = result.Evaluations;
        } catch (const EFitError& error) {
            one.Trouble = error.what();
        }
        one.Seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        for (const TDBLParameter* parameter : m_varied) one.Values.push_back(parameter->Value());
        return one;
    }

    TCurFit m_fit;
    std::span<const double> m_x;
    std::span<const double> m_y;
    TFitRun m_run;
    TSilentProgress m_silent;
    TProgress& m_outer;
    TRunsProgress m_progress;
    std::vector<TDBLParameter*> m_varied;
};

} // namespace

std::vector<TComparedRun> CompareProcedures(const TCurFit& fit, std::span<const double> x,
                                            std::span<const double> y, const TFitRun& run,
                                            const TCompareOptions& options) {
    return TComparer(fit, x, y, run).Run(options);
}

} // namespace lumoplot
