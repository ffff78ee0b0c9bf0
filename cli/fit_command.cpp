#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/data_input.h"
#include "cli/fit_definition.h"
#include "fit/run/curve_fitter.h"
#include "fit/run/fit_statistics.h"
#include "support/errors.h"
#include "support/number_text.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace lumoplot {
namespace {

constexpr std::string_view kPercent = "percent=";

struct TFitCommand {
    TDataOptions data;
    TFitDefinition definition;
    TFitStarts starts = TFitStarts::Scattered;
    std::string weights;
    std::string robust;
    bool allowsUnconverged = false;
    std::string save;
    TOutputForm form = TOutputForm::Outline;

    void Run() const {
        TCurFit fit;
        if (definition.HasModel()) definition.Define(fit, nullptr);
        const TDataInput input(data);
        if (!definition.HasModel()) definition.Define(fit, &input.Series().CurveFit());
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
                              {"on_bound", OnBound(fit, result)},
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

    static TDocument OnBound(const TCurFit& fit, const TFitResult& result) {
        TDocument names = TDocument::array();
        for (std::size_t i = 0; i < result.Varied.size(); ++i) {
            const TDBLParameter& parameter = *fit.Parameter(result.Varied[i]);
            if (parameter.IsOnBound()) names.push_back(parameter.Name());
        }
        return names;
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

void AddRunOptions(CLI::App& command, TFitCommand& fit) {
    const std::string group = "Run";
    command.add_option("--procedure", fit.definition.procedure, "The procedure, see below")
        ->type_name("NAME")
        ->group(group);
    AddCount(command, "--iterations", fit.definition.iterations, 1,
             "Most iterations (2000, or those of the fit)")
        ->group(group);
    AddNumber(command, "--tolerance", fit.definition.tolerance, "Relative change at which it stops (3e-8)")
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
    AddNumber(command, "--left", fit.definition.left, "Use points from this X on")->group(group);
    AddNumber(command, "--right", fit.definition.right, "Use points up to this X")->group(group);
}

} // namespace

void AddFitCommand(CLI::App& program) {
    const auto fit = std::make_shared<TFitCommand>();
    CLI::App& command = *program.add_subcommand("fit", "Fit a model to data");
    AddDataOptions(command, fit->data);
    AddDefinitionOptions(command, fit->definition);
    AddRunOptions(command, *fit);
    command.add_option("--save", fit->save, "Save the fit as a function file (.lfn)")->type_name("FILE");
    AddJson(command, fit->form);
    command.footer(
        "Without --equation and --function the fit that the data set holds is run; --param then changes\n"
        "starts.\n"
        "Procedures: powell, simplex, conjugate-gradient, variable-metric (unless the fit has its own).\n"
        "The fit minimises the sum of squares of the corrected Y; errors are standard errors.\n"
        "Example:\n  xydata fit decay.csv --equation \"a*exp(-b*x)\" --param a=1 --param b=0.1");
    command.callback([fit] { fit->Run(); });
}

} // namespace lumoplot
