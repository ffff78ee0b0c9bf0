// Tables of databases as data sets of the graph.
#include "data/series/ds_info.h"
#include "graph/loading/default_look.h"
#include "graph/loading/source_loading.h"
#include "host/files/data_files.h"
#include "sources/database/database_loader.h"

namespace lumoplot {

bool TDataFiles::AddDatabase(const TDSInfo& source, const std::string& name, TProgress& progress) {
    const int number = m_graph.AddSeries();
    TSeries& series = *m_graph.FindSeries(number);
    series.SetSeriesName(name);
    series.SetDuplicatesAllowed(true);
    series.DataSourceInfo() = source;
    bool isLoaded = false;
    try {
        isLoaded = Load(series, progress);
    } catch (...) {
        m_graph.DeleteSeries(number);
        throw;
    }
    if (!isLoaded) {
        m_graph.DeleteSeries(number);
        return false;
    }
    ApplyDefaultStyle(series);
    TAppearance& appearance = *m_graph.Appearance();
    if (appearance.GraphTitle().empty())
        appearance.SetGraphTitle(source.SourceName().empty() ? name : source.SourceName());
    appearance.SetCurrSerIndex(series.SeriesIndex());
    if (m_graph.Series().size() == 2) m_graph.Legend()->Setvisible(true);
    return true;
}

void TDataFiles::TakeDatabaseReport(const TSeries& series, const TTextReport& report) {
    const bool hasDates = report.readings.best.format.xFormat == TColumnFormat::DateTime;
    if (hasDates && m_graph.Series().size() == 1) m_graph.XAxis()->SetShowAsTime(true);
    const std::string what = DatabaseSourceText(ConnectionOf(series), series.DataSourceInfo());
    for (const std::string& note : report.notes) m_notes.append(QString::fromStdString(what + ": " + note));
}

} // namespace lumoplot
