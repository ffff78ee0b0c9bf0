// The names of units, as far as they tell a row of units from a row of names.
#pragma once

#include <string_view>

namespace lumoplot {

/// "mV", "[s]", "(°C)", "%", "1/cm", …
bool IsUnitName(std::string_view text);

/// Without the brackets around it.
std::string_view WithoutBrackets(std::string_view text);

} // namespace lumoplot
