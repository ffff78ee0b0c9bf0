// How much of each pixel a line covers, collected from its pieces. Of pieces that lie one above the other the
// one that covers most counts, so that pieces that meet show no seam. Knows which tiles of pixels are covered
// whole: there, nothing that is added changes the picture.
#pragma once

#include <QColor>
#include <QPainter>
#include <QRect>
#include <cstdint>
#include <vector>

namespace lumoplot {

class TStrokeMask {
public:
    /// A tile is as wide as the pixels that a processor takes at once.
    static constexpr int kTileWidth = 16;
    static constexpr int kTileHeight = 8;
    /// Pixels from which on a line may cover all of a pixel wherever it crosses it.
    static constexpr double kThinPen = 3;

    /// Nothing is covered. Places below count from the area's top left corner. Where thin lines have covered
    /// every pixel of a tile nearly whole, so many of them cross it that nothing shines through.
    explicit TStrokeMask(const QRect& area, double penWidth = kThinPen);

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
    /// False as long as IsWholeIn knows of none.
    bool HasWholeTiles() const { return m_summedCount > 0; }
    /// As IsWhole for the tiles under a rectangle in pixels, of which only the part inside counts. May be
    /// false for a while after the last of them became whole.
    bool IsWholeIn(double left, double top, double right, double bottom);

    /// Draws what is covered in that colour; the painter's units are pixels.
    void Draw(QPainter& painter, const QColor& color) const;

private:
    struct TTile {
        std::uint16_t Touched = 0;
        bool IsWhole = false;
        bool IsDirty = false;
    };

    bool BecomesWhole(int tileRow, int tileColumn);
    void SumUp();
    std::size_t TileIndex(int row, int column) const {
        return static_cast<std::size_t>(row * m_tileColumns + column);
    }

    QRect m_area;
    std::uint8_t m_nearlyWhole;
    std::size_t m_stride;
    int m_tileColumns;
    int m_tileRows;
    std::vector<std::uint8_t> m_pixels;
    std::vector<TTile> m_tiles;
    int m_wholeCount = 0;
    int m_summedCount = 0;            ///< whole tiles when they were summed up last
    std::vector<std::int32_t> m_sums; ///< whole tiles above and left of each tile's corner
};

} // namespace lumoplot
