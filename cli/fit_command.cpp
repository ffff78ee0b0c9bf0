#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/data_input.h"
#include "cli/procedure_names.h"
#include "expr/names.h"
#include "fit/run/curve_fitter.h"
#include "fit/run/fit_statistics.h"
#include "support/errors.h"
#include "support/number_text.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace lumoplot {
namespace {

constexpr int kIterations = 2000;
constexpr std::string_view kPercent = "percent=";

struct TFitCommand {
    TDataOptions data;
    std::string equation;
    std::vector<std::string> parameters;
    std::vector<std::string> fixed;
    std::string xName = "x";
    std::vector<std::string> templates;
    std::string procedure = kProcedures[TCurFit::kNewton];
    std::optional<int> iterations;
    std::optional<double> tolerance;
    std::optional<double> left;
    std::optional<double> right;
    TFitStarts starts = TFitStarts::Scattered;
    std::string weights;
    std::string robust;
    bool allowsUnconverged = false;
    std::string save;
    TOutputForm form = TOutputForm::Outline;

    void Run() const {
        TCurFit fit;
        Define(fit);
        const TDataInput input(data);
        std::vector<double> corrected = input.Y();
        for (std::size_t i = 0; i < corrected.size(); ++i)
            corrected[i] = input.Series().CorrectedY(input.X()[i], corrected[i]);
        TFitRun run;
        run.Starts = starts;
        run.Robust = RobustArgument();
        const std::vector<double> errors =
            weights.empty() ? std::vector<double>() : ErrorsOf(input, corrected);
        run.Errors = errors;
        const TFitResult result = RunFit(fit, input.X(), corrected, run);
        if (!save.empty()) fit.SaveToFile(save);
        Print(DocumentOf(fit, result), form);
        if (result.End == TFitEnd::Converged || allowsUnconverged) return;
        std::string message = TextOf(result.End);
        for (const std::string& remark : result.Remarks)
            message += ". " + remark.substr(0, remark.size() - 1);
        throw EFitError(message);
    }

private:
    static std::pair<std::string, std::string> Halves(const std::string& option, const std::string& text) {
        const std::size_t equals = text.find('=');
        if (equals == std::string::npos || equals == 0)
            throw EUsage(option + ": '" + text + "' is not of the form NAME=…");
        return {text.substr(0, equals), text.substr(equals + 1)};
    }

    TRobust RobustArgument() const {
        if (robust.empty() || robust == "none") return TRobust::None;
        if (robust == "huber") return TRobust::Huber;
        if (robust == "cauchy") return TRobust::Cauchy;
        if (robust == "tukey") return TRobust::Tukey;
        throw EUsage("--robust: '" + robust + "' is none of huber, cauchy, tukey");
    }

    // The standard error of each Y.
    std::vector<double> ErrorsOf(const TDataInput& input, const std::vector<double>& y) const {
        std::vector<double> errors;
        if (weights == "sqrt") {
            for (const double value : y) errors.push_back(std::sqrt(value));
        } else if (weights.starts_with(kPercent)) {
            const double percent = NumberArgument("--weights", weights.substr(kPercent.size()));
            if (!(percent > 0)) throw EUsage("--weights: a percentage above 0 is needed");
            for (const double value : y) errors.push_back(std::abs(value) * percent / 100);
        } else {
            TDataOptions column = data;
            column.text.yColumn = weights;
            const TDataInput sigma(column);
            if (sigma.X() != input.X())
                throw EFitError("The column " + weights + " has no number in some of the rows");
            errors = sigma.Y();
        }
        return errors;
    }

    void Define(TCurFit& fit) const {
        fit.SetExpression(std::string(Trimmed(equation)));
        fit.SetXVarName(xName);
        for (const std::string& text : parameters) AddParameter(fit, text);
        for (const std::string& name : fixed) Fix(fit, name);
        for (const std::string& text : templates) {
            const auto [name, replacement] = Halves("--template", text);
            fit.AddTemplate(std::make_unique<TDBLFunction>(TDBLFunction{name, replacement, ""}));
        }
        fit.SetProcType(ProcedureArgument(procedure));
        fit.SetIterMax(iterations.value_or(kIterations));
        if (tolerance && *tolerance <= 0) throw EUsage("--tolerance: a number above 0 is needed");
        fit.SetTolerance(tolerance.value_or(fit.Tolerance()));
        fit.SetUseLeftMargin(left.has_value());
        fit.SetUseRightMargin(right.has_value());
        fit.SetLeftMargin(left.value_or(0));
        fit.SetRightMargin(right.value_or(0));
    }

    static void AddParameter(TCurFit& fit, const std::string& text) {
        const auto [name, value] = Halves("--param", text);
        if (!IsName(name)) throw EUsage("--param: '" + name + "' is not a name");
        if (LowerCased(name) == LowerCased(fit.XVarName()))
            throw EUsage("--param: '" + name + "' is the variable");
        if (fit.IsParameter(name)) throw EUsage("--param: '" + name + "' is there twice");
        auto parameter = std::make_unique<TDBLParameter>();
        parameter->SetName(name);
        parameter->SetValue(NumberArgument("--param", value));
        parameter->SetVary(true);
        fit.AddParameter(std::move(parameter));
    }

    static void Fix(TCurFit& fit, const std::string& name) {
        for (int i = 1; i <= fit.NParams(); ++i)
            if (LowerCased(fit.Parameter(i)->Name()) == LowerCased(name))
                return fit.Parameter(i)->SetVary(false);
        throw EUsage("--fix: there is no parameter '" + name + "'");
    }

