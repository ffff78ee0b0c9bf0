#include "expr/block_evaluator.h"

#include "expr/block_program.h"

#include <algorithm>
#include <cassert>

namespace lumoplot {
namespace {

/// Gives a double its value back, whatever a formula has assigned to it.
class TKeeper {
public:
    explicit TKeeper(double* variable) : m_variable(variable), m_value(variable ? *variable : 0) {}
    ~TKeeper() {
        if (m_variable) *m_variable = m_value;
    }
    TKeeper(const TKeeper&) = delete;
    TKeeper& operator=(const TKeeper&) = delete;

private:
    double* m_variable;
    double m_value;
};

} // namespace

TBlockEvaluator::TBlockEvaluator(TExpressionParser& parser, double* xVariable,
                                 std::span<double* const> variables, const TBlockKernels* kernels)
    : m_expression(parser.Selected()), m_xVariable(xVariable), m_variableCount(variables.size()) {
    if (!m_expression) return;
    if (!kernels) kernels = *AvailableKernels();
    TBlockGraph graph(*m_expression, xVariable);
    std::vector<TNodeIndex> outputs = {graph.Root()};
    if (!graph.IsSequential()) m_values = std::make_unique<TBlockProgram>(graph, outputs, *kernels);
    if (variables.empty()) return;
    if (graph.ForeignWord()) throw EParserException("No derivative of " + graph.ForeignWord()->Name());
    for (const double* variable : variables) outputs.push_back(graph.Derivative(variable));
    m_slopes = std::make_unique<TBlockProgram>(graph, outputs, *kernels);
}

TBlockEvaluator::~TBlockEvaluator() = default;
TBlockEvaluator::TBlockEvaluator(TBlockEvaluator&&) noexcept = default;
TBlockEvaluator& TBlockEvaluator::operator=(TBlockEvaluator&&) noexcept = default;

void TBlockEvaluator::Evaluate(std::span<const double> x, std::span<double> y) {
    assert(y.size() == x.size());
    double* const results[] = {y.data()};
    if (m_values)
        m_values->Run(x, results);
    else
        EvaluateOneByOne(x, y);
}

void TBlockEvaluator::EvaluateOneByOne(std::span<const double> x, std::span<double> y) {
    if (!m_expression) {
        std::fill(y.begin(), y.end(), kNotANumber);
        return;
    }
    const TKeeper keeper(m_xVariable);
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (m_xVariable) *m_xVariable = x[i];
        y[i] = m_expression->Evaluate();
    }
}

void TBlockEvaluator::EvaluateWithDerivatives(std::span<const double> x, std::span<double> y,
                                              std::span<double> jacobian) {
    assert(y.size() == x.size() && jacobian.size() == m_variableCount * x.size());
    if (!m_slopes) {
        std::fill(jacobian.begin(), jacobian.end(), kNotANumber);
        return Evaluate(x, y);
    }
    const TKeeper keeper(m_xVariable);
    std::vector<double*> results = {y.data()};
    for (std::size_t v = 0; v < m_variableCount; ++v) results.push_back(jacobian.data() + v * x.size());
    m_slopes->Run(x, results);
}

} // namespace lumoplot
