#include "graph/drawing/strokes/clipping.h"

#include <algorithm>

namespace lumoplot {

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

} // namespace lumoplot
