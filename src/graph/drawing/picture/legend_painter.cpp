#include "graph/drawing/picture/legend_painter.h"

#include "graph/drawing/lines/symbol.h"
#include "graph/drawing/picture/crowd.h"
#include "graph/model/appearance.h"
#include "graph/model/graph.h"
#include "graph/model/settings.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace lumoplot {
namespace {

constexpr double kSymbolGap = 5; // units between symbol and text
constexpr double kEntryGap = 14; // units between entries of a row
constexpr double kRowGap = 3;
constexpr double kEdgeGap = 3;        // units between the box and the edge of the graph
constexpr double kFewLetters = 4;     // ems of a name that say something
constexpr double kCornerGap = 8;      // units between the box and the sides of the plot
constexpr double kOnText = 1e6;       // of points, that a box on a label or on an axis counts for
constexpr double kLargestSymbol = 16; // units; larger points are drawn so large

// Arranges the entries from (0, 0) on in the room inside the box.
class TLegendFlow {
public:
    TLegendFlow(const TLegend& legend, const TTextStyle& style, QSizeF room)
        : m_legend(legend), m_style(style), m_room(room), m_rowHeight(style.Height()) {}

    void Add(const TSeries& series) {
        const QString label = m_style.Fitted(QString::fromStdString(series.LegendText()),
                                             std::max(0.0, m_room.width() - TextLeft()));
        Layout.Entries.push_back({&series, {}, {}, label});
        m_rowHeight = std::max(m_rowHeight, m_style.Height(label));
    }

    void Arrange() {
        const double rows = (m_room.height() + kRowGap) / (m_rowHeight + kRowGap);
        const auto most = static_cast<std::size_t>(std::clamp(rows, 1.0, 1e6));
        if (m_legend.Layout() == TLegend::lsDown)
            ArrangeDown(most);
        else
            ArrangeAcross(most);
    }

    TLegendLayout Layout;
    QSizeF Used;

private:
    double TextLeft() const { return m_legend.SymbolSpace() + kSymbolGap; }
    double WidthOf(const TLegendEntry& entry) const { return TextLeft() + m_style.Width(entry.Label); }

    void Place(TLegendEntry& entry, QPointF at) {
        entry.Symbol = QRectF(at.x(), at.y(), m_legend.SymbolSpace(), m_rowHeight);
        entry.Text = QRectF(at.x() + TextLeft(), at.y(), WidthOf(entry) - TextLeft(), m_rowHeight);
        Used = Used.expandedTo({at.x() + WidthOf(entry), at.y() + m_rowHeight});
    }

    // From entry `first` on there is no room, nor for the one before it, where it is said how many are
    // missing.
    void LeaveOut(std::size_t first) {
        auto& entries = Layout.Entries;
        const std::size_t last = std::max<std::size_t>(first, 1) - 1;
        Layout.More = QStringLiteral("… and %1 more").arg(entries.size() - last);
        Layout.MorePlace = entries[last].Text;
        Layout.MorePlace.setLeft(entries[last].Symbol.left());
        Layout.MorePlace.setWidth(m_style.Width(Layout.More));
        Used = Used.expandedTo({Layout.MorePlace.right(), 0});
        entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(last), entries.end());
    }

    void ArrangeDown(std::size_t rows) {
        auto& entries = Layout.Entries;
        double x = 0;
        for (std::size_t first = 0; first < entries.size(); first += rows) {
            const auto column = std::span(entries).subspan(first, std::min(rows, entries.size() - first));
            double width = 0;
            for (const TLegendEntry& entry : column) width = std::max(width, WidthOf(entry));
            if (first > 0 && x + width > m_room.width() + 0.01) return LeaveOut(first);
            double y = 0;
            for (TLegendEntry& entry : column) {
                Place(entry, {x, y});
                y += m_rowHeight + kRowGap;
            }
            x += width + kEntryGap;
        }
    }

