#include "expr/blocks/formula_structure.h"

#include "expr/blocks/block_graph.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace lumoplot {
namespace {

/// excludes[i][j]: the derivative by i contains j, so that not both can be linear.
using TExclusions = std::vector<std::vector<bool>>;

TExclusions ExclusionsOf(TBlockGraph& graph, std::span<double* const> variables) {
    const std::size_t count = variables.size();
    TExclusions excludes(count, std::vector<bool>(count));
    for (std::size_t i = 0; i < count; ++i) {
        const TNodeIndex slope = graph.Derivative(variables[i]);
        excludes[i][i] = slope == kNoNode; // without influence, or only by steps
        for (std::size_t j = 0; j < count; ++j)
            if (graph.DependsOn(slope, variables[j])) excludes[i][j] = excludes[j][i] = true;
    }
    return excludes;
}

/// A power of x: a number and a multiple of the unknown power of each variable.
struct TPower {
    double Known = 0;
    std::vector<double> Unknown;
};

TPower Combined(const TPower& a, double factor, const TPower& b, double otherFactor) {
    TPower sum{factor * a.Known + otherFactor * b.Known, a.Unknown};
    for (std::size_t i = 0; i < sum.Unknown.size(); ++i)
        sum.Unknown[i] = factor * a.Unknown[i] + otherFactor * b.Unknown[i];
    return sum;
}

/// Linear equations for the powers of the variables, solved as they come; those that contradict earlier ones
/// are dropped.
class TPowerEquations {
public:
    explicit TPowerEquations(std::size_t count) : m_solved(count) {}

    void SetZero(TPower power) {
        power = Reduced(power);
        const auto pivot = std::ranges::find_if(power.Unknown, [](double factor) { return factor != 0; });
        if (pivot == power.Unknown.end()) return;
        const auto place = static_cast<std::size_t>(pivot - power.Unknown.begin());
        const double factor = *pivot;
        *pivot = 0;
        m_solved[place] = Combined(power, -1 / factor, power, 0);
        for (auto& other : m_solved)
            if (other) other = Reduced(*other);
    }

    TPower Reduced(TPower power) const {
        for (std::size_t i = 0; i < m_solved.size(); ++i) {
            const double factor = power.Unknown[i];
            if (factor == 0 || !m_solved[i]) continue;
            power.Unknown[i] = 0;
            power = Combined(power, 1, *m_solved[i], factor);
        }
        return power;
    }

private:
    std::vector<std::optional<TPower>> m_solved;
};

/// Finds the powers node by node.
class TPowerFinder {
public:
    TPowerFinder(const TBlockGraph& graph, std::span<double* const> variables)
        : m_graph(graph), m_variables(variables), m_equations(variables.size()) {
        for (TNodeIndex node = 0; node <= graph.Root(); ++node) m_powers.push_back(PowerOf(graph.At(node)));
        for (TPower& power : m_weak) m_equations.SetZero(std::move(power));
    }

    std::optional<double> Of(std::size_t variable) const {
        TPower power = None();
        power.Unknown[variable] = 1;
        power = m_equations.Reduced(power);
        const bool isKnown =
            std::ranges::all_of(power.Unknown, [](double factor) { return std::abs(factor) < 1e-9; });
        return isKnown ? std::optional(power.Known) : std::nullopt;
    }

private:
    TPower None() const { return {0, std::vector<double>(m_variables.size())}; }
    const TPower& At(TNodeIndex node) const { return m_powers[static_cast<std::size_t>(node)]; }
    bool IsConstant(TNodeIndex node) const { return m_graph.At(node).Kind == TNodeKind::Constant; }

    TPower PowerOf(const TBlockNode& node) {
        TPower power = None();
        if (node.Kind == TNodeKind::Input) power.Known = 1;
        const auto variable = std::ranges::find(m_variables, node.Variable);
        if (node.Kind == TNodeKind::Variable && variable != m_variables.end())
            power.Unknown[static_cast<std::size_t>(variable - m_variables.begin())] = 1;
        return node.Kind == TNodeKind::Step ? OfStep(node) : power;
    }

    TPower OfStep(const TBlockNode& node) {
        using enum TOperation;
        const TNodeIndex a = node.Args[0];
        const TNodeIndex b = node.Args[1];
        const TOperation operation = node.Operation;
        if (operation >= Power2 && operation <= Power8)
            return Scaled(a, static_cast<int>(operation) - static_cast<int>(Power2) + 2);
        switch (operation) {
        case Add:
        case Subtract:
        case Max:
        case Min: return OfSum(a, b);
        case Multiply: return Combined(At(a), 1, At(b), 1);
        case Divide: return Combined(At(a), 1, At(b), -1);
        case Sqr: return Scaled(a, 2);
        case Sqrt: return Scaled(a, 0.5);
        case Negate:
        case Percent:
        case Abs: return At(a);
        case Power:
        case IntPower: m_equations.SetZero(At(b)); return Scaled(a, IsConstant(b) ? m_graph.At(b).Value : 1);
        default: return WithoutUnit(node);
        }
    }

    TPower Scaled(TNodeIndex node, double factor) const { return Combined(At(node), factor, At(node), 0); }

    TPower OfSum(TNodeIndex a, TNodeIndex b) {
        if (!IsConstant(a) && !IsConstant(b)) m_equations.SetZero(Combined(At(a), 1, At(b), -1));
        if (IsConstant(a) != IsConstant(b)) m_weak.push_back(At(IsConstant(a) ? b : a));
        return At(IsConstant(a) ? b : a);
    }

    TPower WithoutUnit(const TBlockNode& node) {
        for (const TNodeIndex arg : node.Args)
            if (arg != kNoNode) m_equations.SetZero(At(arg));
        return None();
    }

    const TBlockGraph& m_graph;
    std::span<double* const> m_variables;
    TPowerEquations m_equations;
    std::vector<TPower> m_powers;
    std::vector<TPower> m_weak;
};

} // namespace

std::vector<std::optional<double>> PowersOfX(TExpressionParser& parser, double* xVariable,
                                             std::span<double* const> variables) {
    std::vector<std::optional<double>> powers(variables.size());
    if (!parser.Selected()) return powers;
    double* const inputs[] = {xVariable};
    const TBlockGraph graph(*parser.Selected(), inputs);
    if (graph.ForeignWord()) return powers;
    const TPowerFinder finder(graph, variables);
    for (std::size_t i = 0; i < powers.size(); ++i) powers[i] = finder.Of(i);
    return powers;
}

std::vector<bool> LinearVariables(TExpressionParser& parser, double* xVariable,
                                  std::span<double* const> variables) {
    std::vector<bool> isLinear(variables.size());
    if (!parser.Selected()) return isLinear;
    double* const inputs[] = {xVariable};
    TBlockGraph graph(*parser.Selected(), inputs);
    if (graph.IsSequential() || graph.ForeignWord()) return isLinear;
    const TExclusions excludes = ExclusionsOf(graph, variables);
    std::vector<std::size_t> order(variables.size());
    std::iota(order.begin(), order.end(), 0u);
    std::ranges::stable_sort(order, {}, [&](std::size_t i) { return std::ranges::count(excludes[i], true); });
    for (const std::size_t i : order) {
        bool isFree = !excludes[i][i];
        for (std::size_t j = 0; j < variables.size(); ++j)
            isFree = isFree && !(isLinear[j] && excludes[i][j]);
        isLinear[i] = isFree;
    }
    return isLinear;
}

} // namespace lumoplot
