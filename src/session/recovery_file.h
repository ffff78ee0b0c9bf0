// What is kept on the disk of a session that has not been saved: what there is to say about it, and its graph
// as it stands, so that a crash loses neither. The points are as in memory, with their Ids and order; nothing
// is merged or worked out anew. docs/recovery.md describes the bytes.
#pragma once

#include "graph/model/graph.h"
#include "session/graph_snapshot.h"
#include "session/side_state.h"

#include <QDateTime>
#include <QStringList>

namespace lumoplot {

/// What a user is shown of a session before deciding what becomes of it.
struct TRecoveryInfo {
    QString Program;      ///< that the session ran in, by the name that users see
    QString DocumentName; ///< the graph's file; empty when it was never saved
    QDateTime Written;
    int StepCount = 0; ///< that were made since the graph was saved or opened
    QString LastStep;
    QStringList DataSets; ///< "Pressure (168 points)"
    /// What belonged to the session beside its graph (TSideState::ToBytes), for who made it; only where it
    /// was read.
    TBytes Beside = {};
};

/// `beside` may be null. May run in any thread.
TBytes RecoveryBytes(const TRecoveryInfo& info, const TGraphSnapshot& graph,
                     const TSideStatePtr& beside = nullptr);

/// The bytes are whole: they are those that RecoveryBytes gave, though their content may still be refused.
bool IsWholeRecovery(std::span<const std::uint8_t> bytes);

/// Reads what RecoveryBytes gave into a new graph, wholly checked. Throws EGraphFileError "This is not a
/// recovery file", "The recovery file is damaged" or "… of another version".
TRecoveryInfo ReadRecovery(std::span<const std::uint8_t> bytes, TxyGraph& graph);

} // namespace lumoplot
