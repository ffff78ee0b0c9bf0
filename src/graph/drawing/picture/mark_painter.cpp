#include "graph/drawing/picture/mark_painter.h"

#include "graph/drawing/lines/polylines.h"
#include "graph/drawing/picture/caption_placer.h"
#include "graph/model/appearance.h"
#include "graph/model/graph.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kMarkLineWidth = 1;
constexpr double kLeaderWidth = 0.5;
constexpr double kPointArm = 5;   // units from the middle of a point mark to its ends
constexpr double kCaptionGap = 3; // units between a mark and its caption
constexpr std::array kAwayFromLine = {0.0, 25.0, 50.0, 100.0}; // further ones, that a leader leads to

// A mark as it lies in the plot: its lines, and the places for its caption from the best on.
class TPlacedMark {
public:
    TPlacedMark(const TGraphLayout& layout, const TGraphMark& mark)
        : m_plot(layout.Plot()), m_mark(mark), m_xMap(layout.Axes().X.Map()),
          m_yMap(layout.Axes().YOf(mark.WhenDrawn == TMarkDrawing::XAndSecondY).Map()) {
        const QPointF at(m_xMap.Position(mark.X1), m_yMap.Position(mark.Y1));
        switch (mark.TypeOfMark) {
        case TMarkType::VerticalLine:
            if (m_xMap.Shows(mark.X1))
                Lines.push_back({QPointF(at.x(), m_plot.bottom()), QPointF(at.x(), m_plot.top())});
            break;
        case TMarkType::HorizontalLine:
            if (m_yMap.Shows(mark.Y1))
                Lines.push_back({QPointF(m_plot.left(), at.y()), QPointF(m_plot.right(), at.y())});
            break;
        case TMarkType::Point:
            if (m_xMap.Shows(mark.X1) && m_yMap.Shows(mark.Y1)) AddCross(at);
            break;
        case TMarkType::Line: AddLine(at, {m_xMap.Position(mark.X2), m_yMap.Position(mark.Y2)}); break;
        }
    }

    const TGraphMark& Mark() const { return m_mark; }
    /// Where a leader to a caption starts: the middle of a point, the nearest place of a line.
    QPointF StartOfLeader(const QRectF& caption) const {
        switch (m_mark.TypeOfMark) {
        case TMarkType::VerticalLine: return {Lines[0].x1(), caption.center().y()};
        case TMarkType::HorizontalLine: return {caption.center().x(), Lines[0].y1()};
        case TMarkType::Line: return NearestOnLine(caption.center());
        case TMarkType::Point: break;
        }
        return Middle();
    }

    /// Those beside the mark, then those all over the plot, the nearest first.
    std::vector<TCaptionPlace> PlacesFor(QSizeF size) const {
        std::vector<TCaptionPlace> places = PlacesBeside(size);
        const auto beside = static_cast<std::ptrdiff_t>(places.size());
        for (double y = m_plot.top(); y + size.height() < m_plot.bottom(); y += size.height())
            for (double x = m_plot.left(); x + size.width() < m_plot.right(); x += size.width() / 2)
                places.push_back({{x, y}, true});
        std::ranges::sort(places.begin() + beside, places.end(), {}, [&](const TCaptionPlace& place) {
            const QRectF box(place.Corner, size);
            return QLineF(StartOfLeader(box), box.center()).length();
        });
        return places;
    }

    std::vector<QLineF> Lines; ///< none where the mark does not show

private:
    std::vector<TCaptionPlace> PlacesBeside(QSizeF size) const {
        switch (m_mark.TypeOfMark) {
        case TMarkType::VerticalLine: return BesideVertical(size);
        case TMarkType::HorizontalLine: return BesideHorizontal(size);
        case TMarkType::Point: return AroundPoint(size);
        case TMarkType::Line: break;
        }
        return BesideLine(size);
    }

    QPointF Middle() const { return (Lines[0].p1() + Lines[0].p2()) / 2; }

    QPointF NearestOnLine(QPointF place) const {
        const QPointF along = Lines[0].p2() - Lines[0].p1();
        const double part =
            QPointF::dotProduct(place - Lines[0].p1(), along) / QPointF::dotProduct(along, along);
        return Lines[0].pointAt(std::clamp(part, 0.0, 1.0));
    }

