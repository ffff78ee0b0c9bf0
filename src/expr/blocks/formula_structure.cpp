#include "expr/blocks/formula_structure.h"

#include "expr/blocks/block_graph.h"

#include <algorithm>
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

} // namespace

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
