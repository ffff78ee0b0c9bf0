// What the fitted curves leave of the points, in a panel of its own above the plot, over the same X.
#pragma once

#include "graph/drawing/axes/axis_layout.h"

#include <vector>

namespace lumoplot {

class TSeries;

/// The residuals of all data sets of a graph whose fitted curves are drawn; none unless the graph shows them.
class TResidualPanel {
public:
    explicit TResidualPanel(const TxyGraph& graph);

    bool IsEmpty() const { return m_sets.empty(); }
    /// How far the scale reaches, up and down: a round number.
    double Reach() const { return m_reach; }
    /// The room that labels and title need left of the panel.
    double WidthOfTexts(const TAxisFonts& fonts) const;
    /// Frame, zero line, labels and points in a rectangle above the plot, whose X axis is `x`.
    void Draw(const TCanvas& canvas, const TAxisFonts& fonts, const QRectF& place, const TAxis& x) const;

private:
    struct TSet {
        const TSeries* Series;
        std::vector<double> X;
        std::vector<double> Residuals;
    };

    void Add(const TSeries& series);
    void DrawPoints(const TCanvas& canvas, const TSet& set, const QRectF& place, const TAxis& x) const;
    QString LabelOf(double value) const;

    const TxyGraph& m_graph;
    std::vector<TSet> m_sets;
    double m_reach = 0;
};

} // namespace lumoplot
