// What a formula says about its variables before any number is known: which of them it is linear in, and how
// they must grow when x does.
#pragma once

#include "expr/expression_parser.h"

#include <optional>
#include <span>
#include <vector>

namespace lumoplot {

/// For each of the variables whether the selected formula is linear in it and in all others that are so
/// marked at once: its derivative contains none of them. Of several possible sets a largest one that is
/// found by taking those first that exclude the fewest others. None for formulas with ":=", "random" or
/// words that are not built in.
std::vector<bool> LinearVariables(TExpressionParser& parser, double* xVariable,
                                  std::span<double* const> variables);

/// For each of the variables the power of x that it must grow with for the formula to keep its shape when x
/// is measured in another unit: 1 for a place or a width, -1 for a rate, 0 for a phase or an exponent.
/// Nothing where the formula leaves it open. Arguments of exp, sin and their like have no unit, what is added
/// has the same, and what is added to a number has none where nothing else is known.
std::vector<std::optional<double>> PowersOfX(TExpressionParser& parser, double* xVariable,
                                             std::span<double* const> variables);

} // namespace lumoplot
