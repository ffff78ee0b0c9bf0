// The built-in words: one table of every function and operator with its arithmetic.
#pragma once

#include "expr/eval_record.h"
#include "expr/expr_list.h"
#include "expr/operation.h"

namespace lumoplot {

/// The operation that a built-in word's procedure performs, or null for a procedure of somebody else.
const TOperation* FindOperation(TEvalProcedure procedure);

/// Puts every built-in word into the dictionary.
void AddBuiltInWords(TExpressList& words);

} // namespace lumoplot
