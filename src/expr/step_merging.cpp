#include "expr/compiled_expression.h"
#include "expr/step_shapes.h"

namespace lumoplot {
namespace {

/// Covers the tree of steps with shapes, from the root down, the largest that fits first.
class TMerger {
public:
    explicit TMerger(TCompiledExpression& expression)
        : m_expression(expression), m_records(expression.Records), m_steps(expression.Records.size()) {}

    void Run() {
        for (const TEvalRecord* record = m_expression.First; record; record = record->Next)
            m_steps[IndexOf(&record->Result)].Linked = true;
        for (std::size_t i = 0; i < m_steps.size(); ++i)
            if (m_steps[i].Linked) Describe(i);
        for (std::size_t i = m_steps.size(); i-- > 0;)
            if (m_steps[i].Linked) Cover(i);
        BuildChain();
    }

private:
    struct TStep {
        bool Linked = false; ///< It needs a record in the chain.
        TOperation Operation = kLeaf;
        TEvalProcedure Procedure = nullptr;
        std::array<double*, kMaxArguments> Args = {};
        double* Result = nullptr;
    };

    std::size_t IndexOf(const double* result) const { return m_expression.IndexOf(result); }

    bool IsLinked(const double* value) const {
        const std::size_t index = IndexOf(value);
        return index < m_steps.size() && m_steps[index].Linked;
    }

    void Describe(std::size_t index) {
        const TEvalRecord& record = m_records[index];
        TStep& step = m_steps[index];
        step.Procedure = record.Procedure;
        step.Args = record.Args;
        step.Operation = m_expression.OperationOf(record).value_or(kLeaf);
    }

    void Cover(std::size_t index) {
        if (m_steps[index].Operation == kLeaf) return;
        for (const TStepShape& shape : ShapesOf(m_steps[index].Operation)) {
            m_next = shape.Nodes.data();
            m_leaves = 0;
            m_args = {};
            m_inner.clear();
            if (!Matches(index)) continue;
            m_steps[index].Procedure = shape.Procedure;
            m_steps[index].Args = m_args;
            for (const std::size_t inner : m_inner) m_steps[inner].Linked = false;
            return;
        }
    }

    bool Matches(std::size_t index) {
        if (m_steps[index].Operation != *m_next++) return false;
        for (int k = 0; k < OperandCount(m_steps[index].Operation); ++k) {
            double* arg = m_records[index].Args[static_cast<std::size_t>(k)];
            if (*m_next == kLeaf) {
                ++m_next;
                m_args[m_leaves++] = arg;
                continue;
            }
            if (!IsLinked(arg) || !Matches(IndexOf(arg))) return false;
            m_inner.push_back(IndexOf(arg));
        }
        return true;
    }

    void BuildChain() {
        std::size_t count = 0;
        for (const TStep& step : m_steps) count += step.Linked ? 1 : 0;
        m_expression.Merged.reserve(count);
        TEvalRecord** link = &m_expression.First;
        for (std::size_t i = 0; i < m_steps.size(); ++i) {
            if (!m_steps[i].Linked) continue;
            TEvalRecord& record = m_expression.Merged.emplace_back();
            record.Procedure = m_steps[i].Procedure;
            record.Word = m_records[i].Word;
            record.Args = m_steps[i].Args;
            for (double*& arg : record.Args)
                if (arg && IsLinked(arg)) arg = m_steps[IndexOf(arg)].Result;
            m_steps[i].Result = &record.Result;
            *link = &record;
            link = &record.Next;
        }
    }

    TCompiledExpression& m_expression;
    std::vector<TEvalRecord>& m_records;
    std::vector<TStep> m_steps;
    const TOperation* m_next = nullptr;
    std::size_t m_leaves = 0;
    std::array<double*, kMaxArguments> m_args = {};
    std::vector<std::size_t> m_inner;
};

} // namespace

void MergeSteps(TCompiledExpression& expression) {
    if (!expression.Ordered) TMerger(expression).Run();
}

} // namespace lumoplot
