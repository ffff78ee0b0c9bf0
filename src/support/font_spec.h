// A font as settings and files hold it. Sizes are character heights in pixels of 1/96 inch, so a graph looks
// the same on every screen and on paper.
#pragma once

#include "support/color.h"

#include <string>

namespace lumoplot {

struct TFontSpec {
    std::string Name = "Arial";
    int Size = 9;
    TColor Color = kBlack;
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;
    bool StrikeOut = false;

    bool operator==(const TFontSpec&) const = default;
};

} // namespace lumoplot
