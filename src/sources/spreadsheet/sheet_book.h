// A spreadsheet file (.xlsx, .ods) as its sheets with the values of their cells as text: numbers with all
// digits that the file has, dates as 2024-01-31, times as 12:30:05, formulas as the values that were kept
// with them, or as themselves where there are none.
#pragma once

#include "sources/packed/zip_archive.h"
#include "sources/spreadsheet/sheet_place.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace lumoplot {

/// Sheets have no more than that, whatever a file claims.
inline constexpr std::int64_t kMostSheetRows = 1 << 20;
inline constexpr std::size_t kMostSheetColumns = 1 << 14;

struct TSheetCell {
    std::string text;     ///< UTF-8
    bool isValue = false; ///< a number, a date or a time
};

/// Texts of a row are no longer together.
inline constexpr std::size_t kMostRowText = std::size_t{4} << 20;

/// A pass over the rows of a sheet.
class TSheetRows {
public:
    virtual ~TSheetRows() = default;
    /// The next row of the file; false behind the last one. A row repeats when `repeats` is above 1, and rows
    /// between it and the one before are empty. Cells at its end that are empty are left out. Throws
    /// EFileError with reasons that stand behind "File NAME".
    virtual bool Next(std::vector<TSheetCell>& cells, std::int64_t& number, std::int64_t& repeats) = 0;
    /// Bytes of the sheet that have been unpacked.
    virtual std::int64_t Unpacked() const = 0;
};

class TSpreadsheetBook {
public:
    virtual ~TSpreadsheetBook() = default;
    /// Null behind the last one. Of an .ods file the sheets in front of it are unpacked for that.
    virtual const TBookSheet* Sheet(std::size_t index) = 0;
    /// The book must outlive the pass.
    virtual std::unique_ptr<TSheetRows> Rows(std::size_t sheet) = 0;
    /// Bytes of the unpacked sheet.
    virtual std::int64_t Size(std::size_t sheet) const = 0;
};

/// Null when the archive is no spreadsheet. Throws EFileError.
std::unique_ptr<TSpreadsheetBook> OpenXlsx(std::shared_ptr<TZipArchive> archive);
std::unique_ptr<TSpreadsheetBook> OpenOds(std::shared_ptr<TZipArchive> archive);

} // namespace lumoplot
