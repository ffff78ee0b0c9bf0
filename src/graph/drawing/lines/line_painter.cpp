#include "graph/drawing/lines/line_painter.h"

#include "graph/drawing/strokes/cloud_stroker.h"
#include "graph/drawing/strokes/line_stroker.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

// A piece of a line is steep when it has so much length for each pixel column. With so many corners a column
// it fills the columns; with fewer each of its segments is covered by itself.
constexpr double kSteepLength = 6;
constexpr double kFillingCorners = 2.5;
constexpr double kFewCorners = 8;
constexpr double kThinLine = 1.5;  // pixels; wider ones fill with fewer corners a column
constexpr double kPieceWidth = 32; // columns that are judged together
constexpr std::size_t kMostCorners = 400;
constexpr double kCloudRuns = 30; // times that a cloud runs through its width, one way or the other
constexpr double kThinPen = 3;    // pixels; below, no pixel need be covered whole by a line that crosses it
constexpr double kClose = 0.35;   // pixels; corners nearer to each other than this are one

double LengthOf(QPointF a, QPointF b) {
    const QPointF d = b - a;
    return std::sqrt(QPointF::dotProduct(d, d));
}

enum class TPieceKind { Stroke, Area };

struct TPiece {
    std::size_t First; ///< corner; a piece starts with the last corner of the piece before
    std::size_t Last;
    TPieceKind Kind;
    double Length;
};

// Takes corners as long as they go on to the same side: what lies between the lowest and the highest place of
// a column is covered only where the line goes through the column once.
TPiece NextPiece(std::span<const QPointF> line, std::size_t first, double width) {
    std::size_t last = first;
    double length = 0;
    const double start = line[first].x();
    double side = 0;
    while (last + 1 < line.size() && std::abs(line[last].x() - start) < kPieceWidth &&
           last - first < kMostCorners) {
        const double step = line[last + 1].x() - line[last].x();
        if (step * side < 0) break;
        if (side == 0) side = step;
        ++last;
        length += LengthOf(line[last - 1], line[last]);
    }
    const double columns = std::abs(line[last].x() - start) + 1;
    const auto corners = static_cast<double>(last - first);
    const double overlap = std::max(1.0, width / kThinLine);
    const bool fills = corners > kFewCorners && length > kSteepLength * overlap * columns &&
                       corners * overlap > kFillingCorners * columns;
    return {first, last, fills ? TPieceKind::Area : TPieceKind::Stroke, length};
}

// Neighbouring strokes become one; areas stay apart, since filling one costs the square of its columns.
std::vector<TPiece> PiecesOf(std::span<const QPointF> line, double width) {
    std::vector<TPiece> pieces;
    for (std::size_t first = 0; first + 1 < line.size(); first = pieces.back().Last) {
        const TPiece piece = NextPiece(line, first, width);
        const bool joins =
            !pieces.empty() && pieces.back().Kind == TPieceKind::Stroke && piece.Kind == TPieceKind::Stroke;
        if (!joins) {
            pieces.push_back(piece);
            continue;
        }
        pieces.back().Last = piece.Last;
        pieces.back().Length += piece.Length;
    }
    return pieces;
}

// In the mask's pixels.
std::vector<QPointF> WithoutCloseCorners(std::span<const QPointF> line, QPointF corner) {
    std::vector<QPointF> kept{line.front() - corner};
    kept.reserve(line.size());
    for (std::size_t i = 1; i + 1 < line.size(); ++i)
        if (const QPointF place = line[i] - corner; LengthOf(kept.back(), place) >= kClose)
            kept.push_back(place);
    kept.push_back(line.back() - corner);
    return kept;
}

// Covers a mask with the lines of one device, in its pixels.
class TLineCover {
public:
    TLineCover(TStrokeMask& mask, double width, std::span<const double> dashes)
        : m_mask(mask), m_width(width), m_corner(mask.Area().topLeft()), m_stroker(mask, width, dashes) {}

    void Take(std::span<const QPointF> line) {
        if (line.size() == 1) return Stroke(line, 0);
        double before = 0;
        for (const TPiece& piece : PiecesOf(line, m_width)) {
            const auto corners = line.subspan(piece.First, piece.Last - piece.First + 1);
            if (piece.Kind == TPieceKind::Area)
                CoverArea(corners);
            else
                Stroke(corners, before);
            before += piece.Length;
        }
    }

private:
    void CoverArea(std::span<const QPointF> corners) {
        TColumnArea area = AreaOfDenseLine(corners, m_width);
        for (TColumnSpan& span : area.Spans) {
            span.Low -= m_corner.y();
            span.High -= m_corner.y();
        }
        CoverColumns(m_mask, area.First - m_mask.Area().left(), area.Spans);
    }

    void Stroke(std::span<const QPointF> corners, double before) {
        m_stroker.Stroke(WithoutCloseCorners(corners, m_corner), before);
    }

