#include "fit/procedures/curve_fitter.h"

#include "fit/procedures/fit_check.h"
#include "fit/procedures/local_fit.h"
#include "fit/procedures/small_solve.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

constexpr char kCaption[] = "Fitting Data....";
constexpr double kNotKnown = std::numeric_limits<double>::quiet_NaN();
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

/// R⁻¹R⁻ᵀ times the residual variance.
TMatrix CovarianceOf(const TLocalFit& found, int size, double variance) {
    TMatrix covariance(size);
    for (int i = 0; i < size; ++i) std::ranges::fill(covariance.Column(i), kNotKnown);
    if (!found.IsDetermined) return covariance;
    TMatrix inverse(size);
    for (int column = 0; column < size; ++column) {
        TVector unit(static_cast<std::size_t>(size));
        unit[static_cast<std::size_t>(column)] = 1;
        std::ranges::copy(BackSolved(found.Triangle, std::move(unit)), inverse.Column(column).begin());
    }
    for (int i = 0; i < size; ++i) {
        for (int j = 0; j < size; ++j) {
            double sum = 0;
            for (int k = 0; k < size; ++k) sum += inverse(i, k) * inverse(j, k);
            covariance(i, j) = sum * variance;
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
            FitPoints(usable);
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

    void FitPoints(const TFitPoints& points) {
        const TLocalFit found =
            FitLocally({m_fit, m_varied, m_progress, m_run.OnIteration}, points, m_fit.ProcType());
        m_result.End = found.End;
        m_result.Iterations += found.Iterations;
        m_result.Evaluations += found.Evaluations;
        Summarise(points, found);
    }

    void Summarise(const TFitPoints& points, const TLocalFit& found) {
        m_result.PointsUsed = points.X.size();
        m_result.Rss = found.Rss;
        const std::size_t freedom = m_result.PointsUsed - m_varied.size();
        const double variance = freedom > 0 ? found.Rss / static_cast<double>(freedom) : kNotKnown;
        m_result.ResidualSD = std::sqrt(variance);
        const double about = SumAboutMean(points.Y);
        m_result.RSquared = about > 0 ? 1 - m_result.Rss / about : kNotKnown;
        m_result.Covariance = CovarianceOf(found, static_cast<int>(m_varied.size()), variance);
        if (m_result.End == TFitEnd::Cancelled) return;
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
