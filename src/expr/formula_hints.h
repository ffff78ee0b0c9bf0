// What a person probably meant by a formula: the sign in front of a power, which binds tighter than
// everywhere else, products without their sign, and functions whose names are others here. For warnings
// beside a formula, with a rewriting to take by one click.
#pragma once

#include "expr/expression_parser.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumoplot {

/// A piece of a formula that is to be written otherwise.
struct TRewriteHint {
    std::size_t Place = 0; ///< of the piece, in bytes from 0
    std::size_t Length = 0;
    std::string Text;      ///< "a sign binds tighter than ^: write -(x^2)"
    std::string Rewritten; ///< the whole formula, all such pieces written so
};

/// The first sign in a formula that belongs to the base of a power: "-x^2" is (−x)². None where it makes no
/// difference: an odd whole exponent, an even number of signs, a sign behind "^", brackets. Formulas that do
/// not compile are looked at as far as they make sense.
XYGRAPH_EXPORT std::optional<TRewriteHint> FindSignHint(std::string_view formula);

/// The first two values in a formula with nothing between them, as in "2x" and "(a+b)(a-b)", which people
/// mean as a product and the language does not know. Of a name in front of a bracket only where the parser
/// knows it as a value.
XYGRAPH_EXPORT std::optional<TRewriteHint> FindProductHint(std::string_view formula,
                                                           TExpressionParser& parser);

/// A name that is used as a function and is none.
struct TNameHint {
    std::string Name;
    std::size_t Place = 0;            ///< in bytes from 0
    std::size_t Column = 0;           ///< in characters from 1
    std::vector<std::string> Nearest; ///< functions that may be meant, the nearest first; may be empty

    /// "log at 7: not known; ln, log10?"
    std::string Text() const {
        std::string text = Name + " at " + std::to_string(Column) + ": not known";
        for (std::size_t i = 0; i < Nearest.size(); ++i) text += (i == 0 ? "; " : ", ") + Nearest[i];
        return Nearest.empty() ? text : text + '?';
    }
};

/// The first one that the parser does not know.
XYGRAPH_EXPORT std::optional<TNameHint> FindNameHint(std::string_view formula, TExpressionParser& parser);

/// An error of the parser about a formula, and behind it the hint of a name or of a product where there is
/// one.
std::string WithNameHint(const std::string& error, std::string_view formula, TExpressionParser& parser);

} // namespace lumoplot
