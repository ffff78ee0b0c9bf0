#include "graph/drawing/picture/mark_painter.h"

#include "graph/drawing/lines/polylines.h"
#include "graph/model/appearance.h"
#include "graph/model/graph.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kMarkLineWidth = 1;
constexpr double kPointArm = 5;   // units from the middle of a point mark to its ends
constexpr double kCaptionGap = 3; // units between a mark and its caption

class TMarkPainter {
public:
    TMarkPainter(const TCanvas& canvas, const TxyGraph& graph, const TGraphLayout& layout,
                 const TGraphMark& mark)
        : m_canvas(canvas), m_plot(layout.Plot()), m_xMap(layout.Axes().X.Map()),
          m_yMap(layout.Axes().YOf(mark.WhenDrawn == TMarkDrawing::XAndSecondY).Map()), m_mark(mark),
          m_pen(canvas.Pen(mark.Color, TPenStyle::Solid, kMarkLineWidth)),
          m_caption(CaptionFont(graph, mark)), m_background(graph.Appearance()->BackgroundColor()) {}

    void Draw() const {
        const double x = m_xMap.Position(m_mark.X1);
        const double y = m_yMap.Position(m_mark.Y1);
        switch (m_mark.TypeOfMark) {
        case TMarkType::VerticalLine:
            if (m_xMap.Shows(m_mark.X1)) DrawVertical(x);
            break;
        case TMarkType::HorizontalLine:
            if (m_yMap.Shows(m_mark.Y1)) DrawHorizontal(y);
            break;
        case TMarkType::Point:
            if (m_xMap.Shows(m_mark.X1) && m_yMap.Shows(m_mark.Y1)) DrawPoint({x, y});
            break;
        case TMarkType::Line:
            DrawLine({x, y}, {m_xMap.Position(m_mark.X2), m_yMap.Position(m_mark.Y2)});
            break;
        }
    }

private:
    static TFontSpec CaptionFont(const TxyGraph& graph, const TGraphMark& mark) {
        TFontSpec font = graph.Appearance()->LabelFont();
        font.Color = mark.Color;
        return font;
    }

    void DrawVertical(double x) const {
        m_canvas.DrawStraight({x, m_plot.bottom()}, {x, m_plot.top()}, m_pen);
        DrawCaption({x + kCaptionGap, m_plot.top() + kCaptionGap + m_caption.Ascent()});
    }

    void DrawHorizontal(double y) const {
        m_canvas.DrawStraight({m_plot.left(), y}, {m_plot.right(), y}, m_pen);
        DrawCaption({m_plot.right(), y - kCaptionGap});
    }

    void DrawPoint(QPointF at) const {
        m_canvas.DrawStraight(at - QPointF(kPointArm, 0), at + QPointF(kPointArm, 0), m_pen);
        m_canvas.DrawStraight(at - QPointF(0, kPointArm), at + QPointF(0, kPointArm), m_pen);
        DrawCaption(at + QPointF(kCaptionGap, -kCaptionGap));
    }

    // The straight line on the screen through both points, from edge to edge.
    void DrawLine(QPointF a, QPointF b) const {
        const QPointF d = b - a;
        const double length = std::hypot(d.x(), d.y());
        if (!(length > 0) || !std::isfinite(length)) return;
        const double reach = (m_plot.width() + m_plot.height() + std::abs(a.x() - m_plot.center().x()) +
                              std::abs(a.y() - m_plot.center().y()));
        TPolylines line;
        line.Add(a - d * (reach / length));
        line.Add(a + d * (reach / length));
        line.End();
        const TPolylines visible = Clipped(line, m_plot);
        if (visible.Count() == 0) return;
        m_canvas.Painter().setPen(m_pen);
        m_canvas.Painter().drawLine(visible.Line(0).front(), visible.Line(0).back());
        const QPointF middle = (visible.Line(0).front() + visible.Line(0).back()) / 2;
        DrawCaption(middle + QPointF(kCaptionGap, -kCaptionGap));
    }

    // Keeps the caption inside the plot where it is small enough.
    void DrawCaption(QPointF baseline) const {
        const QString text = QString::fromStdString(m_mark.Caption);
        const double right = m_plot.right() - kCaptionGap - m_caption.Width(text);
        const double top = m_plot.top() + kCaptionGap + m_caption.Ascent();
        baseline.setX(std::max(m_plot.left() + kCaptionGap, std::min(baseline.x(), right)));
        baseline.setY(std::max(baseline.y(), top));
        if (text.isEmpty()) return;
        const QRectF place(baseline - QPointF(0, m_caption.Ascent()),
                           QSizeF(m_caption.Width(text), m_caption.Height(text)));
        DrawBehindText(m_canvas, place, m_background);
        m_caption.Draw(m_canvas, baseline, text);
    }

    const TCanvas& m_canvas;
    QRectF m_plot;
    const TScaleMap& m_xMap;
    const TScaleMap& m_yMap;
    const TGraphMark& m_mark;
    QPen m_pen;
    TTextStyle m_caption;
    TColor m_background;
};

} // namespace

void DrawMarks(const TCanvas& canvas, const TxyGraph& graph, const TGraphLayout& layout) {
    if (!graph.Appearance()->ShowMarks()) return;
    for (const auto& [id, mark] : graph.Marks().Marks())
        if (mark.WhenDrawn != TMarkDrawing::None) TMarkPainter(canvas, graph, layout, mark).Draw();
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
