#include "data/series/plotted_values.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

template <class TTake>
void ForEachPoint(const TDataSeries& series, TTake take) {
    for (std::size_t block = 0; block < series.Points().BlockCount(); ++block) {
        const TPointSpans run = series.Points().Block(block);
        for (std::size_t i = 0; i < run.X.size(); ++i) take(run.X[i], run.Y[i]);
    }
}

std::vector<double> CorrectedValues(const TDataSeries& series) {
    std::vector<double> values;
    values.reserve(static_cast<std::size_t>(series.Count()));
    ForEachPoint(series, [&](double x, double y) { values.push_back(series.CorrectedY(x, y)); });
    return values;
}

} // namespace

void TPlottedValues::KeepFiniteX() {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < X.size(); ++i) {
        if (!std::isfinite(X[i])) continue;
        X[kept] = X[i];
        if (!YErrors.empty()) YErrors[kept] = YErrors[i];
        Y[kept++] = Y[i];
    }
    if (!YErrors.empty()) YErrors.resize(kept);
    X.resize(kept);
    Y.resize(kept);
}

TPlottedValues PlottedValues(const TDataSeries& series) {
    TPlottedValues values{{}, CorrectedValues(series), series.YErrors()};
    if (const TDataSeries* source = series.XSource()) {
        values.X = CorrectedValues(*source);
        const std::size_t count = std::min(values.X.size(), values.Y.size());
        values.X.resize(count);
        values.Y.resize(count);
        if (!values.YErrors.empty()) values.YErrors.resize(count);
    } else {
        values.X.reserve(values.Y.size());
        ForEachPoint(series, [&](double x, double) { values.X.push_back(x); });
    }
    return values;
}

} // namespace lumoplot
