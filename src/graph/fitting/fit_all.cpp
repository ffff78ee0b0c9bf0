#include "graph/fitting/fit_all.h"

#include "data/series/plotted_values.h"
#include "graph/fitting/series_fitting.h"
#include "support/update_hold.h"

#include <cmath>
#include <deque>

namespace lumoplot {
namespace {

/// The points of the data sets, which the batch borrows.
class TShownData {
public:
    explicit TShownData(TxyGraph& graph) {
        for (TSeries* series : graph.Series()) {
            if (!series->Active() || series->Count() == 0) continue;
            ReadRowsForResults(*series);
            TPlottedValues& values = m_values.emplace_back(PlottedValues(*series));
            values.KeepFiniteX();
            m_data.push_back({series->SeriesName(), values.X, values.Y, values.YErrors});
        }
    }

    std::span<const TBatchData> Data() const { return m_data; }

private:
    std::deque<TPlottedValues> m_values;
    std::vector<TBatchData> m_data;
};

} // namespace

std::vector<TBatchFit> FitAllDataSets(TxyGraph& graph, const TCurFit& definition, const TFitRun& run) {
    const TShownData shown(graph);
    return FitEach(definition, shown.Data(), run);
}

TGlobalFit FitDataSetsTogether(TxyGraph& graph, const TCurFit& definition,
                               const std::vector<std::string>& shared, const TFitRun& run) {
    const TShownData shown(graph);
    return FitTogether(definition, shown.Data(), shared, run);
}

int AddParameterDataSets(TxyGraph& graph, std::span<const TBatchFit> fits) {
    const TUpdateHold hold(graph);
    int first = 0;
    for (const TParameterColumn& column : ParameterColumns(fits)) {
        TSeries& series = *graph.FindSeries(graph.AddSeries());
        if (first == 0) first = series.SeriesIndex();
        series.SetSeriesName(column.Name);
        series.SetUseXAxisSeries(false); // its X are the numbers of the fits
        series.SetPointsShown(true);
        series.SetLinesShown(false);
        for (std::size_t i = 0; i < column.Values.size(); ++i)
            if (std::isfinite(column.Values[i]))
                series.AddPoint(static_cast<double>(i + 1), column.Values[i], column.Errors[i]);
    }
    return first;
}

} // namespace lumoplot
