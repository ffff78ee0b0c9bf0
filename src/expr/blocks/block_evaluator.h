// Evaluates a compiled formula at many x, by far faster than one x after the other, and its derivatives.
#pragma once

#include "expr/expression_parser.h"
#include "support/export.h"

#include <memory>
#include <span>
#include <vector>

namespace lumoplot {

class TBlockProgram;
struct TBlockKernels;

/// Made from the formula that is selected in the parser, for one of the doubles that it reads as x and some
/// of them to derive by. Valid until the parser clears its expressions; reads all other variables afresh at
/// every call.
///
/// The values are those of Evaluate to within 2 ulp an operation, and the same in what is not-a-number,
/// infinite or a truth value. Formulas with ":=", "random" or words that are not built in are evaluated one x
/// after the other by the compiled chain. A parser without a selected formula gives kNotANumber everywhere.
class TBlockEvaluator {
public:
    /// `xVariable` may be null (nothing varies) and may be among `variables`. `kernels` null takes the
    /// fastest for this processor. Throws EParserException "No derivative of NAME" when there are variables
    /// and the formula has a word that is not built in.
    XYGRAPH_EXPORT TBlockEvaluator(TExpressionParser& parser, double* xVariable,
                                   std::span<double* const> variables = {},
                                   const TBlockKernels* kernels = nullptr);
    /// For several doubles that vary together, each a column of its own; no derivatives.
    TBlockEvaluator(TExpressionParser& parser, std::span<double* const> columns);
    XYGRAPH_EXPORT ~TBlockEvaluator();
    TBlockEvaluator(TBlockEvaluator&&) noexcept;
    TBlockEvaluator& operator=(TBlockEvaluator&&) noexcept;

    /// y[i] = formula at x[i]; both are of one length. The double bound as x keeps its value.
    XYGRAPH_EXPORT void Evaluate(std::span<const double> x, std::span<double> y);
    /// y[i] = formula with columns[c][i] as the double c. A column that is not read may be null.
    void EvaluateColumns(std::span<const double* const> columns, std::span<double> y);
    /// The formula may read that column.
    bool Reads(std::size_t column) const;

    /// Also the exact first derivatives, by forward differentiation of the formula, one column of x.size()
    /// numbers for each variable: jacobian[v * x.size() + i] is the derivative by variable v at x[i]. Steps
    /// (round, trunc, div, mod, "!", comparisons, logic, random) have derivative 0. Where the value is
    /// not-a-number the derivatives mean nothing. A formula that assigns is taken in the order of its steps,
    /// what it assigned at one x being a constant at the next.
    void EvaluateWithDerivatives(std::span<const double> x, std::span<double> y, std::span<double> jacobian);

private:
    void EvaluateOneByOne(std::span<const double* const> columns, std::span<double> y);

    TCompiledExpression* m_expression;
    std::vector<double*> m_inputs; ///< the doubles that vary; null for none
    std::size_t m_variableCount;
    std::unique_ptr<TBlockProgram> m_values;
    std::unique_ptr<TBlockProgram> m_slopes;
};

} // namespace lumoplot
