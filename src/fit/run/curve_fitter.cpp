#include "fit/run/curve_fitter.h"

#include "fit/procedures/small_solve.h"
#include "fit/run/fit_check.h"
#include "fit/run/fit_judgement.h"
#include "fit/run/fit_points.h"
#include "fit/run/fit_remarks.h"
#include "fit/run/fit_statistics.h"
#include "fit/run/start_search.h"
#include "support/number_text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace lumoplot {
namespace {

constexpr char kCaption[] = "Fitting Data....";
constexpr double kNotKnown = std::numeric_limits<double>::quiet_NaN();
constexpr int kMostRounds = 4;
constexpr std::chrono::seconds kSearchTime{1};
constexpr TSearchLimits kRescue = {8000, 60, 6};
constexpr TSearchLimits kWide = {5000, 100, 1}; // where the end is doubtful after that, too
constexpr int kSearchShare = 10;                // times the evaluations of a run that ended well
constexpr int kLeastPlaces = 100;               // looked at all the same
constexpr int kMostPlaces = 1000;
constexpr int kPlacesPerRun = 50;
constexpr int kMostFinished = 4; // of the places found
constexpr int kMostReweightings = 100;
constexpr double kReweighted = 1e-9;         // relative change of parameters
constexpr std::size_t kMostMirrored = 20000; // points
constexpr double kSameEnd = 1e-4;            // relative difference of sums of squares
constexpr double kClearly = 1e-6;            // difference of logarithms of sums of squares
constexpr double kWorthSense = 1.4;          // by which that of an end with sense may be higher

/// The rows of R⁻¹, each of unit length, and their lengths.
std::vector<TVector> UnitRowsOfInverse(const TMatrix& triangle, TVector& lengths) {
    const auto size = static_cast<std::size_t>(triangle.Size());
    std::vector<TVector> rows(size, TVector(size));
    for (std::size_t column = 0; column < size; ++column) {
        TVector unit(size);
        unit[column] = 1;
        const TVector solved = BackSolved(triangle, std::move(unit));
        for (std::size_t row = 0; row < size; ++row) rows[row][column] = solved[row];
    }
    for (TVector& row : rows) {
        double largest = 0;
        for (const double element : row) largest = std::max(largest, std::abs(element));
        for (double& element : row) element /= largest;
        const double length = Norm(row);
        for (double& element : row) element /= length;
        lengths.push_back(length * largest);
    }
    return rows;
}

/// From R⁻¹R⁻ᵀ times the residual variance; not-a-number for parameters that a bound holds.
void TakeErrors(TFitResult& result, const TLocalFit& found, const std::vector<TDBLParameter*>& varied,
                double deviation) {
    result.Errors.assign(varied.size(), kNotKnown);
    result.Correlations = TMatrix(static_cast<int>(varied.size()));
    for (int i = 0; i < result.Correlations.Size(); ++i)
        std::ranges::fill(result.Correlations.Column(i), kNotKnown);
    if (!found.IsDetermined || found.Triangle.Size() == 0) return;
    TVector lengths;
    const std::vector<TVector> rows = UnitRowsOfInverse(found.Triangle, lengths);
    std::vector<int> places;
    for (const TDBLParameter* free : found.Free)
        places.push_back(static_cast<int>(std::ranges::find(varied, free) - varied.begin()));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        result.Errors[static_cast<std::size_t>(places[i])] = lengths[i] * deviation;
        for (std::size_t j = 0; j < rows.size(); ++j)
            result.Correlations(places[i], places[j]) =
                i == j ? 1 : std::clamp(Dot(rows[i], rows[j]), -1.0, 1.0);
    }
}

/// Where a run ended, and the points that took part.
struct TAttempt {
    TLocalFit Found;
    TFitPoints Points;

    bool HasSense() const { return Found.End == TFitEnd::Converged; }
};

