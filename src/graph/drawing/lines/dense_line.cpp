// The area that a dense line covers.
#include "graph/drawing/lines/line_painter.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

constexpr TColumnSpan kEmpty{std::numeric_limits<double>::infinity(),
                             -std::numeric_limits<double>::infinity()};

void Take(TColumnSpan& span, double y) {
    span.Low = std::min(span.Low, y);
    span.High = std::max(span.High, y);
}

class TColumns {
public:
    TColumns(double minX, double maxX)
        : m_first(std::floor(minX)),
          m_spans(static_cast<std::size_t>(std::floor(maxX) - m_first) + 1, kEmpty) {}

    double First() const { return m_first; }
    std::vector<TColumnSpan>& Spans() { return m_spans; }

    void TakeSegment(QPointF a, QPointF b) {
        if (a.x() > b.x()) std::swap(a, b);
        const std::size_t from = IndexOf(a.x());
        const std::size_t to = IndexOf(b.x());
        Take(m_spans[from], a.y());
        Take(m_spans[to], b.y());
        for (std::size_t i = from; i < to; ++i) {
            const double border = m_first + static_cast<double>(i) + 1;
            const double y = a.y() + (b.y() - a.y()) * (border - a.x()) / (b.x() - a.x());
            Take(m_spans[i], y);
            Take(m_spans[i + 1], y);
        }
    }

private:
    std::size_t IndexOf(double x) const { return static_cast<std::size_t>(std::floor(x) - m_first); }

    double m_first;
    std::vector<TColumnSpan> m_spans;
};

struct TReach {
    explicit TReach(double width)
        : Left(std::lround(width) / 2), Right((std::lround(width) - 1) / 2), Radius(width / 2) {}

    std::ptrdiff_t Left; ///< columns beside the line's own
    std::ptrdiff_t Right;
    double Radius;
};

// A round pen reaches beyond the ends of a column by its radius, and less so beside it.
std::vector<TColumnSpan> Widened(const std::vector<TColumnSpan>& spans, const TReach& reach) {
    const auto count = static_cast<std::ptrdiff_t>(spans.size());
    std::vector<TColumnSpan> wide(static_cast<std::size_t>(count + reach.Left + reach.Right), kEmpty);
    const double middle = static_cast<double>(reach.Right - reach.Left) / 2;
    for (std::ptrdiff_t side = -reach.Left; side <= reach.Right; ++side) {
        const double offset = static_cast<double>(side) - middle;
        const double rise = std::sqrt(std::max(0.0, reach.Radius * reach.Radius - offset * offset));
        for (std::ptrdiff_t i = 0; i < count; ++i) {
            const TColumnSpan& span = spans[static_cast<std::size_t>(i)];
            TColumnSpan& target = wide[static_cast<std::size_t>(i + reach.Left + side)];
            Take(target, span.Low - rise);
            Take(target, span.High + rise);
        }
    }
    return wide;
}

} // namespace

TColumnArea AreaOfDenseLine(std::span<const QPointF> line, double width) {
    const auto [left, right] = std::ranges::minmax(line, {}, [](QPointF p) { return p.x(); });
    TColumns columns(left.x(), right.x());
    for (std::size_t i = 1; i < line.size(); ++i) columns.TakeSegment(line[i - 1], line[i]);
    const TReach reach(width);
    return {static_cast<int>(columns.First()) - static_cast<int>(reach.Left),
            Widened(columns.Spans(), reach)};
}

} // namespace lumoplot
