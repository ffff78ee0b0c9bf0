// A small plot of one data set and of its equation as it stands, redrawn while values are typed.
#pragma once

#include "graph/drawing/picture/fit_picture.h"

#include <QWidget>

namespace lumoplot {

class TFitPlot : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Shows the data, with their baseline taken away, and the curve of `model`, a compiled fit; null for no
    /// curve. `note` is written over the plot.
    void Show(const TSeries& series, TCurFit* model, const QString& note);
    void ShowNothing();
    /// The curve is in sight, at least a part of it.
    bool ShowsCurve() const { return m_picture.ShowsCurve(); }

    QSize sizeHint() const override { return {300, 220}; }
    QSize minimumSizeHint() const override { return {160, 140}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    TFitPicture m_picture;
    QString m_note;
};

} // namespace lumoplot
