#include "graph/drawing/picture/drawing.h"

#include "graph/drawing/picture/axis_painter.h"
#include "graph/drawing/picture/background_picture.h"
#include "graph/drawing/picture/crowd.h"
#include "graph/drawing/picture/legend_painter.h"
#include "graph/drawing/picture/mark_painter.h"
#include "graph/drawing/picture/series_painter.h"
#include "graph/model/appearance.h"
#include "graph/model/axis.h"
#include "graph/model/child_graph.h"
#include "graph/model/settings.h"
#include "graph/mouse/drawing_hook.h"
#include "support/progress.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kNoteOnLabel = 10; // what a note costs there; the line of an axis costs 1

/// The steps of a drawing, one a data set, over all graphs that are drawn.
class TSeriesSteps {
public:
    explicit TSeriesSteps(TProgress* progress) : m_progress(progress) {}

    /// False when the user has cancelled.
    bool Next() {
        if (m_progress && !m_isCancelled) m_isCancelled = !m_progress->StepTo(++m_done);
        return !m_isCancelled;
    }
    bool IsCancelled() const { return m_isCancelled; }

private:
    TProgress* m_progress;
    int m_done = 0;
    bool m_isCancelled = false;
};

class TGraphPainter {
public:
    TGraphPainter(const TCanvas& canvas, const TxyGraph& graph, const QRectF& rectangle,
                  TBackground background, TSeriesSteps& steps)
        : m_steps(steps), m_canvas(canvas), m_graph(graph), m_appearance(*graph.Appearance()),
          m_rectangle(rectangle), m_background(background) {}

    /// Returns where the plot lies; nothing when there is none.
    std::optional<TPlotMap> Draw() const {
        if (!m_graph.HasContent()) return DrawWaiting();
        if (m_graph.ScaleFailed() || !HasRanges())
            return DrawNotice(QString::fromStdString(m_appearance.ErrorCaption()));
        const TGraphLayout layout(m_canvas, m_graph, m_rectangle);
        if (!layout.HasPlot()) {
            DrawMargins();
            return std::nullopt;
        }
        DrawMargins(BehindPlot(layout));
        const TLegendLayout legend = LegendFor(layout);
        DrawPlot(layout, legend.Box);
        DrawAxes(m_canvas, m_graph, layout);
        if (const QRectF place = layout.ResidualPlace(); !place.isNull())
            layout.Residuals().Draw(m_canvas, layout.Fonts(), place, *m_graph.XAxis());
        TTextStyle(m_appearance.CaptionFont())
            .DrawCentred(m_canvas, layout.TitlePlace(), QString::fromStdString(m_appearance.GraphTitle()));
        DrawLegend(m_canvas, m_graph, legend, layout.Plot());
        return PlotMapOf(layout, legend);
    }

private:
    TPlotMap PlotMapOf(const TGraphLayout& layout, const TLegendLayout& legend) const {
        const TAxisLayouts& axes = layout.Axes();
        const auto placeOf = [](const TAxisLayout& axis) {
            return axis.Axis().ShowAxis() ? axis.TextPlace() : QRectF();
        };
        return {layout.Plot(),
                axes.X.Map(),
                axes.Y.Map(),
                axes.SecondY.Map(),
                {placeOf(axes.X), placeOf(axes.Y), placeOf(axes.SecondY)},
                m_appearance.GraphTitle().empty() ? QRectF() : layout.TitlePlace(),
                legend.IsEmpty() ? QRectF() : legend.Box};
    }

    bool FillsBackground() const {
        return m_background == TBackground::Fill &&
               (!m_canvas.IsPrinting() || m_appearance.PrintBkgndColor());
    }

    // On a screen only around the plot: filling both would take most of the time of a small graph.
    void DrawMargins(const QRectF& plot = {}) const {
        if (plot.isNull() || !FillsPlot() || !m_canvas.IsRaster()) {
            if (FillsBackground()) m_canvas.FillRect(m_rectangle, m_appearance.MarginColor());
        } else {
            const QRectF all = m_rectangle;
            const double left = std::max(all.left(), plot.left()),
                         right = std::min(all.right(), plot.right());
            const double top = std::max(all.top(), plot.top()),
                         bottom = std::min(all.bottom(), plot.bottom());
            for (const QRectF& part : {QRectF(all.topLeft(), QPointF(all.right(), top)),
                                       QRectF(QPointF(all.left(), bottom), all.bottomRight()),
                                       QRectF(QPointF(all.left(), top), QPointF(left, bottom)),
                                       QRectF(QPointF(right, top), QPointF(all.right(), bottom))})
                m_canvas.FillRect(part, m_appearance.MarginColor());
        }
        const QImage picture = BackgroundPicture(m_appearance.bkgdImageFile());
        if (picture.isNull()) return;
        QPainter& painter = m_canvas.Painter();
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        if (m_appearance.StretchBkgd()) return painter.drawImage(m_rectangle, picture);
        // Not every vector format cuts off what lies outside a clip rectangle.
        const QRectF shown = QRectF(QPointF(), m_rectangle.size()) & QRectF(picture.rect());
        painter.drawImage(QRectF(m_rectangle.topLeft(), shown.size()), picture, shown);
    }

