// Texts are UTF-8 inside and 8-bit in streams, files and the exported functions. The 8-bit page is
// Windows-1252; its five undefined bytes keep their code points. A text with other characters is written as
// UTF-8 behind the bytes EF BB BF, so every text survives the way out and back.
#pragma once

#include <string>
#include <string_view>

namespace lumoplot {

/// The 8-bit form of a UTF-8 text. Bytes that are no UTF-8 are taken as characters of the page.
std::string ToCodePage(std::string_view utf8);

/// The UTF-8 form of an 8-bit text; behind EF BB BF the bytes are taken as UTF-8 where they are valid.
std::string FromCodePage(std::string_view bytes);

struct TUtf8Character {
    char32_t CodePoint;
    std::size_t Length; ///< bytes; 0 when they are no UTF-8
};

/// The character that a text, which is not empty, begins with.
TUtf8Character DecodeUtf8(std::string_view text);

/// True when every byte belongs to a well-formed UTF-8 sequence (no surrogates, no overlong forms).
bool IsValidUtf8(std::string_view text);

/// Cuts an 8-bit or UTF-8 text to at most `maxBytes` bytes without splitting a UTF-8 sequence.
std::string_view CutUtf8(std::string_view text, std::size_t maxBytes);

} // namespace lumoplot
