// What a formula says about its variables before any number is known: which of them it is linear in.
#pragma once

#include "expr/expression_parser.h"
#include "support/export.h"

#include <span>
#include <vector>

namespace lumoplot {

/// For each of the variables whether the selected formula is linear in it and in all others that are so
/// marked at once: its derivative contains none of them. Of several possible sets a largest one that is
/// found by taking those first that exclude the fewest others. None for formulas with ":=", "random" or
/// words that are not built in.
XYGRAPH_EXPORT std::vector<bool> LinearVariables(TExpressionParser& parser, double* xVariable,
                                                 std::span<double* const> variables);

} // namespace lumoplot
