#include "graph/mouse/graph_zoom.h"

#include "graph/model/graph.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

constexpr std::size_t kMostViews = 100;
constexpr double kFewestSteps = 2; // a step of the user's own that gives fewer makes way for an automatic one

std::pair<double, double> ValuesBetween(const TScaleMap& map, double from, double to) {
    return std::minmax({map.Value(from), map.Value(to)});
}

} // namespace

std::array<TAxis*, 3> TGraphZoom::Axes() const {
    return {m_graph.XAxis(), m_graph.YAxis(), m_graph.YAxis_Second()};
}

TGraphView TGraphZoom::CurrentView() const {
    TGraphView view;
    std::ranges::transform(Axes(), view.begin(), [](const TAxis* axis) {
        return TAxisView{axis->Min(),        axis->Max(),          axis->StepSize(),
                         axis->AutoSizing(), axis->AutoStepping(), axis->LogScale()};
    });
    return view;
}

bool TGraphZoom::Concerns(const TAxis& axis, TZoomAxes axes) const {
    switch (axes) {
    case TZoomAxes::X: return axis.Role() == TAxisRole::X;
    case TZoomAxes::Y: return axis.Role() == TAxisRole::Y;
    case TZoomAxes::SecondY: return axis.IsSecondY();
    case TZoomAxes::BothY:
        if (axis.Role() == TAxisRole::X) return false;
        break;
    case TZoomAxes::All: break;
    }
    // An axis that nothing lies on and nobody sees keeps its range.
    return !axis.IsSecondY() || axis.ShowAxis() || axis.HasData();
}

bool TGraphZoom::IsShowable(const TAxis& axis, double min, double max) {
    const double largest = std::max(std::abs(min), std::abs(max));
    const bool isRange = std::isfinite(max - min) && max - min > kNarrowest * largest;
    return isRange && max - min > std::numeric_limits<double>::min() && (!axis.LogScale() || min > 0);
}

void TGraphZoom::SetRange(TAxis& axis, double min, double max) {
    axis.SetMin(min);
    axis.SetMax(max);
    if (!axis.AutoStepping() && (max - min) / axis.StepSize() < kFewestSteps) axis.SetAutoStepping(true);
}

template <class TRangeOf>
void TGraphZoom::Change(const TPlotMap& map, TZoomAxes axes, TRangeOf rangeOf) {
    const std::array maps = {&map.X, &map.Y, &map.SecondY};
    std::array<TNewRange, 3> ranges;
    bool hasChanges = false;
    const auto all = Axes();
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (!Concerns(*all[i], axes)) continue;
        ranges[i] = rangeOf(*maps[i], i == 0);
        // A zoom that one axis can not follow would tear the picture apart.
        if (!IsShowable(*all[i], ranges[i].first, ranges[i].second)) return;
        hasChanges |= ranges[i] != TNewRange(all[i]->Min(), all[i]->Max());
    }
    if (!hasChanges) return;
    const bool isNew = BeginGesture();
    m_graph.ChangeByUser({"change of view", m_gesture}, [&] {
        if (isNew) Remember(CurrentView());
        for (std::size_t i = 0; i < all.size(); ++i)
            if (Concerns(*all[i], axes)) SetRange(*all[i], ranges[i].first, ranges[i].second);
    });
    Q_EMIT m_graph.OnUserChange();
}

bool TGraphZoom::BeginGesture() {
    if (m_isGoing) return false;
    m_isGoing = true;
    ++m_gesture;
    return true;
}

// Within the change that leaves the view: the history belongs to the state that is undone and redone.
void TGraphZoom::Remember(const TGraphView& view) {
    if (m_history.size() == kMostViews) m_history.erase(m_history.begin());
    m_history.push_back(view);
}

void TGraphZoom::ShowPart(const TPlotMap& map, const QRectF& part, TZoomAxes axes) {
    EndGesture();
    const QRectF inside = part.normalized().intersected(map.Plot);
    Change(map, axes, [&](const TScaleMap& scale, bool isX) {
        return isX ? ValuesBetween(scale, inside.left(), inside.right())
                   : ValuesBetween(scale, inside.top(), inside.bottom());
    });
    EndGesture();
}

void TGraphZoom::Magnify(const TPlotMap& map, QPointF place, double factor, TZoomAxes axes) {
    if (!(factor > 0) || !std::isfinite(factor)) return;
    Change(map, axes, [&](const TScaleMap& scale, bool isX) {
        const double centre = isX ? place.x() : place.y();
        const auto from = [&](double edge) { return centre + (edge - centre) / factor; };
        return isX ? ValuesBetween(scale, from(map.Plot.left()), from(map.Plot.right()))
                   : ValuesBetween(scale, from(map.Plot.top()), from(map.Plot.bottom()));
    });
}

void TGraphZoom::Move(const TPlotMap& map, QPointF distance, TZoomAxes axes) {
    const QRectF shown = map.Plot.translated(-distance);
    Change(map, axes, [&](const TScaleMap& scale, bool isX) {
        return isX ? ValuesBetween(scale, shown.left(), shown.right())
                   : ValuesBetween(scale, shown.top(), shown.bottom());
    });
}

// The step of the user's own that made way for an automatic one while he zoomed. Where an axis followed the
// data with an automatic step, there was none.
std::optional<double> TGraphZoom::ReplacedStep(std::size_t axis) const {
    if (!Axes()[axis]->AutoStepping()) return std::nullopt;
    for (auto view = m_history.rbegin(); view != m_history.rend(); ++view) {
        const TAxisView& former = (*view)[axis];
        if (!former.AutoStepping) return former.StepSize;
        if (former.AutoSizing) return std::nullopt;
    }
    return std::nullopt;
}

void TGraphZoom::ShowAll() {
    EndGesture();
    const TGraphView before = CurrentView();
    m_graph.ChangeByUser({"show all"}, [&] {
        const auto axes = Axes();
        for (std::size_t i = 0; i < axes.size(); ++i) {
            if (const auto step = ReplacedStep(i)) axes[i]->SetStepSize(*step);
            axes[i]->SetAutoSizing(true);
        }
        if (CurrentView() != before) Remember(before);
    });
    if (CurrentView() != before) Q_EMIT m_graph.OnUserChange();
}

void TGraphZoom::GoBack() {
    EndGesture();
    ShowLastView({"former view"});
}

void TGraphZoom::ShowLastView(const TUserChange& change) {
    if (m_history.empty()) return;
    m_graph.ChangeByUser(change, [this] {
        const TGraphView view = m_history.back();
        m_history.pop_back();
        Show(view);
    });
    Q_EMIT m_graph.OnUserChange();
}

void TGraphZoom::Show(const TGraphView& view) {
    const auto axes = Axes();
    for (std::size_t i = 0; i < axes.size(); ++i) {
        TAxis& axis = *axes[i];
        if (axis.LogScale() != view[i].LogScale) continue;
        axis.SetMin(view[i].Min);
        axis.SetMax(view[i].Max);
        axis.SetStepSize(view[i].StepSize);
        axis.SetAutoSizing(view[i].AutoSizing);
        axis.SetAutoStepping(view[i].AutoStepping);
    }
}

void TGraphZoom::CancelGesture() {
    if (std::exchange(m_isGoing, false)) ShowLastView({"change of view", m_gesture});
}

void TGraphZoom::RestoreHistory(std::vector<TGraphView> history) {
    m_history = std::move(history);
    EndGesture();
}

} // namespace lumoplot
