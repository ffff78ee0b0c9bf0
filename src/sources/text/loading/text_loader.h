// Loads points from a text file: streamed, so that memory does not grow with the file, thinned to a budget of
// points, and with a report of what became of the rows.
#pragma once

#include "sources/text/layout/text_detect.h"
#include "sources/text/row_formulas.h"
#include "support/progress.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace lumoplot {

struct TTextLoadOptions {
    /// While the description leaves the row sampling to us, as many rows are left out (every n-th is used) as
    /// makes at most so many points. 0: every row is used.
    int budget = 0;
    /// Reading ends, cancelled, when more rows than this are to become points. 0: there is no such limit.
    std::int64_t rowLimit = 0;
    TTextWishes wishes;
    /// Make X and Y of what is read, before rows are chosen by X. A row whose X or Y has no finite value then
    /// is skipped and reported, and so is one with a cell that a formula reads and that is no value.
    TFormulaTexts formulas;
    /// Called when what the sink has got is void, because the rows behind the first ones show that the file
    /// is to be read in another way; then all rows come again. Without it the first reading is kept.
    std::function<void()> restart;
};

struct TTextReport {
    static constexpr std::size_t kMaxMessages = 20;

    TTextReadings readings;
    std::int64_t rowsChosen = 0;        ///< data rows that the row choice lets through
    std::int64_t rowsUsed = 0;          ///< of them, those that became points
    std::int64_t rowsSkipped = 0;       ///< rows that were looked at and give no point
    std::int64_t rowsWithoutYError = 0; ///< used rows whose standard error of Y is none that can be used
    std::int64_t rowsWider = 0;         ///< rows that were read and have more cells than there are columns
    std::int64_t firstWider = 0;        ///< the first of them
    std::int64_t rowsMerged = 0; ///< used rows that share a point with another because their X are the same
    /// "row 7: 'abc' in column 2 (Voltage) is not a number" for the first kMaxMessages skipped rows.
    std::vector<std::string> messages;
    /// What the user should know of the reading: "read again as …: row 3170: …".
    std::vector<std::string> notes;
    std::string oddRows;       ///< rows that give no point, as they stand in the file; not all of many
    bool cancelled = false;    ///< nothing has been changed then
    bool isOverLimit = false;  ///< there are more rows than the limit
    int samplingFrequency = 1; ///< every so many rows one was used
    std::string yName; ///< header of the Y column; empty without one, and where Y is made of other columns
};

/// Takes the points in the order of the file. `yErrors` is empty where no column of standard errors was asked
/// for; 0 stands for none.
using TPointSink = std::function<void(std::span<const double> x, std::span<const double> y,
                                      std::span<const double> yErrors)>;

/// Reads the source as `info` describes it; the source name in `info` is not used. Row
/// numbers count every row of the file from 1: headers, comments and empty rows too. A row choice by number
/// includes both bounds, and an upper bound below 1 is none; one by X includes both bounds, in either order.
/// Throws EFileError when the file can not be read or gives no point at all; the sink may then have got
/// points. Throws EParserException "The expression for X can not be used: REASON" for a bad formula.
TTextReport LoadText(const TTextSource& source, const TDSInfo& info, const TTextLoadOptions& options,
                     const TPointSink& sink, TProgress& progress);

} // namespace lumoplot
