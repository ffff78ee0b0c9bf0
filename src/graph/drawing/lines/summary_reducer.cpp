#include "graph/drawing/lines/summary_reducer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace lumoplot {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

} // namespace

TSummaryReducer::TSummaryReducer(const TSeries& series, const TScaleMap& xMap, const TScaleMap& yMap,
                                 double firstX, double lastX)
    : m_series(series), m_xMap(xMap), m_yMap(yMap), m_firstX(std::floor(firstX)),
      m_lastX(std::floor(lastX) + 1) {
}

TPolylines TSummaryReducer::Reduced(const TSeriesSummary& summary) {
    const TPointChain& points = m_series.Points();
    for (std::size_t block = 0; block < points.BlockCount(); ++block) {
        const TPointSpans spans = points.Block(block);
        std::size_t place = 0;
        for (const TPointGroup& group : summary.GroupsOf(block)) {
            TakeGroup(group, spans.X.subspan(place, group.Count), spans.Y.subspan(place, group.Count));
            place += group.Count;
        }
    }
    FlushColumn();
    m_lines.End();
    return std::exchange(m_lines, {});
}

double TSummaryReducer::PlaceOfX(double x) const {
    return FarthestPlace(m_xMap.Position(x));
}

bool TSummaryReducer::IsInColumn(double x) const {
    const double place = PlaceOfX(x);
    return place >= m_columnStart && place < m_columnEnd;
}

void TSummaryReducer::StartColumn(TValuePoint point, const double& x) {
    const double place = PlaceOfX(point.X);
    m_columnStart = place < m_firstX ? -kInfinity : place >= m_lastX ? m_lastX : std::floor(place);
    m_columnEnd = place < m_firstX ? m_firstX : place >= m_lastX ? kInfinity : m_columnStart + 1;
    m_first = m_last = point;
    m_low = m_high = {&x, point.Y, 0};
    m_count = 0;
    m_isOpen = true;
}

void TSummaryReducer::AddCorner(double x, double y) {
    m_lines.Add({PlaceOfX(x), FarthestPlace(m_yMap.Position(y))});
}

void TSummaryReducer::FlushColumn() {
    if (!m_isOpen) return;
    m_isOpen = false;
    AddCorner(m_first.X, m_first.Y);
    if (m_count == 1) return;
    const bool lowFirst = m_low.Order < m_high.Order;
    for (const TExtreme& extreme : {lowFirst ? m_low : m_high, lowFirst ? m_high : m_low})
        if (extreme.Order > 0 && extreme.Order < m_count - 1) AddCorner(*extreme.X, extreme.Y);
    AddCorner(m_last.X, m_last.Y);
}

// All points of a plain group have places, and their X ascend.
bool TSummaryReducer::IsPlain(const TPointGroup& group) const {
    return group.IsRegular && (!m_xMap.IsLog() || group.FirstX > 0) && (!m_yMap.IsLog() || group.LowY > 0);
}

void TSummaryReducer::TakeGroup(const TPointGroup& group, TValues x, TValues y) {
    if (!IsPlain(group)) return TakeEach(x, y);
    if (!TakeWholeGroup(group, x)) TakeAscending(x, y);
}

// True when the group lies in one column and was taken.
bool TSummaryReducer::TakeWholeGroup(const TPointGroup& group, TValues x) {
    const bool continues = m_isOpen && IsInColumn(group.FirstX);
    if (continues && !IsInColumn(group.LastX)) return false;
    if (!continues) {
        FlushColumn();
        StartColumn({group.FirstX, group.FirstY}, x.front());
        if (!IsInColumn(group.LastX)) return false;
    }
    if (group.LowY < m_low.Y) m_low = {&x[group.LowPlace], group.LowY, m_count + group.LowPlace};
    if (group.HighY > m_high.Y) m_high = {&x[group.HighPlace], group.HighY, m_count + group.HighPlace};
    m_count += group.Count;
    m_last = {group.LastX, group.LastY};
    return true;
}

void TSummaryReducer::Compare(const double& x, double y, std::size_t order) {
    if (y < m_low.Y) m_low = {&x, y, order};
    if (y > m_high.Y) m_high = {&x, y, order};
}

void TSummaryReducer::TakeAscending(TValues x, TValues y) {
    std::size_t place = 0;
    while (place < x.size()) {
        if (!m_isOpen || !IsInColumn(x[place])) {
            FlushColumn();
            StartColumn({x[place], m_series.CorrectedY(x[place], y[place])}, x[place]);
        }
        const auto rest = x.subspan(place);
        const auto end =
            std::ranges::partition_point(rest, [this](double value) { return IsInColumn(value); });
        const std::size_t stop = place + static_cast<std::size_t>(end - rest.begin());
        for (std::size_t i = place; i < stop; ++i)
            Compare(x[i], m_series.CorrectedY(x[i], y[i]), m_count + i - place);
        m_count += stop - place;
        m_last = {x[stop - 1], m_series.CorrectedY(x[stop - 1], y[stop - 1])};
        place = stop;
    }
}

void TSummaryReducer::TakeEach(TValues x, TValues y) {
    for (std::size_t i = 0; i < x.size(); ++i) {
        const double corrected = m_series.CorrectedY(x[i], y[i]);
        const bool hasPlace =
            std::isfinite(corrected) && !(m_xMap.IsLog() && x[i] <= 0) && !(m_yMap.IsLog() && corrected <= 0);
        if (!hasPlace) {
            FlushColumn();
            m_lines.End();
            continue;
        }
        if (!m_isOpen || !IsInColumn(x[i])) {
            FlushColumn();
            StartColumn({x[i], corrected}, x[i]);
        }
        Compare(x[i], corrected, m_count);
        m_last = {x[i], corrected};
        ++m_count;
    }
}

} // namespace lumoplot
