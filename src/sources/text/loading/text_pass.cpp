#include "sources/text/loading/text_pass.h"

#include "data/points/point_block.h"
#include "sources/cells/decimal.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace lumoplot {
namespace {

std::int64_t RowBound(double value) {
    constexpr double kLargest = 9e15;
    return static_cast<std::int64_t>(std::clamp(std::isnan(value) ? 0.0 : value, -kLargest, kLargest));
}

const char* BehindLastLineEnd(const char* begin, const char* end) {
    while (end > begin && end[-1] != '\n' && end[-1] != '\r') --end;
    return end;
}

const char* BehindLineEnd(const char* lineEnd) {
    return lineEnd + (lineEnd[0] == '\r' && lineEnd[1] == '\n' ? 2 : 1);
}

} // namespace

TTextPass::TTextPass(TTextFile& file, const TTextFormat& format, const TDSInfo& info, TRowFormulas& formulas)
    : TTextPass(format, info, formulas) {
    m_file = &file;
}

TTextPass::TTextPass(const TTextFormat& format, const TDSInfo& info, TRowFormulas& formulas)
    : m_format(format), m_formulas(formulas), m_changes(formulas.ChangeX() || formulas.ChangeY()),
      m_splitter(format), m_values(format), m_fastRows(format, m_splitter),
      m_firstRow(format.headerRows + std::int64_t{1}), m_timeRun(format.midnight) {
    if (info.RowChoiceMode() == TRowChoice::ByNumber) {
        m_firstRow = std::max(m_firstRow, RowBound(std::ceil(info.RowChoiceValue1())));
        if (info.RowChoiceValue2() >= 1) m_lastRow = RowBound(info.RowChoiceValue2());
    }
    m_byX = info.RowChoiceMode() == TRowChoice::ByX || format.midnight == TMidnight::RunsOn;
    if (info.RowChoiceMode() != TRowChoice::ByX) {
        m_minX = -std::numeric_limits<double>::infinity();
        m_maxX = -m_minX;
        return;
    }
    m_minX = std::min(info.RowChoiceValue1(), info.RowChoiceValue2());
    m_maxX = std::max(info.RowChoiceValue1(), info.RowChoiceValue2());
}

void TTextPass::Start(int samplingFrequency, const TPointSink& sink, TTextReport& report) {
    m_sink = &sink;
    m_report = &report;
    m_frequency = samplingFrequency;
    m_untilHit = 0;
    m_row = 1;
    m_dataRow = 0;
    m_count = 0;
    m_pieces = {};
    m_unsunk.clear();
    m_timeRun = TTimeRun(m_format.midnight);
    m_x.resize(kBlockRows);
    m_y.resize(kBlockRows);
    m_rows.resize(kBlockRows);
    if (m_formulas.NeedsRow()) m_dataRows.resize(kBlockRows);
    if (m_format.yErrorColumn != TTextFormat::kNoColumn) m_yErrors.resize(kBlockRows);
    m_columns.assign(m_formulas.Columns().size(), std::vector<double>(kBlockRows));
}

void TTextPass::Run(int samplingFrequency, const TPointSink& sink, TProgress& progress, TTextReport& report) {
    Start(samplingFrequency, sink, report);
    TTextWindow window(*m_file, m_format.encoding, m_splitter.Quotes());
    window.ReadAhead();
    for (;;) {
        const char* rest = TakeRows(window);
        const bool done = m_row > m_lastRow || window.TextEnd() == TTextEnd::File;
        if (!progress.StepTo(window.Position())) {
            report.cancelled = true;
            return;
        }
        if (done) break;
        window.Slide(rest, m_row);
    }
    Flush();
}

void TTextPass::Continue(std::string_view rows, int samplingFrequency, const TPointSink& sink,
                         TTextReport& report) {
    if (!m_report) Start(samplingFrequency, sink, report);
    m_sink = &sink;
    m_report = &report;
    TakeRows(TTextWindow(rows, m_splitter.Quotes()));
    Flush();
}

