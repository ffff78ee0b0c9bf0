#include "cli/data_input.h"

#include "cli/arguments.h"
#include "cli/database_input.h"
#include "cli/read_as.h"
#include "data/series/ds_info.h"
#include "data/series/plotted_values.h"
#include "expr/parser_exception.h"
#include "fit/definition/cur_fit.h"
#include "graph/file/graph_file.h"
#include "graph/loading/date_axis.h"
#include "graph/loading/default_look.h"
#include "graph/loading/rows_text.h"
#include "graph/loading/source_loading.h"
#include "sources/report/text_explanation.h"
#include "sources/spreadsheet/sheet_place.h"
#include "support/errors.h"

#include <QFileInfo>
#include <algorithm>
#include <exception>

namespace lumoplot {
namespace {

// Runs `load`; errors that do not name the file do so afterwards.
template <class TLoad>
auto Loading(const std::string& name, TLoad&& load) {
    try {
        return load();
    } catch (const ELumoError& error) {
        const std::string text = error.what();
        const std::string shown = ShownSource(name);
        if (IsConnection(name) || text.find(shown) != std::string::npos) throw;
        throw EFileError(shown + ": " + text);
    }
}

// A tab is hard to type in a shell: \t stands for it.
std::string Unescaped(std::string text) {
    for (std::size_t place = text.find("\\t"); place != std::string::npos; place = text.find("\\t", place))
        text.replace(place, 2, "\t");
    return text;
}

void SetColumns(TTextOptions& options, const std::string& columns, TYColumns yColumns) {
    std::vector<std::string> parts(1);
    for (const char c : columns)
        if (c == ',')
            parts.emplace_back();
        else
            parts.back() += c;
    if (parts.size() < 2 || (parts.size() > 2 && yColumns == TYColumns::One))
        throw EUsage("--columns: '" + columns + "' is not of the form X,Y");
    options.xColumn = parts[0];
    options.yColumn = parts[1];
    options.moreYColumns.assign(parts.begin() + 2, parts.end());
}

TDSInfo SourceInfo(const TTextOptions& options) {
    TDSInfo info;
    info.SetTextSeparators(Unescaped(options.separators));
    if (options.headerRows) info.SetFileHasHeaders(*options.headerRows);
    info.SetXDataColumn(options.xColumn);
    info.SetYDataColumn(options.yColumn);
    if (!options.yErrorColumn.empty()) info.SetYErrorRule({TYErrorKind::Column, 0, options.yErrorColumn});
    if (options.every) info.SetRowSamplingFrequency(*options.every);
    return info;
}

std::string WithSheetOf(const std::string& file, const TTextOptions& options) {
    if (options.sheet.empty()) return file;
    const std::string name = WithSheet(file, options.sheet);
    if (SheetPlaceOf(name).sheet.empty())
        throw EUsage("--sheet: " + file + " is no spreadsheet (.xlsx, .ods)");
    return name;
}

bool HasEqualNeighbours(const TDataSeries& series) {
    TPointCursor point = series.First();
    if (!point) return false;
    for (TPointCursor next = point.Next(); next; point = next, next = next.Next())
        if (next.X() == point.X()) return true;
    return false;
}

// Nothing is left out silently.
void ReportSkippedRows(const TDataOptions& options, const TTextReport& report) {
    if (report.rowsSkipped == 0 || options.text.explain) return;
    const std::string first = report.messages.empty() ? "" : ", the first: " + report.messages.front();
    PrintMessage(ShownSource(options.file) + ": " + std::to_string(report.rowsSkipped) +
                 (report.rowsSkipped == 1 ? " row was skipped" : " rows were skipped") + first);
}

// Fixes the second best reading of the whole file.
void KeepOtherReading(const std::string& file, TDSInfo& info, TTextWishes& wishes) {
    TDataSeries series;
    series.DataSourceInfo() = info;
    TSilentProgress progress;
    const TTextReport report = LoadTextSeries(series, file, {}, progress);
    if (!report.readings.runnerUp) throw EFileError(file + " can be read in one way only");
    KeepReading(report.readings.runnerUp->format, info, wishes);
}

void SetTitle(TAxis& axis, const std::string& title) {
    if (!title.empty()) axis.SetTitle(title);
}

void LoadTextSeriesInto(TxyGraph& graph, TSeries& series, const TDataOptions& options) {
    const TTextReport report = LoadTextData(series, options.file, options.text);
    ReportSkippedRows(options, report);
    ApplyDefaultStyle(series);
    const TTextFormat& format = report.readings.best.format;
    ShowDatesOfX(series, format);
    if (format.xColumn >= 0)
        SetTitle(*graph.XAxis(), format.columns[static_cast<std::size_t>(format.xColumn)].Title());
    const auto y = static_cast<std::size_t>(format.yColumn);
    SetTitle(*graph.YAxis(), report.yName.empty() ? report.yName : format.columns[y].Title());
}

void LoadDatabaseInto(TxyGraph& graph, TSeries& series, const TDataOptions& options) {
    const TTextReport report = LoadDatabaseData(series, options);
    ReportSkippedRows(options, report);
    ApplyDefaultStyle(series);
    const TTextFormat& format = report.readings.best.format;
    if (format.xColumn >= 0)
        SetTitle(*graph.XAxis(), format.columns[static_cast<std::size_t>(format.xColumn)].name);
    SetTitle(*graph.YAxis(), report.yName);
    graph.XAxis()->SetShowAsTime(format.xFormat == TColumnFormat::DateTime);
}

// What a person sees who opens the file in the host application.
void LoadSingleSeries(TxyGraph& graph, TFileKind kind, const TDataOptions& options) {
    ApplyDefaultLook(graph);
    graph.Appearance()->SetGraphTitle(kind == TFileKind::Database
                                          ? DatabaseTitle(options)
                                          : QFileInfo(QString::fromStdString(SheetPlaceOf(options.file).file))
                                                .completeBaseName()
                                                .toStdString());
    TSeries& series = *graph.FindSeries(graph.AddSeries());
    if (kind == TFileKind::Text)
        LoadTextSeriesInto(graph, series, options);
    else if (kind == TFileKind::Database)
        LoadDatabaseInto(graph, series, options);
    else
        LoadSeriesFromFile(series, options.file);
}

} // namespace

void AddTextOptions(CLI::App& command, TTextOptions& options, TYColumns yColumns) {
    const std::string group = "Reading of text files (found from the text where not given)";
    command.add_option("--separators", options.separators, "Characters that end a cell, \\t for a tab")
        ->type_name("CHARS")
        ->group(group);
    AddCount(command, "--header-rows", options.headerRows, 0, "Rows in front of the data")->group(group);
    const auto setColumns = [&options, yColumns](const std::string& columns) {
        SetColumns(options, columns, yColumns);
    };
    command
        .add_option_function<std::string>("--columns", setColumns,
                                          "Columns by number from 1 or by header name")
        ->type_name("X,Y")
        ->group(group);
    command
        .add_option("--sheet", options.sheet,
                    "Sheet of a spreadsheet (the first one that is not hidden and has numbers)")
        ->type_name("NAME")
        ->group(group);
    command.add_option("--y-error", options.yErrorColumn, "Column with the standard errors of Y")
        ->type_name("COLUMN")
        ->group(group);
    AddCount(command, "--every", options.every, 1, "Use every N-th row")->group(group);
    command
        .add_option(
            "--read-as", options.readAs,
            "other: the second best reading; or parts of one as --explain names them, divided by commas")
        ->type_name("READING")
        ->group(group);
    command.add_flag("--explain", options.explain, "Say on standard error how the file is read")
        ->group(group);
    AddDatabaseOptions(command, options);
    command.add_flag("--merge", options.merge, "Merge rows with equal X instead of keeping all")
        ->group(group);
}

void AddDataOptions(CLI::App& command, TDataOptions& options) {
    command.add_option("DATA", options.file, "Data set (.lds), graph (.ltp), text file or database")
        ->required();
    AddCount(command, "--set", options.set, 1, "Data set of a graph file (the current one)");
    AddTextOptions(command, options.text);
}

void AddDataSet(TxyGraph& graph, const TDataOptions& options) {
    Loading(options.file, [&] {
        const TFileKind kind = KindOfFile(options.file);
        if (kind == TFileKind::Graph || kind == TFileKind::Function)
            throw EFileError(options.file + " is no file with one data set");
        TSeries& series = *graph.FindSeries(graph.AddSeries());
        if (kind == TFileKind::Text) {
            ReportSkippedRows(options, LoadTextData(series, options.file, options.text));
            ApplyDefaultStyle(series);
        } else if (kind == TFileKind::Database) {
            ReportSkippedRows(options, LoadDatabaseData(series, options));
            ApplyDefaultStyle(series);
        } else {
            LoadSeriesFromFile(series, options.file);
        }
    });
}

TTextReport LoadTextData(TDataSeries& series, const std::string& name, const TTextOptions& options) {
    const std::string file = WithSheetOf(name, options);
    series.DataSourceInfo() = SourceInfo(options);
    series.SetDuplicatesAllowed(!options.merge);
    TTextLoadOptions load;
    if (IsOther(options.readAs))
        KeepOtherReading(file, series.DataSourceInfo(), load.wishes);
    else if (!options.readAs.empty())
        ReadAs(options.readAs, series.DataSourceInfo(), load.wishes);
    TSilentProgress progress;
    TTextReport report = LoadTextSeries(series, file, load, progress);
    if (options.explain)
        for (const std::string& line : Explain(report).Lines()) PrintMessage(file + ": " + line);
    series.DataSourceInfo() = TDSInfo();
    series.SetDuplicatesAllowed(HasEqualNeighbours(series));
    return report;
}

std::unique_ptr<TGraphDocument> LoadGraph(const TDataOptions& options) {
    auto document = std::make_unique<TGraphDocument>();
    TxyGraph& graph = document->Graph();
    Loading(options.file, [&] {
        const TFileKind kind = KindOfFile(options.file);
        if (kind == TFileKind::Function)
            throw EFileError(options.file + " is a function file and holds no data");
        if (kind == TFileKind::Graph)
            graph.LoadFromFile(options.file);
        else
            LoadSingleSeries(graph, kind, options);
    });
    return document;
}

TSeries& ChosenSeries(TxyGraph& graph, const TDataOptions& options) {
    const int number = options.set.value_or(std::max(1, graph.Appearance()->CurrSerIndex()));
    TSeries* series = graph.FindSeries(number);
    if (!series && graph.Series().empty()) throw EFileError(ShownSource(options.file) + " holds no data set");
    if (!series) throw EFileError(ShownSource(options.file) + " holds no data set " + std::to_string(number));
    return *series;
}

TSeries& ChosenSeriesWhole(TxyGraph& graph, const TDataOptions& options) {
    TSeries& series = ChosenSeries(graph, options);
    try {
        TSilentProgress progress;
        LoadEveryRow(series, progress);
    } catch (const ELumoError& error) {
        PrintMessage(ShownSource(options.file) + ": what follows is " + RowsText(RowsOf(series)) + ": " +
                     error.what());
    }
    return series;
}

TDataInput::TDataInput(const TDataOptions& options) {
    const bool fromText = KindOfFile(options.file) == TFileKind::Text;
    if (fromText && options.set.value_or(1) != 1) throw EFileError(options.file + " holds one data set only");
    if (fromText) {
        m_textSeries = std::make_unique<TDataSeries>();
        ReportSkippedRows(options, LoadTextData(*m_textSeries, options.file, options.text));
        m_series = m_textSeries.get();
    } else {
        m_graph = LoadGraph(options);
        m_series = &ChosenSeriesWhole(m_graph->Graph(), options);
    }
    const TPlottedValues plotted = PlottedValues(*m_series);
    m_x = plotted.X;
    m_corrected = plotted.Y;
    m_yErrors = plotted.YErrors;
    for (TPointCursor point = m_series->First(); point && m_y.size() < m_x.size(); point = point.Next())
        m_y.push_back(point.Y());
}

void RunOn(const TDataOptions& options, const std::function<void()>& work) {
    std::exception_ptr ofFormula; // that is no matter of the data
    Loading(options.file, [&] {
        try {
            work();
        } catch (const EParserException&) {
            ofFormula = std::current_exception();
        }
    });
    if (ofFormula) std::rethrow_exception(ofFormula);
}

std::unique_ptr<TCurFit> LoadFunction(const std::string& name) {
    return Loading(name, [&] {
        auto fit = std::make_unique<TCurFit>();
        fit->LoadFromFile(name, false);
        return fit;
    });
}

} // namespace lumoplot
