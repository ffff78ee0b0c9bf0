#include "graph/model/set_values.h"

#include "data/series/y_error_rule.h"
#include "expr/blocks/block_evaluator.h"
#include "expr/expression_parser.h"
#include "expr/names.h"
#include "graph/model/graph.h"
#include "support/number_text.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <map>

namespace lumoplot {
namespace {

// The columns in front of those of the data sets.
constexpr std::size_t kX = 0;
constexpr std::size_t kY = 1;
constexpr std::size_t kNumber = 2;
constexpr std::size_t kFirstSeries = 3;

std::string NumberedName(std::size_t place) {
    std::string name = "y";
    return name += std::to_string(place + 1);
}

/// The names of the data sets that become variables, by the places of their data sets: names of the language
/// and of other variables stay what they are, and the first of equal names counts.
std::map<std::size_t, std::string> OwnNames(const TxyGraph& graph) {
    TExpressionParser parser;
    std::deque<double> values(graph.Series().size() + kFirstSeries);
    for (const char* name : {"x", "y", "n"}) parser.DefineVariable(name, &values[0]);
    for (std::size_t i = 0; i < graph.Series().size(); ++i)
        parser.DefineVariable(NumberedName(i), &values[i]);
    std::map<std::size_t, std::string> names;
    for (std::size_t i = 0; i < graph.Series().size(); ++i) {
        const std::string& name = graph.Series()[i]->SeriesName();
        if (!IsName(name) || parser.FindWord(name)) continue;
        parser.DefineVariable(name, &values[i]);
        names[i] = name;
    }
    return names;
}

/// The Y of a data set at ascending or any other X, between its neighbouring points.
class TInterpolation {
public:
    explicit TInterpolation(const TSeries& series) {
        std::vector<std::pair<double, double>> points;
        for (auto point = series.First(); point; point = point.Next())
            if (std::isfinite(point.Y())) points.emplace_back(point.X(), point.Y());
        const auto byX = [](const auto& a, const auto& b) { return a.first < b.first; };
        if (!std::ranges::is_sorted(points, byX)) std::ranges::stable_sort(points, byX);
        for (const auto& [x, y] : points) m_x.push_back(x), m_y.push_back(y);
    }