    std::optional<TPlotMap> DrawNotice(const QString& text) const {
        DrawMargins();
        TFontSpec font = m_appearance.CaptionFont();
        font.Size = std::max(font.Size, 12);
        TTextStyle(font).DrawCentred(m_canvas, m_rectangle, text);
        return std::nullopt;
    }

    // A graph that only holds others waits for nothing.
    std::optional<TPlotMap> DrawWaiting() const {
        if (m_graph.ChildGraphCount() == 0) return DrawNotice(QStringLiteral("Waiting for the data..."));
        DrawMargins();
        return std::nullopt;
    }

    bool HasRanges() const {
        const std::array axes = {m_graph.XAxis(), m_graph.YAxis(), m_graph.YAxis_Second()};
        return std::ranges::all_of(axes, [](const TAxis* axis) {
            return axis->Min() < axis->Max() && (!axis->LogScale() || axis->Min() > 0);
        });
    }

    TLegendLayout LegendFor(const TGraphLayout& layout) const {
        const TLegend& legend = *m_graph.Legend();
        if (!legend.visible()) return {};
        if (!legend.AutoPlace() && HasRoomForLegend(m_graph, m_rectangle.size()))
            return LegendOffResiduals(layout);
        return LayOutLegendInCorner(m_graph, layout, TCrowd(m_graph, layout), NoteIn(layout).Place);
    }

    // A legend that stands in the plot stays in it when residuals take the upper part of its place.
    TLegendLayout LegendOffResiduals(const TGraphLayout& layout) const {
        TLegendLayout legend = LayOutLegend(m_graph, m_rectangle);
        const QRectF panel = layout.ResidualPlace();
        if (legend.Box.intersects(panel) && legend.Box.top() >= panel.top())
            legend.Move({0, layout.Plot().top() - panel.top()});
        return legend;
    }

    QRectF BehindPlot(const TGraphLayout& layout) const {
        const double half = 0.5 / m_canvas.PixelsPerUnit();
        return layout.Plot().adjusted(-half, -half, half, half);
    }
    bool FillsPlot() const {
        return FillsBackground() && BackgroundPicture(m_appearance.bkgdImageFile()).isNull();
    }

    void DrawPlot(const TGraphLayout& layout, const QRectF& legend) const {
        const QRectF plot = BehindPlot(layout);
        if (FillsPlot()) m_canvas.FillRect(plot, m_appearance.BackgroundColor());
        DrawGrid(m_canvas, m_graph, layout);
        const QRectF visible = m_appearance.PlotOffGraph() ? m_rectangle : plot;
        for (const auto& series : m_graph.Series())
            if (m_steps.Next()) DrawSeries(m_canvas, *series, layout, visible);
        DrawMarks(m_canvas, m_graph, layout);
        DrawCrossAtZero(m_canvas, m_graph, layout);
        TellLostPoints(layout);
        std::vector<QRectF> taken = layout.AxisPlacesInPlot();
        taken.push_back(legend);
        taken.push_back(NoteIn(layout).Place);
        DrawCaptions(m_canvas, m_graph, layout, taken);
    }

    // A logarithmic axis has no place for some points; the picture says so, in fewer words where there is
    // little room.
    std::vector<QString> LostPoints() const {
        std::int64_t lost = 0;
        for (const auto& series : m_graph.Series()) lost += series->LogErrors();
        if (lost == 0) return {};
        if (lost == 1)
            return {QStringLiteral("1 point is not above 0 and left out"),
                    QStringLiteral("1 point left out")};
        return {QStringLiteral("%1 points are not above 0 and left out").arg(lost),
                QStringLiteral("%1 points left out").arg(lost)};
    }

    struct TNote {
        QString Text;
        QRectF Place; ///< null for no note
        double Cost = HUGE_VAL;
    };

    // At the foot of the plot or its top, or as low as no labels stand; on the line of an axis where one
    // stands in the way everywhere. None where labels fill the plot.
    TNote NoteIn(const TGraphLayout& layout) const {
        const TTextStyle style(m_appearance.LabelFont());
        const double gap = style.Em() / 2;
        const QRectF room = layout.Plot().adjusted(gap, gap, -gap, -gap);
        const std::vector<QRectF> places = layout.AxisPlacesInPlot();
        TNote best;
        for (const QString& text : LostPoints()) {
            const QSizeF size(style.Width(text), style.Height());
            if (size.width() > room.width() || size.height() > room.height()) continue;
            const double middle = room.center().x() - size.width() / 2;
            std::vector<double> rows{room.bottom() - size.height(), room.top()};
            for (double y = rows[0] - gap; y > rows[1]; y -= gap) rows.push_back(y);
            for (const double y : rows)
                for (const double x : {middle, room.left(), room.right() - size.width()}) {
                    const QRectF place(QPointF(x, y), size);
                    const double cost = CostOfNote(place, places);
                    if (cost < best.Cost) best = {text, place, cost};
                }
            if (best.Cost < kNoteOnLabel) return best;
        }
        return {};
    }

