// Asks the user for the password of a database.
#pragma once

#include "controls/widgets_export.h"

#include <optional>
#include <string>

namespace lumoplot {

/// Nothing when the user gives none. Belongs into a TPasswordAskerScope.
XYWIDGETS_EXPORT std::optional<std::string> AskPassword(const std::string& connection,
                                                        const std::string& reason);

} // namespace lumoplot
