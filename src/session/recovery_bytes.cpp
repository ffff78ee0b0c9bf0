#include "session/recovery_bytes.h"

namespace lumoplot {

std::span<const std::uint8_t> TRecoveryBytesReader::Take(std::size_t count) {
    return m_source.Take(count);
}

} // namespace lumoplot
