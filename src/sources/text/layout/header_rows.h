// Where the rows of a table begin in a text, and how the rows in front of them name its columns.
#pragma once

#include "sources/text/layout/sample_table.h"

#include <string>
#include <vector>

namespace lumoplot {

/// Rows in front of the first row of the data: one that fits the columns and is followed by rows of which
/// most fit too, or a row before it that would but for a bad cell.
std::size_t FindHeaderRows(const TSampleTable& table);

struct TColumnNames {
    std::vector<TTextCell> names; ///< empty where there are none; may be more than the table has columns
    std::vector<TTextCell> units; ///< those of a row of units below the names; empty without one
};

/// The names stand in the last row of texts in front of the data, above a row of units, or in the last
/// comment that has them; blank rows, lines and rows like "[Data]" may be between. `format` is the table's.
TColumnNames FindColumnNames(const TSampleTable& table, std::size_t headerRows, const TTextFormat& format);

} // namespace lumoplot
