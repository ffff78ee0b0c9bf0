// Connections under names of the user's own, kept between runs for all programs of this system. They hold no
// passwords.
#pragma once

#include "support/export.h"

#include <optional>
#include <string>
#include <vector>

namespace lumoplot {

/// The names, sorted.
XYGRAPH_EXPORT std::vector<std::string> SavedConnectionNames();
/// Nothing for a name that is not known.
XYGRAPH_EXPORT std::optional<std::string> SavedConnection(const std::string& name);
/// Replaces the one of that name; an empty connection removes it.
XYGRAPH_EXPORT void SaveConnection(const std::string& name, const std::string& connection);

} // namespace lumoplot
