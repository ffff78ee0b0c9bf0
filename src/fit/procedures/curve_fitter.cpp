#include "fit/procedures/curve_fitter.h"

#include "fit/procedures/fit_check.h"
#include "fit/procedures/minimiser.h"
#include "fit/procedures/polish.h"
#include "fit/procedures/variable_metric.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

constexpr char kCaption[] = "Fitting Data....";
constexpr double kNotKnown = std::numeric_limits<double>::quiet_NaN();
constexpr double kLargestOffset = 1e-6;
constexpr double kRoundingFactor = 1000;
constexpr int kMostRounds = 4;

TFitPoints PointsBetweenMargins(const TCurFit& fit, std::span<const double> x, std::span<const double> y) {
    TFitPoints points;
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (!std::isfinite(x[i]) || !std::isfinite(y[i])) continue;
        if (fit.UseLeftMargin() && x[i] < fit.LeftMargin()) continue;
        if (fit.UseRightMargin() && x[i] > fit.RightMargin()) continue;
        points.X.push_back(x[i]);
        points.Y.push_back(y[i]);
    }
    return points;
}

// The points where the model has a value with the parameters as they are.
TFitPoints PointsWithValue(TCurFit& fit, const TFitPoints& points) {
    std::vector<double> values(points.X.size());
    TBlockEvaluator(fit, fit.XRef()).Evaluate(points.X, values);
    TFitPoints usable;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (!std::isfinite(values[i])) continue;
        usable.X.push_back(points.X[i]);
        usable.Y.push_back(points.Y[i]);
    }
    return usable;
}

double SumAboutMean(std::span<const double> values) {
    double mean = 0;
    for (const double value : values) mean += value / static_cast<double>(values.size());
    double sum = 0;
    for (const double value : values) sum += (value - mean) * (value - mean);
    return sum;
}

/// R⁻¹R⁻ᵀ times the residual variance, in the units of the parameters.
TMatrix CovarianceOf(const TFitProblem& problem, const TPolished& polished, double variance) {
    const TMatrix& r = polished.Model.Triangle;
    TMatrix inverse(r.Size());
    for (int column = 0; column < r.Size(); ++column) {
        TVector unit(static_cast<std::size_t>(r.Size()));
        unit[static_cast<std::size_t>(column)] = 1;
        std::ranges::copy(BackSolved(r, std::move(unit)), inverse.Column(column).begin());
    }
    TMatrix covariance(r.Size());
    for (int i = 0; i < r.Size(); ++i) {
        for (int j = 0; j < r.Size(); ++j) {
            double sum = 0;
            for (int k = 0; k < r.Size(); ++k) sum += inverse(i, k) * inverse(j, k);
            covariance(i, j) =
                polished.IsDetermined ? sum * variance * problem.ScaleOf(i) * problem.ScaleOf(j) : kNotKnown;
        }
    }
    return covariance;
}

class TFitter {
public:
    TFitter(TCurFit& fit, const TFitRun& run)
        : m_fit(fit), m_run(run), m_progress(run.Progress ? *run.Progress : m_silent),
          m_varied(CheckedParameters(fit)) {
        for (const TDBLParameter* parameter : m_varied) m_values.push_back(parameter->Value());
        for (int i = 1; i <= fit.NParams(); ++i)
            if (fit.Parameter(i)->Vary()) m_result.Varied.push_back(i);
    }

    TFitResult Fit(const TFitPoints& points) {
        m_progress.Begin(kCaption, 0, m_fit.IterMax());
        TFitPoints usable = PointsWithValue(m_fit, points);
        Check(usable);
        // The points without a value at the start may have one at the end: then they take part as well.
        for (int round = 1;; ++round) {
            const std::size_t count = usable.X.size();
            m_result.PointsLeftOut = points.X.size() - count;
            FitPoints(std::move(usable));
            if (m_result.PointsLeftOut == 0 || round == kMostRounds || m_result.End == TFitEnd::Cancelled)
                break;
            usable = PointsWithValue(m_fit, points);
            if (usable.X.size() <= count) break;
        }
        return std::move(m_result);
    }

    void PutBack() {
        for (std::size_t i = 0; i < m_varied.size(); ++i) *m_varied[i]->ValueRef() = m_values[i];
    }

private:
    void Check(const TFitPoints& usable) const {
        if (usable.X.empty()) throw EFitError("The equation has no value at any point");
        if (usable.X.size() < m_varied.size())
            throw EFitError("There are fewer points than varied parameters");
    }

