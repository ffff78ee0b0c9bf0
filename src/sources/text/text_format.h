// How a text file is to be read: its encoding, how rows divide into cells, how cells become numbers, and
// which columns are X and Y. Found from the text by FindTextFormat (sources/text_detect.h).
#pragma once

#include "data/series/ds_info.h"
#include "sources/cells/text_date.h"
#include "sources/cells/text_number.h"
#include "support/export.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumoplot {

enum class TCellKind { Empty, Number, Date, TimeOfDay, Text };

/// Why a column of values is X or Y only when it is asked for.
enum class TColumnRole {
    Values,
    Counter, ///< it only counts the rows
    Constant,
    Settings ///< it has values beside the first rows only, among texts
};

struct TTextColumn {
    std::string name; ///< from the header rows, UTF-8; empty without one
    TCellKind kind = TCellKind::Empty;
    std::string unit; ///< from a row of units below the names, or from the cells; UTF-8
    TUnitMarks marks; ///< what stands around the number in each cell, as in the file
    TColumnRole role = TColumnRole::Values;
    /// Some cells are marks for values that are missing ("NA", "---"): beside these an infinity is one, too.
    bool hasMarks = false;

    /// "Absorbance (AU)": for an axis.
    std::string Title() const;

    bool operator==(const TTextColumn&) const = default;
};

/// Where the cells of a column stand in rows that are aligned by blanks: characters from 0, `end` behind the
/// last.
struct TTextField {
    int begin = 0;
    int end = 0;

    bool operator==(const TTextField&) const = default;
};

struct TTextFormat {
    /// As a column: X is the number of the data row, from 1.
    static constexpr int kRowNumber = -1;
    static constexpr int kNoColumn = -2;

    /// The sheet of a spreadsheet file that is read; none of a text.
    std::optional<std::string> sheet;
    TTextEncoding encoding = TTextEncoding::Utf8;
    /// Any of these characters ends a cell; a run of blanks or tabs counts as one when a blank is among them.
    /// Empty: the row is one cell.
    std::string separators;
    std::string quotes = "\"";
    int columnWidth = 0; ///< above 0 the cells are that many characters wide and have no separators or quotes
    char decimalSign = '.';
    TDateOrder dateOrder = TDateOrder::YearMonthDay;
    TShortTimes shortTimes = TShortTimes::HoursAndMinutes;
    TMidnight midnight = TMidnight::BeginsAgain;
    /// The columns of rows that are aligned by blanks; empty where each row has a cell for each column.
    std::vector<TTextField> fields;
    bool hasInlineComments = false; ///< what follows a blank and a comment mark is no part of the row
    int headerRows = 0; ///< rows of the file before the first data row, comments and empty rows among them
    bool trailingSeparator = false; ///< rows end with a separator behind which there is no column
    std::vector<TTextColumn> columns;

    int xColumn = kRowNumber; ///< from 0
    int yColumn = kNoColumn;  ///< from 0
    /// A column with a time of day that is added to the date in X, or kNoColumn.
    int timeColumn = kNoColumn;
    /// The column (from 0) of the standard errors of Y, or kNoColumn.
    int yErrorColumn = kNoColumn;
    TColumnFormat xFormat = TColumnFormat::Number;
    TColumnFormat yFormat = TColumnFormat::Number;

    bool operator==(const TTextFormat&) const = default;
};

/// One line for a user: "semicolon, decimal comma, 1 header row, UTF-8".
XYGRAPH_EXPORT std::string Describe(const TTextFormat& format);

/// "3 (Voltage)": a column counted from 0 as messages name it.
std::string ColumnText(const TTextFormat& format, int column);

/// Text of the file as UTF-8. Bytes that are no UTF-8 are taken as characters of the code page.
std::string ToDisplayText(std::string_view text, TTextEncoding encoding);

} // namespace lumoplot
