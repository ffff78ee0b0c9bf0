// Works out a new curve from a data set (shifted, smoothed, differentiated, …) with a preview of what it
// comes to, and puts it in the place of the old points or into a new data set.
#pragma once

#include "controls/widgets_export.h"
#include "data/transform/transform.h"
#include "graph/model/series.h"

#include <QDialog>
#include <QTimer>
#include <memory>
#include <optional>

class QLineEdit;

namespace Ui {
class TTransformDialog;
}

namespace lumoplot {

/// The captions of the menu entries, in the order of TTransformKind.
XYWIDGETS_EXPORT QStringList TransformCaptions();

class TTransformDialog : public QDialog {
    Q_OBJECT

public:
    TTransformDialog(TSeries& series, TTransformKind kind, QWidget* parent = nullptr);
    ~TTransformDialog() override;

    /// Puts the result where it is to go; stays open when it cannot. A sourced data set asks before its own
    /// points change.
    void accept() override;

private:
    void ConnectControls();
    void ListMarks();
    void ShowKind();
    void TakeRange(double from, double to);
    void ShowResult();
    TTransform Wanted() const;
    std::string ResultName() const;

    TSeries& m_series;
    std::unique_ptr<Ui::TTransformDialog> m_ui;
    TCurveValues m_before;
    std::optional<TCurveValues> m_after; ///< nothing where the numbers are wrong
    QTimer m_timer;
};

/// Shows the dialog; true when the graph has changed. The result carries no baseline: it is taken off first.
XYWIDGETS_EXPORT bool TransformSeries(TSeries& series, TTransformKind kind, QWidget* window);

} // namespace lumoplot
