#include "host/sheet/sheet_text.h"

#include "host/sheet/sheet_values.h"
#include "support/errors.h"
#include "support/number_text.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace lumoplot {
namespace {

char SeparatorOf(std::string_view text) {
    bool isQuoted = false;
    bool isAtStart = true; // of a cell
    std::string_view found = "";
    for (const char c : text) {
        if (c == '"' && (isAtStart || isQuoted)) isQuoted = !isQuoted;
        isAtStart = c == '\t' || c == ';' || c == ',';
        if (isQuoted) continue;
        if (c == '\n' || c == '\r') break;
        if (c == '\t') return c;
        if (c == ';') found = ";";
        if (c == ',' && found.empty()) found = ",";
    }
    const bool isNumber = found == "," && TryParseFloat(text.substr(0, text.find_first_of("\r\n")));
    return found.empty() || isNumber ? '\t' : found.front();
}

// A quote opens a quoted cell at the beginning of a cell only.
class TCellReader {
public:
    TCellReader(std::string_view text, char separator) : m_text(text), m_separator(separator) {}

    TSheetCells All() {
        TSheetCells rows;
        while (m_place < m_text.size()) rows.push_back(Row());
        return rows;
    }

private:
    std::vector<std::string> Row() {
        std::vector<std::string> row;
        for (;;) {
            row.push_back(Cell());
            if (m_place >= m_text.size()) return row;
            const char end = m_text[m_place++];
            if (end == m_separator) continue;
            if (end == '\r' && m_place < m_text.size() && m_text[m_place] == '\n') ++m_place;
            return row;
        }
    }

    std::string Cell() {
        std::string cell;
        if (m_place < m_text.size() && m_text[m_place] == '"') TakeQuoted(cell);
        while (m_place < m_text.size() && !Ends(m_text[m_place])) cell += m_text[m_place++];
        return cell;
    }

    void TakeQuoted(std::string& cell) {
        for (++m_place; m_place < m_text.size(); ++m_place) {
            if (m_text[m_place] == '"' && (m_place + 1 >= m_text.size() || m_text[m_place + 1] != '"')) {
                ++m_place;
                return;
            }
            m_place += m_text[m_place] == '"';
            cell += m_text[m_place];
        }
    }

    bool Ends(char c) const { return c == m_separator || c == '\n' || c == '\r'; }

    std::string_view m_text;
    char m_separator;
    std::size_t m_place = 0;
};

std::string Quoted(const std::string& cell, char separator) {
    const bool isPlain =
        cell.find_first_of("\"\r\n") == std::string::npos && cell.find(separator) == std::string::npos;
    if (isPlain) return cell;
    std::string quoted = "\"";
    for (const char c : cell) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    return quoted + '"';
}

// "1.125" may be one thousand one hundred and twenty-five for who does not know that its point is a decimal
// sign.
std::string Ungrouped(std::string number) {
    constexpr std::size_t kGroup = 3;
    const std::size_t begin = number.find_first_not_of("+-");
    const std::size_t point = number.find('.');
    const bool isGroup = begin != std::string::npos && point != std::string::npos && point > begin &&
                         point - begin <= kGroup && number.size() - point - 1 == kGroup &&
                         number.find_first_not_of("0123456789", begin) == point &&
                         number.find_first_not_of("0123456789", point + 1) == std::string::npos;
    return isGroup ? number + '0' : number;
}

// A sheet takes point and comma for decimal signs, even in one column. Who reads it finds points alone, and
// no number that has another value where a comma is the sign.
std::string ForReaders(const std::string& cell) {
    if (cell.find_first_of(".,") == std::string::npos) return cell;
    const double value = SheetNumber(cell);
    if (std::isnan(value)) return cell;
    return Ungrouped(cell.find(',') == std::string::npos ? std::string(Trimmed(cell))
                                                         : FormatShortest(value));
}

bool IsTitle(const std::string& cell) {
    return !Trimmed(cell).empty() && !TryParseFloat(cell);
}

class TByteReader {
public:
    explicit TByteReader(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {}

    std::size_t Count() {
        Require(4);
        std::size_t count = 0;
        for (int i = 0; i < 4; ++i)
            count |= static_cast<std::size_t>(m_bytes[static_cast<std::size_t>(i)]) << (8 * i);
        m_bytes = m_bytes.subspan(4);
        return count;
    }
    std::string Text() {
        const std::size_t length = Count();
        Require(length);
        std::string text(m_bytes.begin(), m_bytes.begin() + static_cast<std::ptrdiff_t>(length));
        m_bytes = m_bytes.subspan(length);
        return text;
    }
    bool IsAtEnd() const { return m_bytes.empty(); }

private:
    void Require(std::size_t length) const {
        if (m_bytes.size() < length) throw EFileError("The sheets are damaged");
    }

    std::span<const std::uint8_t> m_bytes;
};

void AppendText(std::vector<std::uint8_t>& bytes, const std::string& text) {
    for (int i = 0; i < 4; ++i) bytes.push_back(static_cast<std::uint8_t>(text.size() >> (8 * i)));
    bytes.insert(bytes.end(), text.begin(), text.end());
}

} // namespace

TSheetCells CellsOf(std::string_view text) {
    return CellsOf(text, SeparatorOf(text));
}

TSheetCells CellsOf(std::string_view text, char separator) {
    return TCellReader(text, separator).All();
}

std::string TextOf(const TSheetCells& cells, char separator) {
    std::string text;
    for (const auto& row : cells) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (i > 0) text += separator;
            text += Quoted(row[i], separator);
        }
        text += '\n';
    }
    return text;
}

