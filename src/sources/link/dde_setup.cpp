#include "sources/link/dde_setup.h"

#include <algorithm>

namespace lumoplot {
namespace {

constexpr std::size_t kLongestDdeName = 255;

} // namespace

std::optional<TDdeSetup> ParseDde(std::string_view address) {
    const std::size_t bar = address.find('|');
    const std::size_t mark = address.rfind('!');
    if (bar == std::string_view::npos || mark == std::string_view::npos || mark < bar) return std::nullopt;
    const std::string_view parts[] = {address.substr(0, bar), address.substr(bar + 1, mark - bar - 1),
                                      address.substr(mark + 1)};
    const auto isName = [](std::string_view part) { return !part.empty() && part.size() <= kLongestDdeName; };
    if (!std::ranges::all_of(parts, isName)) return std::nullopt;
    return TDdeSetup{std::string(parts[0]), std::string(parts[1]), std::string(parts[2])};
}

} // namespace lumoplot
