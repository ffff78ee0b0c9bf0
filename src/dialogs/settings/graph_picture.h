// Shows a graph as large as there is room, drawn as it would be at its own size.
#pragma once

#include <QWidget>

namespace lumoplot {

class TxyGraph;

class TGraphPicture : public QWidget {
public:
    explicit TGraphPicture(QWidget* parent = nullptr) : QWidget(parent) {}

    /// The graph is borrowed; it is prepared for drawing here.
    void SetGraph(TxyGraph* graph);
    /// The graph has changed: it is drawn anew with the next paint.
    void Renew();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    TxyGraph* m_graph = nullptr;
    bool m_isStale = true;
};

} // namespace lumoplot
