#include "common/special_values.h"
#include "data/analysis/slope_points.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

namespace lumoplot {
namespace {

// Points by ascending X, then Y, as TSlopePoints numbers them.
struct TNumberedPoints {
    std::vector<double> x;
    std::vector<double> y;

    explicit TNumberedPoints(std::vector<std::pair<double, double>> points) {
        std::sort(points.begin(), points.end());
        for (const auto& [px, py] : points) {
            x.push_back(px);
            y.push_back(py);
        }
    }

    std::vector<std::uint32_t> OrderAt(double slope) const {
        TSlopePoints points(x, y);
        std::vector<std::uint32_t> order;
        points.OrderAt(slope / points.InGivenUnits(1), order);
        return order;
    }

    // By the exact sign of residual(p) − residual(q), then by number.
    template <class TSign>
    std::vector<std::uint32_t> Expected(TSign sign) const {
        std::vector<std::uint32_t> order(x.size());
        std::iota(order.begin(), order.end(), 0U);
        std::stable_sort(order.begin(), order.end(),
                         [&](std::uint32_t p, std::uint32_t q) { return sign(p, q) < 0; });
        return order;
    }
};

// Whole coordinates far from the origin: at slopes that are fractions, and at the doubles beside them,
// residuals are equal or differ by less than they are rounded. A fused multiply-add rounds once and keeps the
// sign.
TEST(SlopePoints, OrderIsExactWhereResidualsNearlyTie) {
    std::mt19937_64 random(3);
    for (const std::size_t count : {5, 12, 300}) {
        std::vector<std::pair<double, double>> raw;
        for (std::size_t i = 0; i < count; ++i)
            raw.emplace_back(0x1p40 + static_cast<double>(random() % 30),
                             static_cast<double>(random() % 30) - 0x1p45);
        const TNumberedPoints points(std::move(raw));
        for (const double fraction : {1e-300, 1.0, -1.0, 1.0 / 3, -2.0 / 7, 13.0 / 11, 29.0}) {
            for (const double slope :
                 {fraction, std::nextafter(fraction, 99), std::nextafter(fraction, -99)}) {
                const auto sign = [&](std::uint32_t p, std::uint32_t q) {
                    return std::fma(-slope, points.x[p] - points.x[q], points.y[p] - points.y[q]);
                };
                EXPECT_EQ(points.OrderAt(slope), points.Expected(sign)) << count << " points at " << slope;
            }
        }
    }
}

TEST(SlopePoints, OnlyXCountsAtInfiniteSlopes) {
    const TNumberedPoints points({{1, 5}, {1, 7}, {2, 0}, {3, 1}, {3, 1}});
    EXPECT_EQ(points.OrderAt(-kInfinity), (std::vector<std::uint32_t>{0, 1, 2, 3, 4}));
    EXPECT_EQ(points.OrderAt(kInfinity), (std::vector<std::uint32_t>{3, 4, 2, 0, 1}));
    EXPECT_EQ(TSlopePoints(points.x, points.y).PairCount(), 8U);
}

} // namespace
} // namespace lumoplot