class TFitter {
public:
    TFitter(TCurFit& fit, const TFitRun& run)
        : m_fit(fit), m_run(run), m_progress(run.Progress ? *run.Progress : m_silent),
          m_varied(CheckedParameters(fit)) {
        for (TDBLParameter* parameter : m_varied) {
            m_given.push_back(parameter->Value());
            m_start.push_back(std::clamp(parameter->Value(), parameter->Min(), parameter->Max()));
        }
        SetValues(m_start);
        for (int i = 1; i <= fit.NParams(); ++i)
            if (fit.Parameter(i)->Vary()) m_result.Varied.push_back(i);
    }

    TFitResult Fit(const TFitPoints& points) {
        if (points.X.size() < m_varied.size())
            throw EFitError("There are fewer points than varied parameters");
        m_progress.Begin(kCaption, 0, m_fit.IterMax());
        std::optional<EFitError> trouble;
        try {
            FitFromStart(points);
        } catch (const EFitError& error) {
            if (m_run.Starts == TFitStarts::Given) throw;
            trouble = error;
        }
        TryMirrored(points);
        const bool wasCancelled = m_best && m_best->Found.End == TFitEnd::Cancelled;
        std::optional<TAttempt> own;
        if (m_run.Starts == TFitStarts::Offered && m_best && m_best->HasSense()) own = m_best;
        if (m_run.Starts != TFitStarts::Given && !wasCancelled) LookElsewhere(points);
        if (m_isFromElsewhere) TryMirrored(points);
        if (own && m_isFromElsewhere) Offer(*own);
        if (!m_best) throw *trouble;
        if (m_run.Robust != TRobust::None && m_best->Found.End != TFitEnd::Cancelled) FitRobustly();
        Summarise(points);
        return std::move(m_result);
    }

    void PutBack() { SetValues(m_given); }

    /// `all` are the points between the margins, with and without a standard error.
    void NoteWithoutError(const TFitPoints& all, const TFitPoints& points) {
        m_withoutError = all.X.size() - points.X.size();
        if (m_withoutError == 0) return;
        m_result.Remarks.push_back(std::to_string(m_withoutError) + " of " + std::to_string(all.X.size()) +
                                   (m_withoutError == 1 ? " points has" : " points have") +
                                   " no standard error above 0, the first at " +
                                   FormatShortest(FirstLeftOut(points, all)) + "; " +
                                   (m_withoutError == 1 ? "it was" : "they were") + " left out.");
    }

private:
    void SetValues(const TVector& values) {
        for (std::size_t i = 0; i < values.size(); ++i) *m_varied[i]->ValueRef() = values[i];
    }

    TFitTask Task() const { return {m_fit, m_varied, m_progress, m_run.OnIteration}; }

    void Offer(const TAttempt& own) {
        m_result.BetterValues = m_best->Found.Values;
        m_result.BetterRss = m_best->Found.Rss;
        m_result.Remarks.push_back("A better minimum was found from other starts.");
        m_best = own;
        m_isFromElsewhere = false;
        SetValues(own.Found.Values);
    }

    // The points without a value at the start may have one at the end: then they
    // take part as well.
    void FitFromStart(const TFitPoints& points) {
        TFitPoints usable = PointsWithValue(m_fit, points);
        Check(usable, points);
        for (int round = 1;; ++round) {
            const std::size_t count = usable.X.size();
            m_best = AttemptWith(std::move(usable));
            if (count == points.X.size() || round == kMostRounds || m_best->Found.End == TFitEnd::Cancelled)
                return;
            usable = PointsWithValue(m_fit, points);
            if (usable.X.size() <= count) return;
        }
    }

    void Check(const TFitPoints& usable, const TFitPoints& points) const {
        if (usable.X.empty()) throw EFitError("The equation has no value at any point");
        if (usable.X.size() < m_varied.size())
            throw EFitError("The equation has a value at " + std::to_string(usable.X.size()) + " of " +
                            std::to_string(points.X.size()) + " points only");
    }

