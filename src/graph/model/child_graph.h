// A graph that lies inside a parent graph, placed by fractions of the parent's size; also the working graph
// of the editor, which lies in a panel without a parent graph.
#pragma once

#include "graph/model/graph.h"

#include <QRect>

namespace lumoplot {

class TxyChildGr : public TxyGraph {
    Q_OBJECT

public:
    /// Inside a graph, which owns it through its chain.
    explicit TxyChildGr(TxyGraph& parentGraph);
    /// Inside any other widget.
    XYGRAPH_EXPORT explicit TxyChildGr(QWidget* parent);

    TxyGraph* ParentGraph() { return m_parentGraph; }
    const TxyGraph* ParentGraph() const { return m_parentGraph; }

    /// The place inside a parent of that size that the fractions of Dimensions give, to the nearest pixel.
    QRect PlaceIn(const QSize& parentSize) const;
    /// Moves the widget to its place in the parent graph.
    XYGRAPH_EXPORT void FollowParent();
    /// Takes over the fractions from where the widget lies, after a user has moved or resized it.
    void TakeFractionsFromBounds();

private:
    TxyGraph* m_parentGraph = nullptr;
    bool m_isTakingFractions = false;
};

} // namespace lumoplot
