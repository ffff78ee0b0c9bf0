// The median of the slopes of all pairs of points, without forming all pairs.
#pragma once

#include "support/progress.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace lumoplot {

struct TSlopeSelectionOptions {
    /// Starts the generator that picks sample pairs; changes the time taken, never the result.
    std::uint64_t seed = 1;
    /// As soon as no more than this many pairs can hold the median they are listed; 0 chooses by the number
    /// of points.
    std::size_t listedPairs = 0;
    /// Is told how far it is, many times a second; when the user cancels, ERegressionCancelled is thrown. May
    /// be null.
    TProgress* progress = nullptr;
};

/// The k-th smallest of the slopes (yj − yi) / (xj − xi), each computed in doubles, over the M pairs of
/// points with different X; k is M div 2, but 1 when M is 1. Nothing when no two X differ. X and Y must be
/// finite and of the same length, in any order.
///
/// Exact: the result is one of these slopes, the one that sorting them all would give. Only where more than
/// 2,097,152 pairs (those of 2,048 points) agree with the median to about 13 digits, as on points of a
/// rounded straight line, is it the k-th smallest of the slopes before rounding, rounded down. Slopes that
/// lie beyond the range of doubles are infinite; coordinates smaller than 2^-1400 of the largest may count as
/// 0.
///
/// Takes O(n log n) expected time and O(n) memory (Matoušek 1991; Dillencourt, Mount and Netanyahu 1992).
std::optional<double> MedianSlope(std::span<const double> x, std::span<const double> y,
                                  const TSlopeSelectionOptions& options = {});

} // namespace lumoplot
