#include "data/analysis/spline.h"

#include <cassert>
#include <cmath>

namespace lumoplot {
namespace {

// The points that the spline passes through, with strictly ascending X.
struct TKnots {
    std::vector<double> x;
    std::vector<double> y;
    std::vector<std::size_t> point; // where each knot stands among the points

    std::size_t Count() const { return x.size(); }
    double Slope(std::size_t left) const { return (y[left + 1] - y[left]) / (x[left + 1] - x[left]); }
};

TKnots KnotsOf(std::span<const double> x, std::span<const double> y) {
    TKnots knots;
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (!std::isfinite(x[i]) || !std::isfinite(y[i])) continue;
        if (!knots.x.empty() && !(x[i] > knots.x.back())) continue;
        knots.x.push_back(x[i]);
        knots.y.push_back(y[i]);
        knots.point.push_back(i);
    }
    return knots;
}

// One row of the sweep: the second derivative here is factor · (the next one) + constant.
struct TSweepRow {
    double factor = 0;
    double constant = 0;
};

TSweepRow FirstRow(const TKnots& knots, double endSlope, bool natural) {
    if (natural) return {};
    return {-0.5, 3 / (knots.x[1] - knots.x[0]) * (knots.Slope(0) - endSlope)};
}

TSweepRow InnerRow(const TKnots& knots, std::size_t i, TSweepRow before) {
    const double share = (knots.x[i] - knots.x[i - 1]) / (knots.x[i + 1] - knots.x[i - 1]);
    const double pivot = share * before.factor + 2;
    const double bend = 6 * (knots.Slope(i) - knots.Slope(i - 1)) / (knots.x[i + 1] - knots.x[i - 1]);
    return {(share - 1) / pivot, (bend - share * before.constant) / pivot};
}

double LastSecondDerivative(const TKnots& knots, TSweepRow before, double endSlope, bool natural) {
    if (natural) return 0;
    const std::size_t last = knots.Count() - 1;
    const double bend = 3 / (knots.x[last] - knots.x[last - 1]) * (endSlope - knots.Slope(last - 1));
    return (bend - 0.5 * before.constant) / (0.5 * before.factor + 1);
}

std::vector<double> SecondDerivatives(const TKnots& knots, double endSlope) {
    const bool natural = !(std::isfinite(endSlope) && endSlope < kNaturalEndSlope);
    const std::size_t last = knots.Count() - 1;
    std::vector<TSweepRow> rows(last);
    rows[0] = FirstRow(knots, endSlope, natural);
    for (std::size_t i = 1; i < last; ++i) rows[i] = InnerRow(knots, i, rows[i - 1]);
    std::vector<double> second(knots.Count());
    second[last] = LastSecondDerivative(knots, rows[last - 1], endSlope, natural);
    for (std::size_t i = last; i-- > 0;) second[i] = rows[i].factor * second[i + 1] + rows[i].constant;
    return second;
}

double SplineValue(const TKnots& knots, std::span<const double> second, std::size_t left, double x) {
    const double width = knots.x[left + 1] - knots.x[left];
    const double a = (knots.x[left + 1] - x) / width;
    const double b = (x - knots.x[left]) / width;
    const double bend = (a * a * a - a) * second[left] + (b * b * b - b) * second[left + 1];
    return a * knots.y[left] + b * knots.y[left + 1] + bend * width * width / 6;
}

std::vector<TCurveSample> SampleKnots(const TKnots& knots, std::span<const double> second, int samples) {
    std::vector<TCurveSample> curve;
    std::size_t left = 0;
    for (const double x : CurveGrid(knots.x.front(), knots.x.back(), samples)) {
        while (left + 2 < knots.Count() && knots.x[left + 1] < x) ++left;
        curve.push_back({x, SplineValue(knots, second, left, x)});
    }
    return curve;
}

} // namespace

std::vector<double> CurveGrid(double minX, double maxX, int samples) {
    if (samples < 1 || samples > kMostCurveSamples || !(minX < maxX)) return {};
    std::vector<double> grid(static_cast<std::size_t>(samples) + 1);
    for (std::size_t i = 0; i < grid.size(); ++i)
        grid[i] = std::lerp(minX, maxX, static_cast<double>(i) / samples);
    return grid;
}

TSpline SampleSpline(std::span<const double> x, std::span<const double> y, int samples, double endSlope) {
    assert(x.size() == y.size());
    TSpline spline;
    spline.SecondDerivatives.resize(x.size());
    const TKnots knots = KnotsOf(x, y);
    if (knots.Count() < 2) return spline;
    const std::vector<double> second = SecondDerivatives(knots, endSlope);
    for (std::size_t i = 0; i < knots.Count(); ++i) spline.SecondDerivatives[knots.point[i]] = second[i];
    spline.Curve = SampleKnots(knots, second, samples);
    return spline;
}

} // namespace lumoplot
