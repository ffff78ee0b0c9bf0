// How a graph divides its rectangle: the plot inside its margins, the axes and the title around it.
#pragma once

#include "graph/drawing/axes/axis_layout.h"
#include "graph/drawing/picture/residual_panel.h"

namespace lumoplot {

/// The axes of a graph around its plot.
struct TAxisLayouts {
    TAxisLayout X;
    TAxisLayout Y;
    TAxisLayout SecondY;

    const TAxisLayout& YOf(bool second) const { return second ? SecondY : Y; }
};

/// The plot rectangle that the margins of Dimensions leave; empty where the rectangle is too small for a
/// plot.
QRectF PlotInsideMargins(const TxyGraph& graph, const QRectF& rectangle);

/// The layout of a graph whose axes have consistent ranges. Margins grow where texts would be clipped, as
/// long as a fair part of the rectangle remains for the plot. Edges of the plot lie in the middle of device
/// pixels, as the axis lines do.
class TGraphLayout {
public:
    XYGRAPH_EXPORT TGraphLayout(const TCanvas& canvas, const TxyGraph& graph, const QRectF& rectangle);

    const QRectF& Plot() const { return m_plot; }
    bool HasPlot() const { return !m_plot.isEmpty(); }
    const TAxisFonts& Fonts() const { return m_fonts; }
    /// Only where HasPlot.
    const TAxisLayouts& Axes() const { return m_axes; }
    /// Labels and lines of axes that lie inside the plot.
    std::vector<QRectF> AxisPlacesInPlot() const;
    /// Where the title of the graph lies, above the plot and what is drawn there.
    const QRectF& TitlePlace() const { return m_titlePlace; }
    const TResidualPanel& Residuals() const { return m_residuals; }
    /// Where the panel of the residuals lies, above the plot; null where there is none.
    QRectF ResidualPlace() const;

private:
    TAxisLayouts LayOutAxes() const;
    static void KeepVerticalAxesApart(TAxisLayouts& axes);
    void KeepTextsApart(TAxisLayouts& axes) const;
    void MakeRoomForResiduals();
    double AbovePlot() const { return m_residualHeight > 0 ? m_residualHeight + m_residualGap : 0; }
    void PlaceTitle();
    void KeepTitleOffLegend();
    bool GrowMargins();

    const TxyGraph& m_graph;
    QRectF m_bounds;
    QRectF m_plot;
    TTextStyle m_titleStyle;
    TAxisFonts m_fonts;
    TAxisLayouts m_axes;
    QRectF m_titlePlace;
    TResidualPanel m_residuals;
    double m_residualHeight = 0; ///< 0 where there is no panel
    double m_residualGap = 0;    ///< between panel and plot
    QRectF m_header;             ///< the legend where it stands above the plot
};

} // namespace lumoplot