    static TDocument DocumentOf(const TCurFit& fit, const TFitResult& result) {
        TDocument values = TDocument::object();
        TDocument errors = TDocument::object();
        TDocument t = TDocument::object();
        TDocument probability = TDocument::object();
        for (int i = 1; i <= fit.NParams(); ++i) values[fit.Parameter(i)->Name()] = fit.Parameter(i)->Value();
        for (std::size_t i = 0; i < result.Varied.size(); ++i) {
            const TDBLParameter& parameter = *fit.Parameter(result.Varied[i]);
            const double ratio = parameter.Value() / result.StandardError(i);
            errors[parameter.Name()] = result.StandardError(i);
            t[parameter.Name()] = ratio;
            probability[parameter.Name()] = StudentProbability(ratio, result.Quality.Freedom);
        }
        TDocument document = {{"parameters", values},
                              {"errors", errors},
                              {"t", t},
                              {"probability", probability},
                              {"correlation", Correlation(result)},
                              {"rss", result.Rss},
                              {"residual_sd", result.ResidualSD},
                              {"r_squared", result.RSquared}};
        AddQuality(document, result);
        document["points"] = result.PointsUsed;
        document["points_left_out"] = result.PointsLeftOut;
        document["outliers"] = result.Outliers;
        document["iterations"] = result.Iterations;
        document["evaluations"] = result.Evaluations;
        document["converged"] = result.End == TFitEnd::Converged;
        document["end"] = TextOf(result.End);
        document["remarks"] = TDocument::array();
        for (const std::string& remark : result.Remarks) document["remarks"].push_back(remark);
        return document;
    }

    static void AddQuality(TDocument& document, const TFitResult& result) {
        const TFitQuality& quality = result.Quality;
        document["adjusted_r_squared"] = quality.AdjustedRSquared;
        document["aic"] = quality.Aic;
        document["aicc"] = quality.Aicc;
        document["bic"] = quality.Bic;
        document["runs_deviation"] = quality.RunsDeviation;
        document["runs_probability"] = quality.RunsProbability;
        document["durbin_watson"] = quality.DurbinWatson;
        document["degrees_of_freedom"] = quality.Freedom;
        if (std::isnan(quality.ChiSquareProbability)) return;
        document["chi_square"] = result.Rss;
        document["reduced_chi_square"] = result.Rss / quality.Freedom;
        document["chi_square_probability"] = quality.ChiSquareProbability;
    }

    // The rows in the order of the errors.
    static TDocument Correlation(const TFitResult& result) {
        TDocument rows = TDocument::array();
        const TMatrix& covariance = result.Covariance;
        for (int i = 0; i < covariance.Size(); ++i) {
            TDocument row = TDocument::array();
            for (int j = 0; j < covariance.Size(); ++j)
                row.push_back(covariance(i, j) / std::sqrt(covariance(i, i) * covariance(j, j)));
            rows.push_back(row);
        }
        return rows;
    }
};

void AddModelOptions(CLI::App& command, TFitCommand& fit) {
    const std::string group = "Model";
    command.add_option("--equation", fit.equation, "The formula of the model")
        ->type_name("FORMULA")
        ->required()
        ->group(group);
    command.add_option("--param", fit.parameters, "A parameter with its start (repeatable)")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false)
        ->group(group);
    command.add_option("--fix", fit.fixed, "Keep a parameter as it is (repeatable)")
        ->type_name("NAME")
        ->allow_extra_args(false)
        ->group(group);
    command.add_option("--xvar", fit.xName, "Name of the variable (x)")->type_name("NAME")->group(group);
    command.add_option("--template", fit.templates, "A text that stands for another (repeatable)")
        ->type_name("NAME=TEXT")
        ->allow_extra_args(false)
        ->group(group);
}

void AddRunOptions(CLI::App& command, TFitCommand& fit) {
    const std::string group = "Run";
    command.add_option("--procedure", fit.procedure, "The procedure, see below (variable-metric)")
        ->type_name("NAME")
        ->group(group);
    AddCount(command, "--iterations", fit.iterations, 1, "Most iterations (2000)")->group(group);
    AddNumber(command, "--tolerance", fit.tolerance, "Relative change at which it stops (3e-8)")
        ->group(group);
    command
        .add_flag_callback(
            "--local", [&fit] { fit.starts = TFitStarts::Given; },
            "Only from the given start, not from others as well")
        ->group(group);
    command.add_option("--weights", fit.weights, "Errors of Y: a column, percent=P, or sqrt (of Y)")
        ->type_name("ERRORS")
        ->group(group);
    command.add_option("--robust", fit.robust, "Hold outliers off: huber, cauchy or tukey")
        ->type_name("NAME")
        ->group(group);
    command
        .add_flag_callback(
            "--allow-unconverged", [&fit] { fit.allowsUnconverged = true; },
            "Exit status 0 also where the fit has not converged")
        ->group(group);
    AddNumber(command, "--left", fit.left, "Use points from this X on")->group(group);
    AddNumber(command, "--right", fit.right, "Use points up to this X")->group(group);
}

} // namespace

void AddFitCommand(CLI::App& program) {
    const auto fit = std::make_shared<TFitCommand>();
    CLI::App& command = *program.add_subcommand("fit", "Fit a model to data");
    AddDataOptions(command, fit->data);
    AddModelOptions(command, *fit);
    AddRunOptions(command, *fit);
    command.add_option("--save", fit->save, "Save the fit as a function file (.lfn)")->type_name("FILE");
    AddJson(command, fit->form);
    command.footer("Procedures: powell, simplex, conjugate-gradient, variable-metric.\n"
                   "The fit minimises the sum of squares of the corrected Y; errors are standard errors.\n"
                   "Example:\n  xydata fit decay.csv --equation \"a*exp(-b*x)\" --param a=1 --param b=0.1");
    command.callback([fit] { fit->Run(); });
}

} // namespace lumoplot
