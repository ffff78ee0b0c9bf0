#include "expr/blocks/block_evaluator.h"

#include "expr/blocks/block_program.h"

#include <algorithm>
#include <cassert>

namespace lumoplot {
namespace {

/// Gives a double its value back, whatever a formula has assigned to it.
class TKeeper {
public:
    TKeeper(double* variable) : m_variable(variable), m_value(variable ? *variable : 0) {}
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
    : m_expression(parser.Selected()), m_inputs{xVariable}, m_variableCount(variables.size()) {
    if (!m_expression) return;
    if (!kernels) kernels = *AvailableKernels();
    TBlockGraph graph(*m_expression, m_inputs);
    std::vector<TNodeIndex> outputs = {graph.Root()};
    if (!graph.IsSequential()) m_values = std::make_unique<TBlockProgram>(graph, outputs, *kernels);
    if (variables.empty()) return;
    if (graph.ForeignWord()) throw EParserException("No derivative of " + graph.ForeignWord()->Name());
    for (const double* variable : variables) outputs.push_back(graph.Derivative(variable));
    m_slopes = std::make_unique<TBlockProgram>(graph, outputs, *kernels);
}

TBlockEvaluator::TBlockEvaluator(TExpressionParser& parser, std::span<double* const> columns)
    : m_expression(parser.Selected()), m_inputs(columns.begin(), columns.end()), m_variableCount(0) {
    if (!m_expression) return;
    const TBlockGraph graph(*m_expression, m_inputs);
    const TNodeIndex outputs[] = {graph.Root()};
    if (!graph.IsSequential())
        m_values = std::make_unique<TBlockProgram>(graph, outputs, **AvailableKernels());
}

TBlockEvaluator::~TBlockEvaluator() = default;
TBlockEvaluator::TBlockEvaluator(TBlockEvaluator&&) noexcept = default;
TBlockEvaluator& TBlockEvaluator::operator=(TBlockEvaluator&&) noexcept = default;

void TBlockEvaluator::Evaluate(std::span<const double> x, std::span<double> y) {
    assert(y.size() == x.size());
    const double* const columns[] = {x.data()};
    EvaluateColumns(columns, y);
}

void TBlockEvaluator::EvaluateColumns(std::span<const double* const> columns, std::span<double> y) {
    assert(columns.size() == m_inputs.size());
    double* const results[] = {y.data()};
    if (m_values)
        m_values->Run(columns, y.size(), results);
    else
        EvaluateOneByOne(columns, y);
}

bool TBlockEvaluator::Reads(std::size_t column) const {
    return m_values ? m_values->Reads(column) : m_expression != nullptr;
}

void TBlockEvaluator::EvaluateOneByOne(std::span<const double* const> columns, std::span<double> y) {
    if (!m_expression) {
        std::fill(y.begin(), y.end(), kNotANumber);
        return;
    }
    const std::vector<TKeeper> keepers(m_inputs.begin(), m_inputs.end());
    for (std::size_t i = 0; i < y.size(); ++i) {
        for (std::size_t c = 0; c < m_inputs.size(); ++c)
            if (m_inputs[c]) *m_inputs[c] = columns[c][i];
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
    const std::vector<TKeeper> keepers(m_inputs.begin(), m_inputs.end());
    std::vector<double*> results = {y.data()};
    for (std::size_t v = 0; v < m_variableCount; ++v) results.push_back(jacobian.data() + v * x.size());
    const double* const columns[] = {x.data()};
    m_slopes->Run(columns, x.size(), results);
}

} // namespace lumoplot
