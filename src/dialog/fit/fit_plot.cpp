#include "dialog/fit/fit_plot.h"

#include "dialog/fit/generate_points.h"
#include "expr/blocks/block_evaluator.h"
#include "fit/definition/cur_fit.h"
#include "graph/drawing/lines/canvas.h"
#include "graph/model/axis.h"
#include "graph/model/graph.h"
#include "graph/plotted/scale_map.h"
#include "support/ranges.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr int kMostPoints = 4096; // more are thinned
constexpr int kCurvePlaces = 800;
constexpr double kRoom = 0.06; // beyond the data, in parts of their span
constexpr int kMinSteps = 3;
constexpr double kFarthest = 1e5; // pixels, which painters still take

TScaleKind KindOf(const TTickRules& rules) {
    return rules.LogScale ? TScaleKind::Log : TScaleKind::Linear;
}

// The rules of an axis for another range, with some room at both ends.
TTickRules RulesFor(const TAxis& axis, TExtent extent) {
    TTickRules rules = TickRulesOf(axis);
    rules.LogScale = rules.LogScale && extent.Min > 0;
    rules.CountsFromMin = false;
    rules.Step = 0;
    rules.MinSteps = kMinSteps;
    if (extent.IsEmpty()) extent = {0, 1};
    const double least = std::max(std::abs(extent.Max), 1e-300) * 1e-9;
    if (rules.LogScale) {
        const double factor = std::max(std::pow(extent.Max / extent.Min, kRoom), 1.01);
        rules.Min = extent.Min / factor;
        rules.Max = extent.Max * factor;
    } else {
        const double span = extent.Max / 2 - extent.Min / 2;
        const double room = span > least ? 2 * kRoom * span : std::max(std::abs(extent.Max) * 0.1, 1e-9);
        rules.Min = extent.Min - room;
        rules.Max = extent.Max + room;
    }
    return rules;
}

QString LabelOf(const TTick& tick) {
    constexpr char16_t kRaised[] = u"⁰¹²³⁴⁵⁶⁷⁸⁹";
    QString text = tick.Label.Base;
    for (const QChar c : tick.Label.Exponent)
        text += c.isDigit() ? QChar(kRaised[c.digitValue()]) : QChar(u'⁻');
    return text;
}

// As many labelled ticks as find room, each taking so many pixels at least.
std::vector<TTick> LabelledTicks(const TTickRules& rules, double length, const auto& sizeOf) {
    for (int coarseness = 0; coarseness <= kCoarsest; ++coarseness) {
        std::vector<TTick> ticks = ChooseTicks(rules, length, coarseness).All;
        std::erase_if(ticks, [](const TTick& tick) { return tick.Kind == TTickKind::Minor; });
        double taken = 0;
        for (const TTick& tick : ticks) taken += sizeOf(LabelOf(tick));
        if (taken <= length) return ticks;
    }
    return {};
}

double Limited(double position) {
    return std::clamp(position, -kFarthest, kFarthest);
}

} // namespace

TFitPlot::TFitPlot(QWidget* parent) : QWidget(parent) {
}

void TFitPlot::ShowNothing() {
    m_isEmpty = true;
    m_dataStamp = 0;
    m_points.clear();
    m_curve.clear();
    update();
}

void TFitPlot::Show(const TSeries& series, TCurFit* model, const QString& note) {
    m_isEmpty = false;
    m_note = note;
    TakeData(series);
    ChooseRanges(series);
    m_curve.clear();
    if (model) TakeCurve(series, *model);
    TakeLook(series);
    update();
}

