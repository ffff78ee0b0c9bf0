// A model that is the sum of several peaks of one shape on a straight baseline, with start values from a list
// of peaks.
#pragma once

#include "fit/definition/cur_fit.h"

#include <span>
#include <string>

namespace lumoplot {

enum class TPeakShape { Gaussian, Lorentzian };

/// As it was read off a curve.
struct TPeakStart {
    double Position = 0;
    double Height = 0;
    double Width = 0; ///< at half height, above 0
};

/// With their three parameters and the two of the baseline, as many as a fit can vary.
inline constexpr std::size_t kMostSummedPeaks = 16;

/// Puts equation, X variable and parameters (h1, m1 and s1 or w1 of the first peak …, b and c of the
/// baseline b + c*x), all varied, into the fit; its settings stay, its templates go. Each position is kept
/// within two widths of where it was found. The units are those of the axes. Throws EFitError without peaks
/// and for more than kMostSummedPeaks.
XYGRAPH_EXPORT void UsePeakSum(std::span<const TPeakStart> peaks, TPeakShape shape, TCurFit& fit,
                               const std::string& xUnit = {}, const std::string& yUnit = {});

} // namespace lumoplot
