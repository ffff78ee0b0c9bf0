#include "cli/program.h"
#include "common/random_graph.h"
#include "data/series/ds_info.h"
#include "data/series/series_record.h"
#include "fit/definition/cur_fit.h"
#include "graph/file/graph_file.h"
#include "graph/model/child_graph.h"
#include "support/number_text.h"
#include "support/replace_file.h"

#include <QImage>
#include <QJsonArray>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

class Files : public TFolderTest {
protected:
    static TSeries& AddedTo(TxyGraph& graph) { return *graph.FindSeries(graph.AddSeries()); }

    TRunResult Convert(const std::string& in, const std::string& out, const TArguments& options = {}) const {
        TArguments arguments = {"convert", in, out};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const TRunResult result = RunProgram(arguments);
        EXPECT_EQ(result.status, 0) << result.error;
        return result;
    }
};

/// How a value stands in the object that is printed.
struct TShown {
    QJsonValue operator()(const std::string& value) const { return QString::fromStdString(value); }
    QJsonValue operator()(int value) const { return value; }
    QJsonValue operator()(double value) const {
        return std::isfinite(value) ? QJsonValue(value) : QJsonValue();
    }
    QJsonValue operator()(bool value) const { return value; }
    QJsonValue operator()(const TFontSpec& font) const {
        return QJsonObject{{"Name", QString::fromStdString(font.Name)},
                           {"Size", font.Size},
                           {"Color", font.Color},
                           {"Bold", font.Bold},
                           {"Italic", font.Italic},
                           {"Underline", font.Underline},
                           {"StrikeOut", font.StrikeOut}};
    }
};

template <class T>
void ExpectShown(const QJsonValue& section, std::span<const TSectionRow<T>> rows, const T& object) {
    const QJsonObject fields = section.toObject();
    for (const auto& row : rows) {
        const std::string label(Trimmed(row.label));
        if (!row.write) continue;
        ASSERT_TRUE(fields.contains(QString::fromStdString(label))) << label;
        const QJsonValue shown = fields[QString::fromStdString(label)];
        EXPECT_TRUE(row.get ? shown == std::visit(TShown(), row.get(object)) : shown.isObject()) << label;
    }
}

void ExpectShown(const QJsonObject& shown, const TxyGraph& graph) {
    ExpectShown(shown["Appearance"], AppearanceRows(), *graph.Appearance());
    ExpectShown(shown["Dimensions"], DimensionsRows(), *graph.Dimensions());
    ExpectShown(shown["XAxis"], AxisRows(), *graph.XAxis());
    ExpectShown(shown["YAxis"], AxisRows(), *graph.YAxis());
    ExpectShown(shown["YAxis_Second"], AxisRows(), *graph.YAxis_Second());
    ExpectShown(shown["Legend"], LegendRows(), *graph.Legend());
    int index = 0;
    ASSERT_EQ(shown["Series"].toArray().size(), static_cast<int>(graph.Series().size()));
    for (const auto& series : graph.Series()) {
        const QJsonObject fields = shown["Series"].toArray()[index++].toObject();
        ExpectShown<TSeries>(fields, SeriesRows(), *series);
        ExpectShown<TDataSeries>(fields, SeriesRecordRows(), *series);
        EXPECT_EQ(fields["NumberOfPoints"].toInt(-1), series->Count());
    }
    index = 0;
    ASSERT_EQ(shown["Marks"].toArray().size(), graph.Marks().Count());
    for (const auto& [id, mark] : graph.Marks().Marks())
        ExpectShown(shown["Marks"].toArray()[index++], MarkRows(), mark);
    index = 0;
    ASSERT_EQ(shown["ChildGraphs"].toArray().size(), graph.ChildGraphCount());
    for (const auto& child : graph.ChildGraphs())
        ExpectShown(shown["ChildGraphs"].toArray()[index++].toObject(), *child);
}

TEST_F(Files, InfoShowsEveryKeyOfASavedGraph) {
    TRandom random(7);
    for (int round = 0; round < 3; ++round) {
        TxyGraph graph;
        FillRandomly(graph, random);
        graph.SaveTemplate(NameOf("graph.ltp"), TPoints::Include);
        TxyGraph saved; // what a reader makes of the file
        saved.LoadFromFile(NameOf("graph.ltp"));
        const QJsonObject shown = RunForJson({"info", NameOf("graph.ltp")});
        EXPECT_EQ(shown["kind"].toString(), "graph");
        ExpectShown(shown, saved);
    }
}

