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

} // namespace

std::vector<double> RobustWeights(TRobust robust, std::span<const double> residuals) {
    std::vector<double> sizes;
    for (const double residual : residuals) sizes.push_back(std::abs(residual));
    std::vector<double> weights = sizes;
    if (sizes.empty()) return weights;
    const auto middle = sizes.begin() + static_cast<std::ptrdiff_t>(sizes.size() / 2);
    std::ranges::nth_element(sizes, middle);
    const double scale = std::max(*middle / kNormalMedian, std::numeric_limits<double>::min());
    for (double& weight : weights) weight = WeightOf(robust, weight / scale);
    return weights;
}

} // namespace lumoplot
