// What a name of the formula language is, and where names, numbers and strings end in a formula. Everything
// that asks about names asks here: the tokeniser, columns as variables, the checks of equations.
#pragma once

#include "support/export.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lumoplot {

constexpr bool IsNameStart(char c) {
    return c == '_' || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

constexpr bool IsNamePart(char c) {
    return IsNameStart(c) || (c >= '0' && c <= '9');
}

/// A letter or "_", then letters, digits and "_". Words of the language are names too.
XYGRAPH_EXPORT bool IsName(std::string_view text);

/// The place behind the name, the number or the string that starts at `start`. A string that is not closed
/// goes on to the end of the text.
std::size_t EndOfName(std::string_view text, std::size_t start);
std::size_t EndOfNumber(std::string_view text, std::size_t start);
std::size_t EndOfString(std::string_view text, std::size_t start);

/// A name where it stands in a formula, as it is written.
struct TNameUse {
    std::string Name;
    bool IsAssigned; ///< ":=" follows
    std::size_t Place = 0;
};

/// The names in a formula in their order, those inside strings and the exponents of numbers left out.
XYGRAPH_EXPORT std::vector<TNameUse> NamesIn(std::string_view formula);

} // namespace lumoplot
