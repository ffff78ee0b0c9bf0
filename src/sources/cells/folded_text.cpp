#include "sources/cells/folded_text.h"

namespace lumoplot {
namespace {

/// The base letters of U+00C0 to U+017F; "*" where there is none.
constexpr std::string_view kBases = "aaaaaaaceeeeiiiidnooooo*ouuuuytsaaaaaaaceeeeiiiidnooooo*ouuuuyty"
                                    "aaaaaaccccccccddddeeeeeeeeeegggggggghhhhiiiiiiiiiiiijjkkkllllllllll"
                                    "nnnnnnnnnoooooooorrrrrrssssssssttttttuuuuuuuuuuuuwwyyyzzzzzzs";

unsigned Byte(std::string_view text, std::size_t place) {
    return place < text.size() ? static_cast<unsigned char>(text[place]) : 0;
}

bool IsContinuation(unsigned byte) {
    return (byte & 0xC0) == 0x80;
}

// The letter with an accent at the front and how many bytes it has; 0 for anything else.
unsigned AccentedLetter(std::string_view text, std::size_t& length) {
    const unsigned first = Byte(text, 0);
    const bool isPair = first >= 0xC3 && first <= 0xC5 && IsContinuation(Byte(text, 1));
    length = isPair ? 2 : 1;
    if (isPair) return (first & 0x1F) << 6 | (Byte(text, 1) & 0x3F);
    return first >= 0xC0 && !IsContinuation(Byte(text, 1)) ? first : 0;
}

// The first of two bytes of a Cyrillic letter.
bool IsCyrillic(std::string_view text) {
    return (Byte(text, 0) == 0xD0 || Byte(text, 0) == 0xD1) && IsContinuation(Byte(text, 1));
}

// The letters from U+0410 to U+042F in small.
void AppendSmallCyrillic(std::string_view letter, std::string& folded) {
    const unsigned code = (Byte(letter, 0) & 0x1F) << 6 | (Byte(letter, 1) & 0x3F);
    const unsigned small = code >= 0x410 && code <= 0x42F ? code + 0x20 : code;
    folded += static_cast<char>(0xC0 | small >> 6);
    folded += static_cast<char>(0x80 | (small & 0x3F));
}

} // namespace

std::string FoldText(std::string_view text) {
    std::string folded;
    for (std::size_t length = 1; !text.empty(); text.remove_prefix(length)) {
        const unsigned letter = AccentedLetter(text, length);
        if (IsCyrillic(text)) {
            length = 2;
            AppendSmallCyrillic(text, folded);
            continue;
        }
        const char base = letter == 0 ? text[0] : kBases[letter - 0xC0];
        if (letter != 0 && base == '*')
            folded.append(text.substr(0, length));
        else
            folded += base >= 'A' && base <= 'Z' ? static_cast<char>(base | 0x20) : base;
    }
    return folded;
}

std::size_t LetterLength(std::string_view text) {
    const unsigned first = Byte(text, 0);
    if (first < 0x80) return (first | 0x20) >= 'a' && (first | 0x20) <= 'z' ? 1 : 0;
    if (IsCyrillic(text)) return 2;
    std::size_t length = 1;
    return AccentedLetter(text, length) != 0 ? length : 0;
}

} // namespace lumoplot
