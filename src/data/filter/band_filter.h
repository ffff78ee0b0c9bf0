// The band filter: keeps or removes one frequency band of a data set. It works in the time domain: blocks of
// points are averaged into evenly spaced samples, these are convolved with the impulse response of an ideal
// band filter, cut off at a width of the user's choice, and the result is expanded to points again by linear
// interpolation. The points are built beside the data set; whoever runs the filter puts them into it.
// docs/filtering.md has the formulas for users.
#pragma once

#include "data/series/data_series.h"
#include "support/progress.h"

#include <cstdint>
#include <vector>

namespace lumoplot {

enum class TFilterType : std::uint8_t { BandStop = 0, BandPass = 1 };

/// Frequencies are periods per unit of X.
struct TBandFilterSettings {
    double LowFreq = 2;
    double HighFreq = 10;
    TFilterType FilterType = TFilterType::BandStop;
    /// Scales the result so that its sum about NormZero is that of the samples.
    bool Normalize = true;
    double NormZero = 0;
    int CountEvery = 5;    ///< N, points in a block, at least 1
    int ResponseWidth = 5; ///< M, samples on each side of the response's centre, at least 1

    bool operator==(const TBandFilterSettings&) const = default;
};

/// What the filter sees of a data set.
struct TFilterSamples {
    std::vector<double> Values; ///< the mean corrected Y of each complete block
    double FirstX = 0;          ///< the smallest X
    /// dt, (X at the end of the last block − FirstX) ÷ (samples − 1); 0 when that is not above 0 or not
    /// defined.
    double Step = 0;
};

/// Averages each `countEvery` points in chain order; those of an incomplete last block are dropped, as are
/// points whose corrected Y is not finite. With an XSource the points are taken as they are plotted, in
/// ascending X. Reports the stage "Filling Filter Vector..."; nothing when the
/// user cancels.
std::optional<TFilterSamples> SampleBlocks(const TDataSeries& series, int countEvery, TProgress& progress);

/// The impulse response at t = m·dt from its centre m = 0 to m = ResponseWidth; the other half mirrors it.
/// With B half the bandwidth and F the centre of the band it is 2·sin(2πBt)·cos(2πFt) ÷ (πt), 4B at the
/// centre, for a band pass, and the unit impulse 1 ÷ dt less that for a band stop. Needs a step above 0.
std::vector<double> ImpulseResponse(const TBandFilterSettings& settings, double step);

/// What Normalize multiplies the output by, found without running the filter: in O(samples + M), so that it
/// can be shown while settings change. Not finite, or large and made of rounding, where the output's sum is 0
/// and FilterBand refuses. Needs at least 2M + 1 samples and a step above 0.
double NormalizingScale(const TFilterSamples& samples, const TBandFilterSettings& settings);

enum class TFilterOutcome {
    Filtered,
    Refused,  ///< no complete block, or the result would hold what is no finite number
    Cancelled ///< by the user
};

struct TFilteredPoints {
    TFilterOutcome Outcome = TFilterOutcome::Refused;
    TPointChain Points; ///< merged by the data set's rule; empty unless the outcome is Filtered
};

/// Runs the filter over the points of a data set. The result has no baseline: the data set's own is
/// subtracted and not added back. With n samples it has N·(n − 2M − 1) points from FirstX + M·dt on; fewer
/// than 2M + 2 samples give no points, which is a result and no refusal.
///
/// The points have X of their own: a data set that takes those of another one has to end that.
///
/// Refused is a run without a complete block, without spread in X, one that is to be normalized by an output
/// whose sum about NormZero is 0 (or nothing but rounding), and one that leaves the range of doubles.
///
/// Reports "Filling Filter Vector..." and "Filtering...". Takes O(points · M ÷ N).
TFilteredPoints FilterBand(const TDataSeries& series, const TBandFilterSettings& settings,
                           TProgress& progress);

} // namespace lumoplot
