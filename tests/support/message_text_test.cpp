#include "support/message_text.h"

#include "common/recording_sink.h"
#include "support/code_page.h"
#include "support/guard.h"
#include "support/replace_file.h"

#include <gtest/gtest.h>

namespace lumoplot {
namespace {

std::size_t CharactersOf(std::string_view text) {
    std::size_t count = 0;
    for (; !text.empty(); ++count) text.remove_prefix(DecodeUtf8(text).Length);
    return count;
}

TEST(MessageTextTest, AnyTextBecomesOneLineThatSaysTheSame) {
    struct TCase {
        std::string text;
        std::string shown;
    };
    const TCase cases[] = {
        {"Can not open file run 1.csv", "Can not open file run 1.csv"},
        {"a\nb\r\n\tc", "a b c"},
        {"\x1b[31mred\x7f  and\n", "[31mred   and"},
        {std::string("a\0b", 3), "a b"},
        {"M\xC3\xBCller", "M\xC3\xBCller"},
        {"M\xFCller \xC3", "M\xEF\xBF\xBDller \xEF\xBF\xBD"},
        {"safe\xE2\x80\xAEvsc.exe", "safe vsc.exe"}, // turned, it would read "safeexe.csv"
        {"a\xC2\x85"
         "b\xE2\x80\xA8"
         "c",
         "a b c"},
        {"\n\n", ""},
    };
    for (const TCase& each : cases) EXPECT_EQ(ShownLine(each.text), each.shown);
}

TEST(MessageTextTest, ALongTextKeepsItsBeginningAndItsEnd) {
    for (const char* letter : {"x", "\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x93\x88", "\xFF"}) {
        std::string text = "Can not open file /";
        for (int i = 0; i < 4000; ++i) text += letter;
        const std::string line = ShownLine(text + "/run.csv");
        EXPECT_TRUE(IsValidUtf8(line));
        EXPECT_EQ(CharactersOf(line), kLongestShownLine);
        EXPECT_TRUE(line.starts_with("Can not open file /") && line.ends_with("/run.csv")) << line;
    }
    const std::string fits(kLongestShownLine, 'x');
    EXPECT_EQ(ShownLine(fits), fits);
    EXPECT_EQ(ShownLine("abcdef", 3), "a\xE2\x80\xA6"
                                      "f");
}

TEST(MessageTextTest, ASinkGetsErrorsAsOneLineAndOtherTextsAsParagraphs) {
    TRecordingSink sink;
    const std::string hostile = "no\x1b]0;such\nfile\t\xFF" + std::string(5000, 'n');
    EXPECT_FALSE(Guarded([&] { ReadWholeFile(hostile); }));
    EXPECT_EQ(sink.Only(), ShownLine(sink.Only()));
    EXPECT_TRUE(sink.Only().starts_with("Can not open file no ]0;such file ")) << sink.Only();
    EXPECT_TRUE(sink.Only().ends_with("Check its name and folder")) << sink.Only();
    ShowMessage("first\x07\n\nthird", TMessageKind::Warning);
    EXPECT_EQ(sink.Texts.back(), "first\n\nthird");
    ShowMessage("first\n" + std::string(5000, 'n'), TMessageKind::Warning);
    EXPECT_EQ(sink.Texts.back().size(), std::string("first\n").size() + 199 + 3) << "with an ellipsis";
    AskYesNo("Replace a\rb?\n");
    EXPECT_EQ(sink.Texts.back(), "Replace a b?\n");
}

} // namespace
} // namespace lumoplot