    void AddCross(QPointF at) {
        Lines.push_back({at - QPointF(kPointArm, 0), at + QPointF(kPointArm, 0)});
        Lines.push_back({at - QPointF(0, kPointArm), at + QPointF(0, kPointArm)});
    }

    // The straight line on the screen through both points, from edge to edge.
    void AddLine(QPointF a, QPointF b) {
        const QPointF d = b - a;
        const double length = std::hypot(d.x(), d.y());
        if (!(length > 0) || !std::isfinite(length)) return;
        const double reach = (m_plot.width() + m_plot.height() + std::abs(a.x() - m_plot.center().x()) +
                              std::abs(a.y() - m_plot.center().y()));
        TPolylines line;
        line.Add(a - d * (reach / length));
        line.Add(a + d * (reach / length));
        line.End();
        const TPolylines visible = Clipped(std::move(line), m_plot);
        if (visible.Count() > 0) Lines.push_back({visible.Line(0).front(), visible.Line(0).back()});
    }

    std::vector<TCaptionPlace> BesideVertical(QSizeF size) const {
        std::vector<TCaptionPlace> places;
        const double x = Lines[0].x1();
        for (const double away : kAwayFromLine)
            for (double y = m_plot.top() + kCaptionGap; y + size.height() < m_plot.bottom();
                 y += size.height())
                for (const double left : {x + kCaptionGap + away, x - kCaptionGap - away - size.width()})
                    if (left + size.width() < m_plot.right() && left > m_plot.left())
                        places.push_back({{left, y}, away > 0});
        if (places.empty()) places.push_back({{x + kCaptionGap, m_plot.top() + kCaptionGap}});
        return places;
    }

    std::vector<TCaptionPlace> BesideHorizontal(QSizeF size) const {
        std::vector<TCaptionPlace> places;
        const double y = Lines[0].y1();
        for (const double away : kAwayFromLine)
            for (double x = m_plot.right() - size.width(); x > m_plot.left(); x -= size.width() / 2)
                for (const double top : {y - kCaptionGap - away - size.height(), y + kCaptionGap + away})
                    if (top > m_plot.top() && top + size.height() < m_plot.bottom())
                        places.push_back({{x, top}, away > 0});
        if (places.empty())
            places.push_back({{m_plot.right() - size.width(), y - kCaptionGap - size.height()}});
        return places;
    }

    // On both sides of places along the line, from its middle on.
    std::vector<TCaptionPlace> BesideLine(QSizeF size) const {
        std::vector<TCaptionPlace> places;
        const bool falls = (Lines[0].dx() > 0) == (Lines[0].dy() > 0);
        const double above = -kCaptionGap - size.height();
        const double before = -kCaptionGap - size.width();
        for (const double part : {0.5, 0.6, 0.4, 0.7, 0.3, 0.8, 0.2, 0.9, 0.1}) {
            const QPointF at = Lines[0].pointAt(part);
            places.push_back({at + QPointF(falls ? kCaptionGap : before, above)});
            places.push_back({at + QPointF(falls ? before : kCaptionGap, kCaptionGap)});
        }
        return places;
    }

    // Beside the point, else further and further away from it.
    std::vector<TCaptionPlace> AroundPoint(QSizeF size) const {
        std::vector<TCaptionPlace> places;
        const double above = -kCaptionGap - size.height();
        const double before = -kCaptionGap - size.width();
        for (const QPointF by : {QPointF(kCaptionGap, above), QPointF(kCaptionGap, kCaptionGap),
                                 QPointF(before, above), QPointF(before, kCaptionGap)})
            places.push_back({Middle() + by});
        for (const double away : {1.5, 2.5, 4.0, 6.0})
            for (const QPointF way : {QPointF(1, -1), QPointF(-1, -1), QPointF(0, -1), QPointF(1, 1),
                                      QPointF(-1, 1), QPointF(1, 0), QPointF(-1, 0), QPointF(0, 1)}) {
                const double distance = away * size.height();
                const QPointF side(way.x() * size.width() / 2, way.y() * size.height() / 2);
                const QPointF centre = Middle() + way * distance + side;
                const QPointF corner = centre - QPointF(size.width(), size.height()) / 2;
                if (m_plot.contains(QRectF(corner, size))) places.push_back({corner, true});
            }
        return places;
    }

    QRectF m_plot;
    const TGraphMark& m_mark;
    const TScaleMap& m_xMap;
    const TScaleMap& m_yMap;
};

