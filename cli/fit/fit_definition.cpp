#include "cli/fit/fit_definition.h"

#include "cli/fit/procedure_names.h"
#include "cli/output.h"
#include "expr/formula_hints.h"
#include "expr/names.h"
#include "fit/definition/fit_result.h"
#include "support/number_text.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr int kUsualIterations = 2000;

std::pair<std::string, std::string> Halves(const std::string& option, const std::string& text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0)
        throw EUsage(option + ": '" + text + "' is not of the form NAME=…");
    return {text.substr(0, equals), text.substr(equals + 1)};
}

TDBLParameter* FindParameter(const TCurFit& fit, const std::string& name) {
    for (int i = 1; i <= fit.NParams(); ++i)
        if (LowerCased(fit.Parameter(i)->Name()) == LowerCased(name)) return fit.Parameter(i);
    return nullptr;
}

TDBLParameter& ExistingParameter(const TCurFit& fit, const std::string& option, const std::string& name) {
    TDBLParameter* parameter = FindParameter(fit, name);
    if (!parameter) throw EUsage(option + ": there is no parameter '" + name + "'");
    return *parameter;
}

double BoundArgument(const std::string& text, double none) {
    const double bound = text.empty() ? none : NumberArgument("--bound", text);
    if (std::isnan(bound)) throw EUsage("--bound: a bound is a number");
    return bound;
}

void TakeBound(TCurFit& fit, const std::string& text) {
    const auto [name, range] = Halves("--bound", text);
    const std::size_t colon = range.find(':');
    if (colon == std::string::npos || range.size() == 1)
        throw EUsage("--bound: '" + text + "' is not of the form NAME=MIN:MAX");
    const double min = BoundArgument(range.substr(0, colon), -INFINITY);
    const double max = BoundArgument(range.substr(colon + 1), INFINITY);
    if (!(min < max)) throw EUsage("--bound: '" + text + "' holds no range");
    ExistingParameter(fit, "--bound", name).SetBounds(min, max);
}

bool IsNamedIn(const std::string& formula, const std::string& name) {
    return std::ranges::any_of(
        NamesIn(formula), [&name](const TNameUse& use) { return LowerCased(use.Name) == LowerCased(name); });
}

/// In the equation or in what others are tied to; templates put in names of their own.
bool IsUsed(const TCurFit& fit, const std::vector<std::string>& ties, const std::string& name) {
    return fit.NTemplates() > 0 || IsNamedIn(fit.Expression(), name) ||
           std::ranges::any_of(ties, [&name](const std::string& tie) {
               return IsNamedIn(Halves("--tie", tie).second, name);
           });
}

// A parameter that is only tied needs no start.
void TakeTie(TCurFit& fit, const std::vector<std::string>& ties, const std::string& text) {
    const auto [name, formula] = Halves("--tie", text);
    if (!FindParameter(fit, name)) {
        if (!IsName(name)) throw EUsage("--tie: '" + name + "' is not a name");
        if (!IsUsed(fit, ties, name)) throw EUsage("--tie: '" + name + "' is in no formula");
        auto parameter = std::make_unique<TDBLParameter>();
        parameter->SetName(name);
        fit.AddParameter(std::move(parameter));
    }
    ExistingParameter(fit, "--tie", name).SetTie(formula);
}

} // namespace

void TFitDefinition::Define(TCurFit& fit, const TCurFit* stored) const {
    TakeModel(fit, stored);
    for (const std::string& text : parameters) TakeParameter(fit, text);
    for (const std::string& name : fixed) ExistingParameter(fit, "--fix", name).SetVary(false);
    for (const std::string& text : bounds) TakeBound(fit, text);
    for (const std::string& text : templates) {
        const auto [name, replacement] = Halves("--template", text);
        fit.AddTemplate(std::make_unique<TDBLFunction>(TDBLFunction{name, replacement, ""}));
    }
    for (const std::string& text : ties) TakeTie(fit, ties, text);
    TakeRun(fit);
    if (const auto hint = FindSignHint(fit.Expression())) PrintMessage(fit.Expression() + ": " + hint->Text);
}

