#include "expr/blocks/block_graph.h"

#include <algorithm>
#include <functional>

namespace lumoplot {

bool TBlockNode::operator==(const TBlockNode& other) const {
    return Kind == other.Kind && Operation == other.Operation && Args == other.Args &&
           std::bit_cast<std::uint64_t>(Value) == std::bit_cast<std::uint64_t>(other.Value) &&
           Variable == other.Variable && Comparison == other.Comparison;
}

std::size_t TBlockGraph::THash::operator()(const TBlockNode& node) const {
    std::uint64_t hash =
        static_cast<std::uint64_t>(node.Kind) * 256 + static_cast<std::uint64_t>(node.Operation);
    const auto mix = [&](std::uint64_t value) { hash = (hash ^ value) * 0x9E3779B97F4A7C15U ^ (hash >> 29); };
    for (const TNodeIndex arg : node.Args) mix(static_cast<std::uint64_t>(arg));
    mix(std::bit_cast<std::uint64_t>(node.Value));
    mix(std::hash<const void*>()(node.Variable));
    mix(std::hash<const void*>()(node.Comparison));
    return static_cast<std::size_t>(hash);
}

TBlockGraph::TBlockGraph(const TCompiledExpression& expression, std::span<double* const> inputs)
    : m_inputs(inputs.begin(), inputs.end()), m_recordNodes(expression.Records.size(), kNoNode),
      m_sequential(expression.Ordered) {
    for (std::size_t i = 0; i < expression.Records.size() && !m_foreignWord; ++i) {
        const TEvalRecord& record = expression.Records[i];
        m_recordNodes[i] = expression.Folded[i] ? Constant(record.Result) : AddRecord(expression, record);
    }
    if (!m_foreignWord) m_root = m_recordNodes.back();
}

TNodeIndex TBlockGraph::Share(const TBlockNode& node) {
    const auto [entry, isNew] = m_known.try_emplace(node, static_cast<TNodeIndex>(m_nodes.size()));
    if (isNew) m_nodes.push_back(node);
    return entry->second;
}

TNodeIndex TBlockGraph::Constant(double value) {
    TBlockNode node;
    node.Value = value;
    return Share(node);
}

TNodeIndex TBlockGraph::Step(TOperation operation, TNodeIndex a, TNodeIndex b, TNodeIndex c, TNodeIndex d) {
    if (operation == TOperation::Identity) return a;
    TBlockNode node;
    node.Kind = TNodeKind::Step;
    node.Operation = operation;
    node.Args = {a, b, c, d};
    const auto isConstant = [&](TNodeIndex arg) {
        return arg == kNoNode || At(arg).Kind == TNodeKind::Constant;
    };
    if (std::all_of(node.Args.begin(), node.Args.end(), isConstant)) {
        const auto value = [&](TNodeIndex arg) { return arg == kNoNode ? 0 : At(arg).Value; };
        return Constant(Compute(operation, value(a), value(b), value(c), value(d)));
    }
    return Share(node);
}

TNodeIndex TBlockGraph::NodeOf(const TCompiledExpression& expression, double* value) {
    const std::size_t record = expression.IndexOf(value);
    if (record < m_recordNodes.size()) return m_recordNodes[record];
    if (const auto store = m_stores.find(value); store != m_stores.end()) return store->second;
    TBlockNode node;
    const auto input = std::ranges::find(m_inputs, value);
    const bool varies = input != m_inputs.end();
    node.Kind = varies ? TNodeKind::Input : TNodeKind::Variable;
    if (varies) node.Value = static_cast<double>(input - m_inputs.begin());
    node.Variable = value;
    return Share(node);
}

bool TBlockGraph::DependsOn(TNodeIndex node, const double* variable) const {
    if (node == kNoNode) return false;
    std::vector<bool> depends(static_cast<std::size_t>(node) + 1);
    for (TNodeIndex i = 0; i <= node; ++i) {
        const TBlockNode& at = At(i);
        depends[static_cast<std::size_t>(i)] =
            (at.Variable == variable && variable) || std::ranges::any_of(at.Args, [&](TNodeIndex arg) {
                return arg != kNoNode && depends[static_cast<std::size_t>(arg)];
            });
    }
    return depends.back();
}

TNodeIndex TBlockGraph::AddRecord(const TCompiledExpression& expression, const TEvalRecord& record) {
    if (record.Procedure == &CopyValue) return NodeOf(expression, record.Args[0]);
    const std::optional<TOperation> operation = expression.OperationOf(record);
    return operation ? AddStep(expression, record, *operation) : AddUnknown(record);
}

TNodeIndex TBlockGraph::AddStep(const TCompiledExpression& expression, const TEvalRecord& record,
                                TOperation operation) {
    if (operation == TOperation::Random) {
        m_sequential = true; // every draw is a value of its own
        TBlockNode node;
        node.Kind = TNodeKind::Step;
        node.Operation = operation;
        m_nodes.push_back(node);
        return static_cast<TNodeIndex>(m_nodes.size()) - 1;
    }
    std::array<TNodeIndex, 2> args = {kNoNode, kNoNode};
    for (int k = 0; k < OperandCount(operation); ++k) {
        const auto slot = static_cast<std::size_t>(k);
        args[slot] = NodeOf(expression, record.Args[slot]);
    }
    if (operation != TOperation::Assign) return Step(operation, args[0], args[1]);
    Assign(expression, record.Args[0], args[1]);
    return args[1];
}

TNodeIndex TBlockGraph::AddUnknown(const TEvalRecord& record) {
    TBlockNode node;
    node.Kind = TNodeKind::String;
    node.Comparison = dynamic_cast<const TLogicalStringOper*>(record.Word);
    if (node.Comparison) return Share(node);
    m_foreignWord = record.Word;
    return kNoNode;
}

// Later reads of the target get the assigned value; the double itself is written when the x is done.
void TBlockGraph::Assign(const TCompiledExpression& expression, double* target, TNodeIndex value) {
    if (expression.IndexOf(target) < m_recordNodes.size()) return; // a result that nobody reads again
    m_stores[target] = value;
}

} // namespace lumoplot