// Of many points the lowest and the highest of each run remain.
void TFitPlot::TakeData(const TSeries& series) {
    if (m_dataStamp == series.DataStamp()) return;
    m_dataStamp = series.DataStamp();
    m_points.clear();
    const int run = series.Count() <= kMostPoints ? 1 : series.Count() / (kMostPoints / 2) + 1;
    QPointF low;
    QPointF high;
    int held = 0;
    const auto flush = [&] {
        if (held > 0) m_points.push_back(low);
        if (held > 1) m_points.push_back(high);
        held = 0;
    };
    for (std::size_t block = 0; block < series.Points().BlockCount(); ++block) {
        const TPointSpans spans = series.Points().Block(block);
        for (std::size_t i = 0; i < spans.X.size(); ++i) {
            const QPointF point(spans.X[i], series.CorrectedY(spans.X[i], spans.Y[i]));
            if (!std::isfinite(point.y())) continue;
            if (held == 0 || point.y() < low.y()) low = point;
            if (held == 0 || point.y() > high.y()) high = point;
            if (++held == run) flush();
        }
    }
    flush();
}

void TFitPlot::ChooseRanges(const TSeries& series) {
    const TAxis& xAxis = *series.Graph().XAxis();
    const TAxis& yAxis = *series.YAxisOfSeries();
    TExtent x;
    TExtent y;
    for (const QPointF& point : m_points) {
        if (!xAxis.LogScale() || point.x() > 0) x.Take(point.x());
        if (!yAxis.LogScale() || point.y() > 0) y.Take(point.y());
    }
    const TXRange range = CurveRange(series);
    for (const double end : {range.From, range.To})
        if (!xAxis.LogScale() || end > 0) x.Take(end);
    m_xRules = RulesFor(xAxis, x);
    m_yRules = RulesFor(yAxis, y);
}

// Evenly along the axis, so that a logarithmic one is smooth at its low end too.
void TFitPlot::TakeCurve(const TSeries& series, TCurFit& model) {
    const TXRange range = CurveRange(series);
    const double first = std::max(range.From, m_xRules.Min);
    const double last = std::min(range.To, m_xRules.Max);
    if (!(first < last)) return;
    const TScaleMap places(first, last, 0, kCurvePlaces - 1, KindOf(m_xRules));
    std::vector<double> x(kCurvePlaces);
    std::vector<double> y(kCurvePlaces);
    for (std::size_t i = 0; i < x.size(); ++i) x[i] = places.Value(static_cast<double>(i));
    TBlockEvaluator(model, model.XRef()).Evaluate(x, y);
    TExtent extent;
    for (std::size_t i = 0; i < x.size(); ++i) {
        m_curve.emplace_back(x[i], y[i]);
        if (!m_yRules.LogScale || y[i] > 0) extent.Take(y[i]);
    }
    if (m_points.empty()) m_yRules = RulesFor(*series.YAxisOfSeries(), extent);
}

bool TFitPlot::ShowsCurve() const {
    return std::ranges::any_of(m_curve, [&](const QPointF& place) {
        return place.y() >= m_yRules.Min && place.y() <= m_yRules.Max;
    });
}

void TFitPlot::TakeLook(const TSeries& series) {
    const TAppearance& appearance = *series.Graph().Appearance();
    const TCurFit& fit = series.CurveFit();
    m_look.Background = ToQColor(appearance.BackgroundColor());
    m_look.Grid = ToQColor(appearance.GridColor());
    m_look.Points = ToQColor(series.PointsShown() ? series.PointColor() : series.LineColor());
    constexpr Qt::PenStyle kStyles[] = {Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine,
                                        Qt::DashDotDotLine};
    const auto style = static_cast<std::size_t>(fit.CurveStyle());
    m_look.Curve = QPen(ToQColor(fit.CurveColor()), fit.ShowCurve() ? std::clamp(fit.CurveWidth(), 1, 20) : 1,
                        style < std::size(kStyles) ? kStyles[style] : Qt::SolidLine);
}

