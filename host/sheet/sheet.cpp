#include "host/sheet/sheet.h"

#include "support/errors.h"
#include "support/number_text.h"

#include <algorithm>

namespace lumoplot {
namespace {

// Where "=" parts a name from a formula, or npos.
std::size_t EqualsOf(const std::string& title) {
    const std::size_t equals = title.find('=');
    if (equals == std::string::npos || Trimmed(title.substr(equals + 1)).empty()) return std::string::npos;
    return equals;
}

} // namespace

std::string TSheetColumn::Name() const {
    const std::size_t equals = EqualsOf(title);
    return std::string(Trimmed(equals == std::string::npos ? title : title.substr(0, equals)));
}

std::string TSheetColumn::Formula() const {
    const std::size_t equals = EqualsOf(title);
    return equals == std::string::npos ? std::string() : std::string(Trimmed(title.substr(equals + 1)));
}

int TSheet::RowCount() const {
    std::size_t rows = 0;
    for (const auto& column : m_columns) {
        std::size_t used = column->cells.size();
        while (used > rows && column->cells[used - 1].empty()) --used;
        rows = std::max(rows, used);
    }
    return static_cast<int>(rows);
}

const std::string& TSheet::Cell(int row, int column) const {
    static const std::string none;
    if (row < 0 || column < 0 || column >= ColumnCount()) return none;
    const auto& cells = Column(column).cells;
    const auto place = static_cast<std::size_t>(row);
    return place < cells.size() ? cells[place] : none;
}

void TSheet::RequireRoom(int rows, int columns) const {
    if (rows > kMostRows) throw EFileError("A sheet has at most " + std::to_string(kMostRows) + " rows");
    if (columns > kMostColumns)
        throw EFileError("A sheet has at most " + std::to_string(kMostColumns) + " columns");
}

// A column of this sheet's own, to be changed.
TSheetColumn& TSheet::Open(int column) {
    RequireRoom(0, column + 1);
    while (ColumnCount() <= column) m_columns.push_back(std::make_shared<const TSheetColumn>());
    auto own = std::make_shared<TSheetColumn>(Column(column));
    TSheetColumn& opened = *own;
    m_columns[static_cast<std::size_t>(column)] = std::move(own);
    return opened;
}

void TSheet::SetTitle(int column, const std::string& title) {
    if (column < ColumnCount() ? Column(column).title == title : title.empty()) return;
    Open(column).title = title;
}

void TSheet::SetCell(int row, int column, const std::string& text) {
    if (Cell(row, column) == text) return;
    Paste(row, column, {{text}});
}

void TSheet::Paste(int row, int column, const TSheetCells& cells) {
    std::size_t width = 0;
    for (const auto& line : cells) width = std::max(width, line.size());
    RequireRoom(row + static_cast<int>(cells.size()), column + static_cast<int>(width));
    for (std::size_t i = 0; i < width; ++i) {
        auto& target = Open(column + static_cast<int>(i)).cells;
        target.resize(std::max(target.size(), static_cast<std::size_t>(row) + cells.size()));
        for (std::size_t line = 0; line < cells.size(); ++line)
            if (i < cells[line].size()) target[static_cast<std::size_t>(row) + line] = cells[line][i];
    }
}

void TSheet::Clear(int row, int column, int rows, int columns) {
    for (int i = column; i < std::min(column + columns, ColumnCount()); ++i) {
        auto& cells = Open(i).cells;
        const auto end =
            std::min(cells.size(), static_cast<std::size_t>(row) + static_cast<std::size_t>(rows));
        for (auto place = static_cast<std::size_t>(row); place < end; ++place) cells[place].clear();
    }
}

void TSheet::InsertRows(int row, int count) {
    RequireRoom(RowCount() + count, 0);
    for (int i = 0; i < ColumnCount(); ++i) {
        if (Column(i).cells.size() <= static_cast<std::size_t>(row)) continue;
        auto& cells = Open(i).cells;
        cells.insert(cells.begin() + row, static_cast<std::size_t>(count), std::string());
    }
}

void TSheet::DeleteRows(int row, int count) {
    for (int i = 0; i < ColumnCount(); ++i) {
        if (Column(i).cells.size() <= static_cast<std::size_t>(row)) continue;
        auto& cells = Open(i).cells;
        const auto end = std::min(static_cast<int>(cells.size()), row + count);
        cells.erase(cells.begin() + row, cells.begin() + end);
    }
}

void TSheet::InsertColumn(int column) {
    RequireRoom(0, ColumnCount() + 1);
    if (column >= ColumnCount()) return;
    m_columns.insert(m_columns.begin() + column, std::make_shared<const TSheetColumn>());
}

void TSheet::DeleteColumn(int column) {
    if (column < ColumnCount()) m_columns.erase(m_columns.begin() + column);
}

bool TSheet::operator==(const TSheet& other) const {
    return m_name == other.m_name &&
           std::ranges::equal(m_columns, other.m_columns,
                              [](const auto& a, const auto& b) { return a == b || *a == *b; });
}

std::size_t TSheet::BytesBeside(const TSheet* earlier) const {
    std::size_t bytes = sizeof(*this);
    for (const auto& column : m_columns) {
        if (earlier && std::ranges::find(earlier->m_columns, column) != earlier->m_columns.end()) continue;
        bytes += sizeof(TSheetColumn) + column->cells.capacity() * sizeof(std::string);
    }
    return bytes;
}

} // namespace lumoplot
