#include "support/code_page.h"

#include <array>
#include <cstdint>
#include <optional>

namespace lumoplot {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

// Code points of the bytes 0x80 to 0x9F of Windows-1252.
constexpr std::array<char16_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char32_t CodePointOf(unsigned char byte) {
    return byte >= 0x80 && byte <= 0x9F ? kHighControls[byte - 0x80] : byte;
}

std::optional<char> ByteOf(char32_t codePoint) {
    if (codePoint < 0x80 || (codePoint >= 0xA0 && codePoint <= 0xFF)) return static_cast<char>(codePoint);
    for (std::size_t i = 0; i < kHighControls.size(); ++i)
        if (kHighControls[i] == codePoint) return static_cast<char>(0x80 + i);
    return std::nullopt;
}

void AppendUtf8(std::string& text, char32_t codePoint) {
    if (codePoint < 0x80) {
        text += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        text += static_cast<char>(0xC0 | (codePoint >> 6));
        text += static_cast<char>(0x80 | (codePoint & 0x3F));
    } else {
        text += static_cast<char>(0xE0 | (codePoint >> 12));
        text += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (codePoint & 0x3F));
    }
}

std::string DecodePage(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) AppendUtf8(text, CodePointOf(static_cast<unsigned char>(byte)));
    return text;
}

} // namespace

TUtf8Character DecodeUtf8(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80) return {lead, 1};
    const std::size_t length = lead >= 0xF0 && lead <= 0xF4  ? 4
                               : lead >= 0xE0 && lead < 0xF0 ? 3
                               : lead >= 0xC2 && lead < 0xE0 ? 2
                                                             : 0;
    if (length == 0 || text.size() < length) return {0, 0};
    char32_t codePoint = lead & (0xFF >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return {0, 0};
        codePoint = (codePoint << 6) | (byte(i) & 0x3F);
    }
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    if (codePoint < kSmallest[length] || codePoint > 0x10FFFF || surrogate) return {0, 0};
    return {codePoint, length};
}

bool IsValidUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = DecodeUtf8(text).Length;
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

std::string ToCodePage(std::string_view utf8) {
    std::string bytes;
    bytes.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const TUtf8Character decoded = DecodeUtf8(utf8.substr(i));
        if (decoded.Length == 0) {
            bytes += utf8[i++];
            continue;
        }
        const std::optional<char> byte = ByteOf(decoded.CodePoint);
        if (!byte) return std::string(kUtf8Mark).append(utf8);
        bytes += *byte;
        i += decoded.Length;
    }
    // A text of the page that happens to begin with the mark would be read as UTF-8.
    if (bytes.starts_with(kUtf8Mark)) return std::string(kUtf8Mark).append(utf8);
    return bytes;
}

std::string FromCodePage(std::string_view bytes) {
    if (bytes.starts_with(kUtf8Mark)) {
        const std::string_view text = bytes.substr(kUtf8Mark.size());
        if (IsValidUtf8(text)) return std::string(text);
    }
    return DecodePage(bytes);
}

std::string_view CutUtf8(std::string_view text, std::size_t maxBytes) {
    if (text.size() <= maxBytes) return text;
    if (!IsValidUtf8(text)) return text.substr(0, maxBytes);
    while (maxBytes > 0 && (static_cast<unsigned char>(text[maxBytes]) & 0xC0) == 0x80) --maxBytes;
    return text.substr(0, maxBytes);
}

} // namespace lumoplot