void TFitPlot::paintEvent(QPaintEvent*) {
    if (m_isEmpty) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double text = fontMetrics().height();
    const QRectF room = QRectF(rect()).adjusted(0, 4, -8, -text - 4);
    double labels = 0;
    for (const TTick& tick :
         LabelledTicks(m_yRules, room.height(), [&](const QString&) { return 1.6 * text; }))
        labels = std::max<double>(labels, fontMetrics().horizontalAdvance(LabelOf(tick)));
    const QRectF plot = room.adjusted(labels + 6, 0, 0, 0);
    if (plot.width() < 10 || plot.height() < 10) return;
    const TScaleMap x(m_xRules.Min, m_xRules.Max, plot.left(), plot.right(), KindOf(m_xRules));
    const TScaleMap y(m_yRules.Min, m_yRules.Max, plot.bottom(), plot.top(), KindOf(m_yRules));
    painter.fillRect(plot, m_look.Background);
    PaintAxes(painter, plot, x, y);
    painter.setClipRect(plot);
    PaintPoints(painter, x, y);
    PaintCurve(painter, x, y);
    PaintNote(painter, plot);
}

void TFitPlot::PaintAxes(QPainter& painter, const QRectF& plot, const TScaleMap& x,
                         const TScaleMap& y) const {
    const double text = fontMetrics().height();
    const auto xSize = [&](const QString& label) { return fontMetrics().horizontalAdvance(label) + text; };
    const auto ySize = [&](const QString&) { return 1.6 * text; };
    const QPen grid(m_look.Grid, 1, Qt::DotLine);
    const QPen labels(palette().color(QPalette::WindowText));
    for (const TTick& tick : LabelledTicks(m_xRules, plot.width(), xSize)) {
        const double at = std::round(x.Position(tick.Value)) + 0.5;
        const double half = xSize(LabelOf(tick)) / 2;
        painter.setPen(grid);
        painter.drawLine(QPointF(at, plot.top()), QPointF(at, plot.bottom()));
        painter.setPen(labels);
        if (at + half <= width() + text / 2)
            painter.drawText(QRectF(at - half, plot.bottom() + 2, 2 * half, text), Qt::AlignCenter,
                             LabelOf(tick));
    }
    for (const TTick& tick : LabelledTicks(m_yRules, plot.height(), ySize)) {
        const double at = std::round(y.Position(tick.Value)) + 0.5;
        painter.setPen(grid);
        painter.drawLine(QPointF(plot.left(), at), QPointF(plot.right(), at));
        painter.setPen(labels);
        painter.drawText(QRectF(0, at - text / 2, plot.left() - 4, text), Qt::AlignRight | Qt::AlignVCenter,
                         LabelOf(tick));
    }
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(plot.adjusted(0.5, 0.5, -0.5, -0.5));
}

void TFitPlot::PaintPoints(QPainter& painter, const TScaleMap& x, const TScaleMap& y) const {
    const double radius = m_points.size() <= 300 ? 2.4 : m_points.size() <= 1500 ? 1.7 : 1.1;
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_look.Points);
    for (const QPointF& point : m_points) {
        const QPointF place(x.Position(point.x()), y.Position(point.y()));
        if (std::isfinite(place.x()) && std::isfinite(place.y())) painter.drawEllipse(place, radius, radius);
    }
}

void TFitPlot::PaintCurve(QPainter& painter, const TScaleMap& x, const TScaleMap& y) const {
    painter.setPen(m_look.Curve);
    QPolygonF line;
    const auto flush = [&] {
        painter.drawPolyline(line);
        line.clear();
    };
    for (const QPointF& point : m_curve) {
        const double at = y.Position(point.y());
        if (std::isnan(at))
            flush();
        else
            line << QPointF(x.Position(point.x()), Limited(at));
    }
    flush();
}

void TFitPlot::PaintNote(QPainter& painter, const QRectF& plot) const {
    const QString note = !m_note.isEmpty()                 ? m_note
                         : m_curve.empty() || ShowsCurve() ? QString()
                                                           : QStringLiteral("The function lies out of sight");
    if (note.isEmpty()) return;
    const QRectF place = plot.adjusted(6, 4, -6, -4);
    const int how = Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap;
    const QRectF box = painter.boundingRect(place, how, note).adjusted(-4, -2, 4, 2);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::ToolTipBase));
    painter.drawRoundedRect(box, 3, 3);
    painter.setPen(palette().color(QPalette::ToolTipText));
    painter.drawText(place, how, note);
}

} // namespace lumoplot
