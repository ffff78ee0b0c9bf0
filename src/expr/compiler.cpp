#include "expr/built_in_words.h"
#include "expr/compiled_expression.h"
#include "expr/parser_exception.h"

#include <algorithm>

namespace lumoplot {
namespace {

struct TOperand {
    double* Value;
    bool Constant;
};

/// An operator, a function or a bracket whose end has not been met.
struct TPending {
    enum class TKind : std::uint8_t { Bracket, Function, Operator } Kind;
    TExprWord* Word;
    int Priority;
    bool HasLeft;
    int Arguments;
};

int PriorityOf(const TExprWord* word) {
    const auto* function = dynamic_cast<const TFunction*>(word);
    return function ? function->Priority() : 0;
}

bool IsConstantWord(const TExprWord* word) {
    return word->Name()[0] == '.' || (word->Name()[0] >= '0' && word->Name()[0] <= '9');
}

/// Operator precedence with a stack of its own. An operator takes what stands before it as its first
/// argument; its right operand ends at the next operator of the same bracket whose priority number is not
/// smaller.
class TCompiler {
public:
    TCompiler(const TExprCollection& words, TCompiledExpression& expression)
        : m_words(words), m_expression(expression) {
        // Addresses of results go into other records: the records never move.
        m_expression.Records.reserve(static_cast<std::size_t>(words.Count()) + 1);
    }

    void Run() {
        for (m_index = 0; m_index < m_words.Count(); ++m_index) Take(m_words.At(m_index));
        FinishOperators();
        if (!m_pending.empty()) SyntaxError();
        FinishChain();
    }

private:
    [[noreturn]] void SyntaxError() const {
        throw EParserException("Syntax error in expression " + m_expression.Text);
    }
    void Require(bool condition) const {
        if (!condition) SyntaxError();
    }

    void Take(TExprWord* word) {
        switch (word->ResultType()) {
        case TResultType::LeftBracket: return Open({TPending::TKind::Bracket, nullptr, 0, false, 0});
        case TResultType::RightBracket: return Close();
        case TResultType::Comma: return NextArgument();
        default: break;
        }
        if (word->IsOperator())
            TakeOperator(word);
        else if (word->ArgCount() > 0)
            TakeFunction(word);
        else
            TakeValue(word);
    }

    void Open(const TPending& pending) {
        Require(!m_hasValue);
        m_pending.push_back(pending);
    }

    void TakeFunction(TExprWord* word) {
        Open({TPending::TKind::Function, word, 0, false, 1});
        ++m_index;
        Require(m_index < m_words.Count() && m_words.At(m_index)->ResultType() == TResultType::LeftBracket);
    }

    void NextArgument() {
        FinishOperators();
        Require(!m_pending.empty() && m_pending.back().Kind == TPending::TKind::Function);
        ++m_pending.back().Arguments;
        m_hasValue = false;
    }

    void Close() {
        FinishOperators();
        Require(!m_pending.empty());
        const TPending bracket = m_pending.back();
        m_pending.pop_back();
        if (bracket.Kind != TPending::TKind::Function) return;
        Require(bracket.Arguments == bracket.Word->ArgCount());
        AddStep(bracket.Word, bracket.Arguments);
    }

    void TakeOperator(TExprWord* word) {
        if (word->ArgCount() == 0) throw EParserException("Can not find operand/function");
        const int priority = PriorityOf(word);
        while (HasPendingOperator() && m_pending.back().Priority <= priority) FinishOperator();
        m_pending.push_back({TPending::TKind::Operator, word, priority, m_hasValue, 0});
        m_hasValue = false;
    }

    void TakeValue(TExprWord* word) {
        Require(!m_hasValue);
        m_hasValue = true;
        if (!word->IsValue()) return AddStep(word, 0);
        double* value = word->ValuePointer();
        Require(value != nullptr);
        m_lastValueWord = word;
        m_values.push_back({value, IsConstantWord(word)});
    }

    bool HasPendingOperator() const {
        return !m_pending.empty() && m_pending.back().Kind == TPending::TKind::Operator;
    }

    void FinishOperator() {
        const TPending pending = m_pending.back();
        m_pending.pop_back();
        Require(int{pending.HasLeft} + int{m_hasValue} == pending.Word->ArgCount());
        AddStep(pending.Word, pending.Word->ArgCount());
        m_hasValue = true;
    }

    void FinishOperators() {
        while (HasPendingOperator()) FinishOperator();
        Require(m_hasValue);
    }

    void AddStep(TExprWord* word, int arguments) {
        TEvalRecord& record = m_expression.Records.emplace_back();
        record.Word = word;
        record.Procedure = word->Procedure();
        const auto first = m_values.end() - arguments;
        const bool constant =
            std::all_of(first, m_values.end(), [](auto& operand) { return operand.Constant; });
        std::transform(first, m_values.end(), record.Args.begin(),
                       [](auto& operand) { return operand.Value; });
        m_values.erase(first, m_values.end());
        const bool folded = Classify(word) && constant;
        m_values.push_back({&record.Result, folded});
        m_expression.Folded.push_back(folded);
        if (folded)
            record.Procedure(record);
        else
            Link(record);
    }

    /// True when equal operands always give an equal result. Notes words that make the order matter.
    bool Classify(const TExprWord* word) {
        if (const TOperation* operation = FindOperation(word->Procedure())) {
            if (*operation == TOperation::Assign) m_expression.Ordered = true;
            return IsPure(*operation);
        }
        if (!dynamic_cast<const TLogicalStringOper*>(word)) m_expression.Ordered = true;
        return false;
    }

    void Link(TEvalRecord& record) {
        (m_last ? m_last->Next : m_expression.First) = &record;
        m_last = &record;
    }

    // A formula that is a single value, or whose value never changes, is one record that copies it.
    void FinishChain() {
        if (!m_values.back().Constant && !m_expression.Records.empty()) return;
        TEvalRecord& record = m_expression.Records.emplace_back();
        record.Procedure = &CopyValue;
        record.Word = m_lastValueWord;
        record.Args[0] = m_values.back().Value;
        m_expression.Folded.push_back(false);
        Link(record);
    }

    const TExprCollection& m_words;
    TCompiledExpression& m_expression;
    int m_index = 0;
    bool m_hasValue = false;
    std::vector<TPending> m_pending;
    std::vector<TOperand> m_values;
    TExprWord* m_lastValueWord = nullptr;
    TEvalRecord* m_last = nullptr;
};

} // namespace

void CompileWords(const TExprCollection& words, TCompiledExpression& expression) {
    TCompiler(words, expression).Run();
}

} // namespace lumoplot
