// One regression of a data series from its points and settings: chooses the routine by the type and says what
// it gives, values for the points or a curve on a grid of its own.
#pragma once

#include "data/analysis/least_squares.h"
#include "data/analysis/regression_types.h"
#include "support/progress.h"

#include <optional>
#include <span>
#include <vector>

namespace lumoplot {

struct TRegressionSettings {
    TRegressionType RegressionType = TRegressionType::None;
    int RegressionControlValue1 = 100; ///< curve samples of Spline and SampledCurve
    /// End slope of Spline, weight of ExponentialSmoothing, 1 / window of RunningAverage.
    double RegressionControlValue2 = 0.05;
    bool DuplicatesAllowed = false; ///< points may share their X, and no spline is made
};

struct TRegressionResult {
    std::optional<TFittedCurve> Line; ///< of Linear, RobustLine and Quadratic
    /// One a point, of Spline the second derivatives; empty when the type gives the points nothing.
    std::vector<double> Derived;
    std::vector<TCurveSample> Curve; ///< of Spline
};

/// The regression of the points in chain order; `x` and `y` have the same length and Y is raw, without the
/// baseline. X need not ascend strictly. How each type treats values that are not finite is said at its
/// routine. Spline gives neither values nor a curve when duplicates are allowed or there is no CurveGrid of
/// RegressionControlValue1 steps. SampledCurve gives none either: the owner of the curve samples it over
/// CurveGrid. Throws ERegressionError "internal error: regression" for type 0, "Unknown regression type" for
/// numbers that are no type, what RunningAverageWindow throws, and ERegressionCancelled when the user cancels
/// `progress` (may be null); only RobustLine takes long enough to tell it anything.
TRegressionResult ComputeRegression(const TRegressionSettings& settings, std::span<const double> x,
                                    std::span<const double> y, TProgress* progress = nullptr);

} // namespace lumoplot
