#include "graph/fitting/fit_schedule.h"

#include "graph/fitting/series_fitting.h"
#include "graph/model/graph.h"

#include <QPointer>
#include <QTimer>
#include <algorithm>

namespace lumoplot {
namespace {

/// A regression of more points takes longer than a frame may.
constexpr std::int64_t kPointsAtOnce = 20000;
constexpr std::int64_t kPointsOfRobustLineAtOnce = 5000;

bool IsPending(const TSeries& series) {
    return HasPendingResult(series) || HasLongRegression(series);
}

} // namespace

bool HasLongRegression(const TSeries& series) {
    const TRegressionType type = series.RegressionType();
    const std::int64_t most = type == TRegressionType::RobustLine ? kPointsOfRobustLineAtOnce : kPointsAtOnce;
    return series.Active() && series.RegressionStale() && series.Count() > most &&
           type != TRegressionType::None;
}

bool TFitSchedule::RunPending() {
    if (m_isRunning) return false;
    std::vector<TSeries*> pending;
    for (TSeries* series : m_graph.Series())
        if (IsPending(*series)) pending.push_back(series);
    const QPointer<TxyGraph> graph(&m_graph);
    m_isRunning = !pending.empty();
    for (TSeries* series : pending) {
        const auto all = m_graph.Series();
        if (std::ranges::find(all, series) != all.end()) RunPendingResult(*series);
        if (!graph) return false; // and this object has gone with it
    }
    m_isRunning = false;
    return !pending.empty();
}

void TFitSchedule::RunPendingSoon() {
    const auto isPending = [](const TSeries* series) { return IsPending(*series); };
    if (m_isRunning || m_isScheduled || !std::ranges::any_of(m_graph.Series(), isPending)) return;
    m_isScheduled = true;
    QTimer::singleShot(0, &m_graph, [this] {
        m_isScheduled = false;
        RunPending();
    });
}

} // namespace lumoplot
