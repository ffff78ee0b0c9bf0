// The read-out of the coordinates under the mouse: a small panel of a graph with a label for each axis. It
// lies in the graph's top right corner; a host may put it anywhere else, a status bar for one.
#pragma once

#include "graph/plotted/plot_map.h"

#include <QFrame>
#include <QLabel>

namespace lumoplot {

/// One coordinate: the axis' short name and the value. Its width never shrinks while the mouse stays on the
/// plot, so that the texts beside it stand still.
class TCoordLabel : public QLabel {
    Q_OBJECT

public:
    TCoordLabel(const QString& axisName, QWidget* parent);

    void ShowValue(const QString& value);
    void Clear();

private:
    QString m_axisName;
};

class TCoordsPanel : public QFrame {
    Q_OBJECT

public:
    explicit TCoordsPanel(TxyGraph& graph);

    /// Shows the values at a place of the plot; the second Y axis only where the graph shows it.
    void ShowPlace(const TPlotMap& map, QPointF place);
    /// Shows nothing; a panel that lies on the graph disappears.
    void Clear();

private:
    bool LiesOnGraph() const;
    void MoveToCorner();

    TxyGraph& m_graph;
    TCoordLabel* m_x;
    TCoordLabel* m_y;
    TCoordLabel* m_secondY;
};

} // namespace lumoplot
