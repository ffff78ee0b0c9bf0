#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/data_input.h"
#include "graph/drawing/picture/picture_file.h"
#include "support/number_text.h"

#include <memory>

namespace lumoplot {
namespace {

constexpr QSize kUsualSize(800, 600);

QSize SizeArgument(const std::string& text) {
    const std::size_t cross = text.find_first_of("xX");
    const std::string_view all = text;
    const int width = TryParseInteger(all.substr(0, cross)).value_or(0);
    const int height = cross == std::string::npos ? 0 : TryParseInteger(all.substr(cross + 1)).value_or(0);
    if (width < 1 || height < 1) throw EUsage("--size: '" + text + "' is not of the form WxH");
    return {width, height};
}

struct TRenderCommand {
    TDataOptions data;
    std::string out;
    std::string size;

    void Run() const {
        const std::string extension = Extension(out);
        if (extension != ".png" && extension != ".svg" && extension != ".pdf")
            throw EUsage("OUT: '" + out + "' does not end with .png, .svg or .pdf");
        const QSize pictureSize = size.empty() ? kUsualSize : SizeArgument(size);
        const auto document = LoadGraph(data);
        if (data.set) ShowOnly(document->Graph());
        SaveGraphPicture(document->Graph(), out, pictureSize);
    }

private:
    void ShowOnly(TxyGraph& graph) const {
        const TSeries& chosen = ChosenSeries(graph, data);
        for (const auto& series : graph.Series()) series->SetActive(series == &chosen);
    }
};

} // namespace

void AddRenderCommand(CLI::App& program) {
    const auto render = std::make_shared<TRenderCommand>();
    CLI::App& command = *program.add_subcommand("render", "Draw a graph or a data set as a picture");
    AddDataOptions(command, render->data);
    command.add_option("OUT", render->out, "Picture to write: .png, .svg or .pdf")->required();
    command.add_option("--size", render->size, "Width and height in pixels of 1/96 inch (800x600)")
        ->type_name("WxH");
    command.footer("A graph file is drawn whole; --set draws one data set of it alone.\n"
                   "Example:\n  xydata render run1.csv run1.svg --size 1200x800");
    command.callback([render] { render->Run(); });
}

} // namespace lumoplot
