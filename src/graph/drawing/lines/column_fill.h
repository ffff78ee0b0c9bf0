// Fills neighbouring pixel columns, each between two heights of its own: what a dense line covers. Much
// faster than a polygon of the same outline.
#pragma once

#include <QPainter>
#include <span>

namespace lumoplot {

/// From Low to High in pixels, fractions included; nothing where Low is not below High.
struct TColumnSpan {
    double Low;
    double High;
};

/// Fills the columns from `first` on; the painter's units are pixels of a raster, which is `clip` or larger.
void FillColumns(QPainter& painter, int first, std::span<const TColumnSpan> spans, const QColor& color,
                 const QRect& clip);

} // namespace lumoplot
