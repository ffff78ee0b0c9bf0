// Decimal numbers as engines print them, and whether doubles hold them.
#pragma once

#include <optional>
#include <string_view>

namespace lumoplot {

struct TDecimal {
    double value = 0;
    bool isRounded = false; ///< the nearest double has other digits
};

/// Nothing for a text that is no finite number.
std::optional<TDecimal> DecimalOf(std::string_view text);

} // namespace lumoplot
