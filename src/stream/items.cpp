#include "stream/items.h"

#include "support/errors.h"

namespace lumoplot {
namespace {

bool g_compactStreams = true;

} // namespace

bool CompactStreams() {
    return g_compactStreams;
}

void SetCompactStreams(bool compact) {
    g_compactStreams = compact;
}

void TByteSource::ThrowTruncated() {
    throw EStreamError("Stream read Error");
}

std::int32_t TByteSource::TakeInteger(int size) {
    const auto bytes = Take(static_cast<std::size_t>(size));
    std::uint32_t value = (bytes.back() & 0x80) ? 0xFFFFFFFFu : 0;
    for (int i = size - 1; i >= 0; --i) value = (value << 8) | bytes[static_cast<std::size_t>(i)];
    return static_cast<std::int32_t>(value);
}

void AppendInteger(TBytes& bytes, std::int32_t value, int size) {
    const auto bits = static_cast<std::uint32_t>(value);
    for (int i = 0; i < size; ++i) bytes.push_back(static_cast<std::uint8_t>(bits >> (8 * i)));
}

} // namespace lumoplot
