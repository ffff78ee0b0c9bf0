#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/data_input.h"
#include "graph/drawing/picture/drawing.h"
#include "graph/model/appearance.h"
#include "graph/model/axis.h"
#include "graph/model/settings.h"
#include "support/number_text.h"

#include <QFileInfo>
#include <cmath>
#include <memory>
#include <utility>

namespace lumoplot {
namespace {

constexpr QSize kUsualSize(800, 600);
constexpr QSize kColumnSize(480, 360); // a layout whose texts can be read in a column
constexpr double kMillimetresPerInch = 25.4;
constexpr double kUnitsPerInch = 96;
constexpr double kUsualPrintResolution = 300;

QSize SizeArgument(const std::string& text) {
    const std::size_t cross = text.find_first_of("xX");
    const std::string_view all = text;
    const int width = TryParseInteger(all.substr(0, cross)).value_or(0);
    const int height = cross == std::string::npos ? 0 : TryParseInteger(all.substr(cross + 1)).value_or(0);
    if (width < 1 || height < 1) throw EUsage("--size: '" + text + "' is not of the form WxH");
    return {width, height};
}

TAxis& AxisNamed(TxyGraph& graph, const std::string& name) {
    if (name == "x") return *graph.XAxis();
    if (name == "y") return *graph.YAxis();
    if (name == "y2") return *graph.YAxis_Second();
    throw EUsage("--axis-range: '" + name + "' is not x, y or y2");
}

void SetRange(TxyGraph& graph, const std::string& text) {
    const std::size_t equals = text.find('=');
    const std::size_t colon = text.find(':', equals);
    if (equals == std::string::npos || colon == std::string::npos)
        throw EUsage("--axis-range: '" + text + "' is not of the form AXIS=MIN:MAX");
    TAxis& axis = AxisNamed(graph, text.substr(0, equals));
    const double min = NumberArgument("--axis-range", text.substr(equals + 1, colon - equals - 1));
    const double max = NumberArgument("--axis-range", text.substr(colon + 1));
    if (!(min < max) || !std::isfinite(max - min))
        throw EUsage("--axis-range: '" + text + "' has no finite MIN below MAX");
    axis.SetMin(min);
    axis.SetMax(max);
    axis.SetMin(min); // the first one was refused where it lay above the old end
}

struct TRenderCommand {
    TDataOptions data;
    std::vector<std::string> files; ///< the last one is the picture
    std::string size;
    std::optional<double> widthMm;
    std::optional<double> dpi;
    std::vector<std::string> ranges;
    bool transparent = false;

    void Run() {
        const std::string out = PictureName();
        const QSize layout = LayoutSize();
        const TPictureOptions options = Options();
        const auto document = Load();
        TxyGraph& graph = document->Graph();
        if (data.set) ShowOnly(graph);
        for (const std::string& range : ranges) SetRange(graph, range);
        SaveGraphPicture(graph, out, layout, options);
    }

private:
    std::string PictureName() {
        if (files.size() < 2) throw EUsage("render: DATA and OUT are required");
        const std::string out = files.back();
        const std::string extension = Extension(out);
        if (extension != ".png" && extension != ".svg" && extension != ".pdf")
            throw EUsage("OUT: '" + out + "' does not end with .png, .svg or .pdf");
        return out;
    }

    QSize LayoutSize() const {
        if (!size.empty()) return SizeArgument(size);
        return widthMm ? kColumnSize : kUsualSize;
    }

    TPictureOptions Options() const {
        if ((widthMm && !(*widthMm > 0)) || (dpi && !(*dpi > 0)))
            throw EUsage("--width-mm and --dpi must be above 0");
        TPictureOptions options;
        if (widthMm)
            options.PaperScale = *widthMm / kMillimetresPerInch * kUnitsPerInch / LayoutSize().width();
        const double resolution = dpi.value_or(widthMm ? kUsualPrintResolution : kUnitsPerInch);
        options.PixelsPerUnit = resolution / kUnitsPerInch * options.PaperScale;
        if (transparent) options.Background = TBackground::LeaveOut;
        return options;
    }

    // Every column of every file is a data set of its own.
    std::unique_ptr<TGraphDocument> Load() {
        const std::vector<std::string> more = std::exchange(data.text.moreYColumns, {});
        std::vector<std::string> columns{data.text.yColumn};
        columns.insert(columns.end(), more.begin(), more.end());
        std::unique_ptr<TGraphDocument> document;
        for (std::size_t i = 0; i + 1 < files.size(); ++i)
            for (const std::string& column : columns) {
                data.file = files[i];
                data.text.yColumn = column;
                if (document)
                    AddDataSet(document->Graph(), data);
                else
                    document = LoadGraph(data);
                if (files.size() > 2 && KindOfFile(data.file) != TFileKind::Graph)
                    NameAfterFile(document->Graph(), columns.size() > 1);
            }
        if (files.size() > 2 || columns.size() > 1) ShowSeveral(document->Graph());
        return document;
    }

    void NameAfterFile(TxyGraph& graph, bool andColumn) const {
        TSeries& series = *graph.Series().back();
        const std::string file =
            QFileInfo(QString::fromStdString(data.file)).completeBaseName().toStdString();
        series.SetSeriesName(andColumn ? file + ": " + series.SeriesName() : file);
    }

    // The names that the first file gave the graph and its Y axis do not hold for the others.
    void ShowSeveral(TxyGraph& graph) const {
        graph.Legend()->Setvisible(true);
        for (const auto& series : graph.Series()) series->SetShowInLegend(true);
        if (files.size() > 2) graph.Appearance()->SetGraphTitle("");
        graph.YAxis()->SetTitle("");
    }

    void ShowOnly(TxyGraph& graph) const {
        const TSeries& chosen = ChosenSeries(graph, data);
        for (const auto& series : graph.Series()) series->SetActive(series == &chosen);
    }
};

} // namespace

void AddRenderCommand(CLI::App& program) {
    const auto render = std::make_shared<TRenderCommand>();
    CLI::App& command = *program.add_subcommand(
        "render", "Draw a graph or data sets as a picture, the last file that is named");
    command
        .add_option("FILES", render->files,
                    "DATA (.ltp, .lds or text), more data sets, and OUT (.png, .svg, .pdf)")
        ->required();
    AddCount(command, "--set", render->data.set, 1, "Data set of a graph file (all)");
    AddTextOptions(command, render->data.text, TYColumns::Several);
    command
        .add_option(
            "--size", render->size,
            "Width and height of the layout in pixels of 1/96 inch (800x600; 480x360 with --width-mm)")
        ->type_name("WxH");
    AddNumber(command, "--width-mm", render->widthMm,
              "Width on paper: fonts, margins, symbols and lines are scaled together");
    AddNumber(command, "--dpi", render->dpi, "Resolution of a PNG (96; 300 with --width-mm)");
    command.add_option("--axis-range", render->ranges, "Range of an axis (x, y or y2); may be repeated")
        ->type_name("AXIS=MIN:MAX")
        ->allow_extra_args(false);
    command.add_flag("--transparent", render->transparent, "Leave the background out");
    command.footer(
        "A graph file is drawn whole; --set draws one data set of it alone. With --columns X,Y,Y2 each\n"
        "further column is a data set of its own.\n"
        "Examples:\n  xydata render run1.csv run1.svg --size 1200x800\n"
        "  xydata render run1.csv run2.csv both.png --width-mm 85 --dpi 600 --axis-range x=0:10");
    command.callback([render] { render->Run(); });
}

} // namespace lumoplot
