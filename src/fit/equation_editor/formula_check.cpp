#include "fit/equation_editor/formula_check.h"

#include "expr/names.h"

#include <algorithm>

namespace lumoplot {
namespace {

std::vector<std::string> UnknownNames(TCurFit& compiled) {
    const std::vector<TNameUse> names = NamesIn(compiled.ExpandedExpression());
    std::vector<std::string> unknown;
    for (const TNameUse& use : names) {
        const auto isSame = [&](const std::string& name) { return LowerCased(name) == LowerCased(use.Name); };
        const bool isGenerated =
            dynamic_cast<TGeneratedVariable*>(compiled.FindWord(LowerCased(use.Name))) != nullptr;
        const bool isAssigned = std::ranges::any_of(
            names, [&](const TNameUse& other) { return other.IsAssigned && isSame(other.Name); });
        if (isGenerated && !isAssigned && std::ranges::none_of(unknown, isSame)) unknown.push_back(use.Name);
    }
    return unknown;
}

} // namespace

std::string TFormulaCheck::Text() const {
    if (!Fault.empty() || UnknownNames.empty()) return Fault;
    std::string text = "Not known as variable or parameter: ";
    for (const std::string& name : UnknownNames) text += name == UnknownNames.front() ? name : ", " + name;
    return text;
}

TFormulaCheck CheckFormula(const TCurFit& fit, const std::string& typed) {
    TFormulaCheck check;
    if (fit.Expression().empty()) return check;
    auto model = std::make_unique<TCurFit>();
    model->Assign(&fit);
    try {
        model->Compile();
        check.UnknownNames = UnknownNames(*model);
        check.Model = std::move(model);
    } catch (const ELumoError& error) {
        check.Fault = error.what();
    }
    if (typed.empty()) check.Fault = "An empty expression is not stored; the last one stays";
    return check;
}

std::string ParameterNameFault(const TCurFit& fit, const std::string& name) {
    if (LowerCased(name) == LowerCased(fit.XVarName()))
        return "\"" + name + "\" is the name of the X variable";
    return XNameFault(fit, name);
}

std::string XNameFault(const TCurFit& fit, const std::string& name) {
    const std::string lower = LowerCased(name);
    if (fit.IsParameter(name)) return "Parameter \"" + name + "\" Already Defined!";
    if (!IsName(name)) return "A name starts with a letter and goes on with letters, digits and \"_\"";
    if (TCurFit().FindWord(lower)) return "\"" + name + "\" is a word of the formula language";
    return {};
}

} // namespace lumoplot