    TAttempt AttemptWith(TFitPoints points) {
        TAttempt attempt{FitLocally(Task(), points, m_fit.ProcType()), std::move(points)};
        attempt.Found.End = Judged(attempt.Found, m_fit, attempt.Points);
        m_result.Iterations += attempt.Found.Iterations;
        m_result.Evaluations += attempt.Found.Evaluations;
        return attempt;
    }

    // From other starts: thoroughly where the first run has come to nothing, else
    // for a tenfold of its work.
    void LookElsewhere(const TFitPoints& points) {
        const auto end = m_run.SearchRuns > 0 ? std::chrono::steady_clock::time_point::max()
                                              : std::chrono::steady_clock::now() + kSearchTime;
        const bool hasSense = m_best && m_best->HasSense() && m_best->Points.X.size() == points.X.size();
        const bool isThorough = !hasSense || IsDoubtful(points);
        SearchFrom(points, LimitsOfSearch(isThorough), end, hasSense);
        if (isThorough && m_run.SearchRuns == 0 && IsDoubtful(points))
            SearchFrom(points, kWide, end, hasSense);
    }

    bool IsDoubtful(const TFitPoints& points) {
        return !(m_best && m_best->HasSense()) || MissesCourse(m_fit, m_best->Found, points);
    }

    void SearchFrom(const TFitPoints& points, const TSearchLimits& limits,
                    std::chrono::steady_clock::time_point end, bool hasSense) {
        SetValues(m_start);
        const std::vector<TFoundStart> found =
            SearchStarts(Task(), points, limits, m_best ? m_best->Found.Values : TVector(), end);
        int finished = 0;
        for (const TFoundStart& start : found) {
            if (start.IsKnown && hasSense) break;
            if (++finished > kMostFinished) break;
            if (TryFrom(start.Values, points)) break;
        }
        SetValues(m_best ? m_best->Found.Values : m_start);
        if (m_run.SearchRuns > 0 && m_best && !found.empty()) CountStarts(found);
    }

    void CountStarts(const std::vector<TFoundStart>& found) {
        int same = 0;
        int all = 0;
        for (const TFoundStart& start : found) {
            all += start.Count;
            if (start.Rss <= found.front().Rss * (1 + kSameEnd)) same += start.Count;
        }
        m_result.Remarks.push_back(std::to_string(same) + " of " + std::to_string(all) +
                                   " scattered starts end in the best minimum found.");
    }

    TSearchLimits LimitsOfSearch(bool isThorough) const {
        if (m_run.SearchRuns > 0) return {m_run.SearchRuns * kPlacesPerRun, m_run.SearchRuns, 1};
        return isThorough ? kRescue : LimitsOfCheck();
    }

    TSearchLimits LimitsOfCheck() const {
        const int places = std::clamp(kSearchShare * m_best->Found.Evaluations, kLeastPlaces, kMostPlaces);
        return {places / 2, places / 2 / kPlacesPerRun + 1};
    }

    // True when there is a better end now, and one with sense.
    bool TryFrom(const TVector& values, const TFitPoints& points) {
        SetValues(values);
        if (PointsWithValue(m_fit, points).X.size() < points.X.size()) return false;
        try {
            TAttempt attempt = AttemptWith(points);
            if (attempt.Found.End == TFitEnd::Cancelled || !IsBetter(attempt)) return false;
            m_best = std::move(attempt);
            m_isFromElsewhere = true;
        } catch (const EFitError&) {
            return false;
        }
        return m_best->HasSense();
    }

    bool IsBetter(const TAttempt& attempt) {
        if (!m_best) return true;
        const double rss = attempt.Found.LogRss();
        const double best = m_best->Found.LogRss();
        if (attempt.HasSense() && m_best->Points.X.size() < attempt.Points.X.size()) return true;
        if (attempt.HasSense() != m_best->HasSense())
            return attempt.HasSense() ? rss <= best + kWorthSense : rss + kWorthSense < best;
        return rss < best - kClearly || (rss <= best + kClearly && IsSmoother(attempt));
    }

