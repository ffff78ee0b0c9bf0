#include "data/series/series_record.h"

#include "data/series/ds_info.h"
#include "data/series/y_error_rule.h"
#include "fit/definition/cur_fit.h"
#include "fit/definition/fit_run_text.h"
#include "support/message_sink.h"
#include "support/message_text.h"
#include "support/number_text.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>
#include <vector>

namespace lumoplot {
namespace {

using S = TDataSeries;

// A row of a property of the series' data source description.
template <auto Get, auto Set>
constexpr TSectionRow<S> SourceRow(int key, const char* name) {
    using TValue = std::remove_cvref_t<std::invoke_result_t<decltype(Get), const TDSInfo&>>;
    return Row<S, [](const S& series) { return std::invoke(Get, series.DataSourceInfo()); },
               [](S& series, TValue value) { std::invoke(Set, series.DataSourceInfo(), value); }>(key, name);
}

// A row of what is asked of a database; written where there is something.
template <std::string TDatabaseWish::*Part>
constexpr TSectionRow<S> DatabaseRow(int key, const char* name) {
    return OptionalTextRow<S, [](const S& series) { return series.DataSourceInfo().Database().*Part; },
                           [](S& series, const std::string& text) {
                               TDatabaseWish wish = series.DataSourceInfo().Database();
                               wish.*Part = text;
                               series.DataSourceInfo().SetDatabase(wish);
                           }>(key, name);
}

// A row of a composite record of the series' curve fit.
template <auto Write, auto Read>
constexpr TSectionRow<S> CurveFitRow(int key) {
    return CompositeRow<
        S, [](const S& series, TxyWriter& writer) { std::invoke(Write, series.CurveFit(), writer); },
        [](S& series, TxyReader& reader) { std::invoke(Read, series.CurveFit(), reader); }>(key, "CurveFit");
}

// "1000 rows" or "60 seconds".
std::string LinkLimitText(const S& series) {
    const TLinkLimit limit = series.DataSourceInfo().LinkLimit();
    if (limit.rows > 0) return std::to_string(limit.rows) + " rows";
    return limit.seconds > 0 ? FormatShortest(limit.seconds) + " seconds" : std::string();
}

void SetLinkLimitText(S& series, const std::string& text) {
    constexpr double kMost = 1e15;
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isLimit = error == std::errc() && value > 0 && value < kMost;
    const bool isRows = isLimit && std::string_view(end) == " rows";
    series.DataSourceInfo().SetLinkLimit(
        {isRows ? static_cast<std::int64_t>(value) : 0, isLimit && !isRows ? value : 0});
}

constexpr std::size_t kPointsPerPart = 4096;
constexpr int kFitRunKey = 70;
constexpr std::size_t kLongestShownName = 60;
constexpr int kYErrorsKey = 72;

std::string FitRun(const S& series) {
    return FitRunText(series.CurveFit().RunState());
}

void SetFitRun(S& series, const std::string& text) {
    series.CurveFit().RestoreRunState(FitRunOf(text));
}

std::string YErrorRuleText(const S& series) {
    return TextOf(series.DataSourceInfo().YErrorRule());
}

void SetYErrorRuleText(S& series, const std::string& text) {
    series.DataSourceInfo().SetYErrorRule(YErrorRuleOf(text));
}

// Says that the third entry of each point is the standard error of Y.
constexpr TSectionRow<S> YErrorsRow() {
    return {kYErrorsKey,
            "YErrors",
            "YErrors",
            [](const S& series) -> TFieldValue { return series.HasYErrors(); },
            [](TxyWriter& writer, const TSectionRow<S>& row, const S&) {
                writer.WriteBoolean(row.key, row.name, true);
                writer.SetThirdEntry(TThirdEntry::YError);
            },
            [](TxyReader& reader, S&) {
                if (reader.ReadAsBoolean()) reader.SetThirdEntry(TThirdEntry::YError);
            }};
}

// One that was taken back is not to be run again where the file is opened.
bool HasFitRun(const S& series) {
    const TCurFit& fit = series.CurveFit();
    return fit.Result() || !fit.FitError().empty() || (fit.ShowsResult() && !fit.IsPending());
}

// What belongs to the points means nothing without them.
bool IsWritten(int key, const S& series, bool withPoints) {
    if (key == kFitRunKey) return withPoints && HasFitRun(series);
    return key != kYErrorsKey || (withPoints && series.HasYErrors());
}

struct TColumns {
    std::vector<double> X, Y, YErrors;

