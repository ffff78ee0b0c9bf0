#include "graph/model/setting_rows.h"
#include "graph/model/series_palette.h"

#include "graph/model/graph.h"

#include <array>

namespace lumoplot {
namespace {

// What a setting is given by ResetToDefaults: a value, or what a function of its object gives.
template <auto Field, auto Default, class T>
void PutDefault(T& object) {
    if constexpr (std::is_invocable_v<decltype(Default), T&>)
        object.*Field = std::invoke(Default, object);
    else if constexpr (std::is_invocable_v<decltype(Default)>)
        object.*Field = Default();
    else
        object.*Field = Default;
}

/// A setting: where it lives, how it is read and stored, its default and its row in files.
template <class T, auto Field, auto Get, auto Set, auto Default>
constexpr TSectionRow<T> Setting(int key, const char* name, const char* label = nullptr,
                                 TRowOf rowOf = TRowOf::EverySection) {
    TSectionRow<T> row = Row<T, Get, Set>(key, name, label, rowOf);
    row.reset = &PutDefault<Field, Default, T>;
    return row;
}

template <class T, auto Field, auto Set, auto Default>
constexpr TSectionRow<T> ReadOnlySetting(int key, const char* label) {
    using TValue = std::remove_cvref_t<decltype(std::declval<T>().*Field)>;
    TSectionRow<T> row = ReadOnlyRow<T, TValue, Set>(key, label);
    row.reset = &PutDefault<Field, Default, T>;
    return row;
}

constexpr auto kNoText = [] { return ""; };
constexpr int kLastFilledNumber = 8;

template <class T>
TColor ColorOf(const T& settings) {
    return settings.Graph().Color();
}

template <class T>
TFontSpec FontOf(const T& settings) {
    return settings.Graph().Font();
}

bool IsFirst(const TAxis& axis) {
    return !axis.IsSecondY();
}

const char* TitleOf(const TAxis& axis) {
    return axis.Role() == TAxisRole::X ? "X axis" : axis.IsSecondY() ? "Y2 axis" : "Y axis";
}

TColor ColorOfNumber(const TSeries& series) {
    return kSeriesColors[static_cast<std::size_t>(std::max(0, series.SeriesIndex() % 16))];
}

TPointShape ShapeOfNumber(const TSeries& series) {
    return kSeriesShapes[static_cast<std::size_t>(std::max(0, series.SeriesIndex() % 8))];
}

void AssignFirstAxis(TSeries& series, bool first) {
    series.SetYAxisOfSeries(first ? series.Graph().YAxis() : series.Graph().YAxis_Second());
}

// A row of one of the wishes for the reading of the source's text, which is filed where there is one. Numbers
// without a meaning are ignored.
template <auto Wish, auto IsMeaning>
constexpr TSectionRow<TSeries> WishRow(int key, const char* label) {
    using TValue = typename std::remove_cvref_t<decltype(std::declval<TTextWishes>().*Wish)>::value_type;
    auto row = Row<TSeries,
                   [](const TSeries& series) {
                       const auto wish = series.TextWishes().*Wish;
                       return wish ? static_cast<int>(*wish) : -1;
                   },
                   [](TSeries& series, int value) {
                       if (!IsMeaning(value)) return;
                       TTextWishes wishes = series.TextWishes();
                       wishes.*Wish = static_cast<TValue>(value);
                       series.SetTextWishes(wishes);
                   }>(key, "", label);
    row.write = [](TxyWriter& writer, const TSectionRow<TSeries>& self, const TSeries& series) {
        const auto wish = series.TextWishes().*Wish;
        if (wish) writer.WriteInteger(self.key, self.name, static_cast<int>(*wish));
    };
    return row;
}

template <auto Last>
bool IsUpTo(int value) {
    return value >= 0 && value <= static_cast<int>(Last);
}

// That of the text markers, which may be none.
constexpr TSectionRow<TSeries> QuotesWishRow(int key, const char* label) {
    auto row = Row<TSeries, [](const TSeries& series) { return series.TextWishes().quotes.value_or(""); },
                   [](TSeries& series, const std::string& value) {
                       TTextWishes wishes = series.TextWishes();
                       wishes.quotes = value;
                       series.SetTextWishes(wishes);
                   }>(key, "", label);
    row.write = [](TxyWriter& writer, const TSectionRow<TSeries>& self, const TSeries& series) {
        const auto& quotes = series.TextWishes().quotes;
        if (quotes) writer.WriteString(self.key, self.name, *quotes);
    };
    return row;
}

// Written for a data set that has X of its own where others have those of the X data set.
constexpr TSectionRow<TSeries> OwnXRow(int key, const char* label) {
    constexpr auto kHasOwnX = [](const TSeries& series) {
        return series.Graph().Appearance()->XAxisSerIndex() > 0 && !series.UseXAxisSeries();
    };
    auto row = Row<TSeries, kHasOwnX, [](TSeries& series, bool own) { series.RestoreUseXAxisSeries(!own); }>(
        key, "", label, TRowOf::SectionsWithPoints);
    row.write = [](TxyWriter& writer, const TSectionRow<TSeries>& self, const TSeries& series) {
        if (std::get<bool>(self.get(series))) writer.WriteBoolean(self.key, self.name, true);
    };
    return row;
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
        Setting<A, &A::m_allowDuplicates, &A::AllowDuplicates, &A::SetAllowDuplicates, false>(
            1, "DuplicatesAllowed"),
        Setting<A, &A::m_axesColor, &A::AxesColor, &A::SetAxesColor, kBlack>(2, "AxesColor"),
        Setting<A, &A::m_backgroundColor, &A::BackgroundColor, &A::SetBackgroundColor, &ColorOf<A>>(3,
                                                                                                    "Color"),
        Setting<A, &A::m_marginColor, &A::MarginColor, &A::SetMarginColor, &ColorOf<A>>(4, "MarginColor"),
        Setting<A, &A::m_printBkgndColor, &A::PrintBkgndColor, &A::SetPrintBkgndColor, false>(
            5, "PrintwithBackground"),
        ReadOnlySetting<A, &A::m_errorCaption, &A::SetErrorCaption,
                        [] { return "MAX/MIN VALUES INCONSISTENT"; }>(6, "ErrorCaption"),
        Setting<A, &A::m_gridColor, &A::GridColor, &A::SetGridColor, kSilver>(7, "GridColor"),
        Setting<A, &A::m_gridStyle, &A::GridStyle, &A::SetGridStyle, TPenStyle::Dot>(8, "GridLineStyle"),
        Setting<A, &A::m_showGraphLabels, &A::ShowGraphLabels, &A::SetShowGraphLabels, true>(
            9, "GridLabelsShown"),
        Setting<A, &A::m_plotOffGraph, &A::PlotOffGraph, &A::SetPlotOffGraph, false>(
            10, "ShowPointsOutsidePlotArea"),
        Setting<A, &A::m_showMarks, &A::ShowMarks, &A::SetShowMarks, false>(11, "MarksAreShown"),
        Setting<A, &A::m_showTicks, &A::ShowTicks, &A::SetShowTicks, true>(12, "TicksAreShown"),
        Setting<A, &A::m_graphTitle, &A::GraphTitle, &A::SetGraphTitle, kNoText>(13, "TitleOfGraph"),
        Setting<A, &A::m_minSteps, &A::MinSteps, &A::SetFiledMinSteps, 5>(14, "MinimumStepsShown"),
        Setting<A, &A::m_maxSteps, &A::MaxSteps, &A::SetFiledMaxSteps, 50>(15, "MaximumStepsShown"),
        Setting<A, &A::m_titleFont, &A::TitleFont, &A::SetTitleFont, &FontOf<A>>(16, "FontForAxesTitles"),
        Setting<A, &A::m_captionFont, &A::CaptionFont, &A::SetCaptionFont, &FontOf<A>>(17, "FontForTitle"),
        Setting<A, &A::m_labelFont, &A::LabelFont, &A::SetLabelFont, &FontOf<A>>(18, "FontForLabels"),
        Setting<A, &A::m_crossAtZero, &A::CrossAtZero, &A::SetCrossAtZero, false>(19, "ShowCrossAtZero"),
        Setting<A, &A::m_crossColor, &A::CrossColor, &A::SetCrossColor, kRed>(20, "ColorOfCross"),
        Setting<A, &A::m_crossLength, &A::Crosslength, &A::SetCrosslength, 4>(21, "LengthOfCross"),
        Setting<A, &A::m_printLineStyle, &A::PrintLineStyle, &A::SetPrintLineStyle, true>(
            22, "PrintStyleforLines"),
        Row<A, &A::XAxisSerIndex, &A::SetHoldXAxisSerIndex>(35, "XAxisSerIndex"),
        Row<A, &A::CurrSerIndex, &A::SetHoldCurrSerIndex>(36, "CurrSerIndex"),
        Setting<A, &A::m_bkgdImageFile, &A::bkgdImageFile, &A::SetbkgdImageFile, kNoText>(38,
                                                                                          "bkgdImageFile"),
        Setting<A, &A::m_stretchBkgd, &A::StretchBkgd, &A::SetStretchBkgd, false>(39, "stretchBkgd"),
        Setting<A, &A::m_dataDirectory, &A::DataDirectory, &A::SetDataDirectory, kNoText>(
            40, "dataDirectory", nullptr, TRowOf::SectionsWithPoints),
        Setting<A, &A::m_showFrame, &A::ShowFrame, &A::SetShowFrame, false>(60, "FrameIsShown"),
        Setting<A, &A::m_ticksInside, &A::TicksInside, &A::SetTicksInside, false>(61, "TicksInside"),
        Setting<A, &A::m_fitBands, &A::FitBands, &A::SetFitBands, TFitBands::None>(62, "FitBands"),
        Setting<A, &A::m_showResiduals, &A::ShowResiduals, &A::SetShowResiduals, false>(63,
                                                                                        "ResidualsAreShown"),
    };
    return kRows;
}

std::span<const TSectionRow<TDimensions>> DimensionsRows() {
    using D = TDimensions;
    static constexpr TSectionRow<D> kRows[] = {
        Setting<D, &D::m_bottomMargin, &D::BottomMargin, &D::SetBottomMargin, 40>(1, "BottomMargin"),
        Setting<D, &D::m_leftMargin, &D::LeftMargin, &D::SetLeftMargin, 40>(2, "LeftMargin"),
        Setting<D, &D::m_rightMargin, &D::RightMargin, &D::SetRightMargin, 15>(3, "RightMargin"),
        Setting<D, &D::m_topMargin, &D::TopMargin, &D::SetTopMargin, 30>(4, "TopMargin"),
        Setting<D, &D::m_tickLength, &D::TickLength, &D::SetTickLength, 4>(5, "TickLength"),
        Setting<D, &D::m_xAxisTitleOffset, &D::XAxisTitleOffset, &D::SetXAxisTitleOffset, 4>(
            6, "XAxisTitleOffset"),
        Setting<D, &D::m_xAxisLabelOffset, &D::XAxisLabelOffset, &D::SetXAxisLabelOffset, 2>(
            7, "XAxisLabelOffset"),
        Setting<D, &D::m_yAxisTitleOffset, &D::YAxisTitleOffset, &D::SetYAxisTitleOffset, 4>(
            8, "YAxisTitleOffset"),
        Setting<D, &D::m_yAxisLabelOffset, &D::YAxisLabelOffset, &D::SetYAxisLabelOffset, 2>(
            9, "YAxisLabelOffset"),
        Setting<D, &D::m_graphTitleOffset, &D::GraphTitleOffset, &D::SetGraphTitleOffset, 7>(
            10, "GraphTitleOffset"),
        Setting<D, &D::m_printXOffsetPct, &D::PrintXOffsetPct, &D::SetPrintXOffsetPct, 5>(11,
                                                                                          "PrintXOffsetPct"),
        Setting<D, &D::m_printYOffsetPct, &D::PrintYOffsetPct, &D::SetPrintYOffsetPct, 20>(12,
                                                                                           "PrintYOffsetPct"),
        Setting<D, &D::m_printScalePct, &D::PrintScalePct, &D::SetPrintScalePct, 90>(13, "PrintScalePct"),
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
        Setting<X, &X::m_title, &X::Title, &X::SetTitle, &TitleOf>(1, "AxisTitle"),
        Setting<X, &X::m_labelDecimals, &X::LabelDecimals, &X::SetLabelDecimals, 1>(2, "NumberOfDecimals"),
        Setting<X, &X::m_autoLabelDecimals, &X::AutoLabelDecimals, &X::SetAutoLabelDecimals,
                [](const X& axis) { return axis.m_autoLabelDecimals || !axis.IsSecondY(); }>(
            3, "AdjustDecPlaces"),
        Setting<X, &X::m_logCycleDivisions, &X::LogCycleDivisions, &X::SetLogCycleDivisions, 2>(
            4, "LogDivisions"),
        Setting<X, &X::m_logScale, &X::LogScale, &X::SetLogScale, false>(5, "useLogScale"),
        Setting<X, &X::m_max, &X::Max, &X::SetMax, 1.0>(6, "Max"),
        Setting<X, &X::m_min, &X::Min, &X::SetMin, 0.0>(7, "Min"),
        Setting<X, &X::m_stepSize, &X::StepSize, &X::SetStepSize, 0.2>(8, "TickSpace"),
        Setting<X, &X::m_minScaleLength, &X::MinScaleLength, &X::SetMinScaleLength, 0.0>(9, "MinimumScale"),
        Setting<X, &X::m_showAsTime, &X::ShowAsTime, &X::SetShowAsTime, false>(10, "ShowAsTime"),
        Setting<X, &X::m_dateTimeFormat, &X::DateTimeFormat, &X::SetDateTimeFormat, [] { return "dd-mmm"; }>(
            11, "TimeFormat"),
        Setting<X, &X::m_dateTickType, &X::DateTickType, &X::SetDateTickType, X::dt_minute>(12,
                                                                                            "TimeTickMode"),
        Setting<X, &X::m_showAxis, &X::ShowAxis, &X::SetShowAxis, &IsFirst>(13, "AxisVisible"),
        Setting<X, &X::m_reversed, &X::Reversed, &X::SetReversed, &X::IsSecondY>(14, "FlipAxis"),
        Setting<X, &X::m_offsetType, &X::OffsetType, &X::SetOffsetType,
                [](const X& axis) { return axis.IsSecondY() ? X::ao_Maximum : X::ao_Minimum; }>(15,
                                                                                                "OffsetMode"),
        Setting<X, &X::m_offset, &X::Offset, &X::SetOffset, 0.0>(16, "OffSetValue"),
        Setting<X, &X::m_gridlines, &X::Gridlines, &X::SetGridlines, &IsFirst>(17, "ShowGridlines"),
        Setting<X, &X::m_enableAutoTitle, &X::EnableAutoTitle, &X::SetEnableAutoTitle, &IsFirst>(
            20, "EnableAutoTitle"),
        Setting<X, &X::m_labelFormat, &X::LabelFormat, &X::SetLabelFormat, X::lfAuto>(21, "LabelFormat"),
        Setting<X, &X::m_tightRange, &X::TightRange, &X::SetTightRange, false>(60, "TightRange"),
        Setting<X, &X::m_autoSizing, &X::AutoSizing, &X::SetAutoSizing, &IsFirst>(18, "AllowAutoSize"),
        Setting<X, &X::m_autoStepping, &X::AutoStepping, &X::SetAutoStepping, &IsFirst>(19,
                                                                                        "AllowTickRescale"),
    };
    return kRows;
}

std::span<const TSectionRow<TLegend>> LegendRows() {
    using L = TLegend;
    static constexpr TSectionRow<L> kRows[] = {
        Setting<L, &L::m_visible, &L::visible, &L::Setvisible, false>(1, "LegendIsVisible"),
        Setting<L, &L::m_color, &L::color, &L::Setcolor,
                [](const L& legend) { return legend.Graph().Appearance()->BackgroundColor(); }>(
            2, "LegendColor"),
        Setting<L, &L::m_borderStyle, &L::borderStyle, &L::SetborderStyle, L::bsNone>(3, "borderStyle"),
        Setting<L, &L::m_layout, &L::Layout, &L::SetLayout, L::lsAcross>(4, "LayoutMode"),
        Setting<L, &L::m_top, &L::top, &L::Settop, 10>(5, "Legendtop"),
        Setting<L, &L::m_left, &L::left, &L::Setleft, 10>(6, "Legendleft"),
        Setting<L, &L::m_width, &L::width, &L::Setwidth,
                [](const L& legend) { return legend.Graph().width() - 20; }>(7, "Legendwidth"),
        Setting<L, &L::m_height, &L::height, &L::Setheight, 20>(8, "Legendheight"),
        Setting<L, &L::m_font, &L::font, &L::Setfont, &FontOf<L>>(9, "Legendfont"),
        Setting<L, &L::m_symbolSpace, &L::SymbolSpace, &L::SetSymbolSpace, 20>(10, "SpaceForSymbols"),
        Setting<L, &L::m_xMargin, &L::XMargin, &L::SetXMargin, 10>(11, "XMargin"),
        Setting<L, &L::m_yMargin, &L::YMargin, &L::SetYMargin, 5>(12, "YMargin"),
        Setting<L, &L::m_autoPlace, &L::AutoPlace, &L::SetAutoPlace, false>(60, "AutomaticPlace"),
    };
    return kRows;
}

std::span<const TSectionRow<TSeries>> SeriesRows() {
    using S = TSeries;
    static constexpr TSectionRow<S> kRows[] = {
        Setting<S, &S::m_active, &S::Active, &S::SetActive, true>(1, "", "Active"),
        Setting<S, &S::m_linesShown, &S::LinesShown, &S::SetLinesShown, true>(2, "", "LinesShown"),
        Setting<S, &S::m_pointsShown, &S::PointsShown, &S::SetPointsShown, false>(3, "", "PointsShown"),
        Setting<S, &S::m_fillPoints, &S::FillPoints, &S::SetFillPoints,
                [](const S& series) { return series.SeriesIndex() <= kLastFilledNumber; }>(4, "",
                                                                                           "FillPoints"),
        Setting<S, &S::m_lineColor, &S::LineColor, &S::SetLineColor, &ColorOfNumber>(5, "", "LineColor"),
        Setting<S, &S::m_pointColor, &S::PointColor, &S::SetPointColor, &ColorOfNumber>(6, "", "PointColor"),
        Setting<S, &S::m_boundsColor, &S::BoundsColor, &S::SetBoundsColor, kBlack>(7, "", "BoundsColor"),
        Setting<S, &S::m_pointShape, &S::PointShape, &S::SetPointShape, &ShapeOfNumber>(8, "", "PointShape"),
        Setting<S, &S::m_lineStyle, &S::LineStyle, &S::SetLineStyle, TPenStyle::Solid>(9, "", "LineStyle"),
        Setting<S, &S::m_pointSize, &S::PointSize, &S::SetPointSize, 12>(10, "", "PointSize"),
        Setting<S, &S::m_yAxisOfSeries, [](const S& series) { return !series.IsOnSecondY(); },
                &AssignFirstAxis, [](S& series) { return series.Graph().YAxis(); }>(11, "FirstAxis"),
        Setting<S, &S::m_upperBound, &S::UpperBound, &S::SetUpperBound, 0.0>(12, "UpperBound"),
        Setting<S, &S::m_lowerBound, &S::LowerBound, &S::SetLowerBound, 0.0>(13, "LowerBound"),
        Setting<S, &S::m_boundsType, &S::BoundsType, &S::SetBoundsType, TBoundsType::None>(14, "BoundsMode"),
        Setting<S, &S::m_boundsLineStyle, &S::BoundsLineStyle, &S::SetBoundsLineStyle, TPenStyle::DashDot>(
            15, "BoundLineMode"),
        Setting<S, &S::m_regressionColor, &S::RegressionColor, &S::SetRegressionColor, kRed>(
            16, "RegressionLineColor"),
        Setting<S, &S::m_regressionLineStyle, &S::RegressionLineStyle, &S::SetRegressionLineStyle,
                TPenStyle::DashDot>(17, "RegressionLineStyle"),
        Setting<S, &S::m_showInLegend, [](const S& series) { return series.ShowInLegend() ? 1 : 0; },
                [](S& series, int value) { series.SetShowInLegend(value != 0); }, false>(18, "ShowInLegend"),
        Setting<S, &S::m_lineWidth, &S::LineWidth, &S::SetLineWidth, 2>(19, "", "LineWidth"),
        Setting<S, &S::m_pointBorderWidth, &S::PointBorderWidth, &S::SetPointBorderWidth, 2>(
            20, "", "PointBorderWidth"),
        Setting<S, &S::m_regressionLineWidth, &S::RegressionLineWidth, &S::SetRegressionLineWidth, 1>(
            21, "", "RegressionLineWidth"),
        Row<S, &S::SeriesFlag, &S::SetSeriesFlag>(22, "", "SeriesFlag"),
        WishRow<&TTextWishes::encoding, &IsUpTo<TTextEncoding::CodePage>>(60, "TextEncoding"),
        WishRow<&TTextWishes::decimalSign, [](int value) { return value == '.' || value == ','; }>(
            61, "DecimalSign"),
        WishRow<&TTextWishes::dateOrder, &IsUpTo<TDateOrder::MonthDayYear>>(62, "DateOrder"),
        WishRow<&TTextWishes::shortTimes, &IsUpTo<TShortTimes::MinutesAndSeconds>>(63, "ShortTimes"),
        WishRow<&TTextWishes::midnight, &IsUpTo<TMidnight::RunsOn>>(64, "Midnight"),
        WishRow<&TTextWishes::columns, &IsUpTo<TColumnLayout::Aligned>>(65, "ColumnLayout"),
        QuotesWishRow(66, "Quotes"),
        OwnXRow(67, "OwnX"),
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
