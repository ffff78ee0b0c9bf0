#include "expr/names.h"

#include <gtest/gtest.h>

namespace lumoplot {
namespace {

TEST(Names, StartWithALetterAndGoOnWithDigitsToo) {
    for (const char* name : {"a", "Z", "_", "x2", "_1", "Slope_b"}) EXPECT_TRUE(IsName(name)) << name;
    for (const char* text : {"", "2x", "a b", "a-b", "\xC3\xA4", "a.b", "a@", "a[", "a`", "a{", "a:", "a/"})
        EXPECT_FALSE(IsName(text)) << text;
}

TEST(Names, OfAFormulaAreThoseOutsideOfNumbersAndStrings) {
    const struct {
        const char* formula;
        const char* names; ///< with '=' behind those that it assigns to
    } kCases[] = {
        {"", ""},
        {"a*sin(B_1*x)", "a sin B_1 x"},
        {"a:=x;a+b", "a= x a b"},
        {"a  := 1", "a="},
        {"a:b", "a b"},
        {"1e5+2E-3*e", "e"},
        {"1.5e3e", "e"},
        {".5x", "x"},
        {"2x3", "x3"},
        {"1.2.3e4a", "a"},
        {"'a b'=c", "c"},
        {"c+'open", "c"},
    };
    for (const auto& c : kCases) {
        std::string names;
        for (const TNameUse& use : NamesIn(c.formula))
            names += (names.empty() ? "" : " ") + use.Name + (use.IsAssigned ? "=" : "");
        EXPECT_EQ(names, c.names) << c.formula;
    }
}

} // namespace
} // namespace lumoplot