void TFitDefinition::TakeModel(TCurFit& fit, const TCurFit* stored) const {
    if (!equation.empty() && !function.empty()) throw EUsage("--function: there is an --equation already");
    if (!function.empty()) {
        fit.LoadFromFile(function, false);
    } else if (!equation.empty()) {
        fit.SetExpression(std::string(Trimmed(equation)));
        fit.SetProcType(TFitProcedure::Newton);
        fit.SetIterMax(kUsualIterations);
    } else {
        if (stored->Expression().empty())
            throw EFitError("There is no fit: neither --equation nor --function is given, and the data set "
                            "holds none");
        fit.Assign(stored);
    }
    fit.SetXVarName(xName);
}

void TFitDefinition::TakeParameter(TCurFit& fit, const std::string& text) const {
    const auto [name, value] = Halves("--param", text);
    if (!IsName(name)) throw EUsage("--param: '" + name + "' is not a name");
    if (LowerCased(name) == LowerCased(fit.XVarName()))
        throw EUsage("--param: '" + name + "' is the variable");
    const double start = NumberArgument("--param", value);
    if (TDBLParameter* known = FindParameter(fit, name)) {
        if (!equation.empty()) throw EUsage("--param: '" + name + "' is there twice");
        return known->SetValue(start);
    }
    auto parameter = std::make_unique<TDBLParameter>();
    parameter->SetName(name);
    parameter->SetValue(start);
    parameter->SetVary(true);
    fit.AddParameter(std::move(parameter));
}

void TFitDefinition::TakeRun(TCurFit& fit) const {
    if (!procedure.empty()) fit.SetProcType(ProcedureArgument(procedure));
    fit.SetIterMax(iterations.value_or(fit.IterMax()));
    if (tolerance && *tolerance <= 0) throw EUsage("--tolerance: a number above 0 is needed");
    fit.SetTolerance(tolerance.value_or(fit.Tolerance()));
    if (left) {
        fit.SetUseLeftMargin(true);
        fit.SetLeftMargin(*left);
    }
    if (right) {
        fit.SetUseRightMargin(true);
        fit.SetRightMargin(*right);
    }
}

void AddDefinitionOptions(CLI::App& command, TFitDefinition& definition) {
    const std::string group = "Model";
    const auto add = [&](const char* name, auto& value, const char* help, const char* form) {
        return command.add_option(name, value, help)->type_name(form)->group(group);
    };
    add("--equation", definition.equation, "The formula of the model", "FORMULA");
    add("--function", definition.function, "Take the model from a function file (.lfn)", "FILE");
    add("--param", definition.parameters, "A parameter with its start (repeatable)", "NAME=VALUE")
        ->allow_extra_args(false);
    add("--fix", definition.fixed, "Keep a parameter as it is (repeatable)", "NAME")->allow_extra_args(false);
    add("--bound", definition.bounds, "Keep a parameter between two values; either may be left out",
        "NAME=MIN:MAX")
        ->allow_extra_args(false);
    add("--tie", definition.ties, "A parameter that follows from others by a formula (repeatable)",
        "NAME=FORMULA")
        ->allow_extra_args(false);
    add("--xvar", definition.xName, "Name of the variable (x)", "NAME");
    add("--template", definition.templates, "A text that stands for another (repeatable)", "NAME=TEXT")
        ->allow_extra_args(false);
}

void AddRunOptions(CLI::App& command, TFitDefinition& definition, TFitStarts& starts,
                   const char* procedureHelp) {
    command.add_option("--procedure", definition.procedure, procedureHelp)
        ->type_name("NAME")
        ->group(kRunGroup);
    AddCount(command, "--iterations", definition.iterations, 1, "Most iterations (2000, or those of the fit)")
        ->group(kRunGroup);
    command
        .add_flag_callback(
            "--local", [&starts] { starts = TFitStarts::Given; },
            "Only from the given start, not from others as well")
        ->group(kRunGroup);
    AddNumber(command, "--left", definition.left, "Use points from this X on")->group(kRunGroup);
    AddNumber(command, "--right", definition.right, "Use points up to this X")->group(kRunGroup);
}

} // namespace lumoplot