std::vector<TPlacedMark> MarksThatShow(const TxyGraph& graph, const TGraphLayout& layout) {
    std::vector<TPlacedMark> marks;
    if (!graph.Appearance()->ShowMarks()) return marks;
    for (const auto& [id, mark] : graph.Marks().Marks()) {
        if (mark.WhenDrawn == TMarkDrawing::None) continue;
        TPlacedMark placed(layout, mark);
        if (!placed.Lines.empty()) marks.push_back(std::move(placed));
    }
    return marks;
}

TTextStyle CaptionStyle(const TxyGraph& graph, const TGraphMark& mark) {
    TFontSpec font = graph.Appearance()->LabelFont();
    font.Color = mark.Color;
    return TTextStyle(font);
}

void DrawLeader(const TCanvas& canvas, const QLineF& leader, TColor color) {
    canvas.Painter().setPen(QPen(ToQColor(color), std::max(kLeaderWidth, 1 / canvas.PixelsPerUnit())));
    canvas.Painter().drawLine(leader);
}

} // namespace

void DrawMarks(const TCanvas& canvas, const TxyGraph& graph, const TGraphLayout& layout) {
    for (const TPlacedMark& mark : MarksThatShow(graph, layout)) {
        const QPen pen = canvas.Pen(mark.Mark().Color, TPenStyle::Solid, kMarkLineWidth);
        for (const QLineF& line : mark.Lines) {
            if (line.dx() == 0 || line.dy() == 0) {
                canvas.DrawStraight(line.p1(), line.p2(), pen);
                continue;
            }
            canvas.Painter().setPen(pen);
            canvas.Painter().drawLine(line);
        }
    }
}

void DrawCaptions(const TCanvas& canvas, const TxyGraph& graph, const TGraphLayout& layout,
                  const std::vector<QRectF>& taken) {
    const std::vector<TPlacedMark> marks = MarksThatShow(graph, layout);
    if (marks.empty()) return;
    const TCrowd crowd(graph, layout);
    TCaptionPlacer placer(crowd, layout.Plot(), taken);
    for (const TPlacedMark& mark : marks)
        for (const QLineF& line : mark.Lines) placer.AddLine(line);
    std::vector<const TPlacedMark*> named;
    std::vector<TCaption> captions;
    for (const TPlacedMark& mark : marks) {
        if (mark.Mark().Caption.empty()) continue;
        const QString text = QString::fromStdString(mark.Mark().Caption);
        const TTextStyle style = CaptionStyle(graph, mark.Mark());
        const QSizeF size(style.Width(text), style.Height(text));
        named.push_back(&mark);
        captions.push_back(
            {size, mark.PlacesFor(size), [&mark](const QRectF& box) { return mark.StartOfLeader(box); }});
    }
    const std::vector<TPlacedCaption> placed = placer.Place(captions);
    for (std::size_t i = 0; i < placed.size(); ++i)
        if (placed[i].Leader) DrawLeader(canvas, *placed[i].Leader, named[i]->Mark().Color);
    for (std::size_t i = 0; i < placed.size(); ++i) {
        const TTextStyle style = CaptionStyle(graph, named[i]->Mark());
        DrawBehindText(canvas, placed[i].Box, graph.Appearance()->BackgroundColor());
        style.Draw(canvas, placed[i].Box.topLeft() + QPointF(0, style.Ascent()),
                   QString::fromStdString(named[i]->Mark().Caption));
    }
}

void DrawCrossAtZero(const TCanvas& canvas, const TxyGraph& graph, const TGraphLayout& layout) {
    const TAppearance& appearance = *graph.Appearance();
    const TScaleMap& xMap = layout.Axes().X.Map();
    const TScaleMap& yMap = layout.Axes().Y.Map();
    const bool hasZero = !xMap.IsLog() && !yMap.IsLog() && xMap.Shows(0) && yMap.Shows(0);
    if (!appearance.CrossAtZero() || !hasZero) return;
    const QPointF zero(xMap.Position(0), yMap.Position(0));
    const double arm = appearance.Crosslength();
    const QPen pen = canvas.Pen(appearance.CrossColor(), TPenStyle::Solid, kMarkLineWidth);
    canvas.DrawStraight(zero - QPointF(arm, 0), zero + QPointF(arm, 0), pen);
    canvas.DrawStraight(zero - QPointF(0, arm), zero + QPointF(0, arm), pen);
}

} // namespace lumoplot
