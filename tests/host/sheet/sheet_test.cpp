#include "host/sheet/sheet_text.h"
#include "host/sheet/sheet_values.h"
#include "support/errors.h"

#include <cmath>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

TSheet SheetWith(const TSheetCells& cells) {
    return SheetOf("Sheet 1", cells, TSheetTop::Titles);
}

std::string Values(const TSheet& sheet, int column) {
    const auto results = SheetResults(sheet);
    const auto& result = results.at(static_cast<std::size_t>(column));
    if (!result) return "typed";
    if (!result->problem.empty()) return result->problem;
    std::string text;
    for (const double value : result->values)
        text += (std::isnan(value) ? "-" : std::to_string(std::lround(value))) + " ";
    return text;
}

TEST(Sheet, ColumnsAreWorkedOut) {
    const TSheet sheet =
        SheetWith({{"U", "x", "P = U*U", "row 2 = c3+row", "Q=2*x", "R = P2", "A = B", "B = A+1"},
                   {"1", "10"},
                   {"2,5", ""},
                   {"volt", "30"},
                   {"4", "40"}});
    EXPECT_EQ(Values(sheet, 0), "typed");
    EXPECT_EQ(Values(sheet, 2), "1 6 - 16 ");
    EXPECT_EQ(Values(sheet, 3), "2 8 - 20 "); // a column that is worked out itself
    EXPECT_EQ(Values(sheet, 4), "20 - 60 80 ");
    EXPECT_NE(Values(sheet, 5).find("'p2'"), std::string::npos);
    EXPECT_NE(Values(sheet, 6).find("from itself"), std::string::npos);
    EXPECT_NE(Values(sheet, 7).find("from itself"), std::string::npos);
}

TEST(Sheet, RowsAndColumnsMove) {
    TSheet sheet = SheetWith({{"a", "b"}, {"1", "10"}, {"2", "20"}, {"3", "30"}});
    const TSheet before = sheet;
    sheet.InsertRows(1, 2);
    EXPECT_EQ(sheet.RowCount(), 5);
    EXPECT_EQ(sheet.Cell(3, 1), "20");
    sheet.DeleteRows(1, 2);
    EXPECT_TRUE(sheet == before);
    sheet.DeleteRows(2, 100);
    EXPECT_EQ(sheet.RowCount(), 2);
    sheet.InsertColumn(0);
    EXPECT_EQ(sheet.Column(1).title, "a");
    sheet.DeleteColumn(0);
    sheet.Clear(0, 0, 100, 100);
    EXPECT_EQ(sheet.RowCount(), 0);
    EXPECT_EQ(sheet.Column(1).title, "b");
    EXPECT_EQ(before.Cell(1, 1), "20"); // what was copied stays
    EXPECT_EQ(before.Cell(99, 99), "");
    EXPECT_THROW(sheet.SetCell(0, TSheet::kMostColumns, "1"), EFileError);
    EXPECT_THROW(sheet.SetCell(TSheet::kMostRows, 0, "1"), EFileError);
}

TEST(Sheet, CopiesShareColumns) {
    const TSheet sheet = SheetWith({{"a", "b"}, {"1", "10"}});
    TSheet other = sheet;
    other.SetCell(0, 1, "11");
    EXPECT_LT(other.BytesBeside(&sheet), other.BytesBeside(nullptr));
    other.SetCell(0, 1, "10");
    EXPECT_TRUE(other == sheet);
}

TEST(SheetText, SeparatorIsFound) {
    struct {
        const char* text;
        TSheetCells cells;
    } const cases[] = {
        {"1\t2,5\r\n3\t4\r\n", {{"1", "2,5"}, {"3", "4"}}},
        {"a;b\n1,5;2\n", {{"a", "b"}, {"1,5", "2"}}},
        {"a,b\n1.5,2", {{"a", "b"}, {"1.5", "2"}}},
        {"1,5\n2,5\n", {{"1,5"}, {"2,5"}}}, // decimal commas
        {"\"a,1\",\"say \"\"x\"\"\nagain\"\n,2\n", {{"a,1", "say \"x\"\nagain"}, {"", "2"}}},
        {"5\" tube,2", {{"5\" tube", "2"}}},
        {"", {}},
    };
    for (const auto& [text, cells] : cases) EXPECT_EQ(CellsOf(text), cells) << text;
}

TEST(SheetText, SheetsComeBack) {
    const TSheet sheet =
        SheetWith({{"", "P = c1", "a\tb"}, {"", "", "\"x\"\n,;\t"}, {"7", "", ""}, {"0", "", "é"}});
    const std::string csv = TextOf(CellsOf(sheet, TSheetTitles::AsTyped), ',');
    EXPECT_TRUE(SheetOf("Sheet 1", CellsOf(csv, ','), TSheetTop::Titles) == sheet) << csv;
    const TSheet empty("Sheet 2");
    const auto bytes = BytesOf({sheet, empty});
    const auto back = SheetsOf(bytes);
    ASSERT_EQ(back.size(), 2u);
    EXPECT_TRUE(back[0] == sheet);
    EXPECT_TRUE(back[1] == empty);
    for (std::size_t length = 1; length < bytes.size(); ++length) {
        try {
            EXPECT_EQ(SheetsOf(std::span(bytes).first(length)).size(), 1u); // all of the first one
        } catch (const EFileError&) {
        }
    }
}

TEST(SheetText, ReadersGetNamesAndValues) {
    const TSheet sheet = SheetWith({{"U", "P = 2*U"}, {"1", ""}, {"x", ""}});
    EXPECT_EQ(TextOf(CellsOf(sheet, TSheetTitles::NamesOnly)), "U\tP\n1\t2\nx\t\n");
    // Whichever decimal sign is taken for the whole, no number gets another value.
    const TSheet mixed = SheetWith(
        {{"U", "P = U*1"}, {"1,5", ""}, {"2.125", ""}, {"-3,125", ""}, {"4e0", ""}, {"1.234,5", ""}});
    EXPECT_EQ(TextOf(CellsOf(mixed, TSheetTitles::NamesOnly)),
              "U\tP\n1.5\t1.5\n2.1250\t2.1250\n-3.1250\t-3.1250\n4e0\t4\n1.234,5\t\n");
    const TSheet plain = SheetOf("s", {{"1", "2"}, {"3", "4"}}, TSheetTop::Found);
    EXPECT_EQ(TextOf(CellsOf(plain, TSheetTitles::NamesOnly)), "1\t2\n3\t4\n");
    EXPECT_EQ(SheetOf("s", {{"t", "2"}, {"3", "4"}}, TSheetTop::Found).RowCount(), 1);
}

} // namespace
} // namespace lumoplot
