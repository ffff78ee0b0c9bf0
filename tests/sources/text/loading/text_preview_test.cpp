#include "sources/text/loading/text_preview.h"
#include "sources/text/text_fixture.h"

namespace lumoplot {
namespace {

class TextPreview : public TTextFiles {};

TEST_F(TextPreview, ShowsWhatTheLoaderWouldDo) {
    const std::string file = Write("# log\nt;V;note\n1;10;a\n2;oops;\"b;\"\"c\"\"\"\n\n3\n4;40;d\n5;50;e\n");
    const TTextPreview preview = PreviewText(file, info, 7);
    ASSERT_EQ(preview.rows.size(), 7u);
    EXPECT_EQ(preview.messages, (std::vector<std::string>{
                                    "row 4: 'oops' in column 2 (V) is not a number",
                                    "row 6: column 2 (V) is missing",
                                }));
    EXPECT_EQ(Load(file).messages, preview.messages);

    const auto& rows = preview.rows;
    EXPECT_EQ(rows[0].cells[0].state, TCellState::Header);
    EXPECT_EQ(rows[1].cells[1].text, "V");
    EXPECT_EQ(rows[1].cells[1].state, TCellState::Header);
    EXPECT_EQ(rows[2].cells[1].state, TCellState::Ok);
    EXPECT_EQ(rows[3].cells[1].state, TCellState::Rejected);
    EXPECT_EQ(rows[3].cells[2].text, "b;\"c\"");
    EXPECT_EQ(rows[4].kind, TRowKind::Blank);
    EXPECT_EQ(rows[5].cells.size(), 2u);
    EXPECT_EQ(rows[5].cells[1].state, TCellState::Rejected);
    EXPECT_EQ(rows[6].number, 7);
}

TEST_F(TextPreview, RowsOutsideTheChoiceAreSkipped) {
    info.SetRowChoiceMode(TRowChoice::ByNumber);
    info.SetRowChoiceValue1(2);
    info.SetRowChoiceValue2(2);
    const auto rows = PreviewText(Write("1,2\n3,4\n5,6\n"), info, 10).rows;
    EXPECT_EQ(rows[0].cells[0].state, TCellState::Skipped);
    EXPECT_EQ(rows[1].cells[0].state, TCellState::Ok);
    EXPECT_EQ(rows[2].cells[0].state, TCellState::Skipped);
}

TEST_F(TextPreview, FileWithoutNumbersIsShownWithItsProblem) {
    const TTextPreview preview = PreviewText(Write("name,place\nAnn,here\n"), info, 10);
    EXPECT_EQ(preview.readings.best.problem, "holds no column of numbers");
    ASSERT_EQ(preview.rows.size(), 2u);
    EXPECT_EQ(preview.rows[1].cells.back().text, "here");
}

} // namespace
} // namespace lumoplot
