#include "graph/drawing/strokes/column_fill.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace lumoplot {
namespace {

// The rows from First to before End.
struct TRows {
    int First;
    int End;
};

class TColumnFiller {
public:
    TColumnFiller(TStrokeMask& mask, int first, std::span<const TColumnSpan> spans)
        : m_mask(mask), m_first(first), m_spans(spans) {}

    void Fill() {
        double outerLow = m_mask.Height(), outerHigh = 0, innerLow = 0, innerHigh = m_mask.Height();
        for (const TColumnSpan& span : m_spans) {
            outerLow = std::min(outerLow, span.Low);
            outerHigh = std::max(outerHigh, span.High);
            innerLow = std::max(innerLow, span.Low);
            innerHigh = std::min(innerHigh, span.High);
        }
        const TRows rows{Row(std::floor(outerLow)), Row(std::ceil(outerHigh))};
        // Rows that all columns cover are filled at once.
        const int innerFirst = std::max(rows.First, Row(std::ceil(innerLow)));
        const int innerEnd = std::max(innerFirst, std::min(rows.End, Row(std::floor(innerHigh))));
        for (int y = innerFirst; y < innerEnd; ++y) std::memset(m_mask.Row(y) + m_first, 255, m_spans.size());
        for (std::size_t i = 0; i < m_spans.size(); ++i) {
            FillColumn(i, {rows.First, innerFirst});
            FillColumn(i, {innerEnd, rows.End});
        }
        Touch(rows);
    }

private:
    int Row(double y) const { return static_cast<int>(std::clamp<double>(y, 0, m_mask.Height())); }

    void Touch(TRows rows) {
        const int right = m_first + static_cast<int>(m_spans.size()) - 1;
        constexpr int kHeight = TStrokeMask::kTileHeight;
        for (int y = rows.First; y < rows.End; y = (y / kHeight + 1) * kHeight)
            m_mask.Touch(y / kHeight, m_first, right, kHeight);
    }

    void FillColumn(std::size_t column, TRows rows) {
        const double low = std::max<double>(m_spans[column].Low, rows.First);
        const double high = std::min<double>(m_spans[column].High, rows.End);
        if (!(low < high)) return;
        const int first = static_cast<int>(std::floor(low));
        const int last = static_cast<int>(std::ceil(high)) - 1;
        const auto cover = [&](int row, double part) {
            std::uint8_t& pixel = m_mask.Row(row)[static_cast<std::size_t>(m_first) + column];
            pixel = std::max(pixel, static_cast<std::uint8_t>(part * 255 + 0.5));
        };
        if (first == last) return cover(first, high - low);
        cover(first, first + 1 - low);
        for (int row = first + 1; row < last; ++row)
            m_mask.Row(row)[static_cast<std::size_t>(m_first) + column] = 255;
        cover(last, high - last);
    }

    TStrokeMask& m_mask;
    int m_first;
    std::span<const TColumnSpan> m_spans;
};

} // namespace

void CoverColumns(TStrokeMask& mask, int first, std::span<const TColumnSpan> spans) {
    const int from = std::max(first, 0);
    const int to = std::min(first + static_cast<int>(spans.size()), mask.Width());
    if (from >= to) return;
    TColumnFiller(mask, from,
                  spans.subspan(static_cast<std::size_t>(from - first), static_cast<std::size_t>(to - from)))
        .Fill();
}

} // namespace lumoplot
