// The numbers behind an axis: the tick step for a range, and the round range around data. Plain functions;
// TAxis and the command line use them.
#pragma once

#include "support/export.h"

#include <optional>

namespace lumoplot {

struct TAxisRange {
    double min = 0;
    double max = 1;
    double step = 0.2;

    bool operator==(const TAxisRange&) const = default;
};

/// What steers the automatic range of an axis.
struct TAxisScaleOptions {
    int minSteps = 5;         ///< the range holds at least so many steps
    int maxSteps = 50;        ///< a user's step that gives more of them is replaced
    bool autoStepping = true; ///< false keeps `userStep` where it is usable
    double userStep = 0;
};

/// The tick step for the range from `min` to `max`: the first of p, p/2, p/5, p/10, p/20, p/50, p/100 of
/// which the span holds at least `minSteps`, p being the power of ten below the span. Nothing for a span that
/// is not positive.
std::optional<double> TickStep(double min, double max, int minSteps);

/// The displayed range and step for data from `dataMin` to `dataMax`: multiples of the step, at least a
/// hundredth of a step beyond the data, drawn to 0 where the data lie near it. Throws EScaleError
/// "Impossible: oMin > oMax in SetMinMax!" or "SetMinMax failed" (also for what is not finite).
TAxisRange AutoRange(double dataMin, double dataMax, const TAxisScaleOptions& options);

/// The displayed range of a logarithmic axis for positive data: whole decades around data that span two or
/// more, and around one value alone; else the nearest 1, 2 or 5 times a power of ten on both sides. An end
/// beyond the range of doubles is 0 or infinite. The step is not set.
TAxisRange AutoLogRange(double dataMin, double dataMax);

} // namespace lumoplot
