// The graph component: a panel that owns everything a plot consists of (data sets, axes, settings groups,
// marks, child graphs). It holds state, keeps the axes in step with the data and asks for repaints;
// graph/drawing draws it.
#pragma once

#include "graph/model/appearance.h"
#include "graph/model/axis.h"
#include "graph/model/mark.h"
#include "graph/model/series.h"
#include "graph/model/settings.h"
#include "stream/items.h"

#include <QImage>
#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <ranges>
#include <string>
#include <type_traits>
#include <vector>

namespace lumoplot {

class TFitSchedule;
class TGraphMouse;
class TGraphScaling;
class TxyChildGr;
class TxyHolder;

/// What the user does to a graph with the mouse or the keys.
struct TUserChange {
    std::string Name;          ///< "move point of Run 1"
    std::uint64_t Gesture = 0; ///< changes of one drag or of one turn of the wheel have the same; 0 for none
};
/// Runs the action, which makes the change, and records it.
using TChangeHook = std::function<void(const TUserChange& change, const std::function<void()>& action)>;

/// Whether a file or stream carries the points of the data sets.
enum class TPoints { Include, LeaveOut };

/// The members that a chain owns, as pointers, in order.
template <class T>
auto ChainOf(const std::vector<std::unique_ptr<std::remove_const_t<T>>>& owners) {
    return std::views::transform(owners, [](const auto& owner) -> T* { return owner.get(); });
}

/// A widget with a size of its own that may lie inside another one.
class TReSizablePanel : public QWidget {
    Q_OBJECT

public:
    explicit TReSizablePanel(QWidget* parent = nullptr) : QWidget(parent) {}
};

class XYGRAPH_EXPORT TxyGraph : public TReSizablePanel {
    Q_OBJECT
    Q_PROPERTY(lumoplot::TAxis* XAxis READ XAxis CONSTANT)
    Q_PROPERTY(lumoplot::TAxis* YAxis READ YAxis CONSTANT)
    Q_PROPERTY(lumoplot::TAxis* YAxis_Second READ YAxis_Second CONSTANT)
    Q_PROPERTY(lumoplot::TDimensions* Dimensions READ Dimensions CONSTANT)
    Q_PROPERTY(lumoplot::TAppearance* Appearance READ Appearance CONSTANT)
    Q_PROPERTY(lumoplot::TLegend* Legend READ Legend CONSTANT)

public:
    static constexpr int kHostPointBudget = 5000;
    static constexpr int kEditorPointBudget = 500;
    static constexpr int kPlottedPointLimit = 1000000;
    /// Child graphs may be nested so deep, and a file may hold so many of them.
    static constexpr int kMaxNesting = 64;
    static constexpr int kMaxChildGraphs = 4096;

    explicit TxyGraph(QWidget* parent = nullptr);
    ~TxyGraph() override;

    TAxis* XAxis() { return m_xAxis.get(); }
    const TAxis* XAxis() const { return m_xAxis.get(); }
    TAxis* YAxis() { return m_yAxis.get(); }
    const TAxis* YAxis() const { return m_yAxis.get(); }
    TAxis* YAxis_Second() { return m_yAxisSecond.get(); }
    const TAxis* YAxis_Second() const { return m_yAxisSecond.get(); }
    TDimensions* Dimensions() { return m_dimensions.get(); }
    const TDimensions* Dimensions() const { return m_dimensions.get(); }
    TAppearance* Appearance() { return m_appearance.get(); }
    const TAppearance* Appearance() const { return m_appearance.get(); }
    TLegend* Legend() { return m_legend.get(); }
    const TLegend* Legend() const { return m_legend.get(); }
    TxyHolder* Holder() { return m_holder.get(); }
    const TxyHolder* Holder() const { return m_holder.get(); }
    /// Stores the identifier of the graph's data holder.
    void SetHolderID(const std::string& id);
    /// Colour and font that the settings start from.
    TColor Color() const { return kWhite; }
    TFontSpec Font() const { return {}; }

    // The chain of data sets.

