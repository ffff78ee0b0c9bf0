#include "fit/equation_editor/formula_check.h"

#include "expr/formula_hints.h"
#include "expr/names.h"

#include <algorithm>

namespace lumoplot {
namespace {

std::vector<std::string> UnknownNames(TCurFit& compiled) {
    const std::vector<TNameUse> names = NamesIn(compiled.ExpandedExpression());
    std::vector<std::string> unknown;
    for (const TNameUse& use : names) {
        const auto isSame = [&](const std::string& name) { return LowerCased(name) == LowerCased(use.Name); };
        const TExprWord* word = compiled.FindWord(LowerCased(use.Name));
        const bool isGenerated = word && word->IsGenerated();
        const bool isAssigned = std::ranges::any_of(
            names, [&](const TNameUse& other) { return other.IsAssigned && isSame(other.Name); });
        if (isGenerated && !isAssigned && std::ranges::none_of(unknown, isSame)) unknown.push_back(use.Name);
    }
    return unknown;
}

// A bracket without its other one.
void AddOpenBrackets(const std::string& formula, std::vector<TFormulaSpan>& spans) {
    std::vector<std::size_t> open;
    bool isString = false;
    for (std::size_t i = 0; i < formula.size(); ++i) {
        if (formula[i] == '\'') isString = !isString;
        if (isString) continue;
        if (formula[i] == '(') open.push_back(i);
        if (formula[i] != ')') continue;
        if (open.empty())
            spans.push_back({i, 1});
        else
            open.pop_back();
    }
    for (const std::size_t place : open) spans.push_back({place, 1});
}

// A name that is used as a function and is none.
void TakeNameHint(const TCurFit& fit, TFormulaCheck& check) {
    TCurFit words;
    const std::string& formula = fit.Expression();
    const auto hint = FindNameHint(formula, words);
    if (!hint || fit.IsParameter(hint->Name) || LowerCased(hint->Name) == LowerCased(fit.XVarName())) return;
    check.Fault = (check.Fault.empty() ? "" : check.Fault + ": ") + hint->Text();
    check.Spans = {{hint->Place, hint->Name.size()}};
    if (hint->Nearest.empty()) return;
    check.Rewritten = formula;
    check.Rewritten.replace(hint->Place, hint->Name.size(), hint->Nearest.front());
    check.RewriteCaption = "Use " + hint->Nearest.front();
}

// Values with nothing between them; names of the fit count as values.
void TakeProductHint(TCurFit& fit, TFormulaCheck& check) {
    const auto hint = FindProductHint(fit.Expression(), fit);
    if (!hint) return;
    check.Fault += ": " + hint->Text;
    check.Rewritten = hint->Rewritten;
    check.RewriteCaption = "Rewrite";
    check.Spans = {{hint->Place, hint->Length}};
}

void TakeSignHint(const std::string& formula, TFormulaCheck& check) {
    const auto hint = FindSignHint(formula);
    if (!hint) return;
    check.Hint = hint->Text;
    check.Rewritten = hint->Rewritten;
    check.RewriteCaption = "Rewrite";
    check.Spans.push_back({hint->Place, hint->Length});
}

// "y =" in front, as people write an equation: it would be compared with a name that is not known.
void TakeLeftSideHint(const TCurFit& fit, TFormulaCheck& check) {
    const std::string& formula = fit.Expression();
    const std::size_t name = formula.find_first_not_of(' ');
    const std::size_t equals = formula.find_first_not_of(' ', name + 1);
    const bool isY = name != std::string::npos && (formula[name] == 'y' || formula[name] == 'Y');
    if (!isY || equals == std::string::npos || formula[equals] != '=') return;
    if (fit.IsParameter("y") || LowerCased(fit.XVarName()) == "y") return;
    const std::size_t right = formula.find_first_not_of(' ', equals + 1);
    if (right == std::string::npos) return;
    check.Fault = "Only the right side of the equation is needed, without \"y =\"";
    check.Rewritten = formula.substr(right);
    check.RewriteCaption = "Rewrite";
    check.Spans = {{name, equals + 1 - name}};
}

bool IsInName(const std::string& formula, std::size_t place) {
    return place < formula.size() && (IsNamePart(formula[place]) || formula[place] == '.');
}

// Wherever the name stands as a whole.
void AddUses(const std::string& formula, const std::string& name, std::vector<TFormulaSpan>& spans) {
    const std::string lower = LowerCased(formula);
    const std::string wanted = LowerCased(name);
    for (std::size_t at = lower.find(wanted); at != std::string::npos; at = lower.find(wanted, at + 1))
        if (!IsInName(lower, at + wanted.size()) && (at == 0 || !IsInName(lower, at - 1)))
            spans.push_back({at, wanted.size()});
}

void FindPlaces(const std::string& formula, TFormulaCheck& check) {
    for (const std::string& name : check.UnknownNames) AddUses(formula, name, check.Spans);
    if (!check.Fault.empty()) AddOpenBrackets(formula, check.Spans);
}

} // namespace

std::string TFormulaCheck::Text() const {
    if (!Fault.empty()) return Fault;
    if (UnknownNames.empty()) return Hint;
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
    } catch (const ELumoError& error) {
        check.Fault = error.what();
    }
    const bool compiles = check.Fault.empty();
    FindPlaces(fit.Expression(), check);
    TakeNameHint(fit, check);
    if (!compiles && check.Rewritten.empty()) TakeProductHint(*model, check);
    TakeLeftSideHint(fit, check);
    if (compiles) check.Model = std::move(model);
    if (check.Fault.empty()) TakeSignHint(fit.Expression(), check);
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