    TStrokeMask& m_mask;
    double m_width;
    QPointF m_corner;
    TLineStroker m_stroker;
};

// How far lines reach and run, in pixels.
struct TExtent {
    double Left = HUGE_VAL;
    double Top = HUGE_VAL;
    double Right = -HUGE_VAL;
    double Bottom = -HUGE_VAL;
    TLineRun Run;

    bool IsEmpty() const { return !(Left <= Right); }
    QRectF Rectangle() const { return {QPointF(Left, Top), QPointF(Right, Bottom)}; }
};

TExtent ExtentOf(const TPolylines& lines) {
    TExtent extent;
    for (std::size_t i = 0; i < lines.Count(); ++i) {
        QPointF before = lines.Line(i).front();
        for (const QPointF corner : lines.Line(i)) {
            extent.Left = std::min(extent.Left, corner.x());
            extent.Top = std::min(extent.Top, corner.y());
            extent.Right = std::max(extent.Right, corner.x());
            extent.Bottom = std::max(extent.Bottom, corner.y());
            extent.Run.Take(before, corner);
            before = corner;
        }
    }
    return extent;
}

// The pixels that the lines may cover, as far as they can be seen.
QRect AreaOf(const QPainter& painter, const TExtent& extent, double width) {
    if (extent.IsEmpty()) return {};
    const QRectF clip = painter.hasClipping()
                            ? painter.clipBoundingRect()
                            : QRectF(0, 0, painter.device()->width(), painter.device()->height());
    const double beyond = width / 2 + 1;
    return (extent.Rectangle().adjusted(-beyond, -beyond, beyond, beyond) & clip).toAlignedRect();
}

void CoverAsLines(TStrokeMask& mask, const TPolylines& lines, double width, std::span<const double> dashes) {
    TLineCover cover(mask, width, dashes);
    for (std::size_t i = 0; i < lines.Count(); ++i) cover.Take(lines.Line(i));
}

void CoverAsCloud(TStrokeMask& mask, const TPolylines& lines, double width, std::span<const double> dashes) {
    TCloudStroker stroker(mask, width, dashes);
    for (std::size_t i = 0; i < lines.Count(); ++i) stroker.Stroke(lines.Line(i));
}

void DrawOnRaster(const TCanvas& canvas, const TPolylines& lines, const QPen& pen) {
    const TCanvas::TDeviceUnits deviceUnits(canvas);
    const double width = PixelsOf(canvas, pen);
    const TExtent extent = ExtentOf(lines);
    const QRect area = AreaOf(canvas.Painter(), extent, width);
    if (area.isEmpty()) return;
    const std::vector<double> dashes = DashesOf(pen, width);
    const bool isCloud = CoversAsCloud(extent.Run, area, width);
    const bool isThin = width < kThinPen;
    TStrokeMask mask(area, isCloud  ? TStrokeMask::kByCloud
                           : isThin ? TStrokeMask::kByThinLines
                                    : TStrokeMask::kAllOfIt);
    if (isCloud)
        CoverAsCloud(mask, lines, width, dashes);
    else
        CoverAsLines(mask, lines, width, dashes);
    mask.Draw(canvas.Painter(), pen.color());
}

void DrawAsVectors(const TCanvas& canvas, const TPolylines& lines, QPen pen) {
    QPainter& painter = canvas.Painter();
    if (pen.style() == Qt::SolidLine) pen.setCapStyle(Qt::RoundCap);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    std::vector<QPointF> units;
    for (std::size_t i = 0; i < lines.Count(); ++i) {
        units.clear();
        for (const QPointF corner : lines.Line(i))
            units.emplace_back(canvas.FromDeviceX(corner.x()), canvas.FromDeviceY(corner.y()));
        if (units.size() == 1)
            painter.drawPoint(units[0]);
        else
            painter.drawPolyline(units.data(), static_cast<int>(units.size()));
    }
}

} // namespace

double PixelsOf(const TCanvas& canvas, const QPen& pen) {
    return std::max(1.0, std::round(pen.widthF() * canvas.PixelsPerUnit()));
}

std::vector<double> DashesOf(const QPen& pen, double width) {
    if (pen.style() == Qt::SolidLine) return {};
    std::vector<double> dashes;
    for (const double part : pen.dashPattern()) dashes.push_back(part * width);
    return dashes;
}

bool CoversAsCloud(const TLineRun& run, const QRect& area, double width) {
    const double pixels = static_cast<double>(area.width()) * area.height();
    return width <= TCloudStroker::kWidestPen && std::max(run.AlongX, run.AlongY) * width > pixels &&
           run.AlongX > kCloudRuns * area.width();
}

void DrawPolylines(const TCanvas& canvas, const TPolylines& lines, const QPen& pen) {
    if (canvas.IsRaster())
        DrawOnRaster(canvas, lines, pen);
    else
        DrawAsVectors(canvas, lines, pen);
}

} // namespace lumoplot
