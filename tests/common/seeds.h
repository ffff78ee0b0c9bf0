// How many random cases a property is tried on: few with every run of the tests, more by the environment.
#pragma once

#include <algorithm>
#include <cstdlib>

namespace lumoplot {

/// `usual`, times the variable LUMOPLOT_SEEDS where it is set.
inline unsigned Seeds(unsigned usual) {
    const char* times = std::getenv("LUMOPLOT_SEEDS");
    return usual * static_cast<unsigned>(std::clamp(times ? std::atoi(times) : 1, 1, 10000));
}

} // namespace lumoplot
