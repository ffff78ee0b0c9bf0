#include "fit/run/fit_judgement.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace lumoplot {
namespace {

constexpr double kTellsLittle = 0.1; // of the sum about the line
constexpr double kGoTogether = 1.2;  // of 2 where they do not
constexpr double kNoBetter = 1e-9;   // of the sum about the line
constexpr std::size_t kBetween = 7;  // places looked at between two points
constexpr std::size_t kMostGaps = 5000;
constexpr double kOutstanding = 3;  // times the values at both points
constexpr double kInfinite = 1e8;   // times the largest Y
constexpr double kPoleGrowth = 1.2; // in ever smaller neighbourhoods
constexpr int kChances = 4;
constexpr int kNarrowings = 60;
constexpr double kFarBeyond = 1000;   // times the value
constexpr double kStillAsGood = 1e-4; // relative rise of the sum of squares

double WeightAt(const TFitPoints& points, std::size_t i) {
    return points.Weights.empty() ? 1 : points.Weights[i];
}

class TPoleFinder {
public:
    TPoleFinder(TCurFit& fit, const TFitPoints& points) : m_fit(fit), m_x(points.X) {
        if (!std::ranges::is_sorted(m_x)) std::ranges::sort(m_x);
        m_x.erase(std::unique(m_x.begin(), m_x.end()), m_x.end());
        for (const double y : points.Y) m_infinite = std::max(m_infinite, kInfinite * std::abs(y));
    }

    bool Run() {
        TBlockEvaluator model(m_fit, m_fit.XRef());
        const std::size_t step = std::max<std::size_t>(1, m_x.size() / kMostGaps);
        std::vector<double> x(kBetween + 2);
        std::vector<double> y(x.size());
        for (std::size_t i = 0; i + 1 < m_x.size(); i += step) {
            for (std::size_t k = 0; k < x.size(); ++k)
                x[k] = std::lerp(m_x[i], m_x[i + 1], static_cast<double>(k) / (kBetween + 1));
            model.Evaluate(x, y);
            if (IsPoleAmong(model, x, y)) return true;
        }
        return false;
    }

private:
    // Where the size stands out it is followed into ever smaller neighbourhoods,
    // as long as it grows.
    bool IsPoleAmong(TBlockEvaluator& model, std::vector<double> x, std::vector<double> y) const {
        const double ends = std::max(std::abs(y.front()), std::abs(y.back()));
        if (!(std::abs(y[LargestOf(y)]) > kOutstanding * ends) && !TurnsOver(y)) return false;
        double before = 0;
        for (int i = 0; i < kNarrowings; ++i) {
            const std::size_t largest = LargestOf(y);
            const double size = std::abs(y[largest]);
            if (size > m_infinite) return true;
            // A place may by chance lie so near that the next few are no nearer.
            if (i % kChances == 0 && !(size > kPoleGrowth * std::exchange(before, size))) return false;
            const double left = x[largest > 0 ? largest - 1 : 0];
            const double right = x[std::min(largest + 1, x.size() - 1)];
            for (std::size_t k = 0; k < x.size(); ++k)
                x[k] = std::lerp(left, right, static_cast<double>(k) / (kBetween + 1));
            model.Evaluate(x, y);
        }
        return false;
    }

    static std::size_t LargestOf(const std::vector<double>& y) {
        std::size_t largest = 0;
        for (std::size_t k = 1; k < y.size(); ++k)
            if (std::abs(y[k]) > std::abs(y[largest]) || std::isnan(y[largest])) largest = k;
        return largest;
    }

    // A pole changes the sign with large values on both sides: they grow towards
    // each other.
    static bool TurnsOver(const std::vector<double>& y) {
        for (std::size_t k = 1; k + 2 < y.size(); ++k)
            if (y[k] * y[k + 1] < 0 && std::abs(y[k]) > std::abs(y[k - 1]) &&
                std::abs(y[k + 1]) > std::abs(y[k + 2]))
                return true;
        return false;
    }

    TCurFit& m_fit;
    std::vector<double> m_x;
    double m_infinite = 0;
};

} // namespace

std::vector<double> ResidualsOf(TCurFit& fit, const TFitPoints& points) {
    std::vector<double> residuals(points.X.size());
    TBlockEvaluator(fit, fit.XRef()).Evaluate(points.X, residuals);
    for (std::size_t i = 0; i < residuals.size(); ++i)
        residuals[i] = (points.Y[i] - residuals[i]) * WeightAt(points, i);
    return residuals;
}

