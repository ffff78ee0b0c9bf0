#include "graph/drawing/picture/fit_picture.h"

#include "data/series/plotted_values.h"
#include "expr/blocks/block_evaluator.h"
#include "fit/definition/cur_fit.h"
#include "fit/definition/fit_result.h"
#include "fit/many/uncertainty.h"
#include "graph/drawing/lines/canvas.h"
#include "graph/model/axis.h"
#include "graph/model/graph.h"
#include "graph/plotted/drawn_extent.h"
#include "graph/plotted/scale_map.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr std::size_t kMostPoints = 100'000; // of more, a sample that is as dense everywhere is drawn
constexpr int kCurvePlaces = 800;
constexpr double kRoom = 0.06; // beyond the data, in parts of their span
constexpr int kMinSteps = 3;
constexpr double kFarthest = 1e5; // pixels, which painters still take
constexpr double kPictureConfidence = 0.95;
constexpr double kOutlierRadius = 5;          // pixels
constexpr double kResidualsBelowShare = 0.27; // of the height
constexpr double kResidualRoom = 1.1;         // times the largest residual
constexpr std::size_t kFewPoints = 300;       // drawn large
constexpr std::size_t kSomePoints = 1500;     // drawn smaller; of more, one pixel each

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

std::pair<std::uint64_t, std::uint64_t> StampsOf(const TSeries& series) {
    const auto* x = static_cast<const TSeries*>(series.XSource()); // of the same graph
    return {series.DataStamp(), x ? x->DataStamp() : 0};
}

double Limited(double position) {
    return std::clamp(position, -kFarthest, kFarthest);
}

} // namespace

TXRange CurveRange(const TSeries& series) {
    const TCurFit& fit = series.CurveFit();
    const TAxis& axis = *series.Graph().XAxis();
    const TRange data = series.Count() > 0 ? PlottedXRange(series) : TRange{axis.Min(), axis.Max()};
    return {fit.UseLeftMargin() ? fit.LeftMargin() : data.Min,
            fit.UseRightMargin() ? fit.RightMargin() : data.Max};
}

void TFitPicture::Take(const TSeries& series, TCurFit* model) {
    m_isEmpty = false;
    TakeData(series);
    ChooseRanges(series);
    m_curve.clear();
    m_bands.clear();
    m_residuals.clear();
    m_outliers.clear();
    if (model) {
        TakeCurve(series, *model);
        TakeResiduals(*model);
        TakeBands(series);
        TakeOutliers(series);
    }
    TakeLook(series);
}

// Of very many points every so many, so that what is drawn is as dense as the data are.
void TFitPicture::TakeData(const TSeries& series) {
    if (m_dataStamps == StampsOf(series)) return;
    m_dataStamps = StampsOf(series);
    m_points.clear();
    const TPlottedValues values = PlottedValues(series);
    const std::size_t step = values.X.size() / kMostPoints + 1;
    for (std::size_t i = 0; i < values.X.size(); i += step)
        if (std::isfinite(values.X[i]) && std::isfinite(values.Y[i]))
            m_points.emplace_back(values.X[i], values.Y[i]);
}

