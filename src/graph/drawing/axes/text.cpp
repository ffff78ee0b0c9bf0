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
    : m_base(TKnownTexts::Of(ToQFont(font))), m_exponent(TKnownTexts::Of(SmallerFont(m_base->Font()))),
      m_color(ToQColor(font.Color)) {
}

double TTextStyle::Width(const TLabelText& label) const {
    const double base = WidthOf(TTextRun{label.Base, TTextLevel::Base});
    return label.Exponent.isEmpty() ? base : base + WidthOf(TTextRun{label.Exponent, TTextLevel::Raised});
}

double TTextStyle::WidthOf(const TTextRun& run) const {
    return KnownOf(run).Width(run.Text);
}

double TTextStyle::WidthOf(const TTextLine& line) const {
    double width = 0;
    for (const TTextRun& run : line) width += WidthOf(run);
    return width;
}

double TTextStyle::Width(const QString& text) const {
    return m_base->RichWidth(text, [&] {
        double width = 0;
        for (const TTextLine& line : RichLines(text)) width = std::max(width, WidthOf(line));
        return width;
    });
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
    return Metrics().elidedText(plain, Qt::ElideRight, width);
}

// What would be cut off at the edge of a graph is left out: a part of a number says another one, and not
// every vector format cuts texts off.
bool TTextStyle::Shows(const QPainter& painter, QPointF baseline, const TTextLine& line) const {
    constexpr double kBeyond = 1; // units
    if (!painter.hasClipping()) return true;
    double high = CapHeight();
    for (const TTextRun& run : line)
        if (run.Level == TTextLevel::Raised)
            high = std::max(high, kExponentRise * Em() + m_exponent->CapHeight());
    const QRectF letters(baseline.x(), baseline.y() - high, WidthOf(line), high);
    return painter.clipBoundingRect().adjusted(-kBeyond, -kBeyond, kBeyond, kBeyond).contains(letters);
}

// On pixels by glyphs that are known already; elsewhere as a text, which files keep as one.
void TTextStyle::DrawLine(const TCanvas& canvas, QPointF baseline, const TTextLine& line) const {
    QPainter& painter = canvas.Painter();
    if (!Shows(painter, baseline, line)) return;
    painter.setPen(m_color);
    for (const TTextRun& run : line) {
        const double rise = run.Level == TTextLevel::Raised    ? kExponentRise
                            : run.Level == TTextLevel::Lowered ? -kIndexDrop
                                                               : 0;
        TKnownTexts& known = KnownOf(run);
        const QPointF at = baseline - QPointF(0, rise * Em());
        if (canvas.IsRaster()) {
            for (const QGlyphRun& glyphs : known.Glyphs(run.Text)) painter.drawGlyphRun(at, glyphs);
        } else {
            painter.setFont(known.Font());
            painter.drawText(at, run.Text);
        }
        baseline.rx() += known.Width(run.Text);
    }
}

void TTextStyle::Draw(const TCanvas& canvas, QPointF baseline, const QString& text) const {
    for (const TTextLine& line : RichLines(text)) {
        DrawLine(canvas, {baseline.x(), canvas.AlignY(baseline.y(), 0)}, line);
        baseline.ry() += Height();
    }
}

void TTextStyle::Draw(const TCanvas& canvas, QPointF baseline, const TLabelText& label) const {
    TTextLine line{{label.Base, TTextLevel::Base}};
    if (!label.Exponent.isEmpty()) line.push_back({label.Exponent, TTextLevel::Raised});
    if (!label.IsEmpty()) DrawLine(canvas, {baseline.x(), canvas.AlignY(baseline.y(), 0)}, line);
}

void TTextStyle::DrawCentred(const TCanvas& canvas, const QRectF& rectangle, const QString& text,
                             Qt::Orientation orientation) const {
    const bool isVertical = orientation == Qt::Vertical;
    const QString fitted = Fitted(text, isVertical ? rectangle.height() : rectangle.width());
    const std::vector<TTextLine> lines = RichLines(fitted);
    const QPointF centre = rectangle.center();
    const double above = static_cast<double>(lines.size() - 1) * Height() / 2;
    double down = (Metrics().ascent() - Metrics().descent()) / 2 - above;
    QPainter& painter = canvas.Painter();
    for (const TTextLine& line : lines) {
        const double left = -WidthOf(line) / 2;
        if (!isVertical) {
            DrawLine(canvas, {centre.x() + left, canvas.AlignY(centre.y() + down, 0)}, line);
        } else {
            painter.save();
            painter.translate(canvas.AlignX(centre.x() + down, 0), centre.y());
            painter.rotate(-90);
            DrawLine(canvas, {left, 0}, line);
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
