#include "graph/model/axis_scale.h"

#include "support/errors.h"

#include <cmath>

namespace lumoplot {
namespace {

constexpr double kLog10OfE = 0.4342944818;
constexpr double kInset = 0.01;     // the part of a step by which data lie inside the range
constexpr double kZeroReach = 0.25; // data nearer to 0 than this part of the range draw it to 0

double StepOr(const TAxisRange& range, int minSteps) {
    return TickStep(range.min, range.max, minSteps).value_or(range.step);
}

TAxisRange Checked(const TAxisRange& range) {
    const bool usable = std::isfinite(range.min) && std::isfinite(range.max) && range.min < range.max;
    if (!usable) throw EScaleError("SetMinMax failed");
    return range;
}

TAxisRange RangeAroundOneValue(double value, int minSteps) {
    TAxisRange range;
    if (value == 0) {
        range.min = -1;
        range.max = 1;
    } else {
        range.min = value < 0 ? 1.2 * value : 0;
        range.max = value < 0 ? 0 : 1.2 * value;
    }
    range.step = StepOr(range, minSteps);
    if (value != 0) range.max = std::trunc(range.max / range.step) * range.step;
    return range;
}

bool KeepsUserStep(double span, const TAxisScaleOptions& options) {
    return !options.autoStepping && options.userStep > 0 && span / options.userStep <= options.maxSteps;
}

void SnapToZero(TAxisRange& range, double dataMin, double dataMax) {
    const double span = range.max - range.min;
    if (dataMin > 0 && dataMin / span < kZeroReach)
        range.min = 0;
    else if (dataMax < 0 && -dataMax / span < kZeroReach)
        range.max = 0;
}

} // namespace

std::optional<double> TickStep(double min, double max, int minSteps) {
    const double span = max - min;
    if (!(span > 0) || !std::isfinite(span)) return std::nullopt;
    double logSpan = std::log(span) * kLog10OfE;
    if (logSpan < 0) logSpan -= 1;
    const double exponent = std::trunc(logSpan * 1.001);
    const double power = std::exp(exponent / kLog10OfE);
    for (const double divisor : {1.0, 2.0, 5.0, 10.0, 20.0, 50.0})
        if (minSteps <= span / (power / divisor)) return power / divisor;
    return power / 100;
}

TAxisRange AutoRange(double dataMin, double dataMax, const TAxisScaleOptions& options) {
    if (dataMin > dataMax) throw EScaleError("Impossible: oMin > oMax in SetMinMax!");
    if (dataMin == dataMax) return Checked(RangeAroundOneValue(dataMin, options.minSteps));
    TAxisRange range{dataMin, dataMax, options.userStep};
    if (!KeepsUserStep(dataMax - dataMin, options)) range.step = StepOr(range, options.minSteps);
    const double step = range.step;
    range.min = std::trunc(range.min / step) * step;
    if (dataMin < 0) range.min -= step;
    if (dataMin - kInset * step < range.min) range.min -= step;
    range.max = std::trunc(range.max / step) * step + step;
    if (dataMax < 0) range.max -= step;
    if (dataMax + kInset * step > range.max) range.max += step;
    SnapToZero(range, dataMin, dataMax);
    return Checked(range);
}

TAxisRange AutoLogRange(double dataMin, double dataMax) {
    constexpr double kWholeDecades = 2;
    constexpr double kNoise = 1e-12; // powers of ten are a little off in some libraries
    const double low = std::log10(dataMin);
    const double high = std::log10(dataMax);
    TAxisRange range;
    range.min = std::pow(10.0, std::floor(low));
    range.max = std::pow(10.0, std::ceil(high));
    if (range.min == range.max) range.max = 10 * range.min;
    if (high - low >= kWholeDecades || dataMin == dataMax) return range;
    const double lastDecade = std::pow(10.0, std::ceil(high) - 1);
    for (const double part : {5.0, 2.0})
        if (part * lastDecade >= dataMax * (1 - kNoise)) range.max = part * lastDecade;
    const double firstDecade = range.min;
    for (const double part : {2.0, 5.0})
        if (part * firstDecade <= dataMin * (1 + kNoise)) range.min = part * firstDecade;
    return range;
}

} // namespace lumoplot