TEST_F(Files, AGraphFileIsKnownByItsContent) {
    TxyGraph graph;
    AddedTo(graph).SetSeriesName("Run 1");
    graph.SaveTemplate(NameOf("graph.dat"), TPoints::Include);
    SaveSeriesToFile(*graph.FirstSeries(), NameOf("series"));
    EXPECT_EQ(RunForJson({"info", NameOf("graph.dat")})["kind"].toString(), "graph");
    EXPECT_EQ(RunForJson({"info", NameOf("series")})["kind"].toString(), "data set");
}

TEST_F(Files, InfoTellsWhatTheImportFound) {
    const QJsonObject shown =
        RunForJson({"info", WithText("a.txt", "Lab 3\nt;U (V)\n0;1,5\n1;x\n2;2,5\n3;4\n4;5\n")});
    EXPECT_EQ(shown["kind"].toString(), "text");
    EXPECT_EQ(shown["Separators"].toString(), ";");
    EXPECT_EQ(shown["DecimalSign"].toString(), ",");
    EXPECT_EQ(shown["HeaderRows"].toInt(), 2);
    EXPECT_EQ(shown["Columns"].toArray()[1].toObject()["Name"].toString(), "U (V)");
    EXPECT_EQ(shown["NumberOfPoints"].toInt(), 4);
    EXPECT_EQ(shown["RowsSkipped"].toInt(), 1);
}

TEST_F(Files, NoFileDrivesTheTerminal) {
    TxyGraph graph;
    AddedTo(graph).SetSeriesName("a\x1B[31m\nNumberOfPoints: 7");
    SaveSeriesToFile(*graph.FirstSeries(), NameOf("a.lds"));
    const TRunResult result = RunProgram({"info", NameOf("a.lds")});
    EXPECT_EQ(result.out.find('\x1B'), std::string::npos);
    EXPECT_NE(result.out.find("SeriesName: a\\x1b[31m\\nNumberOfPoints: 7\n"), std::string::npos);
    EXPECT_EQ(RunForJson({"info", NameOf("a.lds")})["Series"].toObject()["SeriesName"].toString(),
              "a\x1B[31m\nNumberOfPoints: 7");
}

TEST_F(Files, TextKeepsEveryBitOfThePoints) {
    const double values[] = {
        -1.7976931348623157e308, -1.0 / 3, -5e-324, 0.1, 0.30000000000000004, 1.0000000000000002,
        123456789012345680.0,    1e23};
    TxyGraph graph;
    TSeries& series = AddedTo(graph);
    for (const double value : values) series.AddPoint(value, -value);
    SaveSeriesToFile(series, NameOf("a.lds"));
    for (const char* text : {"a.dat", "a.csv", "a.txt"}) {
        Convert(NameOf("a.lds"), NameOf(text));
        Convert(NameOf(text), NameOf("b.lds"), {"--text"});
        TSeries& back = AddedTo(graph);
        LoadSeriesFromFile(back, NameOf("b.lds"));
        TPointCursor point = back.First();
        for (const double value : values) {
            ASSERT_TRUE(point) << text << value;
            EXPECT_EQ(point.X(), value) << text;
            EXPECT_EQ(point.Y(), -value) << text;
            point = point.Next();
        }
        EXPECT_FALSE(point);
    }
}

TEST_F(Files, TheTextFormHasOneHeaderLineWithQuotesWhereNeeded) {
    TxyGraph graph;
    graph.YAxis()->SetTitle("Voltage, V");
    TSeries& series = AddedTo(graph);
    series.SetSeriesName("the \"first\"");
    series.AddPoint(2, std::numeric_limits<double>::quiet_NaN());
    series.AddPoint(1, 1e-7);
    graph.SaveTemplate(NameOf("a.ltp"), TPoints::Include);
    Convert(NameOf("a.ltp"), NameOf("a.dat"));
    Convert(NameOf("a.ltp"), NameOf("a.CSV"));
    EXPECT_EQ(ContentOf(NameOf("a.dat")), "\"the \"\"first\"\"\"\tVoltage, V\n1\t1e-07\n2\t-nan\n");
    EXPECT_EQ(ContentOf(NameOf("a.CSV")), "X,\"the \"\"first\"\"\"\n1,1e-07\n2,-nan\n");
}

