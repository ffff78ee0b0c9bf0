#include "fit/run/fit_check.h"

#include "expr/formula_hints.h"
#include "expr/names.h"
#include "fit/definition/fit_result.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace lumoplot {
namespace {

std::string Quoted(const std::string& text) {
    return '"' + text + '"';
}

// A template whose name is no name of the language is put in wherever its characters stand.
bool ContainsItself(const TDBLFunction& function) {
    const std::string text = LowerCased(function.Text);
    const std::string name = LowerCased(function.Name);
    if (name.empty()) return false;
    if (!IsName(name)) return text.find(name) != std::string::npos;
    return std::ranges::any_of(NamesIn(text), [&](const TNameUse& use) { return use.Name == name; });
}

void CheckTemplates(const TCurFit& fit) {
    for (int i = 1; i <= fit.NTemplates(); ++i) {
        const TDBLFunction& function = *fit.Template(i);
        if (ContainsItself(function))
            throw EFitError("The template " + Quoted(function.Name) + " contains its own name");
    }
}

/// The doubles that a formula reads, and those that it assigns to.
struct TUse {
    std::set<const double*> read;
    std::set<const double*> assigned;
};

TUse UseOf(const TCompiledExpression& expression) {
    TUse use;
    for (const TEvalRecord& record : expression.Records) {
        const bool assigns = expression.OperationOf(record) == TOperation::Assign;
        if (assigns) use.assigned.insert(record.Args[0]);
        for (std::size_t i = assigns ? 1 : 0; i < record.Args.size(); ++i)
            if (record.Args[i]) use.read.insert(record.Args[i]);
    }
    return use;
}

void CheckNames(TCurFit& fit, const TUse& use) {
    for (const std::string& name : fit.GeneratedNames()) {
        const double* value = fit.FindWord(name)->ValuePointer();
        if (use.read.contains(value) && !use.assigned.contains(value))
            throw EFitError("Unknown name " + Quoted(name) + " in the equation");
    }
    if (!use.read.contains(fit.XRef()))
        throw EFitError("The equation does not use the variable " + Quoted(fit.XVarName()));
}

void CheckParameter(TDBLParameter& parameter, const TUse& use) {
    if (!use.read.contains(parameter.ValueRef()))
        throw EFitError("The equation does not use the parameter " + Quoted(parameter.Name()));
    if (use.assigned.contains(parameter.ValueRef()))
        throw EFitError("The equation assigns to its own parameter " + Quoted(parameter.Name()));
    if (!std::isfinite(parameter.Value()))
        throw EFitError("The parameter " + Quoted(parameter.Name()) + " has no finite starting value");
}

void CheckTies(const TCurFit& fit) {
    for (int i = 1; i <= fit.NParams(); ++i)
        if (fit.Parameter(i)->IsTied() && fit.Parameter(i)->IsBounded())
            throw EFitError("The parameter " + Quoted(fit.Parameter(i)->Name()) +
                            " follows a formula: bounds belong to the parameters of that");
}

// The error of the parser, with the function that may be meant.
void Compile(TCurFit& fit) {
    try {
        fit.Compile();
    } catch (const EParserException& error) {
        throw EParserException(WithNameHint(error.what(), fit.ExpandedExpression(), fit));
    }
}

} // namespace

std::vector<TDBLParameter*> CheckedParameters(TCurFit& fit) {
    CheckTemplates(fit);
    Compile(fit);
    if (!fit.Selected()) throw EFitError("There is no equation to fit");
    const TUse use = UseOf(*fit.Selected());
    CheckNames(fit, use);
    CheckTies(fit);
    std::vector<TDBLParameter*> varied;
    for (int i = 1; i <= fit.NParams(); ++i)
        if (fit.Parameter(i)->Vary()) varied.push_back(fit.Parameter(i));
    if (varied.empty()) throw EFitError("No parameter is varied");
    if (varied.size() > static_cast<std::size_t>(kMaxVariedParameters))
        throw EFitError("Error: Maximum Number of Varied Parameters Nmax = " +
                        std::to_string(kMaxVariedParameters) + " Exceeded!");
    for (TDBLParameter* parameter : varied) CheckParameter(*parameter, use);
    return varied;
}

} // namespace lumoplot
