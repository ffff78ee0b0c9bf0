#include "graph/plotted/scale_map.h"

#include <algorithm>

namespace lumoplot {
namespace {

double Start(double value, TScaleKind kind) {
    return kind == TScaleKind::Log ? std::log10(value) : value;
}

} // namespace

TScaleMap::TScaleMap(double min, double max, double from, double to, TScaleKind kind)
    : m_min(min), m_max(max), m_from(from), m_to(to), m_shrink(1), m_factor(0), m_kind(kind) {
    if (!std::isfinite(Start(max, kind) - Start(min, kind))) m_shrink = 0.25;
    m_start = Start(min, kind) * m_shrink;
    m_length = Start(max, kind) * m_shrink - m_start;
    const double factor = (to - from) / m_length;
    if (!IsLog() && m_shrink == 1 && std::isfinite(factor)) m_factor = factor;
}

double TScaleMap::Fraction(double value) const {
    if (IsLog() && !(value > 0)) return std::nan("");
    return (Start(value, m_kind) * m_shrink - m_start) / m_length;
}

double TScaleMap::Value(double position) const {
    const double fraction = (position - m_from) / (m_to - m_from);
    const double value = (m_start + fraction * m_length) / m_shrink;
    return IsLog() ? std::pow(10.0, value) : value;
}

void TScaleMap::MapAll(std::span<const double> values, std::span<double> positions) const {
    if (m_factor == 0) {
        std::ranges::transform(values, positions.begin(), [this](double value) { return Position(value); });
        return;
    }
    // Copies, since the compiler can not know that no position is one of these.
    const double from = m_from, start = m_start, factor = m_factor;
    for (std::size_t i = 0; i < values.size(); ++i) positions[i] = from + (values[i] - start) * factor;
}

} // namespace lumoplot
