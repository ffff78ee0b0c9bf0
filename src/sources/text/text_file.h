// A text file read from front to end in pieces, as 8-bit text whatever its encoding: UTF-16 arrives as UTF-8,
// the 8-bit encodings as they are. The file is read, not mapped: one that shrinks meanwhile is an error for
// who reads it, not a crash.
#pragma once

#include "sources/packed/packed_text.h"
#include "sources/text/text_format.h"

#include <QFile>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumoplot {

class TSpreadsheetText;

/// The encoding that the first bytes of a file show: by its mark, by zeros at every other place, by being
/// UTF-8.
TTextEncoding FindEncoding(std::string_view firstBytes);

/// Where a text comes from: a file, or memory.
struct TTextSource {
    /// A file by its name (UTF-8); a sheet of a spreadsheet file as "book.xlsx#Sheet".
    TTextSource(std::string fileName) : Name(std::move(fileName)) {}
    /// A text in memory, under the name that messages give it.
    TTextSource(std::string name, std::string text) : Name(std::move(name)), Text(std::move(text)) {}

    std::string Name;
    std::optional<std::string> Text; ///< none: the file of that name is read
};

class TTextFile {
public:
    /// Opens the source and finds its encoding; of a gzip or Zstandard file what is in it is read, of a
    /// spreadsheet file its sheet, with tabs between the cells. Throws EFileError "Can not open file NAME:
    /// …", "File NAME is empty", "File NAME is no text file but …" and what a spreadsheet file is refused
    /// with.
    explicit TTextFile(const TTextSource& source);

    const std::string& Name() const { return m_name; }
    TTextEncoding Encoding() const { return m_encoding; }
    /// The name of the sheet that is read; none of a text.
    const std::optional<std::string>& Sheet() const { return m_sheetName; }
    /// A sheet has numbers with a decimal point in what has been read of it.
    bool HasSheetPoint() const;
    /// Bytes in the file when it was opened, and how many of them have been read; compressed ones where it
    /// is.
    std::int64_t Size() const { return m_size; }
    std::int64_t Position() const;
    /// `wanted` characters, or as many as the file has at most, if they are fewer: for the size of a buffer.
    std::size_t AtMost(std::size_t wanted) const;

    /// Starts again at the front, behind the byte order mark, reading it in that encoding.
    void Restart(TTextEncoding encoding);
    /// Reads up to `capacity` (at least 16) characters of 8-bit text and returns how many; 0 at the end of
    /// the file. Position() is below Size() at the end of a file that has become shorter. Throws EFileError
    /// "Can not read file NAME: …".
    std::size_t Read(char* text, std::size_t capacity);

    /// The whole lines in about so many bytes at a place of the file; empty where the file can not be read
    /// from there. The next Read must be behind a Restart.
    std::string LinesAt(std::int64_t position, std::size_t length);

private:
    void Open(const TTextSource& source);
    std::unique_ptr<TPackedText> OpenSheet(std::unique_ptr<QFile>& file, const std::string& sheet);
    std::size_t ReadBytes(char* bytes, std::size_t capacity);
    std::size_t ReadUtf16(char* text, std::size_t capacity);
    char* TakeUnit(char16_t unit, char* text);

    std::string m_name;
    std::unique_ptr<QIODevice> m_file;
    const TPackedText* m_packed = nullptr; ///< that file when it is another kind of file with text in it
    const TSpreadsheetText* m_sheet = nullptr;
    std::optional<std::string> m_sheetName;
    TTextEncoding m_encoding = TTextEncoding::Utf8;
    std::int64_t m_size = 0;
    std::int64_t m_position = 0;
    std::vector<char> m_units;
    int m_heldByte = -1;     ///< first half of a UTF-16 unit that a piece ended with
    char16_t m_heldUnit = 0; ///< first half of a surrogate pair
};

} // namespace lumoplot
