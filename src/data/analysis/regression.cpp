#include "data/analysis/regression.h"

#include "data/analysis/robust_line.h"
#include "data/analysis/smoothing.h"
#include "data/analysis/spline.h"

#include <algorithm>
#include <cassert>

namespace lumoplot {
namespace {

TRegressionResult CurveOverPoints(const TFittedCurve& curve, std::span<const double> x) {
    TRegressionResult result;
    result.Line = curve;
    result.Derived.resize(x.size());
    std::transform(x.begin(), x.end(), result.Derived.begin(), curve);
    return result;
}

TRegressionResult SplineOverPoints(const TRegressionSettings& settings, std::span<const double> x,
                                   std::span<const double> y) {
    const int samples = settings.RegressionControlValue1;
    if (settings.DuplicatesAllowed || samples < 1 || samples > kMostCurveSamples) return {};
    TSpline spline = SampleSpline(x, y, samples, settings.RegressionControlValue2);
    return {{}, std::move(spline.SecondDerivatives), std::move(spline.Curve)};
}

} // namespace

TRegressionResult ComputeRegression(const TRegressionSettings& settings, std::span<const double> x,
                                    std::span<const double> y, TProgress* progress) {
    assert(x.size() == y.size());
    const double control = settings.RegressionControlValue2;
    switch (settings.RegressionType) {
    case TRegressionType::None: throw ERegressionError("internal error: regression");
    case TRegressionType::Linear: return CurveOverPoints(FitLine(x, y), x);
    case TRegressionType::RobustLine: return CurveOverPoints(FitRobustLine(x, y, progress), x);
    case TRegressionType::Quadratic: return CurveOverPoints(FitQuadratic(x, y), x);
    case TRegressionType::Spline: return SplineOverPoints(settings, x, y);
    case TRegressionType::SampledCurve: return {};
    case TRegressionType::ExponentialSmoothing: return {{}, SmoothExponentially(y, control), {}};
    case TRegressionType::RunningAverage: return {{}, RunningAverage(y, RunningAverageWindow(control)), {}};
    }
    throw ERegressionError("Unknown regression type");
}

} // namespace lumoplot
