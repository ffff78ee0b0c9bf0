#include "data/analysis/robust_line.h"

#include "common/special_values.h"
#include "data/analysis/slope_selection.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

namespace lumoplot {
namespace {

struct TPoints {
    std::vector<double> x;
    std::vector<double> y;
};

std::vector<double> AllSlopes(const TPoints& points) {
    std::vector<double> slopes;
    for (std::size_t i = 0; i < points.x.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            if (points.x[i] != points.x[j])
                slopes.push_back((points.y[i] - points.y[j]) / (points.x[i] - points.x[j]));
    return slopes;
}

double LowerMiddle(std::vector<double> values) {
    const auto middle =
        values.begin() + static_cast<std::ptrdiff_t>(std::max<std::size_t>(values.size() / 2, 1) - 1);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// Ways of making points, each hard on the selection in its own way.
struct TFamily {
    const char* name;
    double (*x)(std::size_t i, double random);
    double (*y)(double x, double random);
};

const TFamily kFamilies[] = {
    {"scattered", [](std::size_t i, double) { return static_cast<double>(i); },
     [](double x, double r) { return 2 * x + 100 * r; }},
    {"noise", [](std::size_t, double r) { return r; }, [](double, double r) { return r - 0.5; }},
    {"lattice", [](std::size_t, double r) { return std::floor(10 * r); },
     [](double, double r) { return std::floor(6 * r); }},
    {"two columns", [](std::size_t, double r) { return r < 0.5 ? 1.0 : 2.0; },
     [](double, double r) { return r; }},
    {"one column and a point", [](std::size_t i, double) { return i == 0 ? 0.0 : 5.0; },
     [](double, double r) { return r; }},
    {"rounded line", [](std::size_t i, double) { return static_cast<double>(i); },
     [](double x, double) { return 0.1 * x + 0.3; }},
    {"exact line", [](std::size_t i, double) { return static_cast<double>(i % 50); },
     [](double x, double) { return 3 * x + 1; }},
    {"falling rounded line", [](std::size_t, double r) { return 1e9 + r; },
     [](double x, double) { return 1e3 - x / 3; }},
    {"flat", [](std::size_t, double r) { return r; }, [](double, double) { return 4.0; }},
    {"mostly flat", [](std::size_t, double r) { return r; },
     [](double, double r) { return r < 0.7 ? 4.0 : r; }},
    {"neighbouring doubles", [](std::size_t, double r) { return 1 + std::floor(r * 64) * 0x1p-52; },
     [](double, double r) { return 1e6 + std::floor(r * 16) * 0x1p-33; }},
    {"outliers", [](std::size_t i, double) { return static_cast<double>(i); },
     [](double x, double r) { return r < 0.1 ? 1e30 * r : x + r; }},
    {"far and huge", [](std::size_t, double r) { return 1e300 * r; },
     [](double, double r) { return 1e-200 * (r - 0.3); }},
};

TPoints MakePoints(const TFamily& family, std::size_t count, std::uint64_t seed) {
    std::mt19937_64 random(seed);
    const auto unit = [&random] { return static_cast<double>(random() >> 11) * 0x1p-53; };
    TPoints points;
    for (std::size_t i = 0; i < count; ++i) {
        points.x.push_back(family.x(i, unit()));
        points.y.push_back(family.y(points.x.back(), unit()));
    }
    return points;
}

TEST(RobustLine, SelectsTheSlopeThatSortingAllWouldGive) {
    for (const TFamily& family : kFamilies) {
        for (const std::size_t count : {2, 3, 4, 5, 10, 33, 100, 250, 2000}) {
            const TPoints points = MakePoints(family, count, count);
            const std::vector<double> slopes = AllSlopes(points);
            const auto selected = MedianSlope(points.x, points.y);
            ASSERT_EQ(selected.has_value(), !slopes.empty()) << family.name << count;
            if (slopes.empty()) continue;
            EXPECT_EQ(*selected, LowerMiddle(slopes)) << family.name << " " << count;
        }
    }
}

struct TLineCase {
    TPoints points;
    double c1;
    double c0;
};

TEST(RobustLine, SmallCasesMatchHandArithmetic) {
    const TLineCase cases[] = {
        {{{}, {}}, 0, 0},
        {{{3}, {5}}, 0, 5},
        {{{2, 2, 2}, {1, 2, 6}}, 0, 3},        // one X: flat at the mean
        {{{0, 2}, {1, 5}}, 2, 1},              // the one slope there is
        {{{0, 1, 2}, {0, 1, 4}}, 1, 0},        // slopes 1, 2, 3: the lower middle is the first
        {{{0, 1, 2, 3}, {0, 1, 2, 90}}, 1, 0}, // slopes 1, 1, 1, 30, 44.5, 89
        {{{3, 0, 2, 1}, {90, 0, 2, 1}}, 1, 0}, // the same in another order
        {{{0, 1, 2, 3, 4}, {0, kNaN, 2, kInfinity, 4}}, 1, 0}, // not finite: left out
        {{{0, kNaN, 1, 2}, {1, 7, 1, 1}}, 0, 1},
        {{{0, 5e-324}, {1, 3}}, 0, 2}, // no double holds the slope
    };
    for (const TLineCase& c : cases) {
        const TRegressionCoefficients line = FitRobustLine(c.points.x, c.points.y).Coefficients();
        EXPECT_EQ(line.C1, c.c1) << testing::PrintToString(c.points.y);
        EXPECT_EQ(line.C0, c.c0) << testing::PrintToString(c.points.y);
        EXPECT_EQ(line.C2, 0);
    }
}

TEST(RobustLine, InterceptIsTheMedianOfWhatTheSlopeLeaves) {
    const TPoints points = MakePoints(kFamilies[0], 501, 3);
    const TRegressionCoefficients line = FitRobustLine(points.x, points.y).Coefficients();
    std::vector<double> rest;
    for (std::size_t i = 0; i < points.x.size(); ++i) rest.push_back(points.y[i] - line.C1 * points.x[i]);
    EXPECT_EQ(line.C0, LowerMiddle(rest));
}

// Differences of the coordinates overflow although the slope does not.
TEST(RobustLine, TheWholeRangeOfDoublesHasASlope) {
    constexpr double kLargest = std::numeric_limits<double>::max();
    EXPECT_EQ(MedianSlope(std::vector<double>{-1, 1}, std::vector<double>{-kLargest, kLargest}), kLargest);
    EXPECT_EQ(MedianSlope(std::vector<double>{-kLargest, kLargest}, std::vector<double>{-1, 1}),
              1 / kLargest);
}

} // namespace
} // namespace lumoplot
