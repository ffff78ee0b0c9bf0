#include "graph/drawing/lines/symbol.h"

#include <QPainterPath>
#include <QPolygonF>
#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

bool IsMadeOfLines(TPointShape shape) {
    return shape == TPointShape::Cross || shape == TPointShape::XCross || shape == TPointShape::Star;
}

void DrawLines(QPainter& painter, const TSymbol& symbol, QPointF c) {
    painter.setPen(QPen(symbol.Color, symbol.BorderWidth, Qt::SolidLine, Qt::FlatCap));
    const double r = symbol.Size / 2;
    // Slanted arms reach the corners of the square that the symbol fills, less what their width adds.
    const double slanted = std::max(r - symbol.BorderWidth * 0.35, r / 2);
    const double diagonal = symbol.Shape == TPointShape::Star ? r * std::sqrt(0.5) : slanted;
    if (symbol.Shape != TPointShape::XCross) {
        painter.drawLine(QLineF(c.x() - r, c.y(), c.x() + r, c.y()));
        painter.drawLine(QLineF(c.x(), c.y() - r, c.x(), c.y() + r));
    }
    if (symbol.Shape != TPointShape::Cross) {
        painter.drawLine(QLineF(c.x() - diagonal, c.y() - diagonal, c.x() + diagonal, c.y() + diagonal));
        painter.drawLine(QLineF(c.x() - diagonal, c.y() + diagonal, c.x() + diagonal, c.y() - diagonal));
    }
}

// The outline whose border lies inside the symbol's square: corners of a slanted outline reach further than
// half the border.
QPolygonF Outline(TPointShape shape, QPointF c, double r, double border) {
    const double half = border / 2;
    if (shape == TPointShape::Diamond) {
        const double d = std::max(r - half * std::sqrt(2.0), 0.0);
        return QPolygonF({c + QPointF(0, -d), c + QPointF(d, 0), c + QPointF(0, d), c + QPointF(-d, 0)});
    }
    // Half the width is r, the height 2r: a miter at the tip reaches half·√5, at the feet half·(1+√5)/2
    // sideways.
    const double up = shape == TPointShape::UpTriangle ? -1 : 1;
    const double tip = r - half * std::sqrt(5.0);
    const double foot = r - half;
    const double side = r - half * (1 + std::sqrt(5.0)) / 2;
    if (tip + foot <= 0 || side <= 0) return {};
    return QPolygonF(
        {c + QPointF(0, up * tip), c + QPointF(side, -up * foot), c + QPointF(-side, -up * foot)});
}

void DrawClosed(QPainter& painter, const TSymbol& symbol, QPointF c) {
    // A filled shape needs no border: both have the same colour.
    const double border = symbol.IsFilled ? 0 : std::min(symbol.BorderWidth, symbol.Size / 2);
    QPen pen(symbol.Color, border, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    pen.setMiterLimit(4);
    painter.setPen(symbol.IsFilled ? QPen(Qt::NoPen) : pen);
    painter.setBrush(symbol.IsFilled ? QBrush(symbol.Color) : QBrush(Qt::NoBrush));
    const double r = symbol.Size / 2;
    const double inner = r - border / 2;
    switch (symbol.Shape) {
    case TPointShape::Square:
        painter.drawRect(QRectF(c.x() - inner, c.y() - inner, 2 * inner, 2 * inner));
        break;
    case TPointShape::Circle: painter.drawEllipse(c, inner, inner); break;
    case TPointShape::WidePoint: {
        const double high = std::max(std::round(symbol.Size / 3), symbol.BorderWidth) - border;
        painter.drawRect(QRectF(c.x() - inner, c.y() - high / 2, 2 * inner, std::max(high, 0.0)));
        break;
    }
    default: painter.drawPolygon(Outline(symbol.Shape, c, r, border)); break;
    }
    painter.setBrush(Qt::NoBrush);
}

} // namespace

void DrawSymbol(QPainter& painter, const TSymbol& symbol, QPointF centre) {
    if (!(symbol.Size > 0)) return;
    if (IsMadeOfLines(symbol.Shape))
        DrawLines(painter, symbol, centre);
    else
        DrawClosed(painter, symbol, centre);
}

TSymbol SymbolOf(const TSeries& series) {
    return {series.PointShape(), static_cast<double>(series.PointSize()),
            static_cast<double>(series.PointBorderWidth()), series.FillPoints(),
            ToQColor(series.PointColor())};
}

TSymbol InPixels(const TSymbol& symbol, double pixelsPerUnit) {
    TSymbol pixels = symbol;
    if (symbol.Size > 0) pixels.Size = std::max(1.0, std::round(symbol.Size * pixelsPerUnit));
    pixels.BorderWidth = std::max(1.0, std::round(symbol.BorderWidth * pixelsPerUnit));
    const bool differ = std::fmod(pixels.Size, 2) != std::fmod(pixels.BorderWidth, 2);
    if (IsMadeOfLines(symbol.Shape) && differ && pixels.Size > 1) pixels.Size -= 1;
    return pixels;
}

} // namespace lumoplot
