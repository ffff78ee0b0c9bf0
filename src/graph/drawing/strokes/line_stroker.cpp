#include "graph/drawing/strokes/line_stroker.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kShortest = 1e-6;      // pixels; shorter segments have no direction
constexpr double kSmoothTurn = 0.06;    // 1 - cos of the angle up to which a corner needs no disc
constexpr double kSmoothSagitta = 0.24; // the same for wide pens, times the radius
constexpr double kLookLength = 64;      // pixels of dashes before it is looked again whether they show
constexpr double kThinPen = 0.75;       // radius

} // namespace

TLineStroker::TLineStroker(TStrokeMask& mask, double width, std::span<const double> dashes)
    : m_raster(mask, width), m_dashes(dashes) {
}

void TLineStroker::Stroke(std::span<const QPointF> line, double before) {
    if (line.size() == 1) return m_raster.TakeDisc(line[0]);
    if (m_dashes.IsSolid()) return StrokeSolid(line);
    m_dashes.Restart();
    m_dashes.Skip(before);
    StrokeDashed(line);
}

// Where a line hardly turns its pieces reach into each other as a miter would; elsewhere a disc fills the
// corner.
TLineStroker::TJoin TLineStroker::JoinOf(const TSegment& before, const TSegment& after) const {
    const double cosine = QPointF::dotProduct(before.Direction, after.Direction);
    const double radius = m_raster.Radius();
    if (1 - cosine >= std::min(kSmoothTurn, kSmoothSagitta / radius))
        return {radius < kThinPen ? 0.25 : 0, true};
    const double sine =
        before.Direction.x() * after.Direction.y() - before.Direction.y() * after.Direction.x();
    return {0.5 + (radius + 0.5) * std::abs(sine) / (1 + cosine), false};
}

void TLineStroker::StrokeSolid(std::span<const QPointF> line) {
    TSegment before{};
    bool isOpen = false; // `before` is not yet drawn, since its end depends on what follows
    double beyondStart = 0;
    const auto draw = [&](const TJoin& end) {
        m_raster.TakePiece({before.From, before.To, beyondStart, end.Beyond});
        if (end.IsRound) m_raster.TakeDisc(before.To);
        beyondStart = end.Beyond;
    };
    const TJoin endOfLine{m_raster.Radius() < kThinPen ? 0.25 : 0, true};
    QPointF from = line[0];
    for (const QPointF to : line.subspan(1)) {
        if (m_raster.IsCovered(from, to)) {
            if (isOpen) draw(endOfLine);
            isOpen = false;
            from = to;
            continue;
        }
        const QPointF along = to - from;
        const double length = std::sqrt(QPointF::dotProduct(along, along));
        if (length < kShortest) continue;
        const TSegment segment{from, to, along / length, length};
        if (isOpen) {
            draw(JoinOf(before, segment));
        } else {
            m_raster.TakeDisc(from);
            beyondStart = endOfLine.Beyond;
        }
        before = segment;
        isOpen = true;
        from = to;
    }
    if (isOpen)
        draw(endOfLine);
    else
        m_raster.TakeDisc(line.back());
}

void TLineStroker::DashSegment(const TSegment& segment, double beyondStart, double beyondEnd) {
    double place = 0;
    double nextLook = 0;
    while (place < segment.Length) {
        if (place >= nextLook) {
            nextLook = std::min(place + kLookLength, segment.Length);
            if (m_raster.IsCovered(segment.From + place * segment.Direction,
                                   segment.From + nextLook * segment.Direction)) {
                m_dashes.Skip(nextLook - place);
                place = nextLook;
                continue;
            }
        }
        const bool ends = segment.Length - place > m_dashes.Left();
        const double stop = ends ? place + m_dashes.Left() : segment.Length;
        if (m_dashes.IsOn())
            m_raster.TakePiece({segment.From + place * segment.Direction,
                                segment.From + stop * segment.Direction, place > 0 ? 0 : beyondStart,
                                ends ? 0 : beyondEnd});
        m_dashes.Skip(ends ? m_dashes.Left() : stop - place);
        place = stop;
    }
}

void TLineStroker::StrokeDashed(std::span<const QPointF> line) {
    std::optional<TSegment> before;
    double beyondStart = 0;
    const auto draw = [&](const TJoin& end) {
        if (m_raster.IsCovered(before->From, before->To)) return m_dashes.Skip(before->Length);
        DashSegment(*before, beyondStart, end.Beyond);
        if (end.IsRound && m_dashes.IsOn()) m_raster.TakeDisc(before->To);
    };
    QPointF from = line[0];
    for (const QPointF to : line.subspan(1)) {
        const QPointF along = to - from;
        const double length = std::sqrt(QPointF::dotProduct(along, along));
        if (length < kShortest) continue;
        const TSegment segment{from, to, along / length, length};
        if (before) {
            const TJoin join = JoinOf(*before, segment);
            draw(join);
            beyondStart = join.Beyond;
        }
        before = segment;
        from = to;
    }
    if (before) draw({});
}

} // namespace lumoplot
