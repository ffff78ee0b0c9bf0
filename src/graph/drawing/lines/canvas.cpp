#include "graph/drawing/lines/canvas.h"

#include <QPaintEngine>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kGridOfVectorDevices = 6;
constexpr double kThinnestLine = 0.25;
constexpr int kLargestFont = 1000;

bool HasPixels(const QPainter& painter) {
    const QTransform device = painter.deviceTransform();
    const bool upright =
        device.type() <= QTransform::TxScale && device.m11() > 0 && device.m11() == device.m22();
    return upright && painter.paintEngine()->type() == QPaintEngine::Raster;
}

// The middle of a line `pixels` wide whose edges lie between pixels.
double Middle(double position, double pixels) {
    const bool odd = std::lround(pixels) % 2 != 0;
    return odd ? std::floor(position) + 0.5 : std::round(position);
}

Qt::PenStyle ToQt(TPenStyle style) {
    switch (style) {
    case TPenStyle::Dash: return Qt::DashLine;
    case TPenStyle::Dot: return Qt::DotLine;
    case TPenStyle::DashDot: return Qt::DashDotLine;
    case TPenStyle::DashDotDot: return Qt::DashDotDotLine;
    case TPenStyle::Solid: break;
    }
    return Qt::SolidLine;
}

} // namespace

QFont ToQFont(const TFontSpec& settings) {
    QFont font(QString::fromStdString(settings.Name));
    font.setPixelSize(std::clamp(settings.Size, 1, kLargestFont));
    font.setBold(settings.Bold);
    font.setItalic(settings.Italic);
    font.setUnderline(settings.Underline);
    font.setStrikeOut(settings.StrikeOut);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

TCanvas::TCanvas(QPainter& painter, TDrawPurpose purpose)
    : m_painter(painter), m_purpose(purpose), m_isRaster(HasPixels(painter)), m_scale(kGridOfVectorDevices) {
    if (!m_isRaster) return;
    const QTransform device = painter.deviceTransform();
    m_scale = device.m11();
    m_offsetX = device.dx();
    m_offsetY = device.dy();
}

double TCanvas::FittingWidth(double width) const {
    if (!m_isRaster) return std::max(width, kThinnestLine);
    return std::max(1.0, std::round(width * m_scale)) / m_scale;
}

double TCanvas::AlignX(double x, double width) const {
    return m_isRaster ? FromDeviceX(Middle(ToDeviceX(x), width * m_scale)) : x;
}

double TCanvas::AlignY(double y, double width) const {
    return m_isRaster ? FromDeviceY(Middle(ToDeviceY(y), width * m_scale)) : y;
}

QRectF TCanvas::Align(const QRectF& rectangle) const {
    return {QPointF(AlignX(rectangle.left(), 0), AlignY(rectangle.top(), 0)),
            QPointF(AlignX(rectangle.right(), 0), AlignY(rectangle.bottom(), 0))};
}

QPen TCanvas::Pen(TColor color, TPenStyle style, double width) const {
    QPen pen(ToQColor(color), FittingWidth(width), ToQt(style), Qt::FlatCap, Qt::RoundJoin);
    return pen;
}

void TCanvas::DrawStraight(QPointF from, QPointF to, const QPen& pen) const {
    const double width = pen.widthF();
    if (from.x() == to.x())
        from.rx() = to.rx() = AlignX(from.x(), width);
    else
        from.ry() = to.ry() = AlignY(from.y(), width);
    if (m_isRaster && pen.style() == Qt::SolidLine) return FillLine(from, to, pen);
    m_painter.setPen(pen);
    m_painter.drawLine(from, to);
}

// Whole pixels at its ends, too.
void TCanvas::FillLine(QPointF from, QPointF to, const QPen& pen) const {
    const double half = pen.widthF() / 2;
    const QPointF across = from.x() == to.x() ? QPointF(half, 0) : QPointF(0, half);
    m_painter.fillRect(Align(QRectF(from - across, to + across).normalized()), pen.color());
}

void TCanvas::FillRect(const QRectF& rectangle, TColor color) const {
    const TCrispEdges crisp(*this);
    m_painter.fillRect(Align(rectangle), ToQColor(color));
}

TCanvas::TCrispEdges::TCrispEdges(const TCanvas& canvas)
    : m_painter(canvas.Painter()), m_wasSmooth(m_painter.testRenderHint(QPainter::Antialiasing)) {
    if (canvas.IsRaster()) m_painter.setRenderHint(QPainter::Antialiasing, false);
}

TCanvas::TDeviceUnits::TDeviceUnits(const TCanvas& canvas) : m_painter(canvas.Painter()) {
    m_painter.save();
    const QTransform toDevice = m_painter.deviceTransform();
    m_painter.setWorldTransform(toDevice.inverted() * m_painter.worldTransform());
}

} // namespace lumoplot
