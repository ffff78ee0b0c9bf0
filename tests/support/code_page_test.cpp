#include "support/code_page.h"
#include "support/short_string.h"

#include <QString>
#include <gtest/gtest.h>
#include <random>

namespace lumoplot {
namespace {

TEST(CodePage, CharactersOfThePageTakeOneByte) {
    EXPECT_EQ(ToCodePage("\u20AC5 \u00B5m \u201Cq\u201D"), "\x80"
                                                           "5 \xB5m \x93q\x94");
    EXPECT_EQ(FromCodePage("\x80"
                           "5 \xB5m"),
              "\u20AC5 \u00B5m");
    EXPECT_EQ(FromCodePage("\x81\x9D"), "\u0081\u009D"); // bytes that the page leaves undefined
}

TEST(CodePage, OtherCharactersGoOutAsMarkedUtf8) {
    EXPECT_EQ(ToCodePage("\u03B1"), "\xEF\xBB\xBF\u03B1");
    EXPECT_EQ(FromCodePage("\xEF\xBB\xBF\u03B1"), "\u03B1");
    const char* const kLikeTheMark = "\u00EF\u00BB\u00BFx"; // in the page it begins as marked UTF-8 does
    EXPECT_EQ(FromCodePage(ToCodePage(kLikeTheMark)), kLikeTheMark);
}

TEST(CodePage, EveryTextSurvivesTheWayOutAndBack) {
    std::mt19937 random(1);
    const char32_t pool[] = {'a', 0x80, 0x9D, 0xE9, 0xEF, 0xBB, 0xBF, 0x20AC, 0x3B1, 0xFEFF, 0x1F600};
    for (int round = 0; round < 2000; ++round) {
        std::u32string text;
        for (unsigned i = random() % 6; i > 0; --i) text += pool[random() % std::size(pool)];
        const std::string utf8 = QString::fromStdU32String(text).toStdString();
        EXPECT_EQ(FromCodePage(ToCodePage(utf8)), utf8);
    }
}

TEST(CodePage, MalformedUtf8IsTold) {
    for (const char* text : {"\xC0\xAF", "\xE0\x80\xAF", "\xF0\x80\x80\xAF", "\xED\xA0\x80",
                             "\xF5\x80\x80\x80", "\xE2\x82", "\x80"})
        EXPECT_FALSE(IsValidUtf8(text));
    EXPECT_TRUE(IsValidUtf8("\u20AC\U0001F600"));
}

TEST(ShortString, IsCutToTheLengthAskedForWithoutSplittingACharacter) {
    EXPECT_EQ(FromShortString(ToShortString("template", 4)), "temp");
    EXPECT_EQ(ToShortString(std::string(300, 'x')).Length, 255);
    EXPECT_EQ(ToShortString("abc", -1).Length, 0);
    EXPECT_EQ(FromShortString(ToShortString("\u03B1\u03B2", 6)), "\u03B1");
    EXPECT_EQ(CutUtf8("\x80\x80\x80", 2), "\x80\x80") << "what is no UTF-8 has no characters to split";
}

} // namespace
} // namespace lumoplot
