#include "graph/drawing/axes/text.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kExponentSize = 0.72; // of the font
constexpr double kExponentRise = 0.42; // of the font, from base line to base line
constexpr double kIndexDrop = 0.18;

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
    const double base = WidthOf(TTextRun{label.Base, TTextLevel::Base});
    return label.Exponent.isEmpty() ? base : base + WidthOf(TTextRun{label.Exponent, TTextLevel::Raised});
}

double TTextStyle::WidthOf(const TTextRun& run) const {
    const bool isBase = run.Level == TTextLevel::Base;
    TWidths& known = isBase ? m_baseWidths : m_exponentWidths;
    if (const auto found = known.constFind(run.Text); found != known.cend()) return *found;
    const double width = (isBase ? m_metrics : m_exponentMetrics).horizontalAdvance(run.Text);
    known.insert(run.Text, width);
    return width;
}

double TTextStyle::WidthOf(const TTextLine& line) const {
    double width = 0;
    for (const TTextRun& run : line) width += WidthOf(run);
    return width;
}

double TTextStyle::Width(const QString& text) const {
    if (const auto found = m_widths.constFind(text); found != m_widths.cend()) return *found;
    double width = 0;
    for (const TTextLine& line : RichLines(text)) width = std::max(width, WidthOf(line));
    m_widths.insert(text, width);
    return width;
}

double TTextStyle::Height(const QString& text) const {
    return Height() * static_cast<double>(RichLines(text).size());
}

QString TTextStyle::Fitted(const QString& text, double width) const {
    if (Width(text) <= width) return text;
    QString plain;
    for (const TTextLine& line : RichLines(text)) {
        if (!plain.isEmpty()) plain += u' ';
        for (const TTextRun& run : line) plain += run.Text;
    }
    return m_metrics.elidedText(plain, Qt::ElideRight, width);
}

// What would be cut off at the edge of a graph is left out: a part of a number says another one, and not
// every vector format cuts texts off.
bool TTextStyle::Shows(const QPainter& painter, QPointF baseline, const TTextLine& line) const {
    constexpr double kBeyond = 1; // units
    if (!painter.hasClipping()) return true;
    double high = CapHeight();
    for (const TTextRun& run : line)
        if (run.Level == TTextLevel::Raised)
            high = std::max(high, kExponentRise * m_font.pixelSize() + m_exponentMetrics.capHeight());
    const QRectF letters(baseline.x(), baseline.y() - high, WidthOf(line), high);
    return painter.clipBoundingRect().adjusted(-kBeyond, -kBeyond, kBeyond, kBeyond).contains(letters);
}

void TTextStyle::DrawLine(QPainter& painter, QPointF baseline, const TTextLine& line) const {
    if (!Shows(painter, baseline, line)) return;
    painter.setPen(m_color);
    for (const TTextRun& run : line) {
        const double rise = run.Level == TTextLevel::Raised    ? kExponentRise
                            : run.Level == TTextLevel::Lowered ? -kIndexDrop
                                                               : 0;
        painter.setFont(run.Level == TTextLevel::Base ? m_font : m_exponentFont);
        painter.drawText(baseline - QPointF(0, rise * m_font.pixelSize()), run.Text);
        baseline.rx() += WidthOf(run);
    }
}

void TTextStyle::Draw(const TCanvas& canvas, QPointF baseline, const QString& text) const {
    for (const TTextLine& line : RichLines(text)) {
        DrawLine(canvas.Painter(), {baseline.x(), canvas.AlignY(baseline.y(), 0)}, line);
        baseline.ry() += Height();
    }
}

void TTextStyle::Draw(const TCanvas& canvas, QPointF baseline, const TLabelText& label) const {
    TTextLine line{{label.Base, TTextLevel::Base}};
    if (!label.Exponent.isEmpty()) line.push_back({label.Exponent, TTextLevel::Raised});
    if (!label.IsEmpty()) DrawLine(canvas.Painter(), {baseline.x(), canvas.AlignY(baseline.y(), 0)}, line);
}

void TTextStyle::DrawCentred(const TCanvas& canvas, const QRectF& rectangle, const QString& text,
                             Qt::Orientation orientation) const {
    const bool isVertical = orientation == Qt::Vertical;
    const QString fitted = Fitted(text, isVertical ? rectangle.height() : rectangle.width());
    const std::vector<TTextLine> lines = RichLines(fitted);
    const QPointF centre = rectangle.center();
    const double above = static_cast<double>(lines.size() - 1) * Height() / 2;
    double down = (m_metrics.ascent() - m_metrics.descent()) / 2 - above;
    QPainter& painter = canvas.Painter();
    for (const TTextLine& line : lines) {
        const double left = -WidthOf(line) / 2;
        if (!isVertical) {
            DrawLine(painter, {centre.x() + left, canvas.AlignY(centre.y() + down, 0)}, line);
        } else {
            painter.save();
            painter.translate(canvas.AlignX(centre.x() + down, 0), centre.y());
            painter.rotate(-90);
            DrawLine(painter, {left, 0}, line);
            painter.restore();
        }
        down += Height();
    }
}

void DrawBehindText(const TCanvas& canvas, const QRectF& place, TColor color) {
    constexpr int kOpacity = 200; // of 255
    QColor background = ToQColor(color);
    background.setAlpha(kOpacity);
    canvas.Painter().fillRect(canvas.Align(place), background);
}

} // namespace lumoplot
