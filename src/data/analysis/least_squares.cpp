#include "data/analysis/least_squares.h"

namespace lumoplot {
namespace {

// A column of a parabola that is this much shorter than its square column is rounding noise.
constexpr double kNegligible = 0x1p-45;

// The line slope·u in v, where u and v are the deviations of X and Y from their means.
struct TCentredLine {
    double slope = 0;
    double uuMean = 0; // Σu² / Count
    double skew = 0;   // Σu³ / Σu²
};

TCentredLine CentredLine(const TFinitePoints& points, const TCentring& xs, const TCentring& ys) {
    TSum uu;
    TSum uuu;
    TSum uv;
    for (std::size_t i = 0; i < points.Count(); ++i) {
        const double u = xs(points.x[i]);
        uu.Add(u * u);
        uuu.Add(u * u * u);
        uv.Add(u * ys(points.y[i]));
    }
    const double count = static_cast<double>(points.Count());
    return {uv.Value() / uu.Value(), uu.Value() / count, uuu.Value() / uu.Value()};
}

// How much of the third orthogonal polynomial u² − skew·u − uuMean the residuals of the line hold; 0 when the
// points do not define it.
double CentredCurvature(const TFinitePoints& points, const TCentring& xs, const TCentring& ys,
                        const TCentredLine& line) {
    TSum squares;
    TSum products;
    TSum fourths;
    for (std::size_t i = 0; i < points.Count(); ++i) {
        const double u = xs(points.x[i]);
        const double column = u * u - line.skew * u - line.uuMean;
        squares.Add(column * column);
        products.Add(column * (ys(points.y[i]) - line.slope * u));
        fourths.Add(u * u * u * u);
    }
    if (squares.Value() <= kNegligible * kNegligible * fourths.Value()) return 0;
    return products.Value() / squares.Value();
}

enum class TDegree { Line, Parabola };

TFittedCurve Fit(const TFinitePoints& points, TDegree degree) {
    if (points.Count() == 0) return {};
    const TCentring xs(points.x);
    const TCentring ys(points.y);
    if (xs.AllEqual()) return TFittedCurve({ys.Mean(), 0, 0});
    const TCentredLine line = CentredLine(points, xs, ys);
    const double curvature = degree == TDegree::Parabola ? CentredCurvature(points, xs, ys, line) : 0;
    const auto inY = [&](double v) { return std::ldexp(v, ys.Exponent()); };
    return TFittedCurve(xs, ys.Mean() - inY(curvature * line.uuMean), inY(line.slope - curvature * line.skew),
                        inY(curvature));
}

} // namespace

TFittedCurve::TFittedCurve(const TCentring& centring, double power0, double power1, double power2)
    : m_centring(centring), m_power0(power0), m_power1(power1), m_power2(power2) {
    const double mean = centring.Mean();
    m_coefficients.C2 = std::ldexp(power2, -2 * centring.Exponent());
    m_coefficients.C1 = std::ldexp(power1, -centring.Exponent()) - 2 * m_coefficients.C2 * mean;
    m_coefficients.C0 = power0 - (m_coefficients.C1 + m_coefficients.C2 * mean) * mean;
}

TFittedCurve::TFittedCurve(const TRegressionCoefficients& coefficients)
    : m_power0(coefficients.C0), m_power1(coefficients.C1), m_power2(coefficients.C2),
      m_coefficients(coefficients) {
}

TFittedCurve FitLine(std::span<const double> x, std::span<const double> y) {
    return Fit(FinitePoints(x, y), TDegree::Line);
}

TFittedCurve FitQuadratic(std::span<const double> x, std::span<const double> y) {
    return Fit(FinitePoints(x, y), TDegree::Parabola);
}

} // namespace lumoplot