    /// All of them as pointers, in order.
    auto Series() { return ChainOf<TSeries>(m_series); }
    auto Series() const { return ChainOf<const TSeries>(m_series); }
    TSeries* FirstSeries() { return m_series.empty() ? nullptr : m_series.front().get(); }
    const TSeries* FirstSeries() const { return m_series.empty() ? nullptr : m_series.front().get(); }
    /// How many of the numbers 1, 2, 3, … have a data set, up to the first gap.
    int SeriesCount() const {
        int count = 0;
        while (FindSeries(count + 1)) ++count;
        return count;
    }
    /// The data set with that number, or null.
    TSeries* FindSeries(int number);
    const TSeries* FindSeries(int number) const;
    /// Appends a new data set under the next number, which is returned.
    int AddSeries();
    /// Appends a data set under a number of the caller's choice, which no data set has.
    XYGRAPH_LOCAL TSeries* AddSeriesNumbered(int number);
    /// Makes the data set with that number the first one and renumbers; false when there is none.
    bool MoveSeriesToFirst(int number);
    /// Deletes the data set with that number and renumbers; false when there is none.
    bool DeleteSeries(int number);
    /// Numbers the data sets 1, 2, … in chain order. The X data set keeps its role under its new number.
    XYGRAPH_LOCAL void RenumberSeries();
    /// Sorts by name, letter case ignored; equal names keep their order. Then renumbers; the last one is
    /// current.
    void SortSeriesByName();
    void ReverseSeries();
    void FreeAllSeries();

    // Marks.

    const TMarkChain& Marks() const { return m_marks; }
    void SetMark(const TGraphMark& mark);
    int AddMark(const TGraphMark& mark);
    bool DeleteMark(int id);
    void ClearMarks() {
        m_marks.Clear();
        RequestRepaint(true);
    }
    void SelectMark(int id) { m_marks.Select(id); }
    /// Takes over all marks of a chain and which one is current.
    void SetMarks(const TMarkChain& marks) {
        m_marks = marks;
        RequestRepaint(true);
    }
    /// Takes the baseline of a data set from a mark; tells through the message sink why it cannot.
    void SetBaselineFromMark(int markId, int seriesNumber);

    // Child graphs.

    /// All of them as pointers, in order.
    auto ChildGraphs() { return ChainOf<TxyChildGr>(m_children); }
    auto ChildGraphs() const { return ChainOf<const TxyChildGr>(m_children); }
    int ChildGraphCount() const { return static_cast<int>(m_children.size()); }
    TxyChildGr* AddChildGraph();
    void ClearChildGraphs();

    // Repaints.

    /// Asks for a repaint (true) or withdraws the request (false); requests coalesce.
    void RequestRepaint(bool repaint) {
        if (repaint == m_repaintRequested) return;
        m_repaintRequested = repaint;
        if (repaint && m_holds == 0) update();
    }
    bool RepaintRequested() const { return m_repaintRequested; }
    /// Between these calls, which may be nested (TUpdateHold), nothing is repainted; the last EndUpdate
    /// repaints when somebody asked for it meanwhile.
    void BeginUpdate() { ++m_holds; }
    void EndUpdate() {
        if (--m_holds == 0 && m_repaintRequested) update();
    }
    /// The axes must be scaled anew before the next drawing.
    void NeedRescale();
    /// A data set has changed: rescale and repaint.
    XYGRAPH_LOCAL void SeriesChanged();

    /// Brings everything that a drawing reads up to date: extents, axes, and the regressions and curve fits
    /// of the active data sets. Called before each drawing. The panel itself paints with what is there and
    /// runs pending fits when it has painted.
    void PrepareForDrawing();
    /// The last scaling failed; ErrorCaption is drawn in place of the plot.
    bool ScaleFailed() const;
    /// There is something to draw: a data set with points, or a mark.
    bool HasContent() const;

    // The user.

    /// What the mouse and the keys do over the graph.
    TGraphMouse& Mouse() { return *m_mouse; }
    const TGraphMouse& Mouse() const { return *m_mouse; }
    /// What the user changes is made through `hook` from now on; an empty one makes it directly.
    void SetChangeHook(TChangeHook hook) { m_changeHook = std::move(hook); }
    void ChangeByUser(const TUserChange& change, const std::function<void()>& action) {
        m_changeHook ? m_changeHook(change, action) : action();
    }
    /// Somebody listens to OnWantDesigner.
    XYGRAPH_LOCAL bool HasDesigner() const;
    /// OnTooManyPoints tells of data sets with more points. They are drawn all the same. At least 1; not
    /// filed.
    void SetPlottedPointLimit(int value);

    // Reading data from sources.

