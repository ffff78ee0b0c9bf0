// A graph made ready to run: what does not vary with x is computed once for each run, the rest an operation
// at a time over blocks that stay in the processor's cache.
#pragma once

#include "expr/blocks/block_graph.h"
#include "expr/blocks/block_kernels.h"

#include <memory>
#include <span>
#include <vector>

namespace lumoplot {

class TBlockProgram {
public:
    /// Computes the nodes in `outputs`; kNoNode among them is 0 everywhere. Needs the graph no longer; the
    /// doubles of its variables and the words of its comparisons must stay.
    TBlockProgram(const TBlockGraph& graph, std::span<const TNodeIndex> outputs,
                  const TBlockKernels& kernels);

    /// results[k][i] = outputs[k] with columns[c][i] as input c, for i below `count`; one pointer for each
    /// column that the graph has inputs for and for each output.
    void Run(std::span<const double* const> columns, std::size_t count, std::span<double* const> results);
    /// The formula reads that column.
    bool Reads(std::size_t column) const;

private:
    static constexpr int kBlockSize = 256;

    /// A node that has one value during a run.
    struct TUniform {
        TBlockNode Node;
        TNodeIndex Index;
    };
    struct TInstruction {
        TBlockKernel Kernel;
        TOperation Operation;
        std::array<TBlockOperand, kMaxOperands> Args;
        double* Result;
    };
    struct TInput {
        std::size_t Column;
        double* Slot;
    };
    struct TStore {
        double* Target;
        TBlockOperand Source;
    };

    using TSlots = std::vector<int>;

    void MarkUsed(const TBlockGraph& graph, std::span<const TNodeIndex> outputs, TSlots& lastUse) const;
    std::vector<bool> FindVarying(const TBlockGraph& graph) const;
    void Schedule(const TBlockGraph& graph, const TSlots& lastUse, const TBlockKernels& kernels);
    void AddInstruction(const TBlockNode& node, double* result, const TBlockKernels& kernels);
    int TakeSlot();
    double* SlotData(int slot) { return m_slots[static_cast<std::size_t>(slot)].get(); }
    TBlockOperand OperandOf(TNodeIndex node) const;

    void RunOnce(std::span<const double* const> columns, std::size_t start, std::size_t end,
                 std::span<double* const> results);
    void ComputeUniforms();
    double UniformValue(const TBlockNode& node) const;
    void RunBlock(int count);

    bool m_sequential;
    std::vector<TUniform> m_uniforms;
    std::vector<TInstruction> m_instructions;
    std::vector<TBlockOperand> m_outputs;
    std::vector<TStore> m_stores;
    /// The values of uniform nodes, by node.
    std::vector<double> m_values;
    /// Where each node's value is.
    std::vector<TBlockOperand> m_operands;
    std::vector<std::unique_ptr<double[]>> m_slots;
    std::vector<int> m_freeSlots;
    std::vector<TInput> m_inputs;
};

} // namespace lumoplot
