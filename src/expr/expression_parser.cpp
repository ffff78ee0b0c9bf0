#include "expr/expression_parser.h"

#include "expr/built_in_words.h"
#include "expr/tokeniser.h"
#include "support/number_text.h"

#include <algorithm>

namespace lumoplot {

TExpressionParser::TExpressionParser() = default;
TExpressionParser::~TExpressionParser() = default;

TExpressList& TExpressionParser::Words() {
    if (!m_filled) {
        m_filled = true;
        FillExpressList();
    }
    return m_words;
}

void TExpressionParser::FillExpressList() {
    AddBuiltInWords(Words());
}

int TExpressionParser::AddExpression(std::string_view text) {
    auto expression = std::make_unique<TCompiledExpression>();
    expression->Text = text;
    const std::string lower = LowerCased(text);
    TNewWords made;
    TExprCollection tokens(16);
    Tokenise(Trimmed(lower), Words(), made, tokens);
    CheckAndRewrite(Words(), made, tokens);
    CompileWords(tokens, *expression);
    MergeSteps(*expression);

    m_expressions.push_back(std::move(expression));
    m_constants.Take(made.Constants);
    while (made.Variables.Count() > 0) m_words.Insert(made.Variables.Extract(made.Variables.Count() - 1));
    m_selected = m_expressions.back().get();
    return ExpressionCount() - 1;
}

int TExpressionParser::ExpressionIndex(std::string_view text) {
    if (text.empty()) return -1;
    const std::string lower = LowerCased(text);
    for (int index = 0; index < ExpressionCount(); ++index) {
        if (lower.size() != ExpressionText(index).size() || lower != LowerCased(ExpressionText(index)))
            continue;
        m_selected = m_expressions[static_cast<std::size_t>(index)].get();
        return index;
    }
    return AddExpression(text);
}

double TExpressionParser::EvaluateIndex(int index) {
    if (index < 0 || index >= ExpressionCount()) return kNotANumber;
    m_selected = m_expressions[static_cast<std::size_t>(index)].get();
    return Evaluate();
}

const std::string& TExpressionParser::ExpressionText(int index) const {
    return m_expressions[static_cast<std::size_t>(index)]->Text;
}

void TExpressionParser::DefineVariable(std::string_view name, double* value) {
    Retire(Words().InsertReplacing(std::make_unique<TDoubleVariable>(name, value)));
}

bool TExpressionParser::RemoveVariable(std::string_view name) {
    int index = 0;
    if (!Words().Search({nullptr, name}, index)) return false;
    if (!dynamic_cast<TDoubleVariable*>(m_words.At(index))) return false;
    Retire(m_words.Extract(index));
    return true;
}

void TExpressionParser::GetVariables(TExprCollection& list) {
    list.Clear();
    for (TExprWord* word : Words())
        if (dynamic_cast<TDoubleVariable*>(word)) list.Add(word);
}

void TExpressionParser::ClearExpressions() {
    m_selected = nullptr;
    m_expressions.clear();
    m_constants.Clear();
    m_retired.Clear();
}

void TExpressionParser::ClearVariables() {
    for (int index = m_words.Count() - 1; index >= 0; --index)
        if (dynamic_cast<TDoubleVariable*>(m_words.At(index))) Retire(m_words.Extract(index));
}

// Chains go on pointing at words that left the dictionary.
void TExpressionParser::Retire(std::unique_ptr<TExprWord> word) {
    if (word && !m_expressions.empty()) m_retired.Add(std::move(word));
}

} // namespace lumoplot
