#include "fit/many/uncertainty.h"

#include "fit/many/fit_copy.h"
#include "fit/run/fit_judgement.h"
#include "fit/run/fit_statistics.h"
#include "fit/run/local_fit.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

constexpr char kProfileCaption[] = "Profiling a Parameter....";
constexpr double kOpen = std::numeric_limits<double>::infinity();
constexpr double kStepsToEnd = 4; // of a linear model, from the best value to the end of the interval
constexpr double kBeyondEnd = 1.25;
constexpr int kMostSteps = 40;
constexpr double kSlowGrowth = 0.3; // of what a linear model does
constexpr int kMostNarrowings = 40;
constexpr double kNearEnough = 1e-7;   // of the interval
constexpr double kDefaultError = 0.01; // of the value, where there is no standard error

/// Shows the position of the whole work whatever the fits within it report.
class TSteadyProgress final : public TProgress {
public:
    explicit TSteadyProgress(TProgress& outer) : m_outer(outer) {}
    void Begin(const std::string& caption, std::int64_t minimum, std::int64_t maximum) override {
        m_outer.Begin(caption, minimum, maximum);
    }
    [[nodiscard]] bool StepTo(std::int64_t) override { return m_outer.StepTo(Position); }
    std::int64_t Position = 0;

private:
    TProgress& m_outer;
};

/// Fits the other parameters with one held.
class TProfiler {
public:
    TProfiler(const TFittedData& data, int number)
        : m_copy(data), m_progress(m_copy.ProgressOf(data)), m_parameter(*m_copy.Fit.Parameter(number)),
          m_best(m_parameter.Value()), m_limit(TOfConfidence(data)) {
        for (TDBLParameter* parameter : m_copy.Varied)
            if (parameter != &m_parameter) m_others.push_back(parameter);
        for (const TDBLParameter* parameter : m_others) m_start.push_back(parameter->Value());
        const auto& varied = data.Fit.Result()->Varied;
        const double error = data.Fit.Result()->StandardError(
            static_cast<std::size_t>(std::ranges::find(varied, number) - varied.begin()));
        m_residualScale = ResidualScaleOf(m_copy.Points);
        m_profile.Limit = m_limit;
        m_error = error > 0 ? error : kDefaultError * (m_best != 0 ? std::abs(m_best) : 1);
    }

    TProfile Run() {
        m_progress.Begin(kProfileCaption, 0, 2 * kMostSteps);
        try {
            m_least = RssAt(m_best);
        } catch (const TFitCancelled&) {
            m_profile.WasCancelled = true;
            return std::move(m_profile);
        }
        const double scale = m_residualScale;
        m_deviation = m_copy.DeviationOf(m_least, scale);
        m_profile.Points.push_back({m_best, m_least, 0});
        m_profile.Interval.Low = EndTowards(-1);
        m_profile.Interval.High = EndTowards(1);
        std::ranges::sort(m_profile.Points, {}, &TProfilePoint::Value);
        for (TProfilePoint& point : m_profile.Points) point.Rss = point.Rss / scale / scale;
        return std::move(m_profile);
    }

private:
    // In the scale of the residuals.
    double RssAt(double value) {
        *m_parameter.ValueRef() = value;
        if (!m_progress.StepTo(0)) throw TFitCancelled();
        if (m_others.empty()) {
            std::vector<double> residuals = ResidualsOf(m_copy.Fit, m_copy.Points);
            for (double& residual : residuals) residual *= m_residualScale;
            return Dot(residuals, residuals);
        }
        try {
            const TFitTask task{m_copy.Fit, m_others, m_progress, {}};
            const TLocalFit found = FitLocally(task, m_copy.Points, TFitProcedure::Newton);
            if (found.End == TFitEnd::Cancelled) throw TFitCancelled();
            return found.ScaledRss;
        } catch (const EFitError&) {
            return kOpen; // no value there
        }
    }

    TProfilePoint PointAt(double value) {
        const double rss = RssAt(value);
        const double rise = std::sqrt(std::max(0.0, rss - m_least)) / m_deviation;
        return {value, rss, value < m_best ? -rise : rise};
    }

    void PutBackOthers() {
        for (std::size_t i = 0; i < m_others.size(); ++i) *m_others[i]->ValueRef() = m_start[i];
    }

