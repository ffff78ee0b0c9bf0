#include "data/transform/transform.h"

#include "data/transform/smoothing_window.h"
#include "support/errors.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace lumoplot {
namespace {

constexpr double kMostPoints = 10'000'000;

TCurveValues FiniteOnly(const TCurveValues& curve) {
    TCurveValues kept;
    for (std::size_t i = 0; i < curve.X.size(); ++i) {
        if (!std::isfinite(curve.X[i]) || !std::isfinite(curve.Y[i])) continue;
        kept.X.push_back(curve.X[i]);
        kept.Y.push_back(curve.Y[i]);
        if (!curve.YErrors.empty()) kept.YErrors.push_back(curve.YErrors[i]);
    }
    return kept;
}

void ScaleErrors(TCurveValues& curve, double factor) {
    for (double& error : curve.YErrors) error *= std::abs(factor);
}

std::size_t WholeNumber(double value, double least, const char* what) {
    if (value != std::floor(value) || !(value >= least) || value > kMostPoints)
        throw ETransformError(std::string(what) + " must be a whole number from " +
                              std::to_string(static_cast<int>(least)) + " on");
    return static_cast<std::size_t>(value);
}

std::size_t WindowOf(double value) {
    const std::size_t width = WholeNumber(value, 3, "The number of neighbours");
    if (width % 2 == 0) throw ETransformError("The number of neighbours must be odd");
    return width;
}

/// One point for each X, at the mean of its Y.
TCurveValues WithoutRepeats(const TCurveValues& curve) {
    TCurveValues merged;
    for (std::size_t i = 0; i < curve.X.size();) {
        const std::size_t first = i;
        double sum = 0;
        for (; i < curve.X.size() && curve.X[i] == curve.X[first]; ++i) sum += curve.Y[i];
        merged.X.push_back(curve.X[first]);
        merged.Y.push_back(sum / static_cast<double>(i - first));
    }
    return merged;
}

double LineAt(const TCurveValues& curve, std::size_t right, double x) {
    if (right == 0) return curve.Y.front();
    const double part = (x - curve.X[right - 1]) / (curve.X[right] - curve.X[right - 1]);
    return std::lerp(curve.Y[right - 1], curve.Y[right], part);
}

void Shift(TCurveValues& curve, const TTransform& by) {
    for (double& x : curve.X) x += by.First;
    for (double& y : curve.Y) y += by.Second;
}

void Scale(TCurveValues& curve, const TTransform& by) {
    if (by.First == 0 || by.Second == 0) throw ETransformError("A factor must not be 0");
    for (double& x : curve.X) x *= by.First;
    for (double& y : curve.Y) y *= by.Second;
    ScaleErrors(curve, by.Second);
    if (by.First > 0) return;
    std::ranges::reverse(curve.X);
    std::ranges::reverse(curve.Y);
    std::ranges::reverse(curve.YErrors);
}

void Normalise(TCurveValues& curve, const TTransform& to) {
    const auto [low, high] = std::ranges::minmax(curve.Y);
    if (low == high) throw ETransformError("All Y are equal");
    ScaleErrors(curve, (to.Second - to.First) / (high - low));
    for (double& y : curve.Y) y = std::lerp(to.First, to.Second, (y - low) / (high - low));
}

void CutRange(TCurveValues& curve, const TTransform& range) {
    if (range.First > range.Second) throw ETransformError("The range ends before it begins");
    const auto first = std::ranges::lower_bound(curve.X, range.First) - curve.X.begin();
    const auto end = std::ranges::upper_bound(curve.X, range.Second) - curve.X.begin();
    curve.X = {curve.X.begin() + first, curve.X.begin() + end};
    curve.Y = {curve.Y.begin() + first, curve.Y.begin() + end};
    if (!curve.YErrors.empty()) curve.YErrors = {curve.YErrors.begin() + first, curve.YErrors.begin() + end};
    if (curve.X.empty()) throw ETransformError("No point lies in the range");
}

void Resample(TCurveValues& curve, const TTransform& to) {
    const std::size_t count = WholeNumber(to.First, 2, "The number of points");
    const TCurveValues lines = WithoutRepeats(curve);
    if (lines.X.size() < 2) throw ETransformError("All X are equal");
    curve = {std::vector<double>(count), std::vector<double>(count)};
    std::size_t right = 1;
    for (std::size_t i = 0; i < count; ++i) {
        const double part = static_cast<double>(i) / static_cast<double>(count - 1);
        curve.X[i] = std::lerp(lines.X.front(), lines.X.back(), part);
        while (right + 1 < lines.X.size() && lines.X[right] < curve.X[i]) ++right;
        curve.Y[i] = LineAt(lines, right, curve.X[i]);
    }
}

/// Of the mean of independent values; none where one of them has none.
double ErrorOfMean(std::span<const double> errors) {
    double length = 0;
    for (const double error : errors) {
        if (!(error > 0)) return 0;
        length = std::hypot(length, error);
    }
    return length / static_cast<double>(errors.size());
}

void Average(TCurveValues& curve, const TTransform& by) {
    const std::size_t length = WholeNumber(by.First, 1, "The number of neighbours");
    TCurveValues means;
    for (std::size_t start = 0; start < curve.X.size(); start += length) {
        const std::size_t end = std::min(start + length, curve.X.size());
        double x = 0;
        double y = 0;
        for (std::size_t i = start; i < end; ++i) x += curve.X[i], y += curve.Y[i];
        means.X.push_back(x / static_cast<double>(end - start));
        means.Y.push_back(y / static_cast<double>(end - start));
        if (!curve.YErrors.empty())
            means.YErrors.push_back(ErrorOfMean(std::span(curve.YErrors).subspan(start, end - start)));
    }
    curve = std::move(means);
}

void Smooth(TCurveValues& curve, const TTransform& by) {
    const std::size_t width = WindowOf(by.First);
    const std::size_t degree = WholeNumber(by.Second, 0, "The degree");
    if (degree >= width) throw ETransformError("The degree must be below the number of neighbours");
    curve.YErrors.clear();
    curve.Y = SavitzkyGolay(curve, width, static_cast<int>(degree));
}

void TakeMedians(TCurveValues& curve, const TTransform& by) {
    curve.YErrors.clear();
    curve.Y = RunningMedian(curve.Y, WindowOf(by.First));
}

/// The slope at `at` of the parabola through three points; exact for parabolas at any distances.
double SlopeAt(const TCurveValues& curve, std::size_t first, std::size_t at) {
    const double* x = &curve.X[first];
    const double* y = &curve.Y[first];
    const double left = (y[1] - y[0]) / (x[1] - x[0]);
    const double right = (y[2] - y[1]) / (x[2] - x[1]);
    const double bend = (right - left) / (x[2] - x[0]);
    return left + bend * (2 * curve.X[at] - x[0] - x[1]);
}

void Differentiate(TCurveValues& curve) {
    curve = WithoutRepeats(curve);
    const std::size_t count = curve.X.size();
    if (count < 2) throw ETransformError("All X are equal");
    std::vector<double> slopes(count,
                               (curve.Y.back() - curve.Y.front()) / (curve.X.back() - curve.X.front()));
    for (std::size_t i = 0; i < count && count > 2; ++i)
        slopes[i] = SlopeAt(curve, std::clamp<std::size_t>(i, 1, count - 2) - 1, i);
    curve.Y = std::move(slopes);
}

/// The part of the curve within a range of X, with points at the ends of the range.
void ClipTo(TCurveValues& curve, double from, double to) {
    if (from > to) throw ETransformError("The range ends before it begins");
    const TCurveValues whole = curve;
    if (to < whole.X.front() || from > whole.X.back()) throw ETransformError("No point lies in the range");
    const auto heightAt = [&](double x) {
        const auto right = static_cast<std::size_t>(std::ranges::lower_bound(whole.X, x) - whole.X.begin());
        return whole.X[right] == x ? whole.Y[right] : LineAt(whole, right, x);
    };
    from = std::max(from, whole.X.front());
    to = std::min(to, whole.X.back());
    const auto first = std::ranges::upper_bound(whole.X, from) - whole.X.begin();
    const auto end = std::ranges::lower_bound(whole.X, to) - whole.X.begin();
    curve = {{from}, {heightAt(from)}};
    for (auto i = first; i < end; ++i) {
        curve.X.push_back(whole.X[static_cast<std::size_t>(i)]);
        curve.Y.push_back(whole.Y[static_cast<std::size_t>(i)]);
    }
    if (to == from) return;
    curve.X.push_back(to);
    curve.Y.push_back(heightAt(to));
}

void Integrate(TCurveValues& curve, const TTransform& range) {
    ClipTo(curve, range.First, range.Second);
    double sum = 0;
    double before = curve.Y.front();
    for (std::size_t i = 0; i < curve.X.size(); ++i) {
        const double y = curve.Y[i];
        if (i > 0) sum += 0.5 * (before + y) * (curve.X[i] - curve.X[i - 1]);
        before = y;
        curve.Y[i] = sum;
    }
}

} // namespace

TCurveValues Transformed(const TCurveValues& curve, const TTransform& transform) {
    if (std::isnan(transform.First) || std::isnan(transform.Second))
        throw ETransformError("Both numbers are needed");
    TCurveValues result = FiniteOnly(curve);
    if (result.X.empty()) throw ETransformError("There are no points");
    switch (transform.Kind) {
    case TTransformKind::Shift: Shift(result, transform); break;
    case TTransformKind::Scale: Scale(result, transform); break;
    case TTransformKind::Normalise: Normalise(result, transform); break;
    case TTransformKind::CutRange: CutRange(result, transform); break;
    case TTransformKind::Resample: Resample(result, transform); break;
    case TTransformKind::Average: Average(result, transform); break;
    case TTransformKind::SavitzkyGolay: Smooth(result, transform); break;
    case TTransformKind::RunningMedian: TakeMedians(result, transform); break;
    case TTransformKind::Derivative: Differentiate(result); break;
    case TTransformKind::Integral: Integrate(result, transform); break;
    }
    return result;
}

} // namespace lumoplot
