#include "dialog/fit/fit_result_text.h"

#include "fit/definition/cur_fit.h"
#include "fit/definition/fit_result.h"
#include "fit/many/fit_report.h"
#include "fit/run/fit_statistics.h"
#include "support/message_text.h"
#include "support/number_text.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr int kErrorDigits = 4;
constexpr double kUnlikely = 0.05; // to come about by chance

std::string Counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string EndText(const TFitResult& result) {
    std::string text = result.End == TFitEnd::Converged ? "The fit has converged"
                                                        : "The fit has not converged: " + TextOf(result.End);
    text += " (";
    if (result.Iterations > 0)
        text += Counted(static_cast<std::size_t>(result.Iterations), "iteration") + ", ";
    text += Counted(result.PointsUsed, "point");
    if (result.PointsLeftOut > 0) text += ", " + std::to_string(result.PointsLeftOut) + " left out";
    if (result.Outliers > 0) text += ", " + Counted(result.Outliers, "outlier") + " held off";
    return text + ")\n";
}

std::string WithoutError(const TDBLParameter& parameter) {
    if (!parameter.IsOnBound()) return " ± not determined";
    return parameter.Value() == parameter.Min() ? " on its lower bound" : " on its upper bound";
}

std::string ParameterText(const TDBLParameter& parameter, const TFitResult& result, int number, int digits) {
    std::string text = parameter.Name() + " = " + FormatGeneral(parameter.Value(), digits);
    const auto varied = std::ranges::find(result.Varied, number);
    if (varied != result.Varied.end()) {
        const double error = result.StandardError(static_cast<std::size_t>(varied - result.Varied.begin()));
        text += std::isfinite(error) ? " ± " + FormatGeneral(error, kErrorDigits) : WithoutError(parameter);
    }
    if (parameter.IsTied() && parameter.FinalDeviation > 0)
        text += " ± " + FormatGeneral(parameter.FinalDeviation, kErrorDigits);
    if (!parameter.Units.empty()) text += " " + parameter.Units;
    if (parameter.IsTied())
        text += " (tied to " + parameter.Tie() + ")";
    else if (varied == result.Varied.end())
        text += " (fixed)";
    return text + "\n";
}

std::string StatisticsText(const TFitResult& result, int digits) {
    std::string text;
    if (std::isfinite(result.ResidualSD)) text = "Residual SD = " + FormatGeneral(result.ResidualSD, digits);
    if (std::isfinite(result.RSquared))
        text += (text.empty() ? "R² = " : ", R² = ") + FormatGeneral(result.RSquared, digits);
    return text.empty() ? text : text + "\n";
}

} // namespace

std::string FitResultText(const TCurFit& fit, int digits) {
    if (!fit.FitError().empty())
        return fit.IsStale() ? std::string()
                             : ShownLine("The fit was not possible: " + fit.FitError()) + "\n";
    if (!fit.Result()) return {};
    const TFitResult& result = *fit.Result();
    std::string text = fit.IsStale() ? "Changed since this fit:\n" : "";
    text += EndText(result);
    for (const std::string& remark : result.Remarks) text += remark + "\n";
    text += StatisticsText(result, digits);
    if (fit.UsesYErrors()) text += ErrorSourceText(fit.Weighting()) + "\n";
    if (result.Quality.RunsProbability < kUnlikely)
        for (const std::string& words : ResidualWords(result)) text += words + "\n";
    for (int number = 1; number <= fit.NParams() && !fit.IsStale(); ++number)
        text += ParameterText(*fit.Parameter(number), result, number, digits);
    return text;
}

} // namespace lumoplot
