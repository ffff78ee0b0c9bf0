#include "sources/database/connection/file_cell.h"

#include "sources/text/text_format.h"

#include <algorithm>
#include <charconv>

namespace lumoplot {
namespace {

std::string_view WithoutBlanksAround(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(" \0\t");
    if (begin == std::string_view::npos) return {};
    text.remove_prefix(begin);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\0')) text.remove_suffix(1);
    return text;
}

} // namespace

TFileCell NumberCell(std::string_view text) {
    text = WithoutBlanksAround(text);
    if (text.empty()) return {};
    if (text.front() == '+') text.remove_prefix(1);
    std::string plain(text);
    std::replace(plain.begin(), plain.end(), ',', '.');
    const char* const end = plain.data() + plain.size();
    std::int64_t integer = 0;
    if (const auto [stop, error] = std::from_chars(plain.data(), end, integer);
        error == std::errc() && stop == end)
        return integer;
    double number = 0;
    const auto [stop, error] = std::from_chars(plain.data(), end, number);
    if (error == std::errc() && stop == end) return number;
    return std::string(text);
}

TFileCell TextCell(std::string_view text) {
    while (!text.empty() && (text.back() == ' ' || text.back() == '\0')) text.remove_suffix(1);
    if (text.empty()) return {};
    return ToDisplayText(text, TTextEncoding::Utf8);
}

} // namespace lumoplot
