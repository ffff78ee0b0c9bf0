// The functions that the equation editor offers, in the order of its list.
#pragma once

#include <span>

namespace lumoplot {

struct TListedFunction {
    const char* Piece; ///< what is put into the formula
    const char* Help;
};

std::span<const TListedFunction> ListedFunctions();

} // namespace lumoplot