    void FitPoints(TFitPoints points) {
        TFitProblem problem(m_fit, m_varied, std::move(points), m_progress, m_run.OnIteration);
        const double start = problem.Value(problem.Start());
        if (!std::isfinite(start)) throw EFitError("The values of the equation are too large to be fitted");
        try {
            TPolished polished = Minimised(problem, *MakeMinimiser(m_fit.ProcType()));
            // Where a procedure lost its way, least squares may find one from the start.
            const bool isLost = m_result.End == TFitEnd::NoProgress || m_result.End == TFitEnd::NotDetermined;
            if (isLost && m_fit.ProcType() != TCurFit::kNewton) {
                TVariableMetric fromStart;
                polished = Minimised(problem, fromStart);
            }
            problem.Store(polished.Model.At);
            Summarise(problem, polished.Model.Value);
            AddErrors(problem, polished);
        } catch (const TFitCancelled&) {
            m_result.End = TFitEnd::Cancelled;
            Summarise(problem, problem.BestValue());
            m_result.Covariance = TMatrix(problem.Size());
            problem.Store(problem.Best());
        }
    }

    TPolished Minimised(TFitProblem& problem, TMinimiser& procedure) {
        const TStop stop = procedure.Minimise(problem, problem.Start(), m_fit.Tolerance());
        TPolished polished = Polish(problem);
        m_result.End = EndOf(problem, stop, polished);
        if (stop != TStop::Tolerance || m_result.End != TFitEnd::NoProgress) return polished;
        // A long flat valley: changes below the tolerance add up. Go on until they are rounding.
        const TVector place = problem.Best();
        const TStop last = TVariableMetric().Minimise(problem, place, 0);
        polished = Polish(problem);
        m_result.End = EndOf(problem, last, polished);
        return polished;
    }

    static TFitEnd EndOf(const TFitProblem& problem, TStop stop, const TPolished& polished) {
        if (!polished.IsDetermined) return TFitEnd::NotDetermined;
        const bool isRounding = polished.Offset * polished.Offset * polished.Model.Value <=
                                kRoundingFactor * kRoundingFactor * problem.RoundingLevel();
        const bool isStationary = polished.Offset <= kLargestOffset || isRounding;
        if (isStationary && polished.IsMinimum && stop != TStop::IterationLimit) return TFitEnd::Converged;
        return stop == TStop::IterationLimit ? TFitEnd::IterationLimit : TFitEnd::NoProgress;
    }

    void Summarise(const TFitProblem& problem, double value) {
        const double scale = problem.ResidualScale();
        m_result.Iterations += problem.Iterations();
        m_result.Evaluations += problem.Evaluations();
        m_result.PointsUsed = problem.PointCount();
        m_result.Rss = 2 * value / scale / scale;
        const std::size_t freedom = problem.PointCount() - m_varied.size();
        m_result.ResidualSD =
            freedom > 0 ? std::sqrt(2 * value / static_cast<double>(freedom)) / scale : kNotKnown;
        const double about = SumAboutMean(problem.Points().Y);
        m_result.RSquared = about > 0 ? 1 - m_result.Rss / about : kNotKnown;
    }

    void AddErrors(const TFitProblem& problem, const TPolished& polished) {
        const double deviation = m_result.ResidualSD * problem.ResidualScale();
        m_result.Covariance = CovarianceOf(problem, polished, deviation * deviation);
        for (std::size_t i = 0; i < m_varied.size(); ++i) {
            const double error = m_result.StandardError(i);
            m_varied[i]->FinalDeviation = std::isfinite(error) ? error : 0;
        }
    }

    TCurFit& m_fit;
    const TFitRun& m_run;
    TSilentProgress m_silent;
    TProgress& m_progress;
    std::vector<TDBLParameter*> m_varied;
    std::vector<double> m_values;
    TFitResult m_result;
};

} // namespace

TFitResult RunFit(TCurFit& fit, std::span<const double> x, std::span<const double> y, const TFitRun& run) {
    TFitter fitter(fit, run);
    try {
        const TFitResult result = fitter.Fit(PointsBetweenMargins(fit, x, y));
        fit.FitDone(result);
        return result;
    } catch (...) {
        fitter.PutBack();
        throw;
    }
}

} // namespace lumoplot
