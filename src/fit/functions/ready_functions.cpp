#include "fit/functions/ready_functions.h"

#include "expr/names.h"
#include "fit/functions/function_groups.h"

#include <algorithm>

namespace lumoplot {
namespace {

std::string Plain(std::string_view equation) {
    std::string plain = LowerCased(equation);
    std::erase_if(plain, [](char c) { return c == ' ' || c == '\n' || c == '\t' || c == '\r'; });
    return plain;
}

bool HasParameters(const TCurFit& fit, const TReadyFunction& function) {
    return std::ranges::all_of(function.Parameters, [&](const TReadyParameter& parameter) {
        return fit.IsParameter(parameter.Name);
    });
}

// "y/x" with the units of the axes; nothing where one that it needs is missing.
std::string UnitText(std::string_view unit, const std::string& xUnit, const std::string& yUnit) {
    if (unit == "x") return xUnit;
    if (unit == "y") return yUnit;
    if (unit.find('x') == std::string_view::npos && unit.find('y') == std::string_view::npos)
        return std::string(unit);
    std::string text;
    for (const char c : unit) {
        if ((c == 'x' && xUnit.empty()) || (c == 'y' && yUnit.empty())) return {};
        text += c == 'x' ? xUnit : c == 'y' ? yUnit : std::string(1, c);
    }
    return text;
}

} // namespace

const std::vector<TReadyFunction>& ReadyFunctions() {
    static const std::vector<TReadyFunction> functions = [] {
        std::vector<TReadyFunction> all;
        AddPeaks(all);
        AddGrowthAndDecay(all);
        AddKineticsAndDoses(all);
        AddWavesAndDistributions(all);
        AddPolynomials(all);
        return all;
    }();
    return functions;
}

const TReadyFunction* FindReadyFunction(std::string_view name) {
    for (const TReadyFunction& function : ReadyFunctions())
        if (function.Name == name) return &function;
    return nullptr;
}

const TReadyFunction* ReadyFunctionOf(const TCurFit& fit) {
    if (fit.NTemplates() > 0) return nullptr;
    const std::string equation = Plain(fit.Expression());
    for (const TReadyFunction& function : ReadyFunctions())
        if (equation == Plain(function.Equation) &&
            LowerCased(fit.XVarName()) == LowerCased(function.XName) && HasParameters(fit, function))
            return &function;
    return nullptr;
}

std::string UnitIn(const std::string& caption) {
    for (const auto& [open, close] : {std::pair('[', ']'), std::pair('(', ')')}) {
        const std::size_t from = caption.rfind(open);
        if (from == std::string::npos || caption.find(close, from) != caption.size() - 1) continue;
        return caption.substr(from + 1, caption.size() - from - 2);
    }
    return {};
}

void UseReadyFunction(const TReadyFunction& function, TCurFit& fit, const std::string& xUnit,
                      const std::string& yUnit) {
    fit.ClearTemplates();
    fit.ClearParameters();
    fit.SetXVarName(function.XName);
    fit.SetExpression(function.Equation);
    for (const TReadyParameter& ready : function.Parameters) {
        auto parameter = std::make_unique<TDBLParameter>();
        parameter->SetName(ready.Name);
        parameter->SetValue(ready.Typical);
        parameter->SetVary(true);
        parameter->Description = ready.Meaning;
        parameter->Units = UnitText(ready.Unit, xUnit, yUnit);
        fit.AddParameter(std::move(parameter));
    }
}

} // namespace lumoplot
