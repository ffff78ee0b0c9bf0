// What the formulas of a sheet's columns work out.
#pragma once

#include "host/sheet/sheet.h"

#include <optional>

namespace lumoplot {

/// Of one column with a formula.
struct TSheetResult {
    std::vector<double> values; ///< one a row of the sheet; not-a-number where a cell that is needed is none
    std::string problem;        ///< why there are none
};

/// One a column; nothing for a column that is typed. The names in a formula are those of columns, c1, c2, …
/// by their number, and row, which counts from 1; columns that are worked out may be used in others, in any
/// order, but not in a ring.
std::vector<std::optional<TSheetResult>> SheetResults(const TSheet& sheet);

/// A cell as a number, with decimal point or comma; not-a-number for another one.
double SheetNumber(const std::string& text);

} // namespace lumoplot
