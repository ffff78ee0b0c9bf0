#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/data_input.h"
#include "cli/database_input.h"
#include "data/analysis/least_squares.h"
#include "data/analysis/regression.h"
#include "data/analysis/spline.h"
#include "fit/definition/cur_fit.h"
#include "support/errors.h"

#include <memory>

namespace lumoplot {
namespace {

constexpr int kLastType = static_cast<int>(TRegressionType::RunningAverage);
constexpr int kLastTypeWithCoefficients = static_cast<int>(TRegressionType::Quadratic);

struct TRegressCommand {
    TDataOptions data;
    std::optional<int> type;
    std::optional<int> value1;
    std::optional<double> value2;
    TOutputForm form = TOutputForm::Outline;

    void Run() const {
        if (*type > kLastType) throw EUsage("--type: '" + std::to_string(*type) + "' is none of 1 to 7");
        const TDataInput input(data);
        TDataSeries& series = input.Series();
        series.SetRegressionType(TRegressionType{*type});
        if (value1) series.SetRegressionControlValue1(*value1);
        if (value2) series.SetRegressionControlValue2(*value2);
        series.CalcRegression();
        if (IsOfType(TRegressionType::SampledCurve) && !series.CurveFit().Selected())
            throw EFileError(ShownSource(data.file) + " holds no equation of a curve fit");
        if (!HasResult(series)) throw EFileError(ShownSource(data.file) + ": " + ReasonWithoutResult(series));
        PrintResult(series, input);
    }

private:
    bool IsOfType(TRegressionType wanted) const { return TRegressionType{*type} == wanted; }
    bool IsSampled() const {
        return IsOfType(TRegressionType::Spline) || IsOfType(TRegressionType::SampledCurve);
    }

    bool HasResult(const TDataSeries& series) const {
        if (IsSampled()) return !series.RegressionCurve().empty();
        return *type > kLastTypeWithCoefficients ? series.Count() > 0 : series.RegressionLine() != nullptr;
    }

    std::string ReasonWithoutResult(const TDataSeries& series) const {
        const int samples = series.RegressionControlValue1();
        if (IsSampled() && (samples < 1 || samples > kMostCurveSamples))
            return "there is no curve of " + std::to_string(samples) + " samples";
        if (IsOfType(TRegressionType::Spline) && series.DuplicatesAllowed())
            return "there is no spline through points with equal X";
        return "there are too few points with different X";
    }

    // A sampled curve has a grid of its own; what a spline derives at the points are second derivatives.
    void PrintResult(const TDataSeries& series, const TDataInput& input) const {
        std::vector<double> x;
        std::vector<double> derived;
        if (!IsSampled()) {
            x = input.X();
            for (TPointCursor point = series.First(); point; point = point.Next())
                derived.push_back(point.Derived());
        }
        for (const TCurveSample& sample : series.RegressionCurve()) {
            x.push_back(sample.X);
            derived.push_back(sample.Derived);
        }
        const TFittedCurve* line = series.RegressionLine();
        const TRegressionCoefficients c = line ? line->Coefficients() : TRegressionCoefficients();
        const TDocument coefficients = {{"c0", c.C0}, {"c1", c.C1}, {"c2", c.C2}};
        if (form == TOutputForm::Json) {
            TDocument document = coefficients;
            document["x"] = x;
            document["derived"] = derived;
            return Print(document, form);
        }
        if (*type <= kLastTypeWithCoefficients) Print(coefficients, form);
        Print(ColumnsText({x, derived}));
    }
};

} // namespace

void AddRegressCommand(CLI::App& program) {
    const auto regress = std::make_shared<TRegressCommand>();
    CLI::App& command = *program.add_subcommand("regress", "Compute a regression or a smoothing");
    AddDataOptions(command, regress->data);
    AddCount(command, "--type", regress->type, 1, "The regression, by its number below")->required();
    AddInteger(command, "--value1", regress->value1, "See below (the data set's own, or 100)");
    AddNumber(command, "--value2", regress->value2, "See below (the data set's own, or 0.05)");
    AddJson(command, regress->form);
    command.footer("Types:\n"
                   "  1  line by least squares\n"
                   "  2  robust line\n"
                   "  3  parabola by least squares\n"
                   "  4  cubic spline; --value1 is the number of samples, --value2 the slope at the ends\n"
                   "  5  curve of the data set's fit; --value1 is the number of samples\n"
                   "  6  exponential smoothing; --value2 is the weight\n"
                   "  7  running average; --value2 is 1 / window\n"
                   "Prints the coefficients of types 1 to 3 (derived = c2 x^2 + c1 x + c0), then a line\n"
                   "with x and the derived value for each point, or for each sample of types 4 and 5.\n"
                   "Below 1 and above 1000000 samples there is no curve, nor a spline through points\n"
                   "with equal X.");
    command.callback([regress] { RunOn(regress->data, [&] { regress->Run(); }); });
}

} // namespace lumoplot
