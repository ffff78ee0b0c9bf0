// Covers a mask with lines that run to and fro until they fill it. Each segment is walked along its longer
// side, one span of pixels a step; what segments leave free of a pixel multiplies, as lines that cross at
// random places cover it. Steps through tiles that are covered whole are passed over, so that the cost is
// limited by the pixels of the mask and hardly grows with the length of the lines.
#pragma once

#include "graph/drawing/strokes/dash_walk.h"
#include "graph/drawing/strokes/stroke_raster.h"

#include <span>

namespace lumoplot {

class TCloudStroker {
public:
    /// As for TLineStroker. Dashes end at whole steps.
    TCloudStroker(TStrokeMask& mask, double width, std::span<const double> dashes);

    /// In device pixels.
    void Stroke(std::span<const QPointF> line);

private:
    struct TSegment;

    void TakeSegment(QPointF from, QPointF to);
    void TakePart(QPointF from, QPointF to, const TSegment& segment);
    void TakeCorner(QPointF corner);

    TStrokeMask& m_mask;
    TStrokeRaster m_raster;
    double m_width;
    TDashWalk m_dashes;
};

} // namespace lumoplot
