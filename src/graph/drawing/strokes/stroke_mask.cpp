#include "graph/drawing/strokes/stroke_mask.h"

#include <QImage>
#include <algorithm>
#include <array>
#include <cmath>

namespace lumoplot {
namespace {

std::array<QRgb, 256> ShadesOfPen(const QColor& color) {
    std::array<QRgb, 256> shades;
    for (std::size_t i = 0; i < shades.size(); ++i)
        shades[i] = qPremultiply(
            qRgba(color.red(), color.green(), color.blue(), qRound(static_cast<double>(i) * color.alphaF())));
    return shades;
}

} // namespace

TStrokeMask::TStrokeMask(const QRect& area, TWholeness whole)
    : m_area(area), m_whole(whole),
      m_stride(static_cast<std::size_t>((area.width() + kTileWidth - 1) / kTileWidth + 1) * kTileWidth),
      m_tileColumns((area.width() + kTileWidth - 1) / kTileWidth),
      m_tileRows((area.height() + kTileHeight - 1) / kTileHeight),
      m_pixels(m_stride * static_cast<std::size_t>(std::max(area.height(), 0))),
      m_tiles(static_cast<std::size_t>(m_tileColumns * m_tileRows)) {
}

void TStrokeMask::Touch(int tileRow, int x0, int x1, int times) {
    const int last = std::min(x1, Width() - 1) / kTileWidth;
    for (int column = x0 / kTileWidth; column <= last; ++column) {
        TTile& tile = m_tiles[TileIndex(tileRow, column)];
        tile.IsDirty = true;
        if (tile.IsWhole) continue;
        tile.Touched = static_cast<std::uint16_t>(tile.Touched + times);
        if (tile.Touched >= kTouchesBeforeLook) Look(tileRow, column);
    }
}

void TStrokeMask::Look(int tileRow, int tileColumn) {
    TTile& tile = m_tiles[TileIndex(tileRow, tileColumn)];
    tile.Touched = 0;
    if (tile.IsWhole) return;
    tile.IsWhole = BecomesWhole(tileRow, tileColumn);
    m_wholeCount += tile.IsWhole;
}

bool TStrokeMask::BecomesWhole(int tileRow, int tileColumn) {
    const int x0 = tileColumn * kTileWidth;
    const int width = std::min(kTileWidth, Width() - x0);
    const int y0 = tileRow * kTileHeight;
    const int y1 = std::min(y0 + kTileHeight, Height());
    int sum = 0;
    for (int y = y0; y < y1; ++y) {
        const std::uint8_t* row = Row(y) + x0;
        std::uint8_t least = 255;
        for (int x = 0; x < width; ++x) {
            least = std::min(least, row[x]);
            sum += row[x];
        }
        if (least < m_whole.Least) return false;
    }
    if (sum < m_whole.Mean * width * (y1 - y0)) return false;
    for (int y = y0; y < y1; ++y) std::fill_n(Row(y) + x0, width, std::uint8_t(255));
    return true;
}

bool TStrokeMask::IsWhole(int tileRow, int x0, int x1) const {
    const int last = std::min(x1, Width() - 1) / kTileWidth;
    for (int column = x0 / kTileWidth; column <= last; ++column)
        if (!m_tiles[TileIndex(tileRow, column)].IsWhole) return false;
    return true;
}

void TStrokeMask::SumUp() {
    const auto stride = static_cast<std::size_t>(m_tileColumns + 1);
    m_sums.assign(stride * static_cast<std::size_t>(m_tileRows + 1), 0);
    for (int row = 0; row < m_tileRows; ++row) {
        std::int32_t inRow = 0;
        const std::size_t above = static_cast<std::size_t>(row) * stride;
        for (int column = 0; column < m_tileColumns; ++column) {
            inRow += m_tiles[TileIndex(row, column)].IsWhole;
            const auto place = static_cast<std::size_t>(column + 1);
            m_sums[above + stride + place] = m_sums[above + place] + inRow;
        }
    }
    m_summedCount = m_wholeCount;
    m_misses = 0;
}

bool TStrokeMask::IsWholeIn(double left, double top, double right, double bottom) {
    const auto column = [this](double x) { return static_cast<int>(std::clamp<double>(x, 0, Width() - 1)); };
    const auto row = [this](double y) { return static_cast<int>(std::clamp<double>(y, 0, Height() - 1)); };
    return IsWholeBetween(column(left), row(top), column(right), row(bottom));
}

// By the heights of the whole tiles above each tile of a row: each rectangle is as high as its lowest column.
QRect TStrokeMask::LargestWhole() const {
    std::vector<int> heights(static_cast<std::size_t>(m_tileColumns) + 1,
                             0); // the last one ends every rectangle
    std::vector<int> open;       // columns of growing height
    QRect best;
    for (int row = 0; row < m_tileRows; ++row) {
        open.clear();
        for (int column = 0; column <= m_tileColumns; ++column) {
            int& height = heights[static_cast<std::size_t>(column)];
            if (column < m_tileColumns) height = m_tiles[TileIndex(row, column)].IsWhole ? height + 1 : 0;
            while (!open.empty() && heights[static_cast<std::size_t>(open.back())] >= height) {
                const int high = heights[static_cast<std::size_t>(open.back())];
                open.pop_back();
                const int left = open.empty() ? 0 : open.back() + 1;
                if (high * (column - left) > best.width() * best.height())
                    best = QRect(left, row - high + 1, column - left, high);
            }
            open.push_back(column);
        }
    }
    return QRect(best.left() * kTileWidth, best.top() * kTileHeight, best.width() * kTileWidth,
                 best.height() * kTileHeight) &
           QRect(0, 0, Width(), Height());
}

void TStrokeMask::Draw(QPainter& painter, const QColor& color) const {
    const std::array<QRgb, 256> shades = ShadesOfPen(color);
    QImage band(std::max(Width(), 1), kTileHeight, QImage::Format_ARGB32_Premultiplied);
    if (band.isNull()) return;
    for (int tileRow = 0; tileRow < m_tileRows; ++tileRow) {
        const int y0 = tileRow * kTileHeight;
        const int rows = std::min(kTileHeight, Height() - y0);
        const auto isDirty = [&](int column) { return m_tiles[TileIndex(tileRow, column)].IsDirty; };
        for (int column = 0; column < m_tileColumns; ++column) {
            if (!isDirty(column)) continue;
            const int x0 = column * kTileWidth;
            while (column + 1 < m_tileColumns && isDirty(column + 1)) ++column;
            const int x1 = std::min((column + 1) * kTileWidth, Width());
            for (int y = 0; y < rows; ++y) {
                const std::uint8_t* source = Row(y0 + y);
                auto* target = reinterpret_cast<QRgb*>(band.scanLine(y));
                for (int x = x0; x < x1; ++x) target[x] = shades[source[x]];
            }
            painter.drawImage(m_area.topLeft() + QPoint(x0, y0), band, QRect(x0, 0, x1 - x0, rows));
        }
    }
}

} // namespace lumoplot
