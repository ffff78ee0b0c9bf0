#include "graph/drawing/axes/text.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kExponentSize = 0.72; // of the font
constexpr double kExponentRise = 0.42; // of the font, from base line to base line

QFont SmallerFont(QFont font) {
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(font.pixelSize() * kExponentSize))));
    return font;
}

} // namespace

TTextStyle::TTextStyle(const TFontSpec& font)
    : m_font(ToQFont(font)), m_exponentFont(SmallerFont(m_font)), m_metrics(m_font),
      m_exponentMetrics(m_exponentFont), m_color(ToQColor(font.Color)) {
}

double TTextStyle::Width(const TLabelText& label) const {
    const double base = Width(label.Base);
    return label.Exponent.isEmpty() ? base : base + m_exponentMetrics.horizontalAdvance(label.Exponent);
}

QString TTextStyle::Fitted(const QString& text, double width) const {
    return Width(text) <= width ? text : m_metrics.elidedText(text, Qt::ElideRight, width);
}

void TTextStyle::Draw(const TCanvas& canvas, QPointF baseline, const QString& text) const {
    if (text.isEmpty()) return;
    baseline.setY(canvas.AlignY(baseline.y(), 0));
    QPainter& painter = canvas.Painter();
    painter.setPen(m_color);
    painter.setFont(m_font);
    painter.drawText(baseline, text);
}

void TTextStyle::Draw(const TCanvas& canvas, QPointF baseline, const TLabelText& label) const {
    Draw(canvas, baseline, label.Base);
    if (label.Exponent.isEmpty()) return;
    baseline.setY(canvas.AlignY(baseline.y(), 0));
    canvas.Painter().setFont(m_exponentFont);
    canvas.Painter().drawText(baseline + QPointF(Width(label.Base), -kExponentRise * m_font.pixelSize()),
                              label.Exponent);
}

void TTextStyle::DrawCentred(const TCanvas& canvas, const QRectF& rectangle, const QString& text,
                             Qt::Orientation orientation) const {
    const bool isVertical = orientation == Qt::Vertical;
    const QString fitted = Fitted(text, isVertical ? rectangle.height() : rectangle.width());
    const QPointF centre = rectangle.center();
    const double left = -Width(fitted) / 2;
    const double down = (m_metrics.ascent() - m_metrics.descent()) / 2;
    if (!isVertical) return Draw(canvas, centre + QPointF(left, down), fitted);
    QPainter& painter = canvas.Painter();
    painter.save();
    painter.translate(canvas.AlignX(centre.x() + down, 0), centre.y());
    painter.rotate(-90);
    painter.setPen(m_color);
    painter.setFont(m_font);
    painter.drawText(QPointF(left, 0), fitted);
    painter.restore();
}

} // namespace lumoplot
