// Input files of the commands: what kind a file is, and the graph or the data set in it. Errors name the
// file.
#pragma once

#include "cli/file_kind.h"
#include "cli/offscreen.h"
#include "graph/model/graph.h"
#include "sources/text/loading/series_supplier.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumoplot {

/// How a text file is read; what is not given is found from the text. Every row is read.
struct TTextOptions {
    std::string separators;
    std::optional<int> headerRows;
    std::string xColumn;                   ///< a number from 1, 0 for the row number, or a header name
    std::string yColumn;                   ///< a number from 1, or a header name
    std::vector<std::string> moreYColumns; ///< of further data sets with the same X, where there may be some
    std::string yErrorColumn;              ///< of the standard errors of Y; empty: none
    std::optional<int> every;
    std::string sheet;    ///< of a spreadsheet; empty: the first one with rows of numbers
    std::string readAs;   ///< "other", or parts of a description; empty: as it is found
    bool explain = false; ///< one line on standard error tells how the file is read
    bool merge = false;   ///< rows with equal X become one point
    std::string table;    ///< of a database
    std::string query;    ///< of a database, in place of a table
    std::string where;    ///< of a database
    std::string orderBy;  ///< of a database
};
/// Whether --columns may name several Y columns, each for a data set of its own.
enum class TYColumns { One, Several };
void AddTextOptions(CLI::App& command, TTextOptions& options, TYColumns yColumns = TYColumns::One);

/// The arguments that name a data set.
struct TDataOptions {
    std::string file;
    std::optional<int> set; ///< number of the data set in a graph file; none: the current one
    TTextOptions text;
};
void AddDataOptions(CLI::App& command, TDataOptions& options);

/// Fills a data set from a text file and names it after the Y column. Its source is manual afterwards: a file
/// that is written from it stands alone.
TTextReport LoadTextData(TDataSeries& series, const std::string& file, const TTextOptions& options);

/// A graph with the application object that it needs.
class TGraphDocument {
public:
    TxyGraph& Graph() { return m_graph; }

private:
    TOffscreenApplication m_application;
    TxyGraph m_graph;
};

/// The graph in a graph file, or one with the data set of any other DATA as its only one; the axes then have
/// the names of a text file's columns.
std::unique_ptr<TGraphDocument> LoadGraph(const TDataOptions& options);
/// Adds the data set of a DATA that is no graph to a graph that was loaded.
void AddDataSet(TxyGraph& graph, const TDataOptions& options);
/// The data set that the options choose in a graph that was loaded by them.
TSeries& ChosenSeries(TxyGraph& graph, const TDataOptions& options);

/// The same with all rows of its source where the graph holds only some; a message says when they can not be
/// read.
TSeries& ChosenSeriesWhole(TxyGraph& graph, const TDataOptions& options);

/// The data set that DATA names, with the graph that it lives in. Text files are read without a graph.
class TDataInput {
public:
    explicit TDataInput(const TDataOptions& options);
    TDataSeries& Series() const { return *m_series; }
    /// The points in order, with the X that they have in the plot.
    const std::vector<double>& X() const { return m_x; }
    const std::vector<double>& Y() const { return m_y; } ///< raw
    const std::vector<double>& CorrectedY() const { return m_corrected; }
    /// The standard error of each Y, 0 for none; empty where there are none.
    const std::vector<double>& YErrors() const { return m_yErrors; }

private:
    std::unique_ptr<TGraphDocument> m_graph;
    std::unique_ptr<TDataSeries> m_textSeries;
    TDataSeries* m_series = nullptr;
    std::vector<double> m_x;
    std::vector<double> m_y;
    std::vector<double> m_corrected;
    std::vector<double> m_yErrors;
};

/// Runs work on the data; an error that does not name them, and is none of a formula, does so afterwards.
void RunOn(const TDataOptions& options, const std::function<void()>& work);

/// The fit in a function file.
std::unique_ptr<TCurFit> LoadFunction(const std::string& name);

} // namespace lumoplot
