#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/data_input.h"
#include "cli/procedure_names.h"
#include "fit/procedures/curve_fitter.h"
#include "support/errors.h"
#include "support/number_text.h"

#include <algorithm>
#include <memory>

namespace lumoplot {
namespace {

constexpr int kIterations = 2000;

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
    std::string save;
    TOutputForm form = TOutputForm::Outline;

    void Run() const {
        TCurFit fit;
        Define(fit);
        const TDataInput input(data);
        std::vector<double> corrected = input.Y();
        for (std::size_t i = 0; i < corrected.size(); ++i)
            corrected[i] = input.Series().CorrectedY(input.X()[i], corrected[i]);
        const TFitResult result = RunFit(fit, input.X(), corrected, {nullptr, {}, starts});
        if (!save.empty()) fit.SaveToFile(save);
        Print(DocumentOf(fit, result), form);
    }

private:
    static std::pair<std::string, std::string> Halves(const std::string& option, const std::string& text) {
        const std::size_t equals = text.find('=');
        if (equals == std::string::npos || equals == 0)
            throw EUsage(option + ": '" + text + "' is not of the form NAME=…");
        return {text.substr(0, equals), text.substr(equals + 1)};
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
        for (int i = 1; i <= fit.NParams(); ++i) values[fit.Parameter(i)->Name()] = fit.Parameter(i)->Value();
        for (std::size_t i = 0; i < result.Varied.size(); ++i)
            errors[fit.Parameter(result.Varied[i])->Name()] = result.StandardError(i);
        TDocument remarks = TDocument::array();
        for (const std::string& remark : result.Remarks) remarks.push_back(remark);
        return {{"parameters", values},
                {"errors", errors},
                {"rss", result.Rss},
                {"residual_sd", result.ResidualSD},
                {"r_squared", result.RSquared},
                {"points", result.PointsUsed},
                {"points_left_out", result.PointsLeftOut},
                {"iterations", result.Iterations},
                {"evaluations", result.Evaluations},
                {"converged", result.End == TFitEnd::Converged},
                {"end", TextOf(result.End)},
                {"remarks", remarks}};
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