    bool IsSmoother(const TAttempt& attempt) {
        if (m_run.Starts == TFitStarts::Offered) return false;
        SetValues(m_best->Found.Values);
        const double variation = VariationBetween(m_fit, attempt.Points);
        SetValues(attempt.Found.Values);
        return VariationBetween(m_fit, attempt.Points) < kSmoother * variation;
    }

    // Two places may be one and the same curve, as a width that is only squared: that with the signs of the
    // start is what the user means.
    void TryMirrored(const TFitPoints& points) {
        if (m_run.Starts == TFitStarts::Given || !m_best || !m_best->HasSense()) return;
        const TVector values = m_best->Found.Values;
        const std::vector<std::size_t> turned = TurnedSigns(values);
        if (turned.empty() || points.X.size() > kMostMirrored) return;
        TVector mirrored = values;
        for (const std::size_t i : turned) mirrored[i] = -values[i];
        SetValues(mirrored);
        if (PointsWithValue(m_fit, points).X.size() == points.X.size()) {
            TAttempt attempt = AttemptWith(points);
            if (attempt.HasSense() && attempt.Found.LogRss() <= m_best->Found.LogRss() + kClearly &&
                TurnedSigns(attempt.Found.Values).size() < turned.size())
                m_best = std::move(attempt);
        }
        SetValues(m_best->Found.Values);
    }

    // The parameters that have another sign than at the start; those that the model is linear in may.
    std::vector<std::size_t> TurnedSigns(const TVector& values) {
        std::vector<std::size_t> turned;
        for (std::size_t i = 0; i < values.size(); ++i)
            if (values[i] * m_start[i] < 0 && -values[i] >= m_varied[i]->Min() &&
                -values[i] <= m_varied[i]->Max())
                turned.push_back(i);
        if (turned.empty()) return turned;
        const TFitPoints few{{m_best->Points.X.front()}, {m_best->Points.Y.front()}, {}};
        const auto free = TFitProblem(m_fit, m_varied, few, TLinearPart::Project, m_progress, {}).Free();
        std::erase_if(turned,
                      [&](std::size_t i) { return std::ranges::find(free, m_varied[i]) == free.end(); });
        return turned;
    }

    // Iteratively reweighted least squares.
    void FitRobustly() {
        const TFitPoints plain = m_best->Points;
        for (int i = 0; i < kMostReweightings; ++i) {
            const TVector before = m_best->Found.Values;
            SetValues(before);
            const std::vector<double> residuals = ResidualsOf(m_fit, plain);
            const std::vector<double> weights = RobustWeights(m_run.Robust, residuals, m_varied.size());
            TFitPoints points = plain;
            points.Weights.resize(weights.size(), 1);
            for (std::size_t k = 0; k < weights.size(); ++k) points.Weights[k] *= std::sqrt(weights[k]);
            m_best = AttemptWith(std::move(points));
            m_robustDeviation = RobustDeviation(m_run.Robust, residuals, m_varied.size());
            m_result.Outliers = static_cast<std::size_t>(
                std::ranges::count_if(weights, [](double w) { return w < kOutlierWeight; }));
            if (m_best->Found.End == TFitEnd::Cancelled || !HasChanged(before)) return;
        }
    }

    bool HasChanged(const TVector& before) const {
        for (std::size_t i = 0; i < before.size(); ++i) {
            const double value = m_best->Found.Values[i];
            if (std::abs(value - before[i]) > kReweighted * std::max(std::abs(value), std::abs(before[i])))
                return true;
        }
        return false;
    }

