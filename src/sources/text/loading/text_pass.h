// One pass over the rows of a text file: headers and rows outside the row choice are passed over, every n-th
// of the others is turned into a point.
#pragma once

#include "sources/text/fast_rows.h"
#include "sources/text/loading/text_loader.h"
#include "sources/text/row_formulas.h"
#include "sources/text/shared_rows.h"
#include "sources/text/text_values.h"
#include "sources/text/text_window.h"

#include <limits>
#include <memory>

namespace lumoplot {

class TTextPass {
public:
    /// As the sampling frequency: the rows are only counted.
    static constexpr int kCountOnly = 0;

    /// Everything is borrowed.
    TTextPass(TTextFile& file, const TTextFormat& format, const TDSInfo& info, TRowFormulas& formulas);

    /// For rows that come in pieces: Continue.
    TTextPass(const TTextFormat& format, const TDSInfo& info, TRowFormulas& formulas);

    /// The row choice needs the values of each row.
    bool ReadsEachRow() const { return m_byX; }

    /// Runs over the whole file; adds to the counts and messages of `report`.
    void Run(int samplingFrequency, const TPointSink& sink, TProgress& progress, TTextReport& report);

    /// Reads whole rows that follow those of the calls before, every n-th; adds to `report`.
    void Continue(std::string_view rows, int samplingFrequency, const TPointSink& sink, TTextReport& report);

private:
    static constexpr std::size_t kBlockRows = 2048;

    void Start(int samplingFrequency, const TPointSink& sink, TTextReport& report);
    const char* TakeRows(const TTextWindow& window);
    void ShareRows(const TTextWindow& window, const char* text);
    const TRowsPiece* NextPiece(const char* text);
    const char* TakePiece(const TRowsPiece& piece);
    void SinkPieces();
    const char* TakeRow(const char* text, const char* end, TTextEnd textEnd);
    const char* TakeFastRows(const char* text);
    bool IsPlainData(const char* text) const;
    bool IsFast(const char* text) const;
    const char* TakeSplitRow(const char* text, const char* end, TTextEnd textEnd);
    const char* PassRow(const char* text, const char* end, TTextEnd textEnd);
    bool UsesRow() const { return m_byX || (m_untilHit == 0 && m_frequency != kCountOnly); }
    bool IsHit();
    void NoteWidth();
    void KeepOddRow(const char* text, const TTextRow& row);
    bool ReadRow(double& x, double& y, TRowProblem& problem);
    double ReadYError();
    void Add(double x, double y);
    void ApplyFormulas(std::span<double> x, std::span<double> y);
    void Flush();
    bool Keep(std::size_t index);
    void Skip(std::int64_t row, const std::string& text);

    TTextFile* m_file = nullptr; ///< null for rows that come in pieces
    const TTextFormat& m_format;
    TRowFormulas& m_formulas;
    bool m_changes; ///< there are formulas
    TRowSplitter m_splitter;
    TRowValues m_values;
    TFastRows m_fastRows;
    std::int64_t m_firstRow = 1;
    std::int64_t m_lastRow = std::numeric_limits<std::int64_t>::max();
    bool m_byX = false;
    double m_minX = 0;
    double m_maxX = 0;

    // The state of a pass.
    const TPointSink* m_sink = nullptr;
    TTextReport* m_report = nullptr;
    int m_frequency = 1;
    int m_untilHit = 0;                      ///< rows to leave out before the next that is used
    std::int64_t m_row = 1;                  ///< number of the next row in the file
    std::int64_t m_dataRow = 0;              ///< number of the last data row among the data rows
    const char* m_linesEnd = nullptr;        ///< behind the last line of the window that is whole
    const char* m_fastEnd = nullptr;         ///< as far as this thread reads plain rows: where a piece begins
    bool m_hasQuotes = false;                ///< in the window
    std::unique_ptr<TSharedRows> m_shared;   ///< once there was enough to share
    std::span<const TRowsPiece> m_pieces;    ///< of the window, that are still to come
    std::vector<const TRowsPiece*> m_unsunk; ///< in front of the block
    TTimeRun m_timeRun;
    std::vector<TTextCell> m_cells;
    std::size_t m_count = 0; ///< rows in the block that is being filled
    std::vector<double> m_x;
    std::vector<double> m_y;
    std::vector<std::int64_t> m_rows;
    std::vector<double> m_dataRows;             ///< filled when the formulas read it
    std::vector<double> m_yErrors;              ///< filled when a column of them is asked for
    std::vector<std::vector<double>> m_columns; ///< those that the formulas read
};

} // namespace lumoplot
