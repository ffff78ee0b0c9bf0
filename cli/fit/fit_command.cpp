#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/data_input.h"
#include "cli/fit/fit_definition.h"
#include "cli/fit/fit_document.h"
#include "cli/fit/fit_report_file.h"
#include "cli/fit/fit_weights.h"
#include "expr/blocks/block_evaluator.h"
#include "fit/run/curve_fitter.h"
#include "support/errors.h"
#include "support/number_text.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace lumoplot {
namespace {

constexpr int kMostStarts = 1000;
constexpr int kMostResamples = 100000;

struct TFitCommand {
    TDataOptions data;
    TFitDefinition definition;
    TFitStarts starts = TFitStarts::Scattered;
    TFitWeights weights;
    std::optional<int> searchRuns;
    std::optional<int> bootstrap;
    bool profiles = false;
    std::optional<int> curve;
    bool residuals = false;
    std::string report;
    bool allowsUnconverged = false;
    std::string save;
    TOutputForm form = TOutputForm::Outline;

    void Run() const {
        if (!report.empty()) CheckReportName(report);
        if (searchRuns && starts == TFitStarts::Given) throw EUsage("--starts: there is --local already");
        if (searchRuns > kMostStarts) throw EUsage("--starts: more than " + std::to_string(kMostStarts));
        if (bootstrap > kMostResamples)
            throw EUsage("--bootstrap: more than " + std::to_string(kMostResamples));
        TCurFit fit;
        if (definition.HasModel()) definition.Define(fit, nullptr);
        TDataOptions options = data;
        weights.TakeColumn(options);
        const TDataInput input(options);
        if (!definition.HasModel()) definition.Define(fit, &input.Series().CurveFit());
        const std::vector<double>& corrected = input.CorrectedY();
        TFitRun run;
        run.Starts = starts;
        weights.Define(fit);
        const std::vector<double> errors = weights.ErrorsOf(input);
        TakeWeighting(run, fit, errors);
        run.SearchRuns = searchRuns.value_or(0);
        const TFitResult result = RunFit(fit, input.X(), corrected, run);
        if (!save.empty()) fit.SaveToFile(save);
        const TFittedData fitted{fit, input.X(), corrected, run};
        const TKnownUncertainty known = UncertaintyOf(fitted);
        if (!report.empty()) WriteFitReport(report, fit, data, known);
        PrintResult(fitted, known);
        if (result.End == TFitEnd::Converged || allowsUnconverged) return;
        std::string message = TextOf(result.End);
        for (const std::string& remark : result.Remarks)
            message += ". " + remark.substr(0, remark.size() - 1);
        throw EFitError(message);
    }

private:
    TKnownUncertainty UncertaintyOf(const TFittedData& fitted) const {
        TKnownUncertainty known;
        if (fitted.Fit.Result()->End != TFitEnd::Converged) return known;
        if (bootstrap) {
            TBootstrapOptions options;
            options.Resamples = *bootstrap;
            known.Bootstrap = BootstrapOf(fitted, options);
        }
        if (profiles)
            for (const int number : fitted.Fit.Result()->Varied)
                known.Profiles.push_back(ProfileOf(fitted, number));
        return known;
    }

    // The tables alone are printed as text, so that another program can read them; as JSON they are added.
    void PrintResult(const TFittedData& fitted, const TKnownUncertainty& known) const {
        TDocument document = FitDocument(fitted.Fit);
        AddOutliers(document, fitted);
        if (!known.Bootstrap.Intervals.empty())
            document["bootstrap"] = BootstrapDocument(fitted.Fit, known.Bootstrap);
        if (!known.Profiles.empty()) document["profile"] = ProfileDocument(fitted.Fit, known.Profiles);
        if (form == TOutputForm::Outline && !curve && !residuals) return Print(document, form);
        if (curve) TakeTable(document, "curve", CurveOf(fitted));
        if (residuals) TakeTable(document, "residuals", ResidualsOf(fitted));
        if (form == TOutputForm::Json) Print(document, form);
    }

    using TColumns = std::vector<std::pair<const char*, std::vector<double>>>;

    void TakeTable(TDocument& document, const char* name, const TColumns& columns) const {
        TDocument table = TDocument::object();
        for (const auto& [title, values] : columns) table[title] = values;
        document[name] = table;
        if (form == TOutputForm::Json) return;
        std::string text;
        for (std::size_t row = 0; row < columns.front().second.size(); ++row)
            for (const auto& column : columns)
                text += FormatShortest(column.second[row]) + (&column == &columns.back() ? '\n' : '\t');
        Print(text);
    }

