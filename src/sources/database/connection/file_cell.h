// Cells of tables in files, made of the texts that stand in them.
#pragma once

#include "sources/database/connection/file_table.h"

#include <string_view>

namespace lumoplot {

/// The number that the text is, with a point or (as a library may write it) a comma, blanks around it
/// allowed; an empty text is no value, and what is no number stays a text.
TFileCell NumberCell(std::string_view text);

/// The text as UTF-8 without blanks behind it.
TFileCell TextCell(std::string_view text);

} // namespace lumoplot
