#include "sources/cells/text_number.h"

#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace lumoplot {
namespace {

std::uint64_t Bits(double value) {
    return std::bit_cast<std::uint64_t>(value);
}

// The C library rounds correctly too, by other means.
void ExpectAsTheLibraryReads(const std::string& text) {
    const TNumberReading reading = ParseNumber(text, '.');
    ASSERT_EQ(reading.state, TNumberState::Number) << text;
    ASSERT_EQ(Bits(reading.value), Bits(std::strtod(text.c_str(), nullptr))) << text;
}

std::string RandomNumber(std::mt19937_64& random) {
    const auto below = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    std::string text = below(2) ? "-" : "";
    const int digits = 1 + below(25);
    const int point = below(digits + 2);
    for (int i = 0; i < digits; ++i) {
        if (i == point) text += '.';
        text += static_cast<char>('0' + (below(4) == 0 ? 0 : below(10)));
    }
    if (below(3) == 0) text += "e" + std::to_string(below(60) - 30);
    return text;
}

TEST(TextNumber, IsRoundedCorrectly) {
    std::mt19937_64 random(7);
    for (int i = 0; i < 300000; ++i) ExpectAsTheLibraryReads(RandomNumber(random));
}

// Neighbouring doubles have their midpoints, and texts just beside them, in 17 to 19 digits.
TEST(TextNumber, IsRoundedCorrectlyNextToTies) {
    std::mt19937_64 random(8);
    char text[64];
    for (int i = 0; i < 100000; ++i) {
        const std::uint64_t tie = (std::uint64_t{1} << 53 | random() >> 11) * 2 + 1; // needs 54 bits or 55
        for (const int offset : {-1, 0, 1}) {
            const std::uint64_t mantissa = tie + static_cast<std::uint64_t>(offset);
            std::snprintf(text, sizeof text, "%llu", static_cast<unsigned long long>(mantissa));
            ExpectAsTheLibraryReads(text);
            std::snprintf(text, sizeof text, "%lluE-%d", static_cast<unsigned long long>(mantissa),
                          1 + i % 22);
            ExpectAsTheLibraryReads(text);
        }
        const double value = std::bit_cast<double>(random() % 0x7FE0000000000000u + 0x0010000000000000u);
        std::snprintf(text, sizeof text, "%.17g", value);
        ExpectAsTheLibraryReads(text);
    }
}

struct TCellCase {
    std::string_view text;
    char decimalSign;
    TNumberState state;
    double value;
};

TEST(TextNumber, OnlyAWholeNumberIsOne) {
    constexpr auto kNumber = TNumberState::Number;
    constexpr auto kNone = TNumberState::NoNumber;
    const std::string longZero = std::string(400, '0') + "." + std::string(400, '0') + "25e400";
    const std::string longDigits = "0." + std::string(100, '3');
    const TCellCase cases[] = {
        {" 1.5\t", '.', kNumber, 1.5},
        {"+.5", '.', kNumber, 0.5},
        {"5.", '.', kNumber, 5},
        {"1,5", ',', kNumber, 1.5},
        {"12345678901234567890,5", ',', kNumber, 12345678901234567890.5},
        {"1.5D+2", '.', kNumber, 150},
        {"123456789012345678901d-1", '.', kNumber, 12345678901234567890.1},
        {"0e-999999999", '.', kNumber, 0},
        {longZero, '.', kNumber, 0.25},
        {longDigits, '.', kNumber, 1.0 / 3},
        {"1,234", '.', kNumber, 1234},
        {"1,234,567.5", '.', kNumber, 1234567.5},
        {"-1.234,5", ',', kNumber, -1234.5},
        {"1 234,5", ',', kNumber, 1234.5},
        {"1\xC2\xA0"
         "234\xE2\x80\xAF"
         "567",
         '.', kNone, 0}, // two signs
        {"12\xC2\xA0"
         "345,5",
         ',', kNumber, 12345.5},
        {"1'234.5", '.', kNumber, 1234.5},
        {"10,50-", ',', kNumber, -10.5},
        {"\xE2\x88\x92"
         "1.75",
         '.', kNumber, -1.75},
        {"1.500000-101", '.', kNumber, 1.5e-101},
        {"1.5-10", '.', kNone, 0},
        {"-1-", '.', kNone, 0},
        {"1,23", '.', kNone, 0},
        {"1234,567", '.', kNone, 0},
        {"0,123", '.', kNone, 0}, // no group begins with 0
        {"1.234,567", '.', kNone, 0},
        {"12,34,567", '.', kNone, 0},
        {"1,5", '.', kNone, 0},
        {"1.5", ',', kNone, 0},
        {"", '.', kNone, 0},
        {".", '.', kNone, 0},
        {"-", '.', kNone, 0},
        {"1e", '.', kNone, 0},
        {"1e+", '.', kNone, 0},
        {"1.2.3", '.', kNone, 0},
        {"--1", '.', kNone, 0},
        {"1 2", '.', kNone, 0},
        {"0x10", '.', kNone, 0},
        {"12:30", '.', kNone, 0},
        {std::string_view("1\0002", 3), '.', kNone, 0},
        {"NaN", '.', TNumberState::NotFinite, 0},
        {"-Inf", '.', TNumberState::NotFinite, 0},
        {"1e999", '.', TNumberState::TooLarge, 0},
        {"-0.0001e999", '.', TNumberState::TooLarge, 0},
        {"1e-999", '.', TNumberState::TooSmall, 0},
        {"12345678901234567890123e-999", '.', TNumberState::TooSmall, 0},
    };
    for (const auto& c : cases) {
        const TNumberReading reading = ParseNumber(c.text, c.decimalSign);
        EXPECT_EQ(reading.state, c.state) << c.text;
        EXPECT_EQ(reading.value, c.value) << c.text;
    }
}

struct TUnitCase {
    const char* text;
    double value; // 0: no number with something around it
    const char* front;
    const char* behind;
};

TEST(TextNumber, StandsBesideItsUnit) {
    const TUnitCase cases[] = {{"1.50 V", 1.5, "", "V"},
                               {"3%", 3, "", "%"},
                               {"$12.50", 12.5, "$", ""},
                               {"-$12.50", -12.5, "$", ""},
                               {"($1,012.50)", -1012.5, "$", ""},
                               {"12.5 m/s", 12.5, "", "m/s"},
                               {"5 cm2", 5, "", "cm2"},
                               {"1e3 Pa", 1000, "", "Pa"},
                               {"(12.50)", 0, "", ""},
                               {"1.5", 0, "", ""},
                               {"5<6", 0, "", ""},
                               {"12:30", 0, "", ""},
                               {"V", 0, "", ""},
                               {"3 of 12 times", 0, "", ""}};
    for (const auto& c : cases) {
        TUnitMarks marks;
        const auto reading = ParseWithUnit(c.text, '.', marks);
        EXPECT_EQ(reading.state == TNumberState::Number, c.value != 0) << c.text;
        EXPECT_EQ(reading.value, c.value) << c.text;
        if (c.value == 0) continue;
        EXPECT_EQ(marks, (TUnitMarks{c.front, c.behind})) << c.text;
    }
}

TEST(TextNumber, NegativeZeroKeepsItsSign) {
    EXPECT_TRUE(std::signbit(ParseNumber("-0.0", '.').value));
}

} // namespace
} // namespace lumoplot
