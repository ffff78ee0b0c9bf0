#include "graph/drawing/picture/axis_painter.h"

#include "graph/model/appearance.h"
#include "graph/model/graph.h"

#include <array>

namespace lumoplot {
namespace {

constexpr double kLineWidth = 1;
constexpr double kMinorPart = 0.5; // of the tick length

bool LinesPrintedPlain(const TCanvas& canvas, const TAppearance& appearance) {
    return canvas.IsPrinting() && !appearance.PrintLineStyle();
}

void DrawGridOf(const TCanvas& canvas, const TAxisLayout& axis, const QRectF& plot, const QPen& pen) {
    for (const TTick& tick : axis.Ticks()) {
        if (tick.Kind == TTickKind::Minor) continue;
        const double place = axis.Map().Position(tick.Value);
        if (axis.IsHorizontal())
            canvas.DrawStraight({place, plot.bottom()}, {place, plot.top()}, pen);
        else
            canvas.DrawStraight({plot.left(), place}, {plot.right(), place}, pen);
    }
}

void DrawFrame(const TCanvas& canvas, const QRectF& plot, const QPen& pen) {
    const QPointF half(pen.widthF() / 2, 0);
    canvas.DrawStraight(plot.topLeft() - half, plot.topRight() + half, pen);
    canvas.DrawStraight(plot.bottomLeft() - half, plot.bottomRight() + half, pen);
    canvas.DrawStraight(plot.topLeft(), plot.bottomLeft(), pen);
    canvas.DrawStraight(plot.topRight(), plot.bottomRight(), pen);
}

QPointF OutwardsOf(TAxisSide side) {
    switch (side) {
    case TAxisSide::Below: return {0, 1};
    case TAxisSide::Above: return {0, -1};
    case TAxisSide::Left: return {-1, 0};
    case TAxisSide::Right: break;
    }
    return {1, 0};
}

void DrawTicks(const TCanvas& canvas, const TAxisLayout& axis, double line, QPointF direction,
               const QPen& pen) {
    for (const TTick& tick : axis.Ticks()) {
        const double place = axis.Map().Position(tick.Value);
        const QPointF foot = axis.IsHorizontal() ? QPointF(place, line) : QPointF(line, place);
        const double length = axis.TickLength() * (tick.Kind == TTickKind::Major ? 1 : kMinorPart);
        canvas.DrawStraight(foot, foot + direction * (length + pen.widthF() / 2), pen);
    }
}

/// The ticks of the axis on the other side of the frame, where no axis stands.
void DrawFarTicks(const TCanvas& canvas, const TAxisLayout& axis, const TAxisLayouts& all, const QRectF& plot,
                  const QPen& pen) {
    if (axis.IsInside(plot) || axis.TickLength() <= 0) return;
    const auto isTakenBy = [&](const TAxisLayout& other) {
        return &other != &axis && other.Axis().ShowAxis() && !other.IsInside(plot) &&
               other.IsHorizontal() == axis.IsHorizontal() && other.Side() != axis.Side();
    };
    if (isTakenBy(all.Y) || isTakenBy(all.SecondY)) return;
    const QPointF direction = OutwardsOf(axis.Side());
    const bool isAtStart = direction.x() + direction.y() < 0;
    const double far = axis.IsHorizontal() ? (isAtStart ? plot.bottom() : plot.top())
                                           : (isAtStart ? plot.right() : plot.left());
    DrawTicks(canvas, axis, far, direction, pen);
}

void DrawLineAndTicks(const TCanvas& canvas, const TAxisLayout& axis, const QRectF& plot, const QPen& pen) {
    const double half = pen.widthF() / 2;
    if (axis.IsHorizontal())
        canvas.DrawStraight({plot.left() - half, axis.Line()}, {plot.right() + half, axis.Line()}, pen);
    else
        canvas.DrawStraight({axis.Line(), plot.bottom() + half}, {axis.Line(), plot.top() - half}, pen);
    if (axis.TickLength() <= 0) return;
    DrawTicks(canvas, axis, axis.Line(), OutwardsOf(axis.Side()) * (axis.TicksInside() ? -1 : 1), pen);
}

void DrawLabels(const TCanvas& canvas, const TAxisLayout& axis, const TAxisFonts& fonts, const QRectF& plot) {
    const TTextStyle& style = fonts.Labels;
    const TColor background = axis.Axis().Graph().Appearance()->BackgroundColor();
    for (const TTick& tick : axis.Ticks()) {
        if (tick.Label.IsEmpty()) continue;
        const QRectF place = axis.LabelPlace(tick, fonts);
        // Lines run through the plot, not through the labels in it.
        const double high = style.Height() - style.CapHeight();
        if (const QRectF inPlot = place & plot.adjusted(-1, -1, 1, 1); plot.intersects(place))
            DrawBehindText(canvas, inPlot.adjusted(-1, high / 4, 1, -high / 4), background);
        // Beside a vertical axis the digits, not the whole line of text, are centred on the tick.
        const double baseline =
            axis.IsHorizontal() ? place.top() + style.Ascent() : place.center().y() + style.CapHeight() / 2;
        style.Draw(canvas, {place.left(), baseline}, tick.Label);
    }
    const QRectF common = axis.CommonPlace();
    if (!axis.Common().isEmpty())
        style.Draw(canvas, {common.left(), common.top() + style.Ascent()}, axis.Common());
    const auto orientation = axis.IsHorizontal() ? Qt::Horizontal : Qt::Vertical;
    fonts.Titles.DrawCentred(canvas, axis.TitlePlace(), axis.Title(), orientation);
}

} // namespace

void DrawGrid(const TCanvas& canvas, const TxyGraph& graph, const TGraphLayout& layout) {
    const TAppearance& appearance = *graph.Appearance();
    const TPenStyle style = LinesPrintedPlain(canvas, appearance) ? TPenStyle::Solid : appearance.GridStyle();
    const QPen pen = canvas.Pen(appearance.GridColor(), style, kLineWidth);
    const TCanvas::TCrispEdges crisp(canvas);
    for (const TAxisLayout* axis : {&layout.Axes().X, &layout.Axes().Y, &layout.Axes().SecondY})
        if (axis->Axis().Gridlines()) DrawGridOf(canvas, *axis, layout.Plot(), pen);
}

void DrawAxes(const TCanvas& canvas, const TxyGraph& graph, const TGraphLayout& layout) {
    const TAppearance& appearance = *graph.Appearance();
    const QPen pen = canvas.Pen(appearance.AxesColor(), TPenStyle::Solid, kLineWidth);
    const std::array all = {&layout.Axes().X, &layout.Axes().Y, &layout.Axes().SecondY};
    if (appearance.ShowFrame()) DrawFrame(canvas, layout.Plot(), pen);
    for (const TAxisLayout* axis : all) {
        if (!axis->Axis().ShowAxis()) continue;
        const TCanvas::TCrispEdges crisp(canvas);
        DrawLineAndTicks(canvas, *axis, layout.Plot(), pen);
        if (appearance.ShowFrame() && axis->TicksInside())
            DrawFarTicks(canvas, *axis, layout.Axes(), layout.Plot(), pen);
    }
    // Above the lines of all axes: they are faint behind labels.
    for (const TAxisLayout* axis : all)
        if (axis->Axis().ShowAxis() && appearance.ShowGraphLabels())
            DrawLabels(canvas, *axis, layout.Fonts(), layout.Plot());
}

} // namespace lumoplot
