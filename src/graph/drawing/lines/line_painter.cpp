#include "graph/drawing/lines/line_painter.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

// A piece of a line is steep when it has so much length for each pixel column. With so many corners a column
// it fills the columns; with fewer it is drawn segment by segment, since a stroke through them would cross
// itself all the time; with still fewer it is an ordinary stroke.
constexpr double kSteepLength = 6;
constexpr double kFillingCorners = 2.5;
constexpr double kCrowdedCorners = 0.7;
constexpr double kFewCorners = 8;
constexpr double kPieceWidth = 32; // columns that are judged together
constexpr std::size_t kLongestStroke =
    400;                        // corners stroked at once; a stroke's cost grows faster than its length
constexpr double kClose = 0.35; // pixels; corners nearer to each other than this are one to a wide pen

double LengthOf(QPointF a, QPointF b) {
    const QPointF d = b - a;
    return std::sqrt(QPointF::dotProduct(d, d));
}

enum class TPieceKind { Stroke, Segments, Area };

struct TPiece {
    std::size_t First; ///< corner; a piece starts with the last corner of the piece before
    std::size_t Last;
    TPieceKind Kind;
    double Length;
};

TPieceKind KindOf(double corners, double length, double columns) {
    if (corners <= kFewCorners || length <= kSteepLength * columns) return TPieceKind::Stroke;
    if (corners > kFillingCorners * columns) return TPieceKind::Area;
    return corners > kCrowdedCorners * columns ? TPieceKind::Segments : TPieceKind::Stroke;
}

TPiece NextPiece(std::span<const QPointF> line, std::size_t first) {
    std::size_t last = first;
    double left = line[first].x();
    double right = left;
    double length = 0;
    while (last + 1 < line.size() && right - left < kPieceWidth && last - first < kLongestStroke) {
        ++last;
        length += LengthOf(line[last - 1], line[last]);
        left = std::min(left, line[last].x());
        right = std::max(right, line[last].x());
    }
    return {first, last, KindOf(static_cast<double>(last - first), length, right - left + 1), length};
}

// Neighbouring strokes become one, up to the longest; areas stay apart, since filling one costs the square of
// its columns.
std::vector<TPiece> PiecesOf(std::span<const QPointF> line) {
    std::vector<TPiece> pieces;
    for (std::size_t first = 0; first + 1 < line.size(); first = pieces.back().Last) {
        const TPiece piece = NextPiece(line, first);
        const bool joins = !pieces.empty() && pieces.back().Kind == TPieceKind::Stroke &&
                           piece.Kind == TPieceKind::Stroke &&
                           piece.Last - pieces.back().First <= kLongestStroke;
        if (!joins) {
            pieces.push_back(piece);
            continue;
        }
        pieces.back().Last = piece.Last;
        pieces.back().Length += piece.Length;
    }
    return pieces;
}

std::vector<QPointF> WithoutCloseCorners(std::span<const QPointF> line) {
    std::vector<QPointF> kept{line.front()};
    for (std::size_t i = 1; i + 1 < line.size(); ++i)
        if (LengthOf(kept.back(), line[i]) >= kClose) kept.push_back(line[i]);
    kept.push_back(line.back());
    return kept;
}

// Draws the lines of one device in its pixels.
class TPixelStroker {
public:
    TPixelStroker(QPainter& painter, const QPen& pen, double width)
        : m_painter(painter), m_pen(pen), m_width(width) {
        m_pen.setWidthF(width);
        m_isDashed = pen.style() != Qt::SolidLine;
        // A dense piece behind a stroke would show its flat ends.
        if (!m_isDashed && m_width > 1) m_pen.setCapStyle(Qt::RoundCap);
        m_painter.setBrush(Qt::NoBrush);
        m_clip = m_painter.clipBoundingRect().toAlignedRect();
        if (!m_painter.hasClipping())
            m_clip = QRect(0, 0, painter.device()->width(), painter.device()->height());
    }

    void Draw(std::span<const QPointF> line) {
        if (line.size() == 1) return DrawDot(line[0]);
        double drawn = 0;
        for (const TPiece& piece : PiecesOf(line)) {
            const auto corners = line.subspan(piece.First, piece.Last - piece.First + 1);
            switch (piece.Kind) {
            case TPieceKind::Area: FillArea(corners); break;
            case TPieceKind::Segments: DrawSegments(corners); break;
            case TPieceKind::Stroke: Stroke(corners, drawn); break;
            }
            drawn += piece.Length;
        }
    }

private:
    void DrawDot(QPointF place) {
        const double radius = m_width / 2;
        m_painter.setPen(Qt::NoPen);
        m_painter.setBrush(m_pen.color());
        m_painter.drawEllipse(place, radius, radius);
        m_painter.setBrush(Qt::NoBrush);
    }

    void FillArea(std::span<const QPointF> corners) {
        const TColumnArea area = AreaOfDenseLine(corners, m_width);
        FillColumns(m_painter, area.First, area.Spans, m_pen.color(), m_clip);
    }

    // Square ends close the gaps that flat ones would leave at the corners; the toolkit draws them fast.
    void DrawSegments(std::span<const QPointF> corners) {
        QPen pen = m_pen;
        pen.setStyle(Qt::SolidLine);
        pen.setCapStyle(Qt::SquareCap);
        m_painter.setPen(pen);
        std::vector<QLineF> segments;
        for (std::size_t i = 1; i < corners.size(); ++i) segments.emplace_back(corners[i - 1], corners[i]);
        m_painter.drawLines(segments.data(), static_cast<int>(segments.size()));
    }

    void Stroke(std::span<const QPointF> corners, double drawn) {
        QPen pen = m_pen;
        if (m_isDashed) pen.setDashOffset(drawn / m_width);
        m_painter.setPen(pen);
        const std::vector<QPointF> kept = WithoutCloseCorners(corners);
        m_painter.drawPolyline(kept.data(), static_cast<int>(kept.size()));
    }

    QPainter& m_painter;
    QPen m_pen;
    double m_width;
    QRect m_clip;
    bool m_isDashed;
};

void DrawOnRaster(const TCanvas& canvas, const TPolylines& lines, const QPen& pen) {
    const TCanvas::TDeviceUnits deviceUnits(canvas);
    TPixelStroker stroker(canvas.Painter(), pen, std::round(pen.widthF() * canvas.PixelsPerUnit()));
    for (std::size_t i = 0; i < lines.Count(); ++i) stroker.Draw(lines.Line(i));
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

void DrawPolylines(const TCanvas& canvas, const TPolylines& lines, const QPen& pen) {
    if (canvas.IsRaster())
        DrawOnRaster(canvas, lines, pen);
    else
        DrawAsVectors(canvas, lines, pen);
}

} // namespace lumoplot
