// The doubles that are no ordinary numbers.
#pragma once

#include <limits>

namespace lumoplot {

inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

} // namespace lumoplot
