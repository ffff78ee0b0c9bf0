#include "graph/drawing/lines/polylines.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace lumoplot {
namespace {

bool Contains(const QRectF& r, QPointF p) {
    return p.x() >= r.left() && p.x() <= r.right() && p.y() >= r.top() && p.y() <= r.bottom();
}

// Liang and Barsky, "A new concept and method for line clipping" (1984).
std::optional<std::pair<QPointF, QPointF>> ClippedSegment(QPointF a, QPointF b, const QRectF& r) {
    double enter = 0;
    double leave = 1;
    const QPointF d = b - a;
    const auto cut = [&](double direction, double room) {
        if (direction == 0) return room >= 0;
        const double t = room / direction;
        if (direction < 0)
            enter = std::max(enter, t);
        else
            leave = std::min(leave, t);
        return enter <= leave;
    };
    const bool inside = cut(-d.x(), a.x() - r.left()) && cut(d.x(), r.right() - a.x()) &&
                        cut(-d.y(), a.y() - r.top()) && cut(d.y(), r.bottom() - a.y());
    if (!inside) return std::nullopt;
    return std::pair(enter > 0 ? a + enter * d : a, leave < 1 ? a + leave * d : b);
}

void AddClipped(TPolylines& result, std::span<const QPointF> line, const QRectF& rectangle) {
    if (line.size() == 1) {
        if (Contains(rectangle, line[0])) result.Add(line[0]);
        return result.End();
    }
    bool isOpen = false;
    for (std::size_t i = 1; i < line.size(); ++i) {
        const auto part = ClippedSegment(line[i - 1], line[i], rectangle);
        if (!part) {
            isOpen = false;
            continue;
        }
        if (!isOpen) {
            result.End();
            result.Add(part->first);
        }
        result.Add(part->second);
        isOpen = part->second == line[i];
    }
    result.End();
}

} // namespace

bool TPolylines::AllInside(const QRectF& rectangle) const {
    return std::ranges::all_of(m_points, [&](QPointF point) { return Contains(rectangle, point); });
}

TPolylines Clipped(TPolylines lines, const QRectF& rectangle) {
    if (lines.AllInside(rectangle)) return lines;
    TPolylines result;
    for (std::size_t i = 0; i < lines.Count(); ++i) AddClipped(result, lines.Line(i), rectangle);
    return result;
}

} // namespace lumoplot
