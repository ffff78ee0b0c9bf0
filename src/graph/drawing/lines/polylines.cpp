#include "graph/drawing/lines/polylines.h"

#include "graph/drawing/strokes/clipping.h"

#include <algorithm>

namespace lumoplot {
namespace {

bool Contains(const QRectF& r, QPointF p) {
    return p.x() >= r.left() && p.x() <= r.right() && p.y() >= r.top() && p.y() <= r.bottom();
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
