// Takes a baseline off a data set that goes through places which are clicked in the plot or typed into a
// table: straight from place to place, as a polynomial or as a spline. The plot shows what comes of it.
#pragma once

#include "controls/widgets_export.h"
#include "data/transform/baseline.h"
#include "dialogs/transform/baseline_mode.h"
#include "graph/model/series.h"

#include <QDialog>
#include <memory>

class QTableWidgetItem;

namespace Ui {
class TBaselineDialog;
}

namespace lumoplot {

class TBaselineDialog : public QDialog, private TPlaceKeeper {
    Q_OBJECT

public:
    explicit TBaselineDialog(TSeries& series, QWidget* parent = nullptr);
    ~TBaselineDialog() override;

    /// Puts the result where it is to go; stays open when it cannot. A sourced data set asks before its own
    /// points change.
    void accept() override;

private:
    void ConnectControls();
    void ShowPlaces(int current);
    void ShowResult();
    void TakeCell(const QTableWidgetItem& cell);
    void AddInGap();
    void RemoveCurrent();
    double WidestGap() const;
    bool StoreResult();
    TBaselineWish Wanted() const;

    std::optional<int> PlaceAt(const TPlotMap& map, QPointF at) const override;
    int AddPlace(double x, double y) override;
    void MovePlace(int place, double x, double y) override;
    void RemovePlace(int place) override;

    TSeries& m_series;
    std::unique_ptr<Ui::TBaselineDialog> m_ui;
    TCurveValues m_curve;
    TCurveValues m_places;          ///< as they were added
    std::vector<double> m_baseline; ///< at the X of the curve; empty where there is none
    TSeries* m_shown[4] = {};       ///< curve, baseline, places, result
};

/// Shows the dialog; true when the graph has changed.
XYWIDGETS_EXPORT bool TakeBaselineOff(TSeries& series, QWidget* window);

} // namespace lumoplot
