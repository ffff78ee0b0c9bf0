#include "data/transform/peaks.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

/// The lowest place between a top and the next higher one on each side.
struct TFeet {
    std::size_t Left;
    std::size_t Right;
};

/// Lowest places to the left of each index, up to the next higher value, for all in one walk: a stack keeps
/// the values that are not yet hidden by higher ones.
std::vector<std::size_t> LeftFeet(const std::vector<double>& y) {
    std::vector<std::size_t> feet(y.size());
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < y.size(); ++i) {
        std::size_t foot = i;
        while (!open.empty() && y[open.back()] <= y[i]) {
            if (y[feet[open.back()]] < y[foot]) foot = feet[open.back()];
            open.pop_back();
        }
        feet[i] = foot;
        open.push_back(i);
    }
    return feet;
}

std::vector<TFeet> FeetOf(const std::vector<double>& y) {
    const std::vector<std::size_t> left = LeftFeet(y);
    const std::vector<std::size_t> mirrored = LeftFeet({y.rbegin(), y.rend()});
    std::vector<TFeet> feet(y.size());
    for (std::size_t i = 0; i < y.size(); ++i) feet[i] = {left[i], y.size() - 1 - mirrored[y.size() - 1 - i]};
    return feet;
}

double CrossingX(const TCurveValues& curve, std::size_t a, std::size_t b, double level) {
    const double part = (level - curve.Y[a]) / (curve.Y[b] - curve.Y[a]);
    return std::lerp(curve.X[a], curve.X[b], part);
}

double WidthAt(const TCurveValues& curve, std::size_t top, const TFeet& feet, double level) {
    std::size_t left = top;
    while (left > feet.Left && curve.Y[left] > level) --left;
    std::size_t right = top;
    while (right < feet.Right && curve.Y[right] > level) ++right;
    const double from = left < top ? CrossingX(curve, left, left + 1, level) : curve.X[left];
    const double to = right > top ? CrossingX(curve, right, right - 1, level) : curve.X[right];
    return to - from;
}

double AreaAbove(const TCurveValues& curve, const TFeet& feet, double base) {
    double area = 0;
    for (std::size_t i = feet.Left; i < feet.Right; ++i) {
        const double sum = std::max(0.0, curve.Y[i] - base) + std::max(0.0, curve.Y[i + 1] - base);
        area += 0.5 * sum * (curve.X[i + 1] - curve.X[i]);
    }
    return area;
}

} // namespace

std::vector<TPeak> FindPeaks(const TCurveValues& input, double part) {
    TCurveValues curve;
    for (std::size_t i = 0; i < input.X.size(); ++i) {
        if (!std::isfinite(input.X[i]) || !std::isfinite(input.Y[i])) continue;
        curve.X.push_back(input.X[i]);
        curve.Y.push_back(input.Y[i]);
    }
    std::vector<TPeak> peaks;
    if (curve.Y.size() < 3) return peaks;
    const auto [low, high] = std::ranges::minmax(curve.Y);
    const std::vector<TFeet> feet = FeetOf(curve.Y);
    for (std::size_t i = 1; i + 1 < curve.Y.size(); ++i) {
        std::size_t end = i;
        while (end + 1 < curve.Y.size() && curve.Y[end + 1] == curve.Y[i]) ++end;
        const bool isTop =
            curve.Y[i - 1] < curve.Y[i] && end + 1 < curve.Y.size() && curve.Y[end + 1] < curve.Y[i];
        if (!isTop) continue;
        const TFeet around{feet[i].Left, feet[end].Right};
        const double base = std::max(curve.Y[around.Left], curve.Y[around.Right]);
        const double rise = curve.Y[i] - base;
        if (rise > 0 && rise >= part * (high - low))
            peaks.push_back({0.5 * (curve.X[i] + curve.X[end]), curve.Y[i],
                             WidthAt(curve, i, around, base + 0.5 * rise), AreaAbove(curve, around, base)});
        i = end;
    }
    return peaks;
}

} // namespace lumoplot
