#include "common/places.h"
#include "sources/text/text_fixture.h"
#include "sources/text/text_preview.h"

namespace lumoplot {
namespace {

class TextFormat : public TTextFiles {};

struct TFormatCase {
    const char* name;
    std::string_view text;
    const char* description;
    TPoints points;
};

const TPoints kTwo = {{1.5, 2.5}, {3, -4}};

TEST_F(TextFormat, IsFoundFromTheText) {
    const TFormatCase cases[] = {
        {"comma", "1.5,2.5\n3,-4\n", "comma, decimal point, no header rows, UTF-8", kTwo},
        {"tab", "x\ty\n1.5\t2.5\n3\t-4\n", "tab, decimal point, 1 header row, UTF-8", kTwo},
        {"semicolon", "a;b\n1,5;2,5\n3;-4", "semicolon, decimal comma, 1 header row, UTF-8", kTwo},
        {"tab and comma", "1,5\t2,5\n3,0\t-4\n", "tab, decimal comma, no header rows, UTF-8", kTwo},
        {"blanks", "  1.5   2.5 \n 3\t-4\n", "blanks, decimal point, no header rows, UTF-8", kTwo},
        {"bar", "1.5|2.5\n3|-4\n", "vertical bar, decimal point, no header rows, UTF-8", kTwo},
        {"comma and blank", "1.5, 2.5\n3, -4\n", "comma, decimal point, no header rows, UTF-8", kTwo},
        {"quoted decimals", "\"1,5\",\"2,5\"\n\"3,0\",\"-4\"\n",
         "comma, decimal comma, no header rows, UTF-8", kTwo},
        {"CR", "a;b\r1.5;2.5\r3;-4\r", "semicolon, decimal point, 1 header row, UTF-8", kTwo},
        {"CRLF", "1.5;2.5\r\n3;-4\r\n", "semicolon, decimal point, no header rows, UTF-8", kTwo},
        {"trailing separators", "1.5;2.5;\n3;-4;\n", "semicolon, decimal point, no header rows, UTF-8", kTwo},
        {"comments", "# made by hand\n% t v\n// end\n1.5 2.5\n# pause\n3 -4\n",
         "blanks, decimal point, 3 header rows, UTF-8", kTwo},
        {"BOM", "\xEF\xBB\xBFt;v\n1.5;2.5\n3;-4\n", "semicolon, decimal point, 1 header row, UTF-8 with BOM",
         kTwo},
        {"code page", "t;\xB5V\n1.5;2.5\n3;-4\n", "semicolon, decimal point, 1 header row, Windows-1252",
         kTwo},
        {"prose in front", "Run 7 of 12\nOperator: A. B.\n\nt [s];U [V]\n1.5;2.5\n3;-4\n",
         "semicolon, decimal point, 4 header rows, UTF-8", kTwo},
        {"one column", "v\n7\n8\n", "one column, decimal point, 1 header row, UTF-8", {{1, 7}, {2, 8}}},
        {"text between", "1.5;abc;2.5\n3;def;-4\n", "semicolon, decimal point, no header rows, UTF-8", kTwo},
        {"named x and y", "Data:   y   x\n  2.5 1.5\n -4 3\n", "blanks, decimal point, 1 header row, UTF-8",
         kTwo},
        {"Fortran exponents", "1.5D0 25.D-1\n.3D+1 -4\n", "blanks, decimal point, no header rows, UTF-8",
         kTwo},
        {"row ends in quotes", "\"a\nb\";\"c;\"\"d\"\"\"\n1.5;2.5\n3;-4\n",
         "semicolon, decimal point, 1 header row, UTF-8", kTwo},
        {"empty rows", "\n\n1.5;2.5\n;\n\n3;-4\n\n", "semicolon, decimal point, 2 header rows, UTF-8", kTwo},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const TTextReport report = LoadThis(c.text);
        EXPECT_EQ(Describe(report.readings.best.format), c.description);
        EXPECT_EQ(points, c.points);
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

struct TDateOrderCase {
    const char* text;
    TDateOrder order;
    bool offersOther;
};

TEST_F(TextFormat, OrderOfDatesIsTheOneThatFits) {
    const TDateOrderCase cases[] = {
        {"2024-03-01,1\n2024-03-02,2\n", TDateOrder::YearMonthDay, false},
        {"28.02.2024;1\n01.03.2024;2\n", TDateOrder::DayMonthYear, false},
        {"02/28/2024;1\n03/01/2024;2\n", TDateOrder::MonthDayYear, false},
        // Only one order lets time run forward.
        {"10/11/2024;1\n11/11/2024;2\n12/11/2024;3\n01/12/2024;4\n", TDateOrder::DayMonthYear, true},
        {"01/11/2024;1\n01/12/2024;2\n02/01/2024;3\n02/02/2024;4\n", TDateOrder::MonthDayYear, true},
    };
    for (const auto& c : cases) {
        const auto readings = LoadThis(c.text).readings;
        EXPECT_EQ(readings.best.format.dateOrder, c.order) << c.text;
        ASSERT_EQ(readings.runnerUp.has_value(), c.offersOther) << c.text;
        EXPECT_TRUE(!c.offersOther || readings.runnerUp->format.dateOrder != c.order);
    }
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

struct TColumnCase {
    const char* x;
    const char* y;
    TPoints points; // empty: the error
    const char* error;
};

TEST_F(TextFormat, ColumnsAreChosenByNumberOrName) {
    const std::string file = Write("t;Volt;note;Ampere\n1;10;a;100\n2;20;b;200\n");
    const TColumnCase cases[] = {
        {"", "", {{1, 10}, {2, 20}}, ""},
        {"4", "1", {{100, 1}, {200, 2}}, ""},
        {"Volt", " ampere ", {{10, 100}, {20, 200}}, ""},
        {"", "t", {{10, 1}, {20, 2}}, ""},
        {"Ampere", "", {{100, 1}, {200, 2}}, ""},
        {"0", "4", {{1, 100}, {2, 200}}, ""},
        {"5", "", {}, "File data.txt has no column 5, only 4"},
        {"", "0", {}, "File data.txt has no column 0 for Y"},
        {"Ohm", "", {}, "File data.txt has no column 'Ohm' (its columns are t, Volt, note, Ampere)"},
        {"",
         "note",
         {},
         "File data.txt holds no row that can be used: row 2: 'a' in column 3 (note) is not a number"},
    };
    for (const auto& c : cases) {
        info.SetXDataColumn(c.x);
        info.SetYDataColumn(c.y);
        EXPECT_EQ(ErrorOf(file), c.error);
        EXPECT_EQ(points, c.points) << c.x << " and " << c.y;
    }
}

std::string SampleFile(const char* name) {
    return SourceFile(std::string("tests/data_files/text/") + name);
}

struct TSampleFile {
    const char* name;
    const char* description;
    const char* yName;
    std::size_t points;
    std::pair<double, double> last;
};

TEST_F(TextFormat, RealFilesAreReadWithoutBeingAsked) {
    const TSampleFile files[] = {
        {"semicolon_decimal_comma.csv",
         "semicolon, decimal comma, 1 header row, UTF-8",
         "Spannung [V]",
         4,
         {1.5, 1.44}},
        {"utf16_tab.txt", "tab, decimal point, 1 header row, UTF-16 LE", "\u0394U [\u00B5V]", 3, {2, 3.125}},
        {"code_page_cr.txt",
         "semicolon, decimal comma, 1 header row, Windows-1252",
         "L\u00E4nge [\u00B5m]",
         3,
         {30, 102}},
        {"logger_iso_dates.csv",
         "comma, decimal point, dates year-month-day, 3 header rows, UTF-8",
         "temperature",
         4,
         {45353, 5}},
        {"date_and_time_columns.txt",
         "semicolon, decimal comma, dates day.month.year, 1 header row, UTF-8",
         "Load",
         3,
         {45353, 13}},
        {"trailing_separator.dat", "semicolon, decimal point, 1 header row, UTF-8", "y", 3, {3, 6}},
        {"one_column.txt", "one column, decimal point, 1 header row, UTF-8", "counts", 3, {3, 23}},
        {"comments_between.txt", "blanks, decimal point, 2 header rows, UTF-8", "A", 3, {0.3, 9e-9}},
    };
    for (const auto& f : files) {
        SCOPED_TRACE(f.name);
        const auto report = Load(SampleFile(f.name));
        EXPECT_EQ(Describe(report.readings.best.format), f.description);
        EXPECT_EQ(report.yName, f.yName);
        ASSERT_EQ(points.size(), f.points);
        EXPECT_EQ(points.back(), f.last);
        EXPECT_EQ(report.rowsSkipped, 0);
    }
}

struct TTableCase {
    const char* what;
    std::string_view text;
    const char* x; ///< names of the columns
    const char* y;
    TPoints points;
    bool offersOther = false;
};

constexpr double kMarch19 = 45370; // 2024-03-19 in a spreadsheet

const TTableCase kTables[] = {
    {"grouping beside small numbers",
     "year\tcount\n1\t938\n2\t1,011\n3\t1,200\n",
     "year",
     "count",
     {{1, 938}, {2, 1011}, {3, 1200}},
     true},
    {"grouping point",
     "Jahr;Summe\n1;715,50\n2;1.088,58\n3;12.345,6\n",
     "Jahr",
     "Summe",
     {{1, 715.5}, {2, 1088.58}, {3, 12345.6}}},
    {"grouping in quotes", "a,b\n1,\"938\"\n2,\"1,234,567\"\n", "a", "b", {{1, 938}, {2, 1234567}}},
    {"blanks between groups",
     "x;y\n1;900,5\n2;1 134,8\n3;12 369,1\n",
     "x",
     "y",
     {{1, 900.5}, {2, 1134.8}, {3, 12369.1}}},
    {"no group begins with 0", "x\ty\n1\t0,912\n2\t1,173\n", "x", "y", {{1, 0.912}, {2, 1.173}}},
    {"open: decimals or groups", "x\ty\n1\t8,689\n2\t7,221\n", "x", "y", {{1, 8.689}, {2, 7.221}}, true},
    {"a last column that is mostly empty",
     "name,v,w,remark\na,1,10,\nb,2,20,first\nc,3,30,\nd,4,40,\n",
     "v",
     "w",
     {{1, 10}, {2, 20}, {3, 30}, {4, 40}}},
    {"years as names",
     "Country;2019;2020\nA;1,5;2,5\nB;3,5;4,25\nC;5,5;6\n",
     "2019",
     "2020",
     {{1.5, 2.5}, {3.5, 4.25}, {5.5, 6}}},
    {"units below the names", "TIME,CH1\ns,V\n0,1.5\n1,2.5\n", "TIME", "CH1", {{0, 1.5}, {1, 2.5}}},
    {"names of rows",
     "\"w\" \"h\"\n\"1\" 48 161\n\"2\" 49 160\n\"3\" 51 165\n",
     "w",
     "h",
     {{48, 161}, {49, 160}, {51, 165}}},
    {"section between", "[Head]\nKey=3\nt, U\n\n[Data]\n0,1\n1,2\n2,3\n", "t", "U", {{0, 1}, {1, 2}, {2, 3}}},
    {"a counter is no X",
     "index,t,U\n1,0.5,10\n2,0.75,20\n3,1.5,30\n",
     "t",
     "U",
     {{0.5, 10}, {0.75, 20}, {1.5, 30}}},
    {"but serves when nothing else does", "id,name,U\n1,a,10\n2,b,20\n", "id", "U", {{1, 10}, {2, 20}}},
    {"number, date and time",
     "No.;Date;Time;V\n1;2024-03-19;06:00;1\n2;2024-03-19;12:00;2\n3;2024-03-19;18:00;3\n",
     "Date",
     "V",
     {{kMarch19 + 0.25, 1}, {kMarch19 + 0.5, 2}, {kMarch19 + 0.75, 3}}},
    {"compact dates", "d,v\n20240319,1\n20240320,2\n", "d", "v", {{kMarch19, 1}, {kMarch19 + 1, 2}}},
    {"month by month",
     "d,v\n01/03/2024,1\n01/04/2024,2\n01/05/2024,3\n01/06/2024,4\n13/06/2024,5\n",
     "d",
     "v",
     {{45352, 1}, {45383, 2}, {45413, 3}, {45444, 4}, {45456, 5}}},
    {"over midnight",
     "t,v\n22:00,1\n23:00,2\n01:00,3\n",
     "t",
     "v",
     {{22.0 / 24, 1}, {23.0 / 24, 2}, {25.0 / 24, 3}},
     true},
    {"minutes and seconds", "t,v\n00:30.0,1\n01:00.0,2\n", "t", "v", {{30.0 / 86400, 1}, {60.0 / 86400, 2}}},
    {"holes in aligned columns",
     "  n   volt   temp\n  0   1.50   100\n  1          101\n  2   0.50   102\n  3   0.25   103\n",
     "n",
     "volt",
     {{0, 1.5}, {2, 0.5}, {3, 0.25}}},
    {"comments in rows",
     "# t U\n0 25.0 # note 0\n1 25.5 # note 1\n2 26.0 # note 2\n",
     "t",
     "U",
     {{0, 25}, {1, 25.5}, {2, 26}}},
    {"units in cells", "t,U\n0,1.5 V\n1,2.5 V\n2,900 mV\n", "t", "U", {{0, 1.5}, {1, 2.5}}},
    {"settings beside the first rows",
     "Length,2500,,0.0,1.5\nSource,CH1,,0.1,2.5\n,,,0.2,3.5\n,,,0.3,4.5\n,,,0.4,4.5\n,,,0.5,4.5\n,,,0.6,4."
     "5\n,,,0.7,4.5\n",
     "",
     "",
     {{0, 1.5}, {0.1, 2.5}, {0.2, 3.5}, {0.3, 4.5}, {0.4, 4.5}, {0.5, 4.5}, {0.6, 4.5}, {0.7, 4.5}}},
    {"drawn lines", "| a | b |\n|---|---|\n| 1 | 2.5 |\n| 2 | 3.5 |\n", "a", "b", {{1, 2.5}, {2, 3.5}}},
    {"apostrophes", "x,y\n'0','15.5'\n'1','16.5'\n'2','17.5'\n", "x", "y", {{0, 15.5}, {1, 16.5}, {2, 17.5}}},
    {"sep=", "sep=;\nx;y\n1,5;2\n2,5;3\n", "x", "y", {{1.5, 2}, {2.5, 3}}},
    {"keys in front of a longer table",
     "Points\t3\nRange\t5\nfreq\tampl\n1\t2\n2\t4\n3\t6\n",
     "freq",
     "ampl",
     {{1, 2}, {2, 4}, {3, 6}}},
};

TEST_F(TextFormat, TablesAreReadAsACarefulPersonDoes) {
    for (const TTableCase& table : kTables) {
        SCOPED_TRACE(table.what);
        const TTextReport report = LoadThis(table.text);
        const TTextFormat& format = report.readings.best.format;
        const auto name = [&format](int column) {
            return column < 0 ? "" : format.columns[static_cast<std::size_t>(column)].name;
        };
        EXPECT_EQ(name(format.xColumn), table.x);
        EXPECT_EQ(name(format.yColumn), table.y);
        EXPECT_EQ(report.readings.runnerUp.has_value(), table.offersOther);
        ASSERT_EQ(points.size(), table.points.size());
        for (std::size_t i = 0; i < points.size(); ++i) {
            EXPECT_NEAR(points[i].first, table.points[i].first, 1e-9);
            EXPECT_EQ(points[i].second, table.points[i].second);
        }
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

TEST_F(TextFormat, WhatASpreadsheetQuotesIsOneCell) {
    const auto report = Load(SampleFile("spreadsheet_quoted.csv"));
    EXPECT_EQ(Describe(report.readings.best.format), "comma, decimal point, 1 header row, UTF-8 with BOM");
    EXPECT_EQ(report.readings.best.format.columns.front().name, "Time, s");
    EXPECT_EQ(report.yName, "Reading \"A\"");
    EXPECT_EQ(points, (TPoints{{0, 1204.5}, {1, 7.25}, {2, 7.5}}));
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
