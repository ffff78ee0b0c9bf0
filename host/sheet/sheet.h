// A sheet of cells: columns of texts as a person types or pastes them, each under a title. A title "P = U*I"
// makes a column of values worked out from the others. A sheet is a value; copies share the columns that are
// alike.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace lumoplot {

struct TSheetColumn {
    std::string title;
    std::vector<std::string> cells; ///< from the first row; those behind are empty

    /// "P" of the title "P = U*I" and of "P".
    std::string Name() const;
    /// "U*I"; empty for a column that is typed.
    std::string Formula() const;

    bool operator==(const TSheetColumn&) const = default;
};

/// Rows of cells, of any number in each row.
using TSheetCells = std::vector<std::vector<std::string>>;

class TSheet {
public:
    static constexpr int kMostColumns = 1000;
    static constexpr int kMostRows = 10'000'000;

    explicit TSheet(std::string name = "Sheet 1") : m_name(std::move(name)) {}
    /// The same cells under another name.
    TSheet Named(std::string name) const {
        TSheet named = *this;
        named.m_name = std::move(name);
        return named;
    }

    const std::string& Name() const { return m_name; }
    int ColumnCount() const { return static_cast<int>(m_columns.size()); }
    /// Rows up to the last one that has a cell with something in it.
    int RowCount() const;
    const TSheetColumn& Column(int column) const { return *m_columns[static_cast<std::size_t>(column)]; }
    /// As it was typed; empty beyond the cells.
    const std::string& Cell(int row, int column) const;

    // Rows and columns count from 0; both grow as needed. Throws EFileError "A sheet has at most …" beyond.

    void SetTitle(int column, const std::string& title);
    void SetCell(int row, int column, const std::string& text);
    /// Puts the cells there, over what is there.
    void Paste(int row, int column, const TSheetCells& cells);
    void Clear(int row, int column, int rows, int columns);
    void InsertRows(int row, int count);
    void DeleteRows(int row, int count);
    void InsertColumn(int column);
    void DeleteColumn(int column);

    /// The same cells, shared or not.
    bool operator==(const TSheet& other) const;
    /// Bytes of the columns that `earlier` (may be null) has not.
    std::size_t BytesBeside(const TSheet* earlier) const;

private:
    TSheetColumn& Open(int column);
    void RequireRoom(int rows, int columns) const;

    std::string m_name;
    std::vector<std::shared_ptr<const TSheetColumn>> m_columns;
};

} // namespace lumoplot