// Takes the rows of the window that are whole and returns where the rest begins.
const char* TTextPass::TakeRows(const TTextWindow& window) {
    const char* text = window.Begin();
    const char* end = window.End();
    m_linesEnd = BehindLastLineEnd(text, end);
    // Half of a CRLF may follow.
    if (m_linesEnd == end && m_linesEnd > text && end[-1] == '\r')
        m_linesEnd = BehindLastLineEnd(text, end - 1);
    m_hasQuotes = window.HasQuotes();
    ShareRows(window, text);
    while (text < end && m_row <= m_lastRow) {
        const TRowsPiece* piece = NextPiece(text);
        m_fastEnd = piece ? piece->begin : m_linesEnd;
        if (piece && text == piece->begin)
            text = TakePiece(*piece);
        else if (IsFast(text))
            text = TakeFastRows(text);
        if (piece && (text == piece->begin || text == piece->end)) continue;
        if (text == end || m_row > m_lastRow) break;
        const char* next = TakeRow(text, end, window.TextEnd());
        if (next == nullptr) break;
        text = next;
        ++m_row;
    }
    return text;
}

// Has the plain rows of the window read by several threads, which hand on meanwhile what they read before.
void TTextPass::ShareRows(const TTextWindow& window, const char* text) {
    m_pieces = {};
    const bool isEachRow = m_frequency == 1 && !m_byX && !m_changes && m_columns.empty() &&
                           m_yErrors.empty() && m_lastRow == std::numeric_limits<std::int64_t>::max();
    const bool isPlain = m_fastRows.IsPossible() && m_format.xColumn >= 0 && !m_hasQuotes;
    const bool isWorthIt = m_linesEnd - text >= TSharedRows::kLeastText &&
                           (m_shared || window.TextEnd() == TTextEnd::More) && ProcessorCount() > 1;
    if (!isEachRow || !isPlain || !isWorthIt || m_row < m_firstRow) return;
    if (!m_shared) m_shared = std::make_unique<TSharedRows>(m_fastRows);
    if (m_count > 0) Flush();
    m_pieces = m_shared->Read(text, m_linesEnd, [this] { SinkPieces(); });
}

// The piece that begins here or next.
const TRowsPiece* TTextPass::NextPiece(const char* text) {
    while (!m_pieces.empty() && m_pieces.front().begin < text) m_pieces = m_pieces.subspan(1);
    return m_pieces.empty() ? nullptr : &m_pieces.front();
}

const char* TTextPass::TakePiece(const TRowsPiece& piece) {
    m_pieces = m_pieces.subspan(1);
    if (m_count > 0) Flush();
    m_unsunk.push_back(&piece);
    const auto count = static_cast<std::int64_t>(piece.count);
    m_row += count;
    m_dataRow += count;
    m_report->rowsChosen += count;
    m_untilHit = m_frequency - 1;
    return piece.rest;
}

void TTextPass::SinkPieces() {
    for (const TRowsPiece* piece : m_unsunk) {
        if (piece->count == 0) continue;
        m_report->rowsUsed += static_cast<std::int64_t>(piece->count);
        (*m_sink)(piece->X(), piece->Y(), {});
    }
    m_unsunk.clear();
}

// Takes one row and returns where the next begins, or null when the window does not hold all of it.
const char* TTextPass::TakeRow(const char* text, const char* end, TTextEnd textEnd) {
    return m_row < m_firstRow || !UsesRow() ? PassRow(text, end, textEnd) : TakeSplitRow(text, end, textEnd);
}

bool TTextPass::IsFast(const char* text) const {
    return m_fastRows.IsPossible() && m_columns.empty() && m_yErrors.empty() && text < m_fastEnd &&
           m_row >= m_firstRow && UsesRow();
}

