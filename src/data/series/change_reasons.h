// The reasons of one notification of a data series: a set of the numbers that TDataSeries and TSeries name.
#pragma once

#include <cstdint>

namespace lumoplot {

class TChangeReasons {
public:
    constexpr TChangeReasons() = default;
    /// A single reason, from 0 to 31; not explicit, so that one reason can stand for the set of it.
    constexpr TChangeReasons(int reason) : m_bits(std::uint32_t{1} << reason) {}

    constexpr bool Has(int reason) const { return (m_bits >> reason & 1) != 0; }
    constexpr bool HasAnyOf(TChangeReasons reasons) const { return (m_bits & reasons.m_bits) != 0; }
    constexpr bool IsEmpty() const { return m_bits == 0; }
    constexpr TChangeReasons operator|(TChangeReasons other) const { return other |= *this; }
    constexpr TChangeReasons& operator|=(TChangeReasons other) {
        m_bits |= other.m_bits;
        return *this;
    }
    bool operator==(const TChangeReasons&) const = default;

private:
    std::uint32_t m_bits = 0; ///< bit n is reason n
};

} // namespace lumoplot
