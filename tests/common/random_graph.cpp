#include "common/random_graph.h"

#include "data/series/ds_info.h"
#include "fit/definition/cur_fit.h"
#include "graph/model/child_graph.h"

#include <array>
#include <cmath>

namespace lumoplot {
namespace {

int Int(TRandom& random, int low, int high) {
    return std::uniform_int_distribution(low, high)(random);
}

bool Bool(TRandom& random) {
    return Int(random, 0, 1) == 1;
}

double Double(TRandom& random) {
    return std::uniform_real_distribution(-1.0, 1.0)(random) * std::pow(10.0, Int(random, -8, 8));
}

template <class TEnum>
TEnum Enum(TRandom& random, TEnum last) {
    return static_cast<TEnum>(Int(random, 0, static_cast<int>(last)));
}

TColor Color(TRandom& random) {
    return Int(random, 0, 0xFFFFFF);
}

std::string Text(TRandom& random) {
    static const std::array<const char*, 8> kTexts = {
        "", "Run 1", "a\tb", "Ünïcode €", "Ω ≠ α", "\xC2\x81\xC2\x9D", "12.5", "Temperature (°C)"};
    return Bool(random) ? kTexts[static_cast<std::size_t>(Int(random, 0, 7))]
                        : std::string(static_cast<std::size_t>(Int(random, 0, 300)), 'x');
}

TFontSpec Font(TRandom& random) {
    return {Text(random), Int(random, 1, 99), Color(random), Bool(random),
            Bool(random), Bool(random),       Bool(random)};
}

void FillAxis(TAxis& axis, TRandom& random) {
    axis.SetTitle(Text(random));
    axis.SetLabelDecimals(Int(random, 0, 9));
    axis.SetAutoLabelDecimals(Bool(random));
    axis.SetLogCycleDivisions(Int(random, 0, 9));
    axis.SetLogScale(Bool(random));
    axis.SetLabelFormat(Enum(random, TAxis::lfAuto));
    axis.SetMin(Double(random));
    axis.SetMax(Double(random));
    axis.SetStepSize(Double(random));
    axis.SetMinScaleLength(Double(random));
    axis.SetShowAsTime(Bool(random));
    axis.SetDateTimeFormat(Text(random));
    axis.SetDateTickType(Enum(random, TAxis::dt_custom));
    axis.SetEnableAutoTitle(Bool(random));
    axis.SetShowAxis(Bool(random));
    axis.SetReversed(Bool(random));
    axis.SetOffsetType(Enum(random, TAxis::ao_absolute));
    axis.SetOffset(Double(random));
    axis.SetGridlines(Bool(random));
    axis.SetAutoSizing(Bool(random));
    axis.SetAutoStepping(Bool(random));
}

void FillAppearance(TAppearance& appearance, TRandom& random) {
    appearance.SetAxesColor(Color(random));
    appearance.SetBackgroundColor(Color(random));
    appearance.SetMarginColor(Color(random));
    appearance.SetPrintBkgndColor(Bool(random));
    appearance.SetbkgdImageFile(Text(random));
    appearance.SetStretchBkgd(Bool(random));
    appearance.SetGridColor(Color(random));
    appearance.SetGridStyle(Enum(random, TPenStyle::DashDotDot));
    appearance.SetShowGraphLabels(Bool(random));
    appearance.SetPlotOffGraph(Bool(random));
    appearance.SetShowMarks(Bool(random));
    appearance.SetShowTicks(Bool(random));
    appearance.SetGraphTitle(Text(random));
    // Pairs that the two setters accept in one order only are legal as well.
    appearance.SetMaxSteps(Int(random, 20, 90));
    appearance.SetMinSteps(Int(random, 1, 40));
    appearance.SetTitleFont(Font(random));
    appearance.SetCaptionFont(Font(random));
    appearance.SetLabelFont(Font(random));
    appearance.SetCrossAtZero(Bool(random));
    appearance.SetCrossColor(Color(random));
    appearance.SetCrosslength(Int(random, 0, 65535));
    appearance.SetPrintLineStyle(Bool(random));
    appearance.SetDataDirectory(Text(random));
}

void FillDimensions(TDimensions& dimensions, TRandom& random) {
    using TSet = void (TDimensions::*)(int);
    for (const TSet set :
         {&TDimensions::SetBottomMargin, &TDimensions::SetLeftMargin, &TDimensions::SetRightMargin,
          &TDimensions::SetTopMargin, &TDimensions::SetTickLength, &TDimensions::SetXAxisTitleOffset,
          &TDimensions::SetXAxisLabelOffset, &TDimensions::SetYAxisTitleOffset,
          &TDimensions::SetYAxisLabelOffset, &TDimensions::SetGraphTitleOffset,
          &TDimensions::SetPrintXOffsetPct, &TDimensions::SetPrintYOffsetPct, &TDimensions::SetPrintScalePct})
        (dimensions.*set)(Int(random, 0, 300));
    dimensions.SetHorPosition(Double(random));
    dimensions.SetVerPosition(Double(random));
    dimensions.SetHorSize(Double(random));
    dimensions.SetVerSize(Double(random));
}

void FillLegend(TLegend& legend, TRandom& random) {
    legend.Setvisible(Bool(random));
    legend.Setcolor(Color(random));
    legend.SetborderStyle(Enum(random, TLegend::bsSingle));
    legend.SetLayout(Enum(random, TLegend::lsDown));
    legend.Settop(Int(random, -10, 500));
    legend.Setleft(Int(random, -10, 500));
    legend.Setwidth(Int(random, 0, 500));
    legend.Setheight(Int(random, 0, 500));
    legend.Setfont(Font(random));
    legend.SetSymbolSpace(Int(random, 0, 99));
    legend.SetXMargin(Int(random, 0, 99));
    legend.SetYMargin(Int(random, 0, 99));
}

void FillSource(TDSInfo& source, TRandom& random) {
    source.SetKind(Enum(random, TSourceKind::LumoSheet));
    source.SetSourceName(Text(random));
    source.SetDivideTextByWidth(Bool(random));
    source.SetFileHasHeaders(Int(random, -1, 9));
    source.SetTextSeparators(Text(random));
    source.SetTextMarkers(Text(random));
    source.SetXDataColumn(Text(random));
    source.SetYDataColumn(Text(random));
    source.SetRowSamplingFrequency(Int(random, 1, 999));
    source.SetAutoRowHitFreq(Bool(random));
    source.SetColumnWidth(Int(random, 1, 99));
    source.SetRowChoiceMode(Enum(random, TRowChoice::ByX));
    source.SetRowChoiceValue1(Double(random));
    source.SetRowChoiceValue2(Double(random));
    source.SetXFormat(Enum(random, TColumnFormat::DateTime));
    source.SetYFormat(Enum(random, TColumnFormat::DateTime));
}

void FillFit(TCurFit& fit, TRandom& random) {
    fit.SetStatus(Int(random, 0, 3));
    fit.SetXVarName(Text(random));
    fit.SetExpression(Text(random)); // nothing says that it must compile
    fit.SetNPoints(Int(random, 1, 5000));
    fit.SetShowCurve(Bool(random));
    fit.SetCurveColor(Color(random));
    fit.SetCurveStyle(Int(random, 0, 4));
    fit.SetCurveWidth(Int(random, 1, 20));
    fit.SetTolerance(std::abs(Double(random)) + 1e-12);
    fit.SetIterMax(Int(random, 1, 9999));
    fit.SetProcType(Int(random, 0, 3));
    fit.SetUseLeftMargin(Bool(random));
    fit.SetUseRightMargin(Bool(random));
    fit.SetLeftMargin(Double(random));
    fit.SetRightMargin(Double(random));
    for (int i = Int(random, 0, 3); i > 0; --i) {
        auto parameter = std::make_unique<TDBLParameter>();
        parameter->SetName("p" + std::to_string(i));
        parameter->SetValue(Double(random));
        parameter->SetVary(Bool(random));
        parameter->ShowInLegend = Bool(random);
        parameter->StartDeviation = Double(random);
        parameter->Description = Text(random);
        parameter->Units = Text(random);
        fit.AddParameter(std::move(parameter));
    }
    for (int i = Int(random, 0, 2); i > 0; --i)
        fit.AddTemplate(std::make_unique<TDBLFunction>(TDBLFunction{Text(random), Text(random), {}}));
}

void FillStyle(TSeries& series, TRandom& random) {
    series.SetYAxisOfSeries(Bool(random) ? series.Graph().YAxis() : series.Graph().YAxis_Second());
    series.SetActive(Bool(random));
    series.SetLinesShown(Bool(random));
    series.SetPointsShown(Bool(random));
    series.SetFillPoints(Bool(random));
    series.SetLineColor(Color(random));
    series.SetPointColor(Color(random));
    series.SetBoundsColor(Color(random));
    series.SetPointShape(Enum(random, TPointShape::DownTriangle));
    series.SetPointSize(Int(random, 0, 50));
    series.SetLineStyle(Enum(random, TPenStyle::DashDotDot));
    series.SetLineWidth(Int(random, 1, 20));
    series.SetPointBorderWidth(Int(random, 1, 20));
    series.SetUpperBound(Double(random));
    series.SetLowerBound(Double(random));
    series.SetBoundsType(Enum(random, TBoundsType::AllSD));
    series.SetBoundsLineStyle(Enum(random, TPenStyle::DashDotDot));
    series.SetShowInLegend(Bool(random));
    series.SetRegressionColor(Color(random));
    series.SetRegressionLineStyle(Enum(random, TPenStyle::DashDotDot));
    series.SetRegressionLineWidth(Int(random, 1, 20));
}

void FillSeries(TSeries& series, TRandom& random) {
    series.SetSeriesName(Text(random));
    series.SetSeriesFlag(Bool(random));
    series.SetXColExpr(Text(random));
    series.SetYColExpr(Text(random));
    series.SetRegressionType(Int(random, 0, 7));
    series.SetRegressionControlValue1(Int(random, -5, 500));
    series.SetRegressionControlValue2(Double(random));
    series.SetDuplicatesAllowed(Bool(random));
    FillStyle(series, random);
    FillSource(series.DataSourceInfo(), random);
    FillFit(series.CurveFit(), random);
    for (int i = Int(random, 0, 20); i > 0; --i) series.AddPoint(Int(random, -9, 9), Double(random));
    series.SetAutoZero(Bool(random));
    if (!series.AutoZero()) {
        series.SetZeroValue(Double(random));
        series.SetBaseLineSlope(Double(random));
    }
    series.RecalcExtents();
}

TGraphMark RandomMark(TRandom& random) {
    return {Int(random, 1, 30),
            Double(random),
            Double(random),
            Double(random),
            Double(random),
            Color(random),
            Text(random),
            Enum(random, TMarkType::Line),
            Enum(random, TMarkDrawing::None)};
}

} // namespace

void FillRandomly(TxyGraph& graph, TRandom& random, int childDepth) {
    FillAppearance(*graph.Appearance(), random);
    FillDimensions(*graph.Dimensions(), random);
    for (TAxis* axis : {graph.XAxis(), graph.YAxis(), graph.YAxis_Second()}) FillAxis(*axis, random);
    FillLegend(*graph.Legend(), random);
    for (int i = Int(random, 0, 4); i > 0; --i) FillSeries(*graph.FindSeries(graph.AddSeries()), random);
    for (int i = Int(random, 0, 4); i > 0; --i) graph.SetMark(RandomMark(random));
    if (childDepth > 0)
        for (int i = Int(random, 0, 2); i > 0; --i)
            FillRandomly(*graph.AddChildGraph(), random, childDepth - 1);
    graph.Appearance()->SetCurrSerIndex(Int(random, 0, 5));
    graph.Appearance()->SetXAxisSerIndex(Int(random, 0, 5));
}

TBytes FileOf(const TxyGraph& graph, TPoints points) {
    TBytes bytes;
    graph.SaveToStream(bytes, points);
    return bytes;
}

void LoadBytes(TxyGraph& graph, const TBytes& bytes) {
    TByteSource source(bytes);
    graph.LoadFromStream(source);
}

} // namespace lumoplot
