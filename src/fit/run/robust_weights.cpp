#include "fit/run/robust_weights.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

constexpr double kNormalMedian = 0.6745; // of the size of a standard normal number
constexpr double kHuber = 1.345;
constexpr double kCauchy = 2.3849;
constexpr double kTukey = 4.6851;
constexpr double kFarOff = 1e50; // of the scale; farther makes no difference

double WeightOf(TRobust robust, double size) {
    switch (robust) {
    case TRobust::Huber: return size <= kHuber ? 1 : kHuber / size;
    case TRobust::Cauchy: return 1 / (1 + (size / kCauchy) * (size / kCauchy));
    case TRobust::Tukey: {
        const double rest = 1 - (size / kTukey) * (size / kTukey);
        return size < kTukey ? rest * rest : 0;
    }
    case TRobust::None: break;
    }
    return 1;
}

/// Of size times weight, by the size.
double SlopeOf(TRobust robust, double size) {
    switch (robust) {
    case TRobust::Huber: return size <= kHuber ? 1 : 0;
    case TRobust::Cauchy: {
        const double square = (size / kCauchy) * (size / kCauchy);
        return (1 - square) / ((1 + square) * (1 + square));
    }
    case TRobust::Tukey: {
        const double square = (size / kTukey) * (size / kTukey);
        return size < kTukey ? (1 - square) * (1 - 5 * square) : 0;
    }
    case TRobust::None: break;
    }
    return 1;
}

std::vector<double> SizesOf(std::span<const double> residuals) {
    std::vector<double> sizes;
    for (const double residual : residuals) sizes.push_back(std::abs(residual));
    return sizes;
}

// A fit makes some residuals small: as many as it has parameters count for nothing (W. DuMouchel, F. O'Brien,
// Computing Science and Statistics 21 (1989) 297-301).
double ScaleOf(std::vector<double> sizes, std::size_t parameters) {
    const std::size_t place = (sizes.size() + std::min(parameters, sizes.size() - 1)) / 2;
    const auto middle = sizes.begin() + static_cast<std::ptrdiff_t>(std::min(place, sizes.size() - 1));
    std::ranges::nth_element(sizes, middle);
    return std::max(*middle / kNormalMedian, std::numeric_limits<double>::min());
}

} // namespace

std::vector<double> RobustWeights(TRobust robust, std::span<const double> residuals, std::size_t parameters) {
    std::vector<double> weights = SizesOf(residuals);
    if (weights.empty()) return weights;
    const double scale = ScaleOf(weights, parameters);
    for (double& weight : weights) weight = WeightOf(robust, weight / scale);
    return weights;
}

double RobustDeviation(TRobust robust, std::span<const double> residuals, std::size_t parameters) {
    const std::vector<double> sizes = SizesOf(residuals);
    if (sizes.size() <= parameters) return std::numeric_limits<double>::quiet_NaN();
    const auto count = static_cast<double>(sizes.size());
    const auto varied = static_cast<double>(parameters);
    const double scale = ScaleOf(sizes, parameters);
    double squares = 0, weights = 0, slopes = 0, slopeSquares = 0;
    for (const double size : sizes) {
        const double relative = std::min(size / scale, kFarOff);
        const double influence = relative * WeightOf(robust, relative);
        const double slope = SlopeOf(robust, relative);
        squares += influence * influence / (count - varied);
        weights += WeightOf(robust, relative) / count;
        slopes += slope / count;
        slopeSquares += slope * slope / count;
    }
    const double scatter = slopeSquares / (slopes * slopes) - 1;
    return scale * (1 + varied / count * scatter) * std::sqrt(squares * weights) / std::abs(slopes);
}

} // namespace lumoplot
