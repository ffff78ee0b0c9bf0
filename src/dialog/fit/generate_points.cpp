#include "dialog/fit/generate_points.h"

#include "data/series/ds_info.h"
#include "dialog/common/wizard_page.h"
#include "expr/blocks/block_evaluator.h"
#include "fit/definition/cur_fit.h"
#include "graph/loading/rows_text.h"
#include "support/errors.h"
#include "support/number_text.h"
#include "support/update_hold.h"

#include <cmath>

namespace lumoplot {
namespace {

constexpr std::size_t kBlock = 4096;

std::vector<double> EvenPlaces(const TXRange& range, int count) {
    std::vector<double> x(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const double part = count > 1 ? static_cast<double>(i) / (count - 1) : 0;
        x[static_cast<std::size_t>(i)] = range.From * (1 - part) + range.To * part;
    }
    return x;
}

TPointChain PointsAt(const std::vector<double>& x, TCurFit& fit, const TMergeRule& rule) {
    TBlockEvaluator evaluator(fit, fit.XRef());
    std::vector<double> y(std::min(x.size(), kBlock));
    TPointChain points;
    for (std::size_t start = 0; start < x.size(); start += kBlock) {
        const auto places = std::span(x).subspan(start, std::min(kBlock, x.size() - start));
        evaluator.Evaluate(places, std::span(y).first(places.size()));
        for (std::size_t i = 0; i < places.size(); ++i)
            if (std::isfinite(y[i])) points.Add(places[i], y[i], rule);
    }
    return points;
}

std::string RangeText(const TXRange& range) {
    return FormatGeneral(range.From, 4) + " and " + FormatGeneral(range.To, 4);
}

} // namespace

void GeneratePoints(TSeries& series) {
    TCurFit& fit = series.CurveFit();
    if (fit.Expression().empty()) throw ELumoError("There is no equation to generate points from");
    if (fit.NPoints() < 1 || fit.NPoints() > kMaxGeneratedPoints)
        throw ELumoError("The number of points must lie between 1 and " +
                         std::to_string(kMaxGeneratedPoints));
    if (series.ExtentsStale()) series.RecalcExtents();
    const TXRange range = CurveRange(series);
    if (!(range.From < range.To))
        throw ELumoError("There is no range of X between " + RangeText(range) + "; set the margins");
    fit.Compile();
    TPointChain points = PointsAt(EvenPlaces(range, fit.NPoints()), fit, series.MergeRule());
    if (points.IsEmpty()) throw ELumoError("The equation has no value between " + RangeText(range));
    const TUpdateHold hold(series);
    if (series.XSource()) series.SetUseXAxisSeries(false); // the points have X of their own now
    series.SwapPoints(std::move(points));
    series.DataSourceInfo().SetYErrorRule({}); // a curve has no errors
    NotePointsAreMade(series);
}

} // namespace lumoplot
