#include "graph/file/graph_file.h"

namespace lumoplot {
namespace {

bool IsSavedWithData(const TAppearance& appearance) {
    return appearance.Graph().SavedWithData();
}

void AssignFirstAxis(TSeries& series, bool first) {
    series.SetYAxisOfSeries(first ? series.Graph().YAxis() : series.Graph().YAxis_Second());
}

// A row of a plain field of a mark.
template <auto Field>
constexpr TSectionRow<TGraphMark> MarkRow(int key, const char* name) {
    using TValue = std::remove_cvref_t<decltype(std::declval<TGraphMark>().*Field)>;
    return Row<TGraphMark, [](const TGraphMark& mark) { return mark.*Field; },
               [](TGraphMark& mark, TValue value) { mark.*Field = value; }>(key, name);
}

template <class TEnum>
TEnum Clamped(TEnum value, TEnum last) {
    return static_cast<int>(value) < 0 || value > last ? last : value;
}

} // namespace

std::span<const TSectionRow<TAppearance>> AppearanceRows() {
    using A = TAppearance;
    static constexpr TSectionRow<A> kRows[] = {
        Row<A, &A::AllowDuplicates, &A::SetAllowDuplicates>(1, "DuplicatesAllowed"),
        Row<A, &A::AxesColor, &A::SetAxesColor>(2, "AxesColor"),
        Row<A, &A::BackgroundColor, &A::SetBackgroundColor>(3, "Color"),
        Row<A, &A::MarginColor, &A::SetMarginColor>(4, "MarginColor"),
        Row<A, &A::PrintBkgndColor, &A::SetPrintBkgndColor>(5, "PrintwithBackground"),
        ReadOnlyRow<A, std::string, &A::SetErrorCaption>(6, "ErrorCaption"),
        Row<A, &A::GridColor, &A::SetGridColor>(7, "GridColor"),
        Row<A, &A::GridStyle, &A::SetGridStyle>(8, "GridLineStyle"),
        Row<A, &A::ShowGraphLabels, &A::SetShowGraphLabels>(9, "GridLabelsShown"),
        Row<A, &A::PlotOffGraph, &A::SetPlotOffGraph>(10, "ShowPointsOutsidePlotArea"),
        Row<A, &A::ShowMarks, &A::SetShowMarks>(11, "MarksAreShown"),
        Row<A, &A::ShowTicks, &A::SetShowTicks>(12, "TicksAreShown"),
        Row<A, &A::GraphTitle, &A::SetGraphTitle>(13, "TitleOfGraph"),
        Row<A, &A::MinSteps, &A::SetFiledMinSteps>(14, "MinimumStepsShown"),
        Row<A, &A::MaxSteps, &A::SetFiledMaxSteps>(15, "MaximumStepsShown"),
        Row<A, &A::TitleFont, &A::SetTitleFont>(16, "FontForAxesTitles"),
        Row<A, &A::CaptionFont, &A::SetCaptionFont>(17, "FontForTitle"),
        Row<A, &A::LabelFont, &A::SetLabelFont>(18, "FontForLabels"),
        Row<A, &A::CrossAtZero, &A::SetCrossAtZero>(19, "ShowCrossAtZero"),
        Row<A, &A::CrossColor, &A::SetCrossColor>(20, "ColorOfCross"),
        Row<A, &A::Crosslength, &A::SetCrosslength>(21, "LengthOfCross"),
        Row<A, &A::PrintLineStyle, &A::SetPrintLineStyle>(22, "PrintStyleforLines"),
        Row<A, &A::XAxisSerIndex, &A::SetHoldXAxisSerIndex>(35, "XAxisSerIndex"),
        Row<A, &A::CurrSerIndex, &A::SetHoldCurrSerIndex>(36, "CurrSerIndex"),
        Row<A, &A::bkgdImageFile, &A::SetbkgdImageFile>(38, "bkgdImageFile"),
        Row<A, &A::StretchBkgd, &A::SetStretchBkgd>(39, "stretchBkgd"),
        Row<A, &A::DataDirectory, &A::SetDataDirectory>(40, "dataDirectory", nullptr, &IsSavedWithData),
    };
    return kRows;
}

std::span<const TSectionRow<TDimensions>> DimensionsRows() {
    using D = TDimensions;
    static constexpr TSectionRow<D> kRows[] = {
        Row<D, &D::BottomMargin, &D::SetBottomMargin>(1, "BottomMargin"),
        Row<D, &D::LeftMargin, &D::SetLeftMargin>(2, "LeftMargin"),
        Row<D, &D::RightMargin, &D::SetRightMargin>(3, "RightMargin"),
        Row<D, &D::TopMargin, &D::SetTopMargin>(4, "TopMargin"),
        Row<D, &D::TickLength, &D::SetTickLength>(5, "TickLength"),
        Row<D, &D::XAxisTitleOffset, &D::SetXAxisTitleOffset>(6, "XAxisTitleOffset"),
        Row<D, &D::XAxisLabelOffset, &D::SetXAxisLabelOffset>(7, "XAxisLabelOffset"),
        Row<D, &D::YAxisTitleOffset, &D::SetYAxisTitleOffset>(8, "YAxisTitleOffset"),
        Row<D, &D::YAxisLabelOffset, &D::SetYAxisLabelOffset>(9, "YAxisLabelOffset"),
        Row<D, &D::GraphTitleOffset, &D::SetGraphTitleOffset>(10, "GraphTitleOffset"),
        Row<D, &D::PrintXOffsetPct, &D::SetPrintXOffsetPct>(11, "PrintXOffsetPct"),
        Row<D, &D::PrintYOffsetPct, &D::SetPrintYOffsetPct>(12, "PrintYOffsetPct"),
        Row<D, &D::PrintScalePct, &D::SetPrintScalePct>(13, "PrintScalePct"),
        Row<D, &D::HorPosition, &D::SetHorPosition>(14, "HorPosition"),
        Row<D, &D::VerPosition, &D::SetVerPosition>(15, "VerPosition"),
        Row<D, &D::HorSize, &D::SetHorSize>(16, "HorSize"),
        Row<D, &D::VerSize, &D::SetVerSize>(17, "VerSize"),
    };
    return kRows;
}

// EnableAutoTitle and LabelFormat are written before the two switches that the setters of the range turn off.
std::span<const TSectionRow<TAxis>> AxisRows() {
    using X = TAxis;
    static constexpr TSectionRow<X> kRows[] = {
        Row<X, &X::Title, &X::SetTitle>(1, "AxisTitle"),
        Row<X, &X::LabelDecimals, &X::SetLabelDecimals>(2, "NumberOfDecimals"),
        Row<X, &X::AutoLabelDecimals, &X::SetAutoLabelDecimals>(3, "AdjustDecPlaces"),
        Row<X, &X::LogCycleDivisions, &X::SetLogCycleDivisions>(4, "LogDivisions"),
        Row<X, &X::LogScale, &X::SetLogScale>(5, "useLogScale"),
        Row<X, &X::Max, &X::SetMax>(6, "Max"),
        Row<X, &X::Min, &X::SetMin>(7, "Min"),
        Row<X, &X::StepSize, &X::SetStepSize>(8, "TickSpace"),
        Row<X, &X::MinScaleLength, &X::SetMinScaleLength>(9, "MinimumScale"),
        Row<X, &X::ShowAsTime, &X::SetShowAsTime>(10, "ShowAsTime"),
        Row<X, &X::DateTimeFormat, &X::SetDateTimeFormat>(11, "TimeFormat"),
        Row<X, &X::DateTickType, &X::SetDateTickType>(12, "TimeTickMode"),
        Row<X, &X::ShowAxis, &X::SetShowAxis>(13, "AxisVisible"),
        Row<X, &X::Reversed, &X::SetReversed>(14, "FlipAxis"),
        Row<X, &X::OffsetType, &X::SetOffsetType>(15, "OffsetMode"),
        Row<X, &X::Offset, &X::SetOffset>(16, "OffSetValue"),
        Row<X, &X::Gridlines, &X::SetGridlines>(17, "ShowGridlines"),
        Row<X, &X::EnableAutoTitle, &X::SetEnableAutoTitle>(20, "EnableAutoTitle"),
        Row<X, &X::LabelFormat, &X::SetLabelFormat>(21, "LabelFormat"),
        Row<X, &X::AutoSizing, &X::SetAutoSizing>(18, "AllowAutoSize"),
        Row<X, &X::AutoStepping, &X::SetAutoStepping>(19, "AllowTickRescale"),
    };
    return kRows;
}

std::span<const TSectionRow<TLegend>> LegendRows() {
    using L = TLegend;
    static constexpr TSectionRow<L> kRows[] = {
        Row<L, &L::visible, &L::Setvisible>(1, "LegendIsVisible"),
        Row<L, &L::color, &L::Setcolor>(2, "LegendColor"),
        Row<L, &L::borderStyle, &L::SetborderStyle>(3, "borderStyle"),
        Row<L, &L::Layout, &L::SetLayout>(4, "LayoutMode"),
        Row<L, &L::top, &L::Settop>(5, "Legendtop"),
        Row<L, &L::left, &L::Setleft>(6, "Legendleft"),
        Row<L, &L::width, &L::Setwidth>(7, "Legendwidth"),
        Row<L, &L::height, &L::Setheight>(8, "Legendheight"),
        Row<L, &L::font, &L::Setfont>(9, "Legendfont"),
        Row<L, &L::SymbolSpace, &L::SetSymbolSpace>(10, "SpaceForSymbols"),
        Row<L, &L::XMargin, &L::SetXMargin>(11, "XMargin"),
        Row<L, &L::YMargin, &L::SetYMargin>(12, "YMargin"),
    };
    return kRows;
}

std::span<const TSectionRow<TSeries>> SeriesRows() {
    using S = TSeries;
    static constexpr TSectionRow<S> kRows[] = {
        Row<S, &S::Active, &S::SetActive>(1, "", "Active"),
        Row<S, &S::LinesShown, &S::SetLinesShown>(2, "", "LinesShown"),
        Row<S, &S::PointsShown, &S::SetPointsShown>(3, "", "PointsShown"),
        Row<S, &S::FillPoints, &S::SetFillPoints>(4, "", "FillPoints"),
        Row<S, &S::LineColor, &S::SetLineColor>(5, "", "LineColor"),
        Row<S, &S::PointColor, &S::SetPointColor>(6, "", "PointColor"),
        Row<S, &S::BoundsColor, &S::SetBoundsColor>(7, "", "BoundsColor"),
        Row<S, &S::PointShape, &S::SetPointShape>(8, "", "PointShape"),
        Row<S, &S::LineStyle, &S::SetLineStyle>(9, "", "LineStyle"),
        Row<S, &S::PointSize, &S::SetPointSize>(10, "", "PointSize"),
        Row<S, [](const S& series) { return !series.IsOnSecondY(); }, &AssignFirstAxis>(11, "FirstAxis"),
        Row<S, &S::UpperBound, &S::SetUpperBound>(12, "UpperBound"),
        Row<S, &S::LowerBound, &S::SetLowerBound>(13, "LowerBound"),
        Row<S, &S::BoundsType, &S::SetBoundsType>(14, "BoundsMode"),
        Row<S, &S::BoundsLineStyle, &S::SetBoundsLineStyle>(15, "BoundLineMode"),
        Row<S, &S::RegressionColor, &S::SetRegressionColor>(16, "RegressionLineColor"),
        Row<S, &S::RegressionLineStyle, &S::SetRegressionLineStyle>(17, "RegressionLineStyle"),
        Row<S, [](const S& series) { return series.ShowInLegend() ? 1 : 0; },
            [](S& series, int value) { series.SetShowInLegend(value != 0); }>(18, "ShowInLegend"),
        Row<S, &S::LineWidth, &S::SetLineWidth>(19, "", "LineWidth"),
        Row<S, &S::PointBorderWidth, &S::SetPointBorderWidth>(20, "", "PointBorderWidth"),
        Row<S, &S::RegressionLineWidth, &S::SetRegressionLineWidth>(21, "", "RegressionLineWidth"),
        Row<S, &S::SeriesFlag, &S::SetSeriesFlag>(22, "", "SeriesFlag"),
    };
    return kRows;
}

std::span<const TSectionRow<TGraphMark>> MarkRows() {
    using M = TGraphMark;
    static constexpr TSectionRow<M> kRows[] = {
        MarkRow<&M::ID>(1, "ID "),
        MarkRow<&M::X1>(2, "X1Value"),
        MarkRow<&M::Y1>(3, "Y1Value"),
        MarkRow<&M::X2>(4, "X2Value"),
        MarkRow<&M::Y2>(5, "Y2Value"),
        MarkRow<&M::Color>(6, "Color"),
        MarkRow<&M::Caption>(7, "Caption"),
        Row<M, [](const M& mark) { return mark.TypeOfMark; },
            [](M& mark, TMarkType type) { mark.TypeOfMark = Clamped(type, TMarkType::Line); }>(8,
                                                                                               "TypeOfMark"),
        Row<M, [](const M& mark) { return mark.WhenDrawn; },
            [](M& mark, TMarkDrawing drawing) { mark.WhenDrawn = Clamped(drawing, TMarkDrawing::None); }>(
            9, "WhenDrawn"),
    };
    return kRows;
}

} // namespace lumoplot
