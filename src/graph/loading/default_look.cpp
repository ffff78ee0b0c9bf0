#include "graph/loading/default_look.h"

#include "graph/model/graph.h"
#include "support/update_hold.h"

namespace lumoplot {
namespace {

constexpr int kMostPointsAsSymbols = 400;
constexpr TColor kAxisGray = MakeColor(64, 64, 64);
constexpr TColor kGridGray = MakeColor(208, 208, 208);

TFontSpec Font(int size, bool bold = false) {
    TFontSpec font;
    font.Size = size;
    font.Bold = bold;
    return font;
}

} // namespace

void ApplyDefaultLook(TxyGraph& graph) {
    TAppearance& appearance = *graph.Appearance();
    appearance.SetCaptionFont(Font(18, true));
    appearance.SetTitleFont(Font(15));
    appearance.SetLabelFont(Font(13));
    appearance.SetAxesColor(kAxisGray);
    appearance.SetGridColor(kGridGray);
    TDimensions& dimensions = *graph.Dimensions();
    dimensions.SetLeftMargin(80);
    dimensions.SetRightMargin(32);
    dimensions.SetTopMargin(56);
    dimensions.SetBottomMargin(64);
    dimensions.SetTickLength(6);
    dimensions.SetXAxisLabelOffset(4);
    dimensions.SetYAxisLabelOffset(4);
    dimensions.SetXAxisTitleOffset(8);
    dimensions.SetYAxisTitleOffset(8);
    dimensions.SetGraphTitleOffset(16);
    TLegend& legend = *graph.Legend();
    legend.Setfont(Font(13));
    legend.SetLayout(TLegend::lsDown);
    legend.SetborderStyle(TLegend::bsSingle);
    legend.SetAutoPlace(true);
    legend.Setwidth(0);
    legend.Setheight(0);
}

void ApplyDefaultStyle(TSeries& series) {
    const bool fewPoints = series.Count() <= kMostPointsAsSymbols;
    const TUpdateHold hold(series);
    series.SetPointSize(6);
    series.SetPointBorderWidth(1);
    series.SetLineWidth(1);
    series.SetShowInLegend(true);
    series.SetPointsShown(fewPoints);
    series.SetLinesShown(!fewPoints || !series.DuplicatesAllowed());
}

} // namespace lumoplot
