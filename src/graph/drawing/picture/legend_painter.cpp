#include "graph/drawing/picture/legend_painter.h"

#include "graph/drawing/lines/symbol.h"
#include "graph/model/appearance.h"
#include "graph/model/graph.h"
#include "graph/model/legend.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kSymbolGap = 5; // units between symbol and text
constexpr double kEntryGap = 14; // units between entries of a row
constexpr double kRowGap = 3;
constexpr double kLargestSymbol = 16; // units; larger points are drawn so large

class TLegendFlow {
public:
    TLegendFlow(const TLegend& legend, const TTextStyle& style, double innerWidth)
        : m_legend(legend), m_style(style), m_width(innerWidth) {}

    void Add(const TSeries& series) {
        const double textLeft = m_legend.SymbolSpace() + kSymbolGap;
        const QString label =
            m_style.Fitted(QString::fromStdString(series.LegendText()), std::max(0.0, m_width - textLeft));
        const double width = textLeft + m_style.Width(label);
        const bool isFirst = Entries.empty();
        const bool startsRow = m_legend.Layout() == TLegend::lsDown || m_place.x() + width > m_width + 0.01;
        if (!isFirst && startsRow) m_place = {0, m_place.y() + RowHeight() + kRowGap};
        Entries.push_back({&series, QRectF(m_place.x(), m_place.y(), m_legend.SymbolSpace(), RowHeight()),
                           QRectF(m_place.x() + textLeft, m_place.y(), width - textLeft, RowHeight()),
                           label});
        UsedWidth = std::max(UsedWidth, m_place.x() + width);
        m_place.rx() += width + kEntryGap;
    }
    double UsedHeight() const { return m_place.y() + RowHeight(); }
    double RowHeight() const { return m_style.Height(); }

    std::vector<TLegendEntry> Entries;
    double UsedWidth = 0;

private:
    const TLegend& m_legend;
    const TTextStyle& m_style;
    double m_width;
    QPointF m_place;
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

void DrawBox(const TCanvas& canvas, const TLegend& legend, const QRectF& box, TColor border) {
    canvas.FillRect(box, legend.color());
    if (legend.borderStyle() == TLegend::bsNone) return;
    const QPen pen = canvas.Pen(border, TPenStyle::Solid, 1);
    const double half = pen.widthF() / 2;
    canvas.DrawStraight(box.topLeft() - QPointF(half, 0), box.topRight() + QPointF(half, 0), pen);
    canvas.DrawStraight(box.bottomLeft() - QPointF(half, 0), box.bottomRight() + QPointF(half, 0), pen);
    canvas.DrawStraight(box.topLeft(), box.bottomLeft(), pen);
    canvas.DrawStraight(box.topRight(), box.bottomRight(), pen);
}

} // namespace

TLegendLayout LayOutLegend(const TxyGraph& graph, const QRectF& rectangle) {
    const TLegend& legend = *graph.Legend();
    const TTextStyle style(legend.font());
    const double xMargin = legend.XMargin();
    const double yMargin = legend.YMargin();
    const double left = rectangle.left() + legend.left();
    const double room = std::max(rectangle.right() - left, 0.0);
    const double width = legend.width() > 0 ? std::min<double>(legend.width(), room) : room;
    TLegendFlow flow(legend, style, std::max(width - 2 * xMargin, 0.0));
    for (const auto& series : graph.Series())
        if (IsInLegend(*series)) flow.Add(*series);
    TLegendLayout layout;
    const double boxWidth = legend.width() > 0 ? width : std::min(flow.UsedWidth + 2 * xMargin, room);
    const double boxHeight = std::max<double>(legend.height(), flow.UsedHeight() + 2 * yMargin);
    layout.Box = {left, rectangle.top() + legend.top(), boxWidth, boxHeight};
    layout.Entries = std::move(flow.Entries);
    const double spare = boxHeight - 2 * yMargin - flow.UsedHeight();
    const QPointF origin = layout.Box.topLeft() + QPointF(xMargin, yMargin + std::max(spare, 0.0) / 2);
    for (TLegendEntry& entry : layout.Entries) {
        entry.Symbol.translate(origin);
        entry.Text.translate(origin);
    }
    return layout;
}

void DrawLegend(const TCanvas& canvas, const TxyGraph& graph, const QRectF& rectangle) {
    const TLegend& legend = *graph.Legend();
    if (!legend.visible()) return;
    const TLegendLayout layout = LayOutLegend(graph, rectangle);
    if (layout.Entries.empty()) return;
    DrawBox(canvas, legend, layout.Box, graph.Appearance()->AxesColor());
    const TTextStyle style(legend.font());
    for (const TLegendEntry& entry : layout.Entries) {
        DrawEntrySymbol(canvas, *entry.Series, entry.Symbol);
        const double baseline = entry.Text.center().y() + style.CapHeight() / 2;
        style.Draw(canvas, {entry.Text.left(), baseline}, entry.Label);
    }
}

} // namespace lumoplot
