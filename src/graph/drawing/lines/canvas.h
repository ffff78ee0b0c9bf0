// A painter together with what the drawing must know of its device: how large its pixels are and where they
// lie. All lengths are units of 1/96 inch; a painter on a finer device carries the scale in its transform.
#pragma once

#include "graph/model/settings.h"
#include "support/look.h"

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QPen>

namespace lumoplot {

inline QColor ToQColor(TColor color) {
    return {RedOf(color), GreenOf(color), BlueOf(color)};
}
inline TColor ToColor(const QColor& color) {
    return MakeColor(color.red(), color.green(), color.blue());
}
/// The font with its size in units, laid out alike at every scale.
QFont ToQFont(const TFontSpec& settings);

class TCanvas {
public:
    XYGRAPH_EXPORT TCanvas(QPainter& painter, TDrawPurpose purpose);

    QPainter& Painter() const { return m_painter; }
    bool IsPrinting() const { return m_purpose == TDrawPurpose::Print; }
    /// False for SVG, PDF, printers and recordings: nothing is aligned to pixels there.
    bool IsRaster() const { return m_isRaster; }
    /// Device pixels in a unit; 6 (about 600 in an inch) where the device has none.
    double PixelsPerUnit() const { return m_scale; }

    // Units to device pixels and back; without device pixels, to a grid of 1/6 unit.
    double ToDeviceX(double x) const { return x * m_scale + m_offsetX; }
    double ToDeviceY(double y) const { return y * m_scale + m_offsetY; }
    double FromDeviceX(double x) const { return (x - m_offsetX) / m_scale; }
    double FromDeviceY(double y) const { return (y - m_offsetY) / m_scale; }

    QRectF ToDevice(const QRectF& r) const {
        return {QPointF(ToDeviceX(r.left()), ToDeviceY(r.top())),
                QPointF(ToDeviceX(r.right()), ToDeviceY(r.bottom()))};
    }

    /// The width that a line of that width is drawn with: whole device pixels, at least one.
    double FittingWidth(double width) const;
    /// The place nearest to x where a vertical line of that width covers whole pixels; AlignY likewise.
    double AlignX(double x, double width) const;
    double AlignY(double y, double width) const;
    QRectF Align(const QRectF& rectangle) const;

    /// A pen of a fitting width; caps are flat and dashes are laid out in units, whatever the scale.
    QPen Pen(TColor color, TPenStyle style, double width) const;
    /// A line between two points that lie on a vertical or horizontal, aligned to pixels.
    void DrawStraight(QPointF from, QPointF to, const QPen& pen) const;
    void FillRect(const QRectF& rectangle, TColor color) const;

    /// While it lives, edges lie between pixels, for what is aligned to them: that is drawn alike and faster.
    class TCrispEdges {
    public:
        explicit TCrispEdges(const TCanvas& canvas);
        ~TCrispEdges() { m_painter.setRenderHint(QPainter::Antialiasing, m_wasSmooth); }
        TCrispEdges(const TCrispEdges&) = delete;
        TCrispEdges& operator=(const TCrispEdges&) = delete;

    private:
        QPainter& m_painter;
        bool m_wasSmooth;
    };

    /// While it lives, the painter's units are device pixels. Only for raster devices.
    class TDeviceUnits {
    public:
        explicit TDeviceUnits(const TCanvas& canvas);
        ~TDeviceUnits() { m_painter.restore(); }
        TDeviceUnits(const TDeviceUnits&) = delete;
        TDeviceUnits& operator=(const TDeviceUnits&) = delete;

    private:
        QPainter& m_painter;
    };

private:
    void FillLine(QPointF from, QPointF to, const QPen& pen) const;

    QPainter& m_painter;
    TDrawPurpose m_purpose;
    bool m_isRaster;
    double m_scale;
    double m_offsetX = 0;
    double m_offsetY = 0;
};

} // namespace lumoplot
