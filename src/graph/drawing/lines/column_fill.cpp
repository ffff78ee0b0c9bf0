#include "graph/drawing/lines/column_fill.h"

#include <QImage>
#include <algorithm>
#include <array>
#include <cmath>

namespace lumoplot {
namespace {

constexpr int kWorthwhile = 4; // rows that all columns cover, from which on they are filled as a rectangle

struct TRows {
    int First; ///< the rows from First to before End
    int End;

    int Count() const { return End - First; }
};

class TColumnFiller {
public:
    TColumnFiller(int first, std::span<const TColumnSpan> spans, const QColor& color)
        : m_first(first), m_spans(spans), m_color(color) {
        for (std::size_t i = 0; i < m_shades.size(); ++i)
            m_shades[i] = qPremultiply(qRgba(color.red(), color.green(), color.blue(), static_cast<int>(i)));
    }

    void Fill(QPainter& painter, TRows rows) const {
        double outerLow = rows.End, outerHigh = rows.First, innerLow = rows.First, innerHigh = rows.End;
        for (const TColumnSpan& span : m_spans) {
            outerLow = std::min(outerLow, span.Low);
            outerHigh = std::max(outerHigh, span.High);
            innerLow = std::max(innerLow, span.Low);
            innerHigh = std::min(innerHigh, span.High);
        }
        rows = {std::max(rows.First, static_cast<int>(std::floor(outerLow))),
                std::min(rows.End, static_cast<int>(std::ceil(outerHigh)))};
        const TRows inner{static_cast<int>(std::ceil(innerLow)), static_cast<int>(std::floor(innerHigh))};
        if (inner.Count() < kWorthwhile) return FillRagged(painter, rows);
        painter.fillRect(m_first, inner.First, Width(), inner.Count(), m_color);
        FillRagged(painter, {rows.First, inner.First});
        FillRagged(painter, {inner.End, rows.End});
    }

private:
    int Width() const { return static_cast<int>(m_spans.size()); }

    void FillRagged(QPainter& painter, TRows rows) const {
        if (rows.Count() <= 0) return;
        QImage picture(Width(), rows.Count(), QImage::Format_ARGB32_Premultiplied);
        if (picture.isNull()) return;
        picture.fill(Qt::transparent);
        auto* pixels = reinterpret_cast<QRgb*>(picture.bits());
        const auto stride = static_cast<std::size_t>(picture.bytesPerLine()) / sizeof(QRgb);
        for (std::size_t i = 0; i < m_spans.size(); ++i) FillColumn(pixels + i, stride, m_spans[i], rows);
        painter.drawImage(m_first, rows.First, picture);
    }

    void FillColumn(QRgb* pixels, std::size_t stride, const TColumnSpan& span, TRows rows) const {
        const double low = std::max<double>(span.Low, rows.First);
        const double high = std::min<double>(span.High, rows.End);
        if (!(low < high)) return;
        const int first = static_cast<int>(std::floor(low));
        const int last = static_cast<int>(std::ceil(high)) - 1;
        const auto pixel = [&](int row) -> QRgb& {
            return pixels[static_cast<std::size_t>(row - rows.First) * stride];
        };
        if (first == last) {
            pixel(first) = Shade(high - low);
            return;
        }
        pixel(first) = Shade(first + 1 - low);
        for (int row = first + 1; row < last; ++row) pixel(row) = m_shades.back();
        pixel(last) = Shade(high - last);
    }

    QRgb Shade(double coverage) const { return m_shades[static_cast<std::size_t>(coverage * 255 + 0.5)]; }

    int m_first;
    std::span<const TColumnSpan> m_spans;
    QColor m_color;
    std::array<QRgb, 256> m_shades;
};

} // namespace

void FillColumns(QPainter& painter, int first, std::span<const TColumnSpan> spans, const QColor& color,
                 const QRect& clip) {
    const int from = std::max(first, clip.left());
    const int to = std::min(first + static_cast<int>(spans.size()), clip.right() + 1);
    if (from >= to || clip.isEmpty()) return;
    const auto visible =
        spans.subspan(static_cast<std::size_t>(from - first), static_cast<std::size_t>(to - from));
    TColumnFiller(from, visible, color).Fill(painter, {clip.top(), clip.bottom() + 1});
}

} // namespace lumoplot
