// The graph outside the window: on paper and on the clipboard.
#pragma once

#include <QImage>
#include <QRectF>

class QPrinter;

namespace lumoplot {

class TProgress;
class TxyGraph;

/// Units of drawing in an inch.
inline constexpr double kUnitsInInch = 96;

/// Where the graph lies on a page whose printable area has that size: PrintXOffsetPct and PrintYOffsetPct
/// place it, PrintScalePct gives its width, each in percent of the area; it keeps the shape of its panel and
/// is made smaller where it would leave the page.
QRectF PlaceOnPage(const TxyGraph& graph, QSizeF page);

/// Draws the graph at its place on the printer's page; aborts the print when the user cancels. Throws
/// EFileError "The printer can not be used".
void PrintGraph(QPrinter& printer, TxyGraph& graph, TProgress& progress);

/// The graph at the size of its panel, with `scale` pixels to a unit of 1/96 inch.
QImage PictureOf(TxyGraph& graph, double scale);

} // namespace lumoplot
