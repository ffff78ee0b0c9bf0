#include "data/analysis/slope_points.h"

#include "data/analysis/exact_arithmetic.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <limits>
#include <numeric>

namespace lumoplot {
namespace {

constexpr double kHalfUlp = 0x1p-53;
// Where the largest coordinates are brought: high enough that low parts of products stay normal numbers, low
// enough that their products with factors below 2 can still be split.
constexpr int kNormalExponent = 400;
constexpr double kLargestCoordinate = 0x1p+401;

constexpr auto kByResidual = [](const auto& a, const auto& b) { return a.residual < b.residual; };

// Calls visit with each longest run of two or more sorted keys whose neighbours lie too close for residuals
// with the given error to tell their order.
template <class TKey, class TVisit>
void ForEachCloseRun(std::span<TKey> keys, double error, TVisit visit) {
    for (std::size_t first = 0; first < keys.size();) {
        std::size_t end = first + 1;
        while (end < keys.size() && keys[end].residual - keys[end - 1].residual <= 2 * error) ++end;
        if (end - first > 1) visit(keys.subspan(first, end - first));
        first = end;
    }
}

int ExponentOf(std::span<const double> values) {
    double largest = 0;
    for (const double value : values) largest = std::max(largest, std::abs(value));
    return largest == 0 ? 0 : std::ilogb(largest);
}

// The sign of the exact sum: terms are added one by one to an expansion of parts that do not overlap, and the
// largest part decides (Shewchuk 1997, Grow-Expansion).
int SignOfSum(const std::array<double, 6>& terms) {
    std::array<double, 6> parts{};
    std::size_t count = 0;
    for (double carry : terms) {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const TDoubleDouble sum = TwoSum(carry, parts[i]);
            carry = sum.high;
            if (sum.low != 0) parts[kept++] = sum.low;
        }
        if (carry != 0) parts[kept++] = carry;
        count = kept;
    }
    if (count == 0) return 0;
    return parts[count - 1] < 0 ? -1 : 1;
}

} // namespace

TSlopePoints::TSlopePoints(std::span<const double> x, std::span<const double> y) {
    assert(x.size() == y.size());
    assert(x.size() <= std::numeric_limits<std::uint32_t>::max());
    const int xExponent = ExponentOf(x);
    const int yExponent = ExponentOf(y);
    m_exponent = yExponent - xExponent;
    m_points.reserve(x.size());
    for (std::size_t i = 0; i < x.size(); ++i)
        m_points.push_back(
            {std::scalbn(x[i], kNormalExponent - xExponent), std::scalbn(y[i], kNormalExponent - yExponent)});
    const auto before = [](const TPoint& p, const TPoint& q) { return p.x != q.x ? p.x < q.x : p.y < q.y; };
    if (!std::is_sorted(m_points.begin(), m_points.end(), before))
        std::sort(m_points.begin(), m_points.end(), before);
    for (const TPoint& point : m_points) {
        m_xReach = std::max(m_xReach, std::abs(point.x - m_points.front().x));
        m_yReach = std::max(m_yReach, std::abs(point.y - m_points.front().y));
    }
}

std::uint64_t TSlopePoints::PairCount() const {
    std::uint64_t pairs = 0;
    std::size_t equalFrom = 0;
    for (std::size_t i = 0; i < Count(); ++i) {
        if (m_points[i].x != m_points[equalFrom].x) equalFrom = i;
        pairs += equalFrom;
    }
    return pairs;
}

double TSlopePoints::InGivenUnits(double slope) const {
    return std::scalbn(slope, m_exponent);
}

void TSlopePoints::OrderAt(double slope, std::vector<std::uint32_t>& order) {
    order.resize(Count());
    std::iota(order.begin(), order.end(), 0U);
    if (std::isinf(slope)) {
        if (slope > 0) OrderBackwards(order);
        return;
    }
    const TDirection direction = DirectionOf(slope);
    const double error = FillKeys(direction);
    std::sort(m_keys.begin(), m_keys.end(), kByResidual);
    SettleCloseKeys(direction, error);
    std::transform(m_keys.begin(), m_keys.end(), order.begin(), [](const TKey& key) { return key.point; });
}