    static double CostOfNote(const QRectF& note, const std::vector<QRectF>& places) {
        constexpr double kLongAsALine = 8; // times its width
        double cost = 0;
        for (const QRectF& place : places) {
            const bool isLine = std::max(place.width(), place.height()) >
                                kLongAsALine * std::min(place.width(), place.height());
            if (place.intersects(note)) cost += isLine ? 1 : kNoteOnLabel;
        }
        return cost;
    }

    void TellLostPoints(const TGraphLayout& layout) const {
        const TNote note = NoteIn(layout);
        if (note.Place.isNull()) return;
        const TTextStyle style(m_appearance.LabelFont());
        DrawBehindText(m_canvas, note.Place, m_appearance.BackgroundColor());
        style.Draw(m_canvas, {note.Place.left(), note.Place.top() + style.Ascent()}, note.Text);
    }

    TSeriesSteps& m_steps;
    const TCanvas& m_canvas;
    const TxyGraph& m_graph;
    const TAppearance& m_appearance;
    QRectF m_rectangle;
    TBackground m_background;
};

// A file may hold any fraction. What lies farther than a widget could reach shows nothing, and the ticks
// along it would be without number.
double WithinReach(double units) {
    constexpr double kReach = 32000;
    return std::isfinite(units) ? std::clamp(units, -kReach, kReach) : 0;
}

QRectF PlaceOf(const TxyChildGr& child, const QRectF& parent) {
    const TDimensions& place = *child.Dimensions();
    return {WithinReach(parent.left() + place.HorPosition() * parent.width()),
            WithinReach(parent.top() + place.VerPosition() * parent.height()),
            WithinReach(place.HorSize() * parent.width()), WithinReach(place.VerSize() * parent.height())};
}

std::optional<TPlotMap> DrawOneGraph(QPainter& painter, const TxyGraph& graph, const QRectF& rectangle,
                                     const TDrawOptions& options, TSeriesSteps& steps) {
    if (!(rectangle.width() >= 1) || !(rectangle.height() >= 1)) return std::nullopt;
    painter.save();
    painter.setClipRect(rectangle, Qt::IntersectClip);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const TCanvas canvas(painter, options.Purpose);
    const auto map = TGraphPainter(canvas, graph, rectangle, options.Background, steps).Draw();
    painter.restore();
    return map;
}

std::optional<TPlotMap> DrawPanel(QPainter& painter, const TxyGraph& graph, const QRectF& rectangle) {
    TSeriesSteps steps(nullptr);
    return DrawOneGraph(painter, graph, rectangle, {}, steps);
}

int CountOfDrawnSeries(const TxyGraph& graph) {
    int count = graph.SeriesCount();
    for (const auto& child : graph.ChildGraphs()) count += CountOfDrawnSeries(*child);
    return count;
}

void DrawWithChildGraphs(QPainter& painter, const TxyGraph& graph, const QRectF& rectangle,
                         const TDrawOptions& options, TSeriesSteps& steps) {
    if (!(rectangle.width() >= 1) || !(rectangle.height() >= 1)) return;
    DrawOneGraph(painter, graph, rectangle, options, steps);
    if (options.ChildGraphs == TChildGraphs::LeaveOut) return;
    painter.save();
    painter.setClipRect(rectangle, Qt::IntersectClip);
    for (const auto& child : graph.ChildGraphs())
        DrawWithChildGraphs(painter, *child, PlaceOf(*child, rectangle), options, steps);
    painter.restore();
}

const bool g_installed = (InstallDrawing(DrawPanel), true);

} // namespace

bool DrawGraph(QPainter& painter, const TxyGraph& graph, const QRectF& rectangle,
               const TDrawOptions& options) {
    TSeriesSteps steps(options.Progress);
    if (options.Progress) options.Progress->Begin(options.Caption, 0, CountOfDrawnSeries(graph));
    DrawWithChildGraphs(painter, graph, rectangle, options, steps);
    return !steps.IsCancelled();
}

void PrepareWithChildGraphs(TxyGraph& graph) {
    graph.PrepareForDrawing();
    for (const auto& child : graph.ChildGraphs()) PrepareWithChildGraphs(*child);
}

} // namespace lumoplot
