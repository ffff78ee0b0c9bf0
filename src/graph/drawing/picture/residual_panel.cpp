#include "graph/drawing/picture/residual_panel.h"

#include "expr/blocks/block_evaluator.h"
#include "fit/definition/cur_fit.h"
#include "graph/drawing/lines/polylines.h"
#include "graph/drawing/lines/symbol_cloud.h"
#include "graph/model/graph.h"
#include "graph/plotted/paired_points.h"
#include "support/errors.h"
#include "support/number_text.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kSmallSymbol = 5; // units; large symbols would hide the panel
constexpr double kTickOfPanel = 4;
constexpr double kLabelGap = 3;
constexpr double kRoomAround = 1.08; // of the largest residual

// The next number of the form 1, 1.5, 2, 3, 5 or 7 times a power of ten.
double RoundedUp(double value) {
    if (!(value > 0) || !std::isfinite(value)) return 1;
    const double decade = std::pow(10.0, std::floor(std::log10(value)));
    for (const double step : {1.0, 1.5, 2.0, 3.0, 5.0, 7.0})
        if (value <= step * decade * (1 + 1e-9)) return step * decade;
    return 10 * decade;
}

} // namespace

TResidualPanel::TResidualPanel(const TxyGraph& graph) : m_graph(graph) {
    if (!graph.Appearance()->ShowResiduals()) return;
    for (const auto& series : graph.Series())
        if (IsDrawn(*series) && !series->FittedCurve().empty()) Add(*series);
    double most = 0;
    for (const TSet& set : m_sets)
        for (const double residual : set.Residuals)
            if (std::isfinite(residual)) most = std::max(most, std::abs(residual));
    m_reach = RoundedUp(most * kRoomAround);
}

void TResidualPanel::Add(const TSeries& series) {
    TSet set{&series, {}, {}};
    TDrawnPoints(series).ForEachRun([&set](const TDrawnRun& run) {
        set.X.insert(set.X.end(), run.X.begin(), run.X.end());
        set.Residuals.insert(set.Residuals.end(), run.Y.begin(), run.Y.end());
    });
    std::vector<double> fitted(set.X.size());
    try {
        TCurFit fit;
        fit.Assign(&series.CurveFit());
        fit.Compile();
        TBlockEvaluator(fit, fit.XRef()).Evaluate(set.X, fitted);
    } catch (const ELumoError&) {
        return; // there is no curve either
    }
    for (std::size_t i = 0; i < fitted.size(); ++i) set.Residuals[i] -= fitted[i];
    m_sets.push_back(std::move(set));
}

QString TResidualPanel::LabelOf(double value) const {
    QString text = QString::fromStdString(FormatGeneral(value, 3));
    return text.replace(QLatin1Char('-'), QChar(0x2212));
}

double TResidualPanel::WidthOfTexts(const TAxisFonts& fonts) const {
    return kTickOfPanel + kLabelGap + fonts.Labels.Width(LabelOf(-m_reach)) + kLabelGap +
           fonts.Titles.Height();
}

void TResidualPanel::Draw(const TCanvas& canvas, const TAxisFonts& fonts, const QRectF& place,
                          const TAxis& x) const {
    const TAppearance& appearance = *m_graph.Appearance();
    const QPen line = canvas.Pen(appearance.AxesColor(), TPenStyle::Solid, 1);
    const QPen zero = canvas.Pen(appearance.GridColor(), TPenStyle::Solid, 1);
    const double middle = place.center().y();
    canvas.DrawStraight({place.left(), middle}, {place.right(), middle}, zero);
    for (const TSet& set : m_sets) DrawPoints(canvas, set, place, x);
    canvas.DrawStraight(place.topLeft(), place.bottomLeft(), line);
    for (const auto& [value, y] :
         {std::pair(m_reach, place.top()), {0.0, middle}, {-m_reach, place.bottom()}}) {
        canvas.DrawStraight({place.left() - kTickOfPanel, y}, {place.left(), y}, line);
        if (!appearance.ShowGraphLabels()) continue;
        const QString text = LabelOf(value);
        const double right = place.left() - kTickOfPanel - kLabelGap;
        fonts.Labels.Draw(canvas, {right - fonts.Labels.Width(text), y + fonts.Labels.CapHeight() / 2}, text);
    }
    if (appearance.ShowFrame()) {
        canvas.DrawStraight(place.topLeft(), place.topRight(), line);
        canvas.DrawStraight(place.topRight(), place.bottomRight(), line);
        canvas.DrawStraight(place.bottomLeft(), place.bottomRight(), line);
    }
    if (!appearance.ShowGraphLabels()) return;
    const double width = fonts.Titles.Height();
    const QRectF title(place.left() - WidthOfTexts(fonts), place.top(), width, place.height());
    fonts.Titles.DrawCentred(canvas, title, fonts.Titles.Fitted(QStringLiteral("Residuals"), place.height()),
                             Qt::Vertical);
}

void TResidualPanel::DrawPoints(const TCanvas& canvas, const TSet& set, const QRectF& place,
                                const TAxis& x) const {
    const QRectF device = canvas.ToDevice(place);
    const TScaleMap xMap = MapOf(x, device);
    const TScaleMap yMap(-m_reach, m_reach, device.bottom(), device.top());
    TSymbol symbol = SymbolOf(*set.Series);
    if (!set.Series->PointsShown()) symbol.Color = ToQColor(set.Series->LineColor());
    symbol.Size = std::min(symbol.Size, kSmallSymbol);
    symbol.BorderWidth = std::min(symbol.BorderWidth, 1.0);
    TSymbolCloud cloud(canvas, symbol, device);
    std::vector<double> xPlaces, yPlaces;
    for (std::size_t i = 0; i < set.X.size(); ++i) {
        xPlaces.push_back(FarthestPlace(xMap.Position(set.X[i])));
        yPlaces.push_back(FarthestPlace(yMap.Position(set.Residuals[i])));
    }
    cloud.Add(xPlaces, yPlaces);
    cloud.Draw();
}

} // namespace lumoplot
