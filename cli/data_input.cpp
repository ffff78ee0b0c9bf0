#include "cli/data_input.h"

#include "cli/arguments.h"
#include "fit/cur_fit.h"
#include "graph/graph_file.h"
#include "support/errors.h"
#include "support/replace_file.h"

#include <algorithm>
#include <cctype>
#include <map>

namespace lumoplot {
namespace {

std::string Extension(const std::string& name) {
    const std::size_t dot = name.find_last_of("./\\");
    if (dot == std::string::npos || name[dot] != '.') return "";
    std::string extension = name.substr(dot);
    for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return extension;
}

// Runs `load`; errors that do not name the file do so afterwards.
template <class TLoad>
auto Loading(const std::string& name, TLoad&& load) {
    try {
        return load();
    } catch (const ELumoError& error) {
        const std::string text = error.what();
        if (text.find(name) != std::string::npos) throw;
        throw EFileError(name + ": " + text);
    }
}

// The first key of a section, or the signature: all kinds of own files begin with a short string.
std::string FirstString(const std::string& name) {
    const TBytes bytes = ReadWholeFile(name);
    TByteSource source(bytes);
    try {
        return TxyReader(source).ReadBareString();
    } catch (const EStreamError&) {
        return "";
    }
}

std::optional<TFileKind> KindByFirstString(const std::string& text) {
    if (text.starts_with("xygg")) return TFileKind::Graph;
    if (text == "99S") return TFileKind::DataSet;
    if (text == "39C" || text == "CurFit39S") return TFileKind::Function;
    return std::nullopt;
}

} // namespace

std::optional<TFileKind> KindByExtension(const std::string& name) {
    static const std::map<std::string, TFileKind> kKinds = {
        {".ltp", TFileKind::Graph}, {".lds", TFileKind::DataSet}, {".lfn", TFileKind::Function},
        {".dat", TFileKind::Text},  {".csv", TFileKind::Text},    {".txt", TFileKind::Text}};
    const auto kind = kKinds.find(Extension(name));
    return kind == kKinds.end() ? std::nullopt : std::optional(kind->second);
}

TFileKind KindOfFile(const std::string& name) {
    const auto kind = KindByExtension(name);
    if (kind && kind != TFileKind::Text) return *kind;
    return KindByFirstString(FirstString(name)).value_or(TFileKind::Text);
}

void AddDataOptions(CLI::App& command, TDataOptions& options) {
    command.add_option("DATA", options.file, "Data set (.lds), graph (.ltp) or text file")->required();
    AddCount(command, "--set", options.set, 1, "Data set of a graph file (the current one)");
}

std::unique_ptr<TGraphDocument> LoadGraph(const TDataOptions& options) {
    auto document = std::make_unique<TGraphDocument>();
    TxyGraph& graph = document->Graph();
    Loading(options.file, [&] {
        switch (KindOfFile(options.file)) {
        case TFileKind::Graph: return graph.LoadFromFile(options.file);
        case TFileKind::DataSet:
            return LoadSeriesFromFile(*graph.FindSeries(graph.AddSeries()), options.file);
        case TFileKind::Function: throw EFileError(options.file + " is a function file and holds no data");
        case TFileKind::Text: throw EFileError(options.file + " is no graph and no data set");
        }
    });
    return document;
}

TSeries& ChosenSeries(const TxyGraph& graph, const TDataOptions& options) {
    const int number = options.set.value_or(graph.Appearance()->CurrSerIndex());
    TSeries* series = graph.FindSeries(number);
    if (!series && graph.Series().empty()) throw EFileError(options.file + " holds no data set");
    if (!series) throw EFileError(options.file + " holds no data set " + std::to_string(number));
    return *series;
}

std::unique_ptr<TCurFit> LoadFunction(const std::string& name) {
    return Loading(name, [&] {
        const TBytes bytes = ReadWholeFile(name);
        TByteSource source(bytes);
        TxyReader reader(source);
        auto fit = std::make_unique<TCurFit>();
        fit->LoadFromStream(reader);
        return fit;
    });
}

} // namespace lumoplot
