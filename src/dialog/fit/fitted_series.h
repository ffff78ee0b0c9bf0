// What the fit of a data set runs on, as a copy that windows work with while the data set may change.
#pragma once

#include "data/series/plotted_values.h"
#include "fit/many/uncertainty.h"
#include "graph/model/series.h"

namespace lumoplot {

struct TFittedSeries {
    explicit TFittedSeries(const TSeries& series) : Values(PlottedValues(series)) {
        Fit.Assign(&series.CurveFit());
        Fit.RestoreRunState(series.CurveFit().RunState());
    }

    /// `run` has what the run of the fit had, and a progress.
    TFittedData Data(const TFitRun& run) const { return {Fit, Values.X, Values.Y, run}; }
    TFitRun RunWith(TProgress& progress) const {
        TFitRun run;
        run.Progress = &progress;
        TakeWeighting(run, Fit, Values.YErrors);
        return run;
    }

    TPlottedValues Values;
    TCurFit Fit;
};

} // namespace lumoplot
