// The graph outside the window: on paper and on the clipboard.
#pragma once

#include <QImage>

class QPrinter;

namespace lumoplot {

class TxyGraph;

/// Draws the graph on the printer's page: PrintXOffsetPct and PrintYOffsetPct place it, PrintScalePct gives
/// its width, each in percent of the printable area; it keeps the shape of its panel and is made smaller
/// where it would leave the page.
void PrintGraph(QPrinter& printer, TxyGraph& graph);

/// The graph at the size of its panel, with `scale` pixels to a unit of 1/96 inch.
QImage PictureOf(TxyGraph& graph, double scale);

} // namespace lumoplot
