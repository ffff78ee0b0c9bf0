#include "support/message_text.h"

#include "support/code_page.h"

#include <algorithm>
#include <vector>

namespace lumoplot {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD"; // U+FFFD
constexpr std::string_view kEllipsis = "\xE2\x80\xA6";    // …

bool BreaksLine(char32_t c) {
    const bool isControl = c < 0x20 || (c >= 0x7F && c <= 0x9F);
    const bool endsLine = c == 0x2028 || c == 0x2029;
    const bool turns = c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) ||
                       (c >= 0x2066 && c <= 0x2069);
    return isControl || endsLine || turns;
}

/// The characters to show, each as its bytes.
std::vector<std::string_view> ShownCharacters(std::string_view text) {
    std::vector<std::string_view> shown;
    bool broken = false;
    while (!text.empty()) {
        const TUtf8Character character = DecodeUtf8(text);
        const std::size_t length = character.Length > 0 ? character.Length : 1;
        const bool breaks = character.Length > 0 && BreaksLine(character.CodePoint);
        if (!breaks) {
            if (broken && !shown.empty()) shown.emplace_back(" ");
            shown.push_back(character.Length > 0 ? text.substr(0, length) : kReplacement);
        }
        broken = breaks;
        text.remove_prefix(length);
    }
    return shown;
}

} // namespace

std::string ShownLine(std::string_view text, std::size_t mostCharacters) {
    const std::vector<std::string_view> characters = ShownCharacters(text);
    const bool isLong = characters.size() > mostCharacters;
    const std::size_t front = isLong ? mostCharacters / 2 : characters.size();
    const std::size_t back = isLong ? mostCharacters - front - 1 : 0;
    std::string line;
    line.reserve(text.size());
    for (std::size_t i = 0; i < front; ++i) line += characters[i];
    if (isLong) line += kEllipsis;
    for (std::size_t i = characters.size() - back; i < characters.size(); ++i) line += characters[i];
    return line;
}

std::string ShownParagraph(std::string_view text) {
    std::string paragraph;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        if (start > 0) paragraph += '\n';
        paragraph += ShownLine(text.substr(start, end - start));
        start = end + 1;
    }
    return paragraph;
}

} // namespace lumoplot
