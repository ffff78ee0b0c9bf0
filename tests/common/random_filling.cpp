// Alone in its object file: it uses what the libraries do not export.
#include "common/random_graph.h"

#include "common/special_values.h"
#include "data/series/ds_info.h"
#include "data/series/series_record.h"
#include "fit/definition/cur_fit.h"
#include "fit/definition/fit_result.h"
#include "graph/file/graph_file.h"
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

/// Sometimes none that is finite.
double AnyY(TRandom& random) {
    static constexpr std::array kValues = {kNaN, kInfinity, -kInfinity, -0.0};
    return Int(random, 0, 9) == 0 ? kValues[static_cast<std::size_t>(Int(random, 0, 3))] : Double(random);
}

/// A value of the type of the one that is there, for the row of that name.
struct TRandomValue {
    TRandom& random;
    std::string_view name;

    TFieldValue operator()(const std::string&) const { return Text(random); }
    TFieldValue operator()(int) const {
        const bool isColor = name.find("olor") != std::string_view::npos;
        return Int(random, 0, isColor ? 0xFFFFFF : Bool(random) ? 8 : 300);
    }
    TFieldValue operator()(double) const { return Double(random); }
    TFieldValue operator()(bool) const { return Bool(random); }
    TFieldValue operator()(const TFontSpec&) const { return Font(random); }
};

/// Gives every row of a section a value, as if it came from a file.
template <class T>
void FillRows(T& object, std::span<const TSectionRow<T>> rows, TRandom& random) {
    for (const TSectionRow<T>& row : rows) {
        const std::string_view name = row.name;
        if (!row.get || name.ends_with("SerIndex")) continue; // data sets come later
        const TFieldValue value = std::visit(TRandomValue{random, name}, row.get(object));
        TBytes bytes;
        TxyWriter writer(bytes, TEncoding::Compact);
        std::visit(section::TValueWriter{writer, row.key, row.name}, value);
        TByteSource source(bytes);
        TxyReader reader(source);
        reader.ReadKey();
        row.read(reader, object);
    }
}

void FillFit(TCurFit& fit, TRandom& random) {
    FillRows(fit, CurFitRows(), random);
    for (int i = Int(random, 0, 3); i > 0; --i) {
        auto parameter = std::make_unique<TDBLParameter>();
        parameter->SetName("p" + std::to_string(i));
        parameter->SetValue(Double(random));
        parameter->SetVary(Bool(random));
        parameter->ShowInLegend = Bool(random);
        parameter->StartDeviation = Double(random);
        parameter->Description = Text(random);
        parameter->Units = Text(random);
        if (Bool(random)) parameter->SetBounds(Bool(random) ? -kInfinity : -1e9, 1e9);
        if (Int(random, 0, 3) == 0) parameter->SetTie("2*p1");
        fit.AddParameter(std::move(parameter));
    }
    fit.SetWeighting({Bool(random), TErrorSource{Int(random, 0, 1)}, TRobust{Int(random, 0, 3)}});
    for (int i = Int(random, 0, 2); i > 0; --i)
        fit.AddTemplate(std::make_unique<TDBLFunction>(TDBLFunction{Text(random), Text(random), {}}));
}

std::shared_ptr<const TFitResult> RandomResult(TRandom& random) {
    auto result = std::make_shared<TFitResult>();
    result->End = TFitEnd{Int(random, 0, static_cast<int>(TFitEnd::RunsAway))};
    result->Iterations = Int(random, 0, 99);
    result->PointsUsed = static_cast<std::size_t>(Int(random, 0, 99));
    result->Rss = AnyY(random);
    result->RSquared = AnyY(random);
    result->Quality.Aicc = AnyY(random);
    for (int i = Int(random, 0, 3); i > 0; --i) result->Varied.push_back(i);
    for (std::size_t i = 0; i < result->Varied.size(); ++i) result->Errors.push_back(AnyY(random));
    result->Correlations = TMatrix(static_cast<int>(result->Varied.size()));
    for (int i = 0; i < result->Correlations.Size(); ++i)
        for (double& value : result->Correlations.Column(i)) value = AnyY(random);
    for (int i = Int(random, 0, 2); i > 0; --i)
        result->Remarks.push_back("a " + std::to_string(i) + " \xC2\xB1.");
    return result;
}

/// How the last run ended: as files can say it.
void FillFitRun(TCurFit& fit, TRandom& random) {
    TFitRunState run;
    const int kind = Int(random, 0, 3);
    if (kind == 0) run.Result = RandomResult(random);
    if (kind == 1) run.Error = "no";
    const bool isFiled = kind < 2 || fit.ShowsResult();
    run.Stale = !isFiled || Bool(random);
    run.Held = isFiled && run.Stale && Bool(random);
    fit.RestoreRunState(run);
}

void FillSeries(TSeries& series, TRandom& random) {
    FillRows<TDataSeries>(series, SeriesRecordRows(), random);
    FillRows(series, SeriesRows(), random);
    series.SetNumericalTolerance(0.25 * Int(random, 0, 2));
    FillFit(series.CurveFit(), random);
    const bool hasYErrors = Bool(random);
    const double step = series.DuplicatesAllowed() ? 0.25 : 1; // others would merge where they are read
    for (int i = Int(random, 0, 20); i > 0; --i)
        series.AddPoint(step * Int(random, -9, 9), AnyY(random), hasYErrors ? Double(random) : 0);
    if (Bool(random)) series.DataSourceInfo().SetYErrorRule({TYErrorKind::Percent, 5});
    series.SetAutoZero(Bool(random));
    if (!series.AutoZero()) {
        series.SetZeroValue(Double(random));
        series.SetBaseLineSlope(Double(random));
    }
    series.RecalcExtents();
}

TGraphMark RandomMark(TRandom& random) {
    TGraphMark mark;
    FillRows(mark, MarkRows(), random);
    mark.ID = Int(random, 1, 30);
    return mark;
}

} // namespace

void FillRandomly(TxyGraph& graph, TRandom& random, int childDepth) {
    FillRows(*graph.Appearance(), AppearanceRows(), random);
    FillRows(*graph.Dimensions(), DimensionsRows(), random);
    for (TAxis* axis : {graph.XAxis(), graph.YAxis(), graph.YAxis_Second()})
        FillRows(*axis, AxisRows(), random);
    FillRows(*graph.Legend(), LegendRows(), random);
    for (int i = Int(random, 0, 4); i > 0; --i) FillSeries(*graph.FindSeries(graph.AddSeries()), random);
    for (int i = Int(random, 0, 4); i > 0; --i) graph.SetMark(RandomMark(random));
    if (childDepth > 0)
        for (int i = Int(random, 0, 2); i > 0; --i)
            FillRandomly(*graph.AddChildGraph(), random, childDepth - 1);
    graph.Appearance()->SetCurrSerIndex(Int(random, 0, 5));
    graph.Appearance()->SetXAxisSerIndex(Int(random, 0, 5));
    for (TSeries* series : graph.Series()) {
        if (Int(random, 0, 3) == 0) series->SetUseXAxisSeries(false);
        FillFitRun(series->CurveFit(), random);
    }
}

} // namespace lumoplot
