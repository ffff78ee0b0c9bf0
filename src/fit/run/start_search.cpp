#include "fit/run/start_search.h"

#include "fit/procedures/variable_metric.h"
#include "fit/run/condensed_points.h"
#include "fit/run/fit_judgement.h"
#include "fit/run/scattered_starts.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace lumoplot {
namespace {

constexpr char kSearchCaption[] = "Trying Other Starts....";
constexpr std::size_t kMostPoints = 2000;
constexpr int kIterationsOfRun = 25;
constexpr double kToleranceOfRun = 1e-6;
constexpr double kAlike = 0.05;       // relative difference of parameters
constexpr double kSameMinimum = 1e-4; // relative difference of sums of squares
constexpr double kEqual = 1e-6;
constexpr double kFarLarger = 100; // than the largest Y

std::vector<TNarrowRange> RangesOf(const TFitPoints& ordered, const std::vector<TNarrowPeak>& peaks) {
    std::vector<TNarrowRange> ranges;
    for (const TNarrowPeak& peak : peaks) {
        const std::size_t half = (peak.Count + 1) / 2;
        const std::size_t last = std::min(peak.Center + half, ordered.X.size() - 1);
        const double width = ordered.X[last] - ordered.X[peak.Center - std::min(peak.Center, half)];
        if (width > 0) ranges.push_back({ordered.X[peak.Center], width});
    }
    return ranges;
}

/// Shows the position of the search whatever the runs within it report, and ends them when the time is up.
class TSearchProgress final : public TProgress {
public:
    TSearchProgress(TProgress& outer, std::chrono::steady_clock::time_point end)
        : m_outer(outer), m_end(end) {}
    void Begin(const std::string& caption, std::int64_t minimum, std::int64_t maximum) override {
        m_outer.Begin(caption, minimum, maximum);
    }
    [[nodiscard]] bool StepTo(std::int64_t) override {
        return m_outer.StepTo(Position) && std::chrono::steady_clock::now() < m_end;
    }
    std::int64_t Position = 0;

private:
    TProgress& m_outer;
    std::chrono::steady_clock::time_point m_end;
};

class TSearch {
public:
    TSearch(const TFitTask& task, const TFitPoints& points, std::chrono::steady_clock::time_point end)
        : m_progress(task.Progress, end), m_task{task.Fit, task.Varied, m_progress, {}},
          m_start(ValuesOf(task.Varied)) {
        // Few points, that a place costs the same however many there are.
        const TFitPoints ordered = InOrderOfX(points);
        const std::vector<TNarrowPeak> peaks = NarrowPeaksOf(ordered);
        m_points = Condensed(ordered, peaks, kMostPoints, TNeighbours::Middle);
        m_narrow = RangesOf(ordered, peaks);
    }

    std::vector<TFoundStart> Run(const TSearchLimits& limits, const TVector& known) {
        try {
            m_progress.Begin(kSearchCaption, 0, limits.Places + limits.Runs);
            if (!known.empty()) RunFrom(known);
            for (TFoundStart& found : m_found) found.IsKnown = true;
            SetValues(m_start);
            for (int round = 0; round < limits.Rounds; ++round) {
                Scan(limits.Places / limits.Rounds);
                RunFromBest(limits.Runs / limits.Rounds);
            }
        } catch (const TFitCancelled&) {
            // What is there is what there is.
        }
        SetValues(m_start);
        std::ranges::sort(m_found, {}, &TFoundStart::Rss);
        return std::move(m_found);
    }

private:
    static TVector ValuesOf(const std::vector<TDBLParameter*>& parameters) {
        TVector values;
        for (const TDBLParameter* parameter : parameters) values.push_back(parameter->Value());
        return values;
    }

    void SetValues(const TVector& values) {
        for (std::size_t i = 0; i < values.size(); ++i) *m_task.Varied[i]->ValueRef() = values[i];
    }

    // At first anywhere, then at places that share something with the best minimum.
    void Scan(int places) {
        SetValues(m_start);
        TFitProblem problem(m_task.Fit, m_task.Varied, m_points, TLinearPart::Project, m_progress, {});
        if (problem.Size() == 0) return; // the one minimum is found already
        if (!m_starts) m_starts.emplace(m_task.Fit, problem.Free(), m_points, m_narrow);
        const TVector best = BestOf(problem);
        m_free.clear();
        for (const TDBLParameter* parameter : problem.Free())
            m_free.push_back(static_cast<std::size_t>(std::ranges::find(m_task.Varied, parameter) -
                                                      m_task.Varied.begin()));
        m_places.clear();
        for (int i = 0; i < places; ++i, ++m_progress.Position) {
            TVector place = best.empty() ? m_starts->Next() : m_starts->NextLike(best);
            for (int j = 0; j < problem.Size(); ++j) place[static_cast<std::size_t>(j)] /= problem.ScaleOf(j);
            const double value = problem.Value(place);
            if (std::isfinite(value)) m_places.push_back({ValuesOf(m_task.Varied), value});
        }
        std::ranges::sort(m_places, {}, &TFoundStart::Rss);
    }

