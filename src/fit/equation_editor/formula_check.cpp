#include "fit/equation_editor/formula_check.h"

#include <algorithm>
#include <cctype>

namespace lumoplot {
namespace {

bool IsNameStart(char c) {
    return c == '_' || (c >= 'a' && c <= 'z');
}

bool IsNamePart(char c) {
    return IsNameStart(c) || (c >= '0' && c <= '9');
}

bool IsName(const std::string& lower) {
    return !lower.empty() && IsNameStart(lower.front()) && std::ranges::all_of(lower, IsNamePart);
}

struct TNameUse {
    std::string Name;
    bool IsAssigned;
};

// The names of a formula in lower case, without those inside quotes. An exponent's "e" is no name.
std::vector<TNameUse> NamesIn(const std::string& formula) {
    std::vector<TNameUse> names;
    std::size_t i = 0;
    const auto at = [&](std::size_t place) { return place < formula.size() ? formula[place] : '\0'; };
    while (i < formula.size()) {
        if (formula[i] == '\'') {
            i = std::min(formula.find('\'', i + 1), formula.size() - 1) + 1;
        } else if (std::isdigit(static_cast<unsigned char>(formula[i])) || formula[i] == '.') {
            while (std::isdigit(static_cast<unsigned char>(at(i))) || at(i) == '.') ++i;
            if (at(i) == 'e') ++i;
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
    const std::vector<TNameUse> names = NamesIn(LowerCased(compiled.ExpandedExpression()));
    std::vector<std::string> unknown;
    for (const TNameUse& use : names) {
        const bool isGenerated = dynamic_cast<TGeneratedVariable*>(compiled.FindWord(use.Name)) != nullptr;
        const bool isAssigned = std::ranges::any_of(
            names, [&](const TNameUse& other) { return other.IsAssigned && other.Name == use.Name; });
        if (isGenerated && !isAssigned && !std::ranges::count(unknown, use.Name)) unknown.push_back(use.Name);
    }
    return unknown;
}

} // namespace

TFormulaCheck CheckFormula(const TCurFit& fit, TCurFit& scratch) {
    TFormulaCheck check;
    scratch.Assign(&fit);
    try {
        scratch.Compile();
        check.UnknownNames = UnknownNames(scratch);
    } catch (const ELumoError& error) {
        check.Fault = error.what();
    }
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
    if (!IsName(lower)) return "A name starts with a letter and goes on with letters, digits and \"_\"";
    if (TCurFit().FindWord(lower)) return "\"" + name + "\" is a word of the formula language";
    return {};
}

} // namespace lumoplot
