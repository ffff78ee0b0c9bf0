#include "support/code_page.h"
#include "support/short_string.h"

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
}

TEST(CodePage, EveryTextSurvivesTheWayOutAndBack) {
    std::mt19937 random(1);
    const char32_t pool[] = {'a', 0x80, 0x9D, 0xE9, 0xEF, 0xBB, 0xBF, 0x20AC, 0x3B1, 0xFEFF, 0x1F600};
    for (int round = 0; round < 2000; ++round) {
        std::u32string text;
        for (unsigned i = random() % 6; i > 0; --i) text += pool[random() % std::size(pool)];
        std::string utf8;
        for (const char32_t c : text) {
            if (c < 0x80)
                utf8 += static_cast<char>(c);
            else if (c < 0x800)
                (utf8 += static_cast<char>(0xC0 | (c >> 6))) += static_cast<char>(0x80 | (c & 63));
            else if (c < 0x10000)
                ((utf8 += static_cast<char>(0xE0 | (c >> 12))) +=
                 static_cast<char>(0x80 | ((c >> 6) & 63))) += static_cast<char>(0x80 | (c & 63));
            else
                (((utf8 += static_cast<char>(0xF0 | (c >> 18))) +=
                  static_cast<char>(0x80 | ((c >> 12) & 63))) += static_cast<char>(0x80 | ((c >> 6) & 63))) +=
                    static_cast<char>(0x80 | (c & 63));
        }
        EXPECT_EQ(FromCodePage(ToCodePage(utf8)), utf8);
    }
}

TEST(CodePage, MalformedUtf8IsTold) {
    for (const char* text : {"\xC0\xAF", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\xE2\x82", "\x80"})
        EXPECT_FALSE(IsValidUtf8(text));
    EXPECT_TRUE(IsValidUtf8("\u20AC\U0001F600"));
}

TEST(ShortString, IsCutToTheLengthAskedForWithoutSplittingACharacter) {
    EXPECT_EQ(FromShortString(ToShortString("template", 4)), "temp");
    EXPECT_EQ(ToShortString(std::string(300, 'x')).Length, 255);
    EXPECT_EQ(ToShortString("abc", -1).Length, 0);
    EXPECT_EQ(FromShortString(ToShortString("\u03B1\u03B2", 6)), "\u03B1");
}

} // namespace
} // namespace lumoplot
