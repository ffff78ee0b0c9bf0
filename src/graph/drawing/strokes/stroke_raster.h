// Turns straight pieces of lines and the discs at their corners into coverage. A pixel is covered by as much
// of itself as lies inside the piece, measured from its centre: exact for straight edges along the axes,
// within a few hundredths for others.
#pragma once

#include "graph/drawing/strokes/stroke_mask.h"

#include <QPointF>
#include <array>
#include <vector>

namespace lumoplot {

/// From A to B. An end that lies on a corner reaches a little beyond it, so that the next piece leaves no
/// gap; any other is cut off square.
struct TStrokePiece {
    QPointF A;
    QPointF B;
    double BeyondA = 0; ///< pixels
    double BeyondB = 0;
};

class TStrokeRaster {
public:
    /// For lines `width` pixels wide (above 0).
    TStrokeRaster(TStrokeMask& mask, double width);

    double Radius() const { return m_radius; }
    /// A piece of no length covers nothing.
    void TakePiece(const TStrokePiece& piece);
    /// A round end or corner.
    void TakeDisc(QPointF centre);
    /// True when the line from a to b would change nothing.
    bool IsCovered(QPointF a, QPointF b);

private:
    struct TStamp {
        std::vector<std::uint8_t> Pixels; ///< rows of m_stampStride; empty until it is used
    };

    const TStamp& StampOf(int phaseX, int phaseY);
    void TakeLargeDisc(QPointF centre);

    TStrokeMask& m_mask;
    double m_radius;
    int m_stampReach; ///< pixels beside the one with the centre
    int m_stampStride;
    std::vector<TStamp> m_stamps;
};

} // namespace lumoplot