    // The parameters of a place, at the best minimum that the search has found itself.
    TVector BestOf(const TFitProblem& problem) {
        const TFoundStart* best = nullptr;
        for (const TFoundStart& found : m_found)
            if (m_hasScanned &&
                (!best || std::pair(found.Cancels, found.Rss) < std::pair(best->Cancels, best->Rss)))
                best = &found;
        m_hasScanned = true;
        if (!best) return {};
        SetValues(best->Values);
        return ValuesOf(problem.Free());
    }

    // Places that resemble one before would end where that did.
    void RunFromBest(int runs) {
        std::vector<TVector> done;
        for (const TFoundStart& place : m_places) {
            if (static_cast<int>(done.size()) == runs) return;
            if (std::ranges::any_of(done, [&](const TVector& other) { return IsAlike(other, place.Values); }))
                continue;
            done.push_back(place.Values);
            RunFrom(place.Values);
        }
    }

    bool IsAlike(const TVector& a, const TVector& b) const {
        for (const std::size_t i : m_free)
            if (std::abs(a[i] - b[i]) > kAlike * std::max(std::abs(a[i]), std::abs(b[i]))) return false;
        return true;
    }

    void RunFrom(const TVector& values) {
        ++m_progress.Position;
        SetValues(values);
        TFitProblem problem(m_task.Fit, m_task.Varied, m_points, TLinearPart::Project, m_progress, {});
        if (problem.Size() == 0) return;
        problem.SetIterationLimit(kIterationsOfRun);
        TVariableMetric().Minimise(problem, problem.Start(), kToleranceOfRun);
        problem.StoreBest();
        if (!std::isfinite(problem.BestValue())) return;
        const double rss = 2 * problem.BestValue();
        const auto same = std::ranges::find_if(m_found, [&](const TFoundStart& found) {
            return std::abs(found.Rss - rss) <= kSameMinimum * rss;
        });
        const int count = m_hasScanned ? 1 : 0;
        const TFoundStart found{ValuesOf(m_task.Varied), rss, false, count, HasCancellingTerms(problem)};
        if (same == m_found.end()) return m_found.push_back(found);
        same->Count += count;
        if (IsSmoother(found, *same))
            *same = {found.Values, rss, false, same->Count, found.Cancels};
        else if (rss < same->Rss && !IsSmoother(*same, found))
            *same = {found.Values, rss, same->IsKnown, same->Count, found.Cancels};
        SetValues(found.Values);
    }

    // As good, and without wiggles between the points: a sine may be of many frequencies.
    bool IsSmoother(const TFoundStart& one, const TFoundStart& other) {
        if (std::abs(one.Rss - other.Rss) > kEqual * other.Rss || IsAlike(one.Values, other.Values))
            return false;
        SetValues(other.Values);
        const double variation = VariationBetween(m_task.Fit, m_points);
        SetValues(one.Values);
        return VariationBetween(m_task.Fit, m_points) < kSmoother * variation;
    }

    // What a linear parameter adds to the model is what is missing without it.
    bool HasCancellingTerms(const TFitProblem& problem) const {
        const std::vector<TDBLParameter*> free = problem.Free();
        TBlockEvaluator model(m_task.Fit, m_task.Fit.XRef());
        std::vector<double> whole(m_points.X.size());
        std::vector<double> without(whole.size());
        model.Evaluate(m_points.X, whole);
        double largest = 0;
        for (const double y : m_points.Y) largest = std::max(largest, std::abs(y));
        for (TDBLParameter* parameter : m_task.Varied) {
            if (std::ranges::find(free, parameter) != free.end()) continue;
            const double value = std::exchange(*parameter->ValueRef(), 0.0);
            model.Evaluate(m_points.X, without);
            *parameter->ValueRef() = value;
            for (std::size_t i = 0; i < whole.size(); ++i)
                if (std::abs(whole[i] - without[i]) > kFarLarger * largest) return true;
        }
        return false;
    }

    TFitPoints m_points;
    std::vector<TNarrowRange> m_narrow;
    TSearchProgress m_progress;
    TFitTask m_task;
    TVector m_start;
    std::optional<TScatteredStarts> m_starts;
    std::vector<std::size_t> m_free; ///< places of the parameters that are not projected out
    bool m_hasScanned = false;
    std::vector<TFoundStart> m_places;
    std::vector<TFoundStart> m_found;
};

} // namespace

std::vector<TFoundStart> SearchStarts(const TFitTask& task, const TFitPoints& points,
                                      const TSearchLimits& limits, const TVector& known,
                                      std::chrono::steady_clock::time_point end) {
    return TSearch(task, points, end).Run(limits, known);
}

} // namespace lumoplot
