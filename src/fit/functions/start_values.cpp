#include "fit/functions/start_values.h"

#include "fit/functions/data_shape.h"
#include "fit/functions/ready_functions.h"
#include "fit/procedures/fit_problem.h"
#include "fit/run/fit_check.h"
#include "fit/run/fit_points.h"
#include "fit/run/start_search.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <numbers>

namespace lumoplot {
namespace {

constexpr char kStartCaption[] = "Finding Start Values....";
constexpr std::size_t kMostEstimated = 200; // points
constexpr std::size_t kMostTried = 12000;   // places
constexpr TSearchLimits kSearch = {2000, 40, 4};
constexpr std::chrono::seconds kMostTime{1};

std::vector<double> Powers(double low, double high, int count) {
    std::vector<double> values;
    if (!(low > 0) || !(high >= low)) return values;
    for (int i = 0; i < count; ++i)
        values.push_back(low * std::pow(high / low, i / std::max(1.0, count - 1.0)));
    return values;
}

// The values worth trying for a parameter.
std::vector<double> CandidatesFor(TParameterRole role, const TDataShape& shape) {
    const double span = shape.Span() > 0 ? shape.Span() : 1;
    switch (role) {
    case TParameterRole::Place: {
        std::vector<double> places = shape.Places;
        places.push_back(shape.Left - 0.1 * span);
        return places;
    }
    case TParameterRole::Width: return shape.Widths;
    case TParameterRole::Scale:
        return Powers(shape.SmallestPositive > 0 ? std::max(shape.SmallestPositive, shape.Right * 1e-6) : 0,
                      shape.Right * 2, 16);
    case TParameterRole::Rate: return Powers(0.1 / span, 100 / span, 16);
    case TParameterRole::Frequency: return shape.Frequencies;
    case TParameterRole::Phase: {
        std::vector<double> turns;
        for (int i = 0; i < 4; ++i) turns.push_back(i * std::numbers::pi / 4); // the amplitude has both signs
        return turns;
    }
    case TParameterRole::Exponent: return {0.3, 0.6, 1, 1.5, 2.2, 3.5, 6};
    case TParameterRole::Share: return {0.15, 0.35, 0.6, 0.85};
    case TParameterRole::Energy: return Powers(1e3, 3e5, 24);
    default: return {};
    }
}

// Means have less noise, but no fast oscillation.
TNeighbours NeighboursFor(const TReadyFunction& function) {
    const bool oscillates = std::ranges::any_of(function.Parameters, [](const TReadyParameter& parameter) {
        return parameter.Role == TParameterRole::Frequency;
    });
    return oscillates ? TNeighbours::Middle : TNeighbours::Mean;
}

/// Tries all combinations of candidates, what the equation is linear in being put to its best.
class TEstimate {
public:
    TEstimate(TCurFit& fit, const std::vector<TDBLParameter*>& varied, const TReadyFunction& function,
              const TFitPoints& points, TProgress& progress)
        : m_ordered(InOrderOfX(points)), m_peaks(NarrowPeaksOf(m_ordered)),
          m_points(Condensed(m_ordered, m_peaks, kMostEstimated, NeighboursFor(function))),
          m_progress(progress), m_problem(fit, varied, m_points, TLinearPart::Project, progress, {}) {
        m_problem.UseOneThread();
        const TDataShape shape = ShapeOf(m_ordered, m_peaks);
        std::size_t combinations = 1;
        for (const TDBLParameter* parameter : m_problem.Free()) {
            m_candidates.push_back({parameter->Value()});
            for (const TReadyParameter& ready : function.Parameters)
                if (ready.Name == parameter->Name()) Take(CandidatesFor(ready.Role, shape));
            combinations *= m_candidates.back().size();
        }
        while (combinations > kMostTried) combinations = DropOne();
        progress.Begin(kStartCaption, 0, static_cast<std::int64_t>(combinations));
    }

    /// The sum of squares of the best; infinite where none has a value everywhere.
    double Run() {
        TVector place(m_candidates.size());
        try {
            Try(place, 0);
        } catch (const TFitCancelled&) {
            // The best so far is a start, too.
        }
        if (!std::isfinite(m_problem.BestValue())) return m_problem.BestValue();
        m_problem.StoreBest();
        return 2 * m_problem.BestValue();
    }

private:
    void Take(std::vector<double> candidates) {
        if (!candidates.empty()) m_candidates.back() = std::move(candidates);
    }

