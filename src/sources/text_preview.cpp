#include "sources/text_preview.h"

#include "sources/text_values.h"

namespace lumoplot {
namespace {

class TPreviewer {
public:
    TPreviewer(TTextPreview& preview, const TDSInfo& info)
        : m_preview(preview), m_info(info), m_format(preview.readings.best.format), m_values(m_format) {}

    void Add(TRowKind kind, const std::vector<TTextCell>& cells) {
        TPreviewRow row{static_cast<std::int64_t>(m_preview.rows.size()) + 1, kind, {}};
        const TCellState state = StateOf(row);
        for (const TTextCell& cell : cells) row.cells.push_back({DisplayText(cell, m_format), state});
        if (kind == TRowKind::Data && row.number > m_format.headerRows) ++m_dataRow;
        if (kind == TRowKind::Data && state == TCellState::Ok && m_preview.readings.best.problem.empty())
            MarkProblem(row, cells);
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

    void MarkProblem(TPreviewRow& row, const std::vector<TTextCell>& cells) {
        double x = 0;
        double y = 0;
        TRowProblem problem;
        if (m_values.Read(cells, m_dataRow, x, y, problem)) return;
        const auto column = static_cast<std::size_t>(problem.column);
        if (row.cells.size() <= column) row.cells.resize(column + 1);
        row.cells[column].state = TCellState::Rejected;
        m_preview.messages.push_back("row " + std::to_string(row.number) + ": " + problem.text);
    }

    TTextPreview& m_preview;
    const TDSInfo& m_info;
    const TTextFormat& m_format;
    TRowValues m_values;
    std::int64_t m_dataRow = 0;
};

} // namespace

TTextPreview PreviewText(const TTextSource& source, const TDSInfo& info, int maxRows,
                         const TTextWishes& wishes) {
    TTextFile file(source);
    const TTextSample sample = TakeSample(file, info, wishes);
    TTextPreview preview;
    preview.readings = FindTextFormat(sample, info, wishes);
    const TRowSplitter splitter(preview.readings.best.format);
    TPreviewer previewer(preview, info);
    std::vector<TTextCell> cells;
    const char* text = sample.text.data();
    const char* end = text + sample.text.size();
    while (text < end && preview.rows.size() < static_cast<std::size_t>(std::max(maxRows, 0))) {
        const TTextRow row = splitter.Split(text, end, sample.whole ? TTextEnd::File : TTextEnd::More, cells);
        if (row.kind == TRowKind::Incomplete) break;
        previewer.Add(row.kind, cells);
        text = row.next;
    }
    return preview;
}

} // namespace lumoplot
