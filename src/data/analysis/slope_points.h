// Points as the selection of slopes sees them: which of two points comes first on a line that sweeps the
// plane at a given slope is decided exactly, however close they are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace lumoplot {

/// Points numbered by ascending X, then Y, from 0. Slopes are in units of the points' extents, so that
/// products neither overflow nor vanish; InGivenUnits turns one back.
class TSlopePoints {
public:
    /// `x` and `y` are finite, of the same length, below 2^32 points.
    TSlopePoints(std::span<const double> x, std::span<const double> y);

    std::size_t Count() const { return m_points.size(); }
    /// Number of pairs with different X.
    std::uint64_t PairCount() const;
    /// (y of q − y of p) / (x of q − x of p) in doubles; the same for (q, p).
    double Slope(std::uint32_t p, std::uint32_t q) const {
        return (m_points[q].y - m_points[p].y) / (m_points[q].x - m_points[p].x);
    }
    double InGivenUnits(double slope) const;

    /// The points by ascending y − slope·x, equal ones by number, in exact arithmetic; `slope` may be
    /// infinite. So of two points with different X the higher number comes first exactly when their slope
    /// before rounding is below `slope`, and points with equal X always stand by number.
    void OrderAt(double slope, std::vector<std::uint32_t>& order);

private:
    struct TPoint {
        double x;
        double y;
    };
    struct TKey {
        double residual; // rounded
        std::uint32_t point;
    };
    // The residual is rise·y − run·x, slope being run / rise with rise a power of two of at most 1.
    struct TDirection {
        double rise;
        double run;
    };

    static TDirection DirectionOf(double slope);
    int ExactSign(const TDirection& direction, std::uint32_t p, std::uint32_t q) const;
    double FillKeys(const TDirection& direction);
    void SettleCloseKeys(const TDirection& direction, double error);
    double RefineKeys(const TDirection& direction, std::span<TKey> run) const;
    void SortExactly(const TDirection& direction, std::span<TKey> run) const;
    void OrderBackwards(std::vector<std::uint32_t>& order) const;

    std::vector<TPoint> m_points;
    std::vector<TKey> m_keys;
    double m_xReach = 0; // largest distance of an x from that of the first point
    double m_yReach = 0;
    int m_exponent = 0; // given slope = slope · 2^m_exponent
};

} // namespace lumoplot