TEST_F(Files, ColumnsThatWereWrittenAreReadUnderTheirNames) {
    const std::pair<const char*, const char*> names[] = {
        {"Time, s", "Run 1"}, {"t;u", "12.5"}, {"X axis", "2024"}, {"Zeit \"s\"", "a\tb"}, {"", ""}};
    for (const auto& [x, y] : names)
        for (const char* file : {"a.csv", "a.txt"}) {
            SCOPED_TRACE(std::string(y) + file);
            TxyGraph graph;
            graph.XAxis()->SetTitle(x);
            TSeries& series = AddedTo(graph);
            series.SetSeriesName(y);
            for (int i = 0; i < 5; ++i) series.AddPoint(1000 + i, 0.5 * i);
            graph.SaveTemplate(NameOf("a.ltp"), TPoints::Include);
            Convert(NameOf("a.ltp"), NameOf(file));
            const QJsonObject info = RunForJson({"info", NameOf(file)});
            EXPECT_EQ(info["NumberOfPoints"].toInt(), 5);
            const std::string expectedX = std::string(x) == "X axis" || !*x ? "X" : x;
            const std::string expectedY = !*y ? "Y axis" : std::string(y) == "a\tb" ? "a b" : y;
            const QJsonArray columns = info["Columns"].toArray();
            EXPECT_EQ(columns[0].toObject()["Name"].toString().toStdString(), expectedX);
            EXPECT_EQ(columns[1].toObject()["Name"].toString().toStdString(), expectedY);
        }
}

TEST_F(Files, RewritingInTextAndBackGivesTheSameFile) {
    TRandom random(11);
    TxyGraph graph;
    FillRandomly(graph, random);
    TCurFit fit;
    fit.SetExpression("a*x");
    fit.AddParameter(std::make_unique<TDBLParameter>());
    TBytes bytes;
    TxyWriter writer(bytes);
    fit.SaveToStream(writer);
    ReplaceFile(NameOf("a.lfn"), bytes);
    graph.SaveTemplate(NameOf("a.ltp"), TPoints::Include);
    SaveSeriesToFile(AddedTo(graph), NameOf("a.lds"));
    for (const char* extension : {".ltp", ".lds", ".lfn"}) {
        const auto name = [&](const char* stem) { return NameOf((stem + std::string(extension)).c_str()); };
        Convert(name("a"), name("compact"));
        Convert(name("a"), name("text"), {"--text"});
        Convert(name("text"), name("back"));
        EXPECT_TRUE(ContentOf(name("back")) == ContentOf(name("compact"))) << extension;
        EXPECT_TRUE(ContentOf(name("text")) != ContentOf(name("compact"))) << extension;
    }
}

TEST_F(Files, ATemplateStaysATemplate) {
    TxyGraph graph;
    AddedTo(graph).AddPoint(1, 1);
    graph.Appearance()->SetCurrSerIndex(1);
    graph.SaveTemplate(NameOf("template.ltp"), TPoints::LeaveOut);
    Convert(NameOf("template.ltp"), NameOf("again.ltp"));
    EXPECT_TRUE(ContentOf(NameOf("again.ltp")) == ContentOf(NameOf("template.ltp")));
}

TEST_F(Files, TheCurrentOrTheChosenDataSetOfAGraphIsTaken) {
    TxyGraph graph;
    for (const double y : {10.0, 20.0, 30.0}) {
        TSeries& series = AddedTo(graph);
        series.AddPoint(0, 0);
        series.AddPoint(1, y);
    }
    graph.Appearance()->SetCurrSerIndex(2);
    graph.SaveTemplate(NameOf("a.ltp"), TPoints::Include);
    Convert(NameOf("a.ltp"), NameOf("current.csv"));
    Convert(NameOf("a.ltp"), NameOf("third.csv"), {"--set", "3"});
    EXPECT_TRUE(ContentOf(NameOf("current.csv")).ends_with("1,20\n"));
    EXPECT_TRUE(ContentOf(NameOf("third.csv")).ends_with("1,30\n"));
    EXPECT_EQ(RunForJson({"stats", NameOf("a.ltp")})["y"].toObject()["sum"].toInt(), 20);
    EXPECT_EQ(RunProgram({"stats", NameOf("a.ltp"), "--set", "4"}).status, 1);
}

TEST_F(Files, AConvertedTextFileStandsAlone) {
    Convert(WithText("a.csv", "t,U\n1,2\n1,3\n2,4\n"), NameOf("a.lds"));
    TxyGraph graph;
    TSeries& series = AddedTo(graph);
    LoadSeriesFromFile(series, NameOf("a.lds"));
    EXPECT_EQ(series.Count(), 3);
    EXPECT_TRUE(series.DuplicatesAllowed());
    EXPECT_EQ(series.SeriesName(), "U");
    TDSInfo none;
    none.SetSamplingChosen(true); // as the file says
    EXPECT_EQ(series.DataSourceInfo(), none);
}