    void TakeFrom(const TPointChain& points) {
        for (std::size_t i = 0; i < points.BlockCount(); ++i) {
            const TPointSpans run = points.Block(i);
            X.insert(X.end(), run.X.begin(), run.X.end());
            Y.insert(Y.end(), run.Y.begin(), run.Y.end());
            YErrors.insert(YErrors.end(), run.YErrors.begin(), run.YErrors.end());
            YErrors.resize(X.size());
        }
    }
    TColumns InOrder(const std::vector<std::size_t>& places) const {
        TColumns result;
        for (const std::size_t place : places) {
            result.X.push_back(X[place]);
            result.Y.push_back(Y[place]);
            result.YErrors.push_back(YErrors[place]);
        }
        return result;
    }
};

/// The places of points that are, with all behind them, farther from all before them than the tolerance; and
/// the end.
std::vector<std::size_t> ClusterStarts(const std::vector<double>& x, double tolerance) {
    std::vector<double> lowest(x.size()); // from there on
    for (std::size_t i = x.size(); i-- > 0;)
        lowest[i] = i + 1 < x.size() ? std::min(x[i], lowest[i + 1]) : x[i];
    std::vector<std::size_t> starts;
    double highest = -std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (highest < lowest[i] - tolerance) starts.push_back(i);
        highest = std::max(highest, x[i]);
    }
    starts.push_back(x.size());
    return starts;
}

// A reader adds point by point, and one that comes within the tolerance below another one lands before it. So
// of points that lie closer than that, those that stand before a smaller one are written last of all, and
// backwards.
TColumns InReadingOrder(const S& series) {
    TColumns columns;
    columns.TakeFrom(series.Points());
    const auto starts = ClusterStarts(columns.X, series.NumericalTolerance());
    std::vector<std::size_t> order, last;
    for (std::size_t i = 0; i + 1 < starts.size(); ++i) {
        std::size_t ascending = starts[i + 1] - 1; // from there on in this cluster
        while (ascending > starts[i] && columns.X[ascending - 1] <= columns.X[ascending]) --ascending;
        for (std::size_t place = starts[i]; place < starts[i + 1]; ++place)
            (place < ascending ? last : order).push_back(place);
    }
    order.insert(order.end(), last.rbegin(), last.rend());
    return columns.InOrder(order);
}

/// Points lie closer than the tolerance and not in the order of X, as is possible where duplicates are
/// allowed.
bool HasOrderOfItsOwn(const S& series) {
    if (!series.DuplicatesAllowed() || !(series.NumericalTolerance() > 0)) return false;
    double last = -std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < series.Points().BlockCount(); ++i)
        for (const double x : series.Points().Block(i).X) {
            if (x < last) return true;
            last = x;
        }
    return false;
}

void WriteSettings(TxyWriter& writer, const S& series, bool withPoints) {
    for (const auto& row : SeriesRecordRows())
        if (IsWritten(row.key, series, withPoints)) row.write(writer, row, series);
    writer.WriteEndOfSection();
}

} // namespace

