#include "sources/cells/text_number.h"

#include "common/case_file.h"

#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <map>
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

void ExpectReading(const std::string& text, char decimalSign, TNumberState state, double value) {
    const TNumberReading reading = ParseNumber(text, decimalSign);
    EXPECT_EQ(reading.state, state) << text;
    EXPECT_EQ(reading.value, value) << text;
}

TEST(TextNumber, OnlyAWholeNumberIsOne) {
    const std::map<std::string, TNumberState> states = {{"number", TNumberState::Number},
                                                        {"none", TNumberState::NoNumber},
                                                        {"not finite", TNumberState::NotFinite},
                                                        {"too large", TNumberState::TooLarge},
                                                        {"too small", TNumberState::TooSmall}};
    for (const auto& row : ReadCases("numbers.tsv", 4))
        ExpectReading(row[3], row[1].front(), states.at(row[0]), std::strtod(row[2].c_str(), nullptr));
    const std::string zeros(400, '0');
    ExpectReading(zeros + "." + zeros + "25e400", '.', TNumberState::Number, 0.25);
    ExpectReading("0." + std::string(100, '3'), '.', TNumberState::Number, 1.0 / 3);
}

TEST(TextNumber, StandsBesideItsUnit) {
    for (const auto& row : ReadCases("units.tsv", 4)) {
        const double value = std::strtod(row[0].c_str(), nullptr);
        TUnitMarks marks;
        const auto reading = ParseWithUnit(row[3], '.', marks);
        EXPECT_EQ(reading.state == TNumberState::Number, value != 0) << row[3];
        EXPECT_EQ(reading.value, value) << row[3];
        if (value != 0) {
            EXPECT_EQ(marks, (TUnitMarks{row[1], row[2]})) << row[3];
        }
    }
}

TEST(TextNumber, NegativeZeroKeepsItsSign) {
    EXPECT_TRUE(std::signbit(ParseNumber("-0.0", '.').value));
}

} // namespace
} // namespace lumoplot
