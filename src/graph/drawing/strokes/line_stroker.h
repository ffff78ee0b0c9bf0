// Strokes polylines with a round or a dashed pen into a mask. Each piece is covered by itself: the cost grows
// with the length that is drawn, however often a line crosses itself.
#pragma once

#include "graph/drawing/strokes/dash_walk.h"
#include "graph/drawing/strokes/stroke_raster.h"

#include <optional>
#include <span>

namespace lumoplot {

class TLineStroker {
public:
    /// `dashes` are lengths in pixels, drawn and left out in turn; none for a solid line. Solid lines have
    /// round ends, dashes flat ones; corners are round.
    TLineStroker(TStrokeMask& mask, double width, std::span<const double> dashes);

    /// Places count from the mask's corner. Dashes begin `before` pixels behind their start.
    void Stroke(std::span<const QPointF> line, double before);

private:
    struct TSegment {
        QPointF From;
        QPointF To;
        QPointF Direction;
        double Length;
    };
    struct TJoin {
        double Beyond = 0;
        bool IsRound = false;
    };

    TJoin JoinOf(const TSegment& before, const TSegment& after) const;
    void StrokeSolid(std::span<const QPointF> line);
    void StrokeDashed(std::span<const QPointF> line);
    void DashSegment(const TSegment& segment, double beyondStart, double beyondEnd);

    TStrokeRaster m_raster;
    TDashWalk m_dashes;
};

} // namespace lumoplot
