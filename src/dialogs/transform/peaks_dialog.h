// Lists the peaks of a data set, copies them as a table, marks them and fits a sum of peaks to the data set.
#pragma once

#include "controls/widgets_export.h"
#include "data/transform/peaks.h"
#include "graph/model/series.h"

#include <QDialog>

class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QTableWidget;

namespace lumoplot {

class TxyGraph;

class TPeaksDialog : public QDialog {
    Q_OBJECT

public:
    explicit TPeaksDialog(TSeries& series, QWidget* parent = nullptr);

private:
    void AddControls();
    void ShowPeaks();
    void CopyTable() const;
    void MarkPeaks();
    void FitPeaks();
    std::vector<int> ChosenRows() const;

    TSeries& m_series;
    TCurveValues m_curve; ///< without the baseline
    std::vector<TPeak> m_peaks;
    QDoubleSpinBox* m_part = nullptr;
    QTableWidget* m_table = nullptr;
    QComboBox* m_shape = nullptr;
    QLabel* m_state = nullptr;
    TxyGraph* m_plot = nullptr; ///< the curve, and points at its peaks
};

/// Shows the dialog; every row of the source is read first. Marks and fits that it makes are changes of the
/// graph.
XYWIDGETS_EXPORT void ShowPeaksOf(TSeries& series, QWidget* window);

} // namespace lumoplot
