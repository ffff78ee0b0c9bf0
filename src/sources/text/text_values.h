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
    explicit TRowValues(const TTextFormat& format);

    /// X of the row; `dataRow` is its number among the data rows, from 1. False with a problem when a cell is
    /// missing, empty, no number or date, or beyond the range of doubles: nothing becomes 0.
    bool ReadX(std::span<const TTextCell> cells, std::int64_t dataRow, double& x, TRowProblem& problem) const;
    /// The same for Y, which may be infinite, or not a number as ParseNotFinite says.
    bool ReadY(std::span<const TTextCell> cells, double& y, TRowProblem& problem) const;
    /// The same for any column, by what it holds.
    bool ReadColumn(std::span<const TTextCell> cells, int column, double& value, TRowProblem& problem) const;

private:
    /// One cell as a number or, of a column of dates, as days since 1899-12-30.
    bool ReadCell(std::span<const TTextCell> cells, int column, TColumnFormat kind, double& value,
                  TRowProblem& problem) const;

    const char* ReadNumberCell(const TTextCell& cell, int column, double& value) const;
    const char* ReadDateCell(const TTextCell& cell, int column, double& value) const;
    const TTextColumn& Column(int column) const;
    std::string Quoted(const TTextCell& cell) const;

    const TTextFormat& m_format;
    std::size_t m_least = 0; ///< cells that a row has when no column but texts can be missing
};

/// Lets times of day run on behind midnight. Begins with the first row.
class TTimeRun {
public:
    explicit TTimeRun(TMidnight midnight) : m_runsOn(midnight == TMidnight::RunsOn) {}
    /// The time of the next row, in days.
    double Next(double time);

private:
    bool m_runsOn;
    double m_last = -1e9;
    double m_days = 0;
};

} // namespace lumoplot
