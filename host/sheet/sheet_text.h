// Sheets and cells as text: what a spreadsheet copies and pastes, and CSV files.
#pragma once

#include "host/sheet/sheet.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace lumoplot {

/// Rows end with LF, CR or CRLF; the separator is the tab, the semicolon or the comma, the first of them that
/// the first row has outside of quotes and that is no decimal sign there. A cell in double quotes may hold
/// all of these, quotes doubled.
TSheetCells CellsOf(std::string_view text);
TSheetCells CellsOf(std::string_view text, char separator);

/// Cells between tabs, quoted where that is needed.
std::string TextOf(const TSheetCells& cells, char separator = '\t');

enum class TSheetTitles {
    AsTyped,  ///< "P = U*I": a sheet that reads it back works it out again
    NamesOnly ///< for who reads data, with numbers that no other decimal sign makes others of
};

/// The whole sheet. AsTyped has a first row of titles in any case, NamesOnly where there are any. Columns
/// that are worked out have their values, and nothing where these are none.
TSheetCells CellsOf(const TSheet& sheet, TSheetTitles titles);

enum class TSheetTop {
    Titles, ///< the first row
    Found   ///< the first row has titles when one of its cells is a text that is no number
};

/// A sheet of the rows of a file. Columns that are worked out take nothing of their cells.
TSheet SheetOf(const std::string& name, const TSheetCells& cells, TSheetTop top);

/// All sheets as they are, for a recovery file, and back. Throws EFileError "The sheets are damaged".
std::vector<std::uint8_t> BytesOf(const std::vector<TSheet>& sheets);
std::vector<TSheet> SheetsOf(std::span<const std::uint8_t> bytes);

} // namespace lumoplot
