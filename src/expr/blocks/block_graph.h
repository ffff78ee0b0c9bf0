// A compiled formula as a graph of values, each computed once: equal steps are shared, constant ones folded.
// The derivatives join the same graph, so they share all they can with the value.
#pragma once

#include "expr/compiled_expression.h"
#include "expr/operation.h"

#include <array>
#include <span>
#include <unordered_map>
#include <vector>

namespace lumoplot {

enum class TNodeKind : std::uint8_t {
    Constant,
    Variable, ///< a double outside, read before each run
    Input,    ///< a block of x; Value is the number of its column
    String,   ///< a comparison of strings
    Step,
};

/// Numbers of nodes; operands come before the node that uses them.
using TNodeIndex = int;
inline constexpr TNodeIndex kNoNode = -1;
inline constexpr int kMaxOperands = 4;

struct TBlockNode {
    TNodeKind Kind = TNodeKind::Constant;
    TOperation Operation = TOperation::Count;
    std::array<TNodeIndex, kMaxOperands> Args = {kNoNode, kNoNode, kNoNode, kNoNode};
    double Value = 0;
    const double* Variable = nullptr;
    const TLogicalStringOper* Comparison = nullptr;

    bool operator==(const TBlockNode&) const;
};

/// What a formula assigns, in the end, to each double outside.
using TBlockStores = std::unordered_map<double*, TNodeIndex>;

class TBlockGraph {
public:
    /// The doubles in `inputs` vary within a block, each as the column of its place; null ones are none.
    TBlockGraph(const TCompiledExpression& expression, std::span<double* const> inputs);

    const std::vector<TBlockNode>& Nodes() const { return m_nodes; }
    const TBlockNode& At(TNodeIndex node) const { return m_nodes[static_cast<std::size_t>(node)]; }
    /// The formula's value.
    TNodeIndex Root() const { return m_root; }
    const TBlockStores& Stores() const { return m_stores; }
    /// True for ":=", "random" and foreign words: each x has to be computed for itself, in the order of the
    /// chain.
    bool IsSequential() const { return m_sequential; }
    /// The first word whose meaning is not known here, or null. The graph has no value then.
    const TExprWord* ForeignWord() const { return m_foreignWord; }

    TNodeIndex Constant(double value);
    /// The node of an operation on nodes; an existing one where there is an equal one.
    TNodeIndex Step(TOperation operation, TNodeIndex a = kNoNode, TNodeIndex b = kNoNode,
                    TNodeIndex c = kNoNode, TNodeIndex d = kNoNode);

    /// The derivative of the value with respect to the double at `variable`, or kNoNode where it is 0
    /// everywhere. Forward mode: the derivative of each node from those of its operands.
    TNodeIndex Derivative(const double* variable);

    /// The node is computed from the double at `variable`. kNoNode depends on nothing.
    bool DependsOn(TNodeIndex node, const double* variable) const;

private:
    struct THash {
        std::size_t operator()(const TBlockNode& node) const;
    };

    TNodeIndex Share(const TBlockNode& node);
    TNodeIndex NodeOf(const TCompiledExpression& expression, double* value);
    TNodeIndex AddRecord(const TCompiledExpression& expression, const TEvalRecord& record);
    TNodeIndex AddStep(const TCompiledExpression& expression, const TEvalRecord& record,
                       TOperation operation);
    TNodeIndex AddUnknown(const TEvalRecord& record);
    void Assign(const TCompiledExpression& expression, double* target, TNodeIndex value);

    std::vector<double*> m_inputs;
    std::vector<TBlockNode> m_nodes;
    std::unordered_map<TBlockNode, TNodeIndex, THash> m_known;
    std::vector<TNodeIndex> m_recordNodes;
    TBlockStores m_stores;
    TNodeIndex m_root = kNoNode;
    bool m_sequential = false;
    const TExprWord* m_foreignWord = nullptr;
};

} // namespace lumoplot