    void ArrangeAcross(std::size_t rows) {
        auto& entries = Layout.Entries;
        QPointF at;
        std::size_t row = 0;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const double width = WidthOf(entries[i]);
            if (i > 0 && at.x() + width > m_room.width() + 0.01) {
                at = {0, at.y() + m_rowHeight + kRowGap};
                if (++row == rows) return LeaveOut(i);
            }
            Place(entries[i], at);
            at.rx() += width + kEntryGap;
        }
    }

    const TLegend& m_legend;
    const TTextStyle& m_style;
    QSizeF m_room;
    double m_rowHeight;
};

bool IsInLegend(const TSeries& series) {
    return series.Active() && series.ShowInLegend();
}

void DrawEntrySymbol(const TCanvas& canvas, const TSeries& series, const QRectF& place) {
    QPainter& painter = canvas.Painter();
    const double y = place.center().y();
    if (series.LinesShown()) {
        const QPen pen = canvas.Pen(series.LineColor(), series.LineStyle(),
                                    std::min<double>(series.LineWidth(), place.height()));
        canvas.DrawStraight({place.left(), y}, {place.right(), y}, pen);
    }
    if (!series.PointsShown()) return;
    TSymbol symbol = SymbolOf(series);
    symbol.Size = std::min({symbol.Size, kLargestSymbol, std::max(place.height(), 1.0)});
    const double pixel = 1 / canvas.PixelsPerUnit();
    if (canvas.IsRaster()) {
        symbol = InPixels(symbol, canvas.PixelsPerUnit());
        symbol.Size *= pixel;
        symbol.BorderWidth *= pixel;
    }
    DrawSymbol(painter, symbol,
               {canvas.AlignX(place.center().x(), symbol.Size), canvas.AlignY(y, symbol.Size)});
}

void DrawBorder(const TCanvas& canvas, const TLegend& legend, const QRectF& box, TColor border) {
    if (legend.borderStyle() == TLegend::bsNone) return;
    const QPen pen = canvas.Pen(border, TPenStyle::Solid, 1);
    const double half = pen.widthF() / 2;
    canvas.DrawStraight(box.topLeft() - QPointF(half, 0), box.topRight() + QPointF(half, 0), pen);
    canvas.DrawStraight(box.bottomLeft() - QPointF(half, 0), box.bottomRight() + QPointF(half, 0), pen);
    canvas.DrawStraight(box.topLeft(), box.bottomLeft(), pen);
    canvas.DrawStraight(box.topRight(), box.bottomRight(), pen);
}

// Moves what was laid out from (0, 0) on into a box, in the middle of the height that it has to spare.
TLegendLayout InBox(TLegendLayout layout, const TLegend& legend, const QRectF& box, QSizeF used) {
    const double spare = box.height() - 2 * legend.YMargin() - used.height();
    const QPointF origin =
        box.topLeft() + QPointF(legend.XMargin(), legend.YMargin() + std::max(spare, 0.0) / 2);
    layout.Move(origin);
    layout.Box = box;
    return layout;
}

void AddEntries(TLegendFlow& flow, const TxyGraph& graph) {
    for (const auto& series : graph.Series())
        if (IsInLegend(*series)) flow.Add(*series);
}

double CostOf(const QRectF& box, const TGraphLayout& layout, const TCrowd& crowd, const QRectF& taken) {
    double cost = crowd.In(box) + (box.intersects(taken) ? kOnText : 0);
    for (const QRectF& place : layout.AxisPlacesInPlot())
        if (box.intersects(place)) cost += kOnText;
    return cost;
}

// The corner of the room that costs least; where each of them covers a text, any place.
template <class TCost>
QRectF BestPlace(const QRectF& room, QSizeF size, TCost costOf) {
    const double right = room.right() - size.width();
    const double bottom = room.bottom() - size.height();
    QRectF best;
    double least = HUGE_VAL;
    const auto look = [&](double x, double y) {
        const QRectF box(QPointF(x, y), size);
        const double cost = costOf(box);
        if (cost >= least) return;
        least = cost;
        best = box;
    };
    for (const double y : {room.top(), bottom})
        for (const double x : {right, room.left()}) look(x, y);
    if (least < kOnText) return best;
    for (double y = room.top(); y < bottom; y += kCornerGap)
        for (double x = room.left(); x < right; x += kCornerGap) look(x, y);
    return best;
}

} // namespace

