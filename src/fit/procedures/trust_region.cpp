#include "fit/procedures/trust_region.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kRadiusSlack = 0.1;
constexpr int kMostSecularSteps = 60;

/// z as a function of the shift of all curvatures.
class TShiftedStep {
public:
    TShiftedStep(const TQuadraticModel& model, double shift) : m_z(model.Slopes.size()) {
        for (std::size_t i = 0; i < m_z.size(); ++i) {
            if (model.Slopes[i] == 0) continue;
            const double curvature = model.Curvatures[i] + shift;
            m_z[i] = -model.Slopes[i] / curvature;
            m_slope += m_z[i] * m_z[i] / curvature;
        }
        m_length = Norm(m_z);
    }

    double Length() const { return m_length; }
    /// Newton's correction of the shift for 1/‖z‖ = 1/radius.
    double Correction(double radius) const { return (m_length / radius - 1) * m_length * m_length / m_slope; }
    TVector Take() { return std::move(m_z); }

private:
    TVector m_z;
    double m_slope = 0;
    double m_length = 0;
};

/// The lowest curvature is negative and has no slope: the step goes to the edge along it.
TVector AlongLowest(TVector z, std::size_t lowest, double radius) {
    const double rest = radius * radius - Dot(z, z);
    z[lowest] += std::sqrt(std::max(0.0, rest));
    return z;
}

} // namespace

TTrustedStep MinimiseWithin(const TQuadraticModel& model, double radius) {
    const auto lowest = static_cast<std::size_t>(
        std::min_element(model.Curvatures.begin(), model.Curvatures.end()) - model.Curvatures.begin());
    const double least = model.Curvatures[lowest];
    if (least >= 0) {
        TShiftedStep newton(model, 0);
        if (newton.Length() <= radius * (1 + kRadiusSlack)) return {newton.Take(), true};
    }
    // ‖z(shift)‖ falls from the lowest shift that leaves no curvature negative to the upper bound.
    double low = std::max(0.0, -least);
    double high = low + Norm(model.Slopes) / radius;
    double shift = std::max(low + 1e-3 * (high - low), std::sqrt(low * high));
    for (int i = 0; i < kMostSecularSteps; ++i) {
        TShiftedStep step(model, shift);
        if (std::abs(step.Length() - radius) <= kRadiusSlack * radius) return {step.Take()};
        (step.Length() > radius ? low : high) = shift;
        const double next = shift + step.Correction(radius);
        const bool isInside = next > low && next < high;
        const double middle = low > 0 ? std::sqrt(low * high) : 1e-3 * high;
        if (!isInside && (middle <= low || middle >= high)) break;
        shift = isInside ? next : middle;
    }
    TShiftedStep step(model, high);
    return {least < 0 ? AlongLowest(step.Take(), lowest, radius) : step.Take()};
}

} // namespace lumoplot
