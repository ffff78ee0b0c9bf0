#include "graph/drawing/strokes/column_fill.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <tuple>

namespace lumoplot {
namespace {

constexpr int kGroup = TStrokeMask::kTileWidth; // columns that are filled at once
constexpr int kBand = TStrokeMask::kTileHeight;

/// Sixteen columns: the rows that each covers whole, from First to before End.
struct TWholeRows {
    std::array<int, kGroup> First{};
    std::array<int, kGroup> End{};
};

class TColumnFiller {
public:
    TColumnFiller(TStrokeMask& mask, int first, std::span<const TColumnSpan> spans)
        : m_mask(mask), m_first(first), m_spans(spans) {}

    void Fill() {
        TWholeRows rows;
        m_top = m_mask.Height();
        for (std::size_t i = 0; i < m_spans.size(); ++i)
            std::tie(rows.First[i], rows.End[i]) = CoverEnds(m_spans[i], m_first + static_cast<int>(i));
        for (int y = m_top; y < m_bottom;) {
            const int band = y / kBand;
            const int end = std::min(m_bottom, (band + 1) * kBand);
            FillBand(rows, y, end);
            m_mask.Touch(band, m_first, m_first + static_cast<int>(m_spans.size()) - 1, kBand);
            y = end;
        }
    }

private:
    int Row(double y) const { return static_cast<int>(std::clamp<double>(y, 0, m_mask.Height())); }

    void Cover(int x, int y, double part) {
        if (y < 0 || y >= m_mask.Height()) return;
        std::uint8_t& pixel = m_mask.Row(y)[x];
        pixel = std::max(pixel, static_cast<std::uint8_t>(part * 255 + 0.5));
    }

    // Covers the pixels at both ends and tells the rows between them.
    std::pair<int, int> CoverEnds(const TColumnSpan& span, int x) {
        if (!(span.Low < span.High)) return {0, 0};
        const int top = Row(std::floor(span.Low));
        const int bottom = Row(std::ceil(span.High));
        m_top = std::min(m_top, top);
        m_bottom = std::max(m_bottom, bottom);
        const double below = std::floor(span.Low);
        if (span.High <= below + 1) {
            if (bottom > top) Cover(x, top, span.High - span.Low);
            return {0, 0};
        }
        if (span.Low >= 0 && span.Low < m_mask.Height()) Cover(x, top, below + 1 - span.Low);
        const double last = std::ceil(span.High) - 1;
        if (span.High > 0 && last < m_mask.Height()) Cover(x, bottom - 1, span.High - last);
        return {Row(below + 1), Row(last)};
    }

    // Rows of one band; written so that the compiler sees sixteen columns at once.
    void FillBand(const TWholeRows& rows, int from, int end) {
        std::array<std::uint8_t, kGroup> first, last;
        for (std::size_t i = 0; i < kGroup; ++i) {
            first[i] = static_cast<std::uint8_t>(std::clamp(rows.First[i] - from, 0, kBand));
            last[i] = static_cast<std::uint8_t>(std::clamp(rows.End[i] - from, 0, kBand));
        }
        for (int y = from; y < end; ++y) {
            const auto row = static_cast<std::uint8_t>(y - from);
            std::uint8_t* target = m_mask.Row(y) + m_first;
            std::array<std::uint8_t, kGroup> pixels;
            std::memcpy(pixels.data(), target, kGroup);
            for (std::size_t i = 0; i < kGroup; ++i)
                pixels[i] =
                    static_cast<std::uint8_t>(pixels[i] | (row >= first[i] && row < last[i] ? 255 : 0));
            std::memcpy(target, pixels.data(), kGroup);
        }
    }

    TStrokeMask& m_mask;
    int m_first;
    std::span<const TColumnSpan> m_spans;
    int m_top = 0; ///< rows that the columns reach
    int m_bottom = 0;
};

} // namespace

void CoverColumns(TStrokeMask& mask, int first, std::span<const TColumnSpan> spans) {
    const int from = std::max(first, 0);
    const int to = std::min(first + static_cast<int>(spans.size()), mask.Width());
    if (from >= to) return;
    for (int x = from; x < to; x += kGroup)
        TColumnFiller(mask, x,
                      spans.subspan(static_cast<std::size_t>(x - first),
                                    static_cast<std::size_t>(std::min(kGroup, to - x))))
            .Fill();
}

} // namespace lumoplot
