#include "support/short_string.h"

#include "support/code_page.h"

#include <algorithm>
#include <cstring>

namespace lumoplot {

TShortString ToShortString(std::string_view utf8, int maxLength) {
    const std::string bytes = ToCodePage(utf8);
    const auto limit = static_cast<std::size_t>(std::clamp(maxLength, 0, 255));
    // Only a text behind the UTF-8 mark has sequences that a cut must not split.
    const bool marked = bytes.size() != utf8.size() && bytes.starts_with("\xEF\xBB\xBF");
    const std::string_view cut = marked ? CutUtf8(bytes, limit) : std::string_view(bytes).substr(0, limit);
    TShortString result;
    result.Length = static_cast<unsigned char>(cut.size());
    std::memcpy(result.Text, cut.data(), cut.size());
    return result;
}

std::string FromShortString(const TShortString& text) {
    return FromCodePage(std::string_view(text.Text, text.Length));
}

} // namespace lumoplot
