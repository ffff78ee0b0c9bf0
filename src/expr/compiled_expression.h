// A formula in the form that is evaluated: records in the order of evaluation, linked into a chain.
#pragma once

#include "expr/eval_record.h"
#include "expr/expr_list.h"
#include "expr/operation.h"
#include "support/export.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumoplot {

/// `Records` holds every step of the formula as it is written, arguments before their step and the whole
/// formula's last; Word says what a step computes. The steps whose result never changes hold it and are not
/// linked. `Merged` holds the shorter chain that is evaluated, unless the formula is Ordered.
struct TCompiledExpression {
    TCompiledExpression() = default;
    TCompiledExpression(const TCompiledExpression&) = delete;
    TCompiledExpression& operator=(const TCompiledExpression&) = delete;

    std::string Text;
    std::vector<TEvalRecord> Records;
    std::vector<TEvalRecord> Merged;
    /// For each of Records whether its result never changes.
    std::vector<bool> Folded;
    /// The first record of the chain that Evaluate runs.
    TEvalRecord* First = nullptr;
    /// True when a step has effects or an origin that is not known here, so that order and number of the
    /// evaluations matter: ":=" and words that are not built in.
    bool Ordered = false;

    /// The index in Records of the step with this result, or their number for any other double.
    std::size_t IndexOf(const double* result) const;

    /// What a step computes, a power with a fixed whole exponent from 2 to 8 being an operation of its own;
    /// nothing for words that are not built in and for comparisons of strings.
    std::optional<TOperation> OperationOf(const TEvalRecord& record) const;

    double Evaluate() {
        TEvalRecord* record = First;
        for (;;) {
            record->Procedure(*record);
            if (!record->Next) return record->Result;
            record = record->Next;
        }
    }
};

/// Compiles words that CheckAndRewrite has passed. Time and memory are linear in their number, and no depth
/// of brackets costs stack. Throws EParserException "Syntax error in expression " + text, or "Can not find
/// operand/function".
void CompileWords(const TExprCollection& words, TCompiledExpression& expression);

/// Replaces the chain by one with fewer records: shapes of steps that are frequent in models, such as
/// b*exp(-c*x), become one record each. The arithmetic and so the result stay the same to the last bit.
void MergeSteps(TCompiledExpression& expression);

} // namespace lumoplot
