// The 80-bit extended float of the stream, by integer arithmetic: files are the same on every machine.
// Layout, little-endian: 64-bit significand with its leading one written out, then 15 bits of exponent (bias
// 16383) and the sign.
#pragma once

#include <cstdint>

namespace lumoplot {

inline constexpr int kFloat80Size = 10;

/// Writes the ten bytes of `value`; exact for every double, the payload of a not-a-number included.
void EncodeFloat80(double value, std::uint8_t* bytes);

/// The double nearest to the ten bytes (ties to even). Too large gives infinity, too small 0 with the sign; a
/// significand without its leading one (no processor writes it) gives not-a-number.
double DecodeFloat80(const std::uint8_t* bytes);

} // namespace lumoplot
