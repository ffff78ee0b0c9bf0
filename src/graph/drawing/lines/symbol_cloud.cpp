#include "graph/drawing/lines/symbol_cloud.h"

#include "graph/drawing/lines/coverage.h"

#include <algorithm>
#include <array>
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

constexpr int kRounds = 3;

// The pixels of a row that a round takes: of eight neighbours one in the first, two in the second.
std::uint64_t PlacesOfRound(int round, std::int64_t y) {
    static constexpr std::array<std::uint64_t, kRounds> kPlaces = {0x0101010101010101, 0x2424242424242424,
                                                                   0xdadadadadadadada};
    return std::rotr(kPlaces[static_cast<std::size_t>(round)], static_cast<int>(3 * y & 7));
}

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

std::size_t TPixelSet::Count() const {
    std::size_t count = m_few.size();
    for (const std::uint64_t word : m_bitmap) count += static_cast<std::size_t>(std::popcount(word));
    return count;
}

std::pair<std::int64_t, std::int64_t> TPixelSet::Rows() const {
    const auto isTaken = [](std::uint64_t word) { return word != 0; };
    const auto first = std::ranges::find_if(m_bitmap, isTaken);
    if (first == m_bitmap.end()) return {0, 0};
    const auto behind = std::find_if(m_bitmap.rbegin(), m_bitmap.rend(), isTaken).base();
    return {(first - m_bitmap.begin()) / m_wordsPerRow,
            (behind - m_bitmap.begin() + m_wordsPerRow - 1) / m_wordsPerRow};
}

TSymbolCloud::TSymbolCloud(const TCanvas& canvas, const TSymbol& symbol, const QRectF& area)
    : m_canvas(canvas), m_symbol(InPixels(symbol, canvas.PixelsPerUnit())), m_area(area),
      m_left(std::floor(area.left())), m_top(std::floor(area.top())),
      m_taken(Extent(area.width()), Extent(area.height())) {
    if (!canvas.IsRaster()) m_symbol = symbol;
}

void TSymbolCloud::Add(std::span<const double> x, std::span<const double> y) {
    const bool marksOnly = m_canvas.IsRaster() && m_taken.HasBitmap();
    const double left = m_area.left(), right = m_area.right(), top = m_area.top(), bottom = m_area.bottom();
    for (std::size_t i = 0; i < x.size(); ++i) {
        const bool inside = (x[i] >= left) & (x[i] <= right) & (y[i] >= top) & (y[i] <= bottom);
        if (!inside) continue;
        // Inside, truncation rounds down, which costs less than to call for it.
        const auto column = static_cast<std::int64_t>(x[i] - m_left);
        const auto row = static_cast<std::int64_t>(y[i] - m_top);
        if (marksOnly)
            m_taken.Put(column, row);
        else if (!m_taken.Take(column, row))
            continue;
        else if (!m_canvas.IsRaster())
            m_centres.emplace_back(x[i], y[i]);
        else
            m_centres.emplace_back(m_left + static_cast<double>(column), m_top + static_cast<double>(row));
    }
}

void TSymbolCloud::Draw() {
    const std::size_t count = m_taken.Count();
    if (count == 0 || !(m_symbol.Size > 0)) return;
    if (!m_canvas.IsRaster()) return DrawAsVectors();
    QPoint middle;
    const QImage stamp = StampOf(m_symbol, middle);
    const TCanvas::TDeviceUnits deviceUnits(m_canvas);
    const auto area = static_cast<double>(m_taken.Width()) * static_cast<double>(m_taken.Height());
    const bool areMany = static_cast<double>(count) * kPixelsPerStamp > area;
    if (areMany && m_taken.HasBitmap() && stamp.width() <= kLargestMerged)
        DrawMerged(stamp, middle);
    else
        DrawStamps(stamp, middle);
}

// A file that keeps every symbol as a shape of its own grows with their count; very many go into it as one
// picture that is as fine as paper.
void TSymbolCloud::DrawAsVectors() const {
    QPainter& painter = m_canvas.Painter();
    if (m_centres.size() > kMostShapes && m_taken.HasBitmap()) {
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
        m_taken.VisitRow(
            y, [](std::int64_t) { return ~std::uint64_t(0); },
            [&](std::int64_t x) {
                visit(QPointF(m_left + static_cast<double>(x), m_top + static_cast<double>(y)));
            });
}

void TSymbolCloud::DrawStamps(const QImage& stamp, QPoint middle) const {
    VisitCentres([&](QPointF centre) { m_canvas.Painter().drawImage(centre - QPointF(middle), stamp); });
}

// Very many symbols of one colour: what they leave visible of each pixel is collected in bytes, and they are
// drawn as one picture. What they cover whole is covered first, with 64 of them at once; then those whose
// rims are still to be seen follow in rounds, spread evenly, so that most of a dense crowd finds itself
// covered by the rounds before and is left out.
void TSymbolCloud::DrawMerged(const QImage& stamp, QPoint middle) const {
    const auto [first, end] = m_taken.Rows();
    TCoverage coverage(m_taken.Width() + stamp.width(), end - first + stamp.height());
    const TStampMask mask(stamp);
    for (std::int64_t y = first; y < end; ++y) coverage.TakeWholeRuns(mask, m_taken.Row(y), y - first);
    coverage.CoverWholeRuns();
    TCoveredPlaces covered = coverage.PlacesCovered(mask);
    for (int round = 0; round < kRounds; ++round) {
        for (std::int64_t y = first; y < end; ++y) {
            const std::int64_t row = y - first;
            const std::uint64_t places = PlacesOfRound(round, y);
            m_taken.VisitRow(
                y, [&](std::int64_t x) { return places & ~covered.From(x, row); },
                [&](std::int64_t x) { coverage.Take(mask, x, row); });
        }
        if (round + 1 < kRounds) covered = coverage.PlacesCovered(mask);
    }
    const QPointF corner = QPointF(m_left, m_top + static_cast<double>(first)) - QPointF(middle);
    coverage.Draw(m_canvas.Painter(), corner, m_symbol.Color);
}

} // namespace lumoplot
