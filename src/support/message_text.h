// Texts for users that are made of what files hold and of their names, which may be anything.
#pragma once

#include "support/export.h"

#include <string>
#include <string_view>

namespace lumoplot {

inline constexpr std::size_t kLongestShownLine = 200; // characters

/// The text as one line of valid UTF-8: control characters, those that turn the direction of writing and line
/// ends become blanks, runs of them one blank, bytes that are no UTF-8 become U+FFFD. Of a text that is
/// longer than `mostCharacters` (at least 3) the middle is left out, "…" for it.
XYGRAPH_EXPORT std::string ShownLine(std::string_view text, std::size_t mostCharacters = kLongestShownLine);

/// The text with each of its lines made what ShownLine makes of it.
std::string ShownParagraph(std::string_view text);

} // namespace lumoplot
