#include "graph/drawing/lines/column_reducer.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

namespace lumoplot {

TColumnReducer::TColumnReducer(double firstX, double lastX)
    : m_firstX(std::floor(firstX)), m_lastX(std::floor(lastX) + 1) {
}

double TColumnReducer::ColumnStart(double x) const {
    if (x < m_firstX) return -std::numeric_limits<double>::infinity();
    if (x >= m_lastX) return m_lastX;
    // Truncation rounds down here and costs less than to call for it.
    return m_firstX + static_cast<double>(static_cast<std::int64_t>(x - m_firstX));
}

double TColumnReducer::ColumnEnd(double x) const {
    if (x < m_firstX) return m_firstX;
    return x >= m_lastX ? std::numeric_limits<double>::infinity() : ColumnStart(x) + 1;
}

void TColumnReducer::StartColumn(double x, double y) {
    m_columnStart = ColumnStart(x);
    m_columnEnd = ColumnEnd(x);
    m_first = m_last = QPointF(x, y);
    m_low = m_high = {x, y, 0};
    m_count = 1;
    m_isOpen = true;
}

// Takes points as long as they lie in the column and returns the place of the first that does not.
std::size_t TColumnReducer::TakeColumn(std::span<const double> x, std::span<const double> y,
                                       std::size_t place) {
    const std::size_t start = place;
    const std::size_t count = x.size();
    double low = m_low.Y;
    double high = m_high.Y;
    std::size_t lowPlace = count;
    std::size_t highPlace = count;
    for (; place < count; ++place) {
        const double here = y[place];
        const bool continues = x[place] >= m_columnStart && x[place] < m_columnEnd && here == here;
        if (!continues) break;
        if (here < low) {
            low = here;
            lowPlace = place;
        }
        if (here > high) {
            high = here;
            highPlace = place;
        }
    }
    if (lowPlace < count) m_low = {x[lowPlace], low, m_count + lowPlace - start};
    if (highPlace < count) m_high = {x[highPlace], high, m_count + highPlace - start};
    if (place > start) m_last = QPointF(x[place - 1], y[place - 1]);
    m_count += place - start;
    return place;
}

void TColumnReducer::FlushColumn() {
    if (!m_isOpen) return;
    m_isOpen = false;
    m_lines.Add(m_first);
    if (m_count == 1) return;
    const bool lowFirst = m_low.Order < m_high.Order;
    for (const TExtreme& extreme : {lowFirst ? m_low : m_high, lowFirst ? m_high : m_low})
        if (extreme.Order > 0 && extreme.Order < m_count - 1) m_lines.Add(QPointF(extreme.X, extreme.Y));
    m_lines.Add(m_last);
}

void TColumnReducer::Add(std::span<const double> x, std::span<const double> y) {
    std::size_t place = 0;
    while (place < x.size()) {
        if (m_isOpen) place = TakeColumn(x, y, place);
        if (place == x.size()) return;
        FlushColumn();
        if (x[place] == x[place] && y[place] == y[place])
            StartColumn(x[place], y[place]);
        else
            m_lines.End();
        ++place;
    }
}

TPolylines TColumnReducer::Finish() {
    FlushColumn();
    m_lines.End();
    return std::exchange(m_lines, {});
}

} // namespace lumoplot
