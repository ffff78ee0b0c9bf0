// When a graph runs the curve fits of its data sets.
#include "graph/fitting/series_fitting.h"
#include "graph/model/graph.h"

#include <QPointer>
#include <QTimer>
#include <algorithm>

namespace lumoplot {

// Each once: a fit that is pending again afterwards, because of a handler of its changes, waits for the next
// drawing. True when any ran and the graph is still there.
bool TxyGraph::RunPendingFits() {
    if (m_isFitting) return false;
    std::vector<TSeries*> pending;
    for (const auto& series : m_series)
        if (HasPendingResult(*series)) pending.push_back(series.get());
    const QPointer<TxyGraph> self(this);
    m_isFitting = !pending.empty();
    for (TSeries* series : pending) {
        const auto isThis = [series](const auto& other) { return other.get() == series; };
        if (std::ranges::any_of(m_series, isThis)) RunPendingResult(*series);
        if (!self) return false;
    }
    m_isFitting = false;
    return !pending.empty();
}

// Never inside a paint event: a fit may take long and show its progress.
void TxyGraph::SchedulePendingFits() {
    const bool any =
        std::ranges::any_of(m_series, [](const auto& series) { return HasPendingResult(*series); });
    if (!any || m_isFitting || m_fitsScheduled) return;
    m_fitsScheduled = true;
    QTimer::singleShot(0, this, [this] {
        m_fitsScheduled = false;
        RunPendingFits();
    });
}

} // namespace lumoplot