// Key 8 carries the name of key 7; readers go by the number.
std::span<const TSectionRow<TDataSeries>> SeriesRecordRows() {
    using I = TDSInfo;
    static constexpr TSectionRow<S> kRows[] = {
        Row<S, &S::SeriesName, &S::SetSeriesName>(1, "SeriesName"),
        Row<S, &S::NumericalTolerance, &S::SetNumericalTolerance>(2, "NumericalTolerance"),
        Row<S, &S::DuplicatesAllowed, &S::SetDuplicatesAllowed>(3, "DuplicatesAllowed"),
        Row<S, &S::AutoZero, &S::SetAutoZero>(4, "AutoZero"),
        Row<S, &S::ZeroValue, &S::SetZeroValue>(5, "ZeroValue"),
        Row<S, &S::RegressionType, &S::SetRegressionType>(6, "RegressionType"),
        Row<S, &S::RegressionControlValue1, &S::SetRegressionControlValue1>(7, "RegressionControlValue1"),
        Row<S, &S::RegressionControlValue2, &S::SetRegressionControlValue2>(8, "RegressionControlValue1",
                                                                            "RegressionControlValue2"),
        SourceRow<&I::Kind, &I::SetKind>(9, "DataSource"),
        SourceRow<&I::SourceName, &I::SetSourceName>(10, "DatasourceInfo"),
        SourceRow<&I::DivideTextByWidth, &I::SetDivideTextByWidth>(12, "DivideTextByWidth"),
        SourceRow<&I::FileHasHeaders, &I::SetFileHasHeaders>(13, "FileHasHeaders"),
        SourceRow<&I::TextSeparators, &I::SetTextSeparators>(14, "TextSeparators"),
        SourceRow<&I::TextMarkers, &I::SetTextMarkers>(15, "TextMarkers"),
        SourceRow<&I::XDataColumn, &I::SetXDataColumn>(16, "XDataColumn"),
        SourceRow<&I::YDataColumn, &I::SetYDataColumn>(17, "YDataColumn"),
        SourceRow<&I::RowSamplingFrequency, &I::SetRowSamplingFrequency>(18, "RowSamplingFrequency"),
        SourceRow<&I::ColumnWidth, &I::SetColumnWidth>(19, "ColumnWidth"),
        SourceRow<&I::RowChoiceMode, &I::SetRowChoiceMode>(20, "RowChoiceMode"),
        SourceRow<&I::RowChoiceValue1, &I::SetRowChoiceValue1>(21, "RowChoiceValue1"),
        SourceRow<&I::RowChoiceValue2, &I::SetRowChoiceValue2>(22, "RowChoiceValue2"),
        SourceRow<&I::XFormat, &I::SetXFormat>(23, "XFormat"),
        SourceRow<&I::YFormat, &I::SetYFormat>(24, "YFormat"),
        CurveFitRow<&TCurFit::WriteDefinition, &TCurFit::ReadDefinition>(39),
        Row<S, &S::BaseLineSlope, &S::SetBaseLineSlope>(42, "BaseLineSlope"),
        CurveFitRow<&TCurFit::WriteSettings, &TCurFit::ReadSettings>(43),
        SourceRow<&I::AutoRowHitFreq, &I::SetAutoRowHitFreq>(44, "AutoRowHitFreq"),
        CurveFitRow<&TCurFit::WriteTemplates, &TCurFit::ReadTemplates>(45),
        OptionalTextRow<S, [](const S& series) { return series.CurveFit().BoundsText(); },
                        [](S& series, const std::string& text) { series.CurveFit().SetBoundsText(text); }>(
            71, "FitBounds"),
        OptionalTextRow<S, [](const S& series) { return series.CurveFit().WeightingText(); },
                        [](S& series, const std::string& text) { series.CurveFit().SetWeightingText(text); }>(
            74, "FitWeighting"),
        OptionalTextRow<S, [](const S& series) { return series.CurveFit().TiesText(); },
                        [](S& series, const std::string& text) { series.CurveFit().SetTiesText(text); }>(
            75, "FitTies"),
        OptionalTextRow<S, &YErrorRuleText, &SetYErrorRuleText>(73, "YErrorRule"),
        Row<S, &S::XColExpr, &S::SetXColExpr>(46, "XColExpr"),
        Row<S, &S::YColExpr, &S::SetYColExpr>(47, "YColExpr"),
        DatabaseRow<&TDatabaseWish::connection>(80, "DatabaseConnection"),
        DatabaseRow<&TDatabaseWish::query>(81, "DatabaseQuery"),
        DatabaseRow<&TDatabaseWish::where>(82, "DatabaseWhere"),
        DatabaseRow<&TDatabaseWish::orderBy>(83, "DatabaseOrder"),
        OptionalTextRow<S, &LinkLimitText, &SetLinkLimitText>(84, "LinkLimit"),
        Row<S, &FitRun, &SetFitRun>(kFitRunKey, "FitRun"),
        YErrorsRow(),
    };
    return kRows;
}

void TDataSeries::WriteToStream(TxyWriter& writer, bool withPoints) const {
    writer.SetThirdEntry(TThirdEntry::None);
    WriteSettings(writer, *this, withPoints);
    writer.WritePointHeader(withPoints ? Count() : 0);
    if (!withPoints) return;
    if (HasOrderOfItsOwn(*this)) {
        const TColumns columns = InReadingOrder(*this);
        return writer.WritePoints(columns.X, columns.Y, columns.YErrors);
    }
    for (std::size_t i = 0; i < Points().BlockCount(); ++i)
        writer.WritePoints(Points().Block(i).X, Points().Block(i).Y, Points().Block(i).YErrors);
}

void TDataSeries::ReadFromStream(TxyReader& reader) {
    CurveFit().RestoreRunState(FitRunOf({}));
    // Entries that only some files have.
    DataSourceInfo().SetYErrorRule({});
    DataSourceInfo().SetDatabase({});
    DataSourceInfo().SetLinkLimit({});
    reader.SetThirdEntry(TThirdEntry::None);
    ReadEntries(reader, SeriesRecordRows(), *this);
    DataSourceInfo().SetNeedsReload(false);
    const TFitRunState fitRun = CurveFit().RunState();
    const int before = Count();
    const int filed = reader.ReadPointHeader();
    std::vector<double> xs, ys, errors;
    for (auto left = static_cast<std::size_t>(filed); left > 0; left -= xs.size()) {
        xs.resize(std::min(left, kPointsPerPart));
        ys.resize(xs.size());
        errors.resize(xs.size());
        reader.ReadPoints(xs, ys, errors);
        for (std::size_t i = 0; i < xs.size(); ++i) AddPoint(xs[i], ys[i], errors[i]);
    }
    if (before == 0 && Count() == filed) CurveFit().RestoreRunState(fitRun);
    if (const int merged = filed - (Count() - before); merged > 0) TellMerged(merged, filed);
}

void TDataSeries::TellMerged(int merged, int filed) const {
    std::string text = "DataSet \"" + ShownLine(SeriesName(), kLongestShownName) +
                       "\": " + std::to_string(merged) + " of " + std::to_string(filed) +
                       " points merged into others with the same X";
    if (NumericalTolerance() > 0) text += " within " + FormatShortest(NumericalTolerance());
    ShowMessage(text, TMessageKind::Warning);
}

} // namespace lumoplot
