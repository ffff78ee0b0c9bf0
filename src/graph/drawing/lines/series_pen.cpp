#include "graph/drawing/lines/series_pen.h"

#include "graph/model/appearance.h"
#include "graph/model/graph.h"

namespace lumoplot {

QPen SeriesPen(const TCanvas& canvas, const TSeries& series, TColor color, TPenStyle style, double width) {
    const bool plain = canvas.IsPrinting() && !series.Graph().Appearance()->PrintLineStyle();
    return canvas.Pen(color, plain ? TPenStyle::Solid : style, width);
}

QRectF ReachOfPen(const TCanvas& canvas, const QPen& pen, const QRectF& visible) {
    const double beyond = canvas.IsRaster() ? 4 * pen.widthF() * canvas.PixelsPerUnit() + 2 : 0;
    return canvas.ToDevice(visible).adjusted(-beyond, -beyond, beyond, beyond);
}

} // namespace lumoplot
