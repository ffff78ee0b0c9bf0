#include "graph/loading/source_loading.h"

#include "data/series/ds_info.h"
#include "graph/file/graph_file.h"
#include "graph/loading/date_axis.h"
#include "graph/loading/rows_text.h"
#include "graph/loading/source_rows.h"
#include "graph/loading/x_axis_title.h"
#include "graph/model/child_graph.h"
#include "graph/model/holder.h"
#include "sources/database/database_loader.h"
#include "sources/link/link_place.h"
#include "sources/spreadsheet/sheet_place.h"
#include "sources/text/loading/series_supplier.h"
#include "support/errors.h"
#include "support/message_sink.h"

#include <QDir>
#include <QFileInfo>

namespace lumoplot {
namespace {

// As it is when it is absolute or exists, else in the graph's data directory.
std::string FileFor(const TSeries& series, const std::string& file) {
    const QString name = QString::fromStdString(file);
    const QString directory = QString::fromStdString(series.Graph().Appearance()->DataDirectory());
    const bool exists = QFileInfo::exists(QString::fromStdString(SheetPlaceOf(file).file));
    if (name.isEmpty() || directory.isEmpty() || exists) return file;
    return QDir(directory).filePath(name).toStdString(); // an absolute name stays
}

// A data-set file brings its own settings; what says where the points come from stays.
bool LoadDataFile(TSeries& series) {
    const TDSInfo source = series.DataSourceInfo();
    const TTextWishes wishes = series.TextWishes();
    LoadSeriesFromFile(series, SourceFileOf(series));
    series.SetTextWishes(wishes);
    series.DataSourceInfo() = source;
    series.DataSourceInfo().SetNeedsReload(false);
    series.SetThinned(false);
    return true;
}

const TxyGraph& Outermost(const TxyGraph& graph) {
    const auto* child = dynamic_cast<const TxyChildGr*>(&graph);
    return child && child->ParentGraph() ? Outermost(*child->ParentGraph()) : graph;
}

TTextSource SheetOf(const TSeries& series) {
    const TSheetOffer& sheets = Outermost(series.Graph()).Holder()->Sheets();
    if (!sheets) throw EFileError("No sheet is offered by the application that holds this graph");
    const std::string& name = series.DataSourceInfo().SourceName();
    return {name, sheets.Text(name)};
}

TTextSource TextSourceOf(const TSeries& series) {
    const bool isSheet = series.DataSourceInfo().Kind() == TSourceKind::LumoSheet;
    return isSheet ? SheetOf(series) : TTextSource(SourceFileOf(series));
}

int BudgetOf(const TSeries& series, const TLoadOptions& options) {
    const int usual = series.ShowsResults() ? kEveryRow : series.Graph().PointBudget();
    return options.Budget.value_or(usual);
}

TTextReport ReadText(TSeries& series, TProgress& progress, const TLoadOptions& options) {
    const TDSInfo& info = series.DataSourceInfo();
    TTextLoadOptions text;
    text.budget = BudgetOf(series, options);
    text.rowLimit = info.AutoRowHitFreq() || info.IsSamplingChosen() ? 0 : options.MostRowsUnasked;
    text.wishes = series.TextWishes();
    if (info.Kind() == TSourceKind::Database)
        return LoadDatabaseSeries(series, ConnectionOf(series), text, progress);
    return LoadTextSeries(series, TextSourceOf(series), text, progress);
}

// Of a long source; the description stays as it was when nothing is read.
TTextReport ReadTextForTheEye(TSeries& series, TProgress& progress, const TLoadOptions& options) {
    TDSInfo& info = series.DataSourceInfo();
    const TDSInfo before = info;
    info.SetAutoRowHitFreq(true);
    try {
        TTextReport report = ReadText(series, progress, options);
        if (report.cancelled) info = before;
        report.isOverLimit = true;
        report.notes.push_back(
            "there are more than " + Grouped(options.MostRowsUnasked) +
            " rows, so \"Auto\" has been switched on: " + RowsText({report.rowsUsed, report.rowsChosen}));
        return report;
    } catch (...) {
        info = before;
        throw;
    }
}

// A data set that its plot would show with other points counts as thinned.
bool LoadTextSource(TSeries& series, TProgress& progress, const TLoadOptions& options) {
    TTextReport own;
    TTextReport& report = options.Report ? *options.Report : own;
    const bool isOther = series.DataSourceInfo().NeedsReload();
    report = ReadText(series, progress, options);
    if (report.isOverLimit) report = ReadTextForTheEye(series, progress, options);
    if (report.cancelled) return false;
    TDSInfo& info = series.DataSourceInfo();
    info.SetSamplingChosen(true); // what was found once stays
    const bool isBudgeted = info.AutoRowHitFreq() && report.samplingFrequency > 1;
    series.SetThinned(isBudgeted && BudgetOf(series, options) != series.Graph().PlotBudget());
    series.SetSourceRows({report.rowsChosen, report.rowsUsed});
    // Read as before, the axis stays as the user has made it.
    if (!isOther) return true;
    ShowDatesOfX(series, report.readings.best.format);
    if (std::string mixed = MixedXText(series, report.readings.best.format); !mixed.empty())
        report.notes.push_back(std::move(mixed));
    return true;
}

// The newest rows, when no more of them are to be kept.
void KeepNewest(TSeries& series) {
    const std::int64_t most = series.DataSourceInfo().LinkLimit().rows;
    if (most <= 0 || series.Count() <= most) return;
    TPointChain points = series.Points();
    const std::int32_t oldest = points.LastId() - static_cast<std::int32_t>(most);
    for (std::int32_t id = 1; id <= oldest; ++id) points.Erase(id);
    series.SwapPoints(std::move(points));
}

// What a line brought can not be read again and what a program offers comes by itself: it stays. A link at
// work reads on by itself.
bool LoadLink(TSeries& series, TProgress& progress, const TLoadOptions& options) {
    const TDSInfo& info = series.DataSourceInfo();
    const bool isAtWork = info.FeedId() != 0 && !info.NeedsReload();
    if (isAtWork || ParseLink(info.SourceName()).kind != TLinkKind::File) return true;
    const bool isLoaded = LoadTextSource(series, progress, options);
    if (isLoaded) KeepNewest(series);
    return isLoaded;
}

bool LoadPoints(TSeries& series, TProgress& progress, const TLoadOptions& options) {
    switch (series.DataSourceInfo().Kind()) {
    case TSourceKind::TextFile:
    case TSourceKind::LumoSheet:
    case TSourceKind::Database: return LoadTextSource(series, progress, options);
    case TSourceKind::DataFile: return LoadDataFile(series);
    case TSourceKind::Link: return LoadLink(series, progress, options);
    case TSourceKind::Manual: break;
    }
    return true;
}

} // namespace

std::string SourceFileOf(const TSeries& series) {
    return FileFor(series, series.DataSourceInfo().SourceName());
}

std::string ConnectionOf(const TSeries& series) {
    const std::string& connection = series.DataSourceInfo().Database().connection;
    return IsServer(connection) ? connection : FileFor(series, connection);
}

bool LoadFromSource(TSeries& series, TProgress& progress, const TLoadOptions& options) {
    const std::string name = series.SeriesName();
    const bool isLoaded = LoadPoints(series, progress, options);
    // A cancelled loading touches nothing: the data set may have gone meanwhile.
    if (isLoaded && options.Name == TLoadedName::Kept) series.SetSeriesName(name);
    if (isLoaded && options.Report && options.XTitle == TLoadedXTitle::FromColumn)
        TakeXTitle(series, options.Report->readings.best.format);
    return isLoaded;
}

bool LoadEveryRow(TSeries& series, TProgress& progress) {
    if (!series.HoldsSomeRows()) return true;
    return LoadFromSource(series, progress, {.Budget = kEveryRow, .Name = TLoadedName::Kept});
}

TTextPreview PreviewSource(const TSeries& series, int maxRows) {
    return PreviewText(TextSourceOf(series), series.DataSourceInfo(), maxRows, series.TextWishes(),
                       {series.XColExpr(), series.YColExpr()});
}

TTextPreview PreviewSourceFrom(const TSeries& series, std::int64_t firstRow, int maxRows) {
    return PreviewTextFrom(TextSourceOf(series), series.DataSourceInfo(), firstRow, maxRows,
                           series.TextWishes(), {series.XColExpr(), series.YColExpr()});
}

void LoadThinnedAgain(TxyGraph& graph, const TxyGraph& edited, TProgress& progress) {
    const std::size_t count = std::min(graph.Series().size(), edited.Series().size());
    for (std::size_t i = 0; i < count; ++i) {
        if (!edited.Series()[i]->IsThinned()) continue;
        TSeries& series = *graph.Series()[i];
        try {
            if (!LoadFromSource(series, progress, {.Name = TLoadedName::Kept})) return;
        } catch (const std::exception& error) { // the host's functions may throw what they like
            ShowMessage(error.what(), TMessageKind::Error);
        }
    }
}

} // namespace lumoplot
