// Where along a line its dashes begin and end.
#pragma once

#include <cmath>
#include <cstddef>
#include <numeric>
#include <span>

namespace lumoplot {

class TDashWalk {
public:
    /// Lengths that are drawn and left out in turn; none for a solid line.
    explicit TDashWalk(std::span<const double> dashes)
        : m_dashes(dashes), m_period(std::accumulate(dashes.begin(), dashes.end(), 0.0)) {
        if (!(m_period > 0)) m_dashes = {};
        Restart();
    }

    bool IsSolid() const { return m_dashes.empty(); }
    bool IsOn() const { return m_dash % 2 == 0; }
    /// What is left of the dash or the gap.
    double Left() const { return m_left; }

    void Restart() {
        m_dash = 0;
        m_left = IsSolid() ? HUGE_VAL : m_dashes[0];
    }
    void Skip(double length) {
        if (IsSolid()) return;
        if (length > m_period) length -= std::floor(length / m_period) * m_period;
        while (length >= m_left) {
            length -= m_left;
            m_dash = m_dash + 1 == m_dashes.size() ? 0 : m_dash + 1;
            m_left = m_dashes[m_dash];
        }
        m_left -= length;
    }

private:
    std::span<const double> m_dashes;
    double m_period;
    std::size_t m_dash = 0;
    double m_left = 0;
};

} // namespace lumoplot