    // Steps outwards until the sum of squares has risen enough. Each fit begins where the one before ended.
    double EndTowards(int side) {
        PutBackOthers();
        const double bound = side < 0 ? m_parameter.Min() : m_parameter.Max();
        double step = side * m_error * m_limit / kStepsToEnd;
        double end = side * kOpen;
        TProfilePoint before{m_best, m_least, 0};
        try {
            for (int i = 0; i < kMostSteps && before.Value != bound; ++i) {
                m_progress.Position = i + (side < 0 ? 0 : kMostSteps);
                double value = before.Value + step;
                if (side * (value - bound) > 0) value = bound;
                const TProfilePoint point = PointAt(value);
                if (!std::isfinite(point.Rss)) break;
                m_profile.Points.push_back(point);
                const bool isPast = std::abs(point.Deviation) >= m_limit;
                if (isPast && !std::isfinite(end)) end = EndBetween(before, point);
                if (std::abs(point.Deviation) >= kBeyondEnd * m_limit) return end;
                const double growth = std::abs(point.Deviation) - std::abs(before.Deviation);
                if (growth < kSlowGrowth * m_limit / kStepsToEnd) step *= 2;
                before = point;
            }
        } catch (const TFitCancelled&) {
            m_profile.WasCancelled = true;
            return std::numeric_limits<double>::quiet_NaN();
        }
        return !std::isfinite(end) && before.Value == bound ? bound : end;
    }

    // The Illinois variant of the false position.
    double EndBetween(TProfilePoint inside, TProfilePoint outside) {
        const double wide = std::abs(outside.Value - m_best);
        double low = std::abs(inside.Deviation) - m_limit;
        double high = std::abs(outside.Deviation) - m_limit;
        int last = 0;
        for (int i = 0; i < kMostNarrowings; ++i) {
            if (high == 0 || std::abs(outside.Value - inside.Value) <= kNearEnough * wide) break;
            const double value = inside.Value - low * (outside.Value - inside.Value) / (high - low);
            if (value == inside.Value || value == outside.Value) return value;
            const TProfilePoint point = PointAt(value);
            const double miss = std::abs(point.Deviation) - m_limit;
            if (std::abs(miss) <= kNearEnough * m_limit) return value;
            if (miss < 0) {
                inside = point;
                low = miss;
                if (last == -1) high *= 0.5;
                last = -1;
            } else {
                outside = point;
                high = miss;
                if (last == 1) low *= 0.5;
                last = 1;
            }
        }
        return 0.5 * (inside.Value + outside.Value);
    }

    TFitCopy m_copy;
    TSteadyProgress m_progress;
    TDBLParameter& m_parameter;
    double m_best;
    double m_limit; ///< deviation at the ends of the interval
    double m_least = 0;
    double m_deviation = 1;
    double m_residualScale = 1;
    double m_error = 1;
    std::vector<TDBLParameter*> m_others;
    TVector m_start;
    TProfile m_profile;
};

} // namespace

std::vector<TInterval> AsymptoticIntervals(const TCurFit& fit, double confidence) {
    const TFitResult& result = *fit.Result();
    std::vector<TInterval> intervals;
    const double t = StudentQuantile(confidence, FreedomOfErrors(fit));
    for (std::size_t i = 0; i < result.Varied.size(); ++i) {
        const double value = fit.Parameter(result.Varied[i])->Value();
        const double half = t * result.StandardError(i);
        intervals.push_back({value - half, value + half});
    }
    return intervals;
}

TProfile ProfileOf(const TFittedData& data, int number) {
    return TProfiler(data, number).Run();
}

TBands BandsOf(const TCurFit& fit, std::span<const double> x, double confidence) {
    const TFitResult& result = *fit.Result();
    TCurFit copy;
    copy.Assign(&fit);
    std::vector<double*> varied;
    for (const int number : result.Varied) varied.push_back(copy.Parameter(number)->ValueRef());
    std::vector<double> values(x.size());
    std::vector<double> slopes(x.size() * varied.size());
    TBlockEvaluator(copy, copy.XRef(), varied).EvaluateWithDerivatives(x, values, slopes);
    const double t = StudentQuantile(confidence, FreedomOfErrors(fit));
    const bool knowsNewPoints = !fit.UsesYErrors();
    TBands bands;
    for (std::size_t k = 0; k < x.size(); ++k) {
        TVector errors;
        for (std::size_t i = 0; i < varied.size(); ++i)
            errors.push_back(slopes[i * x.size() + k] * result.Errors[i]);
        const double error = CombinedError(result.Correlations, errors);
        bands.Confidence.push_back(t * error);
        bands.Prediction.push_back(knowsNewPoints ? t * std::hypot(error, result.ResidualSD)
                                                  : std::numeric_limits<double>::quiet_NaN());
    }
    return bands;
}

} // namespace lumoplot