void TLegendLayout::Move(QPointF by) {
    Box.translate(by);
    MorePlace.translate(by);
    for (TLegendEntry& entry : Entries) {
        entry.Symbol.translate(by);
        entry.Text.translate(by);
    }
}

TLegendLayout LayOutLegendInCorner(const TxyGraph& graph, const TGraphLayout& layout, const TCrowd& crowd,
                                   const QRectF& taken) {
    const TLegend& legend = *graph.Legend();
    const TTextStyle style(legend.font());
    const QSizeF margins(2 * legend.XMargin(), 2 * legend.YMargin());
    const QRectF room = layout.Plot().adjusted(kCornerGap, kCornerGap, -kCornerGap, -kCornerGap);
    // Where labels in the plot leave no place for half of its width, names are cut shorter.
    TLegendLayout best;
    double least = HUGE_VAL;
    for (const double share : {0.5, 0.35, 0.25}) {
        TLegendFlow flow(
            legend, style,
            {std::max(room.width() * share - margins.width(), 0.0), room.height() - margins.height()});
        AddEntries(flow, graph);
        flow.Arrange();
        const auto costOf = [&](const QRectF& box) { return CostOf(box, layout, crowd, taken); };
        const QRectF box = BestPlace(room, flow.Used + margins, costOf);
        const double cost = costOf(box);
        if (cost >= least) continue;
        least = cost;
        best = InBox(std::move(flow.Layout), legend, box, flow.Used);
        if (cost < kOnText) break;
    }
    return best;
}

bool HasRoomForLegend(const TxyGraph& graph, QSizeF size) {
    const TLegend& legend = *graph.Legend();
    const TTextStyle style(legend.font());
    const double useful = legend.SymbolSpace() + kSymbolGap + kFewLetters * style.Em();
    return legend.left() + useful + 2 * legend.XMargin() <= size.width() &&
           legend.top() + style.Height() + 2 * legend.YMargin() <= size.height();
}

TLegendLayout LayOutLegend(const TxyGraph& graph, const QRectF& rectangle) {
    const TLegend& legend = *graph.Legend();
    const TTextStyle style(legend.font());
    const double xMargin = legend.XMargin();
    const double yMargin = legend.YMargin();
    const double left = rectangle.left() + legend.left();
    const double room = std::max(rectangle.right() - left, 0.0);
    const double width = legend.width() > 0 ? std::min<double>(legend.width(), room) : room;
    const double innerHeight = rectangle.height() - legend.top() - 2 * yMargin - kEdgeGap;
    TLegendFlow flow(legend, style,
                     {std::max(width - 2 * xMargin, 0.0), std::max<double>(innerHeight, legend.height())});
    AddEntries(flow, graph);
    flow.Arrange();
    const double boxWidth = legend.width() > 0 ? width : std::min(flow.Used.width() + 2 * xMargin, room);
    const double boxHeight = std::max<double>(legend.height(), flow.Used.height() + 2 * yMargin);
    const QRectF box(left, rectangle.top() + legend.top(), boxWidth, boxHeight);
    return InBox(std::move(flow.Layout), legend, box, flow.Used);
}

void DrawLegend(const TCanvas& canvas, const TxyGraph& graph, const TLegendLayout& layout,
                const QRectF& plot) {
    const TLegend& legend = *graph.Legend();
    if (layout.IsEmpty()) return;
    if (layout.Box.intersects(plot))
        DrawBehindText(canvas, layout.Box, legend.color());
    else
        canvas.FillRect(layout.Box, legend.color());
    DrawBorder(canvas, legend, layout.Box, graph.Appearance()->AxesColor());
    const TTextStyle style(legend.font());
    for (const TLegendEntry& entry : layout.Entries) {
        DrawEntrySymbol(canvas, *entry.Series, entry.Symbol);
        const double above = (style.Height(entry.Label) - style.Height()) / 2;
        const double baseline = entry.Text.center().y() + style.CapHeight() / 2 - above;
        style.Draw(canvas, {entry.Text.left(), baseline}, entry.Label);
    }
    style.Draw(canvas, {layout.MorePlace.left(), layout.MorePlace.center().y() + style.CapHeight() / 2},
               layout.More);
}

} // namespace lumoplot