void TFitPicture::ChooseRanges(const TSeries& series) {
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
void TFitPicture::TakeCurve(const TSeries& series, TCurFit& model) {
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

void TFitPicture::TakeResiduals(TCurFit& model) {
    std::vector<double> x;
    for (const QPointF& point : m_points) x.push_back(point.x());
    std::vector<double> y(x.size());
    if (!x.empty()) TBlockEvaluator(model, model.XRef()).Evaluate(x, y);
    const auto isUsed = [&](double at) {
        return !(model.UseLeftMargin() && at < model.LeftMargin()) &&
               !(model.UseRightMargin() && at > model.RightMargin());
    };
    for (std::size_t i = 0; i < x.size(); ++i)
        if (isUsed(x[i]) && std::isfinite(y[i])) m_residuals.emplace_back(x[i], m_points[i].y() - y[i]);
}

// They belong to the values of the last run.
void TFitPicture::TakeBands(const TSeries& series) {
    const TCurFit& fit = series.CurveFit();
    if (!fit.Result() || fit.IsStale() || !fit.FitError().empty() || m_curve.empty()) return;
    std::vector<double> x;
    for (const QPointF& place : m_curve) x.push_back(place.x());
    const TBands bands = BandsOf(fit, x, kPictureConfidence);
    for (std::size_t i = 0; i < x.size(); ++i) m_bands.push_back({bands.Confidence[i], bands.Prediction[i]});
}

void TFitPicture::TakeOutliers(const TSeries& series) {
    const TCurFit& fit = series.CurveFit();
    const bool isKnown =
        fit.Result() && !fit.IsStale() && fit.FitError().empty() && fit.Result()->Outliers > 0;
    if (!isKnown || fit.Weighting().Robust == TRobust::None) return;
    const TPlottedValues values = PlottedValues(series);
    TFitRun run;
    TakeWeighting(run, fit, values.YErrors);
    for (const std::size_t place : OutliersOf({fit, values.X, values.Y, run}))
        m_outliers.emplace_back(values.X[place], values.Y[place]);
}

void TFitPicture::TakeLook(const TSeries& series) {
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

void TFitPicture::Paint(QPainter& painter, const QRectF& place, const TFitPictureOptions& options) const {
    if (m_isEmpty) return;
    painter.setRenderHint(QPainter::Antialiasing);
    const QFontMetricsF metrics(painter.font());
    const double text = metrics.height();
    const QRectF room = place.adjusted(0, 4, -8, -text - 4);
    const bool hasResiduals =
        options.Residuals == TResidualsBelow::Shown && !m_residuals.empty() && room.height() > 9 * text;
    const double below = hasResiduals ? std::round(room.height() * kResidualsBelowShare) : 0;
    TTickRules residualRules = m_yRules;
    if (hasResiduals) residualRules = ResidualRules();
    const auto ySize = [&](const QString&) { return 1.6 * text; };
    double labels = 0;
    for (const auto& [rules, height] :
         {std::pair(m_yRules, room.height() - below), std::pair(residualRules, below)})
        for (const TTick& tick : LabelledTicks(rules, height, ySize))
            labels = std::max(labels, metrics.horizontalAdvance(LabelOf(tick)));
    const QRectF plot = room.adjusted(labels + 6, 0, 0, below > 0 ? -below - 6 : 0);
    if (plot.width() < 10 || plot.height() < 10) return;
    const TPanel upper = {plot, m_yRules, place, hasResiduals};
    const TPanel lower = {QRectF(plot.left(), room.bottom() - below, plot.width(), below), residualRules,
                          place, false};
    PaintPanel(painter, upper, options);
    if (hasResiduals) PaintPanel(painter, lower, options);
    painter.setClipRect(plot);
    const TScaleMap x(m_xRules.Min, m_xRules.Max, plot.left(), plot.right(), KindOf(m_xRules));
    const TScaleMap y(m_yRules.Min, m_yRules.Max, plot.bottom(), plot.top(), KindOf(m_yRules));
    PaintBands(painter, x, y);
    PaintPoints(painter, m_points, x, y);
    PaintCurve(painter, x, y);
    PaintOutliers(painter, x, y);
    if (hasResiduals) {
        painter.setClipRect(lower.Plot);
        const TScaleMap r(residualRules.Min, residualRules.Max, lower.Plot.bottom(), lower.Plot.top(),
                          TScaleKind::Linear);
        painter.setPen(QPen(m_look.Curve.color(), 1));
        painter.drawLine(QPointF(lower.Plot.left(), r.Position(0)),
                         QPointF(lower.Plot.right(), r.Position(0)));
        PaintPoints(painter, m_residuals, x, r);
    }
    painter.setClipRect(plot);
    PaintNote(painter, plot, options);
    painter.setClipping(false);
}

TTickRules TFitPicture::ResidualRules() const {
    double largest = 0;
    for (const QPointF& point : m_residuals) largest = std::max(largest, std::abs(point.y()));
    if (!(largest > 0)) largest = 1;
    TTickRules rules = m_yRules;
    rules.LogScale = false;
    rules.Min = -kResidualRoom * largest;
    rules.Max = kResidualRoom * largest;
    return rules;
}

void TFitPicture::PaintPanel(QPainter& painter, const TPanel& panel,
                             const TFitPictureOptions& options) const {
    const QRectF& plot = panel.Plot;
    painter.fillRect(plot, m_look.Background);
    const TScaleMap x(m_xRules.Min, m_xRules.Max, plot.left(), plot.right(), KindOf(m_xRules));
    const TScaleMap y(panel.Rules.Min, panel.Rules.Max, plot.bottom(), plot.top(), KindOf(panel.Rules));
    const QFontMetricsF metrics(painter.font());
    const double text = metrics.height();
    const auto xSize = [&](const QString& label) { return metrics.horizontalAdvance(label) + text; };
    const auto ySize = [&](const QString&) { return 1.6 * text; };
    const QPen grid(m_look.Grid, 1, Qt::DotLine);
    for (const TTick& tick : LabelledTicks(m_xRules, plot.width(), xSize)) {
        const double at = std::round(x.Position(tick.Value)) + 0.5;
        const double half = xSize(LabelOf(tick)) / 2;
        painter.setPen(grid);
        painter.drawLine(QPointF(at, plot.top()), QPointF(at, plot.bottom()));
        painter.setPen(options.Text);
        if (!panel.IsAboveAnother && at + half <= panel.Whole.right() + text / 2)
            painter.drawText(QRectF(at - half, plot.bottom() + 2, 2 * half, text), Qt::AlignCenter,
                             LabelOf(tick));
    }
    for (const TTick& tick : LabelledTicks(panel.Rules, plot.height(), ySize)) {
        const double at = std::round(y.Position(tick.Value)) + 0.5;
        painter.setPen(grid);
        painter.drawLine(QPointF(plot.left(), at), QPointF(plot.right(), at));
        painter.setPen(options.Text);
        painter.drawText(
            QRectF(panel.Whole.left(), at - text / 2, plot.left() - panel.Whole.left() - 4, text),
            Qt::AlignRight | Qt::AlignVCenter, LabelOf(tick));
    }
    painter.setPen(options.Frame);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(plot.adjusted(0.5, 0.5, -0.5, -0.5));
}

void TFitPicture::PaintPoints(QPainter& painter, const std::vector<QPointF>& points, const TScaleMap& x,
                              const TScaleMap& y) const {
    std::vector<QPointF> places;
    places.reserve(points.size());
    for (const QPointF& point : points) {
        const QPointF place(x.Position(point.x()), y.Position(point.y()));
        if (std::isfinite(place.x()) && std::isfinite(place.y())) places.push_back(place);
    }
    if (places.size() > kSomePoints) {
        painter.setPen(QPen(m_look.Points, 1));
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.drawPoints(places.data(), static_cast<int>(places.size()));
        painter.setRenderHint(QPainter::Antialiasing);
        return;
    }
    const double radius = places.size() <= kFewPoints ? 2.4 : 1.7;
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_look.Points);
    for (const QPointF& place : places) painter.drawEllipse(place, radius, radius);
}

// The confidence band filled, the wider one of new points lighter.
void TFitPicture::PaintBands(QPainter& painter, const TScaleMap& x, const TScaleMap& y) const {
    QColor colour = m_look.Curve.color();
    for (const bool isPrediction : {true, false}) {
        QPolygonF upper;
        QPolygonF lower;
        for (std::size_t i = 0; i < m_bands.size(); ++i) {
            const double half = isPrediction ? m_bands[i].Prediction : m_bands[i].Confidence;
            const double top = y.Position(m_curve[i].y() + half);
            const double bottom = y.Position(m_curve[i].y() - half);
            if (!std::isfinite(top) || !std::isfinite(bottom)) continue;
            upper << QPointF(x.Position(m_curve[i].x()), Limited(top));
            lower << QPointF(x.Position(m_curve[i].x()), Limited(bottom));
        }
        std::reverse(lower.begin(), lower.end());
        colour.setAlpha(isPrediction ? 22 : 60);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
        painter.drawPolygon(upper + lower);
    }
}

void TFitPicture::PaintOutliers(QPainter& painter, const TScaleMap& x, const TScaleMap& y) const {
    painter.setPen(QPen(m_look.Curve.color(), 1.5));
    painter.setBrush(Qt::NoBrush);
    for (const QPointF& point : m_outliers) {
        const QPointF place(x.Position(point.x()), y.Position(point.y()));
        if (std::isfinite(place.x()) && std::isfinite(place.y()))
            painter.drawEllipse(place, kOutlierRadius, kOutlierRadius);
    }
}

void TFitPicture::PaintCurve(QPainter& painter, const TScaleMap& x, const TScaleMap& y) const {
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

void TFitPicture::PaintNote(QPainter& painter, const QRectF& plot, const TFitPictureOptions& options) const {
    const QString note = !options.Note.isEmpty()           ? options.Note
                         : m_curve.empty() || ShowsCurve() ? QString()
                                                           : QStringLiteral("The function lies out of sight");
    if (note.isEmpty()) return;
    const QRectF place = plot.adjusted(6, 4, -6, -4);
    const int how = Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap;
    const QRectF box = painter.boundingRect(place, how, note).adjusted(-4, -2, 4, 2);
    painter.setPen(Qt::NoPen);
    painter.setBrush(options.NoteBase);
    painter.drawRoundedRect(box, 3, 3);
    painter.setPen(options.NoteText);
    painter.drawText(place, how, note);
}

QImage FitPictureOf(const TSeries& series, QSize size, double pixelRatio) {
    TCurFit model;
    model.Assign(&series.CurveFit());
    model.Compile();
    TFitPicture picture;
    picture.Take(series, &model);
    QImage image(size * pixelRatio, QImage::Format_RGB32);
    image.setDevicePixelRatio(pixelRatio);
    image.fill(Qt::white);
    QPainter painter(&image);
    picture.Paint(painter, QRectF(QPointF(0, 0), QSizeF(size)), {});
    return image;
}

} // namespace lumoplot
