#include "graph/drawing/symbol_cloud.h"

#include <QImage>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kLargestExtent = 1e8;           // pixels a side; keeps their product countable
constexpr std::int64_t kLargestBitmap = 1 << 28; // pixels

std::int64_t Extent(double length) {
    return static_cast<std::int64_t>(std::clamp(std::ceil(length), 0.0, kLargestExtent)) + 2;
}

} // namespace

TPixelSet::TPixelSet(std::int64_t width, std::int64_t height) : m_width(width), m_height(height) {
    if (width * height <= kLargestBitmap) m_taken.resize(static_cast<std::size_t>(width * height));
}

bool TPixelSet::Take(std::int64_t x, std::int64_t y) {
    if (x < 0 || y < 0 || x >= m_width || y >= m_height) return false;
    const std::int64_t place = y * m_width + x;
    if (m_taken.empty()) return m_few.insert(place).second;
    const auto taken = m_taken[static_cast<std::size_t>(place)];
    if (taken) return false;
    m_taken[static_cast<std::size_t>(place)] = true;
    return true;
}

TSymbolCloud::TSymbolCloud(const TCanvas& canvas, const TSymbol& symbol, const QRectF& area)
    : m_canvas(canvas), m_symbol(InPixels(symbol, canvas.PixelsPerUnit())), m_area(area),
      m_left(std::floor(area.left())), m_top(std::floor(area.top())),
      m_taken(Extent(area.width()), Extent(area.height())) {
    if (!canvas.IsRaster()) m_symbol = symbol;
}

void TSymbolCloud::Add(std::span<const double> x, std::span<const double> y) {
    for (std::size_t i = 0; i < x.size(); ++i) {
        const bool inside = x[i] >= m_area.left() && x[i] <= m_area.right() && y[i] >= m_area.top() &&
                            y[i] <= m_area.bottom();
        if (!inside) continue;
        const double column = std::floor(x[i]);
        const double row = std::floor(y[i]);
        if (m_taken.Take(static_cast<std::int64_t>(column - m_left), static_cast<std::int64_t>(row - m_top)))
            m_centres.push_back(m_canvas.IsRaster() ? QPointF(column, row) : QPointF(x[i], y[i]));
    }
}

void TSymbolCloud::Draw() {
    if (m_centres.empty() || !(m_symbol.Size > 0)) return;
    if (m_canvas.IsRaster()) return DrawStamps();
    for (const QPointF centre : m_centres)
        DrawSymbol(m_canvas.Painter(), m_symbol,
                   {m_canvas.FromDeviceX(centre.x()), m_canvas.FromDeviceY(centre.y())});
}

// A symbol of odd size is centred on the middle of its pixel, one of even size on the pixel's corner; plot
// edges lie in the middle of pixels, so both are half a pixel away at most.
void TSymbolCloud::DrawStamps() {
    const int size = static_cast<int>(m_symbol.Size) + 4;
    const bool isOdd = std::fmod(m_symbol.Size, 2) != 0;
    const double middle = size / 2 + (isOdd ? 0.5 : 0.0);
    QImage stamp(size + 1, size + 1, QImage::Format_ARGB32_Premultiplied);
    stamp.fill(Qt::transparent);
    {
        QPainter painter(&stamp);
        painter.setRenderHint(QPainter::Antialiasing);
        DrawSymbol(painter, m_symbol, {middle, middle});
    }
    const TCanvas::TDeviceUnits deviceUnits(m_canvas);
    const double corner = size / 2;
    for (const QPointF centre : m_centres)
        m_canvas.Painter().drawImage(QPointF(centre.x() - corner, centre.y() - corner), stamp);
}

} // namespace lumoplot
