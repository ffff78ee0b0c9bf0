// How much of each pixel a line covers, collected from its pieces. Of pieces that lie one above the other the
// one that covers most counts, so that pieces that meet show no seam. Knows which tiles of pixels are covered
// whole: there, nothing that is added changes the picture.
#pragma once

#include <QColor>
#include <QPainter>
#include <QRect>
#include <algorithm>
#include <cstdint>
#include <vector>

namespace lumoplot {

class TStrokeMask {
public:
    /// A tile is as wide as the pixels that a processor takes at once.
    static constexpr int kTileWidth = 16;
    static constexpr int kTileHeight = 8;
    /// What of a tile must be covered for it to count as whole; it is covered whole then.
    struct TWholeness {
        int Least; ///< of each pixel, 0 to 255
        int Mean;  ///< of all its pixels
    };
    static constexpr TWholeness kAllOfIt{255, 255};
    /// Where thin lines have covered every pixel nearly whole, so many cross it that nothing shines through.
    static constexpr TWholeness kByThinLines{190, 190};
    /// Where lines run to and fro.
    static constexpr TWholeness kByCloud{0, 247};

    /// Nothing is covered. Places below count from the area's top left corner.
    explicit TStrokeMask(const QRect& area, TWholeness whole = kAllOfIt);

    const QRect& Area() const { return m_area; }
    int Width() const { return m_area.width(); }
    int Height() const { return m_area.height(); }
    /// 0 (free) to 255; up to kTileWidth pixels behind the width may be written, too.
    std::uint8_t* Row(int y) { return m_pixels.data() + static_cast<std::size_t>(y) * m_stride; }
    const std::uint8_t* Row(int y) const { return m_pixels.data() + static_cast<std::size_t>(y) * m_stride; }
    /// From a row to the next.
    std::size_t Stride() const { return m_stride; }

    /// Tells that pixels from column x0 to x1 of a row of tiles were added to, `times` rows of them.
    void Touch(int tileRow, int x0, int x1, int times);
    /// All pixels of the tiles from column x0 to x1 of a row of tiles are covered whole.
    bool IsWhole(int tileRow, int x0, int x1) const;
    /// As IsWhole for the tiles under a rectangle in pixels, of which only the part inside counts. May be
    /// false for a while after the last of them became whole.
    bool IsWholeIn(double left, double top, double right, double bottom);
    /// The same for columns and rows that lie inside, the last ones included.
    bool IsWholeBetween(int left, int top, int right, int bottom) {
        if (m_misses >= kMissesBeforeSum && m_wholeCount != m_summedCount) SumUp();
        if (m_summedCount == 0) {
            ++m_misses;
            return false;
        }
        const int x0 = left / kTileWidth, x1 = right / kTileWidth + 1;
        const int y0 = top / kTileHeight, y1 = bottom / kTileHeight + 1;
        const auto sum = [this](int row, int column) {
            return m_sums[static_cast<std::size_t>(row * (m_tileColumns + 1) + column)];
        };
        const bool isWhole = sum(y1, x1) - sum(y0, x1) - sum(y1, x0) + sum(y0, x0) == (x1 - x0) * (y1 - y0);
        m_misses += !isWhole;
        return isWhole;
    }

    /// The largest rectangle of whole tiles, in pixels; null for none.
    QRect LargestWhole() const;
    /// How many tiles are whole.
    int WholeCount() const { return m_wholeCount; }

    /// Draws what is covered in that colour; the painter's units are pixels.
    void Draw(QPainter& painter, const QColor& color) const;

private:
    struct TTile {
        std::uint16_t Touched = 0;
        bool IsWhole = false;
        bool IsDirty = false;
    };

    static constexpr int kTouchesBeforeLook = 48; ///< rows added to a tile before it is looked at
    /// What is not known to be whole costs as much, so often, as to sum up anew which tiles are.
    static constexpr int kMissesBeforeSum = 512;

    bool BecomesWhole(int tileRow, int tileColumn);
    void Look(int tileRow, int tileColumn);
    void SumUp();
    std::size_t TileIndex(int row, int column) const {
        return static_cast<std::size_t>(row * m_tileColumns + column);
    }

    QRect m_area;
    TWholeness m_whole;
    std::size_t m_stride;
    int m_tileColumns;
    int m_tileRows;
    std::vector<std::uint8_t> m_pixels;
    std::vector<TTile> m_tiles;
    int m_wholeCount = 0;
    int m_summedCount = 0;            ///< whole tiles when they were summed up last
    int m_misses = 0;                 ///< since then
    std::vector<std::int32_t> m_sums; ///< whole tiles above and left of each tile's corner
};

} // namespace lumoplot
