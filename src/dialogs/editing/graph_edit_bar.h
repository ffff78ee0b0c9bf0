// The bar beside a graph that chooses what the mouse does on it: zoom, edit the points of the current data
// set, place marks. It opens the mark editor and the set-values dialog, too. Used by the data editor's
// preview and by hosts.
#pragma once

#include "controls/widgets_export.h"
#include "graph/model/graph.h"

#include <QPointer>
#include <QWidget>
#include <memory>

class QToolButton;

namespace Ui {
class TGraphEditBar;
}

namespace lumoplot {

struct THandEditing;

/// What a list of data sets shows of one.
struct TListedSeries {
    std::string Name;
    bool HasLine;
    bool HasPoints;
    TColor LineColor;
    TColor PointColor;

    bool operator==(const TListedSeries&) const = default;
};

class XYWIDGETS_EXPORT TGraphEditBar : public QWidget {
    Q_OBJECT

public:
    /// The graph is borrowed; either may go first.
    explicit TGraphEditBar(TxyGraph& graph, QWidget* parent = nullptr);
    ~TGraphEditBar() override;

    /// The mouse zooms again.
    void ShowZoom();
    bool ShowsZoom() const;

public Q_SLOTS:
    void EditMarksOfGraph();
    void SetValuesOfSeries();

Q_SIGNALS:
    /// Another data set was chosen as the current one.
    void SeriesPicked(int number);

protected:
    XYWIDGETS_LOCAL void showEvent(QShowEvent* event) override;

private:
    XYWIDGETS_LOCAL void ConnectModes();
    XYWIDGETS_LOCAL void ShowSeries();
    XYWIDGETS_LOCAL void PickSeries();
    XYWIDGETS_LOCAL TSeries* Current() const;

    QPointer<TxyGraph> m_graph;
    std::unique_ptr<Ui::TGraphEditBar> m_ui;
    std::shared_ptr<THandEditing> m_editing;
    std::vector<TListedSeries> m_listed;
};

} // namespace lumoplot
