#include "cli/program.h"
#include "common/places.h"
#include "data/series/ds_info.h"
#include "graph/loading/source_loading.h"

#include <QFile>
#include <QJsonArray>

namespace lumoplot {
namespace {

class Data : public TFolderTest {};

TEST_F(Data, StatisticsOfXAndY) {
    const QJsonObject all = RunForJson({"stats", WithText("a.csv", "x,y\n1,4\n2,3\n3,2\n4,1\n")});
    for (const char* axis : {"x", "y"}) {
        const QJsonObject values = all[axis].toObject();
        const std::pair<const char*, double> expected[] = {{"count", 4},
                                                           {"sum", 10},
                                                           {"quantile25", 1},
                                                           {"variance", 5.0 / 3},
                                                           {"kurtosis", 41.0 / 400 - 3}};
        for (const auto& [name, value] : expected)
            EXPECT_DOUBLE_EQ(values[name].toDouble(-1), value) << axis << ' ' << name;
        EXPECT_EQ(values["message"].toString(), "");
    }
}

TEST_F(Data, TheToleranceDecidesTheMode) {
    const std::string file = WithText("a.csv", "1,10\n2,20\n3,20.5\n4,21\n5,30\n");
    EXPECT_EQ(RunForJson({"stats", file, "--tolerance", "1"})["y"].toObject()["mode"].toDouble(), 21);
}

// A graph that was saved while it showed every fourth row.
TEST_F(Data, FiguresOfAThinnedGraphAreOfEveryRow) {
    std::string rows;
    for (int i = 0; i < 2000; ++i) rows += std::to_string(i) + ',' + std::to_string(i % 7) + '\n';
    const std::string source = WithText("long.csv", rows);
    const std::string name = NameOf("thin.ltp");
    TxyGraph graph;
    TSeries& series = *graph.FindSeries(graph.AddSeries());
    series.DataSourceInfo().SetKind(TSourceKind::TextFile);
    series.DataSourceInfo().SetSourceName(source);
    series.DataSourceInfo().SetAutoRowHitFreq(true);
    TSilentProgress progress;
    LoadFromSource(series, progress, {.Budget = 500});
    graph.SaveTemplate(name, TPoints::Include);
    EXPECT_EQ(RunForJson({"stats", name})["y"].toObject()["count"].toDouble(), 2000);
    EXPECT_EQ(RunProgram({"convert", name, NameOf("all.csv")}).status, 0);
    EXPECT_EQ(RunForJson({"stats", NameOf("all.csv")})["y"].toObject()["count"].toDouble(), 2000);
    QFile::remove(QString::fromStdString(source));
    const TRunResult result = RunProgram({"stats", name});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.error.find("what follows is drawn from 500 of about 2"), std::string::npos)
        << result.error;
}

TEST_F(Data, AReadingIsTakenByTheWordsThatDescribeIt) {
    const std::pair<const char*, double> cases[] = {
        {"1,5\n2,5\n3,5\n", 2.5 * 3},                                 // one column with decimal commas
        {"x\ty\n1\t8,689\n2\t7,221\n", 8689 + 7221},                  // groups
        {"1;2\n0.10;2.50\n0.75;1.50\n1.00;0.25\n1.25;3.75\n", 2 + 8}, // no header rows
        {"0;1\n0.1;1.5\n0.2;2.5\n0.3;3.75\n0.4;4.5\n", 12.25},        // 1 header row
    };
    for (const auto& [text, sum] : cases) {
        const std::string file = WithText("a.txt", text);
        const QString other = RunForJson({"info", file})["OtherReading"].toString();
        for (const std::string& words : {std::string("other"), other.toStdString()})
            EXPECT_DOUBLE_EQ(
                RunForJson({"stats", file, "--read-as", words})["y"].toObject()["sum"].toDouble(), sum)
                << text << words;
    }
    const TRunResult wrong = RunProgram({"stats", WithText("a.txt", "1;2\n"), "--read-as", "0 header rows"});
    EXPECT_EQ(wrong.status, 2);
    EXPECT_TRUE(IsOneMessage(wrong.error)) << wrong.error;
}

// The sum of Y tells which rows and columns were read.
TEST_F(Data, TextOptionsChooseRowsAndColumns) {
    const std::string file = WithText("a.txt", "t;u;v\n1;10;100\n1;20;200\n2;30;300\n3;40;400\n");
    const std::pair<TArguments, double> cases[] = {
        {{}, 100},
        {{"--columns", "1,3"}, 1000},
        {{"--columns", "t,V"}, 1000},
        {{"--columns", "0,2"}, 100},
        {{"--merge"}, 90},
        {{"--every", "2"}, 40},
        {{"--header-rows", "2"}, 90},
    };
    for (const auto& [options, sum] : cases) {
        TArguments arguments = {"stats", file};
        arguments.insert(arguments.end(), options.begin(), options.end());
        EXPECT_EQ(RunForJson(arguments)["y"].toObject()["sum"].toDouble(), sum)
            << testing::PrintToString(options);
    }
    const std::string tabs = WithText("tabs.txt", "1\t2,5\n2\t3,5\n");
    EXPECT_EQ(RunForJson({"stats", tabs, "--separators", "\\t"})["y"].toObject()["sum"].toDouble(), 6);
    EXPECT_EQ(RunForJson({"stats", tabs, "--separators", "\\t,"})["y"].toObject()["sum"].toDouble(), 5);
}

TEST_F(Data, ASheetIsReadOfASpreadsheet) {
    const std::string file = SourceFile("tests/data_files/levels.xlsx");
    EXPECT_EQ(RunForJson({"stats", file})["y"].toObject()["sum"].toDouble(), 88);
    for (const TArguments& arguments :
         {TArguments{"stats", file, "--sheet", "Runs"}, {"stats", file + "#Runs"}})
        EXPECT_EQ(RunForJson(arguments)["y"].toObject()["sum"].toDouble(), 27.5);
    const QJsonObject info = RunForJson({"info", file});
    EXPECT_EQ(info["Sheet"].toString(), "Days");
    EXPECT_EQ(info["Sheets"].toArray().size(), 3);
    EXPECT_NE(RunProgram({"stats", file, "--sheet", "None"}).error.find("has no sheet \"None\""),
              std::string::npos);
}

TEST_F(Data, SkippedRowsAreToldAndTheRestIsUsed) {
    const TRunResult result = RunProgram({"stats", WithText("a.csv", "x,y\n1,2\n2,abc\n3,4\n4,6\n5,7\n")});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(IsOneMessage(result.error)) << result.error;
    EXPECT_NE(result.error.find("1 row was skipped, the first: row 3: 'abc'"), std::string::npos)
        << result.error;
    EXPECT_NE(result.out.find("count: 4"), std::string::npos);
}

TEST_F(Data, RegressionsGiveCoefficientsAndDerivedValues) {
    const std::string file = WithText("a.csv", "x,y\n0,1\n1,3\n2,5\n4,9\n");
    for (const char* type : {"1", "2", "3"}) {
        const QJsonObject line = RunForJson({"regress", file, "--type", type});
        EXPECT_NEAR(line["c0"].toDouble(), 1, 1e-12) << type;
        EXPECT_NEAR(line["c1"].toDouble(), 2, 1e-12) << type;
        EXPECT_NEAR(line["c2"].toDouble(-1), 0, 1e-12) << type;
        EXPECT_EQ(line["x"].toArray(), QJsonArray({0, 1, 2, 4})) << type;
        EXPECT_NEAR(line["derived"].toArray()[3].toDouble(), 9, 1e-12) << type;
    }
    EXPECT_EQ(RunProgram({"regress", file, "--type", "6", "--value2", "1"}).out, "0\t1\n1\t3\n2\t5\n4\t9\n");
    EXPECT_EQ(RunProgram({"regress", file, "--type", "7", "--value2", "0.5"}).out,
              "0\t1\n1\t2\n2\t4\n4\t7\n");
}

TEST_F(Data, WhatHasNoResultFailsAndSaysWhy) {
    struct TCase {
        const char* text;
        TArguments arguments; ///< behind which the file comes
        const char* reason;
    };
    const char* tied = "0,1\n1,3\n2,5\n2,6\n4,9\n"; // wherever they stand
    const TCase cases[] = {
        {tied, {"regress", "--type", "4"}, "there is no spline through points with equal X"},
        {"0,1\n1,2\n2,4\n", {"regress", "--type", "4", "--value1", "0"}, "there is no curve of 0 samples"},
        {"1,4\n", {"regress", "--type", "4"}, "there are too few points with different X"},
        {"1,4\n", {"stats"}, "No Statistics are available unless more than one point exists"},
    };
    for (const TCase& c : cases) {
        TArguments arguments = c.arguments;
        arguments.push_back(WithText("a.csv", c.text));
        const TRunResult result = RunProgram(arguments);
        EXPECT_EQ(result.status, 1) << c.reason;
        EXPECT_EQ(result.out, "") << c.reason;
        EXPECT_NE(result.error.find(c.reason), std::string::npos) << result.error;
    }
}

} // namespace
} // namespace lumoplot