    static bool IsUsed(const TCurFit& fit, double x) {
        return std::isfinite(x) && !(fit.UseLeftMargin() && x < fit.LeftMargin()) &&
               !(fit.UseRightMargin() && x > fit.RightMargin());
    }

    TColumns CurveOf(const TFittedData& fitted) const {
        double left = INFINITY;
        double right = -INFINITY;
        for (const double x : fitted.X) {
            if (!IsUsed(fitted.Fit, x)) continue;
            left = std::min(left, x);
            right = std::max(right, x);
        }
        std::vector<double> x;
        for (int i = 0; i < *curve; ++i) x.push_back(std::lerp(left, right, i / std::max(1.0, *curve - 1.0)));
        return {{"x", x}, {"y", ValuesAt(fitted.Fit, x)}};
    }

    static TColumns ResidualsOf(const TFittedData& fitted) {
        TColumns columns = {{"x", {}}, {"y", {}}, {"fitted", {}}, {"residual", {}}};
        for (std::size_t i = 0; i < fitted.X.size(); ++i) {
            if (!IsUsed(fitted.Fit, fitted.X[i])) continue;
            columns[0].second.push_back(fitted.X[i]);
            columns[1].second.push_back(fitted.Y[i]);
        }
        columns[2].second = ValuesAt(fitted.Fit, columns[0].second);
        for (std::size_t i = 0; i < columns[0].second.size(); ++i)
            columns[3].second.push_back(columns[1].second[i] - columns[2].second[i]);
        return columns;
    }

    static std::vector<double> ValuesAt(const TCurFit& fit, const std::vector<double>& x) {
        TCurFit copy;
        copy.Assign(&fit);
        std::vector<double> y(x.size());
        TBlockEvaluator(copy, copy.XRef()).Evaluate(x, y);
        return y;
    }
};

void AddOutputOptions(CLI::App& command, TFitCommand& fit) {
    const std::string group = "Results";
    AddCount(command, "--bootstrap", fit.bootstrap, 2, "Errors and 95 % intervals from N resamples")
        ->group(group);
    command.add_flag("--profile", fit.profiles, "95 % intervals from profiles of the sum of squares")
        ->group(group);
    AddCount(command, "--curve", fit.curve, 1, "Print N even points x, y of the curve instead of the figures")
        ->group(group);
    command
        .add_flag("--residuals", fit.residuals,
                  "Print x, y, fitted y and residual of each point instead of the figures")
        ->group(group);
    command.add_option("--report", fit.report, "Write a report: .html with a picture, or .txt")
        ->type_name("FILE")
        ->group(group);
    command.add_option("--save", fit.save, "Save the fit as a function file (.lfn)")
        ->type_name("FILE")
        ->group(group);
    command
        .add_flag_callback(
            "--allow-unconverged", [&fit] { fit.allowsUnconverged = true; },
            "Exit status 0 also where the fit has not converged")
        ->group(group);
}

void AddRunOptions(CLI::App& command, TFitCommand& fit) {
    AddRunOptions(command, fit.definition, fit.starts, "The procedure, see below");
    AddNumber(command, "--tolerance", fit.definition.tolerance, "Relative change at which it stops (3e-8)")
        ->group(kRunGroup);
    AddCount(command, "--starts", fit.searchRuns, 1, "Run from N scattered starts as well")->group(kRunGroup);
    AddWeightOptions(command, fit.weights);
}

} // namespace

void AddFitCommand(CLI::App& program) {
    const auto fit = std::make_shared<TFitCommand>();
    CLI::App& command = *program.add_subcommand("fit", "Fit a model to data");
    AddDataOptions(command, fit->data);
    AddDefinitionOptions(command, fit->definition);
    AddRunOptions(command, *fit);
    AddOutputOptions(command, *fit);
    AddJson(command, fit->form);
    command.footer(
        "Without --equation and --function the fit that the data set holds is run; --param then changes\n"
        "starts.\n"
        "Procedures: powell, simplex, conjugate-gradient, variable-metric (unless the fit has its own).\n"
        "The fit minimises the sum of squares of the corrected Y; errors are standard errors.\n"
        "Example:\n  xydata fit decay.csv --equation \"a*exp(-b*x)\" --param a=1 --param b=0.1");
    command.callback([fit] { RunOn(fit->data, [&] { fit->Run(); }); });
}

} // namespace lumoplot
