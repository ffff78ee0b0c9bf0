// Draws the symbols of many points: each pixel is the centre of one symbol at most, and on a raster all
// symbols are copies of one stamp.
#pragma once

#include "graph/drawing/symbol.h"

#include <cstdint>
#include <span>
#include <unordered_set>
#include <vector>

namespace lumoplot {

/// Which pixels of an area have been taken; each is given out once.
class XYGRAPH_EXPORT TPixelSet {
public:
    TPixelSet(std::int64_t width, std::int64_t height);
    /// True when the pixel lies inside and was not taken before.
    bool Take(std::int64_t x, std::int64_t y);

private:
    std::int64_t m_width;
    std::int64_t m_height;
    std::vector<bool> m_taken;              ///< one for each pixel, or empty for an area that is very large
    std::unordered_set<std::int64_t> m_few; ///< the pixels taken of a very large area
};

class XYGRAPH_EXPORT TSymbolCloud {
public:
    /// Centres outside `area` (device pixels) are not drawn.
    TSymbolCloud(const TCanvas& canvas, const TSymbol& symbol, const QRectF& area);

    /// Adds points in device pixels; not-a-number is passed over.
    void Add(std::span<const double> x, std::span<const double> y);
    /// Draws what was added.
    void Draw();

private:
    void DrawStamps();

    const TCanvas& m_canvas;
    TSymbol m_symbol;
    QRectF m_area;
    double m_left;
    double m_top;
    TPixelSet m_taken;
    std::vector<QPointF> m_centres;
};

} // namespace lumoplot
