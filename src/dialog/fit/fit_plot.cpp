#include "dialog/fit/fit_plot.h"

#include <QPainter>

namespace lumoplot {

void TFitPlot::ShowNothing() {
    m_picture.Clear();
    update();
}

void TFitPlot::Show(const TSeries& series, TCurFit* model, const QString& note) {
    m_note = note;
    m_picture.Take(series, model);
    update();
}

void TFitPlot::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    m_picture.Paint(painter, rect(),
                    {TResidualsBelow::Shown, m_note, palette().color(QPalette::WindowText),
                     palette().color(QPalette::Mid), palette().color(QPalette::ToolTipBase),
                     palette().color(QPalette::ToolTipText)});
}

} // namespace lumoplot
