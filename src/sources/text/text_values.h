// Turns the cells of a row into X and Y, or says why it can not.
#pragma once

#include "sources/text/text_rows.h"

#include <cstdint>
#include <span>
#include <string>

namespace lumoplot {

/// Why a row gives no point.
struct TRowProblem {
    int column = TTextFormat::kNoColumn; ///< whose cell is at fault
    std::string text;                    ///< "'abc' in column 2 (Voltage) is not a number"
};

class TRowValues {
public:
    /// The format is borrowed.
    explicit TRowValues(const TTextFormat& format) : m_format(format) {}

    /// X of the row; `dataRow` is its number among the data rows, from 1. False with a problem when a cell is
    /// missing, empty, no number or date, or beyond the range of doubles: nothing becomes 0.
    bool ReadX(std::span<const TTextCell> cells, std::int64_t dataRow, double& x, TRowProblem& problem) const;
    /// The same for Y.
    bool ReadY(std::span<const TTextCell> cells, double& y, TRowProblem& problem) const;
    /// The same for any column, by what it holds.
    bool ReadColumn(std::span<const TTextCell> cells, int column, double& value, TRowProblem& problem) const;

private:
    /// One cell as a number or, of a column of dates, as days since 1899-12-30.
    bool ReadCell(std::span<const TTextCell> cells, int column, TColumnFormat kind, double& value,
                  TRowProblem& problem) const;

    const char* ReadNumberCell(const TTextCell& cell, double& value) const;
    const char* ReadDateCell(const TTextCell& cell, double& value) const;
    std::string Quoted(const TTextCell& cell) const;

    const TTextFormat& m_format;
};

} // namespace lumoplot
