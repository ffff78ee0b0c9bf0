// Sheets of the main window.
#include "data/series/ds_info.h"
#include "graph/loading/default_look.h"
#include "graph/loading/source_loading.h"
#include "host/main_window.h"
#include "host/sheet/sheet_book.h"
#include "host/sheet/sheet_window.h"
#include "support/guard.h"
#include "ui_main_window.h"

namespace lumoplot {
namespace {

void AddFromSheet(TxyGraph& graph, const std::string& sheet, int xColumn, int yColumn) {
    TSeries& series = *graph.FindSeries(graph.AddSeries());
    series.SetSeriesName(sheet);
    series.SetDuplicatesAllowed(true);
    TDSInfo& source = series.DataSourceInfo();
    source.SetKind(TSourceKind::LumoSheet);
    source.SetSourceName(sheet);
    source.SetXDataColumn(std::to_string(xColumn));
    source.SetYDataColumn(std::to_string(yColumn));
    TSilentProgress progress;
    LoadFromSource(series, progress);
    ApplyDefaultStyle(series);
    graph.Appearance()->SetCurrSerIndex(series.SeriesIndex());
    if (graph.Series().size() == 2) graph.Legend()->Setvisible(true);
}

} // namespace

void TMainWindow::AddSheets() {
    m_sheets = std::make_unique<TSheetBook>(m_document->Session());
}

void TMainWindow::OnSheets() {
    if (!m_sheetWindow) {
        m_sheetWindow = new TSheetWindow(*m_sheets, m_document->Session(), this);
        connect(m_sheetWindow, &TSheetWindow::PlotWanted, this,
                [this](const QString& sheet, int x, const std::vector<int>& ys) {
                    Guarded([&] {
                        Change(tr("plot %1").arg(sheet), [&] {
                            for (const int y : ys) AddFromSheet(Graph(), sheet.toStdString(), x, y);
                        });
                    });
                    ShowState();
                });
    }
    m_sheetWindow->Open();
}

} // namespace lumoplot
