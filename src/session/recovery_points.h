// The points of a data set in a recovery file: as they are in memory, Ids and order included.
#pragma once

#include "data/points/point_chain.h"
#include "session/recovery_bytes.h"

namespace lumoplot {

XYGRAPH_EXPORT void WritePoints(TRecoveryBytesWriter& writer, std::span<const TPointSpans> runs,
                                std::int32_t lastId);
/// Refuses points that no data set can have.
XYGRAPH_EXPORT TPointChain ReadPoints(TRecoveryBytesReader& reader);

} // namespace lumoplot
