#include "cli/fit/fit_weights.h"

#include "data/series/y_error_rule.h"

namespace lumoplot {
namespace {

constexpr std::string_view kPercent = "percent=";
constexpr std::string_view kConstant = "constant=";

/// The rule that the text names; none for a column and for the errors that the points have.
TYErrorRule RuleNamed(const std::string& weights) {
    if (weights == "sqrt") return {TYErrorKind::SquareRoot};
    for (const auto& [start, kind] :
         {std::pair(kPercent, TYErrorKind::Percent), std::pair(kConstant, TYErrorKind::Constant)}) {
        if (!weights.starts_with(start)) continue;
        const double value = NumberArgument("--weights", weights.substr(start.size()));
        if (UsableYError(value) == 0)
            throw EUsage("--weights: a number above 0 is needed in '" + weights + "'");
        return {kind, value};
    }
    return {};
}

} // namespace

bool TFitWeights::IsColumn() const {
    return !weights.empty() && weights != "none" && weights != "errors" &&
           RuleNamed(weights).Kind == TYErrorKind::None;
}

void TFitWeights::TakeColumn(TDataOptions& data) const {
    if (!IsColumn()) return;
    if (KindOfFile(data.file) != TFileKind::Text)
        throw EUsage("--weights: '" + weights +
                     "' is none of errors, percent=P, constant=C, sqrt, none, and " + data.file +
                     " has no columns");
    data.text.yErrorColumn = weights;
}

void TFitWeights::Define(TCurFit& fit) const {
    TFitWeighting weighting = fit.Weighting();
    if (!weights.empty()) weighting.ByYErrors = weights != "none";
    if (!errors.empty()) {
        if (errors != "absolute" && errors != "scaled")
            throw EUsage("--errors: '" + errors + "' is neither absolute nor scaled");
        weighting.Errors = errors == "absolute" ? TErrorSource::Points : TErrorSource::Residuals;
    }
    if (!robust.empty()) {
        weighting.Robust = FitWeightingOf(robust).Robust;
        if (robust != "none" && weighting.Robust == TRobust::None)
            throw EUsage("--robust: '" + robust + "' is none of huber, cauchy, tukey");
    }
    fit.SetWeighting(weighting);
}

std::vector<double> TFitWeights::ErrorsOf(const TDataInput& input) const {
    const TYErrorRule rule = RuleNamed(weights);
    if (rule.Kind == TYErrorKind::None) return input.YErrors();
    std::vector<double> values;
    for (const double y : input.Y()) values.push_back(YErrorBy(rule, y));
    return values;
}

void AddWeightOptions(CLI::App& command, TFitWeights& weights) {
    const std::string group = "Run";
    const auto add = [&](const char* name, std::string& value, const char* help, const char* form) {
        command.add_option(name, value, help)->type_name(form)->group(group);
    };
    add("--weights", weights.weights,
        "Weigh by the errors of Y: errors (those that the data set holds), a column, percent=P, constant=C, "
        "sqrt (of Y), none",
        "ERRORS");
    add("--errors", weights.errors,
        "Standard errors of weighted fits: absolute, or scaled by the residual deviation (as the fit has it, "
        "else scaled)",
        "NAME");
    add("--robust", weights.robust, "Hold outliers off: huber, cauchy or tukey", "NAME");
}

} // namespace lumoplot
