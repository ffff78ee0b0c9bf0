// A formula in the form that is evaluated: records in the order of evaluation, linked into a chain.
#pragma once

#include "expr/eval_record.h"
#include "expr/expr_list.h"
#include "support/export.h"

#include <string>
#include <string_view>
#include <vector>

namespace lumoplot {

/// `Records` holds every step of the formula, arguments before their step, the whole formula's last. The
/// chain leaves out the steps whose result never changes and those that a later record does as well; their
/// own arguments stay in place, and Word says what each of them computes.
struct TCompiledExpression {
    std::string Text;
    std::vector<TEvalRecord> Records;
    TEvalRecord* First = nullptr;
    /// True when a step has effects or an origin that is not known here, so that order and number of the
    /// evaluations matter: ":=" and words that are not built in.
    bool Ordered = false;

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

/// Merges neighbouring steps of the chain into one record where the result stays the same to the last bit.
void MergeSteps(TCompiledExpression& expression);

} // namespace lumoplot
