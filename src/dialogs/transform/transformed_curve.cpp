#include "dialogs/transform/transformed_curve.h"

#include "data/series/ds_info.h"
#include "data/series/plotted_values.h"
#include "data/series/y_error_rule.h"
#include "graph/loading/default_look.h"
#include "graph/model/axis.h"
#include "graph/model/graph.h"
#include "graph/model/series_palette.h"
#include "support/update_hold.h"

namespace lumoplot {
namespace {

constexpr int kPreviewFont = 12;
constexpr int kPreviewMargin = 20;

TPointChain PointChainOf(const TCurveValues& curve) {
    TPointChain points;
    points.AddAll(curve.X, curve.Y, {.DuplicatesAllowed = true}, curve.YErrors);
    return points;
}

} // namespace

TCurveValues CorrectedCurve(const TSeries& series) {
    TPlottedValues values = PlottedValues(series);
    return {std::move(values.X), std::move(values.Y), std::move(values.YErrors)};
}

TSeries& AddPreviewCurve(TxyGraph& preview, const std::string& name, TColor color, int width) {
    TSeries& curve = *preview.FindSeries(preview.AddSeries());
    curve.SetSeriesName(name);
    curve.SetPointsShown(false);
    curve.SetLinesShown(true);
    curve.SetLineColor(color);
    curve.SetLineWidth(width);
    curve.SetShowInLegend(true);
    return curve;
}

void ShowCurve(TSeries& shown, const TCurveValues& curve) {
    shown.SwapPoints(PointChainOf(curve));
}

void SetUpPreview(TxyGraph& preview, const TSeries& of) {
    ApplyDefaultLook(preview);
    TAppearance& look = *preview.Appearance();
    look.SetGraphTitle({});
    for (const auto set : {&TAppearance::SetTitleFont, &TAppearance::SetLabelFont}) {
        TFontSpec font = look.LabelFont();
        font.Size = kPreviewFont;
        (look.*set)(font);
    }
    preview.Dimensions()->SetTopMargin(kPreviewMargin);
    preview.Dimensions()->SetRightMargin(kPreviewMargin);
    preview.Legend()->Setvisible(true);
    const TAxis& x = *of.Graph().XAxis();
    preview.XAxis()->SetShowAsTime(x.ShowAsTime());
    preview.XAxis()->SetDateTimeFormat(x.DateTimeFormat());
    preview.XAxis()->SetDateTickType(x.DateTickType());
    preview.XAxis()->SetEnableAutoTitle(false);
    preview.YAxis()->SetEnableAutoTitle(false);
    preview.XAxis()->SetTitle(x.Title());
    preview.YAxis()->SetTitle(of.YAxisOfSeries()->Title());
}

void PutCurve(TSeries& target, const TCurveValues& curve) {
    const TUpdateHold hold(target);
    target.SetAutoZero(false);
    target.SetZeroValue(0);
    target.SetBaseLineSlope(0);
    target.SwapPoints(PointChainOf(curve));
    target.DataSourceInfo().SetYErrorRule({});             // the errors are those of the new points
    if (target.XSource()) target.SetUseXAxisSeries(false); // the points have X of their own now
}

void AddCurve(TSeries& like, const TCurveValues& curve, const std::string& name) {
    TxyGraph& graph = like.Graph();
    const int number = graph.AddSeries();
    TSeries& added = *graph.FindSeries(number);
    added.CopyFrom(like);
    added.SetSeriesName(name);
    added.DataSourceInfo().SetKind(TSourceKind::Manual);
    added.DataSourceInfo().SetNeedsReload(false);
    added.SetThinned(false);
    TakeNextStyle(added);
    PutCurve(added, curve);
    graph.Appearance()->SetCurrSerIndex(number);
}

} // namespace lumoplot
