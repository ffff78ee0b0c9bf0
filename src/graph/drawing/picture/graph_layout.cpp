#include "graph/drawing/picture/graph_layout.h"

#include "graph/drawing/picture/legend_painter.h"
#include "graph/model/appearance.h"
#include "graph/model/graph.h"
#include "graph/model/settings.h"
#include "graph/plotted/panel_place.h"

#include <algorithm>
#include <array>

namespace lumoplot {
namespace {

constexpr double kEdge = 3;              // units between texts and the edge of the graph
constexpr double kSmallestPlot = 4;      // units; below there is no plot
constexpr double kFairShare = 0.35;      // of the rectangle that growing margins leave to the plot
constexpr double kLargestMargins = 0.75; // of the rectangle; larger ones are reduced in proportion
constexpr double kLargestHeader = 0.3;   // of the height, that a legend above the plot may take
constexpr int kMostRounds = 4;
constexpr double kLeastForResiduals = 150; // units of height inside the margins
constexpr double kResidualShare = 0.24;    // of that height
constexpr double kGapWithCommon = 2.4;     // heights of a label, when one stands there

// How much two opposite margins shrink so that a plot remains between them.
double Reduction(double first, double second, double length) {
    const double sum = first + second;
    return sum > kLargestMargins * length ? kLargestMargins * length / sum : 1.0;
}

// The legend where it begins above the plot and would not push the plot away; else nothing.
QRectF LegendAbovePlot(const TxyGraph& graph, const QRectF& rectangle, const QRectF& plot) {
    if (!graph.Legend()->visible() || graph.Legend()->AutoPlace()) return {};
    const TLegendLayout legend = LayOutLegend(graph, rectangle);
    const bool isHeader = !legend.Entries.empty() && legend.Box.top() < plot.top() &&
                          legend.Box.bottom() < rectangle.top() + kLargestHeader * rectangle.height();
    return isHeader ? legend.Box : QRectF();
}

} // namespace

QRectF PlotInsideMargins(const TxyGraph& graph, const QRectF& rectangle) {
    const TDimensions& margins = *graph.Dimensions();
    const double x = Reduction(margins.LeftMargin(), margins.RightMargin(), rectangle.width());
    const double y = Reduction(margins.TopMargin(), margins.BottomMargin(), rectangle.height());
    const QRectF plot = rectangle.adjusted(margins.LeftMargin() * x, margins.TopMargin() * y,
                                           -margins.RightMargin() * x, -margins.BottomMargin() * y);
    return plot.width() >= kSmallestPlot && plot.height() >= kSmallestPlot ? plot : QRectF();
}

TGraphLayout::TGraphLayout(const TCanvas& canvas, const TxyGraph& graph, const QRectF& rectangle)
    : m_graph(graph), m_bounds(BesidePanels(graph, rectangle)), m_plot(PlotInsideMargins(graph, m_bounds)),
      m_titleStyle(graph.Appearance()->CaptionFont()), m_fonts(graph), m_axes(LayOutAxes()),
      m_residuals(graph) {
    if (!HasPlot()) return;
    m_header = LegendAbovePlot(graph, m_bounds, m_plot);
    MakeRoomForResiduals();
    PlaceTitle();
    for (int round = 0; round < kMostRounds && GrowMargins(); ++round) {
        m_axes = LayOutAxes();
        PlaceTitle();
    }
    const double pixel = 1 / canvas.PixelsPerUnit();
    m_plot = QRectF(QPointF(canvas.AlignX(m_plot.left(), pixel), canvas.AlignY(m_plot.top(), pixel)),
                    QPointF(canvas.AlignX(m_plot.right(), pixel), canvas.AlignY(m_plot.bottom(), pixel)));
    m_axes = LayOutAxes();
    PlaceTitle();
}

// Above the plot, where the X axis leaves room and enough of the plot remains.
void TGraphLayout::MakeRoomForResiduals() {
    const bool hasAxisAbove = m_axes.X.Axis().ShowAxis() && m_axes.X.Side() == TAxisSide::Above;
    if (m_residuals.IsEmpty() || hasAxisAbove || m_plot.height() < kLeastForResiduals) return;
    const bool hasCommon = !m_axes.Y.Common().isEmpty() || !m_axes.SecondY.Common().isEmpty();
    m_residualGap = m_fonts.Labels.Height() * (hasCommon ? kGapWithCommon : 1);
    m_residualHeight = kResidualShare * m_plot.height();
    m_plot.setTop(m_plot.top() + AbovePlot());
    m_axes = LayOutAxes();
}

QRectF TGraphLayout::ResidualPlace() const {
    if (m_residualHeight <= 0) return {};
    return {m_plot.left(), m_plot.top() - AbovePlot(), m_plot.width(), m_residualHeight};
}

TAxisLayouts TGraphLayout::LayOutAxes() const {
    const TScaleMap xMap = MapOf(*m_graph.XAxis(), m_plot);
    const TScaleMap yMap = MapOf(*m_graph.YAxis(), m_plot);
    const QRectF room = m_bounds.adjusted(kEdge, kEdge, -kEdge, -kEdge);
    TAxisLayouts axes{TAxisLayout(*m_graph.XAxis(), room, m_plot, yMap, m_fonts),
                      TAxisLayout(*m_graph.YAxis(), room, m_plot, xMap, m_fonts),
                      TAxisLayout(*m_graph.YAxis_Second(), room, m_plot, xMap, m_fonts)};
    for (TAxisLayout* axis : {&axes.Y, &axes.SecondY}) {
        axes.X.KeepLabelsOff(*axis, m_plot, m_fonts);
        axis->KeepLabelsOff(axes.X, m_plot, m_fonts);
        if (axes.X.Axis().ShowAxis() && axes.X.Side() == TAxisSide::Above && !axes.X.TextPlace().isNull())
            axis->KeepCommonAbove(axes.X.TextPlace().top());
    }
    KeepVerticalAxesApart(axes);
    KeepTextsApart(axes);
    return axes;
}

void TGraphLayout::KeepVerticalAxesApart(TAxisLayouts& axes) {
    if (!axes.Y.Axis().ShowAxis() || !axes.SecondY.Axis().ShowAxis()) return;
    if (axes.Y.Side() != axes.SecondY.Side() || axes.Y.Line() != axes.SecondY.Line()) {
        axes.SecondY.KeepTitleOff(axes.Y);
        axes.Y.KeepTitleOff(axes.SecondY);
        return;
    }
    const double used = axes.Y.Side() == TAxisSide::Left ? axes.Y.Line() - axes.Y.TextPlace().left()
                                                         : axes.Y.TextPlace().right() - axes.Y.Line();
    axes.SecondY.MoveOutwards(std::max(used, axes.Y.TickLength()) + kEdge * 2);
}

// What still meets where axes cross is left out; titles and what labels share stay.
void TGraphLayout::KeepTextsApart(TAxisLayouts& axes) const {
    std::vector<QRectF> texts;
    const std::array all = {&axes.X, &axes.Y, &axes.SecondY};
    for (const TAxisLayout* axis : all) axis->AddOtherTexts(texts, m_fonts);
    for (TAxisLayout* axis : all) axis->KeepLabelsOffTexts(texts, m_fonts);
}

std::vector<QRectF> TGraphLayout::AxisPlacesInPlot() const {
    std::vector<QRectF> places;
    const auto add = [&](const QRectF& place) {
        if (place.intersects(m_plot)) places.push_back(place);
    };
    for (const TAxisLayout* axis : {&m_axes.X, &m_axes.Y, &m_axes.SecondY}) {
        if (!axis->Axis().ShowAxis()) continue;
        for (const TTick& tick : axis->Ticks())
            if (!tick.Label.IsEmpty()) add(axis->LabelPlace(tick, m_fonts));
        add(axis->CommonPlace());
        if (axis->IsInside(m_plot)) add(axis->LinePlace(m_plot));
    }
    return places;
}

void TGraphLayout::PlaceTitle() {
    m_titlePlace = {};
    if (m_graph.Appearance()->GraphTitle().empty()) return;
    double top = m_plot.top() - AbovePlot();
    for (const QRectF& place : {m_axes.X.TextPlace(), m_axes.Y.CommonPlace(), m_axes.SecondY.CommonPlace()})
        if (!place.isNull()) top = std::min(top, place.top());
    const QString title = QString::fromStdString(m_graph.Appearance()->GraphTitle());
    const double height = m_titleStyle.Height(title);
    const double offset = m_graph.Dimensions()->GraphTitleOffset();
    m_titlePlace = {m_bounds.left() + kEdge, top - offset - height, m_bounds.width() - 2 * kEdge, height};
    // A title is centred over the plot as long as it fits there.
    const double width = m_titleStyle.Width(title);
    const double room =
        2 * std::min(m_plot.center().x() - m_bounds.left(), m_bounds.right() - m_plot.center().x());
    if (width <= room - 2 * kEdge)
        m_titlePlace = {m_plot.center().x() - room / 2, m_titlePlace.top(), room, height};
    KeepTitleOffLegend();
}

// A legend keeps its place; the title goes above it where it has room there, else below.
void TGraphLayout::KeepTitleOffLegend() {
    const double width = m_titleStyle.Width(QString::fromStdString(m_graph.Appearance()->GraphTitle()));
    const QRectF text(m_titlePlace.center().x() - width / 2, m_titlePlace.top(), width,
                      m_titlePlace.height());
    if (m_header.isNull() || !text.intersects(m_header.adjusted(-kEdge, -kEdge, kEdge, kEdge))) return;
    const double above = m_header.top() - kEdge - m_titlePlace.height();
    const bool hasRoomAbove = above >= m_bounds.top() + kEdge;
    const double below = m_header.bottom() + kEdge;
    m_titlePlace.moveTop(hasRoomAbove ? above : std::max(below, m_titlePlace.top()));
}

bool TGraphLayout::GrowMargins() {
    QRectF texts = m_axes.X.TextPlace() | m_axes.Y.TextPlace() | m_axes.SecondY.TextPlace();
    if (texts.isNull()) texts = m_plot;
    if (const QRectF panel = ResidualPlace(); !panel.isNull())
        texts |= panel.adjusted(-m_residuals.WidthOfTexts(m_fonts), -m_fonts.Labels.Height() / 2, 0, 0);
    const double top = m_titlePlace.isNull() ? texts.top() : std::min(texts.top(), m_titlePlace.top());
    const QRectF room = m_bounds.adjusted(kEdge, kEdge, -kEdge, -kEdge);
    // A title below the legend pushes the plot down.
    const bool isBelowLegend = !m_header.isNull() && m_titlePlace.top() >= m_header.bottom();
    const double inTitle = isBelowLegend ? m_titlePlace.bottom() - std::min(m_plot.top(), texts.top()) : 0;
    QRectF plot = m_plot.adjusted(
        std::max(0.0, room.left() - texts.left()), std::max({0.0, room.top() - top, inTitle}),
        -std::max(0.0, texts.right() - room.right()), -std::max(0.0, texts.bottom() - room.bottom()));
    // Where the texts need too much, the plot keeps its place in that direction and they are cut off.
    if (plot.width() < kFairShare * m_bounds.width())
        plot = {m_plot.left(), plot.top(), m_plot.width(), plot.height()};
    if (plot.height() < kFairShare * m_bounds.height())
        plot = {plot.left(), m_plot.top(), plot.width(), m_plot.height()};
    if (plot == m_plot) return false;
    m_plot = plot;
    return true;
}

} // namespace lumoplot
