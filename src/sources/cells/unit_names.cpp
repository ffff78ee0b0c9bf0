#include "sources/cells/unit_names.h"

#include "support/number_text.h"

#include <algorithm>
#include <array>

namespace lumoplot {
namespace {

/// Units that take a prefix, and those that take none.
constexpr std::array<std::string_view, 26> kUnits = {"s",  "m",   "g", "V",   "A",  "W",  "Hz", "Ohm", "ohm",
                                                     "Pa", "bar", "N", "J",   "eV", "F",  "H",  "T",   "S",
                                                     "K",  "l",   "L", "mol", "M",  "Bq", "Gy", "cal"};
constexpr std::array<std::string_view, 62> kWhole = {
    "%",       "ppm",   "ppb", "min",        "h",    "hr",    "hrs",     "hour",   "hours", "sec",  "seconds",
    "minutes", "days",  "day", "d",          "a",    "yr",    "C",       "degC",   "F",     "degF", "deg",
    "rad",     "rpm",   "AU",  "a.u.",       "a.u",  "arb.",  "cps",     "counts", "dB",    "dBm",  "pH",
    "lx",      "lm",    "cd",  "psi",        "mmHg", "atm",   "Torr",    "torr",   "mbar",  "hPa",  "in",
    "inch",    "ft",    "mi",  "mph",        "kmh",  "knots", "lb",      "lbs",    "oz",    "gal",  "cm-1",
    "1/cm",    "cm^-1", "AU.", "arb. units", "n/a",  "none",  "unitless"};

bool IsPlainUnit(std::string_view text) {
    if (std::ranges::find(kWhole, text) != kWhole.end()) return true;
    for (const std::string_view prefix :
         {"", "k", "M", "G", "m", "u", "n", "p", "f", "c", "d", "h", "\xC2\xB5", "\xCE\xBC", "\xB5"})
        if (text.starts_with(prefix) && std::ranges::find(kUnits, text.substr(prefix.size())) != kUnits.end())
            return true;
    return false;
}

} // namespace

std::string_view WithoutBrackets(std::string_view text) {
    constexpr std::string_view kOpening = "[({<";
    constexpr std::string_view kClosing = "])}>";
    if (text.size() < 2) return text;
    const std::size_t kind = kOpening.find(text.front());
    const bool isBracketed = kind != std::string_view::npos && text.back() == kClosing[kind];
    return isBracketed ? Trimmed(text.substr(1, text.size() - 2)) : text;
}

bool IsUnitName(std::string_view text) {
    const std::string_view plain = WithoutBrackets(text);
    if (plain.size() != text.size()) return true;
    if (plain.empty() || plain.size() > 16) return false;
    const bool hasSign = plain.find("\xC2\xB0") != std::string_view::npos ||     // °
                         plain.find("\xE2\x84\xA6") != std::string_view::npos || // Ω
                         plain.find("\xCE\xA9") != std::string_view::npos || plain.front() == '\xB0';
    if (hasSign || IsPlainUnit(plain)) return true;
    // Products, quotients and powers of units: "m/s2", "V*s", "W/m^2".
    const std::size_t joint = plain.find_first_of("/*^.");
    if (joint == std::string_view::npos || joint == 0) {
        const bool isPower = plain.size() > 1 && (plain.back() == '2' || plain.back() == '3');
        return isPower && IsPlainUnit(plain.substr(0, plain.size() - 1));
    }
    return IsPlainUnit(plain.substr(0, joint));
}

} // namespace lumoplot
