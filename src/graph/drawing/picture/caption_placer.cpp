#include "graph/drawing/picture/caption_placer.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kOnCaption = 1e6; // what a caption on another text costs; covering a place of the data is 1
constexpr double kOnLine = 30;
constexpr double kLaterPlace = 0.25; // what it costs to go on to the next place
constexpr double kAway = 3;
constexpr double kInset = 3; // units between a caption and the sides of the plot

bool Crosses(const QLineF& line, const QRectF& box) {
    if (box.contains(line.p1()) || box.contains(line.p2())) return true;
    const std::array sides = {
        QLineF(box.topLeft(), box.topRight()), QLineF(box.bottomLeft(), box.bottomRight()),
        QLineF(box.topLeft(), box.bottomLeft()), QLineF(box.topRight(), box.bottomRight())};
    return std::ranges::any_of(sides, [&](const QLineF& side) {
        return line.intersects(side, nullptr) == QLineF::BoundedIntersection;
    });
}

} // namespace

QPointF TCaptionPlacer::Inside(QPointF corner, QSizeF size) const {
    const QRectF room = m_plot.adjusted(kInset, kInset, -kInset, -kInset);
    return {std::max(room.left(), std::min(corner.x(), room.right() - size.width())),
            std::max(room.top(), std::min(corner.y(), room.bottom() - size.height()))};
}

double TCaptionPlacer::CostOf(const QRectF& box) const {
    double cost = m_crowd.In(box);
    for (const QRectF& taken : m_taken)
        if (taken.intersects(box)) cost += kOnCaption;
    for (const QLineF& line : m_lines)
        if (Crosses(line, box)) cost += kOnLine;
    return cost;
}

TCaptionPlace TCaptionPlacer::Take(std::span<const TCaptionPlace> places, QSizeF size) {
    TCaptionPlace best{Inside(places.front().Corner, size)};
    double least = HUGE_VAL;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const QPointF corner = Inside(places[i].Corner, size);
        const double cost = CostOf(QRectF(corner, size)) + static_cast<double>(i) * kLaterPlace +
                            (places[i].IsAway ? kAway : 0);
        if (cost >= least) continue;
        least = cost;
        best = {corner, places[i].IsAway};
    }
    m_taken.emplace_back(best.Corner, size);
    return best;
}

} // namespace lumoplot
