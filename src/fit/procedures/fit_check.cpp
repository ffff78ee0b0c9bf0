#include "fit/procedures/fit_check.h"

#include "fit/definition/fit_result.h"

#include <cctype>
#include <cmath>
#include <set>

namespace lumoplot {
namespace {

std::string Quoted(const std::string& text) {
    return '"' + text + '"';
}

bool IsNamePart(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

// As a name of its own, not as part of a longer one.
bool ContainsName(const std::string& text, const std::string& name) {
    for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name, at + 1)) {
        const std::size_t behind = at + name.size();
        const bool goesOnBefore = at > 0 && IsNamePart(text[at - 1]) && IsNamePart(name.front());
        const bool goesOnBehind = behind < text.size() && IsNamePart(text[behind]) && IsNamePart(name.back());
        if (!goesOnBefore && !goesOnBehind) return true;
    }
    return false;
}

void CheckTemplates(const TCurFit& fit) {
    for (int i = 1; i <= fit.NTemplates(); ++i) {
        const TDBLFunction& function = *fit.Template(i);
        if (!function.Name.empty() && ContainsName(LowerCased(function.Text), LowerCased(function.Name)))
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
    if (!std::isfinite(parameter.Value()))
        throw EFitError("The parameter " + Quoted(parameter.Name()) + " has no finite starting value");
}

} // namespace

std::vector<TDBLParameter*> CheckedParameters(TCurFit& fit) {
    CheckTemplates(fit);
    fit.Compile();
    if (!fit.Selected()) throw EFitError("There is no equation to fit");
    const TUse use = UseOf(*fit.Selected());
    CheckNames(fit, use);
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