// Against an infinite slope only X counts, and equal X keep their order.
void TSlopePoints::OrderBackwards(std::vector<std::uint32_t>& order) const {
    std::reverse(order.begin(), order.end());
    for (auto run = order.begin(); run != order.end();) {
        const auto end = std::find_if(run, order.end(),
                                      [&](std::uint32_t p) { return m_points[p].x != m_points[*run].x; });
        std::reverse(run, end);
        run = end;
    }
}

TSlopePoints::TDirection TSlopePoints::DirectionOf(double slope) {
    if (slope == 0) return {1, 0};
    const int exponent = std::max(std::ilogb(slope), 0);
    const double rise = std::ldexp(1.0, -exponent);
    return {rise, slope * rise};
}

// Fills the keys in the order of the points and returns a bound of their errors. Distances from the first
// point stand for the coordinates, so that the bound goes with the extent of the data and not with its place.
double TSlopePoints::FillKeys(const TDirection& direction) {
    const TPoint origin = m_points.front();
    m_keys.resize(Count());
    for (std::size_t i = 0; i < Count(); ++i) {
        const double rise = direction.rise * (m_points[i].y - origin.y);
        const double run = direction.run * (m_points[i].x - origin.x);
        m_keys[i] = {rise - run, static_cast<std::uint32_t>(i)};
    }
    // Two roundings of the rise, three of the run, one more than that for the bound itself.
    constexpr double kRoundings = 4;
    return kRoundings * kHalfUlp * (direction.rise * m_yReach + std::abs(direction.run) * m_xReach);
}

// Sorts exactly wherever the rounded residuals of neighbours do not decide.
void TSlopePoints::SettleCloseKeys(const TDirection& direction, double error) {
    constexpr std::size_t kFewKeys = 16;
    ForEachCloseRun(std::span(m_keys), error, [&](std::span<TKey> run) {
        if (run.size() <= kFewKeys) return SortExactly(direction, run);
        const double refinedError = RefineKeys(direction, run);
        std::sort(run.begin(), run.end(), kByResidual);
        ForEachCloseRun(run, refinedError, [&](std::span<TKey> close) { SortExactly(direction, close); });
    });
}

// Replaces the residuals of a run by their distances from the first of them, which hold the digits that
// rounding took from the residuals. Returns a bound of their errors.
double TSlopePoints::RefineKeys(const TDirection& direction, std::span<TKey> run) const {
    const auto residual = [&](std::uint32_t point) {
        const TDoubleDouble fall = TwoProduct(-direction.run, m_points[point].x);
        const TDoubleDouble sum = TwoSum(direction.rise * m_points[point].y, fall.high);
        return TDoubleDouble{sum.high, sum.low + fall.low};
    };
    const double origin = residual(run.front().point).high;
    double reach = 0;
    for (TKey& key : run) {
        const TDoubleDouble terms = residual(key.point);
        key.residual = (terms.high - origin) + terms.low;
        reach = std::max(reach, std::abs(key.residual));
    }
    constexpr double kRoundings = 8;
    constexpr double kScale = 4 * kLargestCoordinate; // of rise·y and run·x together
    return kRoundings * kHalfUlp * (reach + kHalfUlp * kScale);
}

void TSlopePoints::SortExactly(const TDirection& direction, std::span<TKey> run) const {
    std::sort(run.begin(), run.end(), [&](const TKey& a, const TKey& b) {
        const int sign = ExactSign(direction, a.point, b.point);
        return sign != 0 ? sign < 0 : a.point < b.point;
    });
}

// The sign of the residual of p less that of q.
int TSlopePoints::ExactSign(const TDirection& direction, std::uint32_t p, std::uint32_t q) const {
    const double yStep = m_points[p].y - m_points[q].y;
    const double xStep = m_points[p].x - m_points[q].x;
    const double rise = direction.rise * yStep;
    const double run = direction.run * xStep;
    const double difference = rise - run;
    if (std::abs(difference) > 4 * kHalfUlp * (std::abs(rise) + std::abs(run)))
        return difference < 0 ? -1 : 1;
    const double yRest = TwoSum(m_points[p].y, -m_points[q].y).low;
    const double xRest = TwoSum(m_points[p].x, -m_points[q].x).low;
    const TDoubleDouble runTerms = TwoProduct(-direction.run, xStep);
    const TDoubleDouble restTerms = TwoProduct(-direction.run, xRest);
    return SignOfSum(
        {restTerms.low, restTerms.high, direction.rise * yRest, runTerms.low, runTerms.high, rise});
}

} // namespace lumoplot
