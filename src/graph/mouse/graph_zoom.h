// Changes the ranges of a graph's axes as a user asks with mouse and keys, and goes back. Belongs to the
// graph's TGraphMouse.
#pragma once

#include "graph/model/axis.h"
#include "graph/plotted/plot_map.h"

#include <array>
#include <optional>
#include <vector>

namespace lumoplot {

struct TUserChange;

/// Which axes follow a movement.
enum class TZoomAxes { All, X, BothY, Y, SecondY };

/// The ranges of the X, the Y and the second Y axis.
struct TAxisView {
    double Min;
    double Max;
    double StepSize;
    bool AutoSizing;
    bool AutoStepping;
    bool LogScale;

    bool operator==(const TAxisView&) const = default;
};
using TGraphView = std::array<TAxisView, 3>;

class TGraphZoom {
public:
    /// A range narrower than this part of its larger end is not shown.
    static constexpr double kNarrowest = 1e-12;

    explicit TGraphZoom(TxyGraph& graph) : m_graph(graph) {}

    /// Shows what lies in a rectangle of the plot; only the X or only the Y of it where `axes` says so.
    void ShowPart(const TPlotMap& map, const QRectF& part, TZoomAxes axes = TZoomAxes::All);
    /// Makes everything `factor` times as large; what lies at `place` stays there.
    void Magnify(const TPlotMap& map, QPointF place, double factor, TZoomAxes axes = TZoomAxes::All);
    /// Moves the picture by that distance in the map's units.
    void Move(const TPlotMap& map, QPointF distance, TZoomAxes axes = TZoomAxes::All);
    /// The axes follow the data again; a step of the user's own stays, or comes back.
    XYGRAPH_EXPORT void ShowAll();
    /// Puts back the ranges of before the last gesture.
    void GoBack();
    bool CanGoBack() const { return !m_history.empty(); }
    /// What follows is another gesture: it goes back by itself.
    void EndGesture() { m_isGoing = false; }
    /// As EndGesture, and puts back what the gesture has changed so far.
    void CancelGesture();
    void ForgetHistory() { RestoreHistory({}); }
    /// The views that GoBack goes through, the last one first to be shown.
    const std::vector<TGraphView>& History() const { return m_history; }
    /// For those who put a former state of the graph back. Ends a gesture.
    void RestoreHistory(std::vector<TGraphView> history);

private:
    using TNewRange = std::pair<double, double>;

    std::array<TAxis*, 3> Axes() const;
    TGraphView CurrentView() const;
    bool Concerns(const TAxis& axis, TZoomAxes axes) const;
    template <class TRangeOf>
    void Change(const TPlotMap& map, TZoomAxes axes, TRangeOf rangeOf);
    bool BeginGesture();
    std::optional<double> ReplacedStep(std::size_t axis) const;
    void Remember(const TGraphView& view);
    void ShowLastView(const TUserChange& change);
    void Show(const TGraphView& view);
    static bool IsShowable(const TAxis& axis, double min, double max);
    static void SetRange(TAxis& axis, double min, double max);

    TxyGraph& m_graph;
    std::vector<TGraphView> m_history;
    bool m_isGoing = false;
    std::uint64_t m_gesture = 0; ///< number of the last one
};

} // namespace lumoplot
