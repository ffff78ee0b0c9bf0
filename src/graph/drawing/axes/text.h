// Texts of a graph in one font: how large they are and how they are drawn. Lengths are units of 1/96 inch and
// the same on every device.
#pragma once

#include "graph/drawing/axes/known_texts.h"
#include "graph/drawing/axes/label_text.h"
#include "graph/drawing/axes/rich_text.h"
#include "graph/drawing/lines/canvas.h"

#include <memory>

namespace lumoplot {

class TTextStyle {
public:
    explicit TTextStyle(const TFontSpec& font);

    double Width(const TLabelText& label) const;
    /// Of the longest line of a text as RichLines reads it; so for all texts below.
    double Width(const QString& text) const;
    /// From the top of accents to the foot of descenders.
    double Height() const { return Metrics().ascent() + Metrics().descent(); }
    double Height(const QString& text) const;
    double Ascent() const { return Metrics().ascent(); }
    double CapHeight() const { return m_base->CapHeight(); }
    /// The width of an M: what distances between texts are measured by.
    double Em() const { return m_base->Font().pixelSize(); }
    /// The text, shortened by "…" at its end where it is wider; then it is one line without raised parts.
    QString Fitted(const QString& text, double width) const;

    /// Draws with the left end of the base line at that place.
    void Draw(const TCanvas& canvas, QPointF baseline, const TLabelText& label) const;
    /// The base line is that of the first line.
    void Draw(const TCanvas& canvas, QPointF baseline, const QString& text) const;
    /// Draws all lines centred in the rectangle; Vertical reads from bottom to top.
    void DrawCentred(const TCanvas& canvas, const QRectF& rectangle, const QString& text,
                     Qt::Orientation orientation = Qt::Horizontal) const;

private:
    double WidthOf(const TTextRun& run) const;
    double WidthOf(const TTextLine& line) const;
    bool Shows(const QPainter& painter, QPointF baseline, const TTextLine& line) const;
    void DrawLine(const TCanvas& canvas, QPointF baseline, const TTextLine& line) const;
    TKnownTexts& KnownOf(const TTextRun& run) const {
        return run.Level == TTextLevel::Base ? *m_base : *m_exponent;
    }
    const QFontMetricsF& Metrics() const { return m_base->Metrics(); }

    std::shared_ptr<TKnownTexts> m_base;
    std::shared_ptr<TKnownTexts> m_exponent;
    QColor m_color;
};

/// Lightens what lies behind a text in a picture, so that it can be read.
void DrawBehindText(const TCanvas& canvas, const QRectF& place, TColor color);

} // namespace lumoplot