    // The last of the longest list.
    std::size_t DropOne() {
        auto longest = std::ranges::max_element(m_candidates, {}, &std::vector<double>::size);
        longest->pop_back();
        std::size_t combinations = 1;
        for (const auto& list : m_candidates) combinations *= list.size();
        return combinations;
    }

    void Try(TVector& place, std::size_t index) {
        if (index == place.size()) {
            if (!m_progress.StepTo(++m_tried)) throw TFitCancelled();
            m_problem.Value(place);
            return;
        }
        for (const double candidate : m_candidates[index]) {
            place[index] = candidate / m_problem.ScaleOf(static_cast<int>(index));
            Try(place, index + 1);
        }
    }

    TFitPoints m_ordered;
    std::vector<TNarrowPeak> m_peaks;
    TFitPoints m_points;
    TProgress& m_progress;
    TFitProblem m_problem;
    std::vector<std::vector<double>> m_candidates;
    std::int64_t m_tried = 0;
};

/// Puts the values back unless they are to be kept.
class TKeptValues {
public:
    explicit TKeptValues(std::vector<TDBLParameter*> varied) : m_varied(std::move(varied)) {
        for (const TDBLParameter* parameter : m_varied) m_values.push_back(parameter->Value());
    }
    void PutBack() {
        for (std::size_t i = 0; i < m_varied.size(); ++i) *m_varied[i]->ValueRef() = m_values[i];
    }

private:
    std::vector<TDBLParameter*> m_varied;
    TVector m_values;
};

/// Remembers that the user has cancelled.
class TNotingProgress final : public TProgress {
public:
    explicit TNotingProgress(TProgress& outer) : m_outer(outer) {}
    void Begin(const std::string& caption, std::int64_t minimum, std::int64_t maximum) override {
        m_outer.Begin(caption, minimum, maximum);
    }
    [[nodiscard]] bool StepTo(std::int64_t position) override {
        WasCancelled = !m_outer.StepTo(position);
        return !WasCancelled;
    }
    bool WasCancelled = false;

private:
    TProgress& m_outer;
};

double Searched(TCurFit& fit, const std::vector<TDBLParameter*>& varied, const TFitPoints& points,
                TProgress& progress) {
    const TFitTask task{fit, varied, progress, {}};
    const std::vector<TFoundStart> found =
        SearchStarts(task, points, kSearch, {}, std::chrono::steady_clock::now() + kMostTime);
    if (found.empty()) return std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < varied.size(); ++i) *varied[i]->ValueRef() = found.front().Values[i];
    return found.front().Rss;
}

// With all parameters linear there is one place.
double Solved(TCurFit& fit, const std::vector<TDBLParameter*>& varied, const TFitPoints& points,
              TProgress& progress) {
    TFitProblem problem(fit, varied, points, TLinearPart::Project, progress, {});
    if (problem.Size() > 0) return std::numeric_limits<double>::quiet_NaN();
    problem.Value(problem.Start());
    problem.StoreBest();
    return 2 * problem.BestValue();
}

} // namespace

TStartValues FindStartValues(TCurFit& fit, std::span<const double> x, std::span<const double> y,
                             const TFitRun& run) {
    const std::vector<TDBLParameter*> varied = CheckedParameters(fit);
    const TFitPoints points = PointsBetweenMargins(fit, x, y, run.Errors);
    TSilentProgress silent;
    TNotingProgress progress(run.Progress ? *run.Progress : silent);
    TKeptValues kept(varied);
    TStartValues start;
    start.Rss = std::numeric_limits<double>::infinity();
    try {
        if (const double rss = Solved(fit, varied, points, progress); !std::isnan(rss)) {
            start.Rss = rss;
        } else if (const TReadyFunction* function = ReadyFunctionOf(fit)) {
            start = {TStartSource::Shape, TEstimate(fit, varied, *function, points, progress).Run()};
        }
        if (!std::isfinite(start.Rss))
            start = {TStartSource::Search, Searched(fit, varied, points, progress)};
    } catch (...) {
        kept.PutBack();
        throw;
    }
    if (!std::isfinite(start.Rss)) {
        kept.PutBack();
        if (progress.WasCancelled) return start;
        throw EFitError(
            "The equation has no value at all points wherever it was tried; set start values by hand");
    }
    fit.Changed(true);
    return start;
}

} // namespace lumoplot
