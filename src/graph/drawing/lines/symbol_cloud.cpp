#include "graph/drawing/lines/symbol_cloud.h"

#include "graph/drawing/lines/coverage.h"

#include <cmath>

namespace lumoplot {
namespace {

constexpr double kLargestExtent = 1e8;           // pixels a side; keeps their product countable
constexpr std::int64_t kLargestBitmap = 1 << 28; // pixels

std::int64_t Extent(double length) {
    return static_cast<std::int64_t>(std::clamp(std::ceil(length), 0.0, kLargestExtent)) + 2;
}

constexpr double kPixelsPerStamp = 300; // drawing a stamp costs as much as so many pixels of a merged picture
constexpr std::size_t kMostShapes = 20000; // symbols that a vector format keeps one by one
constexpr int kLargestMerged = 64;         // pixels a side of a stamp

// A symbol of odd size is centred on the middle of its pixel, one of even size on the pixel's corner; plot
// edges lie in the middle of pixels, so both are half a pixel away at most.
QImage StampOf(const TSymbol& symbol, QPoint& middle) {
    const int size = static_cast<int>(symbol.Size) + 4;
    middle = QPoint(size / 2, size / 2);
    const double fraction = std::fmod(symbol.Size, 2) != 0 ? 0.5 : 0.0;
    QImage stamp(size + 1, size + 1, QImage::Format_ARGB32_Premultiplied);
    stamp.fill(Qt::transparent);
    QPainter painter(&stamp);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawSymbol(painter, symbol, QPointF(middle) + QPointF(fraction, fraction));
    return stamp;
}

} // namespace

TPixelSet::TPixelSet(std::int64_t width, std::int64_t height)
    : m_width(width), m_height(height), m_wordsPerRow((width + 63) / 64) {
    if (width * height <= kLargestBitmap) m_bitmap.resize(static_cast<std::size_t>(m_wordsPerRow * height));
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
        // Inside, truncation rounds down, which costs less than to call for it.
        const auto column = static_cast<std::int64_t>(x[i] - m_left);
        const auto row = static_cast<std::int64_t>(y[i] - m_top);
        if (!m_taken.Take(column, row)) continue;
        ++m_count;
        if (!m_canvas.IsRaster())
            m_centres.emplace_back(x[i], y[i]);
        else if (!m_taken.HasBitmap())
            m_centres.emplace_back(m_left + static_cast<double>(column), m_top + static_cast<double>(row));
    }
}

void TSymbolCloud::Draw() {
    if (m_count == 0 || !(m_symbol.Size > 0)) return;
    if (!m_canvas.IsRaster()) return DrawAsVectors();
    QPoint middle;
    const QImage stamp = StampOf(m_symbol, middle);
    const TCanvas::TDeviceUnits deviceUnits(m_canvas);
    const auto area = static_cast<double>(m_taken.Width()) * static_cast<double>(m_taken.Height());
    const bool areMany = static_cast<double>(m_count) * kPixelsPerStamp > area;
    if (areMany && m_taken.HasBitmap() && stamp.width() <= kLargestMerged)
        DrawMerged(stamp, middle);
    else
        DrawStamps(stamp, middle);
}

// A file that keeps every symbol as a shape of its own grows with their count; very many go into it as one
// picture that is as fine as paper.
void TSymbolCloud::DrawAsVectors() const {
    QPainter& painter = m_canvas.Painter();
    if (m_count > kMostShapes && m_taken.HasBitmap()) {
        QPoint middle;
        const QImage stamp = StampOf(InPixels(m_symbol, m_canvas.PixelsPerUnit()), middle);
        painter.save();
        painter.scale(1 / m_canvas.PixelsPerUnit(), 1 / m_canvas.PixelsPerUnit());
        painter.setRenderHint(QPainter::LosslessImageRendering);
        DrawMerged(stamp, middle);
        return painter.restore();
    }
    for (const QPointF centre : m_centres)
        DrawSymbol(painter, m_symbol, {m_canvas.FromDeviceX(centre.x()), m_canvas.FromDeviceY(centre.y())});
}

template <class TVisit>
void TSymbolCloud::VisitCentres(TVisit visit) const {
    for (const QPointF centre : m_centres) visit(centre);
    if (!m_taken.HasBitmap() || !m_centres.empty()) return;
    for (std::int64_t y = 0; y < m_taken.Height(); ++y)
        m_taken.VisitRow(y, [&](std::int64_t x) {
            visit(QPointF(m_left + static_cast<double>(x), m_top + static_cast<double>(y)));
        });
}

void TSymbolCloud::DrawStamps(const QImage& stamp, QPoint middle) const {
    VisitCentres([&](QPointF centre) { m_canvas.Painter().drawImage(centre - QPointF(middle), stamp); });
}

// Very many symbols of one colour: what they leave visible of each pixel is collected in bytes, and they are
// drawn as one picture.
void TSymbolCloud::DrawMerged(const QImage& stamp, QPoint middle) const {
    TCoverage coverage(m_taken.Width() + stamp.width(), m_taken.Height() + stamp.height());
    const TStampMask mask(stamp);
    for (std::int64_t y = 0; y < m_taken.Height(); ++y)
        m_taken.VisitRow(y, [&](std::int64_t x) { coverage.Take(mask, x, y); });
    const QPointF corner = QPointF(m_left, m_top) - QPointF(middle);
    coverage.Draw(m_canvas.Painter(), corner, m_symbol.Color);
}

} // namespace lumoplot
