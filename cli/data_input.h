// Input files of the commands: what kind a file is, and the graph or the data set in it. Errors name the
// file.
#pragma once

#include "cli/offscreen.h"
#include "graph/graph.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <string>

namespace lumoplot {

enum class TFileKind { Graph, DataSet, Function, Text };

/// By the name's extension where it is one of the system's own, else by how the content begins.
/// Throws EFileError for a file that cannot be read.
TFileKind KindOfFile(const std::string& name);
/// The kind that a file of that name is written as: nothing for an extension that is none of .ltp, .lds,
/// .lfn, .dat, .csv and .txt.
std::optional<TFileKind> KindByExtension(const std::string& name);

/// The arguments that name a data set.
struct TDataOptions {
    std::string file;
    std::optional<int> set; ///< number of the data set in a graph file; none: the current one
};
void AddDataOptions(CLI::App& command, TDataOptions& options);

/// A graph with the application object that it needs.
class TGraphDocument {
public:
    TxyGraph& Graph() { return m_graph; }

private:
    TOffscreenApplication m_application;
    TxyGraph m_graph;
};

/// The graph in a graph file, or one with the data set of any other DATA.
std::unique_ptr<TGraphDocument> LoadGraph(const TDataOptions& options);
/// The data set that the options choose in a graph that was loaded by them.
TSeries& ChosenSeries(const TxyGraph& graph, const TDataOptions& options);

/// The fit in a function file.
std::unique_ptr<TCurFit> LoadFunction(const std::string& name);

} // namespace lumoplot
