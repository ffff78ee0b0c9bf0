// Lines through points, several of them in one array, and how they are cut off at a rectangle. Coordinates
// are device pixels and finite.
#pragma once

#include <QPointF>
#include <QRectF>
#include <cstddef>
#include <span>
#include <vector>

namespace lumoplot {

/// No place on a device lies further away; the painter can not count further.
inline double FarthestPlace(double place) {
    constexpr double kFarthest = 1e9;
    return place < -kFarthest ? -kFarthest : place > kFarthest ? kFarthest : place;
}

/// A sequence of polylines. One of a single point stands for a dot.
class TPolylines {
public:
    void Add(QPointF point) { m_points.push_back(point); }
    /// Ends the polyline; the next point starts another. Does nothing when there is nothing to end.
    void End() {
        if (m_points.size() > (m_ends.empty() ? 0 : m_ends.back())) m_ends.push_back(m_points.size());
    }
    bool AllInside(const QRectF& rectangle) const;
    /// How many polylines have ended.
    std::size_t Count() const { return m_ends.size(); }
    std::span<const QPointF> Line(std::size_t index) const {
        const std::size_t start = index == 0 ? 0 : m_ends[index - 1];
        return std::span(m_points).subspan(start, m_ends[index] - start);
    }

private:
    std::vector<QPointF> m_points;
    std::vector<std::size_t> m_ends;
};

/// The parts of the polylines inside the rectangle; dots outside are left out.
TPolylines Clipped(TPolylines lines, const QRectF& rectangle);

} // namespace lumoplot
