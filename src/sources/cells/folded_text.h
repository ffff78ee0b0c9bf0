// Words of several languages compared without regard to letter case and accents.
#pragma once

#include <string>
#include <string_view>

namespace lumoplot {

/// The text in small letters without accents: "März" becomes "marz", "N°" "n°". Letters of the code page that
/// are no UTF-8 are taken as such. Signs of other scripts than Latin and Cyrillic stay as they are.
std::string FoldText(std::string_view text);

/// The bytes of the Latin or Cyrillic letter at the front of the text; 0 when it is none. Of a byte that is
/// no UTF-8 one.
std::size_t LetterLength(std::string_view text);

} // namespace lumoplot
