// Where in a plot data are drawn, roughly: what looks for a free place asks it how much it would cover.
#pragma once

#include "graph/drawing/picture/graph_layout.h"

#include <vector>

namespace lumoplot {

class TSeries;

class TCrowd {
public:
    /// Of the data sets that are drawn. Of large ones a part of the points stands for all.
    TCrowd(const TxyGraph& graph, const TGraphLayout& layout);

    /// How much of the data a rectangle covers; 0 where it covers none.
    double In(const QRectF& rectangle) const;

private:
    void TakeSeries(const TSeries& series, const TGraphLayout& layout);
    void TakeLine(QPointF from, QPointF to);
    void TakePlace(QPointF place, double weight);

    QRectF m_plot;
    int m_columns;
    int m_rows;
    std::vector<double> m_cells;
};

} // namespace lumoplot
