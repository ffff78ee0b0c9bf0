// Columns that blanks align, found from where the words of the rows stand one below the other.
#pragma once

#include "sources/text/layout/sample_table.h"

#include <vector>

namespace lumoplot {

/// The columns of a table whose rows are divided by blanks, when its rows differ in their number of cells and
/// all of them are aligned; else nothing.
std::vector<TTextField> FindAlignedFields(const TSampleTable& table);

} // namespace lumoplot