    double At(double x) const {
        const auto next = static_cast<std::size_t>(std::ranges::lower_bound(m_x, x) - m_x.begin());
        if (next == m_x.size()) return kNotANumber;
        if (m_x[next] == x) return m_y[next];
        if (next == 0) return kNotANumber;
        const double part = (x - m_x[next - 1]) / (m_x[next] - m_x[next - 1]);
        return std::lerp(m_y[next - 1], m_y[next], part);
    }

private:
    std::vector<double> m_x;
    std::vector<double> m_y;
};

std::vector<TSeriesPoint> PointsIn(const TSeries& series, const std::optional<TXRange>& range,
                                   std::size_t limit, std::vector<double>& numbers) {
    std::vector<TSeriesPoint> points;
    double number = 0;
    for (auto point = series.First(); point && points.size() < limit; point = point.Next()) {
        ++number;
        if (range && !(point.X() >= range->From && point.X() <= range->To)) continue;
        points.push_back(point.Point());
        numbers.push_back(number);
    }
    return points;
}

} // namespace

struct TValueFormula::TCompiled {
    TExpressionParser Parser;
    std::vector<double> Variables; ///< bound to the parser, one a column
    std::optional<TBlockEvaluator> Evaluator;
};

TValueFormula::TValueFormula(TSeries& series, const std::string& formula)
    : m_series(series), m_compiled(std::make_unique<TCompiled>()) {
    if (Trimmed(formula).empty()) throw EParserException("There is no formula");
    const TxyGraph& graph = series.Graph();
    TExpressionParser& parser = m_compiled->Parser;
    auto& variables = m_compiled->Variables;
    variables.resize(kFirstSeries + graph.Series().size(), kNotANumber);
    parser.DefineVariable("x", &variables[kX]);
    parser.DefineVariable("y", &variables[kY]);
    parser.DefineVariable("n", &variables[kNumber]);
    for (std::size_t i = kFirstSeries; i < variables.size(); ++i)
        parser.DefineVariable(NumberedName(i - kFirstSeries), &variables[i]);
    for (const auto& [place, name] : OwnNames(graph))
        parser.DefineVariable(name, &variables[kFirstSeries + place]);
    parser.AddExpression(formula);
    std::vector<double*> columns;
    for (double& variable : variables) columns.push_back(&variable);
    m_compiled->Evaluator.emplace(parser, columns);
}

TValueFormula::~TValueFormula() = default;

TNewValues TValueFormula::Evaluate(const std::optional<TXRange>& range, std::size_t limit) {
    TNewValues values;
    std::vector<std::vector<double>> columns(m_compiled->Variables.size());
    values.Points = PointsIn(m_series, range, limit, columns[kNumber]);
    for (const TSeriesPoint& point : values.Points) {
        columns[kX].push_back(point.X);
        columns[kY].push_back(point.Y);
    }
    for (std::size_t i = kFirstSeries; i < columns.size(); ++i) {
        if (!m_compiled->Evaluator->Reads(i)) continue;
        const TInterpolation other(*m_series.Graph().Series()[i - kFirstSeries]);
        for (const double x : columns[kX]) columns[i].push_back(other.At(x));
    }
    values.Y = ValuesOf(columns, values.Points.size());
    values.Unusable =
        static_cast<int>(std::ranges::count_if(values.Y, [](double y) { return !std::isfinite(y); }));
    if (m_series.HasYErrors()) values.YErrors = ErrorsOf(values, columns);
    return values;
}

std::vector<double> TValueFormula::ValuesOf(const TColumns& columns, std::size_t count) {
    std::vector<const double*> starts;
    for (const auto& column : columns) starts.push_back(column.data());
    std::vector<double> values(count);
    m_compiled->Evaluator->EvaluateColumns(starts, values);
    return values;
}

// The data set itself may stand in the formula as one of the others, too.
std::vector<double> TValueFormula::ErrorsOf(const TNewValues& values, const TColumns& columns) {
    const TYErrorRule& rule = m_series.DataSourceInfo().YErrorRule();
    std::vector<double> errors(values.Points.size());
    if (rule.Kind != TYErrorKind::None && rule.Kind != TYErrorKind::Column) {
        std::ranges::transform(values.Y, errors.begin(), [&](double y) { return YErrorBy(rule, y); });
        return errors;
    }
    std::size_t own = kFirstSeries;
    for (const TSeries* series : m_series.Graph().Series()) {
        if (series == &m_series) break;
        ++own;
    }
    const auto shifted = [&](double times) {
        TColumns moved = columns;
        for (const std::size_t column : {kY, own})
            for (std::size_t i = 0; i < moved[column].size(); ++i)
                moved[column][i] += times * values.Points[i].YError;
        return ValuesOf(moved, errors.size());
    };
    const std::vector<double> above = shifted(1);
    const std::vector<double> below = shifted(-1);
    for (std::size_t i = 0; i < errors.size(); ++i)
        errors[i] = UsableYError(std::abs(above[i] - below[i]) / 2);
    return errors;
}

int TValueFormula::Apply(const std::optional<TXRange>& range) {
    const TNewValues values = Evaluate(range);
    TPointChain points(m_series.Points());
    for (std::size_t i = 0; i < values.Y.size(); ++i) {
        if (!std::isfinite(values.Y[i])) continue;
        points.SetY(values.Points[i].Id, values.Y[i]);
        if (!values.YErrors.empty()) points.SetYError(values.Points[i].Id, values.YErrors[i]);
    }
    m_series.SwapPoints(std::move(points));
    return values.Unusable;
}

std::vector<std::string> UnknownVariables(const std::string& formula, const TxyGraph& graph) {
    TExpressionParser parser;
    double value = 0;
    for (const char* name : {"x", "y", "n"}) parser.DefineVariable(name, &value);
    for (std::size_t i = 0; i < graph.Series().size(); ++i) parser.DefineVariable(NumberedName(i), &value);
    for (const auto& [place, name] : OwnNames(graph)) parser.DefineVariable(name, &value);
    const std::vector<TNameUse> uses = NamesIn(formula);
    for (const TNameUse& use : uses)
        if (use.IsAssigned) parser.DefineVariable(use.Name, &value);
    std::vector<std::string> unknown;
    for (const TNameUse& use : uses)
        if (!parser.FindWord(use.Name) && std::ranges::find(unknown, use.Name) == unknown.end())
            unknown.push_back(use.Name);
    return unknown;
}

std::vector<std::string> SeriesVariables(const TxyGraph& graph) {
    const auto names = OwnNames(graph);
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < graph.Series().size(); ++i) {
        const auto own = names.find(i);
        texts.push_back(NumberedName(i));
        if (own != names.end()) texts.back().append(", ").append(own->second);
    }
    return texts;
}

} // namespace lumoplot
