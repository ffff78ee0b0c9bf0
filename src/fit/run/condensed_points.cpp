#include "fit/run/condensed_points.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace lumoplot {
namespace {

constexpr std::size_t kMostNarrow = 4;
constexpr std::size_t kFewestPoints = 50;
constexpr std::size_t kNarrowParts = 25; // of the points
constexpr double kFarOut = 8;            // times the noise of a mean
constexpr double kMedianOfSteps = 0.954; // |a − b| of two normal numbers
constexpr std::size_t kMostSteps = 20000;
constexpr double kRoundingOfY = 1e-12;
constexpr std::size_t kAround = 4; // widths on both sides that are shown
constexpr std::size_t kPerWidth = 6;

/// The scatter of neighbours, by the median of their differences; of exact values their rounding.
double NoiseOf(const std::vector<double>& y) {
    const std::size_t every = y.size() / kMostSteps + 1;
    std::vector<double> steps;
    double largest = 0;
    for (std::size_t i = 1; i < y.size(); i += every) {
        steps.push_back(std::abs(y[i] - y[i - 1]));
        largest = std::max(largest, std::abs(y[i]));
    }
    const auto middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
    std::ranges::nth_element(steps, middle);
    return std::max(*middle / kMedianOfSteps, kRoundingOfY * largest);
}

class TPeakFinder {
public:
    explicit TPeakFinder(const std::vector<double>& y) : m_count(y.size()), m_noise(NoiseOf(y)) {
        const double mean = std::accumulate(y.begin(), y.end(), 0.0) / static_cast<double>(m_count);
        m_sums.push_back(0);
        for (const double value : y) m_sums.push_back(m_sums.back() + (value - mean));
    }

    std::vector<TNarrowPeak> Run() {
        for (std::size_t width = 1; width <= m_count / kNarrowParts; width *= 2) Look(width);
        std::ranges::sort(m_found, std::ranges::greater(), &TFound::Strength);
        std::vector<TNarrowPeak> peaks;
        for (const TFound& found : m_found) {
            if (peaks.size() == kMostNarrow) break;
            if (std::ranges::none_of(peaks, [&](const TNarrowPeak& other) { return IsOf(found, other); }))
                peaks.push_back({found.First + found.Width / 2, found.Width});
        }
        return peaks;
    }

private:
    struct TFound {
        std::size_t First;
        std::size_t Width;
        double Strength; ///< the square root of what it adds to the sum of squares
    };

    // The strongest of each few neighbouring places.
    void Look(std::size_t width) {
        const std::size_t step = std::max<std::size_t>(1, width / 4);
        TFound best{0, width, 0};
        std::size_t looked = 0;
        for (std::size_t first = 2 * width; first + 3 * width <= m_count; first += step) {
            const double strength = StrengthOf(first, width);
            if (strength > best.Strength) best = {first, width, strength};
            if (++looked % 16 != 0) continue;
            Keep(best);
            best.Strength = 0;
        }
        Keep(best);
    }

    void Keep(const TFound& found) {
        if (found.Strength > kFarOut * m_noise) m_found.push_back(found);
    }

    double StrengthOf(std::size_t first, std::size_t width) const {
        const double sides = (Sum(first - 2 * width, width) + Sum(first + 2 * width, width)) / 2;
        const auto count = static_cast<double>(width);
        return std::abs(Sum(first, width) - sides) / count * std::sqrt(count / 1.5);
    }

    double Sum(std::size_t first, std::size_t count) const { return m_sums[first + count] - m_sums[first]; }

    static bool IsOf(const TFound& found, const TNarrowPeak& peak) {
        const std::size_t center = found.First + found.Width / 2;
        const std::size_t distance = center > peak.Center ? center - peak.Center : peak.Center - center;
        return distance < 3 * std::max(found.Width, peak.Count);
    }

    std::size_t m_count;
    double m_noise;
    std::vector<double> m_sums;
    std::vector<TFound> m_found;
};

double WeightOf(const TFitPoints& points, std::size_t i) {
    return points.Weights.empty() ? 1 : points.Weights[i];
}

void AddBlock(TFitPoints& few, const TFitPoints& points, std::size_t first, std::size_t end,
              TNeighbours neighbours) {
    double largest = 0;
    for (std::size_t i = first; i < end; ++i) largest = std::max(largest, WeightOf(points, i));
    double weight = 0;
    double x = 0;
    double y = 0;
    for (std::size_t i = first; i < end; ++i) {
        const double part = largest > 0 ? WeightOf(points, i) / largest : 0;
        const double own = part * part;
        weight += own;
        x += own * points.X[i];
        y += own * points.Y[i];
    }
    const std::size_t middle = first + (end - first) / 2;
    const bool isMean = neighbours == TNeighbours::Mean && end - first > 1 && weight > 0;
    few.X.push_back(isMean ? x / weight : points.X[middle]);
    few.Y.push_back(isMean ? y / weight : points.Y[middle]);
    few.Weights.push_back(std::sqrt(weight) * largest);
}

} // namespace

TFitPoints InOrderOfX(const TFitPoints& points) {
    if (std::ranges::is_sorted(points.X)) return points;
    std::vector<std::size_t> order(points.X.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, {}, [&](std::size_t i) { return points.X[i]; });
    TFitPoints ordered;
    for (const std::size_t i : order) {
        ordered.X.push_back(points.X[i]);
        ordered.Y.push_back(points.Y[i]);
        if (!points.Weights.empty()) ordered.Weights.push_back(points.Weights[i]);
    }
    return ordered;
}

std::vector<TNarrowPeak> NarrowPeaksOf(const TFitPoints& ordered) {
    if (ordered.Y.size() < kFewestPoints) return {};
    return TPeakFinder(ordered.Y).Run();
}

TFitPoints Condensed(const TFitPoints& ordered, const std::vector<TNarrowPeak>& peaks, std::size_t count,
                     TNeighbours neighbours) {
    const std::size_t all = ordered.X.size();
    if (all <= count) return ordered;
    std::vector<std::size_t> starts;
    for (std::size_t k = 0; k < count; ++k) starts.push_back(k * all / count);
    for (const TNarrowPeak& peak : peaks) {
        const std::size_t reach = kAround * peak.Count + 1;
        const std::size_t end = std::min(all, peak.Center + reach);
        for (std::size_t i = peak.Center - std::min(peak.Center, reach); i < end;
             i += peak.Count / kPerWidth + 1)
            starts.push_back(i);
    }
    std::ranges::sort(starts);
    starts.erase(std::unique(starts.begin(), starts.end()), starts.end());
    TFitPoints few;
    for (std::size_t k = 0; k < starts.size(); ++k)
        AddBlock(few, ordered, starts[k], k + 1 < starts.size() ? starts[k + 1] : all, neighbours);
    return few;
}

} // namespace lumoplot
