#include "sources/text/text_rows.h"

#include <gtest/gtest.h>

namespace lumoplot {
namespace {

struct TRowCase {
    std::string_view text;
    TTextEnd end;
    TRowKind kind;
    std::ptrdiff_t length; ///< with its line end; 0 where the row may go on behind the text
};

// Text comes in pieces: a row ends only where nothing that follows could belong to it.
TEST(TextRows, EndWhereNothingThatFollowsBelongsToThem) {
    using enum TTextEnd;
    const TRowCase cases[] = {
        {"1,2\n3", More, TRowKind::Data, 4},       {"1,2\r\n3", More, TRowKind::Data, 5},
        {"1,2\r3", More, TRowKind::Data, 4},       {"1,2\r", More, TRowKind::Incomplete, 0},
        {"1,2\r", File, TRowKind::Data, 4},        {"1,2", More, TRowKind::Incomplete, 0},
        {"1,2", File, TRowKind::Data, 3},          {"\"a\nb\",2\n", More, TRowKind::Data, 8},
        {"\"a\nb", More, TRowKind::Incomplete, 0}, {"#,\"a\nb\"\n", More, TRowKind::Comment, 5},
        {" \t,\n1", More, TRowKind::Blank, 4},     {"/1\n", More, TRowKind::Data, 3},
        {"//1\n", More, TRowKind::Comment, 4},
    };
    TTextFormat format;
    format.separators = ",";
    const TRowSplitter splitter(format);
    for (const TRowCase& c : cases) {
        const TTextRow row = splitter.Scan(c.text.data(), c.text.data() + c.text.size(), c.end);
        EXPECT_EQ(row.kind, c.kind) << testing::PrintToString(c.text);
        EXPECT_EQ(row.next ? row.next - c.text.data() : 0, c.length) << testing::PrintToString(c.text);
    }
}

TEST(TextRows, AnUnclosedQuoteReachesNoFurtherThanItsLimit) {
    const std::string text = "\"xx\n" + std::string(TRowSplitter::kMaxQuoted, 'y') + "\",2\n";
    const char* end = text.data() + text.size();
    TTextFormat format;
    format.separators = ",";
    EXPECT_EQ(TRowSplitter(format).Scan(text.data(), end, TTextEnd::File).next - text.data(), 4);
}

struct TDividedRow {
    const char* separators;
    std::string_view text;
    std::vector<std::string_view> cells;
};

TEST(TextRows, AreDividedIntoCells) {
    const TDividedRow cases[] = {
        {",", "1,2,", {"1", "2", ""}},    {" ", "1  2 ", {"1", "2"}},         {";", " 1 ; 2 ", {"1", "2"}},
        {",", "\"a,b\",c", {"a,b", "c"}}, {",", "\"a\"b,c", {"\"a\"b", "c"}}, {"", "1,2 3", {"1,2 3"}},
    };
    for (const TDividedRow& c : cases) {
        TTextFormat format;
        format.separators = c.separators;
        std::vector<TTextCell> cells;
        TRowSplitter(format).Split(c.text.data(), c.text.data() + c.text.size(), TTextEnd::File, cells);
        std::vector<std::string_view> texts;
        for (const TTextCell& cell : cells) texts.push_back(cell.text);
        EXPECT_EQ(texts, c.cells) << c.text;
    }
}

} // namespace
} // namespace lumoplot
