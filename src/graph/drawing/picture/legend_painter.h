// The legend: a box with the symbol and the text of every data set that is shown in it.
#pragma once

#include "graph/drawing/axes/text.h"

#include <QRectF>
#include <vector>

namespace lumoplot {

class TCrowd;
class TGraphLayout;
class TSeries;
class TxyGraph;

struct TLegendEntry {
    const TSeries* Series;
    QRectF Symbol;
    QRectF Text;
    QString Label; ///< shortened where the box is too narrow
};

struct TLegendLayout {
    QRectF Box;
    std::vector<TLegendEntry> Entries;
    QString More; ///< "… and 15 more" for entries that have no room
    QRectF MorePlace;

    bool IsEmpty() const { return Entries.empty() && More.isEmpty(); }
    void Move(QPointF by);
};

/// Lays the legend out in the rectangle of its graph. Across, entries follow each other and go on in a new
/// row where the width ends; down, each has a row, and further columns begin where the graph's height ends.
/// A width or height that is not above 0 fits the entries; the box grows in height for its entries as far as
/// the graph reaches.
TLegendLayout LayOutLegend(const TxyGraph& graph, const QRectF& rectangle);

/// The place of the legend lies so far inside a graph of that size that an entry can be read there.
bool HasRoomForLegend(const TxyGraph& graph, QSizeF size);

/// The legend in the corner of the plot where it covers the fewest points and neither labels nor lines of
/// axes that run through the plot, nor `taken`. It is as wide as its texts, at most half the plot.
TLegendLayout LayOutLegendInCorner(const TxyGraph& graph, const TGraphLayout& layout, const TCrowd& crowd,
                                   const QRectF& taken);

/// Draws a legend that has entries. What it covers of the plot shines through.
void DrawLegend(const TCanvas& canvas, const TxyGraph& graph, const TLegendLayout& layout,
                const QRectF& plot);

} // namespace lumoplot
