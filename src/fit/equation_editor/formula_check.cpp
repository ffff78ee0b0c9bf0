#include "fit/equation_editor/formula_check.h"

#include <algorithm>
#include <cctype>

namespace lumoplot {
namespace {

bool IsNameStart(char c) {
    return c == '_' || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsNamePart(char c) {
    return IsNameStart(c) || (c >= '0' && c <= '9');
}

bool IsName(const std::string& text) {
    return !text.empty() && IsNameStart(text.front()) && std::ranges::all_of(text, IsNamePart);
}

struct TNameUse {
    std::string Name;
    bool IsAssigned;
};

// The names of a formula as they are written, without those inside quotes. An exponent's "e" is no name.
std::vector<TNameUse> NamesIn(const std::string& formula) {
    std::vector<TNameUse> names;
    std::size_t i = 0;
    const auto at = [&](std::size_t place) { return place < formula.size() ? formula[place] : '\0'; };
    while (i < formula.size()) {
        if (formula[i] == '\'') {
            i = std::min(formula.find('\'', i + 1), formula.size() - 1) + 1;
        } else if (std::isdigit(static_cast<unsigned char>(formula[i])) || formula[i] == '.') {
            while (std::isdigit(static_cast<unsigned char>(at(i))) || at(i) == '.') ++i;
            if (at(i) == 'e' || at(i) == 'E') ++i;
        } else if (IsNameStart(formula[i])) {
            const std::size_t start = i;
            while (IsNamePart(at(i))) ++i;
            std::size_t next = i;
            while (at(next) == ' ') ++next;
            names.push_back({formula.substr(start, i - start), at(next) == ':' && at(next + 1) == '='});
        } else {
            ++i;
        }
    }
    return names;
}

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
