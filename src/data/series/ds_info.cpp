#include "data/series/ds_info.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <utility>

namespace lumoplot {
namespace {

bool IsSameLetter(char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
}

std::string WithoutUserPassword(const std::string& text) {
    const std::size_t scheme = text.find("://");
    if (scheme == std::string::npos) return text;
    const std::size_t begin = scheme + 3;
    const std::size_t at = text.rfind('@');
    if (at == std::string::npos || at < begin) return text;
    const std::size_t colon = text.find(':', begin);
    return colon < at ? text.substr(0, colon) + text.substr(at) : text;
}

// "KEY=value" up to the next separator; a value in braces may hold any character.
std::string WithoutValueOf(std::string text, std::string_view key) {
    for (std::size_t from = 0;;) {
        const auto found = std::search(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(),
                                       key.begin(), key.end(), IsSameLetter);
        if (found == text.end()) return text;
        from = static_cast<std::size_t>(found - text.begin());
        std::size_t end = text.find_first_of(";&", from);
        if (text.compare(from + key.size(), 1, "{") == 0)
            end = text.find_first_of(";&", text.find('}', from));
        if (end == std::string::npos) end = text.size() - 1;
        text.erase(from, end + 1 - from);
    }
}

} // namespace

std::string WithoutPassword(const std::string& connection) {
    std::string text = WithoutUserPassword(connection);
    for (const char* key : {"password=", "pwd="}) text = WithoutValueOf(std::move(text), key);
    return text;
}

void TDSInfo::SetDatabase(TDatabaseWish value) {
    value.connection = WithoutPassword(value.connection);
    Store(m_database, value);
}

} // namespace lumoplot