    /// In editor mode the suppliers load a preview budget of 500 points.
    bool EditorMode() const { return m_editorMode; }
    void SetEditorMode(bool value) { m_editorMode = value; }
    /// How many points a supplier loads for this graph with automatic row sampling, at least 1. Not filed.
    int PointBudget() const { return m_editorMode ? kEditorPointBudget : m_pointBudget; }
    /// The same for a plot, whether it is being edited or not.
    int PlotBudget() const { return m_pointBudget; }
    void SetPointBudget(int value) { m_pointBudget = std::max(1, value); }

    // Files and copies.

    /// Writes the whole graph in the format of docs/graph-file.md; `points` goes to child graphs as well.
    /// Throws EGraphFileError when there are more data sets, marks or child graphs than a file can hold.
    void SaveToStream(TBytes& bytes, TPoints points) const;
    /// Replaces the content by what the stream holds from its position. On an error (EGraphFileError "Not a
    /// valid graph file" or "Wrong Graph version", EStreamError, EConvertError) the graph stays as it was.
    void LoadFromStream(TByteSource& source);
    /// Saves to a file, which is replaced whole. Throws EFileError "Can not save to file NAME".
    void SaveTemplate(const std::string& name, TPoints points) const;
    void LoadFromFile(const std::string& name);
    /// Becomes equal to `source` in every respect, whether files hold it or not, child graphs included:
    /// points as they stand, results, what is known of sources and fits. What is the graph's own (size,
    /// listeners, holder) stays.
    void CopyFrom(const TxyGraph& source);
    /// As CopyFrom when `source` is a graph; does nothing otherwise.
    void Assign(const QObject* source) {
        if (const auto* graph = qobject_cast<const TxyGraph*>(source)) CopyFrom(*graph);
    }
    /// Gives all settings their defaults; data sets, marks and child graphs stay.
    void ResetToDefaults();

    QSize sizeHint() const override { return {640, 480}; }

Q_SIGNALS:
    // Data sets are told of when they first meet the condition, and again when they meet it anew.

    /// A data set has values that a logarithmic axis can not show.
    void OnLogError(lumoplot::TSeries* series);
    void OnNewSeries(lumoplot::TSeries* series);
    /// The data set is about to be removed.
    void OnDeleteSeries(lumoplot::TSeries* series);
    /// A data set exceeds the limit of plotted points.
    void OnTooManyPoints(lumoplot::TSeries* series);
    /// The range or the step of an axis is another one than in the last picture.
    void OnRescale();
    /// The user has changed the graph with the mouse or the keys: the ranges of its axes, or those or the
    /// place of a child graph.
    void OnUserChange();
    void OnScaleError();
    /// The picture of the graph has been drawn; what a listener draws becomes part of it.
    void OnPaintEnd(QPainter* painter);
    /// The user asks for the graph's settings to be edited.
    void OnWantDesigner();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    using TSeriesOwners = std::vector<std::unique_ptr<TSeries>>;

    XYGRAPH_LOCAL TSeriesOwners::const_iterator Place(int number) const;
    XYGRAPH_LOCAL void Relink();
    XYGRAPH_LOCAL void UpdateForDrawing();
    XYGRAPH_LOCAL void ForgetZoomHistory();
    XYGRAPH_LOCAL void DrawPicture(QPainter& painter);
    XYGRAPH_LOCAL void RenewPicture(double pixelRatio);

    // The settings below ask for repaints and scaling while they are made, so what keeps that comes first.
    bool m_repaintRequested = false;
    int m_holds = 0;
    std::unique_ptr<TGraphScaling> m_scaling;
    std::unique_ptr<TFitSchedule> m_fits;
    bool m_editorMode = false;
    std::unique_ptr<TDimensions> m_dimensions;
    std::unique_ptr<TAppearance> m_appearance;
    std::unique_ptr<TAxis> m_xAxis;
    std::unique_ptr<TAxis> m_yAxis;
    std::unique_ptr<TAxis> m_yAxisSecond;
    std::unique_ptr<TLegend> m_legend;
    std::unique_ptr<TxyHolder> m_holder;
    TSeriesOwners m_series;
    TMarkChain m_marks;
    std::vector<std::unique_ptr<TxyChildGr>> m_children;
    int m_highestNumber = 0;
    int m_pointBudget = kHostPointBudget;
    TChangeHook m_changeHook;
    QImage m_picture; ///< what the widget shows below what the mouse draws; null when stale
    std::unique_ptr<TGraphMouse> m_mouse;
};

} // namespace lumoplot
