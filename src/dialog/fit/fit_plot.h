// A small plot of one data set and of its equation as it stands, redrawn while values are typed. It takes
// over what it draws when it is shown and keeps no reference to the data set.
#pragma once

#include "graph/drawing/axes/ticks.h"
#include "graph/model/series.h"

#include <QPen>
#include <QWidget>
#include <cstdint>

namespace lumoplot {

class TScaleMap;

class TFitPlot : public QWidget {
    Q_OBJECT

public:
    explicit TFitPlot(QWidget* parent = nullptr);

    /// Shows the data, with their baseline taken away, and the curve of `model`, a compiled fit; null for no
    /// curve. `note` is written over the plot.
    void Show(const TSeries& series, TCurFit* model, const QString& note);
    void ShowNothing();
    /// The curve is in sight, at least a part of it.
    bool ShowsCurve() const;

    QSize sizeHint() const override { return {300, 180}; }
    QSize minimumSizeHint() const override { return {200, 110}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct TLook {
        QColor Background;
        QColor Grid;
        QColor Points;
        QPen Curve;
    };

    void TakeData(const TSeries& series);
    void ChooseRanges(const TSeries& series);
    void TakeCurve(const TSeries& series, TCurFit& model);
    void TakeLook(const TSeries& series);
    void PaintAxes(QPainter& painter, const QRectF& plot, const TScaleMap& x, const TScaleMap& y) const;
    void PaintPoints(QPainter& painter, const TScaleMap& x, const TScaleMap& y) const;
    void PaintCurve(QPainter& painter, const TScaleMap& x, const TScaleMap& y) const;
    void PaintNote(QPainter& painter, const QRectF& plot) const;

    bool m_isEmpty = true;
    std::uint64_t m_dataStamp = 0;
    std::vector<QPointF> m_points; ///< finite ones, thinned where there are many
    std::vector<QPointF> m_curve;  ///< not-a-number in Y where it has a gap
    TTickRules m_xRules;
    TTickRules m_yRules;
    TLook m_look;
    QString m_note;
};

} // namespace lumoplot
