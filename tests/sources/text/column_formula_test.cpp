#include "sources/text/text_fixture.h"

#include "data/series/data_series.h"
#include "sources/text/loading/series_supplier.h"
#include "sources/text/loading/text_preview.h"
#include "support/errors.h"

#include <cmath>
#include <optional>

namespace lumoplot {
namespace {

class ColumnFormula : public TTextFiles {};

constexpr std::string_view kTable = "time,volt,pi,c1,current [mA]\n"
                                    "1,10,5,7,100\n"
                                    "2,20,6,8,200\n"
                                    "3,30,7,9,300\n";

// X and Y of the second row of the table, and what has to be known of the language and of names.
TEST_F(ColumnFormula, MakesXAndYOfTheCellsOfTheRow) {
    struct TCase {
        const char* x;
        const char* y;
        std::pair<double, double> second;
    };
    const TCase cases[] = {
        {"", "", {2, 20}},
        {" x ", "Y", {2, 20}},
        {"X/60", "Y", {2.0 / 60, 20}},
        {"X", "2*y+1", {2, 41}},
        {"Y", "X", {20, 2}}, // both see what is read
        {"row/10", "row*row", {0.2, 4}},
        {"c5", "c3-c1", {200, 4}},   // c1 is the column of that number, not the one of that name
        {"Volt", "TIME", {20, 2}},   // letter case does not matter
        {"X", "pi*0+c3", {2, 6}},    // words of the language keep their meaning
        {"X", "Y/c5", {2, 0.1}},     // several that vary
        {"X", "a := c5; 1", {0, 0}}, // refused: see below
        {"X", "7", {2, 7}},
        {"x", "(a := c5)*0 + a/c1", {2, 100}},
        {"X", "exp(ln(Y))", {2, 20}},
    };
    const std::string file = Write(kTable);
    for (const TCase& one : cases) {
        options.formulas = {one.x, one.y};
        const std::string error = ErrorOf(file);
        if (!error.empty()) {
            EXPECT_EQ(one.second, (std::pair<double, double>())) << one.y << ": " << error;
            continue;
        }
        ASSERT_EQ(points.size(), 3u) << one.x;
        EXPECT_NEAR(points[1].first, one.second.first, 1e-14) << one.x;
        EXPECT_NEAR(points[1].second, one.second.second, 1e-12) << one.y;
    }
}

TEST_F(ColumnFormula, WhatIsNoneIsRefusedWithTheReason) {
    const std::pair<const char*, const char*> cases[] = {
        {"2*(Y", "The expression for Y can not be used: Unequal brackets"},
        {"Y Y", "The expression for Y can not be used: Syntax error in expression Y Y"},
        {"1.2.3*Y", "The expression for Y can not be used: Syntax error in expression 1.2.3*Y"},
        {"Y*ampere", "The expression for Y can not be used: no column is named 'ampere' "
                     "(its columns are time, volt, pi, c1, current [mA])"},
        {"c6", "The expression for Y can not be used: there is no column 6, only 5"},
        {"c0", "The expression for Y can not be used: no column is named 'c0' "
               "(its columns are time, volt, pi, c1, current [mA])"},
    };
    const std::string file = Write(kTable);
    for (const auto& [formula, error] : cases) {
        options.formulas = {"X", formula};
        EXPECT_EQ(ErrorOf(file), error);
        EXPECT_TRUE(points.empty());
    }
}

TEST_F(ColumnFormula, RowsWithoutAValueAreCountedAndNamed) {
    options.formulas = {"X", "ln(Y) + c3"};
    const std::string_view text = "t,v,w\n1,1,0\n2,0,0\n3,1,x\n4,oops,0\n5,1e999,0\n6,1\n7,1,0\n";
    const TTextReport report = LoadThis(text);
    EXPECT_EQ(points, (TPoints{{1, 0}, {7, 0}}));
    EXPECT_EQ(report.rowsSkipped, 5);
    EXPECT_EQ(report.messages, (std::vector<std::string>{
                                   "row 3: the expression for Y gives no value",
                                   "row 4: 'x' in column 3 (w) is not a number",
                                   "row 5: 'oops' in column 2 (v) is not a number",
                                   "row 6: '1e999' in column 2 (v) is too large",
                                   "row 7: column 3 (w) is missing",
                               }));
}

TEST_F(ColumnFormula, CellsThatItDoesNotReadAreNotAskedFor) {
    info.SetXDataColumn("1");
    info.SetYDataColumn("2");
    options.formulas = {"row", "c3"};
    const TTextReport report = LoadThis("10,1,5\nbad,2,6\n,worse,7\n13,4,8\n14,5,9\n");
    EXPECT_EQ(points, (TPoints{{1, 5}, {2, 6}, {3, 7}, {4, 8}, {5, 9}}));
    EXPECT_EQ(report.rowsSkipped, 0);
    EXPECT_EQ(report.yName, "");
}

TEST_F(ColumnFormula, RowsAreChosenByTheXThatItMakes) {
    options.formulas = {"c1+c3", "Y"};
    info.SetRowChoiceMode(TRowChoice::ByX);
    info.SetRowChoiceValue1(102);
    info.SetRowChoiceValue2(303);
    LoadThis("1,10,100\n2,20,200\n3,30,300\n4,40,400\n");
    EXPECT_EQ(points, (TPoints{{202, 20}, {303, 30}}));
}

TEST_F(ColumnFormula, DatesAreDaysAndTimesOfDayBelongToThem) {
    options.formulas = {"(X-45322)*24", "c2*24"};
    LoadThis("day,time,v\n2024-01-31,12:00,1\n2024-02-01,06:00,2\n2024-02-01,18:00,3\n");
    ASSERT_EQ(points.size(), 3u);
    EXPECT_NEAR(points[0].first, 12, 1e-6);
    EXPECT_NEAR(points[1].first, 30, 1e-6);
    EXPECT_NEAR(points[2].second, 18, 1e-6);
}

// The rows that are read in blocks and those that are not, thinned and whole, give what a loop gives.
TEST_F(ColumnFormula, EveryRowOfALongFileIsMadeTheSame) {
    constexpr int kRows = 5000;
    std::string text = "x,y,z\n";
    for (int i = 1; i <= kRows; ++i)
        text += std::to_string(i) + (i % 7 == 0 ? ",\"" : ",") + std::to_string(i * 2) +
                (i % 7 == 0 ? "\"," : ",") + std::to_string(i * 3) + "\n";
    const std::string file = Write(text);
    for (const char* formula : {"Y-row", "c3-2*x", "c3-2*row"}) {
        for (const int every : {1, 3}) {
            options.formulas = {"X*2", formula};
            info.SetAutoRowHitFreq(false);
            info.SetRowSamplingFrequency(every);
            Load(file);
            ASSERT_EQ(points.size(), static_cast<std::size_t>((kRows + every - 1) / every)) << formula;
            for (std::size_t i = 0; i < points.size(); ++i) {
                const auto row = static_cast<double>(i * static_cast<std::size_t>(every) + 1);
                ASSERT_EQ(points[i], (std::pair(row * 2, row))) << formula << " every " << every;
            }
        }
    }
}

TEST_F(ColumnFormula, ThePreviewShowsWhatItMakes) {
    const std::string file = Write("t,v\n1,10\n2,0\n3,bad\n4,20\n");
    const TTextPreview preview = PreviewText(file, info, 10, {}, {" X/2", "1/Y"});
    EXPECT_EQ(preview.formulas.x, "X/2");
    ASSERT_EQ(preview.rows.size(), 5u);
    EXPECT_EQ(preview.rows[1].x, 0.5);
    EXPECT_EQ(preview.rows[1].y, 0.1);
    EXPECT_EQ(preview.rows[2].y, std::nullopt);
    EXPECT_EQ(preview.rows[3].cells[1].state, TCellState::Rejected);
    EXPECT_EQ(preview.messages, (std::vector<std::string>{"row 3: the expression for Y gives no value",
                                                          "row 4: 'bad' in column 2 (v) is not a number"}));
    const TTextPreview broken = PreviewText(file, info, 10, {}, {"X", "Y+"});
    ASSERT_EQ(broken.messages.size(), 2u);
    EXPECT_EQ(broken.messages[0], "The expression for Y can not be used: Syntax error in expression Y+");
    EXPECT_EQ(broken.rows[1].y, std::nullopt);
}

} // namespace
} // namespace lumoplot
