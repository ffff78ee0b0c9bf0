// The model of a curve fit: its formula with the templates put in, compiled and evaluated.
#include "fit/definition/cur_fit.h"
#include "fit/definition/fit_ties.h"

#include <algorithm>

namespace lumoplot {
namespace {

constexpr char kLineCharacters[] = "\r\n\t";

void CheckLength(std::size_t length) {
    if (length > TCurFit::kMaxExpandedLength)
        throw EParserException("The equation is too long with its templates: more than " +
                               std::to_string(TCurFit::kMaxExpandedLength) + " characters");
}

std::string Replaced(const std::string& text, const TDBLFunction& function) {
    const std::string lower = LowerCased(text);
    const std::string name = LowerCased(function.Name);
    std::string result;
    std::size_t start = 0;
    for (std::size_t at; (at = lower.find(name, start)) != std::string::npos; start = at + name.size()) {
        result.append(text, start, at - start);
        result += function.Text;
        CheckLength(result.size());
    }
    result.append(text, start);
    CheckLength(result.size());
    return result;
}

} // namespace

std::string TCurFit::ExpandedExpression() const {
    std::string text = Expression();
    CheckLength(text.size());
    for (int number = NTemplates(); number >= 1; --number)
        if (!Template(number)->Name.empty()) text = Replaced(text, *Template(number));
    std::ranges::replace_if(
        text, [](char c) { return std::string_view(kLineCharacters).find(c) != std::string_view::npos; },
        ' ');
    return WithTies(*this, text);
}

void TCurFit::Compile() {
    Forget();
    FillExpressList(); // a name of before may have displaced a word of the language
    DefineVariable(XVarName(), &m_x);
    for (const auto& parameter : m_parameters) DefineVariable(parameter->Name(), parameter->ValueRef());
    ExpressionIndex(ExpandedExpression());
}

void TCurFit::TryCompile() {
    try {
        Compile();
    } catch (const ELumoError&) {
        // The equation shows its error where it is edited or fitted.
    }
}

void TCurFit::Forget() {
    ClearVariables();
    ClearExpressions();
}

std::vector<std::string> TCurFit::GeneratedNames() {
    std::vector<std::string> names;
    for (TExprWord* word : Words())
        if (word->IsGenerated()) names.push_back(word->Name());
    return names;
}

double TCurFit::EvaluateAt(double x) {
    m_x = x;
    return Evaluate();
}

} // namespace lumoplot
