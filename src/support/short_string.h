// The text that crosses the exported functions: a length byte and up to 255 characters of the 8-bit code
// page.
#pragma once

#include "support/export.h"

#include <string>
#include <string_view>

namespace lumoplot {

struct TShortString {
    unsigned char Length = 0;
    char Text[255] = {};
};
static_assert(sizeof(TShortString) == 256);

/// The short form of a UTF-8 text, cut to `maxLength` characters (0 to 255; other values are clamped).
XYGRAPH_EXPORT TShortString ToShortString(std::string_view utf8, int maxLength = 255);

XYGRAPH_EXPORT std::string FromShortString(const TShortString& text);

} // namespace lumoplot
