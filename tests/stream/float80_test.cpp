#include "stream/float80.h"

#include <array>
#include <bit>
#include <cfloat>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace lumoplot {
namespace {

using TTenBytes = std::array<std::uint8_t, kFloat80Size>;

TTenBytes Encoded(double value) {
    TTenBytes bytes;
    EncodeFloat80(value, bytes.data());
    return bytes;
}

double RandomDouble(std::mt19937_64& random) {
    return std::bit_cast<double>(random());
}

TEST(Float80, BytesAreThoseOfTheFormat) {
    const std::pair<double, TTenBytes> cases[] = {
        {1.0, {0, 0, 0, 0, 0, 0, 0, 0x80, 0xFF, 0x3F}},
        {-2.5, {0, 0, 0, 0, 0, 0, 0, 0xA0, 0x00, 0xC0}},
        {0.0, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        {-0.0, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0x80}},
        {std::numeric_limits<double>::infinity(), {0, 0, 0, 0, 0, 0, 0, 0x80, 0xFF, 0x7F}},
        {5e-324, {0, 0, 0, 0, 0, 0, 0, 0x80, 0xCD, 0x3B}}, // 2^-1074: 16383 - 1074 = 0x3BCD
    };
    for (const auto& [value, bytes] : cases) EXPECT_EQ(Encoded(value), bytes) << value;
}

TEST(Float80, EveryDoubleComesBack) {
    std::mt19937_64 random(7);
    for (int i = 0; i < 200000; ++i) {
        const double value = RandomDouble(random);
        const double back = DecodeFloat80(Encoded(value).data());
        EXPECT_EQ(std::bit_cast<std::uint64_t>(back), std::bit_cast<std::uint64_t>(value));
    }
}

TEST(Float80, DecodingRoundsToTheNearestDouble) {
    if (LDBL_MANT_DIG != 64) GTEST_SKIP() << "the processor has no 80-bit floats to compare with";
    std::mt19937_64 random(8);
    for (int i = 0; i < 200000; ++i) {
        TTenBytes bytes;
        const std::uint64_t significand = random() | (std::uint64_t{1} << 63);
        const auto exponent = static_cast<std::uint16_t>(16383 - 1100 + random() % 2200);
        const auto tail = static_cast<std::uint16_t>(exponent | ((random() & 1) << 15));
        std::memcpy(bytes.data(), &significand, 8);
        std::memcpy(bytes.data() + 8, &tail, 2);
        long double reference = 0;
        std::memcpy(&reference, bytes.data(), kFloat80Size);
        EXPECT_EQ(DecodeFloat80(bytes.data()), static_cast<double>(reference));
    }
}

TEST(Float80, WhatNoProcessorWritesIsNoNumber) {
    const TTenBytes withoutLeadingOne = {1, 0, 0, 0, 0, 0, 0, 0x40, 0xFF, 0x3F};
    EXPECT_TRUE(std::isnan(DecodeFloat80(withoutLeadingOne.data())));
    const TTenBytes huge = {0, 0, 0, 0, 0, 0, 0, 0x80, 0xFE, 0x7F};
    EXPECT_EQ(DecodeFloat80(huge.data()), std::numeric_limits<double>::infinity());
    const TTenBytes tiny = {0, 0, 0, 0, 0, 0, 0, 0x80, 0x01, 0x80};
    EXPECT_EQ(DecodeFloat80(tiny.data()), 0.0);
}

} // namespace
} // namespace lumoplot