TEST_F(Files, PicturesHaveTheirSizeAndShowTheData) {
    const std::string data = WithText("a.csv", "x,y\n0,0\n1,1\n2,4\n3,9\n");
    ASSERT_EQ(RunProgram({"render", data, NameOf("a.png"), "--size", "400x300"}).status, 0);
    const QImage picture(QString::fromStdString(NameOf("a.png")));
    EXPECT_EQ(picture.size(), QSize(400, 300));
    int coloured = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) coloured += picture.pixelColor(x, y).saturation() > 128;
    EXPECT_GT(coloured, 100);
}

TEST_F(Files, PicturesForPrintHaveTheirWidthAndResolution) {
    const std::string data = WithText("a.csv", "x,y\n0,0\n1,1\n2,4\n");
    const std::vector<std::string> column = {"--width-mm", "85", "--dpi", "600", "--transparent"};
    const auto render = [&](const char* out) {
        std::vector<std::string> arguments{"render", data, NameOf(out)};
        arguments.insert(arguments.end(), column.begin(), column.end());
        return RunProgram(arguments).status;
    };
    ASSERT_EQ(render("a.png"), 0);
    const QImage picture(QString::fromStdString(NameOf("a.png")));
    EXPECT_EQ(picture.size(), QSize(2008, 1506)); // 85 mm and three quarters of it
    EXPECT_NEAR(picture.dotsPerMeterX(), 600 / 0.0254, 1);
    EXPECT_EQ(qAlpha(picture.pixel(3, 3)), 0);
    EXPECT_EQ(qAlpha(picture.pixel(1300, 300)), 0); // inside the plot
    ASSERT_EQ(render("a.svg"), 0);
    const std::string svg = ContentOf(NameOf("a.svg"));
    EXPECT_NE(svg.find("width=\"85"), std::string::npos) << svg.substr(0, 300);
    EXPECT_NE(svg.find("viewBox=\"0 0 480 360\""), std::string::npos);
}

TEST_F(Files, OnePictureShowsSeveralFilesAndColumns) {
    const std::string one = WithText("one.csv", "x,low,high\n0,0,5\n1,1,7\n2,4,9\n");
    const std::string two = WithText("two.csv", "x,low,high\n0,1,6\n1,2,8\n2,5,9\n");
    const auto texts = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "render");
        arguments.push_back(NameOf("all.svg"));
        EXPECT_EQ(RunProgram(arguments).status, 0);
        return ContentOf(NameOf("all.svg"));
    };
    const std::string columns = texts({one, "--columns", "1,2,3"});
    for (const char* name : {">low<", ">high<"}) EXPECT_NE(columns.find(name), std::string::npos) << name;
    const std::string files = texts({one, two, "--columns", "1,3"});
    for (const char* name : {">one<", ">two<"}) EXPECT_NE(files.find(name), std::string::npos) << name;
    const std::string both = texts({one, two, "--columns", "1,2,3", "--axis-range", "y=-100:200"});
    for (const char* name : {">one: low<", ">two: high<", ">200<"})
        EXPECT_NE(both.find(name), std::string::npos) << name;
    for (const char* range : {"z=0:1", "x=1", "x=2:1", "x=0:inf", "y=a:b"})
        EXPECT_EQ(RunProgram({"render", one, NameOf("no.png"), "--axis-range", range}).status, 2) << range;
}

// On Windows more than its code page holds, too.
TEST_F(Files, NamesAndTextsOfAnyAlphabetAreTaken) {
    const std::string data =
        WithText("Gr\u00F6\u00DFe \u03B1 \u65E5.csv", "t,U \xB5V\n1,2\n2,3\n"); // code page 1252
    const std::string saved = NameOf("\u4E00 \u20AC.ltp");
    Convert(data, saved);
    const TRunResult info = RunProgram({"info", saved});
    EXPECT_EQ(info.status, 0) << info.error;
    EXPECT_NE(info.out.find("U \u00B5V"), std::string::npos) << info.out;
    const std::string missing = NameOf("\u03B1.csv");
    const TRunResult failed = RunProgram({"info", missing});
    EXPECT_NE(failed.error.find("\u03B1.csv"), std::string::npos) << failed.error;
}

} // namespace
} // namespace lumoplot