// Takes rows of plain numbers as far as they come and as they are wanted; returns where the rest begins.
const char* TTextPass::TakeFastRows(const char* text) {
    const bool isEach = m_byX || m_frequency == 1;
    const std::int64_t room = isEach ? static_cast<std::int64_t>(kBlockRows - m_count) : 1;
    const auto wanted = static_cast<std::size_t>(std::min(room, m_lastRow - m_row + 1));
    std::size_t count = 0;
    text =
        m_fastRows.Read(text, m_fastEnd, std::span(m_x).subspan(m_count, wanted),
                        std::span(m_y).subspan(m_count, wanted), static_cast<double>(m_dataRow + 1), count);
    std::iota(m_rows.begin() + static_cast<std::ptrdiff_t>(m_count),
              m_rows.begin() + static_cast<std::ptrdiff_t>(m_count + count), m_row);
    if (!m_dataRows.empty())
        std::iota(m_dataRows.begin() + static_cast<std::ptrdiff_t>(m_count),
                  m_dataRows.begin() + static_cast<std::ptrdiff_t>(m_count + count),
                  static_cast<double>(m_dataRow + 1));
    m_row += static_cast<std::int64_t>(count);
    m_dataRow += static_cast<std::int64_t>(count);
    m_count += count;
    if (!m_byX && count > 0) {
        m_report->rowsChosen += static_cast<std::int64_t>(count);
        m_untilHit = m_frequency - 1;
    }
    if (m_count == kBlockRows) Flush();
    return text;
}

const char* TTextPass::TakeSplitRow(const char* text, const char* end, TTextEnd textEnd) {
    const TTextRow row = m_splitter.Split(text, end, textEnd, m_cells);
    if (row.kind != TRowKind::Data) return row.next;
    ++m_dataRow;
    NoteWidth();
    double x = 0;
    double y = 0;
    TRowProblem problem;
    if (ReadRow(x, y, problem)) {
        Add(x, y);
    } else {
        if (!m_byX) IsHit();
        // What the formulas make of the rows before is told first.
        if (m_changes && m_report->messages.size() < TTextReport::kMaxMessages) Flush();
        Skip(m_row, problem.text);
        KeepOddRow(text, row);
    }
    return row.next;
}

// An empty cell behind the last column is none.
void TTextPass::NoteWidth() {
    if (m_format.columns.empty() || m_cells.size() <= m_format.columns.size()) return;
    const auto more = std::span(m_cells).subspan(m_format.columns.size());
    if (std::ranges::all_of(more, [](const TTextCell& cell) { return cell.text.empty(); })) return;
    if (++m_report->rowsWider == 1) m_report->firstWider = m_row;
}

// Rows that give no point may show that the file is to be read in another way.
void TTextPass::KeepOddRow(const char* text, const TTextRow& row) {
    constexpr std::size_t kMostOdd = 65536;
    const auto length = static_cast<std::size_t>(row.next - text);
    if (m_report->oddRows.size() + length > kMostOdd) return;
    m_report->oddRows.append(text, length);
    if (!m_report->oddRows.ends_with('\n')) m_report->oddRows += '\n';
}

// A whole row whose first character tells that it is one of data, and that ends with its line.
bool TTextPass::IsPlainData(const char* text) const {
    return text < m_linesEnd && !m_hasQuotes && !m_splitter.IsSpecial(*text) &&
           (decimal::IsDigit(*text) || (*text == '-' && decimal::IsDigit(text[1])));
}

// A row that is only passed over; one behind the headers counts.
const char* TTextPass::PassRow(const char* text, const char* end, TTextEnd textEnd) {
    const TTextRow row = IsPlainData(text)
                             ? TTextRow{TRowKind::Data, BehindLineEnd(FindLineEnd(text, m_linesEnd))}
                             : m_splitter.Scan(text, end, textEnd);
    if (row.kind != TRowKind::Data || m_row <= m_format.headerRows) return row.next;
    ++m_dataRow;
    if (m_row >= m_firstRow) IsHit();
    return row.next;
}

