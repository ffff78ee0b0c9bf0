// From the rows of the manual grid to the points of a data set.
#pragma once

#include "data/series/ds_info.h"
#include "dialog/manual/manual_rows.h"
#include "support/errors.h"

namespace lumoplot {

/// A cell of the grid that is no value: "Row 12: 'abc' is not a valid floating point value".
class EManualCell : public EConvertError {
public:
    EManualCell(std::size_t row, int column, const std::string& reason)
        : EConvertError("Row " + std::to_string(row + 1) + ": " + reason), Row(row), Column(column) {}

    std::size_t Row; ///< from 0
    int Column;      ///< 0 for X, 1 for Y, 2 for its error
};

/// Why the text of a cell is no value, or nothing. X must be finite, and an error of Y above 0. An empty text
/// is no value, and no error.
std::string ReasonAgainst(const QString& text, int column, TColumnFormat xFormat);

struct TManualPoints {
    TPointChain Points;
    int Merged = 0;            ///< rows that were lost to others with the same X
    bool EditsYErrors = false; ///< some error of Y was typed in
};

/// What becomes of `current` when the edits are carried out on it: points of untouched rows keep their Ids
/// and what was derived from them, a row whose X was not changed keeps its Id. Rows without any text are
/// left out. Throws EManualCell for the first cell that is no value.
TManualPoints PointsOf(const TManualRows& rows, TColumnFormat xFormat, const TPointChain& current,
                       const TMergeRule& rule);

} // namespace lumoplot
