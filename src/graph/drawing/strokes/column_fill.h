// Covers neighbouring pixel columns, each between two heights of its own: what a dense line covers.
#pragma once

#include "graph/drawing/strokes/stroke_mask.h"

#include <span>

namespace lumoplot {

/// From Low to High in pixels, fractions included; nothing where Low is not below High.
struct TColumnSpan {
    double Low;
    double High;
};

/// Covers the columns from `first` on, as far as they lie in the mask.
void CoverColumns(TStrokeMask& mask, int first, std::span<const TColumnSpan> spans);

} // namespace lumoplot
