#include "fit/functions/peak_sum.h"

#include "fit/definition/fit_result.h"

#include <cmath>
#include <numbers>

namespace lumoplot {
namespace {

constexpr const char* kPeakX = "x";
/// A peak stays where it was found, rather than take the place of one that is not fitted.
constexpr double kWidthsToMove = 2;

/// The width at half height of a Gaussian peak, in standard deviations.
double HalfHeightOfGaussian() {
    return 2 * std::sqrt(2 * std::numbers::ln2);
}

std::string TermOf(TPeakShape shape, const std::string& number) {
    if (shape == TPeakShape::Gaussian)
        return "h" + number + "*exp(-sqr((x - m" + number + ")/s" + number + ")/2)";
    return "h" + number + "/(1 + sqr((x - m" + number + ")/w" + number + "))";
}

TDBLParameter& AddPeakParameter(TCurFit& fit, const std::string& name, double value,
                                const std::string& meaning, const std::string& unit) {
    auto parameter = std::make_unique<TDBLParameter>();
    parameter->SetName(name);
    parameter->SetValue(value);
    parameter->SetVary(true);
    parameter->Description = meaning;
    parameter->Units = unit;
    TDBLParameter& added = *parameter;
    fit.AddParameter(std::move(parameter));
    return added;
}

} // namespace

void UsePeakSum(std::span<const TPeakStart> peaks, TPeakShape shape, TCurFit& fit, const std::string& xUnit,
                const std::string& yUnit) {
    if (peaks.empty()) throw EFitError("There is no peak to fit");
    if (peaks.size() > kMostSummedPeaks)
        throw EFitError("At most " + std::to_string(kMostSummedPeaks) + " peaks can be fitted together");
    const bool isGaussian = shape == TPeakShape::Gaussian;
    fit.ClearTemplates();
    fit.ClearParameters();
    fit.SetXVarName(kPeakX);
    std::string equation;
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        const std::string number = std::to_string(i + 1);
        equation += TermOf(shape, number) + " + ";
        AddPeakParameter(fit, "h" + number, peaks[i].Height, "Height of peak " + number, yUnit);
        AddPeakParameter(fit, "m" + number, peaks[i].Position, "Position of peak " + number, xUnit)
            .SetBounds(peaks[i].Position - kWidthsToMove * peaks[i].Width,
                       peaks[i].Position + kWidthsToMove * peaks[i].Width);
        if (isGaussian)
            AddPeakParameter(fit, "s" + number, peaks[i].Width / HalfHeightOfGaussian(),
                             "Standard deviation of peak " + number, xUnit);
        else
            AddPeakParameter(fit, "w" + number, peaks[i].Width / 2,
                             "Half of the width at half height of peak " + number, xUnit);
    }
    AddPeakParameter(fit, "b", 0, "Baseline at X = 0", yUnit);
    AddPeakParameter(fit, "c", 0, "Slope of the baseline", {});
    fit.SetExpression(equation + "b + c*x");
}

} // namespace lumoplot
