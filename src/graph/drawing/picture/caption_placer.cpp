#include "graph/drawing/picture/caption_placer.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kOnData = 5;      // what a caption costs on each place of the data,
constexpr double kOnCaption = 1e6; // on another text
constexpr double kOnLine = 30;
constexpr double kLeaderOnText = 300;
constexpr double kLeaderOnLeader = 100;
constexpr double kAway = 3;
constexpr double kLaterPlace = 0.05;     // to go on to the next place
constexpr double kPerUnit = 0.05;        // of a leader
constexpr double kOffLines = 1.5;        // units between a caption and the lines of marks
constexpr double kInset = 3;             // units between a caption and the sides of the plot
constexpr double kRoomForLeaders = 2;    // units
constexpr std::size_t kFewCaptions = 40; // that each look again for a better place, this often
constexpr int kLooks = 3;

bool Crosses(const QLineF& line, const QRectF& box) {
    if (box.contains(line.p1()) || box.contains(line.p2())) return true;
    const std::array sides = {
        QLineF(box.topLeft(), box.topRight()), QLineF(box.bottomLeft(), box.bottomRight()),
        QLineF(box.topLeft(), box.bottomLeft()), QLineF(box.topRight(), box.bottomRight())};
    return std::ranges::any_of(sides, [&](const QLineF& side) {
        return line.intersects(side, nullptr) == QLineF::BoundedIntersection;
    });
}

bool Cross(const QLineF& a, const QLineF& b) {
    return a.intersects(b, nullptr) == QLineF::BoundedIntersection;
}

} // namespace

QPointF TCaptionPlacer::Inside(QPointF corner, QSizeF size) const {
    const QRectF room = m_plot.adjusted(kInset, kInset, -kInset, -kInset);
    return {std::max(room.left(), std::min(corner.x(), room.right() - size.width())),
            std::max(room.top(), std::min(corner.y(), room.bottom() - size.height()))};
}

TPlacedCaption TCaptionPlacer::At(const TCaptionPlace& place, const TCaption& caption) const {
    TPlacedCaption placed{QRectF(Inside(place.Corner, caption.Size), caption.Size), {}};
    if (!place.IsAway) return placed;
    const QRectF& box = placed.Box;
    const QPointF from = caption.LeaderStart(box);
    placed.Leader = QLineF(
        from, {std::clamp(from.x(), box.left(), box.right()), std::clamp(from.y(), box.top(), box.bottom())});
    return placed;
}

double TCaptionPlacer::CostOf(const TPlacedCaption& caption) const {
    double cost = kOnData * m_crowd.In(caption.Box);
    for (const QRectF& taken : m_taken) {
        if (taken.intersects(caption.Box)) cost += kOnCaption;
        if (caption.Leader && Crosses(*caption.Leader, taken)) cost += kLeaderOnText;
    }
    const QRectF offLines = caption.Box.adjusted(-kOffLines, -kOffLines, kOffLines, kOffLines);
    for (const QLineF& line : m_lines)
        if (Crosses(line, offLines)) cost += kOnLine;
    for (const TPlacedCaption& other : m_others) {
        if (other.Box.intersects(caption.Box)) cost += kOnCaption;
        const QRectF wide = other.Box.adjusted(-kRoomForLeaders, 0, kRoomForLeaders, 0);
        if (caption.Leader && Crosses(*caption.Leader, wide)) cost += kLeaderOnText;
        if (other.Leader && Crosses(*other.Leader, caption.Box)) cost += kLeaderOnText;
        if (caption.Leader && other.Leader && Cross(*caption.Leader, *other.Leader)) cost += kLeaderOnLeader;
    }
    return caption.Leader ? cost + kAway + kPerUnit * caption.Leader->length() : cost;
}

TPlacedCaption TCaptionPlacer::BestOf(const TCaption& caption) const {
    TPlacedCaption best;
    double least = HUGE_VAL;
    for (std::size_t i = 0; i < caption.Places.size(); ++i) {
        const double later = static_cast<double>(i) * kLaterPlace;
        if (later >= least) break;
        const TPlacedCaption placed = At(caption.Places[i], caption);
        const double cost = CostOf(placed) + later;
        if (cost >= least) continue;
        least = cost;
        best = placed;
    }
    return best;
}

// One after the other, then each again among all others: the first ones did not know of the leaders of the
// last.
std::vector<TPlacedCaption> TCaptionPlacer::Place(std::span<const TCaption> captions) {
    m_others.clear();
    for (const TCaption& caption : captions) m_others.push_back(BestOf(caption));
    const int looks = captions.size() <= kFewCaptions ? kLooks : 0;
    for (int look = 0; look < looks; ++look)
        for (std::size_t i = 0; i < captions.size(); ++i) {
            m_others.erase(m_others.begin() + static_cast<std::ptrdiff_t>(i));
            m_others.insert(m_others.begin() + static_cast<std::ptrdiff_t>(i), BestOf(captions[i]));
        }
    return std::move(m_others);
}

} // namespace lumoplot