std::vector<double> ResidualsByX(TCurFit& fit, const TFitPoints& points) {
    const std::vector<double> residuals = ResidualsOf(fit, points);
    if (std::ranges::is_sorted(points.X)) return residuals;
    std::vector<std::size_t> order(points.X.size());
    std::iota(order.begin(), order.end(), 0u);
    std::ranges::stable_sort(order, {}, [&](std::size_t i) { return points.X[i]; });
    std::vector<double> sorted;
    for (const std::size_t i : order) sorted.push_back(residuals[i]);
    return sorted;
}

double DurbinWatson(std::span<const double> residuals) {
    double steps = 0;
    for (std::size_t i = 1; i < residuals.size(); ++i) {
        const double step = residuals[i] - residuals[i - 1];
        steps += step * step;
    }
    return steps / Dot(residuals, residuals);
}

double SumAboutLine(const TFitPoints& points, double scale) {
    double largest = 0;
    for (std::size_t i = 0; i < points.Y.size(); ++i) largest = std::max(largest, WeightAt(points, i));
    double weight = 0;
    double mean = 0;
    for (std::size_t i = 0; i < points.Y.size(); ++i) {
        const double w = (WeightAt(points, i) / largest) * (WeightAt(points, i) / largest);
        weight += w;
        if (weight > 0) mean += (points.Y[i] - mean) * (w / weight);
    }
    double sum = 0;
    for (std::size_t i = 0; i < points.Y.size(); ++i) {
        const double residual = (points.Y[i] - mean) * (WeightAt(points, i) * scale);
        sum += residual * residual;
    }
    return sum;
}

bool HasPoleBetween(TCurFit& fit, const TFitPoints& points) {
    return TPoleFinder(fit, points).Run();
}

double VariationBetween(TCurFit& fit, const TFitPoints& points) {
    std::vector<double> x = points.X;
    if (!std::ranges::is_sorted(x)) std::ranges::sort(x);
    const std::size_t step = std::max<std::size_t>(1, x.size() / kMostGaps);
    std::vector<double> places;
    for (std::size_t i = 0; i + 1 < x.size(); i += step)
        for (std::size_t k = 0; k <= kBetween; ++k)
            places.push_back(std::lerp(x[i], x[i + 1], static_cast<double>(k) / (kBetween + 1)));
    std::vector<double> y(places.size());
    TBlockEvaluator(fit, fit.XRef()).Evaluate(places, y);
    double variation = 0;
    for (std::size_t i = 1; i < y.size(); ++i) variation += std::abs(y[i] - y[i - 1]);
    return variation;
}

bool MissesCourse(TCurFit& fit, const TLocalFit& found, const TFitPoints& points) {
    if (found.ScaledRss > kTellsLittle * SumAboutLine(points, found.ResidualScale)) return true;
    return DurbinWatson(ResidualsByX(fit, points)) < kGoTogether;
}

TFitEnd Judged(const TLocalFit& found, TCurFit& fit, const TFitPoints& points) {
    if (found.End == TFitEnd::Cancelled) return found.End;
    if (HasPoleBetween(fit, points)) return TFitEnd::Pole;
    if (found.End != TFitEnd::Converged) return found.End;
    const double about = SumAboutLine(points, found.ResidualScale);
    const bool isNoBetter = about > 0 && found.ScaledRss >= about * (1 - kNoBetter);
    return isNoBetter ? TFitEnd::WorseThanLine : found.End;
}

int RunawayOf(const TFitTask& task, const TFitPoints& points, const TVector& start, const TLocalFit& found) {
    if (task.Varied.size() < 2) return -1;
    int runaway = -1;
    for (std::size_t i = 0; i < task.Varied.size() && runaway < 0; ++i) {
        const TDBLParameter& parameter = *task.Varied[i];
        if (std::isfinite(found.Values[i] > 0 ? parameter.Max() : parameter.Min())) continue;
        // A combination that is not determined is not a runaway before it has run.
        const double run = std::abs(found.Values[i] / start[i]);
        if (found.End == TFitEnd::NotDetermined && !(run > kFarBeyond)) continue;
        TFitTask rest = task;
        rest.OnIteration = {};
        rest.Varied.erase(rest.Varied.begin() + static_cast<std::ptrdiff_t>(i));
        for (std::size_t j = 0; j < task.Varied.size(); ++j) *task.Varied[j]->ValueRef() = found.Values[j];
        *task.Varied[i]->ValueRef() *= kFarBeyond;
        try {
            const TLocalFit beyond = FitLocally(rest, points, TFitProcedure::Newton);
            if (beyond.End != TFitEnd::Cancelled && beyond.LogRss() <= found.LogRss() + kStillAsGood)
                runaway = static_cast<int>(i);
        } catch (const EFitError&) {
            continue; // no value there
        }
    }
    for (std::size_t j = 0; j < task.Varied.size(); ++j) *task.Varied[j]->ValueRef() = found.Values[j];
    return runaway;
}

} // namespace lumoplot
