// The items of the sectioned stream: one tag byte, then the value (docs/stream-format.md). Shared by the
// writer and the reader, with the byte buffers that both work on.
#pragma once

#include "support/export.h"

#include <cstdint>
#include <span>
#include <vector>

namespace lumoplot {

using TBytes = std::vector<std::uint8_t>;

enum class TItemTag : std::uint8_t {
    Int8 = 2,
    Int16 = 3,
    Int32 = 4,
    Extended = 5,
    ShortString = 6,
    False = 8,
    True = 9,
    LongString = 12,
};

enum class TEncoding { Compact, Text };

/// What stands behind X and Y of a point, as a string: readers that do not know it pass over it.
enum class TThirdEntry { None, YError };

inline constexpr int kEndOfSection = 0;
inline constexpr int kNumberOfPoints = 1;
inline constexpr int kEntriesPerPoint = 2;
inline constexpr int kSectionHeader = 99;

/// The encoding of everything that is written from now on; compact at start. Readers understand both.
bool CompactStreams();
void SetCompactStreams(bool compact);

/// A read position over bytes that somebody else owns. Every read checks what is left first.
class TByteSource {
public:
    explicit TByteSource(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {}

    std::size_t Remaining() const { return m_bytes.size() - m_position; }
    /// The next `count` bytes. Throws EStreamError "Stream read Error" when fewer are left.
    std::span<const std::uint8_t> Take(std::size_t count) {
        if (count > Remaining()) ThrowTruncated();
        m_position += count;
        return m_bytes.subspan(m_position - count, count);
    }
    std::uint8_t TakeByte() { return Take(1)[0]; }
    /// A signed little-endian integer of 1, 2 or 4 bytes.
    std::int32_t TakeInteger(int size);

private:
    [[noreturn]] static void ThrowTruncated();

    std::span<const std::uint8_t> m_bytes;
    std::size_t m_position = 0;
};

/// Appends a signed little-endian integer of `size` (1, 2 or 4) bytes.
void AppendInteger(TBytes& bytes, std::int32_t value, int size);

} // namespace lumoplot
