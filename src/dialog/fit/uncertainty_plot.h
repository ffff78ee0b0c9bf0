// How uncertain one parameter is, drawn: its profile, which is a straight line for a linear model, with the
// ends of the interval, and how often resampled fits end at each value.
#pragma once

#include "fit/many/uncertainty.h"

#include <QWidget>
#include <optional>

class QPainter;

namespace lumoplot {

class TUncertaintyPlot : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    void ShowProfile(const TProfile& profile);
    void ShowSample(const std::vector<double>& values, TInterval interval);
    void SetName(const QString& name);
    void Clear();

    QSize sizeHint() const override { return {420, 180}; }
    QSize minimumSizeHint() const override { return {240, 110}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRectF PaintFrame(QPainter& painter, const QRectF& room, const QString& title, double low,
                      double high) const;
    void PaintProfile(QPainter& painter, const QRectF& room) const;
    void PaintSample(QPainter& painter, const QRectF& room) const;
    void PaintHint(QPainter& painter, const QRectF& room, const QString& hint) const;

    QString m_name;
    std::optional<TProfile> m_profile;
    std::vector<double> m_sample;
    TInterval m_interval;
};

} // namespace lumoplot
