// Summary statistics of a list of values: what a data series caches for its X and for its Y.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace lumoplot {

struct TStatistics {
    /// Empty, or why (part of) the statistics are missing:
    /// "No Statistics are available unless more than one point exists",
    /// "No skew/kurtosis are available because there is no deviance in the data".
    std::string Message;
    bool Failed = false; ///< fewer than two values: nothing but Count is set
    std::size_t Count = 0;
    double Mean = 0;
    double Median = 0; ///< the value at position Count div 2 counted from 1, no averaging of two middle ones
    double Mode = 0;
    double Sum = 0;
    double Variance = 0; ///< of a sample, divided by Count − 1; not its square root
    double Skew = 0;     ///< Σd³ / (Count · Variance³) with d = value − Mean
    double Kurtosis = 0; ///< Σd⁴ / (Count · (Σd²)²) − 3
    /// The values at the positions Count div 5 and Count − Count div 5, then Count div 4 and Count − Count
    /// div 4, counted from 1; 0 for position 0.
    double Quantile20 = 0;
    double Quantile80 = 0;
    double Quantile25 = 0;
    double Quantile75 = 0;
};

enum class TValueOrder {
    Any,      ///< sorted before use
    AsWalked, ///< taken as ascending in the order given
};

/// Statistics of the finite values; not-a-number and infinite ones are left out and not counted.
///
/// Mode: values within `tolerance` of the value that starts a run lengthen the run, but a start other than
/// the first value does not count itself; the mode is the value at which the longest run first reached its
/// length. So it is the first value when all differ. A negative tolerance leaves it 0.
///
/// Sums are compensated and powers are taken about the mean, so a large mean costs no digits; what exceeds
/// the range of doubles is infinite. Takes O(n log n), or O(n) when the values are ascending already.
TStatistics ComputeStatistics(std::span<const double> values, double tolerance,
                              TValueOrder order = TValueOrder::Any);

/// About which level values lie, and how far from it.
struct TSpread {
    double Mean = 0;
    double Deviation = 0; ///< the standard deviation of a sample, the root of its variance
};

/// Of the finite values, in O(n); nothing for fewer than two.
std::optional<TSpread> ComputeSpread(std::span<const double> values);

} // namespace lumoplot
