// Turns values of one axis into positions along it and back. Plain arithmetic: it knows no axis object, no
// painter and no rectangle.
#pragma once

#include "support/export.h"

#include <cmath>
#include <span>

namespace lumoplot {

enum class TScaleKind { Linear, Log };

class TScaleMap {
public:
    /// Maps min to `from` and max to `to` (which may lie before it). Needs min < max, and min > 0 for Log.
    TScaleMap(double min, double max, double from, double to, TScaleKind kind = TScaleKind::Linear);

    double Min() const { return m_min; }
    double Max() const { return m_max; }
    bool IsLog() const { return m_kind == TScaleKind::Log; }
    /// Not-a-number for what the scale cannot show: not-a-number, and on Log what is not above 0.
    double Position(double value) const {
        return m_factor != 0 ? m_from + (value - m_start) * m_factor
                             : m_from + Fraction(value) * (m_to - m_from);
    }
    XYGRAPH_EXPORT double Value(double position) const;
    /// 0 at min, 1 at max.
    XYGRAPH_EXPORT double Fraction(double value) const;
    bool Shows(double value) const { return value >= m_min && value <= m_max; }
    /// The positions of many values; `positions` is as long as `values`.
    void MapAll(std::span<const double> values, std::span<double> positions) const;

private:
    double m_min;
    double m_max;
    double m_from;
    double m_to;
    double m_start;  ///< min, or its logarithm
    double m_length; ///< max − min, or the difference of the logarithms
    double m_shrink; ///< below 1 when max − min is beyond the range of doubles
    double m_factor; ///< positions per value on a linear scale; 0 when it is no usable number
    TScaleKind m_kind;
};

} // namespace lumoplot
