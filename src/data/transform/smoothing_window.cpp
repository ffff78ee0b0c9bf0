#include "data/transform/smoothing_window.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace lumoplot {
namespace {

/// Squares of a polynomial below this part of the first one's are rounding: X have fewer different values.
constexpr double kLeastNorm = 1e-20;

double Dot(std::span<const double> a, std::span<const double> b) {
    double sum = 0;
    for (std::size_t i = 0; i < a.size(); ++i) sum += a[i] * b[i];
    return sum;
}

} // namespace

double LocalFit(std::span<const double> x, std::span<const double> y, double place, int degree) {
    const double middle = 0.5 * (x.front() + x.back());
    const double reach = std::max(0.5 * (x.back() - x.front()), 1e-300);
    const std::size_t count = x.size();
    std::vector<double> t(count);
    for (std::size_t i = 0; i < count; ++i) t[i] = (x[i] - middle) / reach;
    const double at = (place - middle) / reach;
    std::vector<double> before(count, 0);
    std::vector<double> now(count, 1);
    std::vector<double> shifted(count);
    double beforeAt = 0;
    double nowAt = 1;
    double norm = static_cast<double>(count);
    double beforeNorm = 1;
    double value = 0;
    for (int k = 0; k <= degree && norm > kLeastNorm * static_cast<double>(count); ++k) {
        value += Dot(y, now) / norm * nowAt;
        for (std::size_t i = 0; i < count; ++i) shifted[i] = t[i] * now[i];
        const double alpha = Dot(shifted, now) / norm;
        const double beta = k == 0 ? 0 : norm / beforeNorm;
        for (std::size_t i = 0; i < count; ++i) before[i] = shifted[i] - alpha * now[i] - beta * before[i];
        before.swap(now);
        const double next = (at - alpha) * nowAt - beta * beforeAt;
        beforeAt = nowAt;
        nowAt = next;
        beforeNorm = norm;
        norm = Dot(now, now);
    }
    return value;
}

std::vector<double> SavitzkyGolay(const TCurveValues& curve, std::size_t width, int degree) {
    const std::size_t count = curve.X.size();
    width = std::min(width, count);
    std::vector<double> smooth(count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t first = std::min(i - std::min(i, width / 2), count - width);
        smooth[i] = LocalFit(std::span(curve.X).subspan(first, width),
                             std::span(curve.Y).subspan(first, width), curve.X[i], degree);
    }
    return smooth;
}

std::vector<double> RunningMedian(const std::vector<double>& values, std::size_t width) {
    const std::size_t count = values.size();
    std::vector<double> smooth(count);
    std::vector<double> window;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t reach = std::min({width / 2, i, count - 1 - i});
        window.assign(values.begin() + static_cast<std::ptrdiff_t>(i - reach),
                      values.begin() + static_cast<std::ptrdiff_t>(i + reach + 1));
        const auto middle = window.begin() + static_cast<std::ptrdiff_t>(reach);
        std::nth_element(window.begin(), middle, window.end());
        smooth[i] = *middle;
    }
    return smooth;
}

} // namespace lumoplot
