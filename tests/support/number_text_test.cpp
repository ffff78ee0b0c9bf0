#include "support/number_text.h"

#include "common/thrown_text.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace lumoplot {
namespace {

struct TGeneralCase {
    double value;
    const char* text;
};

TEST(NumberText, GeneralFormatHasFourSignificantDigits) {
    const TGeneralCase cases[] = {
        {0, "0"},
        {0.5, "0.5"},
        {1234, "1234"},
        {1234.5678, "1235"},
        {99999, "1E5"},
        {12345, "1.234E4"},
        {-0.25, "-0.25"},
        {1.0 / 3, "0.3333"},
        {0.00001, "0.00001"},
        {0.0000012, "1.2E-6"},
        {1e10, "1E10"},
        {1e300, "1E300"},
    };
    for (const auto& c : cases) EXPECT_EQ(FormatGeneral(c.value, 4), c.text);
}

TEST(NumberText, ExponentAndFixedFormatsHaveAllTheirDigits) {
    struct TCase {
        double value;
        const char* exponent;
        const char* fixed;
    };
    const TCase cases[] = {
        {0, "0.000E+00", "0.0000"},
        {0.00125, "1.250E-03", "0.0013"}, // the double lies above
        {-12345, "-1.234E+04", "-12345.0000"},
        {9999.5, "1.000E+04", "9999.5000"},
        {5e-324, "4.941E-324", "0.0000"},
        {INFINITY, "inf", "inf"},
    };
    for (const TCase& c : cases) {
        EXPECT_EQ(FormatExponent(c.value, 4), c.exponent);
        EXPECT_EQ(FormatFixed(c.value, 4), c.fixed);
    }
    EXPECT_EQ(FormatFixed(-1.7976931348623157e308, 17).size(), 328U);
}

TEST(NumberText, ShortestTextReadsBackToTheSameDouble) {
    for (const double value : {0.1, 1.0 / 3, 5e-324, 1.7976931348623157e308, -0.0, 123456789.123456789}) {
        const double back = ParseFloat(FormatShortest(value));
        EXPECT_EQ(back, value);
        EXPECT_EQ(std::signbit(back), std::signbit(value));
    }
}

TEST(NumberText, OnlyAWholeNumberIsANumber) {
    for (const char* text : {"", " ", ".", "1x", "1 2", "--1", "1,2,3", "1.2,3", "0x10", "e5"})
        EXPECT_FALSE(TryParseFloat(text)) << text;
    EXPECT_EQ(TryParseFloat(" 1.5 "), 1.5);
    EXPECT_EQ(TryParseFloat("1,5"), 1.5);
    EXPECT_EQ(TryParseFloat("+2"), 2.0);
    EXPECT_EQ(TryParseFloat("1e999"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(TryParseFloat("-1e-999"), 0.0);
    const std::string zeros(400, '0');
    EXPECT_EQ(TryParseFloat("0." + zeros + "1e5"), 0.0);
    EXPECT_EQ(TryParseFloat("-1" + zeros + ".5e-5"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(TryParseFloat("0." + zeros + "1e800"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(TryParseFloat("1" + zeros + "E-800"), 0.0);
    EXPECT_TRUE(std::isnan(*TryParseFloat("nan")));
    EXPECT_EQ(TryParseFloat(" -\xE2\x88\x9E"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(TryParseFloat("--\xE2\x88\x9E"), std::nullopt);
}

TEST(NumberText, ConversionErrorsNameTheText) {
    EXPECT_EQ(ThrownText<EConvertError>([] { ParseFloat("1.2.3"); }),
              "'1.2.3' is not a valid floating point value");
    EXPECT_THROW(ParseInteger("2147483648"), EConvertError);
    EXPECT_EQ(ParseInteger("-2147483648"), std::numeric_limits<int>::min());
}

} // namespace
} // namespace lumoplot
