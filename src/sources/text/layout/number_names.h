// Rows of numbers that name the columns below them: years, channels, wavelengths.
#pragma once

#include "sources/text/layout/sample_table.h"

#include <optional>
#include <vector>

namespace lumoplot {

/// Whether whole numbers above columns of decimals are names.
enum class TNumberNames {
    None,
    Perhaps, ///< they may as well be the first row
    Likely
};

/// The numbers of the row from the column `first` on, without empty cells and texts; nothing unless
/// all are whole.
std::vector<double> WholeNumbers(const TSampleRow& row, std::size_t first);

/// What the first row of the table is that is whole numbers above decimals: the names of all columns, or of
/// all but the first.
TNumberNames NamesAboveDecimals(const TSampleTable& table, std::size_t index);

/// The row has numbers for names: those behind it are not like it.
bool IsNamedByNumbers(const TSampleTable& table, std::size_t index);

/// How many header rows there are when the row of whole numbers that `headerRows` ends with, or that stands
/// behind them, is taken for what it is not there.
std::optional<std::size_t> OtherHeaderRows(const TSampleTable& table, std::size_t headerRows);

} // namespace lumoplot
