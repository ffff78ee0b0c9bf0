// The nine shapes that points are drawn with.
#pragma once

#include "graph/drawing/lines/canvas.h"
#include "graph/model/series.h"

namespace lumoplot {

/// How a point is drawn. Sizes are device pixels or units, whatever the painter's are.
struct TSymbol {
    TPointShape Shape = TPointShape::Square;
    double Size = 12;       ///< width and height, the border included
    double BorderWidth = 2; ///< also the line width of the shapes that are made of lines
    bool IsFilled = true;
    QColor Color;
};

/// Draws the symbol around its centre. A wide point is a horizontal bar: as wide as the size says, a third of
/// that high, at least the border. Crosses and stars are lines; filling does not change them.
void DrawSymbol(QPainter& painter, const TSymbol& symbol, QPointF centre);

/// The symbol of a data set in units.
TSymbol SymbolOf(const TSeries& series);

/// The symbol in whole device pixels, with a size whose middle (a pixel or a line between pixels) suits its
/// lines.
TSymbol InPixels(const TSymbol& symbol, double pixelsPerUnit);

} // namespace lumoplot
