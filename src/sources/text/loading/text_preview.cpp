#include "sources/text/loading/text_preview.h"

#include "sources/text/loading/preview_rows.h"
#include "sources/text/text_values.h"
#include "sources/text/text_window.h"
#include "support/errors.h"

namespace lumoplot {
namespace {

class TPreviewer {
public:
    TPreviewer(TTextPreview& preview, const TDSInfo& info)
        : m_preview(preview), m_info(info), m_format(preview.readings.best.format), m_values(m_format) {
        if (preview.readings.best.problem.empty()) Compile();
    }

    /// A row that is not shown.
    void Pass(TRowKind kind) {
        ++m_row;
        if (kind == TRowKind::Data && m_row > m_format.headerRows) ++m_dataRow;
    }

    void Add(TRowKind kind, const std::vector<TTextCell>& cells) {
        Pass(kind);
        TPreviewRow row;
        row.number = m_row;
        row.kind = kind;
        const TCellState state = StateOf(row);
        for (const TTextCell& cell : cells) row.cells.push_back({DisplayText(cell, m_format), state});
        if (kind == TRowKind::Data && state == TCellState::Ok && m_formulas) TakeValues(row, cells);
        m_preview.rows.push_back(std::move(row));
    }

private:
    TCellState StateOf(const TPreviewRow& row) const {
        if (row.number <= m_format.headerRows) return TCellState::Header;
        return row.kind == TRowKind::Comment || !IsChosen(row.number) ? TCellState::Skipped : TCellState::Ok;
    }

    bool IsChosen(std::int64_t number) const {
        if (m_info.RowChoiceMode() != TRowChoice::ByNumber) return true;
        const auto row = static_cast<double>(number);
        return row >= m_info.RowChoiceValue1() &&
               (m_info.RowChoiceValue2() < 1 || row <= m_info.RowChoiceValue2());
    }

    // Without formulas that can be used the cells are looked at as if there were none.
    void Compile() {
        try {
            m_formulas = std::make_unique<TRowFormulas>(m_preview.formulas, m_format);
        } catch (const ELumoError& error) {
            m_preview.messages.emplace_back(error.what());
            m_preview.formulas = {};
            m_formulas = std::make_unique<TRowFormulas>(TFormulaTexts(), m_format);
        }
    }

    void TakeValues(TPreviewRow& row, const std::vector<TTextCell>& cells) {
        double x = 0;
        double y = 0;
        std::vector<double> columns(m_formulas->Columns().size());
        TRowProblem problem;
        bool isRead = (!m_formulas->NeedsX() || m_values.ReadX(cells, m_dataRow, x, problem)) &&
                      (!m_formulas->NeedsY() || m_values.ReadY(cells, y, problem));
        for (std::size_t i = 0; i < columns.size() && isRead; ++i)
            isRead = m_values.ReadColumn(cells, m_formulas->Columns()[i], columns[i], problem);
        if (!isRead) return Reject(row, problem);
        ApplyFormulas(x, y, columns);
        problem.text = NoValueText(m_formulas->ChangeX() ? x : 0, m_formulas->ChangeY() ? y : 0);
        if (!problem.text.empty()) return Reject(row, problem);
        if (m_formulas->ChangeX()) row.x = x;
        if (m_formulas->ChangeY()) row.y = y;
    }

    void ApplyFormulas(double& x, double& y, const std::vector<double>& columns) {
        const auto dataRow = static_cast<double>(m_dataRow);
        std::vector<std::span<const double>> spans;
        for (const double& column : columns) spans.emplace_back(&column, 1);
        m_formulas->Apply({{&x, 1}, {&y, 1}, {&dataRow, 1}, spans});
    }

    void Reject(TPreviewRow& row, const TRowProblem& problem) {
        if (problem.column >= 0) {
            const auto column = static_cast<std::size_t>(problem.column);
            if (row.cells.size() <= column) row.cells.resize(column + 1);
            row.cells[column].state = TCellState::Rejected;
        }
        m_preview.messages.push_back("row " + std::to_string(row.number) + ": " + problem.text);
    }

    TTextPreview& m_preview;
    const TDSInfo& m_info;
    const TTextFormat& m_format;
    TRowValues m_values;
    std::unique_ptr<TRowFormulas> m_formulas; ///< null while the rows give no points at all
    std::int64_t m_row = 0;
    std::int64_t m_dataRow = 0;
};

std::size_t RowLimit(int maxRows) {
    return static_cast<std::size_t>(std::max(maxRows, 0));
}

} // namespace

TTextPreview PreviewText(const TTextSource& source, const TDSInfo& info, int maxRows,
                         const TTextWishes& wishes, const TFormulaTexts& formulas) {
    TTextFile file(source);
    const TTextSample sample = TakeSample(file, info, wishes);
    TTextPreview preview;
    preview.readings = FindTextFormat(sample, info, wishes);
    preview.formulas = {formulas.EffectiveX(), formulas.EffectiveY()};
    const TRowSplitter splitter(preview.readings.best.format);
    TPreviewer previewer(preview, info);
    std::vector<TTextCell> cells;
    const char* text = sample.text.data();
    const char* end = text + sample.text.size();
    while (text < end && preview.rows.size() < RowLimit(maxRows)) {
        const TTextRow row = splitter.Split(text, end, sample.whole ? TTextEnd::File : TTextEnd::More, cells);
        if (row.kind == TRowKind::Incomplete) break;
        previewer.Add(row.kind, cells);
        text = row.next;
    }
    return preview;
}

TTextPreview PreviewTextFrom(const TTextSource& source, const TDSInfo& info, std::int64_t firstRow,
                             int maxRows, const TTextWishes& wishes, const TFormulaTexts& formulas) {
    TTextFile file(source);
    TTextPreview preview;
    preview.readings = FindTextFormat(TakeSample(file, info, wishes), info, wishes);
    preview.formulas = {formulas.EffectiveX(), formulas.EffectiveY()};
    const TTextFormat& format = preview.readings.best.format;
    const TRowSplitter splitter(format);
    TPreviewer previewer(preview, info);
    std::vector<TTextCell> cells;
    TTextWindow window(file, format.encoding);
    const char* text = window.Begin();
    for (std::int64_t number = 1; preview.rows.size() < RowLimit(maxRows);) {
        const TTextRow row = splitter.Split(text, window.End(), window.TextEnd(), cells);
        const bool isWhole = text < window.End() && row.kind != TRowKind::Incomplete;
        if (!isWhole && window.TextEnd() == TTextEnd::File) break;
        if (!isWhole) {
            window.Slide(text, number);
            text = window.Begin();
            continue;
        }
        number < firstRow ? previewer.Pass(row.kind) : previewer.Add(row.kind, cells);
        ++number;
        text = row.next;
    }
    return preview;
}

} // namespace lumoplot
