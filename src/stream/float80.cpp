#include "stream/float80.h"

#include <bit>

namespace lumoplot {
namespace {

constexpr int kBias64 = 1023;
constexpr int kBias80 = 16383;
constexpr int kInfinite64 = 0x7FF;
constexpr int kInfinite80 = 0x7FFF;
constexpr int kFractionBits = 52;
constexpr std::uint64_t kLeadingOne80 = std::uint64_t{1} << 63;
constexpr std::uint64_t kFractionMask = (std::uint64_t{1} << kFractionBits) - 1;

void Store(std::uint64_t significand, unsigned exponentAndSign, std::uint8_t* bytes) {
    for (int i = 0; i < 8; ++i) bytes[i] = static_cast<std::uint8_t>(significand >> (8 * i));
    bytes[8] = static_cast<std::uint8_t>(exponentAndSign);
    bytes[9] = static_cast<std::uint8_t>(exponentAndSign >> 8);
}

double Assemble(bool negative, std::uint64_t exponentAndFraction) {
    return std::bit_cast<double>((std::uint64_t{negative} << 63) | exponentAndFraction);
}

// Shifts right by 1 to 63 bits and rounds to nearest, ties to even. A carry runs into the exponent, which is
// right.
std::uint64_t ShiftRounded(std::uint64_t value, int bits) {
    const std::uint64_t kept = value >> bits;
    const std::uint64_t rest = value << (64 - bits);
    return kept + (rest > kLeadingOne80 || (rest == kLeadingOne80 && (kept & 1)) ? 1 : 0);
}

double DecodeSpecial(bool negative, std::uint64_t significand) {
    const std::uint64_t infinity = std::uint64_t{kInfinite64} << kFractionBits;
    const std::uint64_t payload = significand & ~kLeadingOne80;
    if (payload == 0) return Assemble(negative, infinity);
    const std::uint64_t fraction = payload >> 11;
    return Assemble(negative, infinity | (fraction ? fraction : 1));
}

} // namespace

void EncodeFloat80(double value, std::uint8_t* bytes) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const unsigned sign = static_cast<unsigned>(bits >> 63) << 15;
    const int exponent = static_cast<int>((bits >> kFractionBits) & kInfinite64);
    const std::uint64_t fraction = bits & kFractionMask;
    if (exponent == kInfinite64) return Store(kLeadingOne80 | (fraction << 11), sign | kInfinite80, bytes);
    if (exponent > 0)
        return Store(kLeadingOne80 | (fraction << 11),
                     sign | static_cast<unsigned>(exponent - kBias64 + kBias80), bytes);
    if (fraction == 0) return Store(0, sign, bytes);
    const int shift = std::countl_zero(fraction);
    const int subnormalExponent = kBias80 - kBias64 + 1 - (shift - 11);
    Store(fraction << shift, sign | static_cast<unsigned>(subnormalExponent), bytes);
}

double DecodeFloat80(const std::uint8_t* bytes) {
    std::uint64_t significand = 0;
    for (int i = 0; i < 8; ++i) significand |= std::uint64_t{bytes[i]} << (8 * i);
    const unsigned tail = bytes[8] | (unsigned{bytes[9]} << 8);
    const bool negative = (tail & 0x8000) != 0;
    const int exponent80 = static_cast<int>(tail & 0x7FFF);
    if (exponent80 == 0) return Assemble(negative, 0); // zero, or far below the smallest double
    if (!(significand & kLeadingOne80))
        return Assemble(false, (std::uint64_t{kInfinite64} << kFractionBits) | 1);
    if (exponent80 == kInfinite80) return DecodeSpecial(negative, significand);
    const int exponent = exponent80 - kBias80 + kBias64;
    if (exponent >= kInfinite64) return Assemble(negative, std::uint64_t{kInfinite64} << kFractionBits);
    // The leading one adds itself to the exponent field, so that field starts one lower.
    if (exponent > 0)
        return Assemble(negative, (static_cast<std::uint64_t>(exponent - 1) << kFractionBits) +
                                      ShiftRounded(significand, 11));
    const int shift = 12 - exponent;
    return Assemble(negative, shift > 63 ? (shift == 64 && significand > kLeadingOne80 ? 1 : 0)
                                         : ShiftRounded(significand, shift));
}

} // namespace lumoplot
