#include "expr/blocks/block_program.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace lumoplot {
namespace {

constexpr double kZero = 0;
constexpr int kNever = -1;
constexpr int kAlways = std::numeric_limits<int>::max();

double At(const TBlockOperand& operand, int i) {
    return operand.Uniform ? *operand.Data : operand.Data[i];
}

} // namespace

TBlockProgram::TBlockProgram(const TBlockGraph& graph, std::span<const TNodeIndex> outputs,
                             const TBlockKernels& kernels)
    : m_sequential(graph.IsSequential()), m_values(graph.Nodes().size()), m_operands(graph.Nodes().size()) {
    TSlots lastUse(graph.Nodes().size(), kNever);
    MarkUsed(graph, outputs, lastUse);
    Schedule(graph, lastUse, kernels);
    for (const TNodeIndex output : outputs) m_outputs.push_back(OperandOf(output));
    for (const auto& [target, node] : graph.Stores()) m_stores.push_back({target, OperandOf(node)});
}

// The last node that reads each node; kAlways for what is wanted in the end, kNever for what nobody wants.
void TBlockProgram::MarkUsed(const TBlockGraph& graph, std::span<const TNodeIndex> outputs,
                             TSlots& lastUse) const {
    const auto want = [&](TNodeIndex node, int by) {
        if (node != kNoNode)
            lastUse[static_cast<std::size_t>(node)] = std::max(lastUse[static_cast<std::size_t>(node)], by);
    };
    for (const TNodeIndex output : outputs) want(output, kAlways);
    for (const auto& store : graph.Stores()) want(store.second, kAlways);
    for (int node = static_cast<int>(lastUse.size()) - 1; node >= 0; --node)
        if (lastUse[static_cast<std::size_t>(node)] != kNever)
            for (const TNodeIndex arg : graph.At(node).Args) want(arg, node);
}

std::vector<bool> TBlockProgram::FindVarying(const TBlockGraph& graph) const {
    std::vector<bool> varying;
    for (const TBlockNode& node : graph.Nodes())
        varying.push_back(node.Kind == TNodeKind::Input || node.Operation == TOperation::Random ||
                          std::any_of(node.Args.begin(), node.Args.end(), [&](TNodeIndex arg) {
                              return arg != kNoNode && varying[static_cast<std::size_t>(arg)];
                          }));
    return varying;
}

void TBlockProgram::Schedule(const TBlockGraph& graph, const TSlots& lastUse, const TBlockKernels& kernels) {
    const std::vector<bool> varying = FindVarying(graph);
    std::vector<int> slotOf(varying.size(), kNever);
    // All inputs are filled before the first step, so no other value may have one of their slots till then.
    for (std::size_t i = 0; i < varying.size(); ++i) {
        const TBlockNode& node = graph.At(static_cast<TNodeIndex>(i));
        if (lastUse[i] == kNever || node.Kind != TNodeKind::Input) continue;
        slotOf[i] = TakeSlot();
        m_operands[i] = {SlotData(slotOf[i]), false};
        m_inputs.push_back({static_cast<std::size_t>(node.Value), SlotData(slotOf[i])});
    }
    for (std::size_t i = 0; i < varying.size(); ++i) {
        if (lastUse[i] == kNever || graph.At(static_cast<TNodeIndex>(i)).Kind == TNodeKind::Input) continue;
        const auto index = static_cast<TNodeIndex>(i);
        const TBlockNode& node = graph.At(index);
        if (!varying[i]) {
            m_uniforms.push_back({node, index});
            m_operands[i] = {&m_values[i], true};
            continue;
        }
        // Slots of operands that are read for the last time here can take the result.
        for (const TNodeIndex arg : node.Args) {
            if (arg == kNoNode || lastUse[static_cast<std::size_t>(arg)] != index) continue;
            int& slot = slotOf[static_cast<std::size_t>(arg)];
            if (slot != kNever) m_freeSlots.push_back(std::exchange(slot, kNever));
        }
        slotOf[i] = TakeSlot();
        m_operands[i] = {SlotData(slotOf[i]), false};
        AddInstruction(node, SlotData(slotOf[i]), kernels);
    }
}

void TBlockProgram::AddInstruction(const TBlockNode& node, double* result, const TBlockKernels& kernels) {
    TInstruction instruction{kernels.Of[static_cast<int>(node.Operation)], node.Operation, {}, result};
    std::transform(node.Args.begin(), node.Args.end(), instruction.Args.begin(),
                   [&](TNodeIndex arg) { return OperandOf(arg); });
    m_instructions.push_back(instruction);
}

int TBlockProgram::TakeSlot() {
    if (m_freeSlots.empty()) {
        m_slots.push_back(std::make_unique<double[]>(kBlockSize));
        return static_cast<int>(m_slots.size()) - 1;
    }
    const int slot = m_freeSlots.back();
    m_freeSlots.pop_back();
    return slot;
}

TBlockOperand TBlockProgram::OperandOf(TNodeIndex node) const {
    return node == kNoNode ? TBlockOperand{&kZero, true} : m_operands[static_cast<std::size_t>(node)];
}

bool TBlockProgram::Reads(std::size_t column) const {
    return std::ranges::find(m_inputs, column, &TInput::Column) != m_inputs.end();
}

void TBlockProgram::Run(std::span<const double* const> columns, std::size_t count,
                        std::span<double* const> results) {
    if (!m_sequential) return RunOnce(columns, 0, count, results);
    for (std::size_t i = 0; i < count; ++i) {
        RunOnce(columns, i, i + 1, results);
        for (const TStore& store : m_stores) *store.Target = *store.Source.Data;
    }
}

void TBlockProgram::RunOnce(std::span<const double* const> columns, std::size_t start, std::size_t end,
                            std::span<double* const> results) {
    ComputeUniforms();
    for (; start < end; start += kBlockSize) {
        const std::size_t count = std::min<std::size_t>(kBlockSize, end - start);
        for (const TInput& input : m_inputs) std::copy_n(columns[input.Column] + start, count, input.Slot);
        RunBlock(static_cast<int>(count));
        for (std::size_t k = 0; k < results.size(); ++k) {
            double* result = results[k] + start;
            if (m_outputs[k].Uniform)
                std::fill_n(result, count, *m_outputs[k].Data);
            else
                std::copy_n(m_outputs[k].Data, count, result);
        }
    }
}

void TBlockProgram::ComputeUniforms() {
    for (const TUniform& uniform : m_uniforms)
        m_values[static_cast<std::size_t>(uniform.Index)] = UniformValue(uniform.Node);
}

double TBlockProgram::UniformValue(const TBlockNode& node) const {
    switch (node.Kind) {
    case TNodeKind::Variable: return *node.Variable;
    case TNodeKind::String: return node.Comparison->Holds() ? 1 : 0;
    case TNodeKind::Step: {
        const auto value = [&](int k) { return *OperandOf(node.Args[static_cast<std::size_t>(k)]).Data; };
        return Compute(node.Operation, value(0), value(1), value(2), value(3));
    }
    default: return node.Value;
    }
}

void TBlockProgram::RunBlock(int count) {
    for (const TInstruction& step : m_instructions) {
        if (step.Kernel) {
            step.Kernel(step.Result, step.Args.data(), count);
            continue;
        }
        for (int i = 0; i < count; ++i)
            step.Result[i] = Compute(step.Operation, At(step.Args[0], i), At(step.Args[1], i),
                                     At(step.Args[2], i), At(step.Args[3], i));
    }
}

} // namespace lumoplot
