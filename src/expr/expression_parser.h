// Turns formulas into compiled chains and evaluates them against variables that live outside. The language is
// described in docs/expressions.md. A parser and what it compiled belong to one thread at a time.
#pragma once

#include "expr/compiled_expression.h"
#include "expr/expr_list.h"
#include "expr/parser_exception.h"
#include "support/export.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace lumoplot {

class TExpressionParser {
public:
    TExpressionParser();
    virtual ~TExpressionParser();
    TExpressionParser(const TExpressionParser&) = delete;
    TExpressionParser& operator=(const TExpressionParser&) = delete;

    /// Compiles the formula, selects it for Evaluate and returns its index, the number of formulas before it.
    /// Unknown names become variables of this parser that are not-a-number until a formula assigns to them.
    /// Throws EParserException or (for a malformed number) EConvertError and then leaves no trace.
    int AddExpression(std::string_view text);

    /// Selects the formula with this text, letter case ignored, compiling it when it is new, and returns its
    /// index. An empty text gives -1 and selects nothing new. Throws as AddExpression.
    int ExpressionIndex(std::string_view text);

    /// The value of the selected formula; kNotANumber when none is selected.
    double Evaluate() { return m_selected ? m_selected->Evaluate() : kNotANumber; }

    /// Selects the formula of that index and evaluates it; kNotANumber when there is none.
    double EvaluateIndex(int index);

    /// Binds a name to a double, which must stay until the formulas compiled with it are cleared. A word of
    /// the same name is replaced for later formulas; earlier ones keep reading what they were compiled with.
    void DefineVariable(std::string_view name, double* value);

    /// Removes the bound variable of that name, letter case ignored; true when there was one.
    bool RemoveVariable(std::string_view name);

    /// Fills `list` with the bound variables (TDoubleVariable) in the order of their names.
    void GetVariables(TExprCollection& list);

    /// Forgets every formula. Generated variables keep their names and values.
    void ClearExpressions();

    /// Removes every bound variable.
    void ClearVariables();

    int ExpressionCount() const { return static_cast<int>(m_expressions.size()); }
    /// The text as it was given; `index` from 0 to ExpressionCount() - 1.
    const std::string& ExpressionText(int index) const;

    /// The compiled formula that Evaluate runs, or null.
    TCompiledExpression* Selected() { return m_selected; }

    /// The word of that name, or null. Generated variables are found by it.
    TExprWord* FindWord(std::string_view name) { return Words().Find(name); }

protected:
    /// Adds the words of the language to Words(). It runs once, when the dictionary is needed for the first
    /// time, so that the words of a derived class are called for; a derived class adds to or replaces them.
    virtual void FillExpressList();

    XYGRAPH_EXPORT TExpressList& Words();
    const TOCollection& Constants() const { return m_constants; }

private:
    void Retire(std::unique_ptr<TExprWord> word);

    // Chains point into words and constants, so the expressions go first.
    TExpressList m_words{30};
    TOCollection m_constants{10};
    TOCollection m_retired{0};
    std::vector<std::unique_ptr<TCompiledExpression>> m_expressions;
    TCompiledExpression* m_selected = nullptr;
    bool m_filled = false;
};

} // namespace lumoplot
