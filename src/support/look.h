// Colours and fonts as files and settings hold them.
#pragma once

#include <cstdint>
#include <string>

namespace lumoplot {

/// 0x00BBGGRR, red in the lowest byte.
using TColor = std::int32_t;

constexpr TColor MakeColor(int red, int green, int blue) {
    return red | (green << 8) | (blue << 16);
}
constexpr int RedOf(TColor color) {
    return color & 0xFF;
}
constexpr int GreenOf(TColor color) {
    return (color >> 8) & 0xFF;
}
constexpr int BlueOf(TColor color) {
    return (color >> 16) & 0xFF;
}

inline constexpr TColor kBlack = MakeColor(0, 0, 0);
inline constexpr TColor kWhite = MakeColor(255, 255, 255);
inline constexpr TColor kSilver = MakeColor(192, 192, 192);
inline constexpr TColor kGray = MakeColor(128, 128, 128);
inline constexpr TColor kRed = MakeColor(255, 0, 0);
inline constexpr TColor kGreen = MakeColor(0, 128, 0);
inline constexpr TColor kBlue = MakeColor(0, 0, 255);
inline constexpr TColor kNavy = MakeColor(0, 0, 128);
inline constexpr TColor kMaroon = MakeColor(128, 0, 0);
inline constexpr TColor kLime = MakeColor(0, 255, 0);
inline constexpr TColor kOlive = MakeColor(128, 128, 0);
inline constexpr TColor kFuchsia = MakeColor(255, 0, 255);
inline constexpr TColor kAqua = MakeColor(0, 255, 255);
inline constexpr TColor kTeal = MakeColor(0, 128, 128);
inline constexpr TColor kPurple = MakeColor(128, 0, 128);
inline constexpr TColor kSkyBlue = MakeColor(166, 202, 240);
inline constexpr TColor kMoneyGreen = MakeColor(192, 220, 192);

/// Sizes are character heights in pixels of 1/96 inch, so a graph looks the same on every screen and on
/// paper.
struct TFontSpec {
    std::string Name = "Arial";
    int Size = 9;
    TColor Color = kBlack;
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;
    bool StrikeOut = false;

    bool operator==(const TFontSpec&) const = default;
};

} // namespace lumoplot
