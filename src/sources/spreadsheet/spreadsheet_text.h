// A sheet of a spreadsheet file as text in UTF-8: a line for each row of the sheet, tabs between its cells,
// cells with tabs, quotes or line ends in quotes. Rows are unpacked as they are read.
#pragma once

#include "sources/packed/packed_text.h"
#include "sources/spreadsheet/sheet_book.h"

#include <QFile>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace lumoplot {

class TSpreadsheetText final : public TPackedText {
public:
    /// Null when the file, which is opened, is no spreadsheet of a known kind; else it is taken. Throws
    /// EFileError with reasons that stand behind "File NAME": "is protected with a password: …", "has no
    /// sheet "S" but …", "is damaged: …".
    static std::unique_ptr<TSpreadsheetText> Open(std::unique_ptr<QFile>& file, const std::string& sheet);

    const std::string& SheetName() const { return m_sheetName; }
    /// A number with a decimal point has been read.
    bool HasDecimalPoint() const { return m_hasPoint; }
    qint64 RawPosition() const override;
    qint64 RawSize() const override { return m_size; }
    bool seek(qint64 position) override;

protected:
    qint64 readData(char* data, qint64 capacity) override;

private:
    TSpreadsheetText(std::unique_ptr<TSpreadsheetBook> book, std::size_t sheet);
    void Restart();
    void KeepFront(std::string_view text);
    void Fill();
    bool NextRow();
    void AppendRow();
    void AppendCell(const std::string& text);

    std::unique_ptr<TSpreadsheetBook> m_book;
    std::size_t m_sheet;
    std::string m_sheetName;
    qint64 m_size;
    std::unique_ptr<TSheetRows> m_rows;
    std::vector<TSheetCell> m_cells;
    std::string m_text; ///< rows that are not given yet, from m_given on
    std::size_t m_given = 0;
    std::int64_t m_repeats = 0;   ///< so often the row of cells is still to be put into the text
    std::int64_t m_lastRow = 0;   ///< that has been looked at
    std::int64_t m_emptyRows = 0; ///< that are put there when another one follows
    std::size_t m_width = 0;      ///< of the widest row so far
    std::int64_t m_total = 0;     ///< of bytes of text
    bool m_hasPoint = false;
    bool m_isAtEnd = false;
    std::string m_problem;
    std::string m_front;      ///< all the text that was given, while it is short
    bool m_isFrontAll = true; ///< it still is
    std::size_t m_replayed = 0;
};

} // namespace lumoplot
