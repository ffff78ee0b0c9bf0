#include "sources/text/loading/series_supplier.h"

#include "data/series/ds_info.h"
#include "data/series/y_error_rule.h"
#include "support/errors.h"
#include "support/update_hold.h"

namespace lumoplot {

TTextReport LoadTextSeries(TDataSeries& series, const TTextSource& source, const TTextLoadOptions& options,
                           TProgress& progress) {
    TPointChain points;
    const TMergeRule rule = series.MergeRule();
    const auto addPoints = [&](std::span<const double> x, std::span<const double> y,
                               std::span<const double> yErrors) {
        if (!points.AddAll(x, y, rule, yErrors))
            throw EFileError("File " + source.Name + " holds more rows than a data set can have points");
    };
    TTextLoadOptions withFormulas = options;
    withFormulas.formulas = {series.XColExpr(), series.YColExpr()};
    withFormulas.restart = [&points] { points = TPointChain(); };
    TTextReport report = LoadText(source, series.DataSourceInfo(), withFormulas, addPoints, progress);
    if (report.cancelled) return report;
    report.rowsMerged = report.rowsUsed - points.Count();
    if (series.SeriesFlag() && !report.yName.empty()) series.SetSeriesName(report.yName);
    if (series.DataSourceInfo().AutoRowHitFreq())
        series.DataSourceInfo().NoteRowSamplingFrequency(report.samplingFrequency);
    series.DataSourceInfo().SetNeedsReload(false);
    const TUpdateHold hold(series);
    const bool hadErrors = series.SwapPoints(std::move(points)).HasYErrors();
    RenewYErrors(series);
    if (hadErrors && !series.HasYErrors())
        report.notes.push_back("the errors of Y that were there are gone: the source has none");
    return report;
}

} // namespace lumoplot
