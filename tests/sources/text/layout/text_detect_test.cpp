#include "common/case_file.h"
#include "common/places.h"
#include "sources/text/error_columns.h"
#include "sources/text/loading/text_preview.h"
#include "sources/text/text_fixture.h"

namespace lumoplot {
namespace {

class TextFormat : public TTextFiles {};

const TPoints kTwo = {{1.5, 2.5}, {3, -4}};

/// The points of "1.5,2.5 3,-4".
TPoints PointsIn(const std::string& text) {
    TPoints listed;
    for (const QString& pair : QString::fromStdString(text).split(u' '))
        listed.emplace_back(pair.section(u',', 0, 0).toDouble(), pair.section(u',', 1).toDouble());
    return listed;
}

TEST_F(TextFormat, IsFoundFromTheText) {
    for (const auto& row : ReadCases("text_formats.tsv", 4)) {
        SCOPED_TRACE(row[0]);
        const TTextReport report = LoadThis(row[3]);
        EXPECT_EQ(Describe(report.readings.best.format), row[1]);
        EXPECT_EQ(points, PointsIn(row[2]));
        EXPECT_EQ(report.rowsSkipped, 0);
    }
}

std::string Utf16(std::u16string_view text, bool littleEndian, bool mark) {
    std::string bytes;
    const auto add = [&](char16_t unit) {
        const char low = static_cast<char>(unit & 0xFF);
        const char high = static_cast<char>(unit >> 8);
        bytes += littleEndian ? low : high;
        bytes += littleEndian ? high : low;
    };
    if (mark) add(0xFEFF);
    for (const char16_t unit : text) add(unit);
    return bytes;
}

TEST_F(TextFormat, Utf16IsFoundWithAndWithoutItsMark) {
    for (const bool littleEndian : {false, true})
        for (const bool mark : {false, true}) {
            const auto report =
                LoadThis(Utf16(u"t;\u0394U \U0001F600\r\n1.5;2.5\r\n3;-4\r\n", littleEndian, mark));
            EXPECT_EQ(Describe(report.readings.best.format),
                      std::string("semicolon, decimal point, 1 header row, UTF-16 ") +
                          (littleEndian ? "LE" : "BE"));
            EXPECT_EQ(report.yName, "\u0394U \U0001F600");
            EXPECT_EQ(points, kTwo);
        }
}

TEST_F(TextFormat, BrokenUtf16LosesNoRow) {
    // A lone surrogate in a name, and half a unit at the end of the file.
    const std::string text = Utf16(u"t;\xD800\n1.5;2.5\n3;-4\n", true, true) + "\n";
    EXPECT_EQ(LoadThis(text).yName, "\uFFFD");
    EXPECT_EQ(points, kTwo);
}

TEST_F(TextFormat, TimesOfDayAreAddedToTheDatesBesideThem) {
    LoadThis("Time,Date,v\n06:00,2024-01-31,1\n18:00,2024-01-31,2\n");
    EXPECT_EQ(points, (TPoints{{45322.25, 1}, {45322.75, 2}}));
}

TEST_F(TextFormat, RunnerUpIsNamedWhenItFitsToo) {
    const auto readings = LoadThis("1,5\n2,5\n3,5\n").readings;
    EXPECT_EQ(points.front(), std::pair(1.0, 5.0));
    ASSERT_TRUE(readings.runnerUp);
    EXPECT_EQ(Describe(readings.runnerUp->format), "one column, decimal comma, no header rows, UTF-8");
    EXPECT_FALSE(LoadThis("a;b\n1.5;2.5\n").readings.runnerUp);

    options.wishes.decimalSign = ',';
    LoadThis("1,5\n2,5\n3,5\n");
    EXPECT_EQ(points, (TPoints{{1, 1.5}, {2, 2.5}, {3, 3.5}}));
}

TEST_F(TextFormat, BadRowInFrontOfTheOthersIsNoHeader) {
    for (const char* bad : {"1;oops", "oops;2", "1", "1;"}) {
        const auto report = LoadThis(std::string("t;v\ns;V\n") + bad + "\n2;20\n3;30\n4;40\n");
        EXPECT_EQ(report.rowsSkipped, 1) << bad;
        EXPECT_EQ(report.yName, "v");
    }
    const auto report = LoadThis("Depth;2019;2020\n1.5;10;11\n2.5;12;13\n3.5;14;15\n");
    EXPECT_EQ(report.yName, "2019");
    EXPECT_EQ(report.readings.best.format.headerRows, 1);
}

TEST_F(TextFormat, WhatIsDescribedIsNotSearchedFor) {
    info.SetTextSeparators(" ");
    info.SetFileHasHeaders(2);
    const auto report = LoadThis("1;2 3\n1 2\n5 6\n");
    EXPECT_EQ(points, (TPoints{{5, 6}}));
    EXPECT_EQ(Describe(report.readings.best.format), "blank, decimal point, 2 header rows, UTF-8");
}

TEST_F(TextFormat, HeaderRowsMayReachBeyondTheSample) {
    info.SetFileHasHeaders(20000);
    std::string text;
    for (int i = 0; i < 20000; ++i) text += "some; words\n";
    EXPECT_EQ(LoadThis(text + "1.5;2.5\n3;-4\n").rowsSkipped, 0);
    EXPECT_EQ(points, kTwo);
}

TEST_F(TextFormat, SeparatorsMayBeCharactersOfNumbers) {
    info.SetTextSeparators("-e");
    LoadThis("1.5-2.5\n3e4\n5--6\n");
    EXPECT_EQ(points, (TPoints{{1.5, 2.5}, {3, 4}}));
}

TEST_F(TextFormat, TextIsDividedByWidthInCharacters) {
    info.SetDivideTextByWidth(true);
    info.SetColumnWidth(4);
    const auto report = LoadThis("\u03B1   \u03B2\u03B3\u03B4\u03B5\n1.52.5\n  3   -4\n 9 8\n");
    EXPECT_EQ(report.yName, "\u03B2\u03B3\u03B4\u03B5");
    EXPECT_EQ(points, (TPoints{{1.52, 0.5}, {3, -4}}));
    EXPECT_EQ(report.messages, std::vector<std::string>{"row 4: '9 8' in column 1 (\u03B1) is not a number"});
}

TEST_F(TextFormat, ColumnsAreChosenByNumberOrName) {
    const std::string file = Write("t;Volt;note;Ampere\n1;10;a;100\n2;20;b;200\n");
    for (const auto& row : ReadCases("text_columns.tsv", 4)) {
        info.SetXDataColumn(row[0]);
        info.SetYDataColumn(row[1]);
        EXPECT_EQ(ErrorOf(file), row[3]);
        EXPECT_EQ(points, row[2].empty() ? TPoints() : PointsIn(row[2])) << row[0] << " and " << row[1];
    }
}

std::string SampleFile(const std::string& name) {
    return SourceFile("tests/data_files/text/" + name);
}

TEST_F(TextFormat, RealFilesAreReadWithoutBeingAsked) {
    for (const auto& row : ReadCases("text_files.tsv", 5)) {
        SCOPED_TRACE(row[0]);
        const auto report = Load(SampleFile(row[0]));
        EXPECT_EQ(Describe(report.readings.best.format), row[1]);
        EXPECT_EQ(report.yName, row[2]);
        ASSERT_EQ(std::to_string(points.size()), row[3]);
        EXPECT_EQ(TPoints{points.back()}, PointsIn(row[4]));
        EXPECT_EQ(report.rowsSkipped, 0);
    }
}

TEST_F(TextFormat, TablesAreReadAsACarefulPersonDoes) {
    for (const auto& row : ReadCases("text_tables.tsv", 6)) {
        SCOPED_TRACE(row[0]);
        const TTextReport report = LoadThis(row[5]);
        const TTextFormat& format = report.readings.best.format;
        const auto name = [&format](int column) {
            return column < 0 ? "" : format.columns[static_cast<std::size_t>(column)].name;
        };
        EXPECT_EQ(name(format.xColumn), row[1]);
        EXPECT_EQ(name(format.yColumn), row[2]);
        EXPECT_EQ(report.readings.runnerUp.has_value(), row[3] == "open");
        const TPoints expected = PointsIn(row[4]);
        ASSERT_EQ(points.size(), expected.size());
        for (std::size_t i = 0; i < points.size(); ++i) {
            EXPECT_NEAR(points[i].first, expected[i].first, 1e-9);
            EXPECT_EQ(points[i].second, expected[i].second);
        }
    }
}

struct TErrorCase {
    const char* names;
    int column; ///< from 0
    int errors; ///< from 0; -1: none
};

TEST_F(TextFormat, NamesTellColumnsOfErrors) {
    const TErrorCase cases[] = {
        {"x,y,err_y", 1, 2},
        {"t,Voltage (V),Voltage error (V)", 1, 2},
        {"t,U,\xC2\xB1", 1, 2},
        {"t,U,dU", 1, 2},
        {"t,U,std. dev. of U", 1, 2},
        {"t,sigma_I,U,I", 3, 1},
        {"t,U,I,I stderr", 2, 3},
        {"t,U,I,I stderr", 1, -1},
        {"x,x_err,y,y_err", 2, 3},
        {"epoch,train error,test error", 1, -1}, // errors of nothing in the table
        {"As,Se,Te", 0, -1},
        {"U,sigma", 0, -1}, // X and Y come first
        {"x,y,u_x,u_y", 1, -1},
        {"t,U,standard", 1, -1},
        {"t,U,I", 1, -1},
    };
    for (const TErrorCase& row : cases) {
        std::string text = std::string(row.names) + '\n';
        const auto columns = std::ranges::count(text, ',');
        for (int line = 1; line <= 3; ++line)
            for (int column = 0; column <= columns; ++column)
                text += std::to_string(line * line + column) + (column < columns ? ".5," : ".5\n");
        const TTextFormat format = LoadThis(text).readings.best.format;
        EXPECT_EQ(std::max(ErrorColumnOf(format, row.column), -1), row.errors) << row.names;
    }
}

TEST_F(TextFormat, TheWholeFileDecidesWhatItsBeginningLeavesOpen) {
    std::string text = "d,v\n";
    for (int i = 0; i < 40000; ++i) text += "01/02/2024," + std::to_string(i) + "\n";
    const auto report = LoadThis(text + "01/13/2024,1\n");
    EXPECT_EQ(report.readings.best.format.dateOrder, TDateOrder::MonthDayYear);
    EXPECT_EQ(report.rowsUsed, 40001);
    EXPECT_EQ(points.size(), 40001u);
    EXPECT_EQ(report.notes.size(), 1u);
}

TEST_F(TextFormat, TheRunnerUpCanBeKept) {
    const std::string file = Write("x\ty\n1\t8,689\n2\t7,221\n");
    const auto readings = Load(file).readings;
    ASSERT_TRUE(readings.runnerUp);
    KeepReading(readings.runnerUp->format, info, options.wishes);
    Load(file);
    EXPECT_EQ(points, (TPoints{{1, 8689}, {2, 7221}}));
}

TEST_F(TextFormat, ColumnsOfOneWidthMayTouch) {
    info.SetDivideTextByWidth(true);
    info.SetColumnWidth(7);
    const auto report = Load(SampleFile("fixed_width.txt"));
    EXPECT_EQ(report.yName, "force");
    EXPECT_EQ(points, (TPoints{{0, 1.25}, {0.5, -112.5}, {1, -13.75}}));
}

} // namespace
} // namespace lumoplot
