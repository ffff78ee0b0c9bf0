// Draws the symbols of many points: each pixel is the centre of one symbol at most, and on a raster all
// symbols are copies of one stamp.
#pragma once

#include "graph/drawing/lines/symbol.h"

#include <QImage>
#include <bit>
#include <cstdint>
#include <span>
#include <unordered_set>
#include <utility>
#include <vector>

namespace lumoplot {

/// Which pixels of an area have been taken; each is given out once.
class TPixelSet {
public:
    /// An area that is very large is not kept as a bitmap.
    TPixelSet(std::int64_t width, std::int64_t height);

    bool HasBitmap() const { return !m_bitmap.empty(); }
    std::int64_t Width() const { return m_width; }
    std::int64_t Height() const { return m_height; }
    /// True when the pixel lies inside and was not taken before.
    bool Take(std::int64_t x, std::int64_t y);
    /// Takes a pixel that lies inside. Needs the bitmap.
    void Put(std::int64_t x, std::int64_t y) {
        m_bitmap[static_cast<std::size_t>(y * m_wordsPerRow + x / 64)] |= std::uint64_t(1) << (x % 64);
    }
    /// How many pixels are taken.
    std::size_t Count() const;
    /// The first row with a taken pixel and the one behind the last; equal when there is none. Needs the
    /// bitmap.
    std::pair<std::int64_t, std::int64_t> Rows() const;
    /// A row, a bit each pixel. Needs the bitmap.
    std::span<const std::uint64_t> Row(std::int64_t y) const {
        return std::span(m_bitmap).subspan(static_cast<std::size_t>(y * m_wordsPerRow),
                                           static_cast<std::size_t>(m_wordsPerRow));
    }
    /// Calls `visit(x)` for the pixels of a row that are taken, from left to right; of 64 at once, from the
    /// x that is given on, only for those whose bit is set in `chosen(x)`. Needs the bitmap.
    template <class TChosen, class TVisit>
    void VisitRow(std::int64_t y, TChosen chosen, TVisit visit) const;

private:
    std::int64_t m_width;
    std::int64_t m_height;
    std::int64_t m_wordsPerRow;
    std::vector<std::uint64_t> m_bitmap;
    std::unordered_set<std::int64_t> m_few; ///< the pixels taken of a very large area
};

inline bool TPixelSet::Take(std::int64_t x, std::int64_t y) {
    if (x < 0 || y < 0 || x >= m_width || y >= m_height) return false;
    if (!HasBitmap()) return m_few.insert(y * m_width + x).second;
    std::uint64_t& word = m_bitmap[static_cast<std::size_t>(y * m_wordsPerRow + x / 64)];
    const std::uint64_t bit = std::uint64_t(1) << (x % 64);
    if (word & bit) return false;
    word |= bit;
    return true;
}

template <class TChosen, class TVisit>
void TPixelSet::VisitRow(std::int64_t y, TChosen chosen, TVisit visit) const {
    const auto row = Row(y);
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (row[i] == 0) continue;
        const auto first = static_cast<std::int64_t>(i * 64);
        for (std::uint64_t bits = row[i] & chosen(first); bits != 0; bits &= bits - 1)
            visit(first + std::countr_zero(bits));
    }
}

class TSymbolCloud {
public:
    /// Centres outside `area` (device pixels) are not drawn.
    TSymbolCloud(const TCanvas& canvas, const TSymbol& symbol, const QRectF& area);

    /// Adds points in device pixels; not-a-number and infinite ones are passed over.
    void Add(std::span<const double> x, std::span<const double> y);
    /// Draws what was added.
    void Draw();

private:
    void DrawAsVectors() const;
    template <class TVisit>
    void VisitCentres(TVisit visit) const;
    void DrawStamps(const QImage& stamp, QPoint middle) const;
    void DrawMerged(const QImage& stamp, QPoint middle) const;

    const TCanvas& m_canvas;
    TSymbol m_symbol;
    QRectF m_area;
    double m_left;
    double m_top;
    TPixelSet m_taken;
    std::vector<QPointF> m_centres; ///< where the set of pixels does not say it
};

} // namespace lumoplot
