// The straight line and the parabola through points by least squares over the raw Y.
#pragma once

#include "data/analysis/centring.h"
#include "data/analysis/regression_types.h"

#include <span>

namespace lumoplot {

/// A fitted line or parabola. Keeps the form about the mean of X: it loses no digits where X is large and
/// varies little, which the coefficients in plain x cannot promise.
class TFittedCurve {
public:
    /// 0 everywhere.
    TFittedCurve() = default;
    /// The curve power0 + power1·u + power2·u² with u = centring(x).
    TFittedCurve(const TCentring& centring, double power0, double power1, double power2);
    explicit TFittedCurve(const TRegressionCoefficients& coefficients);

    /// C2·x² + C1·x + C0; not-a-number stays so.
    double operator()(double x) const {
        const double u = m_centring(x);
        return (m_power2 * u + m_power1) * u + m_power0;
    }
    const TRegressionCoefficients& Coefficients() const { return m_coefficients; }

private:
    TCentring m_centring;
    double m_power0 = 0;
    double m_power1 = 0;
    double m_power2 = 0;
    TRegressionCoefficients m_coefficients;
};

/// The least-squares line. With fewer than two different X it is flat at the mean of Y, and 0 without points.
/// Points of which X or Y is not finite are left out. Needs no order of X.
TFittedCurve FitLine(std::span<const double> x, std::span<const double> y);

/// The least-squares parabola, by polynomials that are orthogonal over the points (Forsythe 1957). With fewer
/// than three different X, or X that rounding cannot tell from so few, it is the line of FitLine. Points of
/// which X or Y is not finite are left out. Needs no order of X.
TFittedCurve FitQuadratic(std::span<const double> x, std::span<const double> y);

} // namespace lumoplot