TSheetCells CellsOf(const TSheet& sheet, TSheetTitles titles) {
    TSheetCells cells;
    std::vector<std::string> first;
    for (int i = 0; i < sheet.ColumnCount(); ++i)
        first.push_back(titles == TSheetTitles::AsTyped ? sheet.Column(i).title : sheet.Column(i).Name());
    const bool isNamed = std::ranges::any_of(first, [](const auto& title) { return !title.empty(); });
    if (isNamed || titles == TSheetTitles::AsTyped) cells.push_back(first);
    const auto results = SheetResults(sheet);
    for (int row = 0; row < sheet.RowCount(); ++row) {
        std::vector<std::string> line;
        for (int i = 0; i < sheet.ColumnCount(); ++i) {
            const auto& result = results[static_cast<std::size_t>(i)];
            if (!result)
                line.push_back(titles == TSheetTitles::AsTyped ? sheet.Cell(row, i)
                                                               : ForReaders(sheet.Cell(row, i)));
            else if (!result->problem.empty() ||
                     !std::isfinite(result->values[static_cast<std::size_t>(row)]))
                line.emplace_back();
            else
                line.push_back(Ungrouped(FormatShortest(result->values[static_cast<std::size_t>(row)])));
        }
        cells.push_back(std::move(line));
    }
    return cells;
}

TSheet SheetOf(const std::string& name, const TSheetCells& cells, TSheetTop top) {
    TSheet sheet(name);
    const bool hasTitles =
        !cells.empty() && (top == TSheetTop::Titles || std::ranges::any_of(cells.front(), IsTitle));
    sheet.Paste(0, 0, TSheetCells(cells.begin() + (hasTitles ? 1 : 0), cells.end()));
    if (!hasTitles) return sheet;
    for (std::size_t i = 0; i < cells.front().size(); ++i) {
        const int column = static_cast<int>(i);
        sheet.SetTitle(column, cells.front()[i]);
        if (column < sheet.ColumnCount() && !sheet.Column(column).Formula().empty())
            sheet.Clear(0, column, sheet.RowCount(), 1);
    }
    return sheet;
}

std::vector<std::uint8_t> BytesOf(const std::vector<TSheet>& sheets) {
    std::vector<std::uint8_t> bytes;
    for (const TSheet& sheet : sheets) {
        AppendText(bytes, sheet.Name());
        TSheetCells columns;
        for (int i = 0; i < sheet.ColumnCount(); ++i) {
            columns.push_back({sheet.Column(i).title});
            columns.back().insert(columns.back().end(), sheet.Column(i).cells.begin(),
                                  sheet.Column(i).cells.end());
        }
        AppendText(bytes, TextOf(columns));
    }
    return bytes;
}

std::vector<TSheet> SheetsOf(std::span<const std::uint8_t> bytes) {
    std::vector<TSheet> sheets;
    TByteReader reader(bytes);
    while (!reader.IsAtEnd()) {
        TSheet sheet(reader.Text());
        const std::string text = reader.Text();
        int column = 0;
        for (auto& cells : CellsOf(text, '\t')) {
            TSheetCells rows;
            for (std::size_t i = 1; i < cells.size(); ++i) rows.push_back({std::move(cells[i])});
            sheet.Paste(0, column, rows);
            sheet.SetTitle(column++, cells.front());
        }
        sheets.push_back(std::move(sheet));
    }
    return sheets;
}

} // namespace lumoplot