    void Summarise(const TFitPoints& points) {
        TLocalFit& found = m_best->Found;
        if (found.End != TFitEnd::Converged && found.End != TFitEnd::Cancelled &&
            found.End != TFitEnd::Pole && m_run.Starts != TFitStarts::Given)
            FindRunaway();
        SetValues(found.Values);
        m_result.End = found.End;
        m_result.PointsUsed = m_best->Points.X.size();
        m_result.PointsLeftOut = points.X.size() - m_result.PointsUsed + m_withoutError;
        m_result.Rss = found.Rss;
        const std::size_t freedom = m_result.PointsUsed - m_varied.size();
        m_result.ResidualSD =
            freedom > 0 ? std::sqrt(found.ScaledRss / static_cast<double>(freedom)) / found.ResidualScale
                        : kNotKnown;
        if (m_robustDeviation) m_result.ResidualSD = *m_robustDeviation;
        const double about = SumAboutLine(m_best->Points, found.ResidualScale);
        m_result.RSquared = about > 0 ? 1 - found.ScaledRss / about : kNotKnown;
        const bool isAbsolute = !m_run.Errors.empty() && m_run.ErrorSource == TErrorSource::Points;
        TakeErrors(m_result, found, m_varied, isAbsolute ? 1 : m_result.ResidualSD);
        m_result.Quality = QualityOf(ResidualsByX(m_fit, m_best->Points), m_result.Rss, m_result.RSquared,
                                     static_cast<int>(m_varied.size()));
        if (m_run.Errors.empty()) m_result.Quality.ChiSquareProbability = kNotKnown;
        if (m_isFromElsewhere) m_result.Remarks.push_back("The minimum was found from other starts.");
        AddRemarks(m_result, Task(), found, m_best->Points, points);
        if (m_result.End == TFitEnd::Cancelled) return;
        for (std::size_t i = 0; i < m_varied.size(); ++i) {
            const double error = m_result.StandardError(i);
            m_varied[i]->FinalDeviation = std::isfinite(error) ? error : 0;
        }
    }

    void FindRunaway() {
        const int runaway = RunawayOf(Task(), m_best->Points, m_start, m_best->Found);
        if (runaway < 0) return;
        m_best->Found.End = TFitEnd::RunsAway;
        m_result.Remarks.push_back(m_varied[static_cast<std::size_t>(runaway)]->Name() +
                                   " has no best value: far larger ones fit as well.");
    }

    TCurFit& m_fit;
    const TFitRun& m_run;
    TSilentProgress m_silent;
    TProgress& m_progress;
    std::vector<TDBLParameter*> m_varied;
    TVector m_given;
    TVector m_start; ///< between the bounds
    std::optional<TAttempt> m_best;
    bool m_isFromElsewhere = false;
    std::size_t m_withoutError = 0;
    std::optional<double> m_robustDeviation;
    TFitResult m_result;
};

} // namespace

TFitResult RunFit(TCurFit& fit, std::span<const double> x, std::span<const double> y, const TFitRun& run) {
    TFitter fitter(fit, run);
    try {
        const TFitPoints points = PointsBetweenMargins(fit, x, y, run.Errors);
        if (!run.Errors.empty()) fitter.NoteWithoutError(PointsBetweenMargins(fit, x, y, {}), points);
        const TFitResult result = fitter.Fit(points);
        fit.FitDone(result);
        return result;
    } catch (...) {
        fitter.PutBack();
        throw;
    }
}

void TakeWeighting(TFitRun& run, const TCurFit& fit, std::span<const double> yErrors) {
    const TFitWeighting& weighting = fit.Weighting();
    run.Robust = weighting.Robust;
    run.ErrorSource = weighting.Errors;
    run.Errors = weighting.ByYErrors ? yErrors : std::span<const double>();
    if (weighting.ByYErrors && yErrors.empty())
        throw EFitError("The fit weighs by the errors of Y, and the points have none");
}

void TakeBetterMinimum(TCurFit& fit) {
    if (!fit.Result()) return;
    const TFitResult result = *fit.Result();
    for (std::size_t i = 0; i < result.BetterValues.size(); ++i)
        if (TDBLParameter* parameter = fit.Parameter(result.Varied[i]))
            parameter->SetValue(result.BetterValues[i]);
}

} // namespace lumoplot
