#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/data_input.h"
#include "fit/definition/cur_fit.h"
#include "graph/file/graph_file.h"
#include "graph/model/child_graph.h"
#include "graph/plotted/series_text.h"
#include "support/errors.h"
#include "support/message_sink.h"
#include "support/replace_file.h"
#include "support/system_path.h"

#include <filesystem>
#include <memory>

namespace lumoplot {
namespace {

// A file without points and data directory was saved as a template and stays one.
bool HoldsData(const TxyGraph& graph) {
    return !graph.Appearance()->DataDirectory().empty() ||
           std::any_of(graph.Series().begin(), graph.Series().end(),
                       [](const auto& series) { return series->Count() > 0; }) ||
           std::any_of(graph.ChildGraphs().begin(), graph.ChildGraphs().end(),
                       [](const auto& child) { return HoldsData(*child); });
}

struct TConvertCommand {
    TDataOptions data;
    std::string out;
    bool text = false;

    void Run() const {
        const auto kind = KindByExtension(out);
        if (!kind) throw EUsage("OUT: '" + out + "' does not end with .ltp, .lds, .lfn, .dat, .csv or .txt");
        if (text && kind == TFileKind::Text) throw EUsage("--text is for .ltp, .lds and .lfn files");
        if (data.set && kind == TFileKind::Graph) throw EUsage("--set is for files of one data set");
        if (kind != TFileKind::Graph && IsTheData())
            throw EUsage("OUT: '" + out + "' is DATA itself and would lose what is not converted");
        SetCompactStreams(!text);
        if (kind == TFileKind::Function)
            WriteFunction();
        else
            WriteGraphOrSeries(*kind);
    }

private:
    bool IsTheData() const {
        std::error_code unknown; // of names that are no files
        return std::filesystem::equivalent(SystemPath(data.file), SystemPath(out), unknown);
    }

    void WriteFunction() const {
        if (KindOfFile(data.file) != TFileKind::Function)
            throw EFileError(data.file + " is no function file: only one can become another");
        TBytes bytes;
        TxyWriter writer(bytes);
        LoadFunction(data.file)->SaveToStream(writer);
        ReplaceFile(out, bytes);
    }

    void WriteGraphOrSeries(TFileKind kind) const {
        const auto document = LoadGraph(data);
        TxyGraph& graph = document->Graph();
        if (kind == TFileKind::Graph)
            graph.SaveTemplate(out, HoldsData(graph) ? TPoints::Include : TPoints::LeaveOut);
        else if (kind == TFileKind::DataSet)
            SaveSeriesToFile(ChosenSeriesWhole(graph, data), out);
        else
            WriteText(ChosenSeriesWhole(graph, data));
    }

    void WriteText(const TSeries& series) const {
        const std::string lost = SaveSeriesAsText(series, out);
        if (!lost.empty()) ShowMessage(out + ": " + lost, TMessageKind::Warning);
    }
};

} // namespace

void AddConvertCommand(CLI::App& program) {
    const auto convert = std::make_shared<TConvertCommand>();
    CLI::App& command = *program.add_subcommand("convert", "Write a file in another format");
    AddDataOptions(command, convert->data);
    command.add_option("OUT", convert->out, "File to write; its extension says the format")->required();
    command.add_flag("--text", convert->text, "Write .ltp, .lds and .lfn in the text encoding");
    command.callback([convert] { convert->Run(); });
}

} // namespace lumoplot
