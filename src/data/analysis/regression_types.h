// What the regressions of a data series have in common: their types, coefficients, sampled curves and errors.
#pragma once

#include "support/errors.h"

#include <cstddef>
#include <span>
#include <vector>

namespace lumoplot {

/// Files hold the numbers; one that is none of these is kept.
enum class TRegressionType : int {
    None = 0,
    Linear = 1,
    RobustLine = 2,
    Quadratic = 3,
    Spline = 4,
    SampledCurve = 5,
    ExponentialSmoothing = 6,
    RunningAverage = 7,
};

/// The curve C2·x² + C1·x + C0.
struct TRegressionCoefficients {
    double C0 = 0;
    double C1 = 0;
    double C2 = 0;
};

/// A point of a curve that is sampled on a grid of its own.
struct TCurveSample {
    double X = 0;
    double Derived = 0;
};

/// A regression that its settings do not allow: "Unknown regression type", "internal error: regression",
/// "Invalid Running Average limit".
class ERegressionError : public ELumoError {
public:
    using ELumoError::ELumoError;
};

/// The user has cancelled a regression: "The regression was cancelled".
class ERegressionCancelled : public ERegressionError {
public:
    ERegressionCancelled() : ERegressionError("The regression was cancelled") {}
};

/// The points that a fit can use.
struct TFinitePoints {
    std::vector<double> x;
    std::vector<double> y;

    std::size_t Count() const { return x.size(); }
};

/// The points whose X and Y are both finite, in the order given. `x` and `y` have the same length.
TFinitePoints FinitePoints(std::span<const double> x, std::span<const double> y);

} // namespace lumoplot