// Counts a chosen row; true when it is one of the every n-th that are used.
bool TTextPass::IsHit() {
    ++m_report->rowsChosen;
    if (m_frequency == kCountOnly) return false;
    if (m_untilHit > 0) {
        --m_untilHit;
        return false;
    }
    m_untilHit = m_frequency - 1;
    return true;
}

// Reads the cells that count. Those of the formulas' columns go into the block.
bool TTextPass::ReadRow(double& x, double& y, TRowProblem& problem) {
    if (m_formulas.NeedsX()) {
        if (!m_values.ReadX(m_cells, m_dataRow, x, problem)) return false;
        x = m_timeRun.Next(x);
    }
    if (m_formulas.NeedsY() && !m_values.ReadY(m_cells, y, problem)) return false;
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        if (!m_values.ReadColumn(m_cells, m_formulas.Columns()[i], m_columns[i][m_count], problem))
            return false;
    return true;
}

// A row counts without its error, too.
double TTextPass::ReadYError() {
    double error = 0;
    TRowProblem problem;
    return m_values.ReadColumn(m_cells, m_format.yErrorColumn, error, problem) ? UsableYError(error) : 0;
}

void TTextPass::Add(double x, double y) {
    if (!m_byX) IsHit();
    if (!m_yErrors.empty()) m_yErrors[m_count] = ReadYError();
    m_x[m_count] = x;
    m_y[m_count] = y;
    m_rows[m_count] = m_row;
    if (!m_dataRows.empty()) m_dataRows[m_count] = static_cast<double>(m_dataRow);
    if (++m_count == kBlockRows) Flush();
}

// Whether the row of the block becomes a point, behind the formulas.
bool TTextPass::Keep(std::size_t index) {
    // An infinite Y is one of the file's where no expression has made it.
    const double made = m_formulas.ChangeY() ? m_y[index] : 0;
    const std::string problem = m_changes ? NoValueText(m_x[index], made) : std::string();
    if (!problem.empty()) {
        Skip(m_rows[index], problem);
        return false;
    }
    if (!m_byX) return true;
    return m_x[index] >= m_minX && m_x[index] <= m_maxX && IsHit();
}

void TTextPass::ApplyFormulas(std::span<double> x, std::span<double> y) {
    const std::span<const double> dataRows(m_dataRows.data(), m_dataRows.empty() ? 0 : m_count);
    std::vector<std::span<const double>> columns;
    for (const auto& column : m_columns) columns.emplace_back(column.data(), m_count);
    m_formulas.Apply({x, y, dataRows, columns});
}

void TTextPass::Flush() {
    SinkPieces();
    const std::span x(m_x.data(), m_count);
    const std::span y(m_y.data(), m_count);
    if (m_changes && m_count > 0) ApplyFormulas(x, y);
    std::size_t kept = m_count;
    if (m_changes || m_byX) {
        kept = 0;
        for (std::size_t i = 0; i < m_count; ++i) {
            if (!Keep(i)) continue;
            x[kept] = x[i];
            y[kept] = y[i];
            if (!m_yErrors.empty()) m_yErrors[kept] = m_yErrors[i];
            ++kept;
        }
    }
    m_report->rowsUsed += static_cast<std::int64_t>(kept);
    const std::span errors(m_yErrors.data(), m_yErrors.empty() ? 0 : kept);
    m_report->rowsWithoutYError += std::ranges::count(errors, 0.0);
    if (kept > 0) (*m_sink)(x.first(kept), y.first(kept), errors);
    m_count = 0;
}

void TTextPass::Skip(std::int64_t row, const std::string& text) {
    ++m_report->rowsSkipped;
    if (m_report->messages.size() < TTextReport::kMaxMessages)
        m_report->messages.push_back("row " + std::to_string(row) + ": " + text);
}

} // namespace lumoplot
