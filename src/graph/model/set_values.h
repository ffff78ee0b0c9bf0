// New Y values for a data set from a formula over it and the other data sets of its graph. No windows.
#pragma once

#include "graph/model/series.h"
#include "support/ranges.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumoplot {

/// Y values are those that are stored, without the baseline. Where the formula gives not-a-number or an
/// infinity, the point keeps its Y.
struct TNewValues {
    std::vector<TSeriesPoint> Points; ///< in the range, in order, with the Y that they have
    std::vector<double> Y;            ///< the formula at each
    /// The standard error of each Y, 0 for none; empty where the data set has none. Those that a rule gives
    /// follow the new Y, others become |f(y + σ) − f(y − σ)| / 2.
    std::vector<double> YErrors;
    /// How many of Y are no finite numbers.
    int Unusable = 0;
};

/// A formula that is compiled against the data sets of a graph. Its variables: `x` and `y` of the point, `n`
/// its number from 1; `y1`, `y2`, … the Y of the data sets 1, 2, … at the same X, interpolated linearly
/// between their neighbouring points and not-a-number beyond their ends; and those data sets by their names
/// where these are names that mean nothing else (the first of equal ones counts).
///
/// Valid while no data set is added, deleted or renamed.
class TValueFormula {
public:
    /// Throws EParserException or EConvertError; "There is no formula" for an empty text.
    XYGRAPH_EXPORT TValueFormula(TSeries& series, const std::string& formula);
    XYGRAPH_EXPORT ~TValueFormula();

    /// The values for the points in the range (all without one), at most `limit` of them.
    XYGRAPH_EXPORT TNewValues Evaluate(const std::optional<TXRange>& range, std::size_t limit = SIZE_MAX);
    /// Gives the points in the range the values that Evaluate gives, standard errors included, with one
    /// notification; the Ids stay.
    /// Returns how many points kept their Y because there was no value.
    XYGRAPH_EXPORT int Apply(const std::optional<TXRange>& range);

private:
    struct TCompiled;
    using TColumns = std::vector<std::vector<double>>;

    std::vector<double> ValuesOf(const TColumns& columns, std::size_t count);
    std::vector<double> ErrorsOf(const TNewValues& values, const TColumns& columns);

    TSeries& m_series;
    std::unique_ptr<TCompiled> m_compiled;
};

/// The variables that stand for the data sets of a graph, one text a data set: "y2" or "y2, Sample".
XYGRAPH_EXPORT std::vector<std::string> SeriesVariables(const TxyGraph& graph);

/// The names of a formula that stand for nothing there, and to which it assigns nothing: each once.
XYGRAPH_EXPORT std::vector<std::string> UnknownVariables(const std::string& formula, const TxyGraph& graph);

} // namespace lumoplot
